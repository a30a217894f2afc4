// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"
#include "TreeTest.h"

#include <Scene/SvgDocument.h>

// What a document's text and tree are after each thing that may happen to either.

namespace {

/// A circle that moves from 0 to 100 in a second. What the gap holds goes before it.
QString movingCircle(const QString &gap = QString())
{
    return svgTitle(gap
                    + QStringLiteral("<circle id=\"c\" cx=\"10\" cy=\"10\" r=\"5\" fill=\"red\">"
                                     "<animate attributeName=\"cx\" from=\"0\" to=\"1000\" "
                                     "dur=\"1s\"/></circle>"));
}

/// A line whose path is refused between its two key values, half a second after the start: it would
/// go on to 1e15.
QString refusedHalfWay(const QString &gap)
{
    return svgTitle(gap
                    + QStringLiteral("<path id=\"p\" stroke=\"red\" stroke-width=\"40\" "
                                     "stroke-dasharray=\"50\" d=\"M 0 20 H 50\">"
                                     "<animate attributeName=\"d\" dur=\"1s\" "
                                     "values=\"M 1e1 20 H 90;M 1 29 20 H 90\"/></path>"));
}

QString attributeOf(const QDomNode &root, const char *id, const QByteArray &name)
{
    return elementById(root, QString::fromLatin1(id)).attribute(QString::fromUtf8(name));
}

} // namespace

class TextAndTreeTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void savesAsAWholeAfterAWriteThatFailed_data();
    void savesAsAWholeAfterAWriteThatFailed();
    void takesARefusedFrameBack_data();
    void takesARefusedFrameBack();
    void readsBytesChangedInPlaceAfterAWrite_data();
    void readsBytesChangedInPlaceAfterAWrite();
    void adjustsWhateverTheTime_data();
    void adjustsWhateverTheTime();
    void keepsUnsavedChangesWhenAnAdjustmentIsRefused();
    void hasNoErrorWhenNothingIsWrong();
};

void TextAndTreeTest::savesAsAWholeAfterAWriteThatFailed_data()
{
    QTest::addColumn<bool>("isReadOnly");
    QTest::newRow("closed") << false;
    QTest::newRow("read-only") << true;
}

void TextAndTreeTest::savesAsAWholeAfterAWriteThatFailed()
{
    QFETCH(bool, isReadOnly);
    SvgDocument document(movingCircle());
    document.applyAnimation(140);
    document.applyAnimation(1);
    const QByteArray before = savedText(document);
    document.close();
    if (isReadOnly)
        QVERIFY(document.open(QIODevice::ReadOnly));
    document.applyAnimation(100);
    QCOMPARE(savedText(document), before);
    document.close();
    QVERIFY(document.open(QIODevice::ReadWrite));
    document.applyAnimation(140);
    QCOMPARE(savedText(document), saved(document.documentRoot().ownerDocument()));
    QCOMPARE(attributeOf(savedTree(document), "c", "cx"), QStringLiteral("140.000"));
}

void TextAndTreeTest::takesARefusedFrameBack_data()
{
    QTest::addColumn<QString>("gap");
    QTest::newRow("plain") << QString();
    QTest::newRow("CDATA") << QStringLiteral("<desc><![CDATA[a]]></desc>");
    QTest::newRow("instruction") << QStringLiteral("<?a b?>");
}

void TextAndTreeTest::takesARefusedFrameBack()
{
    QFETCH(QString, gap);
    SvgDocument document(refusedHalfWay(gap));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    const QImage still = renderAt(document, 2000);
    const QByteArray admitted = savedText(document);
    QVERIFY(isBlank(renderAt(document, 500)));
    QVERIFY(document.errorString().contains(QLatin1String("magnitude")));
    QCOMPARE(document.viewBox(), QRectF(0, 0, 100, 50));
    QCOMPARE(savedText(document), admitted);
    QCOMPARE(document.viewBox(), QRectF(0, 0, 100, 50));
    QVERIFY(isBlank(renderAt(document, 500)));
    document.prepareAdjustedAttibutes({QStringLiteral("stroke")});
    COMPARE_PICTURES(renderAt(document, 2000), still, 0);
    document.adjustAttribute(QStringLiteral("stroke"), QStringLiteral("blue"));
    QCOMPARE(renderAt(document, 2000).pixelColor(10, 10), QColor(Qt::blue));
}

void TextAndTreeTest::readsBytesChangedInPlaceAfterAWrite_data()
{
    QTest::addColumn<bool>("isLonger");
    QTest::newRow("longer") << true;
    QTest::newRow("shorter") << false;
}

void TextAndTreeTest::readsBytesChangedInPlaceAfterAWrite()
{
    QFETCH(bool, isLonger);
    const QByteArray first = movingCircle(QString(50, QLatin1Char(' '))).toUtf8();
    const QByteArray second = movingCircle(QString(isLonger ? 90 : 10, QLatin1Char(' '))).toUtf8();
    SvgDocument document(movingCircle());
    QVERIFY(document.seek(0));
    QCOMPARE(document.write(first), qint64(first.size()));
    document.buffer() = second;
    QCOMPARE(document.size(), qint64(second.size()));
    QVERIFY(document.seek(0));
    QCOMPARE(document.readAll(), second);
    QCOMPARE(document.viewBox(), QRectF(0, 0, 100, 50));
    QVERIFY(!document.documentRoot().firstChildElement().isNull());
}

void TextAndTreeTest::adjustsWhateverTheTime_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("isTaken");
    QTest::addColumn<QVector<int>>("times");
    const QVector<QVector<int>> times{{}, {0}, {500}, {999}, {2000}, {2000, 0}, {500, 2000, 500}};
    for (const QVector<int> &shown : times) {
        QByteArray name("after");
        for (const int ms : shown)
            name += ' ' + QByteArray::number(ms);
        const auto row = [&](const char *attribute, const char *value, bool isTaken) {
            QTest::newRow((name + ": " + attribute + '=' + value).constData())
                    << QString::fromLatin1(attribute) << QString::fromLatin1(value) << isTaken
                    << shown;
        };
        row("width", "20", true);
        row("width", "1e9", false);
        row("x", "7", true);
        row("x", "1e9", false);
        row("style", "stroke-dasharray:1", false);
        row("style", "fill:blue", true);
    }
}

// The animation goes to a number that a template may not hold, nor a frame with dashes.
void TextAndTreeTest::adjustsWhateverTheTime()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QFETCH(bool, isTaken);
    QFETCH(QVector<int>, times);
    SvgDocument document(svgTitle(QStringLiteral(
            "<rect id=\"a\" x=\"1\" width=\"10\" height=\"9\"><animate attributeName=\"x\" "
            "from=\"0\" to=\"100000000\" dur=\"1s\" fill=\"freeze\"/></rect>"
            "<rect id=\"b\" x=\"1\" width=\"10\" height=\"9\" style=\"fill:red\"/>")));
    document.prepareAdjustedAttibutes({name});
    for (const int ms : times)
        document.applyAnimation(ms);
    const QByteArray before = savedText(document);
    const QByteArray attribute = name.toLatin1();
    const QString former = attributeOf(savedTree(document), "b", attribute);
    document.adjustAttribute(name, value);
    QCOMPARE(document.errorString().isEmpty(), isTaken);
    QCOMPARE(attributeOf(savedTree(document), "b", attribute), isTaken ? value : former);
    if (!isTaken)
        QCOMPARE(savedText(document), before);
    document.applyAnimation(750);
    QCOMPARE(attributeOf(savedTree(document), "a", "x"), QStringLiteral("75000000.000"));
    QCOMPARE(attributeOf(savedTree(document), "b", attribute), isTaken ? value : former);
    QCOMPARE(savedText(document), saved(document.documentRoot().ownerDocument()));
    QVERIFY(document.errorString().isEmpty());
}

void TextAndTreeTest::keepsUnsavedChangesWhenAnAdjustmentIsRefused()
{
    SvgDocument document(svgTitle(QStringLiteral("<rect id=\"a\" width=\"10\" height=\"9\"/>")));
    document.prepareAdjustedAttibutes({QStringLiteral("width")});
    const QDomNode root = document.documentRoot();
    elementById(root, QStringLiteral("a")).setAttribute(QStringLiteral("y"), 5);
    document.adjustAttribute(QStringLiteral("width"), QStringLiteral("1e9"));
    QVERIFY(!document.errorString().isEmpty());
    QCOMPARE(attributeOf(document.documentRoot(), "a", "width"), QStringLiteral("10"));
    document.adjustAttribute(QStringLiteral("width"), QStringLiteral("20"));
    QVERIFY(document.errorString().isEmpty());
    QCOMPARE(attributeOf(savedTree(document), "a", "y"), QStringLiteral("5"));
    QCOMPARE(attributeOf(savedTree(document), "a", "width"), QStringLiteral("20"));
}

void TextAndTreeTest::hasNoErrorWhenNothingIsWrong()
{
    SvgDocument document(movingCircle());
    QCOMPARE(document.errorString(), QString());
    renderAt(document, 500);
    QCOMPARE(document.errorString(), QString());
    document.close();
    QVERIFY(document.open(QIODevice::ReadWrite));
    QCOMPARE(document.errorString(), QString());

    SvgDocument broken(QStringLiteral("<svg"));
    const QString reason = broken.errorString();
    QVERIFY(reason.startsWith(QLatin1String("line 1: ")));
    broken.close();
    QVERIFY(broken.open(QIODevice::ReadWrite));
    QCOMPARE(broken.errorString(), reason);
    const QByteArray text = movingCircle().toUtf8();
    QCOMPARE(broken.write(text), qint64(text.size()));
    broken.viewBox();
    QCOMPARE(broken.errorString(), QString());

    QCOMPARE(SvgDocument(QStringLiteral("<p/>")).errorString(),
             QStringLiteral("not an SVG document"));
}

QTEST_MAIN(TextAndTreeTest)

#include "tst_textandtree.moc"
