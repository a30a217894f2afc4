// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/SvgDocument.h>

#include <limits>

// How long the closing part of a title is.

namespace {

/// A title that ends at 10 s, with animations of one's own.
QString svg(const QString &animations)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 100 50\">"
                          "<rect><animate attributeName=\"x\" to=\"9\" dur=\"10s\"/>%1</rect>"
                          "</svg>")
            .arg(animations);
}

/// A still title: what the elements in it mean is up to nobody but the document.
QString stillSvg(const QString &elements)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 100 50\">"
                          "%1</svg>")
            .arg(elements);
}

} // namespace

class ConclusionTimeTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void lastsFromTheMarkedBeginToTheEnd_data();
    void lastsFromTheMarkedBeginToTheEnd();
    void readsBeginsThatWereRewritten();
    void readsTheTextOfStillTitles_data();
    void readsTheTextOfStillTitles();
    void isReadInOtherRootsToo();
    void saturates();
    void changesNothing();
    void readsTheTextAgain();
};

void ConclusionTimeTest::lastsFromTheMarkedBeginToTheEnd_data()
{
    QTest::addColumn<QString>("animations");
    QTest::addColumn<int>("duration");

    const auto row = [](const char *name, const char *animations, int duration) {
        QString text = QString::fromLatin1(animations);
        // Only what a row is about is spelt out.
        text.replace(QStringLiteral("<animate "),
                     QStringLiteral("<animate attributeName=\"y\" to=\"1\" "));
        text.replace(QStringLiteral("<transform "),
                     QStringLiteral("<animateTransform attributeName=\"transform\" type=\"rotate\""
                                    " from=\"0\" to=\"1\" dur=\"1s\" "));
        text.replace(QStringLiteral("<color "),
                     QStringLiteral("<animateColor attributeName=\"fill\" from=\"red\" to=\"blue\""
                                    " dur=\"1s\" "));
        text.replace(QStringLiteral("<motion "), QStringLiteral("<animateMotion "));
        QTest::newRow(name) << text << duration;
    };
    row("no mark", "<animate begin=\"7s\"/>", 0);
    row("animate", "<animate id=\"CONCLUSION\" begin=\"7s\"/>", 3000);
    row("animateMotion", "<motion id=\"CONCLUSION\" begin=\"6s\"/>", 4000);
    row("animateColor", "<color id=\"CONCLUSION\" begin=\"5s\"/>", 5000);
    row("animateTransform", "<transform id=\"CONCLUSION\" begin=\"4s\"/>", 6000);
    row("milliseconds", "<animate id=\"CONCLUSION\" begin=\"7250ms\"/>", 2750);
    row("no unit", "<animate id=\"CONCLUSION\" begin=\" 7.5 \"/>", 2500);
    row("the length of the marked animation does not count",
        "<animate id=\"CONCLUSION\" begin=\"7s\" dur=\"1s\" repeatCount=\"5\" fill=\"freeze\"/>",
        3000);
    row("unless it ends last", "<animate id=\"CONCLUSION\" begin=\"7s\" dur=\"13s\"/>", 13000);
    row("without an attribute name", "<animate\nid=\"CONCLUSION\" begin=\"7s\"/>", 3000);

    row("lower case is no mark", "<animate id=\"conclusion\" begin=\"7s\"/>", 0);
    row("part of an id is no mark", "<animate id=\"CONCLUSION2\" begin=\"7s\"/>", 0);
    row("spaces around it are no mark", "<animate id=\" CONCLUSION \" begin=\"7s\"/>", 0);
    row("another attribute is no mark", "<animate class=\"CONCLUSION\" begin=\"7s\"/>", 0);
    row("another element is no mark", "<set id=\"CONCLUSION\" begin=\"7s\"/>", 0);
    row("a shape is no mark", "<g id=\"CONCLUSION\" begin=\"7s\"/>", 0);

    row("begin 0", "<animate id=\"CONCLUSION\" begin=\"0s\"/>", 0);
    row("no begin", "<animate id=\"CONCLUSION\"/>", 0);
    row("negative begin", "<animate id=\"CONCLUSION\" begin=\"-2s\"/>", 0);
    row("begin below a millisecond", "<animate id=\"CONCLUSION\" begin=\"0.9ms\"/>", 0);
    row("indefinite begin", "<animate id=\"CONCLUSION\" begin=\"indefinite\"/>", 0);
    row("begin on an event", "<animate id=\"CONCLUSION\" begin=\"click\"/>", 0);
    row("animateMotion can't refer", "<motion id=\"CONCLUSION\" begin=\"a.end+2s\"/>", 0);

    row("the first one of a name counts",
        "<animate id=\"CONCLUSION\" begin=\"7s\"/><animate id=\"CONCLUSION\" begin=\"5s\"/>", 3000);
    row("one that begins at 0 is passed over",
        "<animate id=\"CONCLUSION\" begin=\"0s\"/><animate id=\"CONCLUSION\" begin=\"-1s\"/>"
        "<animate id=\"CONCLUSION\" begin=\"5s\"/><animate id=\"CONCLUSION\" begin=\"4s\"/>",
        5000);
    row("animate before animateMotion",
        "<motion id=\"CONCLUSION\" begin=\"5s\"/><animate id=\"CONCLUSION\" begin=\"7s\"/>", 3000);
    row("animateMotion before animateColor",
        "<color id=\"CONCLUSION\" begin=\"5s\"/><motion id=\"CONCLUSION\" begin=\"7s\"/>", 3000);
    row("animateColor before animateTransform",
        "<transform id=\"CONCLUSION\" begin=\"5s\"/><color id=\"CONCLUSION\" begin=\"7s\"/>", 3000);
    row("animate before animateTransform",
        "<transform id=\"CONCLUSION\" begin=\"5s\"/><animate id=\"CONCLUSION\" begin=\"7s\"/>",
        3000);
    row("an animate that begins at 0 gives way",
        "<transform id=\"CONCLUSION\" begin=\"5s\"/><animate id=\"CONCLUSION\"/>", 5000);

    row("begin at the end", "<animate id=\"CONCLUSION\" begin=\"10s\"/>", 0);
    row("begin at the end: the next name is looked at",
        "<animate id=\"CONCLUSION\" begin=\"10s\"/><color id=\"CONCLUSION\" begin=\"6s\"/>", 4000);
    row("begin at the end: the rest of the name is not looked at",
        "<animate id=\"CONCLUSION\" begin=\"10s\"/><animate id=\"CONCLUSION\" begin=\"6s\"/>", 0);
    row("begin after the end", "<motion id=\"CONCLUSION\" begin=\"12s\"/>", -2000);
    row("begin after the end: no further name is looked at",
        "<motion id=\"CONCLUSION\" begin=\"12s\"/><color id=\"CONCLUSION\" begin=\"6s\"/>", -2000);
}

void ConclusionTimeTest::lastsFromTheMarkedBeginToTheEnd()
{
    QFETCH(QString, animations);
    QFETCH(int, duration);
    const SvgDocument document(svg(animations));
    QVERIFY(document.isLoaded());
    QCOMPARE(document.animationConclusionDuration(), duration);
}

void ConclusionTimeTest::readsBeginsThatWereRewritten()
{
    const SvgDocument document(svg(QStringLiteral(
            "<animate id=\"CONCLUSION\" attributeName=\"y\" to=\"1\" begin=\"intro.end+1s\"/>"
            "<animate id=\"intro\" attributeName=\"y\" to=\"1\" begin=\"2s\" dur=\"4s\"/>")));
    QCOMPARE(document.animationDurationTotal(), 10000);
    QCOMPARE(document.animationConclusionDuration(), 3000);
}

void ConclusionTimeTest::readsTheTextOfStillTitles_data()
{
    QTest::addColumn<QString>("elements");
    QTest::addColumn<int>("duration");
    QTest::newRow("animations of the renderer alone")
            << QStringLiteral("<g><animateTransform id=\"CONCLUSION\" attributeName=\"transform\""
                              " type=\"rotate\" from=\"0\" to=\"1\" begin=\"3s\" dur=\"1s\"/></g>")
            << 1000;
    QTest::newRow("nothing that moves")
            << QStringLiteral("<animateMotion id=\"CONCLUSION\" begin=\"3s\"/>") << -3000;
}

void ConclusionTimeTest::readsTheTextOfStillTitles()
{
    QFETCH(QString, elements);
    QFETCH(int, duration);
    const SvgDocument document(stillSvg(elements));
    QVERIFY(document.isLoaded());
    QCOMPARE(document.animationConclusionDuration(), duration);
}

void ConclusionTimeTest::isReadInOtherRootsToo()
{
    const SvgDocument document(
            QStringLiteral("<title><animate id=\"CONCLUSION\" begin=\"0.5s\"/></title>"));
    QVERIFY(!document.isLoaded());
    QCOMPARE(document.animationDurationTotal(), 0);
    QCOMPARE(document.animationConclusionDuration(), -500);

    const SvgDocument root(QStringLiteral("<animate id=\"CONCLUSION\" begin=\"2s\"/>"));
    QVERIFY(!root.isLoaded());
    QCOMPARE(root.animationConclusionDuration(), -2000);
}

void ConclusionTimeTest::saturates()
{
    const SvgDocument late(
            stillSvg(QStringLiteral("<animateMotion id=\"CONCLUSION\" begin=\"99999999s\"/>")));
    QCOMPARE(late.animationConclusionDuration(), -std::numeric_limits<int>::max());

    const SvgDocument endless(svg(QStringLiteral(
            "<animate attributeName=\"x\" to=\"1\" begin=\"2147483s\" dur=\"2147483s\"/>"
            "<animate id=\"CONCLUSION\" attributeName=\"x\" to=\"1\" begin=\"1s\"/>")));
    QCOMPARE(endless.animationConclusionDuration(), std::numeric_limits<int>::max() - 1000);
}

void ConclusionTimeTest::changesNothing()
{
    const QString text = svg(QStringLiteral(
            "<animate id=\"CONCLUSION\" attributeName=\"y\" to=\"1\" begin=\"7s\"/>"));
    SvgDocument document(text);
    QCOMPARE(document.data(), text.toUtf8());
    document.detectConclusionTime();
    QCOMPARE(document.data(), text.toUtf8());
    QCOMPARE(document.animationConclusionDuration(), 3000);
    QCOMPARE(document.animationDurationTotal(), 10000);
}

void ConclusionTimeTest::readsTheTextAgain()
{
    SvgDocument document(svg(QStringLiteral(
            "<animate id=\"CONCLUSION\" attributeName=\"y\" to=\"1\" begin=\"7s\"/>")));
    const auto setBegin = [&document](const char *begin) {
        document.documentRoot().firstChild().lastChildElement().setAttribute(
                QStringLiteral("begin"), QString::fromLatin1(begin));
    };
    setBegin("6s");
    document.detectConclusionTime();
    QCOMPARE(document.animationConclusionDuration(), 3000);
    setBegin("6s");
    document.saveToBuffer();
    document.detectConclusionTime();
    QCOMPARE(document.animationConclusionDuration(), 4000);
    setBegin("soon");
    document.saveToBuffer();
    document.detectConclusionTime();
    QCOMPARE(document.animationConclusionDuration(), 0);
}

QTEST_MAIN(ConclusionTimeTest)

#include "tst_conclusiontime.moc"
