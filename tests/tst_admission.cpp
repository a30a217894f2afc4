// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/AdmissionLimits_p.h>
#include <Scene/Admission_p.h>

#include <QBuffer>
#include <QImage>
#include <QRandomGenerator>
#include <QTextCodec>

using namespace AdmissionLimits;

// What a stranger's text may hold: each limit at its value and one past it.

namespace {

QByteArray svg(const QByteArray &content, const QByteArray &attributes = "viewBox=\"0 0 100 50\"")
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
            + attributes + ">\n" + content + "</svg>";
}

QByteArray picture(const QByteArray &file)
{
    return "<image width=\"50\" height=\"50\" xlink:href=\"data:image/png;base64," + file.toBase64()
            + "\"/>";
}

QByteArray fileOf(int width, int height, const char *format,
                  QImage::Format pixels = QImage::Format_Mono)
{
    QByteArray file;
    QBuffer buffer(&file);
    QImage image(width, height, pixels);
    image.fill(Qt::white);
    image.save(&buffer, format);
    return file;
}

/// A picture with so many texts that are long enough to be packed.
QByteArray withTexts(int count)
{
    QByteArray file;
    QBuffer buffer(&file);
    QImage image(4, 4, QImage::Format_Mono);
    for (int i = 0; i < count; ++i)
        image.setText(QString::number(i), QString(100, QLatin1Char('x')));
    image.save(&buffer, "png");
    return file;
}

QByteArray withScans(int count)
{
    const QByteArray file = fileOf(8, 8, "jpg", QImage::Format_RGB32);
    const QByteArray scan = file.mid(file.indexOf("\xFF\xDA")).chopped(2);
    return file.chopped(2) + scan.repeated(count - 1) + "\xFF\xD9";
}

/// Groups, each of which uses the one before so many times.
QByteArray levels(int count, int width)
{
    QByteArray content = "<defs><g id=\"l0\"><rect width=\"5\" height=\"5\"/></g>";
    for (int i = 1; i <= count; ++i)
        content += "<g id=\"l" + QByteArray::number(i) + "\">"
                + QByteArray("<use xlink:href=\"#l" + QByteArray::number(i - 1) + "\"/>")
                          .repeated(width)
                + "</g>";
    return content + "</defs>";
}

QByteArray useChain(int length)
{
    return levels(length - 1, 1) + "<use xlink:href=\"#l" + QByteArray::number(length - 1) + "\"/>";
}

QByteArray gradientChain(int length)
{
    QByteArray content;
    for (int i = 0; i < length; ++i)
        content += "<linearGradient id=\"c" + QByteArray::number(i) + "\" xlink:href=\"#c"
                + QByteArray::number(i + 1) + "\"/>";
    return content + "<linearGradient id=\"c" + QByteArray::number(length) + "\"/>";
}

/// A ring of two groups, and in all as many uses as asked for.
QByteArray ring(qint64 uses)
{
    return "<g id=\"a\"><use xlink:href=\"#b\"/></g><g id=\"b\"><use xlink:href=\"#a\"/></g>"
            + QByteArray("<use xlink:href=\"#none\"/>").repeated(int(uses) - 2);
}

QByteArray attributeTexts(qint64 count)
{
    QByteArray result;
    for (qint64 i = 0; i < count; ++i)
        result += " a" + QByteArray::number(i) + "='>'";
    return result;
}

QByteArray entities(qint64 count, qint64 references, int padding = 0)
{
    QByteArray declarations;
    for (qint64 i = 0; i < count; ++i)
        declarations += "<!ENTITY e" + QByteArray::number(i) + " \"v\">";
    return "<!DOCTYPE svg [" + declarations + QByteArray(padding, ' ') + "]>"
            + svg("<text>" + QByteArray("&e0;").repeated(int(references)) + "</text>");
}

QByteArray filled(qint64 size)
{
    const QByteArray empty = svg("<!---->");
    return svg("<!--" + QByteArray(int(size) - empty.size(), 'x') + "-->");
}

QByteArray styled(qint64 selectors, qint64 elements)
{
    return svg("<style>" + QByteArray("a{}").repeated(int(selectors)) + "</style>"
               + QByteArray("<g/>").repeated(int(elements) - 2));
}

QByteArray nested(qint64 depth)
{
    const int inside = int(depth) - 1;
    return svg(QByteArray("<g>").repeated(inside) + QByteArray("</g>").repeated(inside));
}

void addLimit(const AdmissionLimit &limit, const QByteArray &most, const QByteArray &tooMuch,
              int line = 2)
{
    QTest::newRow(limit.name) << most << tooMuch
                              << QStringLiteral("line %1: the %2 exceeds %3")
                                         .arg(line)
                                         .arg(QLatin1String(limit.name))
                                         .arg(limit.most);
}

/// One of several ways to come to a limit.
void addWay(const char *name, const AdmissionLimit &limit, const QByteArray &most,
            const QByteArray &tooMuch)
{
    QTest::newRow(name) << most << tooMuch
                        << QStringLiteral("line 2: the %1 exceeds %2")
                                   .arg(QLatin1String(limit.name))
                                   .arg(limit.most);
}

QByteArray underPlainName(QByteArray text)
{
    return text.replace("xlink:href", "href");
}

QByteArray textsOf(qint64 characters)
{
    const int each = 50'000;
    const int full = int((characters - 1) / each);
    return ("<text>" + QByteArray(each, 'x') + "</text>").repeated(full) + "<text>"
            + QByteArray(int(characters) - full * each, 'x') + "</text>";
}

QByteArray pathsOf(qint64 coordinates)
{
    const int each = 200'000;
    const int full = int((coordinates - 1) / each);
    const auto path = [](int count) {
        return "<path d=\"M" + QByteArray(" 1").repeated(count) + "\"/>";
    };
    return path(each).repeated(full) + path(int(coordinates) - full * each);
}

/// A style sheet for so many elements.
QByteArray sheet(const QByteArray &content, int elements)
{
    return svg("<style>" + content + "</style>" + QByteArray("<g/>").repeated(elements - 2));
}

/// A rule of a weight for each of its selectors.
QByteArray ruleOf(int weight, const QByteArray &selectors)
{
    const QByteArray empty = selectors + "{a:}";
    const auto pieces = std::count_if(empty.begin(), empty.end(),
                                      [](char c) { return !QChar::isLetterOrNumber(uint(c)); });
    const int rest = weight - empty.size() - 16 * int(pieces);
    return selectors + "{a:" + QByteArray(rest, 'x') + "}";
}

/// A rule for the most elements that it may style, and for one more.
void addStyling(const char *name, const QByteArray &selectors, const QByteArray &element,
                int stylingsOfElement = 1)
{
    const int weight = 1600;
    const int most = int(styling.most / weight / stylingsOfElement);
    const QByteArray styleSheet = "<style>" + ruleOf(weight, selectors) + "</style>";
    addWay(name, styling, svg(styleSheet + element.repeated(most)),
           svg(styleSheet + element.repeated(most + 1)));
}

void addStylings()
{
    addStyling(styling.name, ".c", "<g class=\"c\"/>");
    addStyling("rules for one of many classes", "rect .c.d", "<g class=\"a c b\"/>");
    addStyling("rules for identifiers", "#c", "<g id=\"c\"/>");
    addStyling("rules for other identifiers", "#c", "<g xml:id=\"c\"/>");
    addStyling("rules for names", "RECT", "<rect/>");
    addStyling("rules for names with a prefix", "rect", "<svg:rect/>");
    addStyling("rules for all elements", "*", "<g/>");
    addStyling("rules for attributes", ".a[id]", "<g/>");
    addStyling("rules that match in many ways", "*,.c,g,.d", "<g class=\"c\"/>", 3);
    const QByteArray stops =
            "<linearGradient>" + QByteArray("<stop/>").repeated(1000) + "</linearGradient>";
    const QByteArray rule = "<style>" + ruleOf(1600, "animation") + "</style>";
    const QByteArray escaped =
            "<g style=\"" + QByteArray(990'000, 'x') + QByteArray(10'000, '\\') + "\"/>";
    addLimit(escapes, svg(escaped), svg(escaped + "<g style=\"\\\"/>"));
    addWay("rules for gradient stops", styling, svg(rule + stops.repeated(100)),
           svg(rule + stops.repeated(100) + "<linearGradient><stop/></linearGradient>"));
}

QByteArray used(const QByteArray &content, int times)
{
    return svg("<defs><g id=\"a\">" + content + "</g></defs>"
               + QByteArray("<use href=\"#a\"/>").repeated(times));
}

QByteArray glyph(int coordinates)
{
    return "<font><glyph d=\"M" + QByteArray(" 1").repeated(coordinates) + "\"/></font>";
}

void addStyleSheets()
{
    const auto add = [](const char *name, const QByteArray &content, int elements) {
        addWay(name, styleComparisons, sheet(content, elements), sheet(content, elements + 1));
    };
    add("lists of selectors", QByteArray("a,a{}").repeated(1000), 10'000);
    add("selectors of several parts", QByteArray("a.b.c:d{}").repeated(500), 10'000);
    add("selectors of ancestors", QByteArray("a a{}").repeated(500), 10'000);
    add("selectors of elements before", "a+a{}", 4471);
    add("selectors after what a brace may be", QByteArray("a/*{}*/ a{}").repeated(500), 10'000);
    add("parted style sheets", QByteArray("/<!-- -->").repeated(2000), 10'000);
    const QByteArray inside = "<g>" + QByteArray("a{}").repeated(2000) + "</g>";
    addWay("selectors deep in a style", styleComparisons, sheet(inside, 9'999),
           sheet(inside, 10'000));
}

void addDrawing()
{
    addWay("characters of a text area", textLength,
           svg("<textArea>" + QByteArray(10'000, 'x') + "</textArea>"),
           svg("<textArea>" + QByteArray(10'001, 'x') + "</textArea>"));
    const QByteArray spans = QByteArray("<tspan/>").repeated(99'999);
    addWay("spans", drawnCharacters, svg("<text>xxxxxxxxxx" + spans + "</text>"),
           svg("<text>xxxxxxxxxxx" + spans + "</text>"));
    const QByteArray text = "<text>" + QByteArray(10'000, 'x') + "</text>";
    addWay("characters often used", drawnCharacters, used(text, 99), used(text, 100));
    const QByteArray path = "<path d=\"M" + QByteArray(" 1").repeated(40'000) + "\"/>";
    addWay("coordinates often used", drawnCoordinates, used(path, 99), used(path, 100));
    addWay("coordinates of glyphs", drawnCoordinates, svg(glyph(40) + textsOf(100'000)),
           svg(glyph(41) + textsOf(100'000)));
    addWay("coordinates of glyphs often used", drawnCoordinates, used(glyph(4) + text, 99),
           used(glyph(5) + text, 99));
    addWay("chain of use under the plain name", useDepth,
           underPlainName(svg(useChain(int(useDepth.most)))),
           underPlainName(svg(useChain(int(useDepth.most) + 1))));
}

template <typename Make>
void addLimit(const AdmissionLimit &limit, Make make, int line = 2)
{
    addLimit(limit, make(limit.most), make(limit.most + 1), line);
}

} // namespace

class AdmissionTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void keepsLimits_data();
    void keepsLimits();
    void limitsNumbers_data();
    void limitsNumbers();
    void passesNumbers_data();
    void passesNumbers();
    void passesTextsByteForByte_data();
    void passesTextsByteForByte();
    void takesOut_data();
    void takesOut();
    void takesOutWhatExceedsThePixels();
    void refusesDocumentTypes_data();
    void refusesDocumentTypes();
    void refusesOtherEncodings_data();
    void refusesOtherEncodings();
    void judgesTemplatesAtOnce_data();
    void judgesTemplatesAtOnce();
    void takesOnlyHarmlessTextsForHarmless_data() { keepsLimits_data(); }
    void takesOnlyHarmlessTextsForHarmless();
    void takesOnlyHarmlessChangesForHarmless_data() { judgesTemplatesAtOnce_data(); }
    void takesOnlyHarmlessChangesForHarmless();
};

void AdmissionTest::keepsLimits_data()
{
    QTest::addColumn<QByteArray>("most");
    QTest::addColumn<QByteArray>("tooMuch");
    QTest::addColumn<QString>("refusal");
    addLimit(textSize, filled, 1);
    addLimit(elements, [](qint64 n) { return svg(QByteArray("<g/>").repeated(int(n) - 1)); });
    addLimit(nestingDepth, nested);
    addLimit(AdmissionLimits::attributes,
             [](qint64 n) { return svg("<g" + attributeTexts(n) + "/>"); });
    addLimit(attributeLength,
             [](qint64 n) { return svg("<g class=\"" + QByteArray(int(n), 'x') + "\"/>"); });
    addLimit(textLength, [](qint64 n) {
        return svg("<text><tspan>a</tspan>" + QByteArray(int(n) - 1, 'x') + "</text>");
    });
    addLimit(
            declaredEntities, [](qint64 n) { return entities(n, 1); }, 1);
    addLimit(
            entityReferences, [](qint64 n) { return entities(1, n); }, 1);
    const int documentType = entities(1, 1).indexOf("<svg");
    addLimit(
            documentTypeSize, [=](qint64 n) { return entities(1, 1, int(n) - documentType); }, 1);
    addLimit(useDepth, [](qint64 n) { return svg(useChain(int(n))); });
    addLimit(gradientDepth, [](qint64 n) { return svg(gradientChain(int(n))); });
    // The root, its defs, what stands in them and the use elements are drawn once each.
    addLimit(drawnElements, [](qint64 n) {
        const QByteArray use("<use xlink:href=\"#l1\"/>");
        const qint64 uses = 1000;
        const qint64 each = 390;                 // the group and what it shows
        const qint64 once = 2 + each + 1 + uses; // root, defs, group, single rect, uses
        const qint64 rest = n - once - uses * each;
        return svg("<defs><g id=\"l1\">" + QByteArray("<g/>").repeated(int(each) - 1)
                   + "</g></defs><g/>" + QByteArray("<g/>").repeated(int(rest))
                   + use.repeated(int(uses)));
    });
    addLimit(usesBesideRing, [](qint64 n) { return svg(ring(n)); });
    addLimit(usesBesideRingWithoutCanvas, [](qint64 n) { return svg(ring(n), ""); });
    addLimit(gradientStops, [](qint64 n) {
        const QByteArray stops = QByteArray("<stop/>").repeated(int(n));
        return svg("<linearGradient>" + stops + "</linearGradient><radialGradient>"
                   + stops.left(4000 * 7) + "</radialGradient>");
    });
    addLimit(pathNumbers, [](qint64 n) {
        return svg("<path d=\"M" + QByteArray(" 1").repeated(int(n)) + "\"/>");
    });
    addLimit(dashes, [](qint64 n) {
        return svg("<path stroke-dasharray=\"" + QByteArray("1,").repeated(int(n)) + "\"/>");
    });
    addLimit(keyValues, [](qint64 n) {
        return svg("<animate attributeName=\"x\" values=\"" + QByteArray("1;").repeated(int(n))
                   + "\"/>");
    });
    addLimit(styleSheetSize,
             [](qint64 n) { return svg("<style>" + QByteArray(int(n), ' ') + "</style>"); });
    addLimit(styleComparisons, styled(2000, 10000), styled(2000, 10001));
    addLimit(allAttributes, [](qint64 n) {
        const qint64 ofRoot = 3;
        const qint64 each = 250;
        const qint64 full = (n - ofRoot - 1) / each;
        return svg(("<g" + attributeTexts(each) + "/>").repeated(int(full)) + "<g"
                   + attributeTexts(n - ofRoot - full * each) + "/>");
    });
    addLimit(
            markup, [](qint64 n) { return svg(QByteArray("<!---->").repeated(int(n) - 2)); }, 1);
    addLimit(drawnCharacters, [](qint64 n) { return svg(textsOf(n)); });
    addLimit(drawnCoordinates, [](qint64 n) { return svg(pathsOf(n)); });
    addStyleSheets();
    addStylings();
    addDrawing();
    const auto styledDashes = [](const char *name, qint64 count) {
        return svg(QByteArray("<g style=\"fill:red;") + name + ":"
                   + QByteArray("1 ").repeated(int(count)) + ";stroke:red\"/>");
    };
    addWay("dashes of a style", dashes, styledDashes("stroke-dasharray", dashes.most),
           styledDashes("stroke-dasharray", dashes.most + 1));
    addWay("dashes of an escaped style", dashes,
           styledDashes("s\\74roke-d\\61sharray", dashes.most),
           styledDashes("s\\74roke-d\\61sharray", dashes.most + 1));
}

void AdmissionTest::keepsLimits()
{
    QFETCH(QByteArray, most);
    QFETCH(QByteArray, tooMuch);
    QFETCH(QString, refusal);
    const Admission admitted = admit(most);
    QCOMPARE(admitted.refusal, QString());
    QVERIFY(admitted.text == most);
    QCOMPARE(admit(tooMuch).refusal, refusal);
}

void AdmissionTest::limitsNumbers_data()
{
    QTest::addColumn<QByteArray>("element");
    for (const char *name : {"x",
                             "y",
                             "width",
                             "height",
                             "x1",
                             "y2",
                             "cx",
                             "dx",
                             "dy",
                             "descent",
                             "underline-thickness",
                             "cy",
                             "r",
                             "rx",
                             "fx",
                             "points",
                             "d",
                             "transform",
                             "gradientTransform",
                             "stroke-width",
                             "stroke-dasharray",
                             "stroke-dashoffset",
                             "stroke-miterlimit",
                             "font-size",
                             "units-per-em"})
        QTest::newRow(name) << QByteArray("<g ") + name + "=\"%1\"/>";
    QTest::newRow("style") << QByteArray("<g style=\"fill:red;stroke-width:%1\"/>");
    QTest::newRow("transform in a style") << QByteArray("<g style=\"transform:scale(%1)\"/>");
    QTest::newRow("escaped style") << QByteArray("<g style=\"s\\74roke-width:%1\"/>");
    QTest::newRow("style sheet") << QByteArray("<style>rect { font-size: %1 }</style>");
    QTest::newRow("animated dashes")
            << QByteArray("<g stroke-dasharray=\"1\"><animate attributeName=\"d\" to=\"%1\"/></g>");
    QTest::newRow("view box around dashes")
            << QByteArray("<svg viewBox=\"0 0 %1 5\" stroke-dasharray=\"1\"/>");
    QTest::newRow("view box around dashes in a style")
            << QByteArray("<svg viewBox=\"0 0 %1 5\"/><g style=\"stroke-dasharray:1\"/>");
}

void AdmissionTest::limitsNumbers()
{
    QFETCH(QByteArray, element);
    for (const char *number : {"10000000", "-10000000", "1e7", "0.00001e12", "000000000005", "7"}) {
        const QByteArray text = svg(QByteArray(element).replace("%1", number));
        QCOMPARE(admit(text).refusal, QString());
    }
    for (const char *number : {"10000001", "-10000001", "10000000.5", "1.1e7", "1E+20", "1e400",
                               "M0 0L5-99999999", "5e8%", "3e9in"})
        QCOMPARE(admit(svg(QByteArray(element).replace("%1", number))).refusal,
                 QStringLiteral("line 2: the magnitude of numbers exceeds 10000000"));
}

void AdmissionTest::passesNumbers_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::newRow("colour") << QByteArray("<g fill=\"#999999999\" style=\"stroke:#99999999\"/>");
    QTest::newRow("reference") << QByteArray("<g style=\"stroke-width:url(#a99999999)\"/>");
    QTest::newRow("identifier") << QByteArray("<g id=\"99999999\" class=\"99999999\"/>");
    QTest::newRow("place in a stack") << QByteArray("<g style=\"z-index:99999999\"/>");
    QTest::newRow("class in a style sheet") << QByteArray("<style>.a99999999{fill:red}</style>");
    QTest::newRow("size of the picture") << QByteArray("<svg width=\"99999999\"/>");
    QTest::newRow("animated colour") << QByteArray(
            "<g stroke-dasharray=\"1\"><animate attributeName=\"fill\" to=\"#99999999\"/></g>");
    QTest::newRow("animated place without dashes")
            << QByteArray("<animate attributeName=\"x\" to=\"99999999\"/>");
}

void AdmissionTest::passesNumbers()
{
    QFETCH(QByteArray, element);
    QCOMPARE(admit(svg(element)).refusal, QString());
}

void AdmissionTest::passesTextsByteForByte_data()
{
    QTest::addColumn<QByteArray>("text");
    const QDir folder(QStringLiteral(TITLESCENE_TEMPLATES));
    for (const QString &name : folder.entryList({QStringLiteral("*.svg")}, QDir::Files))
        QTest::newRow(qPrintable(name)) << readTemplate(name).toUtf8();
    QTest::newRow("100,000 elements") << svg(
            QByteArray("<rect width=\"5\" height=\"5\" fill=\"#ff0000\"/>").repeated(100'000));
    QTest::newRow("100,000 elements in 200 groups")
            << svg(QByteArray("<g>").repeated(200) + QByteArray("<g/>").repeated(100'000)
                   + QByteArray("</g>").repeated(200));
    QTest::newRow("quotes and markup in a comment")
            << svg("<!-- <g " + attributeTexts(300) + "> -->");
    QTest::newRow("quotes and markup in a script") << svg(
            "<script><![CDATA[ if (a<b) " + QByteArray("f(\"x\");").repeated(600) + "]]></script>");
    QTest::newRow("metadata") << svg("<metadata>" + QByteArray(1'000'000, 'x') + "</metadata>");
    QTest::newRow("entities of an editor") << QByteArray(
            "<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\" \"svg11.dtd\" [<!-- ]> -->"
            "<!ENTITY ns \"http://www.w3.org/2000/svg\"> ]>\n<svg xmlns=\"&ns;\"/>");
    QTest::newRow("predefined references beside an entity")
            << QByteArray("<!DOCTYPE svg [<!ENTITY a \"&lt;&gt;\">]>"
                          + svg("<desc b=\"" + QByteArray("&amp;&quot;").repeated(600) + "\">"
                                + QByteArray("&lt;&gt;&apos;").repeated(600) + "&a;</desc>"));
    QTest::newRow("percent signs in a document type") << QByteArray(
            "<!DOCTYPE svg SYSTEM 'a%20b' [<!-- 100% %c; --><?d 100% %e;?><!ENTITY f '100&#37;'>"
            "<!ENTITY g SYSTEM \"h%20i\">]>"
            + svg("<rect width=\"&f;\"/>"));
    QTest::newRow("declarations in a comment of a document type") << QByteArray(
            "<!DOCTYPE svg [<!-- <!ELEMENT a (b)> <!ATTLIST a b CDATA 'c'> -->]>" + svg("<g/>"));
    QByteArray font;
    for (int i = 0; i < 300'000; ++i)
        font += "Ab9eZ0/x+7"[i * 7 % 31 % 10];
    QTest::newRow("font in a style sheet") << svg(
            "<style>@font-face { font-family: 'a'; src: url(data:font/woff2;base64," + font
            + ") format('woff2') }\n.a { font-family: 'a' }</style><text class=\"a\">b</text>"
            + QByteArray("<g/>").repeated(1000));
    QTest::newRow("picture") << svg(picture(fileOf(40, 40, "png")));
    QTest::newRow("picture with packed texts") << svg(picture(withTexts(int(packedTexts.most))));
    QTest::newRow("photograph in many scans") << svg(picture(withScans(int(pictureScans.most))));
    QTest::newRow("photograph under a wrong name")
            << svg(picture(fileOf(40, 40, "jpg", QImage::Format_RGB32)));
    QTest::newRow("ends of lines and spaces") << QByteArray("\n \r\n") + svg("<g\r\n\tid = 'a' />");
    QTest::newRow("two gradients with a reference each")
            << svg("<linearGradient id=\"a\"/><linearGradient id=\"b\" xlink:href=\"#a\"/>"
                   "<radialGradient xlink:href=\"#b\"/>");
}

void AdmissionTest::passesTextsByteForByte()
{
    QFETCH(QByteArray, text);
    const Admission admission = admit(text);
    QCOMPARE(admission.refusal, QString());
    QVERIFY(admission.text == text);
}

void AdmissionTest::takesOut_data()
{
    QTest::addColumn<QByteArray>("reference");
    for (const char *reference :
         {"", " ", "picture.png", "../picture.png", "/dev/zero", "file:///dev/zero", "FILE:/x.png",
          "//host/share/x.png", "\\\\host\\x.png", "http://localhost/x.png", ":/x.png",
          "qrc:/x.png", "data:", "data:image/png,base64", "data:image/png;base64,",
          "data:image/png;base64,@@@@", "#other"})
        QTest::newRow(reference) << QByteArray(reference);
    QTest::newRow("after a byte order mark") << "\xEF\xBB\xBF"
                                                "data:image/png;base64,"
                    + fileOf(4, 4, "png").toBase64();
    const auto add = [](const char *name, const QByteArray &file, const QByteArray &type = "png") {
        QTest::newRow(name) << "data:image/" + type + ";base64," + file.toBase64();
    };
    add("bitmap", fileOf(40, 40, "bmp"));
    add("cut off bitmap", fileOf(40, 40, "bmp").left(60));
    add("bitmap as text", fileOf(40, 40, "xbm"));
    add("an svg document", svg("<rect width=\"20000\" height=\"20000\"/>"), "svg+xml");
    add("too many pixels", fileOf(8193, 4608, "png"));
    add("nothing after the header", fileOf(40, 40, "png").left(8));
    add("a word", "picture");
    QByteArray claimed = fileOf(4, 4, "png");
    claimed.replace(16, 8, QByteArray::fromHex("7fffffff7fffffff"));
    add("claims billions of pixels", claimed);
    add("too many packed texts", withTexts(int(packedTexts.most) + 1));
    add("too many scans", withScans(int(pictureScans.most) + 1));
}

void AdmissionTest::takesOut()
{
    QFETCH(QByteArray, reference);
    const QByteArray before = "\n<!-- <image xlink:href='a'/> --><g id=\"a>\"/><image x='1' ";
    const QByteArray after = " y='>'><title>a</title></image><use xlink:href=\"#a\"/>";
    const Admission admission = admit("<?xml version='1.0'?><?xml-stylesheet href='a.css'?>"
                                      + svg(before + "xlink:href = \"" + reference + '"' + after));
    QCOMPARE(admission.refusal, QString());
    QVERIFY(!admission.text.contains("xml-stylesheet"));
    const QByteArray start = "<?xml version='1.0'?>" + svg(before + "xlink:href = \"").chopped(6);
    const QByteArray end = '"' + after + "</svg>";
    QVERIFY2(admission.text.startsWith(start + "data:image/png;base64,"), admission.text);
    QVERIFY(admission.text.endsWith(end));
    const int length = admission.text.size() - start.size() - end.size();
    const QByteArray left = admission.text.mid(start.size(), length);
    const QImage shown = QImage::fromData(QByteArray::fromBase64(left.mid(left.indexOf(',') + 1)));
    QCOMPARE(shown.size(), QSize(1, 1));
    QCOMPARE(shown.pixelColor(0, 0).alpha(), 0);
}

void AdmissionTest::takesOutWhatExceedsThePixels()
{
    const QByteArray half = picture(fileOf(4096, 4608, "png"));
    const QByteArray one = picture(fileOf(1, 1, "png"));
    QVERIFY(admit(svg(half + half)).text == svg(half + half));
    const QByteArray fitting = admit(svg(half + half + one)).text;
    QVERIFY(fitting.startsWith(svg(half + half).chopped(6)));
    QVERIFY(!fitting.contains(one));
    const QByteArray last = admit(svg(half + one + half + one)).text;
    QVERIFY(last.startsWith(svg(half + one).chopped(6)));
    QVERIFY(last.endsWith(one + "</svg>"));
    QCOMPARE(last.count(half), 1);
}

void AdmissionTest::refusesDocumentTypes_data()
{
    QTest::addColumn<QByteArray>("declaration");
    QTest::newRow("model of an element") << QByteArray("<!ELEMENT a (((b)))>");
    QTest::newRow("default of an attribute") << QByteArray("<!ATTLIST g a CDATA \"v\">");
    QTest::newRow("entity of the document type") << QByteArray("<!ENTITY % a \"b\"> %a;");
    QTest::newRow("after a quoted bracket") << QByteArray("<!ENTITY a \"]>\"><!ELEMENT b (c)>");
    QTest::newRow("after a comment") << QByteArray("<!-- ' ]> --><!ATTLIST g a CDATA \"v\">");
}

void AdmissionTest::refusesDocumentTypes()
{
    QFETCH(QByteArray, declaration);
    QCOMPARE(admit("<!-- <a> --><!DOCTYPE svg [" + declaration + "]>" + svg("<g/>")).refusal,
             QStringLiteral("line 1: the document type declares more than entities"));
}

void AdmissionTest::refusesOtherEncodings_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char *name : {"UTF-16", "UTF-16BE", "UTF-16LE", "UTF-32", "UTF-7", "ISO-8859-1"}) {
        const QString declared =
                QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?>").arg(QLatin1String(name))
                + QString::fromUtf8(svg("<g/>"));
        QTest::newRow(name) << QTextCodec::codecForName(name)->fromUnicode(declared);
        QTest::newRow((QByteArray("a claim of ") + name).constData()) << declared.toUtf8();
    }
}

/// Their markup could not be found by its bytes. A document's own text never has one.
void AdmissionTest::refusesOtherEncodings()
{
    QFETCH(QByteArray, text);
    QCOMPARE(admit(text).refusal, QStringLiteral("line 1: the text is not UTF-8"));
}

void AdmissionTest::judgesTemplatesAtOnce_data()
{
    QTest::addColumn<QByteArray>("text");
    const QDir folder(QStringLiteral(TITLESCENE_TEMPLATES));
    for (const QString &name : folder.entryList({QStringLiteral("*.svg")}, QDir::Files))
        QTest::newRow(qPrintable(name)) << readTemplate(name).toUtf8();
}

void AdmissionTest::judgesTemplatesAtOnce()
{
    QFETCH(QByteArray, text);
    QVERIFY(isPlainAndHarmless(text));
}

void AdmissionTest::takesOnlyHarmlessTextsForHarmless()
{
    QFETCH(QByteArray, most);
    QFETCH(QByteArray, tooMuch);
    QVERIFY(!isPlainAndHarmless(tooMuch));
    QVERIFY(!isPlainAndHarmless("<?xml-stylesheet href='a.css'?>" + most));
    const bool isPlain = !most.contains("<!DOCTYPE");
    QCOMPARE(isPlainAndHarmless(most), isPlain);
}

/// Puts values that limits are about in place of some of the text's own.
void AdmissionTest::takesOnlyHarmlessChangesForHarmless()
{
    QFETCH(QByteArray, text);
    static const QByteArrayList values{
            "1e9",   "-99999999",        "url(a.svg)", "a.png",    "#a",
            "1 2 3", "stroke-width:1e9", "2e9s",       "3000000s", "xlink:href",
            "id",    "stroke-dasharray", "x;y",        ";",        "style"};
    static const QByteArrayList names{
            "x",   "d",      "stroke-dasharray", "style",   "xlink:href", "begin",
            "dur", "values", "attributeName",    "viewBox", "id"};
    QRandomGenerator random(21);
    int harmless = 0;
    for (int i = 0; i < 1000; ++i) {
        QByteArray changed = text;
        for (int change = random.bounded(1, 3); change > 0; --change) {
            const int tag = changed.indexOf(' ', changed.indexOf('<', random.bounded(text.size())));
            changed.insert(std::max(tag, 0),
                           ' ' + names.at(random.bounded(names.size())) + "=\""
                                   + values.at(random.bounded(values.size())) + '"');
        }
        if (!isPlainAndHarmless(changed))
            continue;
        ++harmless;
        const Admission judgement = judge(changed);
        QCOMPARE(judgement.refusal, QString());
        QVERIFY(judgement.text == changed);
    }
    QVERIFY(harmless > 50);
}

QTEST_MAIN(AdmissionTest)

#include "tst_admission.moc"
