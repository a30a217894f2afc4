// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/AdmissionLimits_p.h>
#include <Scene/SvgDocument.h>

// A title at a limit plays as well as any other: what saving adds to a frame's text, and what it
// writes in more bytes than the template did, does not count.

namespace {

/// A path that has more numbers while it is animated than the template gives it, so that every
/// frame is judged.
QString judgedPath()
{
    return QStringLiteral(
            "<path turn=\"0\" stroke=\"red\" d=\"M 0 0\"><animate attributeName=\"d\" dur=\"1s\" "
            "values=\"M 0 0 L 9 9 40 5 60 7;M 0 9 L 90 9 4 5 6 7\"/></path>");
}

/// A title of this content. The gap in it is filled until the title has as much as it may have of
/// what is counted, and a little more.
template <typename Count>
QString filledUp(const QString &content, qint64 most, Count count, QChar filling = QLatin1Char('x'))
{
    const QString title = svgTitle(judgedPath() + content);
    const int missing = int(most) - count(QString(title).remove(QStringLiteral("%2")));
    return QString(title).replace(QStringLiteral("%2"), QString(missing, filling));
}

int sizeOf(const QString &text)
{
    return text.toUtf8().size();
}

int textLengthOf(const QString &text)
{
    QDomDocument tree;
    tree.setContent(text);
    return tree.documentElement().text().size();
}

QString ownAttributes(int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QStringLiteral(" a%1=\"\"").arg(i);
    return text;
}

QString animationsOfAttributes(int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QStringLiteral("<animate attributeName=\"b%1\" to=\"1\" dur=\"1s\"/>").arg(i);
    return text;
}

QString quotes(int count)
{
    return QString(count, QLatin1Char('"'));
}

} // namespace

class FrameLimitsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void playsAtTheLimit_data();
    void playsAtTheLimit();
    void animatesOneAttributeManyTimes();
    void countsWhiteSpaceOfSectionsInFrames();
};

void FrameLimitsTest::playsAtTheLimit_data()
{
    using namespace AdmissionLimits;
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tooMuch");
    const auto row = [](const char *name, auto makeTitle) {
        QTest::newRow(name) << makeTitle(0) << makeTitle(1);
    };
    const auto title = [](const QString &content) { return svgTitle(judgedPath() + content); };
    const QString spans = QStringLiteral("<tspan/>").repeated(100);

    row("text size: a declaration and indentation", [](int more) {
        return filledUp(QStringLiteral("<!--%2-->") + QStringLiteral("<g/>").repeated(100),
                        textSize.most + more, sizeOf);
    });
    row("text size: quotes", [](int more) {
        return filledUp(QStringLiteral("<g a='%1'/><!--%2-->").arg(quotes(1000)),
                        textSize.most + more, sizeOf);
    });
    row("text size: entities", [](int more) {
        const QString type = QStringLiteral("<!DOCTYPE svg [<!ENTITY e \"%1\">]>")
                                     .arg(QString(4000, QLatin1Char('y')));
        return type
                + filledUp(QStringLiteral("<desc>%1</desc><!--%2-->")
                                   .arg(QStringLiteral("&e;").repeated(900)),
                           textSize.most + more - type.size(), sizeOf);
    });
    row("markup", [](int more) {
        return filledUp(
                QStringLiteral("<!--%2-->"), markup.most + more,
                [](const QString &text) { return text.count(QLatin1Char('<')); }, QLatin1Char('<'));
    });
    row("text length", [&](int more) {
        return filledUp(QStringLiteral("<text>%1%2</text>").arg(spans), textLength.most + more,
                        textLengthOf);
    });
    row("drawn characters", [&](int more) {
        // Each span counts as ten characters.
        const QString text = QStringLiteral("<text>%1%2</text>").arg(spans);
        return title(QString(text)
                             .replace(QLatin1String("%2"), QString(99'000, QLatin1Char('x')))
                             .repeated(10)
                     + QStringLiteral("<text>%1</text>").arg(QString(more, QLatin1Char('x'))));
    });
    row("style sheet size", [](int more) {
        return filledUp(QStringLiteral("<style><!--a--><!--b-->%2</style>"),
                        styleSheetSize.most + more, textLengthOf);
    });
    row("attributes that an element has", [&](int more) {
        return title(QStringLiteral("<g%1>%2</g>")
                             .arg(ownAttributes(256 + more), animationsOfAttributes(256)));
    });
    row("attributes that an element is given", [&](int more) {
        return title(QStringLiteral("<g%1>%2</g>")
                             .arg(ownAttributes(256), animationsOfAttributes(256 + more)));
    });
    row("attributes of a use element", [&](int more) {
        return title(QStringLiteral("<defs><g id=\"d\" visibility=\"hidden\"/></defs>"
                                    "<use xlink:href=\"#d\"%1/>")
                             .arg(ownAttributes(255 + more)));
    });
    row("elements", [&](int more) {
        return title(QStringLiteral("<g/>").repeated(int(elements.most) - 3 + more));
    });
    row("nesting depth", [&](int more) {
        const int depth = int(nestingDepth.most) - 1 + more;
        return title(QStringLiteral("<g>").repeated(depth)
                     + QStringLiteral("</g>").repeated(depth));
    });
    row("attribute length", [&](int more) {
        return title(
                QStringLiteral("<g a='%1'/>")
                        .arg(quotes(1000)
                             + QString(int(attributeLength.most) - 1000 + more, QLatin1Char('y'))));
    });
}

void FrameLimitsTest::playsAtTheLimit()
{
    QFETCH(QString, text);
    QFETCH(QString, tooMuch);
    QVERIFY(!SvgDocument(tooMuch).isLoaded());
    SvgDocument document(text);
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    document.applyAnimation(500);
    QCOMPARE(document.errorString(), QString());
    if (!text.contains(QLatin1String("<text>"))) // Qt says that it cuts long ones
        QVERIFY(!isBlank(renderAt(document, 500)));

    const QString turn = QStringLiteral("turn");
    document.prepareAdjustedAttibutes({turn});
    document.adjustAttribute(turn, QStringLiteral("1"));
    QCOMPARE(document.errorString(), QString());
    QCOMPARE(document.documentRoot().firstChildElement().attribute(turn), QStringLiteral("1"));
}

void FrameLimitsTest::animatesOneAttributeManyTimes()
{
    const QString animation = QStringLiteral("<animate attributeName=\"x\" to=\"1\" dur=\"1s\"/>");
    const SvgDocument document(
            svgTitle(QStringLiteral("<rect>%1</rect>").arg(animation.repeated(1000))));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    QCOMPARE(document.animations().size(), std::size_t(1000));
}

// That does not come from saving, and counts wherever an animation shows it.
void FrameLimitsTest::countsWhiteSpaceOfSectionsInFrames()
{
    SvgDocument document(svgTitle(
            QStringLiteral("<g id=\"t9\"/><defs><text id=\"t2.000\"><![CDATA[%1]]></text></defs>%2")
                    .arg(QString(90'000, QLatin1Char(' ')),
                         QStringLiteral(
                                 "<use xlink:href=\"#t9\"><animate attributeName=\"xlink:href\""
                                 " dur=\"1s\" values=\"#t1;#t3\"/></use>")
                                 .repeated(20))));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    document.applyAnimation(500);
    QVERIFY(document.errorString().contains(QLatin1String("drawn characters")));
}

QTEST_MAIN(FrameLimitsTest)

#include "tst_framelimits.moc"
