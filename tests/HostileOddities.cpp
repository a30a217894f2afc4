// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "HostileParts.h"
#include "HostileTitles.h"

#include <QBuffer>
#include <QtEndian>

#include <random>

namespace {

/// Collects titles by their content.
class Titles
{
public:
    void add(const QByteArray &name, const QByteArray &text) { m_titles.push_back({name, text}); }
    void addContent(const QByteArray &name, const QString &content)
    {
        add(name, svgTitle(content).toUtf8());
    }
    std::vector<HostileTitle> taken() { return std::move(m_titles); }

private:
    std::vector<HostileTitle> m_titles;
};

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

QByteArray redTitle()
{
    return svgTitle(redRect()).toUtf8();
}

// --- bytes

QByteArray utf16(const QString &content, bool bigEndian)
{
    QByteArray bytes;
    for (const QChar unit : content) {
        const char low = char(unit.unicode() & 0xff);
        const char high = char(unit.unicode() >> 8);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

void addBytes(Titles &titles)
{
    const QByteArray title = redTitle();
    titles.add("empty", "");
    titles.add("one bracket", "<");
    titles.add("only an opening tag", "<svg>");
    titles.add("cut off", title.left(title.size() - 20));
    titles.add("another root", "<html><svg/></html>");
    titles.add("compressed", QByteArray::fromHex("1f8b08000000000000ff") + qCompress(title).mid(6));
    titles.add("more after the root", title + "<rect/></svg><svg>&#0;<!DOCTYPE x [");
    titles.add("zero bytes", svgTitle(text("<g id=\"a@\">b@</g>")).toUtf8().replace('@', '\0'));
    titles.add("broken UTF-8",
               svgTitle(text("<text id=\"@\">@</text>"))
                       .toUtf8()
                       .replace("@", QByteArray::fromHex("fffec080eda080")));
    const QString declared = text("<?xml version=\"1.0\" encoding=\"UTF-16\"?>");
    titles.add("UTF-16", "\xff\xfe" + utf16(declared + QString::fromUtf8(title), false));
    titles.add("UTF-16 without a mark", utf16(QString::fromUtf8(title), true));
    for (const char *encoding :
         {"UTF-16", "ISO-8859-1", "UTF-7", "none-such", "US-ASCII", "windows-1252", "Shift_JIS"})
        titles.add(QByteArray("claims ") + encoding,
                   QByteArray("<?xml version=\"1.0\" encoding=\"") + encoding + "\"?>"
                           + svgTitle(redRect() + QString::fromUtf8("<text>é漢</text>")).toUtf8());
    titles.addContent("references to no characters",
                      text("<text>&#0;&#1;&#x1F;&#xFFFE;&#xD800;&#x110000;&#xFFFFFFFFF;</text>"));
    for (const char *reference : {"&#1;", "&#xFFFE;", "&#xD800;", "&#x10FFFF;"})
        titles.addContent(QByteArray("reference ") + reference,
                          redRect() + text("<text>%1</text>").arg(text(reference)));
    titles.addContent("sections that a writer may break",
                      text("<![CDATA[ ]]]]><![CDATA[> ]]><!-- a - - b --><?pi data?>"
                           "<g id=\"&quot;&lt;&#10;&#9;&amp;\">]]&gt;&#13;</g>"));
}

// --- document types

/// A content model that takes all of the stack, where one reader may find it and another not.
void addDocumentTypes(Titles &titles)
{
    const QByteArray model =
            "<!ELEMENT r " + QByteArray(30'000, '(') + "a" + QByteArray(30'000, ')') + ">";
    const QByteArray title = redTitle();
    for (const char *const before : {"<!-- a -- b -->",
                                     "<!-- a --->",
                                     "<!--a--",
                                     "<?>?>",
                                     "<?\?>",
                                     "<?x ?",
                                     "<!>",
                                     "<!-",
                                     "<![CDATA[<!--]]>",
                                     "<![IGNORE[",
                                     "]>",
                                     "]]>",
                                     "'",
                                     "\"",
                                     "<!ENTITY a '>",
                                     "<!ENTITY a \">",
                                     "<!ENTITY a '%b;'>",
                                     "<!ENTITY a \"100%\">",
                                     "<!ENTITY a '&#37;b;'>",
                                     "%b;",
                                     "\x01",
                                     "<!ENTITY a '<!ELEMENT b (c)>'>&a;",
                                     "<!entity a 'b'>",
                                     "\xef\xbb\xbf",
                                     "\xef\xbf\xbf"})
        titles.add(QByteArray("content model after ") + before,
                   "<!DOCTYPE svg [" + QByteArray(before) + model + "]>" + title);
    for (const char *const start :
         {"<!doctype svg [", "<!DOCTYPE[", "<!DOCTYPE svg", "<!DOCTYPE svg 'a' [",
          "<!DOCTYPE a b [", "<!DOCTYPE svg -- [ -- [", "<!DOCTYPE svg <!-- ' --> [",
          "<!DOCTYPE svg [][", "[", ""})
        titles.add(QByteArray("content model in ") + start, start + model + "]>" + title);
    titles.add("content model after a zero byte",
               "<!DOCTYPE svg [" + QByteArray(1, '\0') + model + "]>" + title);
    titles.add("content model after the root", title + "<!DOCTYPE svg [" + model + "]>");
    titles.add("content model in a comment", "<!DOCTYPE svg [<!--" + model + "-->]>" + title);
    titles.add("content model in an entity",
               "<!DOCTYPE svg [<!ENTITY a '" + model + "'>]>"
                       + svgTitle(text("<text>&a;</text>")).toUtf8());
    titles.add("document types in each other", QByteArray("<!DOCTYPE a [").repeated(100'000));
    titles.add("many document types", QByteArray("<!DOCTYPE a []>").repeated(100'000) + title);
    titles.add("many unfinished types", QByteArray("<!DOCTYPE a ['").repeated(100'000) + title);
    titles.add("predefined references beside an entity",
               "<!DOCTYPE svg [<!ENTITY amp '" + QByteArray(4000, 'x') + "'>]>"
                       + svgTitle(text("<desc a=\"%1\">%2</desc>")
                                          .arg(repeated("&amp;", 100'000),
                                               repeated("&amp;&quot;", 400'000)))
                                 .toUtf8());
}

// --- sizes

void addSizes(Titles &titles)
{
    const auto nested = [](const char *name, int depth) {
        return repeated(qPrintable(text("<%1>").arg(text(name))), depth) + redRect()
                + repeated(qPrintable(text("</%1>").arg(text(name))), depth);
    };
    for (const char *name : {"g", "x", "switch", "defs", "a", "svg", "symbol", "linearGradient"})
        titles.addContent(QByteArray("deepest nesting of ") + name, nested(name, 254));
    titles.addContent("deepest nesting in a text",
                      text("<text y=\"20\">") + nested("tspan", 253) + text("</text>"));
    titles.addContent("many shapes", redRect().repeated(8'000));
    titles.addContent("many animations",
                      text("<rect width=\"5\" height=\"5\"><animate attributeName=\"x\" from=\"0\" "
                           "to=\"9\" dur=\"1s\"/></rect>")
                              .repeated(5'000));
    titles.addContent("text between elements", repeated("a<g/>", 100'000));
    QString names;
    QString ids;
    for (int i = 0; i < 50'000; ++i) {
        names += text("<n%1/>").arg(i);
        ids += text("<g id=\"i%1\"/>").arg(i);
    }
    titles.addContent("many names", names);
    titles.addContent("many identifiers", ids);
    titles.addContent("long comment", text("<!--%1-->").arg(repeated("x", 10'000'000)));
    titles.addContent("long section", text("<![CDATA[%1]]>").arg(repeated("x", 10'000'000)));
    titles.addContent("long text in no element", repeated("x", 10'000'000));
    titles.addContent("long name", text("<%1/>").arg(repeated("x", 1'000'000)));
    titles.addContent("long name of an attribute",
                      text("<g %1=\"\"/>").arg(repeated("x", 1'000'000)));
    titles.addContent("long instruction", text("<?a %1?>").arg(repeated("x", 1'000'000)));
    const QString escaped = text("<g a='%1'/>").arg(repeated("\t", 1'000'000));
    titles.addContent("characters to be escaped", escaped + redRect());
    titles.addContent("characters to be escaped beside a section",
                      escaped + text("<![CDATA[a]]>") + redRect());
    titles.addContent("characters to be escaped in a clip path",
                      text("<clipPath>%1</clipPath>").arg(escaped));
    titles.addContent("long value in nested clip paths",
                      repeated("<clipPath>", 200)
                              + text("<g a='%1'/>").arg(repeated("x", 1'000'000)).repeated(5)
                              + repeated("</clipPath>", 200));
    titles.addContent("many comments", repeated("<!---->", 500'000));
    titles.addContent("many spaces", repeated(" ", 10'000'000));
    titles.addContent("many character references",
                      text("<g>%1</g>").arg(repeated("&#120;", 500'000)));
    titles.add("many style sheets named",
               QByteArray("<?xml-stylesheet href=\"a.css\"?>").repeated(50'000) + redTitle());
    titles.add("style sheet of many types",
               "<?xml-stylesheet " + QByteArray("type=\"x\" ").repeated(200'000) + "?>"
                       + redTitle());
}

// --- references

void addReferences(Titles &titles)
{
    titles.addContent("use of what is around it",
                      text("<g id=\"a\">%1<use xlink:href=\"#a\"/></g>").arg(redRect()));
    titles.addContent("uses of nothing",
                      text("<use/><use xlink:href=\"\"/><use xlink:href=\"#\"/><use "
                           "xlink:href=\"#none\"/><linearGradient id=\"g\"/><use "
                           "xlink:href=\"#g\"/><text><use xlink:href=\"#g\"/></text>"));
    titles.addContent("deepest chain of use", useLevels(31, 1));
    titles.add("deepest chain of use without a view box",
               withoutViewBox(useLevels(31, 1)).toUtf8());
    titles.addContent("widest levels of use", useLevels(4, 20));
    titles.addContent("widest ring",
                      text("<g id=\"a\"><use xlink:href=\"#b\"/></g><g id=\"b\">%1</g>")
                              .arg(repeated("<use xlink:href=\"#a\"/>", 63)));
    titles.addContent("many uses",
                      text("<defs><rect id=\"a\" width=\"5\" height=\"5\" visibility=\"hidden\"/>"
                           "</defs>")
                              + repeated("<use xlink:href=\"#a\"/>", 20'000));
    titles.addContent("deepest chain of gradients", gradients(31));
    titles.addContent(
            "gradient of itself",
            text("<linearGradient id=\"a\" xlink:href=\"#a\"/><rect width=\"9\" height=\"9\" "
                 "fill=\"url(#a)\" stroke=\"url(#a)\"/>"));
    titles.addContent("gradients without a name",
                      repeated("<linearGradient><stop offset=\"0\"/></linearGradient>", 1000)
                              + text("<linearGradient id=\"a\"><linearGradient id=\"a\"><stop/>"
                                     "</linearGradient><stop/></linearGradient><stop/>"
                                     "<rect width=\"9\" height=\"9\" fill=\"url(#a)\"/>"));
    titles.addContent("most stops",
                      text("<linearGradient id=\"a\">%1</linearGradient><rect width=\"90\" "
                           "height=\"40\" fill=\"url(#a)\"/>")
                              .arg(repeated("<stop offset=\"0.5\" stop-color=\"red\"/>", 4096)));
    QString paints;
    for (const char *paint :
         {"url(#none)", "url(", "url(#", "url()", "rgb(", "rgb(1,2", "rgb(1e9,-5,300%)",
          "rgba(1,2,3,9)", "rgba(", "#", "#12345678901234", "#ggg", "hsl(1,2,3)", "icc-color(x)",
          "currentColor", "inherit", " ", "transparent"})
        paints +=
                text("<rect width=\"9\" height=\"9\" fill=\"%1\" stroke=\"%1\"/>").arg(text(paint));
    titles.addContent("odd paints", paints);
    titles.addContent("many colours to rewrite",
                      repeated("<rect fill=\"rgba(1,2,3,0.5)\"/>", 50'000));
    titles.addContent(
            "effects in rings",
            text("<defs><filter id=\"f\"><feGaussianBlur stdDeviation=\"9999999\"/></filter>"
                 "<pattern id=\"p\" width=\"0\"><rect fill=\"url(#p)\" width=\"5\" height=\"5\"/>"
                 "</pattern><marker id=\"m\"><path marker-start=\"url(#m)\" d=\"M0 0L9 "
                 "9\"/></marker>"
                 "<mask id=\"k\"><rect mask=\"url(#k)\" width=\"9\" height=\"9\"/></mask>"
                 "<clipPath id=\"c\"><rect clip-path=\"url(#c)\" width=\"9\" "
                 "height=\"9\"/></clipPath>"
                 "</defs><rect width=\"50\" height=\"50\" fill=\"url(#p)\" filter=\"url(#f)\" "
                 "mask=\"url(#k)\" clip-path=\"url(#c)\"/><path d=\"M0 0L9 9\" "
                 "marker-end=\"url(#m)\"/><script>1</script>"));
}

// --- numbers

/// One document with a number in everything that is measured.
QString measuredBy(const QString &number)
{
    return text("<defs><font id=\"F\" horiz-adv-x=\"%1\"><font-face font-family=\"F\" "
                "units-per-em=\"%1\" ascent=\"%1\"/><missing-glyph horiz-adv-x=\"%1\" d=\"M0 0L9 "
                "9\"/><glyph unicode=\"a\" horiz-adv-x=\"%1\" d=\"M0 0L500 500L0 500Z\"/></font>"
                "<linearGradient id=\"a\" x1=\"%1\" y1=\"%1\" x2=\"%1\" "
                "gradientTransform=\"scale(%1)\">"
                "<stop offset=\"%1\" stop-color=\"red\" stop-opacity=\"%1\"/><stop offset=\"1\"/>"
                "</linearGradient><radialGradient id=\"b\" cx=\"%1\" cy=\"%1\" r=\"%1\" fx=\"%1\" "
                "fy=\"%1\" spreadMethod=\"repeat\"><stop offset=\"%1\"/><stop offset=\"1\" "
                "stop-color=\"red\"/></radialGradient><radialGradient id=\"c\" "
                "gradientUnits=\"userSpaceOnUse\" cx=\"%1\" r=\"%1\" fx=\"-%1\" "
                "spreadMethod=\"reflect\"><stop offset=\"0\"/><stop offset=\"1\"/></radialGradient>"
                "</defs>")
                   .arg(number)
            + text("<g stroke=\"blue\" stroke-width=\"2\"><rect x=\"%1\" y=\"%1\" width=\"%1\" "
                   "height=\"%1\" rx=\"%1\" ry=\"%1\"/><circle cx=\"%1\" cy=\"%1\" r=\"%1\"/>"
                   "<ellipse cx=\"%1\" cy=\"%1\" rx=\"%1\" ry=\"%1\"/><line x1=\"%1\" x2=\"%1\" "
                   "y2=\"-%1\"/><polygon points=\"%1,%1 %1 3 4\"/><path d=\"M %1 %1 L %1 0 H %1 V "
                   "%1 "
                   "C %1 0 0 %1 %1 %1 S %1 1 2 3 Q %1 1 2 3 T %1 %1 A %1 %1 %1 1 0 %1 %1 Z\"/></g>"
                   "<g fill=\"none\" stroke=\"red\"><path d=\"M5 5L90 40\" stroke-width=\"%1\" "
                   "stroke-linejoin=\"round\"/><path d=\"M5 5L90 40L5 6\" stroke-miterlimit=\"%1\" "
                   "stroke-opacity=\"%1\" opacity=\"%1\"/><path d=\"M5 5L90 40\" "
                   "stroke-dasharray=\"%1\"/><path d=\"M5 5L90 40\" stroke-dasharray=\"%1 %1 1\" "
                   "stroke-dashoffset=\"%1\"/></g>")
                      .arg(number)
            + text("<text x=\"%1\" y=\"%1\" font-size=\"%1\" font-weight=\"%1\">one<tspan "
                   "font-size=\"%1\">two</tspan></text><textArea x=\"5\" y=\"5\" width=\"%1\" "
                   "height=\"%1\">four<tbreak/>five</textArea><text font-family=\"F\" y=\"20\" "
                   "font-size=\"%1\">aab</text><g transform=\"translate(%1,%1)\">%2</g>"
                   "<g transform=\"scale(%1)\">%2</g><g transform=\"rotate(%1 %1 %1)\">%2</g>"
                   "<g transform=\"skewX(%1)\">%2</g><g transform=\"matrix(%1 %1 %1 %1 %1 "
                   "%1)\">%2</g>")
                      .arg(number, redRect());
}

void addNumbers(Titles &titles)
{
    QByteArrayList numbers = {"0",     "-1",    "10000000", "-10000000",  "1e9",         "1e38",
                              "1e308", "1e400", "NaN",      "inf",        "1e-38",       "1e-300",
                              "",      "x",     "1e",       "9999999999", "-2147483648", "-",
                              ".",     "50%",   "1e9%",     "3em",        "1e9in"};
    for (const QByteArray &number : numbers) {
        const QString value = QString::fromLatin1(number);
        titles.addContent("measured by '" + number + "'", measuredBy(value));
        titles.add("view box of '" + number + "'",
                   text("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"%1\" "
                        "viewBox=\"%1 %1 %1 %1\">%2<rect width=\"50%\" height=\"9\" "
                        "stroke=\"blue\"/></svg>")
                           .arg(value, redRect())
                           .toUtf8());
    }
    const auto line = [](const char *path, const char *dashes) {
        return text("<path d=\"%1\" fill=\"none\" stroke=\"red\" stroke-width=\"2\" "
                    "stroke-dasharray=\"%2\"/>")
                .arg(text(path), text(dashes));
    };
    titles.addContent("dashes finer than the line", line("M 0 18 L 100000 18", "0.0001"));
    titles.addContent("dashes on a very long line", line("M 0 18 L 10000000 18", "0.01"));
    titles.addContent("dashes of next to nothing", line("M 0 18 L 64 18", "1e-30"));
    titles.addContent("dashes finer than a curve",
                      line("M 5 5 C 5 30 60 30 60 5 S 50 30 5 5", "0.0001"));
    titles.addContent("most dashes", line("M 0 18 L 640 18", repeated("1 ", 1024).toLatin1()));
    titles.addContent("dashed text",
                      text("<text y=\"45\" font-size=\"30\" fill=\"none\" stroke=\"red\" "
                           "stroke-dasharray=\"0.001\">Bomb</text>"));
    titles.addContent("scaled dashes",
                      text("<g transform=\"scale(100000)\"><rect width=\"9\" height=\"9\" "
                           "fill=\"none\" stroke=\"red\" stroke-width=\"0.00001\" "
                           "stroke-dasharray=\"0.1\"/></g>"));
    titles.addContent("large dashed circle",
                      text("<circle cx=\"32\" cy=\"1000010\" r=\"1000000\" fill=\"none\" "
                           "stroke=\"red\" stroke-dasharray=\"5\"/>"));
    titles.addContent("scales to infinity by allowed steps",
                      repeated("<g transform=\"scale(9999999)\">", 100) + redRect()
                              + repeated("</g>", 100));
    titles.addContent(
            "long list of transforms",
            text("<g transform=\"%1\">%2</g>").arg(repeated("rotate(1)", 50'000), redRect()));
}

// --- paths, texts and fonts

QString randomPath(const char *command, int segments, int points)
{
    std::mt19937 random;
    std::uniform_int_distribution<int> place(0, 100);
    QString path = text("M 0 0");
    for (int i = 0; i < segments; ++i) {
        path += text(command);
        for (int number = 0; number < 2 * points; ++number)
            path += QLatin1Char(' ') + QString::number(place(random));
    }
    return path;
}

void addPaths(Titles &titles)
{
    for (const char *command : {"L", "C", "A 9 7 0 1 0"}) {
        const QString path = randomPath(command, 300, *command == 'C' ? 3 : 1);
        titles.addContent(QByteArray("crossing path of ") + command,
                          text("<path d=\"%1\" fill=\"red\"/><path d=\"%1\" fill=\"none\" "
                               "stroke=\"red\" stroke-width=\"9\" stroke-linejoin=\"round\"/>")
                                  .arg(path));
    }
    QString broken;
    for (const char *path :
         {"", "M", "M0", "M0 0 L", "L 5 5", "Z Z Z", "M 0 0 A 5 5 0 2 3 9 9", "M 0 0 A 5 5 0 0",
          "M 0 0 X 5", "M0 0 C1 1", "M-.-.", "M0 0 aaaaaaaaaaaaaaaa", "M 0 0 A 0 0 0 0 0 5 5",
          "M 0 0 A 1e-30 1e-30 0 0 0 5 5", "M 0 0 t 5 5 T 9 9", "M0,0 e 5"})
        broken += text("<path d=\"%1\" stroke=\"red\" fill=\"none\"/>").arg(text(path));
    titles.addContent("broken paths", broken);
    titles.addContent("overdrawn",
                      text("<radialGradient id=\"g\" r=\"0.01\" spreadMethod=\"repeat\"><stop "
                           "offset=\"0\" stop-color=\"red\"/><stop offset=\"1\"/></radialGradient>")
                              + repeated("<rect width=\"100\" height=\"50\" fill=\"url(#g)\" "
                                         "opacity=\"0.5\"/>",
                                         50));
}

void addTexts(Titles &titles)
{
    const auto textOf = [](const QString &content) {
        return text("<text y=\"50\" font-size=\"10\">%1</text>").arg(content);
    };
    titles.addContent("long text", textOf(repeated("lorem ", 5'000)));
    titles.addContent("combining marks", textOf(QLatin1Char('a') + QString(5'000, QChar(0x301))));
    titles.addContent("directions within directions",
                      textOf(QString::fromUtf8("\u202ea\u202db\u2067\u05d0").repeated(1'000)));
    QString scripts;
    for (ushort unit = 0xa1; unit < 0x3000; unit = ushort(unit + 17))
        scripts += QChar(unit);
    titles.addContent("many scripts", textOf(scripts));
    titles.addContent("many spans", textOf(repeated("<tspan fill=\"red\">a</tspan>", 2'000)));
    titles.addContent("narrow area",
                      text("<textArea x=\"5\" y=\"5\" width=\"0.0001\" height=\"9999999\">%1"
                           "</textArea>")
                              .arg(repeated("lorem ", 1'000)));
    QString fonts;
    for (int i = 0; i < 200; ++i)
        fonts += text("<text y=\"50\" font-size=\"%1\" font-family=\"None Such %1\">x</text>")
                         .arg(i);
    titles.addContent("many fonts", fonts);
    titles.addContent(
            "font of the title",
            text("<defs><font id=\"F\" horiz-adv-x=\"500\"><font-face font-family=\"F\" "
                 "units-per-em=\"1000\"/><glyph unicode=\"a\" d=\"M0 0L500 500L0 500Z\"/>"
                 "</font></defs><text y=\"50\" font-family=\"F\" font-size=\"1\">%1</text>")
                    .arg(repeated("a", 10'000)));
    titles.addContent("fonts in odd places",
                      text("<glyph/><font-face/><font><font-face/></font><font id=\"A\"><font "
                           "id=\"B\"><glyph unicode=\"a\" d=\"M0 0\"/></font><font-face "
                           "font-family=\"B\"/></font><font id=\"A\"/><linearGradient><glyph/>"
                           "<font-face/></linearGradient><text font-family=\"A\" y=\"20\">ab</text>"
                           "<text font-family=\"B\" y=\"50\">ab</text>"));
}

// --- pictures

QByteArray fileOf(int width, int height, QImage::Format pixels, const char *format)
{
    QByteArray file;
    QBuffer buffer(&file);
    QImage picture(width, height, pixels);
    picture.fill(0x55);
    picture.save(&buffer, format);
    return file;
}

/// A header of a PNG file that claims a size, in front of another picture's content.
QByteArray claimed(quint32 width, quint32 height)
{
    QByteArray file = fileOf(4, 4, QImage::Format_RGB32, "png");
    qToBigEndian(width, file.data() + 16);
    qToBigEndian(height, file.data() + 20);
    return file;
}

void addPictures(Titles &titles)
{
    const auto add = [&titles](const QByteArray &name, const QByteArray &file) {
        titles.addContent(name,
                          redRect()
                                  + imageElement(text("data:image/x;base64,")
                                                 + QString::fromLatin1(file.toBase64())));
    };
    add("picture of 36 megapixels", fileOf(8192, 4608, QImage::Format_Mono, "png"));
    add("photograph of 24 megapixels", fileOf(6000, 4000, QImage::Format_RGB32, "jpg"));
    add("picture of 256 megapixels", fileOf(16000, 16000, QImage::Format_Mono, "png"));
    add("picture of wide pixels", fileOf(2000, 2000, QImage::Format_RGBA64, "png"));
    const QByteArray noise = fileOf(64, 64, QImage::Format_RGB32, "png");
    for (const int size : {9, 20, 33, 40, 60, noise.size() - 1})
        add("picture cut off after " + QByteArray::number(size), noise.left(size));
    const QByteArray photograph = fileOf(64, 64, QImage::Format_RGB32, "jpg");
    for (const int size : {3, 20, 200, photograph.size() / 2})
        add("photograph cut off after " + QByteArray::number(size), photograph.left(size));
    for (const char *format : {"bmp", "ppm", "xbm", "xpm"}) {
        const QByteArray file = fileOf(64, 64, QImage::Format_RGB32, format);
        add(QByteArray("file of another kind: ") + format, file);
        add(QByteArray("cut off file of another kind: ") + format, file.left(file.size() / 3));
    }
    add("claims many pixels", claimed(0x7fffffff, 0x7fffffff));
    add("claims a long row", claimed(16'000'000, 1));
    add("claims no pixels", claimed(0, 0));
    add("picture that is a title", redTitle());
    titles.addContent(
            "many pictures",
            imageElement(text("data:image/png;base64,")
                         + QString::fromLatin1(
                                 fileOf(1000, 1000, QImage::Format_Mono, "png").toBase64()))
                    .repeated(30));
    titles.addContent("endless picture",
                      imageElement(text("data:image/png;base64,") + repeated("A", 12'000'000)));
    QString odd;
    for (const char *reference :
         {"", " ", "data", "data:", "data:,", "data:image/png,base64", "data:base64,base64,AAAA",
          "#x", ".", "..", "/", ":", "::", ":/", "about:blank", "javascript:1", "con", "nul"})
        odd += imageElement(text(reference));
    titles.addContent(
            "odd references of pictures",
            odd + text("<image/><image width=\"-1\" height=\"9\" xlink:href=\"data:x\"/>"));
}

// --- style sheets and structure

void addStyleSheets(Titles &titles)
{
    QString rules;
    for (int i = 0; i < 1000; ++i)
        rules += text(".c%1{fill:red}").arg(i);
    titles.addContent("many rules",
                      text("<style>%1</style>").arg(rules)
                              + repeated("<rect class=\"c1\" width=\"5\" height=\"5\"/>", 1000));
    titles.addContent("selectors of siblings",
                      text("<style>rect + rect + rect + rect { fill: red }</style>")
                              + repeated("<rect width=\"5\" height=\"5\"/>", 3000));
    titles.addContent("selectors of descendants",
                      text("<style>%1 x { fill: red }</style>").arg(repeated("g ", 30))
                              + repeated("<g>", 250) + repeated("</g>", 250));
    for (const char *bracket : {"a(", "{", "[", "@media{"})
        titles.addContent(QByteArray("brackets ") + bracket,
                          text("<style>rect { fill: %1</style>").arg(repeated(bracket, 30'000))
                                  + redRect());
    int number = 0;
    for (const char *sheet : {"&lt;!--",
                              "--&gt;",
                              "/*",
                              "*/",
                              "{",
                              "}",
                              "rect{",
                              "rect{fill",
                              "rect{fill:",
                              "@",
                              "@import",
                              "@media print{rect{fill:red}",
                              "@charset \"UTF-16\";",
                              ":not(",
                              "rect:nth-child(-1e9n){}",
                              "\\",
                              "\\110000 {}",
                              "a[b=\"c{",
                              "\"",
                              "'",
                              "rect{fill:\"\\",
                              "rect{stroke-width:calc(1/0)}"})
        titles.addContent(
                "broken style sheet " + QByteArray::number(++number),
                text("<style>%1</style><g style=\"%1\">%2</g>")
                        .arg(text(sheet).replace(QLatin1Char('"'), text("&quot;")), redRect()));
}

void addStructures(Titles &titles)
{
    titles.addContent("switches",
                      text("<switch>%1%2</switch>")
                              .arg(repeated("<g requiredFeatures=\"http://x\" "
                                            "systemLanguage=\",,,\" requiredExtensions=\"a b\"/>",
                                            5'000),
                                   redRect()));
    titles.addContent("titles in a title",
                      repeated("<svg width=\"50\" height=\"50\">", 200) + redRect()
                              + repeated("</svg>", 200) + redRect());
    const QStringList names =
            text("g defs switch circle ellipse image line path polygon polyline rect text textArea "
                 "tspan use video animation a animate animateColor animateMotion animateTransform "
                 "audio desc discard foreignObject handler hkern metadata mpath prefetch script "
                 "set "
                 "tbreak title font linearGradient radialGradient solidColor font-face "
                 "font-face-name font-face-src font-face-uri glyph missing-glyph stop unknown")
                    .split(QLatin1Char(' '));
    const QString element = text("<%1 id=\"i\" width=\"9\" height=\"9\" r=\"4\" d=\"M0 0L9 9\" "
                                 "points=\"0 0 9 9\" xlink:href=\"#j\" dur=\"1s\" values=\"1;2\" "
                                 "type=\"scale\" unicode=\"a\" offset=\"0.5\">%2</%1>");
    QString inner;
    for (const QString &name : names)
        inner += element.arg(name, text("x"));
    QString soup;
    for (const QString &name : names)
        soup += element.arg(name, inner);
    titles.addContent("every element in every other", soup);
    titles.add("prefix for everything",
               "<svg:svg xmlns:svg=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 64 36\"><svg:rect "
               "width=\"50\" height=\"50\" fill=\"red\"/></svg:svg>");
    titles.addContent("largest clip paths",
                      repeated("<clipPath>", 200) + redRect().repeated(100)
                              + repeated("</clipPath>", 200));
    QString modes;
    for (const char *mode :
         {"clear", "src", "dst", "src-in", "dst-out", "xor", "plus", "none-such"})
        modes += text("<rect width=\"50\" height=\"50\" comp-op=\"%1\"/>").arg(text(mode));
    titles.addContent("ways to compose", modes);
}

// --- animations

void addAnimations(Titles &titles)
{
    const char *const timings[] = {
            "from=\"\" to=\"\" begin=\"\" dur=\"1s\"",
            "values=\"\" dur=\"1s\"",
            "values=\" \" dur=\"1s\"",
            "values=\"5 5\" dur=\"1s\" repeatCount=\"indefinite\"",
            "values=\"1 2 3 4;5 6 7 8 9;1\" dur=\"1s\" repeatCount=\"indefinite\"",
            "values=\"a;b;c\" dur=\"1s\"",
            "from=\"0\" to=\"9\" dur=\"0s\"",
            "from=\"0\" to=\"9\" dur=\"-5s\"",
            "from=\"0\" to=\"9\" dur=\"2147483s\" begin=\"2147483s\"",
            "from=\"0\" to=\"9\" dur=\"1e300s\" begin=\"1e300\"",
            "from=\"0\" to=\"9\" dur=\"indefinite\"",
            "from=\"0\" to=\"9\" dur=\"1s\" begin=\"-1e300s\"",
            "from=\"0\" to=\"9\" dur=\"1s\" begin=\"0s;1s;click\"",
            "from=\"0\" to=\"9\" dur=\"NaN\" begin=\"NaN\" repeatCount=\"NaN\"",
            "from=\"nan\" to=\"inf\" dur=\"1s\"",
            "from=\"1e308\" to=\"-1e308\" dur=\"1ms\" repeatCount=\"indefinite\"",
            "from=\"0\" to=\"9\" dur=\"1s\" repeatCount=\"0\"",
            "from=\"0\" to=\"9\" dur=\"1ms\" repeatCount=\"1e9\"",
            "from=\"0\" to=\"9\" dur=\"1s\" repeatCount=\"-2147483648\"",
            "values=\"0;9;3\" dur=\"1ms\" repeatCount=\"2.5\"",
            "from=\"1e38\" to=\"1e38\" dur=\"1s\" repeatCount=\"indefinite\"",
            "by=\"90\" dur=\"1s\" additive=\"sum\" accumulate=\"sum\"",
            "from=\"0\" to=\"9\" begin=\"-2147483647ms\" dur=\"1ms\" repeatCount=\"indefinite\"",
            "values=\"0;9;3;5\" begin=\"-2147483647ms\" dur=\"1ms\" repeatCount=\"indefinite\"",
            "from=\"0\" to=\"9\" begin=\"-100s\" dur=\"1ms\" repeatCount=\"indefinite\"",
            "from=\"0\" to=\"9\" begin=\"2147483647ms\" dur=\"2147483647ms\"",
            "values=\"red;blue;green\" begin=\"-2147483647ms\" dur=\"1ms\"",
            "values=\"nonsense;#12;url(#x)\" dur=\"1s\"",
            "values=\"M0 0;M1 1 L 2 2;---;1.2.3;10-5\" dur=\"1s\"",
            "values=\"visible;hidden;\" dur=\"1s\" calcMode=\"discrete\"",
            "begin=\"a.end\" from=\"0\" to=\"9\" dur=\"1s\"",
            "begin=\"b.begin+1e300s\" id=\"b\" from=\"0\" to=\"9\" dur=\"1s\""};
    int number = 0;
    for (const char *timing : timings) {
        QString content;
        for (const char *type : {"translate", "scale", "rotate", "skewX", ""})
            content += animated("animateTransform",
                                qPrintable(text("attributeName=\"transform\" type=\"%1\" %2")
                                                   .arg(text(type), text(timing))));
        content += animated("animateColor",
                            qPrintable(text("attributeName=\"fill\" ") + text(timing)));
        for (const char *name : {"x", "fill", "d", "visibility", "", "style", "viewBox", "a b",
                                 "1x", "xmlns", "id", "xlink:href", "stroke-dasharray", "&lt;x y="})
            content += animated(
                    "animate",
                    qPrintable(text("attributeName=\"%1\" %2").arg(text(name), text(timing))));
        titles.addContent("timing " + QByteArray::number(++number), content);
    }
    QString ring;
    QString chain;
    for (int i = 0; i < 20'000; ++i) {
        const QString animation =
                text("<animate id=\"a%1\" attributeName=\"x\" begin=\"a%2.end\" dur=\"1000000s\" "
                     "from=\"0\" to=\"1\"/>");
        chain += animation.arg(i).arg(i + 1);
        if (i < 1000)
            ring += animation.arg(i).arg((i + 1) % 1000);
    }
    titles.addContent("ring of begins", text("<g>%1</g>").arg(ring));
    titles.addContent("chain of begins", text("<g>%1</g>").arg(chain));
    titles.addContent("most animations of an element",
                      text("<rect width=\"50\" height=\"50\">%1</rect>")
                              .arg(repeated("<animateTransform attributeName=\"transform\" "
                                            "type=\"translate\" from=\"0\" to=\"9\" dur=\"1s\" "
                                            "additive=\"sum\"/>",
                                            5'000)));
    titles.addContent("most key values",
                      text("<rect width=\"50\" height=\"50\"><animate attributeName=\"x\" "
                           "values=\"%1\" dur=\"1s\"/></rect>")
                              .arg(repeated("1;", 20'000)));
    const QString anywhere = text(
            "<animateTransform attributeName=\"transform\" type=\"rotate\" from=\"0\" to=\"9\" "
            "dur=\"1s\"/><animateColor values=\"red;blue\" dur=\"1s\"/><animateMotion "
            "path=\"M0 0L9 9\" dur=\"1s\"/><animate attributeName=\"x\" dur=\"1s\"/><set "
            "attributeName=\"x\" to=\"5\"/>");
    titles.addContent("animations in odd places",
                      text("@<g>@<text y=\"20\">@<tspan>@x</tspan></text><linearGradient "
                           "id=\"a\"><stop>@</stop>@</linearGradient><use "
                           "xlink:href=\"#z\">@</use></g><defs>@<rect id=\"z\" width=\"9\" "
                           "height=\"9\">@</rect></defs><svg>@</svg><style>@</style>")
                              .replace(QLatin1Char('@'), anywhere));
}

} // namespace

std::vector<HostileTitle> oddTitles()
{
    Titles titles;
    addBytes(titles);
    addDocumentTypes(titles);
    addSizes(titles);
    addReferences(titles);
    addNumbers(titles);
    addPaths(titles);
    addTexts(titles);
    addPictures(titles);
    addStyleSheets(titles);
    addStructures(titles);
    addAnimations(titles);
    for (const RefusedTitle &title : titlesTurningHostile())
        titles.add(title.name, title.text);
    return titles.taken();
}

std::vector<HostileTitle> titlesNamingFolder()
{
    Titles titles;
    const QString shown = text("<text y=\"50\">&x;</text>") + redRect();
    for (const char *system : {"file://%1/canary.txt", "%1/canary.txt", "canary.txt"})
        titles.add(QByteArray("entity of ") + system,
                   text("<!DOCTYPE svg [<!ENTITY x SYSTEM \"%2\">]>").arg(text(system)).toUtf8()
                           + svgTitle(shown).toUtf8());
    for (const char *system : {"file://%1/canary.dtd", "%1/canary.dtd"}) {
        titles.add(QByteArray("document type of ") + system,
                   QByteArray("<!DOCTYPE svg SYSTEM \"") + system + "\">"
                           + svgTitle(shown).toUtf8());
        titles.add(QByteArray("entity of the document type of ") + system,
                   QByteArray("<!DOCTYPE svg [<!ENTITY % p SYSTEM \"") + system + "\"> %p;]>"
                           + svgTitle(shown).toUtf8());
    }
    for (const char *reference :
         {"%1/canary.png", "file://%1/canary.png", "FILE://%1/canary.png", "canary.png",
          "./canary.png", "canary", "#canary.png", "file:canary.png", "%1/canary.pipe",
          "%1/canary.svg", "%1", "%1/canary.svg#a", "data:%1/canary.png",
          "data:image/png;base64,%1/canary.png", "//localhost%1/canary.png", "/dev/zero",
          "/dev/stdin", "/proc/self/mem"}) {
        titles.addContent(QByteArray("picture at ") + reference, imageElement(text(reference)));
        titles.addContent(
                QByteArray("everything at ") + reference,
                text("<use xlink:href=\"%2\"/><feImage xlink:href=\"%2\"/><video "
                     "xlink:href=\"%2\"/><animation xlink:href=\"%2\"/><audio "
                     "xlink:href=\"%2\"/><script xlink:href=\"%2\"/><g "
                     "fill=\"url(%2)\" filter=\"url(%2)\" style=\"fill:url(%2)\">%3</g>"
                     "<font-face><font-face-src><font-face-uri xlink:href=\"%2\"/>"
                     "</font-face-src></font-face><image href=\"%2\"/><image>"
                     "<animate attributeName=\"xlink:href\" from=\"a\" to=\"%2\" dur=\"1s\"/>"
                     "<set attributeName=\"xlink:href\" to=\"%2\"/></image>")
                        .replace(text("%2"), text(reference))
                        .replace(text("%3"), redRect()));
    }
    for (const char *reference :
         {"%1/canary.css", "file://%1/canary.css", "canary.css", "%1/canary.pipe", "/dev/zero"}) {
        titles.add(QByteArray("style sheet at ") + reference,
                   QByteArray("<?xml-stylesheet type=\"text/css\" href=\"") + reference + "\"?>"
                           + redTitle());
        titles.addContent(QByteArray("style that imports ") + reference,
                          text("<style>@import url(\"%2\"); @import \"%2\"; @font-face { "
                               "font-family: x; src: url(\"%2\") } rect { fill: url(\"%2\") }"
                               "</style>")
                                          .replace(text("%2"), text(reference))
                                  + redRect());
    }
    return titles.taken();
}
