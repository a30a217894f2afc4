// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/SvgDocument.h>

#include <QDomDocument>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QTextCodec>

#include <limits>
#include <memory>

// How a template's text becomes a document: what the constructor makes of it, and how the text and
// the tree are kept in step.

namespace {

const QString cyrillic = QStringLiteral("Титры: конец истории");
const QString cjk = QStringLiteral("字幕片尾结束一二三四五");
const QString emoji = QStringLiteral("\U0001F3AC\U0001F39E\U0001F600\U0001F3C1\U0001F4FD");

QString svg(const QString &content, const QString &rootAttributes)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                          " xmlns:xlink=\"http://www.w3.org/1999/xlink\" %1>%2</svg>")
            .arg(rootAttributes, content);
}

QString svg(const QString &content)
{
    return svg(content, QStringLiteral("viewBox=\"0 0 100 50\""));
}

QString redRect()
{
    return QStringLiteral("<rect id=\"r\" x=\"10\" y=\"10\" width=\"40\" height=\"20\""
                          " fill=\"#ff0000\"/>");
}

QDomElement firstElement(const QDomDocument &tree, const QString &tagName)
{
    return tree.elementsByTagName(tagName).item(0).toElement();
}

/// Writes a text over the start of the document's own, as any user of a buffer would.
void writeText(SvgDocument &document, const QByteArray &text)
{
    QVERIFY(document.seek(0));
    QCOMPARE(document.write(text), qint64(text.size()));
}

/// Draws over a canvas that is larger than any of the titles here; true when no pixel has changed.
bool leavesCanvasUntouched(SvgDocument &document, int ms = 0)
{
    QImage canvas(120, 80, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(QColor(1, 2, 3, 255));
    const QImage before = canvas.copy();
    QPainter painter(&canvas);
    document.paint(&painter, ms);
    painter.end();
    return canvas == before;
}

/// The colour rewriting in its plainest form: one replacement in the bytes after the other.
QByteArray withColorsFixedStepByStep(QByteArray data)
{
    int from = 0;
    while (true) {
        const int s = data.indexOf("\"rgba(", from);
        if (s < 0)
            return data;
        const int e = data.indexOf(")\"", s + 1);
        if (e < 0)
            return data;
        const QList<QByteArray> parts = data.mid(s + 6, e - s - 6).split(',');
        if (parts.size() != 4)
            return data;
        QByteArray replacement("#");
        for (int i = 0; i < 3; ++i) {
            bool ok = false;
            const uint number = parts.at(i).trimmed().toUInt(&ok, 10);
            replacement += QByteArray::number(ok ? number : 0u, 16);
        }
        data.replace(s + 1, e - s, replacement);
        from = e;
    }
}

} // namespace

class LoadingTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void isAnOpenBufferOfItsText();
    void startsWithTheSizeOfTheViewBox_data();
    void startsWithTheSizeOfTheViewBox();
    void takesTheViewBoxOfTheFirstSvg_data();
    void takesTheViewBoxOfTheFirstSvg();
    void parsesTheTextForTheViewBox();
    void keepsTheBoundsThatAreSet();

    void rewritesColors_data();
    void rewritesColors();
    void rewritesColorsStepByStep();
    void rewritesColorsOfItsText();

    void analysesTimingOnlyOfAnimatedText_data();
    void analysesTimingOnlyOfAnimatedText();
    void looksForClippingInTheGivenText_data();
    void looksForClippingInTheGivenText();
    void lastsAsLongAsItsLatestAnimation_data();
    void lastsAsLongAsItsLatestAnimation();
    void asksTheRendererBeforeBeginsAreRewritten();

    void refusesBrokenText_data();
    void refusesBrokenText();
    void neverDrawsBrokenText_data();
    void neverDrawsBrokenText();
    void parsesOtherRootsButNeverDrawsThem();
    void analysesTreesWithOtherRoots();
    void readsOnlyUpToTheEndOfTheRoot_data();
    void readsOnlyUpToTheEndOfTheRoot();
    void drawsAnUndefinedEntityWhileStill();
    void expandsInternalEntities();
    void drawsOnlyUpToTheEndOfANestedSvg();

    void ignoresTheDeclaredEncoding_data();
    void ignoresTheDeclaredEncoding();
    void savesInUtf8WhateverTheLocale();

    void listsAllNodesInPreOrder();
    void appendsNodesToTheList();
    void savesChangesOfTheTree();
    void hasNoRootWithoutText();

    void keepsTheBytesAfterAShorterText_data();
    void keepsTheBytesAfterAShorterText();
    void readsToTheEndOfAShorterTextOnly();
    void growsWithALongerText();

    void drawsTextThatWasWrittenIntoTheBuffer();
    void parsesTextThatWasWrittenIntoTheBuffer();
    void parsesTextThatWasWrittenOverBrokenText();
    void drawsTextThatWasWrittenOverBrokenText();
    void takesTextInPieces();
    void takesBytesChangedInPlace_data();
    void takesBytesChangedInPlace();
    void dropsTheTreeOfTextThatIsBrokenNow_data();
    void dropsTheTreeOfTextThatIsBrokenNow();
};

void LoadingTest::isAnOpenBufferOfItsText()
{
    const QString text = svg(redRect());
    SvgDocument document(text);
    QVERIFY(document.isLoaded());
    QVERIFY(!document.parent());
    QVERIFY(document.isOpen());
    QCOMPARE(document.openMode() & QIODevice::ReadWrite, QIODevice::OpenMode(QIODevice::ReadWrite));
    QCOMPARE(document.data(), text.toUtf8());
    QCOMPARE(document.size(), qint64(text.toUtf8().size()));
    QCOMPARE(document.animationDurationTotal(), 0);
    QCOMPARE(document.animationConclusionDuration(), 0);
    QVERIFY(!document.hasClipping());
    QCOMPARE(document.documentRoot().nodeName(), QStringLiteral("svg"));
}

void LoadingTest::startsWithTheSizeOfTheViewBox_data()
{
    QTest::addColumn<QString>("rootAttributes");
    QTest::addColumn<QSizeF>("size");

    const auto row = [](const char *name, const char *viewBox, qreal width, qreal height) {
        QTest::newRow(name) << QStringLiteral("viewBox=\"%1\"").arg(QLatin1String(viewBox))
                            << QSizeF(width, height);
    };
    row("spaces; x and y are ignored", "10 20 300 200", 300, 200);
    row("commas", "0,0,640,360", 640, 360);
    row("commas and spaces", "0, 0, 640, 360", 640, 360);
    row("empty parts do not count", "0  0,,640 , 360", 640, 360);
    row("separators at both ends", " ,0 0 640 360, ", 640, 360);
    row("x and y may be anything", "a b 640 360", 640, 360);
    row("more than four parts", "0 0 640 360 80 90", 640, 360);
    row("negative sizes", "0 0 -640 -360", -640, -360);
    row("fraction in the width", "0 0 640.5 360", 0, 360);
    row("fraction in the height", "0 0 640 360.0", 640, 0);
    row("unit", "0 0 640px 360", 0, 360);
    row("exponent", "0 0 64e1 360", 0, 360);
    row("hexadecimal", "0 0 0x10 360", 0, 360);
    row("percentage", "0 0 100% 360", 0, 360);
    row("beyond int", "0 0 99999999999 360", 0, 360);
    row("no number", "0 0 wide 360", 0, 360);
    row("three parts", "0 0 640", 640, 0);
    row("two parts", "640 360", 0, 0);
    row("one part", "640", 0, 0);
    row("separators alone", " , ,, ", 0, 0);
    row("empty", "", 0, 0);
    row("lines do not separate", "0\n0\n640\n360", 0, 0);
    row("line breaks by reference do not separate", "0&#10;0&#10;640&#10;360", 0, 0);
    row("tabs do not separate", "0\t0\t640\t360", 0, 0);
    row("a line break joins two parts into one", "0 0\n640 360 7", 360, 7);
    row("a size with a line break is no number", "0 0 640\n360", 0, 0);
    QTest::newRow("no view box") << QString() << QSizeF(0, 0);
    QTest::newRow("width and height are no view box")
            << QStringLiteral("width=\"640\" height=\"360\"") << QSizeF(0, 0);
    QTest::newRow("the name is case-sensitive")
            << QStringLiteral("viewbox=\"0 0 640 360\"") << QSizeF(0, 0);
}

void LoadingTest::startsWithTheSizeOfTheViewBox()
{
    QFETCH(QString, rootAttributes);
    QFETCH(QSizeF, size);
    SvgDocument document(svg(redRect(), rootAttributes));
    QVERIFY(document.isLoaded());
    QCOMPARE(document.bounds(), QRectF(QPointF(0, 0), size));
    QCOMPARE(document.viewBox(), QRectF(QPointF(0, 0), size));
    QCOMPARE(leavesCanvasUntouched(document), size.isEmpty());
}

void LoadingTest::takesTheViewBoxOfTheFirstSvg_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("the root, not an svg inside it")
            << svg(QStringLiteral("<g><svg viewBox=\"0 0 7 9\"/></g>")) << QSizeF(100, 50);
    QTest::newRow("the root, even without a view box")
            << svg(QStringLiteral("<g><svg viewBox=\"0 0 7 9\"/></g>"), QString()) << QSizeF(0, 0);
    QTest::newRow("a prefixed root is not named svg")
            << QStringLiteral("<svg:svg xmlns:svg=\"http://www.w3.org/2000/svg\""
                              " viewBox=\"0 0 100 50\"/>")
            << QSizeF(0, 0);
    QTest::newRow("an svg inside a prefixed root")
            << QStringLiteral("<svg:svg xmlns:svg=\"http://www.w3.org/2000/svg\""
                              " viewBox=\"0 0 100 50\"><svg viewBox=\"0 0 7 9\"/></svg:svg>")
            << QSizeF(7, 9);
}

void LoadingTest::takesTheViewBoxOfTheFirstSvg()
{
    QFETCH(QString, text);
    QFETCH(QSizeF, size);
    const SvgDocument document(text);
    QVERIFY(document.isLoaded());
    QCOMPARE(document.bounds(), QRectF(QPointF(0, 0), size));
}

void LoadingTest::parsesTheTextForTheViewBox()
{
    SvgDocument document(svg(redRect()));
    document.documentRoot().toElement().setAttribute(QStringLiteral("viewBox"),
                                                     QStringLiteral("0 0 1 2"));
    QCOMPARE(document.viewBox(), QRectF(0, 0, 100, 50));
    QCOMPARE(document.documentRoot().toElement().attribute(QStringLiteral("viewBox")),
             QStringLiteral("0 0 100 50"));

    document.documentRoot().toElement().setAttribute(QStringLiteral("viewBox"),
                                                     QStringLiteral("0 0 1 2"));
    document.saveToBuffer();
    QCOMPARE(document.viewBox(), QRectF(0, 0, 1, 2));
    QCOMPARE(document.bounds(), QRectF(0, 0, 100, 50));
}

void LoadingTest::keepsTheBoundsThatAreSet()
{
    SvgDocument document(svg(redRect()));
    for (const QRectF &bounds :
         {QRectF(5, -6, 640.9, 0.25), QRectF(0, 0, 0, 0), QRectF(1, 2, -3, -4)}) {
        document.setBounds(bounds);
        QCOMPARE(document.bounds(), bounds);
    }
}

void LoadingTest::rewritesColors_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    const auto row = [](const char *name, const char *before, const char *after) {
        QTest::newRow(name) << QByteArray(before) << QByteArray(after);
    };
    row("no padding", "\"rgba(255, 0, 0, 1)\"", "\"#ff00\"");
    row("six digits", "\"rgba(16,32,48,0.5)\"", "\"#102030\"");
    row("white space is trimmed", "\"rgba( 1 ,\t2\n, 3 , 0 )\"", "\"#123\"");
    row("three digits", "\"rgba(1, 2, 3, 0.5)\"", "\"#123\"");
    row("lower-case digits", "\"rgba(171,205,239,1)\"", "\"#abcdef\"");
    row("leading zeros", "\"rgba(007,010,0,1)\"", "\"#7a0\"");
    row("more than 255", "\"rgba(256,1000,65536,1)\"", "\"#1003e810000\"");
    row("fractions, percentages and words are 0", "\"rgba(12.5,50%,red,1)\"", "\"#000\"");
    row("negative numbers are 0", "\"rgba(-1,2,3,1)\"", "\"#023\"");
    row("numbers beyond 32 bits are 0", "\"rgba(4294967296,4294967295,3,1)\"", "\"#0ffffffff3\"");
    row("hexadecimal numbers are 0", "\"rgba(0x10,ff,3,1)\"", "\"#003\"");
    row("numbers with gaps are 0", "\"rgba(1 2,3,4,1)\"", "\"#034\"");
    row("empty parts are 0", "\"rgba(,,,)\"", "\"#000\"");
    row("the alpha may be anything", "\"rgba(1,2,3,url(#a)\"", "\"#123\"");
    row("single quotes", "'rgba(1,2,3,1)'", "'rgba(1,2,3,1)'");
    row("not directly after the quote", "\"fill:rgba(1,2,3,1)\"", "\"fill:rgba(1,2,3,1)\"");
    row("space after the quote", "\" rgba(1,2,3,1)\"", "\" rgba(1,2,3,1)\"");
    row("space before the parenthesis", "\"rgba (1,2,3,1)\"", "\"rgba (1,2,3,1)\"");
    row("upper case", "\"RGBA(1,2,3,1)\"", "\"RGBA(1,2,3,1)\"");
    row("rgb", "\"rgb(1,2,3)\"", "\"rgb(1,2,3)\"");
    row("no closing", "\"rgba(1,2,3,1\"", "\"rgba(1,2,3,1\"");
    row("a space before the closing quote is no closing", "\"rgba(1,2,3,1) \"",
        "\"rgba(1,2,3,1) \"");
    row("the value reaches to the next closing", "\"rgba(1,2,3,1\" b=\"x)\"", "\"#123\"");
    row("three parts end the rewriting",
        "a=\"rgba(1,2,3)\" looooooooooooooooooooong=\"rgba(4,5,6,1)\"",
        "a=\"rgba(1,2,3)\" looooooooooooooooooooong=\"rgba(4,5,6,1)\"");
    row("five parts end the rewriting",
        "a=\"rgba(1,2,3,4,5)\" looooooooooooooooooooong=\"rgba(4,5,6,1)\"",
        "a=\"rgba(1,2,3,4,5)\" looooooooooooooooooooong=\"rgba(4,5,6,1)\"");
    row("what stands before the end of the rewriting is rewritten",
        "a=\"rgba(7,8,9,1)\" looooooooooooooooooooong=\"rgba(1,2)\" b=\"rgba(4,5,6,1)\"",
        "a=\"#789\" looooooooooooooooooooong=\"rgba(1,2)\" b=\"rgba(4,5,6,1)\"");
    row("a later value", "a=\"rgba(1,2,3,1)\" looooooooooooooooooooong=\"rgba(4,5,6,1)\"",
        "a=\"#123\" looooooooooooooooooooong=\"#456\"");
    row("the next value is too close", "a=\"rgba(1,2,3,1)\" b=\"rgba(4,5,6,1)\"",
        "a=\"#123\" b=\"rgba(4,5,6,1)\"");
    row("only the next value is too close",
        "a=\"rgba(1,2,3,1)\" b=\"rgba(4,5,6,1)\" c=\"rgba(7,8,9,1)\"",
        "a=\"#123\" b=\"rgba(4,5,6,1)\" c=\"#789\"");
    // The value before it becomes nine bytes shorter, so the search goes on nine bytes after its
    // closing parenthesis.
    row("just too close", "\"rgba(1,2,3,1)\"123456\"rgba(4,5,6,1)\"",
        "\"#123\"123456\"rgba(4,5,6,1)\"");
    row("just far enough", "\"rgba(1,2,3,1)\"1234567\"rgba(4,5,6,1)\"", "\"#123\"1234567\"#456\"");
    row("nothing to rewrite", "no colour at all", "no colour at all");
    row("no text", "", "");
}

void LoadingTest::rewritesColors()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    SvgDocument document{QString()};
    QByteArray data = before;
    document.fixColors(data);
    QCOMPARE(data, after);
    QCOMPARE(withColorsFixedStepByStep(before), after);
    QCOMPARE(document.data(), QByteArray());
}

void LoadingTest::rewritesColorsStepByStep()
{
    const QList<QByteArray> pieces{"\"rgba(",
                                   "rgba(",
                                   ")\"",
                                   ")",
                                   "\"",
                                   ",",
                                   ",",
                                   ",",
                                   ",",
                                   " ",
                                   "0",
                                   "7",
                                   "16",
                                   "255",
                                   "1000",
                                   "12.5",
                                   "50%",
                                   "-3",
                                   "x",
                                   "\n",
                                   "999",
                                   "\"rgba(1,2,3,1)\"",
                                   "\"rgba(255, 255, 255, 0.5)\"",
                                   "\"rgba(4294967295,0,0,0)\"",
                                   "fill=",
                                   "\xD0\xAF"};
    SvgDocument document{QString()};
    QRandomGenerator random(20240229);
    int rewritten = 0;
    for (int round = 0; round < 20000; ++round) {
        QByteArray before;
        const int count = random.bounded(40);
        for (int i = 0; i < count; ++i)
            before += pieces.at(random.bounded(pieces.size()));
        QByteArray data = before;
        document.fixColors(data);
        QCOMPARE(data, withColorsFixedStepByStep(before));
        rewritten += data != before;
    }
    QVERIFY(rewritten > 5000);
}

void LoadingTest::rewritesColorsOfItsText()
{
    const QString before = svg(QStringLiteral("<rect fill=\"rgba(16, 255, 32, 0.5)\""
                                              " x=\"10\" width=\"20\" height=\"30\"/>"));
    QString after = before;
    after.replace(QStringLiteral("rgba(16, 255, 32, 0.5)"), QStringLiteral("#10ff20"));
    SvgDocument document(before);
    QCOMPARE(document.data(), after.toUtf8());
    QCOMPARE(document.documentRoot().firstChildElement().attribute(QStringLiteral("fill")),
             QStringLiteral("#10ff20"));
    SvgDocument twin(after);
    COMPARE_PICTURES(renderAt(document, 0), renderAt(twin, 0), 0);

    const QString broken = QStringLiteral("<svg fill=\"rgba(1,2,3,4)\"");
    QCOMPARE(SvgDocument(broken).data(), QByteArray("<svg fill=\"#123\""));
}

void LoadingTest::analysesTimingOnlyOfAnimatedText_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("analysed");

    const auto row = [](const char *name, const char *content, bool analysed) {
        QTest::newRow(name) << QString::fromUtf8(content) << analysed;
    };
    row("animate", "<animate/>", true);
    row("animate with attributes", "<animate attributeName=\"x\"/>", true);
    row("animate with a line break", "<animate\nattributeName=\"x\"/>", true);
    row("animate with an end tag", "<animate></animate>", true);
    row("in a comment", "<!-- <animate -->", true);
    row("at the start of a CDATA section", "<text><![CDATA[<animate]]></text>", true);
    row("after a space", "<text>abc <animate/></text>", true);
    row("after a letter that is not ASCII", "<text>\xD0\xB0<animate/></text>", true);
    row("another name after a hyphen", "<animate-x/>", true);
    row("another name with a letter that is not ASCII", "<animate\xC3\xA9/>", true);
    row("in text that the colour rewriting removes", "<!-- \"rgba(1,2,3,<animate )\" -->", true);
    row("nothing but animateTransform", "", false);
    row("animateColor",
        "<g><animateColor attributeName=\"fill\" from=\"red\" to=\"blue\" dur=\"1s\"/></g>", false);
    row("animateMotion", "<animateMotion/>", false);
    row("set", "<set/>", false);
    row("upper case", "<Animate/>", false);
    row("directly after a letter", "<text>abc<animate/></text>", false);
    row("directly after a digit", "<text>5<animate/></text>", false);
    row("with an underscore", "<animate_/>", false);
    row("with a digit", "<animate2/>", false);
    row("prefixed", "<s:animate xmlns:s=\"http://www.w3.org/2000/svg\"/>", false);
    row("an end tag alone", "<!-- </animate> -->", false);
    row("escaped", "<text>&lt;animate </text>", false);
}

void LoadingTest::analysesTimingOnlyOfAnimatedText()
{
    QFETCH(QString, content);
    QFETCH(bool, analysed);
    // The analysis alone rewrites this begin.
    const QString transform = QStringLiteral(
            "<g><animateTransform attributeName=\"transform\" type=\"translate\" from=\"0\""
            " to=\"9\" begin=\"-1ms\" dur=\"1s\"/></g>");
    const QString text = svg(transform + content);
    SvgDocument document(text);
    QVERIFY(document.isLoaded());
    const QDomElement animation =
            firstElement(savedTree(document), QStringLiteral("animateTransform"));
    QCOMPARE(animation.attribute(QStringLiteral("begin")),
             analysed ? QStringLiteral("0ms") : QStringLiteral("-1ms"));
    if (!analysed) {
        QCOMPARE(document.data(), text.toUtf8());
        renderAt(document, 500);
        QCOMPARE(document.data(), text.toUtf8());
    }
}

void LoadingTest::looksForClippingInTheGivenText_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("clips");

    const auto row = [](const char *name, const char *content, bool clips) {
        QTest::newRow(name) << QString::fromUtf8(content) << clips;
    };
    row("clipPath", "<clipPath id=\"c\"><rect/></clipPath>", true);
    row("empty clipPath", "<clipPath/>", true);
    row("in a comment", "<!-- <clipPath -->", true);
    row("after a space", "<text>abc <clipPath/></text>", true);
    row("in text that the colour rewriting removes", "<!-- \"rgba(1,2,3,<clipPath )\" -->", true);
    row("none", "<rect/>", false);
    row("lower case", "<clippath/>", false);
    row("the attribute", "<rect clip-path=\"url(#clipPath)\"/>", false);
    row("another name", "<clipPaths/>", false);
    row("directly after a letter", "<text>abc<clipPath/></text>", false);
    row("prefixed", "<s:clipPath xmlns:s=\"http://www.w3.org/2000/svg\"/>", false);
}

void LoadingTest::looksForClippingInTheGivenText()
{
    QFETCH(QString, content);
    QFETCH(bool, clips);
    SvgDocument document(svg(redRect() + content));
    QVERIFY(document.isLoaded());
    QCOMPARE(document.hasClipping(), clips);
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    QCOMPARE(clipping != nullptr, clips);
}

void LoadingTest::lastsAsLongAsItsLatestAnimation_data()
{
    QTest::addColumn<QString>("animations");
    QTest::addColumn<int>("total");

    const auto row = [](const char *name, const char *animations, int total) {
        QTest::newRow(name) << QString::fromLatin1(animations) << total;
    };
    row("still", "", 0);
    row("animateTransform alone",
        "<animateTransform attributeName=\"transform\" type=\"rotate\" from=\"0\" to=\"9\""
        " begin=\"1s\" dur=\"2s\"/>",
        3000);
    row("animate alone", "<animate attributeName=\"x\" to=\"9\" begin=\"1s\" dur=\"2.5s\"/>", 3500);
    row("animate ends last",
        "<animateTransform attributeName=\"transform\" type=\"rotate\" from=\"0\" to=\"9\""
        " begin=\"0s\" dur=\"2s\"/>"
        "<animate attributeName=\"x\" to=\"9\" begin=\"1s\" dur=\"4s\"/>",
        5000);
    row("animateTransform ends last",
        "<animateTransform attributeName=\"transform\" type=\"rotate\" from=\"0\" to=\"9\""
        " begin=\"0s\" dur=\"7s\"/>"
        "<animate attributeName=\"x\" to=\"9\" begin=\"1s\" dur=\"4s\"/>",
        7000);
    row("an end before 0 does not count",
        "<animate attributeName=\"x\" to=\"9\" begin=\"-5s\" dur=\"4s\"/>", 0);
    row("repetitions do not count",
        "<animate attributeName=\"x\" to=\"9\" dur=\"4s\" repeatCount=\"3\"/>", 4000);
    row("times beyond int saturate",
        "<animate attributeName=\"x\" to=\"9\" begin=\"2147483s\" dur=\"2147483s\"/>",
        std::numeric_limits<int>::max());
}

void LoadingTest::lastsAsLongAsItsLatestAnimation()
{
    QFETCH(QString, animations);
    QFETCH(int, total);
    const SvgDocument document(svg(QStringLiteral("<rect>%1</rect>").arg(animations)));
    QVERIFY(document.isLoaded());
    QCOMPARE(document.animationDurationTotal(), total);
}

/// The renderer is asked before the begins are rewritten, and complains of this one.
void LoadingTest::asksTheRendererBeforeBeginsAreRewritten()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false"));
    SvgDocument document(svg(QStringLiteral(
            "<rect><animate id=\"a\" attributeName=\"x\" to=\"9\" dur=\"4s\"/>"
            "<animateColor attributeName=\"fill\" from=\"red\" to=\"blue\" begin=\"a.end\""
            " dur=\"3s\"/></rect>")));
    QLoggingCategory::setFilterRules(QString());
    QVERIFY(document.isLoaded());
    QCOMPARE(firstElement(savedTree(document), QStringLiteral("animateColor"))
                     .attribute(QStringLiteral("begin")),
             QStringLiteral("4000ms"));
    QCOMPARE(document.animationDurationTotal(), 4000);
}

void LoadingTest::refusesBrokenText_data()
{
    QTest::addColumn<QString>("text");
    const QString start = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                                         " viewBox=\"0 0 100 50\">")
            + redRect()
            + QStringLiteral("<clipPath/><rect><animate id=\"CONCLUSION\" attributeName=\"x\""
                             " to=\"9\" begin=\"1s\" dur=\"3s\"/></rect>");
    QTest::newRow("empty") << QString();
    QTest::newRow("white space") << QStringLiteral(" \n\t ");
    QTest::newRow("no markup") << QStringLiteral("hello");
    QTest::newRow("declaration alone") << QStringLiteral("<?xml version=\"1.0\"?>");
    QTest::newRow("never closed") << start;
    QTest::newRow("wrong end tag") << start + QStringLiteral("</svgs>");
    QTest::newRow("end of the root before that of a child") << start + QStringLiteral("<g></svg>");
    QTest::newRow("cut off inside a tag") << start + QStringLiteral("<rect wid");
    QTest::newRow("cut off inside the end tag") << start + QStringLiteral("</svg");
    QTest::newRow("attribute without value") << start + QStringLiteral("<rect width/></svg>");
    QTest::newRow("attribute without quotes") << start + QStringLiteral("<rect x=1/></svg>");
    QTest::newRow("attribute twice") << start + QStringLiteral("<rect x=\"1\" x=\"2\"/></svg>");
    QTest::newRow("bare ampersand") << start + QStringLiteral("<text>a & b</text></svg>");
    QTest::newRow("undefined entity") << start + QStringLiteral("<text>&who;</text></svg>");
    QTest::newRow("less-than sign in an attribute")
            << start + QStringLiteral("<rect id=\"<\"/></svg>");
    QTest::newRow("unclosed comment") << start + QStringLiteral("<!-- </svg>");
    QTest::newRow("unclosed CDATA section") << start + QStringLiteral("<![CDATA[ </svg>");
    QTest::newRow("forbidden character")
            << start + QStringLiteral("<text>") + QChar(1) + QStringLiteral("</text></svg>");
    QTest::newRow("text before the root") << QStringLiteral("x") + start + QStringLiteral("</svg>");
}

void LoadingTest::refusesBrokenText()
{
    QFETCH(QString, text);
    SvgDocument document(text);
    QVERIFY(!document.isLoaded());
    QVERIFY(!document.errorString().isEmpty());
    QVERIFY(!document.errorString().contains(QLatin1Char('\n')));
    QCOMPARE(document.data(), text.toUtf8());
    QCOMPARE(document.bounds(), QRectF(0, 0, 0, 0));
    QCOMPARE(document.animationDurationTotal(), 0);
    QCOMPARE(document.animationConclusionDuration(), 0);
    QVERIFY(!document.hasClipping());
    QVERIFY(!document.makeClippingDocument());
    QVERIFY(document.documentRoot().isNull());
    QCOMPARE(document.viewBox(), QRectF(0, 0, 0, 0));
    QVERIFY(document.documentRoot().isNull());
}

void LoadingTest::neverDrawsBrokenText_data()
{
    refusesBrokenText_data();
}

/// Whatever is called: the tree stays empty, so no save makes the broken text whole.
void LoadingTest::neverDrawsBrokenText()
{
    QFETCH(QString, text);
    SvgDocument document(text);
    QVERIFY(leavesCanvasUntouched(document));
    document.setBounds(QRectF(0, 0, 100, 50));
    QVERIFY(leavesCanvasUntouched(document));

    int latestEnd = -1;
    document.fixConditionalTiming();
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(latestEnd, 0);
    document.detectUseElements();
    document.detectConclusionTime();
    document.fixDefinitionsVisibility();
    document.applyAnimation(1500);
    document.prepareAdjustedAttibutes({QStringLiteral("fill")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#00ff00"));
    QVERIFY(document.documentRoot().isNull());
    QCOMPARE(document.data(), text.toUtf8());
    document.saveToBuffer();
    document.viewBox();
    QVERIFY(document.documentRoot().isNull());
    QVERIFY(leavesCanvasUntouched(document, 1500));
}

void LoadingTest::parsesOtherRootsButNeverDrawsThem()
{
    const QString text = QStringLiteral(
            "<title viewBox=\"0 0 100 50\" xmlns=\"http://www.w3.org/2000/svg\">"
            "<rect width=\"40\" height=\"20\" fill=\"#ff0000\"/><clipPath/>"
            "<rect><animate id=\"CONCLUSION\" attributeName=\"x\" to=\"9\" begin=\"2s\""
            " dur=\"3s\"/></rect></title>");
    SvgDocument document(text);
    QVERIFY(!document.isLoaded());
    QVERIFY(!document.errorString().isEmpty());
    QCOMPARE(document.data(), text.toUtf8());
    QCOMPARE(document.documentRoot().nodeName(), QStringLiteral("title"));
    QCOMPARE(document.documentRoot().childNodes().count(), 3);
    QCOMPARE(document.bounds(), QRectF(0, 0, 0, 0));
    QCOMPARE(document.animationDurationTotal(), 0);
    QCOMPARE(document.animationConclusionDuration(), -2000);
    QVERIFY(!document.hasClipping());

    document.setBounds(QRectF(0, 0, 100, 50));
    QVERIFY(leavesCanvasUntouched(document));
    document.prepareAdjustedAttibutes({QStringLiteral("fill")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#00ff00"));
    QCOMPARE(firstElement(savedTree(document), QStringLiteral("rect"))
                     .attribute(QStringLiteral("fill")),
             QStringLiteral("#00ff00"));
    QVERIFY(leavesCanvasUntouched(document, 2500));
}

void LoadingTest::analysesTreesWithOtherRoots()
{
    SvgDocument document(QStringLiteral(
            "<title xmlns:xlink=\"http://www.w3.org/1999/xlink\">"
            "<defs><rect id=\"d\" visibility=\"hidden\"/></defs><use xlink:href=\"#d\"/></title>"));
    QVERIFY(!document.isLoaded());
    QCOMPARE(firstElement(savedTree(document), QStringLiteral("use"))
                     .attribute(QStringLiteral("visibility")),
             QStringLiteral("hidden"));
}

void LoadingTest::readsOnlyUpToTheEndOfTheRoot_data()
{
    QTest::addColumn<QString>("after");
    QTest::newRow("nothing") << QString();
    QTest::newRow("white space") << QStringLiteral("\n \n");
    QTest::newRow("comment") << QStringLiteral("<!-- the end -->");
    QTest::newRow("text") << QStringLiteral("the end");
    QTest::newRow("text that is not ASCII") << cyrillic;
    QTest::newRow("second root") << svg(QStringLiteral("<g/>"));
    QTest::newRow("broken markup") << QStringLiteral("<g></h");
    QTest::newRow("end tag") << QStringLiteral("</svg>");
    QTest::newRow("bare ampersand") << QStringLiteral(" & ");
    QTest::newRow("null character") << QString(QChar(0));
}

void LoadingTest::readsOnlyUpToTheEndOfTheRoot()
{
    QFETCH(QString, after);
    const QString still = svg(redRect() + QStringLiteral("<g/>"));
    SvgDocument stillTwin(still);
    SvgDocument stillDocument(still + after);
    QVERIFY(stillDocument.isLoaded());
    QCOMPARE(stillDocument.bounds(), QRectF(0, 0, 100, 50));
    QCOMPARE(stillDocument.documentRoot().childNodes().count(), 2);
    COMPARE_PICTURES(renderAt(stillDocument, 0), renderAt(stillTwin, 0), 0);

    const QString animated = svg(QStringLiteral(
            "<rect y=\"10\" width=\"20\" height=\"20\"><animate attributeName=\"x\" from=\"0\""
            " to=\"80\" dur=\"1s\"/></rect>"));
    SvgDocument animatedTwin(animated);
    SvgDocument animatedDocument(animated + after);
    QCOMPARE(animatedDocument.animationDurationTotal(), 1000);
    for (const int ms : {500, 0, 2000})
        COMPARE_PICTURES(renderAt(animatedDocument, ms), renderAt(animatedTwin, ms), 0);
}

/// An entity of an outer document type can't be known. What is not saved is drawn without it;
/// saving leaves the document type out.
void LoadingTest::drawsAnUndefinedEntityWhileStill()
{
    const QString docType =
            QStringLiteral("<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\""
                           " \"http://www.w3.org/Graphics/SVG/1.1/DTD/svg11.dtd\">");
    SvgDocument still(docType + svg(redRect() + QStringLiteral("<text>&nbsp;</text>")));
    QVERIFY(still.isLoaded());
    QVERIFY(!isBlank(renderAt(still, 0)));

    SvgDocument animated(docType
                         + svg(redRect()
                               + QStringLiteral("<text>&nbsp;</text><rect><animate"
                                                " attributeName=\"x\" to=\"9\" dur=\"1s\"/>"
                                                "</rect>")));
    QVERIFY(animated.isLoaded());
    QVERIFY(leavesCanvasUntouched(animated, 500));
}

void LoadingTest::expandsInternalEntities()
{
    const QString docType =
            QStringLiteral("<!DOCTYPE svg [<!ENTITY shade \"#00ff00\"><!ENTITY word \"Ende\">]>");
    const QString content = QStringLiteral("<rect y=\"10\" width=\"20\" height=\"20\" fill=\"%1\">"
                                           "<animate attributeName=\"x\" from=\"0\" to=\"80\""
                                           " dur=\"1s\"/></rect><text>%2</text>");
    SvgDocument document(docType
                         + svg(content.arg(QStringLiteral("&shade;"), QStringLiteral("&word;"))));
    SvgDocument twin(svg(content.arg(QStringLiteral("#00ff00"), QStringLiteral("Ende"))));
    QVERIFY(document.isLoaded());
    for (const int ms : {0, 500, 2000})
        COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, ms), 0);
    QCOMPARE(firstElement(savedTree(document), QStringLiteral("text")).text(),
             QStringLiteral("Ende"));
}

void LoadingTest::drawsOnlyUpToTheEndOfANestedSvg()
{
    SvgDocument document(svg(redRect()
                             + QStringLiteral("<svg/><rect x=\"60\" y=\"10\" width=\"20\""
                                              " height=\"20\" fill=\"#0000ff\"/>")));
    SvgDocument twin(svg(redRect()));
    QVERIFY(document.isLoaded());
    QCOMPARE(document.documentRoot().childNodes().count(), 3);
    COMPARE_PICTURES(renderAt(document, 0), renderAt(twin, 0), 0);
}

void LoadingTest::ignoresTheDeclaredEncoding_data()
{
    QTest::addColumn<QString>("declaration");
    const QString declaration = QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?>\n");
    for (const char *encoding : {"UTF-8", "utf-8", "ISO-8859-1", "UTF-16", "UTF-16LE", "UTF-32",
                                 "windows-1251", "Shift_JIS", "US-ASCII", "X-UNKNOWN"})
        QTest::newRow(encoding) << declaration.arg(QLatin1String(encoding));
    QTest::newRow("single quotes") << QStringLiteral("<?xml version='1.0' encoding='ISO-8859-1'?>");
    QTest::newRow("spaces around the sign")
            << QStringLiteral("<?xml version=\"1.0\"  encoding = \"ISO-8859-1\" ?>");
    QTest::newRow("standalone") << QStringLiteral(
            "<?xml version=\"1.0\" encoding=\"KOI8-R\" standalone=\"yes\"?>");
    QTest::newRow("line break in the declaration")
            << QStringLiteral("<?xml version=\"1.0\"\nencoding=\"ISO-8859-1\"\n?>");
    QTest::newRow("no encoding") << QStringLiteral("<?xml version=\"1.0\"?>");
    QTest::newRow("no declaration") << QString();
    QTest::newRow("byte order mark") << QString(QChar(0xFEFF));
    QTest::newRow("byte order mark and another encoding")
            << QChar(0xFEFF) + declaration.arg(QLatin1String("ISO-8859-1"));
}

void LoadingTest::ignoresTheDeclaredEncoding()
{
    QFETCH(QString, declaration);
    const QString words = cyrillic + QStringLiteral(" äöü €") + cjk + emoji;
    const QString content =
            QStringLiteral("<rect id=\"%1\" y=\"10\" width=\"20\" height=\"20\" fill=\"#ff0000\">"
                           "<animate attributeName=\"x\" from=\"0\" to=\"80\" dur=\"1s\"/></rect>"
                           "<text y=\"45\" font-size=\"8\">%1</text>")
                    .arg(words);
    SvgDocument document(declaration + svg(content));
    SvgDocument twin(svg(content));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));

    const auto holdsTheWords = [&words](const QDomDocument &tree) {
        return firstElement(tree, QStringLiteral("text")).text() == words
                && firstElement(tree, QStringLiteral("rect")).attribute(QStringLiteral("id"))
                == words;
    };
    QVERIFY(holdsTheWords(savedTree(document)));
    for (const int ms : {0, 500, 2000}) {
        COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, ms), 0);
        QVERIFY(holdsTheWords(savedTree(document)));
    }

    for (SvgDocument *adjusted : {&document, &twin}) {
        adjusted->prepareAdjustedAttibutes({QStringLiteral("fill")});
        adjusted->adjustAttribute(QStringLiteral("fill"), QStringLiteral("#00ff00"));
    }
    QVERIFY(holdsTheWords(savedTree(document)));
    COMPARE_PICTURES(renderAt(document, 500), renderAt(twin, 500), 0);
    QVERIFY(holdsTheWords(savedTree(document)));
}

void LoadingTest::savesInUtf8WhateverTheLocale()
{
    QTextCodec *const usual = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    SvgDocument document(
            svg(QStringLiteral("<rect id=\"r\" fill=\"red\"/><text>%1</text>").arg(cyrillic)));
    document.saveToBuffer();
    const QString saved = firstElement(savedTree(document), QStringLiteral("text")).text();
    document.prepareAdjustedAttibutes({QStringLiteral("fill")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("blue"));
    const QString adjusted = firstElement(savedTree(document), QStringLiteral("text")).text();
    const QByteArray bytes = savedText(document);
    QTextCodec::setCodecForLocale(usual);
    QCOMPARE(saved, cyrillic);
    QCOMPARE(adjusted, cyrillic);
    QVERIFY(bytes.contains(cyrillic.toUtf8()));
}

void LoadingTest::listsAllNodesInPreOrder()
{
    SvgDocument document(svg(
            QStringLiteral("<g><!--note--><text>ab<tspan>cd</tspan></text></g><?how now?><rect/>"
                           "<style><![CDATA[ef]]></style>")));
    std::vector<QDomNode> nodes;
    document.getAllNodes(document.documentRoot(), nodes);
    QStringList names;
    for (const QDomNode &node : nodes)
        names.append(node.nodeName() + QLatin1Char(':') + node.nodeValue());
    const QStringList expected{QStringLiteral("svg:"),
                               QStringLiteral("g:"),
                               QStringLiteral("#comment:note"),
                               QStringLiteral("text:"),
                               QStringLiteral("#text:ab"),
                               QStringLiteral("tspan:"),
                               QStringLiteral("#text:cd"),
                               QStringLiteral("how:now"),
                               QStringLiteral("rect:"),
                               QStringLiteral("style:"),
                               QStringLiteral("#cdata-section:ef")};
    QCOMPARE(names, expected);
    QVERIFY(nodes.front() == document.documentRoot());
}

void LoadingTest::appendsNodesToTheList()
{
    SvgDocument document(svg(QStringLiteral("<text>words</text><rect/>")));
    const QDomNode text = document.documentRoot().firstChild();
    std::vector<QDomNode> nodes{document.documentRoot()};
    document.getAllNodes(text, nodes);
    QCOMPARE(int(nodes.size()), 3);
    QVERIFY(nodes[1] == text);
    QVERIFY(nodes[2] == text.firstChild());
}

void LoadingTest::savesChangesOfTheTree()
{
    SvgDocument document(svg(redRect()));
    const QByteArray before = document.data();
    QDomElement rect = document.documentRoot().firstChildElement();
    rect.setAttribute(QStringLiteral("fill"), QStringLiteral("#0000ff"));
    rect.parentNode()
            .appendChild(rect.cloneNode())
            .toElement()
            .setAttribute(QStringLiteral("x"), QStringLiteral("55"));
    QCOMPARE(document.data(), before);
    document.saveToBuffer();

    const QDomDocument tree = savedTree(document);
    const QDomNodeList rects = tree.elementsByTagName(QStringLiteral("rect"));
    QCOMPARE(rects.count(), 2);
    QCOMPARE(rects.at(0).toElement().attribute(QStringLiteral("fill")), QStringLiteral("#0000ff"));
    QCOMPARE(rects.at(1).toElement().attribute(QStringLiteral("x")), QStringLiteral("55"));
    QVERIFY(savedText(document).contains("\n <rect ")); // indented by one

    SvgDocument twin(QString::fromUtf8(savedText(document)));
    COMPARE_PICTURES(renderAt(document, 0), renderAt(twin, 0), 0);
    QCOMPARE(renderAt(document, 0).pixelColor(60, 20), QColor(0, 0, 255));
}

void LoadingTest::hasNoRootWithoutText()
{
    SvgDocument document{QString()};
    QVERIFY(document.documentRoot().isNull());
    QCOMPARE(document.size(), qint64(0));
    QCOMPARE(savedText(document), QByteArray());
}

void LoadingTest::keepsTheBytesAfterAShorterText_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<bool>("multiByte");
    QTest::newRow("ASCII") << QStringLiteral("the end of the story") << false;
    QTest::newRow("Cyrillic") << cyrillic << true;
    QTest::newRow("CJK") << cjk << true;
    QTest::newRow("emoji") << emoji + emoji << true;
}

/// A gap in a tag is gone once the tree is saved, so every width of it makes another tail.
void LoadingTest::keepsTheBytesAfterAShorterText()
{
    QFETCH(QString, words);
    QFETCH(bool, multiByte);
    int shorter = 0;
    int cutCharacters = 0;
    for (int gap = 1; gap < 160; ++gap) {
        const QString text =
                svg(QStringLiteral("<rect%1id=\"r\" x=\"10\" y=\"10\" width=\"40\" height=\"20\""
                                   " fill=\"#ff0000\"/><text y=\"45\" font-size=\"8\">%2</text>")
                            .arg(QString(gap, QLatin1Char(' ')), words));
        const QByteArray source = text.toUtf8();
        SvgDocument document(text);
        const QImage before = renderAt(document, 0);
        document.saveToBuffer();

        const int length = int(document.size());
        shorter += length < source.size();
        QCOMPARE(document.data().size(), qMax(length, source.size()));
        QCOMPARE(document.data().mid(length), source.mid(length));
        QCOMPARE(savedText(document), document.data().left(length));
        QVERIFY(savedText(document).trimmed().endsWith("</svg>"));
        cutCharacters += length < source.size() && (uchar(source.at(length)) & 0xC0) == 0x80;

        QCOMPARE(firstElement(savedTree(document), QStringLiteral("text")).text(), words);
        COMPARE_PICTURES(renderAt(document, 0), before, 0);
        QCOMPARE(document.viewBox(), QRectF(0, 0, 100, 50));
        QCOMPARE(document.documentRoot().childNodes().count(), 2);
    }
    QVERIFY(shorter > 50);
    QCOMPARE(cutCharacters > 15, multiByte);
}

void LoadingTest::readsToTheEndOfAShorterTextOnly()
{
    SvgDocument document(svg(QString(300, QLatin1Char(' ')) + redRect()));
    document.saveToBuffer();
    const QByteArray text = document.data().left(int(document.size()));
    QVERIFY(text.size() < document.data().size());

    document.seek(0);
    QCOMPARE(document.bytesAvailable(), document.size());
    QByteArray read;
    while (!document.atEnd())
        read += document.read(7);
    QCOMPARE(read, text);
    QCOMPARE(document.pos(), document.size());
    QCOMPARE(document.read(1), QByteArray());
    document.seek(document.size() - 3);
    QCOMPARE(document.read(100), text.right(3));
    document.seek(0);
    QCOMPARE(document.read(document.data().size()), text);
}

void LoadingTest::growsWithALongerText()
{
    SvgDocument document(svg(redRect()));
    document.prepareAdjustedAttibutes({QStringLiteral("fill")});
    const QStringList values{QString(50, QLatin1Char('x')), QStringLiteral("blue"),
                             cyrillic + cyrillic, QString(70000, QLatin1Char('y')),
                             QStringLiteral("#00ff00")};
    int longest = document.data().size();
    for (const QString &value : values) {
        document.adjustAttribute(QStringLiteral("fill"), value);
        longest = qMax(longest, int(document.size()));
        QCOMPARE(document.data().size(), longest);
        QCOMPARE(firstElement(savedTree(document), QStringLiteral("rect"))
                         .attribute(QStringLiteral("fill")),
                 value);
    }
    QVERIFY(longest > 70000);
    QCOMPARE(renderAt(document, 0).pixelColor(20, 20), QColor(0, 255, 0));
}

void LoadingTest::drawsTextThatWasWrittenIntoTheBuffer()
{
    SvgDocument document(svg(QString(300, QLatin1Char(' ')) + redRect()));
    const QString other = svg(QStringLiteral("<rect x=\"50\" width=\"20\" height=\"20\"/>"));
    writeText(document, other.toUtf8());
    QCOMPARE(document.size(), qint64(other.toUtf8().size()));
    SvgDocument twin(other);
    COMPARE_PICTURES(renderAt(document, 0), renderAt(twin, 0), 0);

    writeText(document, "<svg");
    QVERIFY(leavesCanvasUntouched(document));
}

void LoadingTest::parsesTextThatWasWrittenIntoTheBuffer()
{
    SvgDocument document(svg(redRect()));
    writeText(document,
              svg(QStringLiteral("<defs><g id=\"d\" visibility=\"hidden\"/></defs>"
                                 "<use xlink:href=\"#d\"/>"
                                 "<rect><animate attributeName=\"x\" id=\"CONCLUSION\" to=\"9\""
                                 " begin=\"ghost.end-2s\" dur=\"9s\"/></rect>"),
                  QStringLiteral("viewBox=\"0 0 30 40\""))
                      .toUtf8());
    QCOMPARE(document.viewBox(), QRectF(0, 0, 30, 40));
    QCOMPARE(document.documentRoot().childNodes().count(), 3);
    document.fixConditionalTiming();
    int latestEnd = 0;
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(latestEnd, 7000);
    document.detectUseElements();
    document.fixDefinitionsVisibility();
    QCOMPARE(firstElement(savedTree(document), QStringLiteral("use"))
                     .attribute(QStringLiteral("visibility")),
             QStringLiteral("hidden"));
}

void LoadingTest::parsesTextThatWasWrittenOverBrokenText()
{
    SvgDocument document(QStringLiteral("<svg><rect"));
    writeText(document, svg(redRect()).toUtf8());
    QCOMPARE(document.viewBox(), QRectF(0, 0, 100, 50));
    document.prepareAdjustedAttibutes({QStringLiteral("fill")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("blue"));
    QCOMPARE(firstElement(savedTree(document), QStringLiteral("rect"))
                     .attribute(QStringLiteral("fill")),
             QStringLiteral("blue"));
}

void LoadingTest::drawsTextThatWasWrittenOverBrokenText()
{
    SvgDocument document(QStringLiteral("<svg><rect"));
    document.setBounds(QRectF(0, 0, 100, 50));
    QVERIFY(leavesCanvasUntouched(document));
    writeText(document, svg(redRect()).toUtf8());
    SvgDocument twin(svg(redRect()));
    COMPARE_PICTURES(renderAt(document, 0), renderAt(twin, 0), 0);
}

void LoadingTest::takesTextInPieces()
{
    const QByteArray text = svg(QStringLiteral("<text>%1</text>").arg(cyrillic)).toUtf8();
    SvgDocument document(svg(redRect() + redRect()));
    document.seek(0);
    for (int i = 0; i < text.size(); i += 5)
        document.write(text.mid(i, 5));
    QCOMPARE(document.size(), qint64(text.size()));
    QCOMPARE(savedText(document), text);
    document.viewBox();
    QCOMPARE(document.documentRoot().firstChildElement().text(), cyrillic);
}

void LoadingTest::takesBytesChangedInPlace_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QByteArray>("id");
    const QString text = svg(redRect()).replace(QStringLiteral("\"r\""), QStringLiteral("\"old\""));
    QTest::newRow("longer") << text << QByteArray("longer");
    QTest::newRow("shorter") << text << QByteArray("i");
    QTest::newRow("as long") << text << QByteArray("dir");
    QTest::newRow("over a longer one") << text + QString(99, QLatin1Char('\n')) << QByteArray("i");
}

void LoadingTest::takesBytesChangedInPlace()
{
    QFETCH(QString, given);
    QFETCH(QByteArray, id);
    SvgDocument document(given);
    const QByteArray changed = given.trimmed().toUtf8().replace("old", id);
    document.saveToBuffer();
    document.buffer() = changed;
    QCOMPARE(document.size(), qint64(changed.size()));
    document.seek(0);
    QCOMPARE(document.readAll(), changed);
    QCOMPARE(document.viewBox(), QRectF(0, 0, 100, 50));
    document.saveToBuffer();
    QCOMPARE(firstElement(savedTree(document), QStringLiteral("rect"))
                     .attribute(QStringLiteral("id")),
             QString::fromUtf8(id));
}

void LoadingTest::dropsTheTreeOfTextThatIsBrokenNow_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QStringLiteral(" ");
    QTest::newRow("never closed") << QStringLiteral("<svg><rect width=\"9\" height=\"9\"/>");
    QTest::newRow("wrong end tag") << QStringLiteral("<svg><rect fill=\"red\"/></svgs>");
    QTest::newRow("nested too deep") << svg(QStringLiteral("<g fill=\"red\">").repeated(100000)
                                            + QStringLiteral("</g>").repeated(100000));
}

void LoadingTest::dropsTheTreeOfTextThatIsBrokenNow()
{
    QFETCH(QString, text);
    SvgDocument document(svg(redRect()));
    writeText(document, text.toUtf8());
    document.prepareAdjustedAttibutes({QStringLiteral("fill")});
    QVERIFY(document.documentRoot().isNull());
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("blue"));
    QCOMPARE(savedText(document), text.toUtf8());
    document.saveToBuffer();
    QVERIFY(leavesCanvasUntouched(document));
}

QTEST_MAIN(LoadingTest)

#include "tst_loading.moc"
