// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <limits>
#include <memory>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

// Titles that were made to do harm go through everything that an editor does with a title: they
// are refused with a reason, or they show what the harmless part of them shows.

namespace {

QString repeated(const char *text, int count)
{
    return QString::fromLatin1(text).repeated(count);
}

QString redRect()
{
    return QStringLiteral("<rect x=\"10\" y=\"10\" width=\"30\" height=\"20\" fill=\"#ff0000\"/>");
}

QString withoutViewBox(const QString &content)
{
    return svgTitle(content).remove(QStringLiteral(" viewBox=\"0 0 100 50\""));
}

QString useLevels(int levels, int width)
{
    QString content = QStringLiteral("<defs><g id=\"l0\">%1</g>").arg(redRect());
    for (int i = 1; i <= levels; ++i)
        content += QStringLiteral("<g id=\"l%1\">%2</g>")
                           .arg(i)
                           .arg(QStringLiteral("<use xlink:href=\"#l%1\"/>")
                                        .arg(i - 1)
                                        .repeated(width));
    return content + QStringLiteral("</defs><use xlink:href=\"#l%1\"/>").arg(levels);
}

QString gradients(int count)
{
    QString content;
    for (int i = 0; i < count; ++i)
        content += QStringLiteral("<linearGradient id=\"c%1\" xlink:href=\"#c%2\"/>")
                           .arg(i)
                           .arg(i + 1);
    return content + QStringLiteral("<rect width=\"9\" height=\"9\" fill=\"url(#c0)\"/>");
}

QString attributes(int count)
{
    QString content;
    for (int i = 0; i < count; ++i)
        content += QStringLiteral(" a%1=\"1\"").arg(i);
    return QStringLiteral("<g%1/>").arg(content);
}

QString declared(const QString &declarations, const QString &content)
{
    return QStringLiteral("<!DOCTYPE svg [%1]>").arg(declarations) + svgTitle(content);
}

QString entityLevels(int levels)
{
    QString declarations = QStringLiteral("<!ENTITY e0 \"laugh\">");
    for (int i = 1; i < levels; ++i)
        declarations += QStringLiteral("<!ENTITY e%1 \"%2\">")
                                .arg(i)
                                .arg(QStringLiteral("&e%1;").arg(i - 1).repeated(10));
    return declarations;
}

QString image(const QString &reference)
{
    return QStringLiteral("<image width=\"100\" height=\"50\" xlink:href=\"%1\"/>").arg(reference);
}

QString animated(const char *element, const char *timing)
{
    return QStringLiteral("<rect x=\"10\" y=\"10\" width=\"30\" height=\"20\" fill=\"#ff0000\">"
                          "<%1 %2/></rect>")
            .arg(QLatin1String(element), QLatin1String(timing));
}

constexpr int highest = std::numeric_limits<int>::max();
constexpr int lowest = std::numeric_limits<int>::min();

/// Loads, plays, adjusts and clips; the picture at 500 ms of the first play.
QImage handle(SvgDocument &document)
{
    document.setBounds(QRectF(0, 0, 100, 50));
    const QImage picture = renderAt(document, 500);
    for (const int ms : {0, 1500, -1, highest, lowest})
        renderAt(document, ms);
    document.prepareAdjustedAttibutes({QStringLiteral("fill"), QStringLiteral("xlink:href")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#00ff00"));
    renderAt(document, 700);
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    if (clipping) {
        clipping->setBounds(QRectF(0, 0, 100, 50));
        renderAt(*clipping, 0);
    }
    return picture;
}

} // namespace

class HostileTitlesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void refuses_data();
    void refuses();
    void showsTheHarmlessPart_data();
    void showsTheHarmlessPart();
    void opensNoFile_data();
    void opensNoFile();
    void animatesNoForeignReference();
    void adjustsNoForeignReference();
    void boundsCopiesOfClipPaths();
};

/// What the renderer does not understand it says in a category of its own.
void HostileTitlesTest::init()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false"));
}

void HostileTitlesTest::refuses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("limit");
    const QString rect = redRect();
    const QString entity =
            QStringLiteral("<!ENTITY a \"%1\">").arg(QString(4000, QLatin1Char('x')));
    QTest::newRow("entities in entities")
            << declared(entityLevels(10), QStringLiteral("<text>&e9;</text>"))
            << QStringLiteral("entity expansion limit");
    QTest::newRow("entities in entities in an attribute")
            << declared(entityLevels(10), QStringLiteral("<g id=\"&e9;\"/>"))
            << QStringLiteral("entity expansion limit");
    QTest::newRow("long entity often")
            << declared(entity, QStringLiteral("<text>%1</text>").arg(repeated("&a;", 1001)))
            << QStringLiteral("entity references");
    QTest::newRow("long entity in many elements")
            << declared(entity, repeated("<text>&a;</text>", 1001))
            << QStringLiteral("entity references");
    QTest::newRow("entity of itself")
            << declared(QStringLiteral("<!ENTITY a \"&a;\">"), QStringLiteral("<text>&a;</text>"))
            << QStringLiteral("Self-referencing entity");
    QTest::newRow("nested content model") << declared(
            QStringLiteral("<!ELEMENT a %1b%2>").arg(repeated("(", 70000), repeated(")", 70000)),
            rect) << QStringLiteral("more than entities");
    QTest::newRow("default attributes")
            << declared(QStringLiteral("<!ATTLIST g a CDATA \"v\">"), rect)
            << QStringLiteral("more than entities");
    QTest::newRow("many entities") << declared(repeated("<!ENTITY a \"b\">", 257), rect)
                                   << QStringLiteral("declared entities");
    QTest::newRow("parameter entities") << declared(QStringLiteral("<!ENTITY % a \"b\">"), rect)
                                        << QStringLiteral("more than entities");
    QTest::newRow("deep nesting") << svgTitle(repeated("<g>", 10000) + rect
                                              + repeated("</g>", 10000))
                                  << QStringLiteral("nesting depth");
    QTest::newRow("never closed") << svgTitle(repeated("<g>", 100000))
                                  << QStringLiteral("nesting depth");
    QTest::newRow("many elements")
            << svgTitle(repeated("<g/>", 200000)) << QStringLiteral("number of elements");
    QTest::newRow("many attributes")
            << svgTitle(attributes(100000)) << QStringLiteral("number of attributes");
    QTest::newRow("large text") << svgTitle(repeated("<!-- -->", 2100000))
                                << QStringLiteral("text size");
    QTest::newRow("long words") << svgTitle(
            QStringLiteral("<text>%1</text>").arg(repeated("word ", 20001)))
                                << QStringLiteral("text length");

    QTest::newRow("use of use") << svgTitle(useLevels(30, 2)) << QStringLiteral("drawn elements");
    QTest::newRow("use of use without a view box")
            << withoutViewBox(useLevels(26, 2)) << QStringLiteral("drawn elements");
    QTest::newRow("four wide levels of use")
            << svgTitle(useLevels(4, 100)) << QStringLiteral("drawn elements");
    QTest::newRow("chain of use") << svgTitle(useLevels(2000, 1)) << QStringLiteral("depth of use");
    QTest::newRow("chain of use without a view box")
            << withoutViewBox(useLevels(2000, 1)) << QStringLiteral("depth of use");
    QTest::newRow("heavy group often")
            << svgTitle(QStringLiteral("<g id=\"a\">%1</g>").arg(repeated("<g/>", 2000))
                        + repeated("<use xlink:href=\"#a\"/>", 2000))
            << QStringLiteral("drawn elements");
    QTest::newRow("use of use that an animation makes") << svgTitle(useLevels(4, 100).replace(
            QStringLiteral("<use xlink:href=\"#l3\"/>"),
            QStringLiteral("<use><animate attributeName=\"xlink:href\" values=\"#l3;#l2\" "
                           "dur=\"1s\"/></use>"))) << QStringLiteral("drawn elements");
    QTest::newRow("ring with many uses")
            << svgTitle(QStringLiteral("<g id=\"a\"><use xlink:href=\"#b\"/></g><g id=\"b\">%1</g>")
                                .arg(repeated("<use xlink:href=\"#a\"/>", 64)))
            << QStringLiteral("ring of references");
    QTest::newRow("chain of gradients")
            << svgTitle(gradients(1000)) << QStringLiteral("depth of gradient");
    QTest::newRow("many stops") << svgTitle(
            QStringLiteral("<linearGradient>%1</linearGradient>").arg(repeated("<stop/>", 10000)))
                                << QStringLiteral("gradient stops");

    QTest::newRow("dashes that get nowhere") << withoutViewBox(QStringLiteral(
            "<path stroke=\"blue\" d=\"M -1e20 -1e20 L -1e20 0 H 2\" stroke-dasharray=\"50\"/>"))
                                             << QStringLiteral("magnitude");
    QTest::newRow("animated dashes that get nowhere") << withoutViewBox(QStringLiteral(
            "<path stroke=\"blue\" d=\"M 0 0 H 2\" stroke-dasharray=\"50\">"
            "<animate attributeName=\"d\" to=\"M -1e20 -1e20 H 2\" dur=\"1s\"/></path>"))
                                                      << QStringLiteral("magnitude");
    QTest::newRow("scales to infinity")
            << svgTitle(repeated("<g transform=\"scale(1e30)\">", 20) + rect + repeated("</g>", 20))
            << QStringLiteral("magnitude");
    QTest::newRow("long dash pattern") << svgTitle(
            QStringLiteral("<path d=\"M 0 9 H 90\" stroke=\"red\" stroke-dasharray=\"%1\"/>")
                    .arg(repeated("1,2,", 50000)))
                                       << QStringLiteral("number of dashes");
    QTest::newRow("long path") << svgTitle(
            QStringLiteral("<path d=\"M0 0%1\"/>").arg(repeated("L1 1", 120000)))
                               << QStringLiteral("coordinates");
    QTest::newRow("long list of transforms")
            << svgTitle(QStringLiteral("<g transform=\"%1\"/>").arg(repeated("rotate(1)", 230000)))
            << QStringLiteral("attribute length");
    QTest::newRow("long style") << svgTitle(
            QStringLiteral("<g style=\"%1\"/>").arg(repeated("fill:red;", 120000)))
                                << QStringLiteral("attribute length");
    QTest::newRow("many rules for many elements")
            << svgTitle(QStringLiteral("<style>%1</style>").arg(repeated(".c{fill:red}", 5000))
                        + repeated("<g/>", 5000))
            << QStringLiteral("times selectors");
    QTest::newRow("nested brackets in a style sheet")
            << svgTitle(QStringLiteral("<style>%1</style>").arg(repeated("a(", 200000)))
            << QStringLiteral("style sheet size");
    QTest::newRow("many key values")
            << svgTitle(QStringLiteral("<animate attributeName=\"x\" values=\"%1\"/>")
                                .arg(repeated("1;", 20001)))
            << QStringLiteral("key values");
    QTest::newRow("begin that overflows") << svgTitle(
            animated("animateTransform",
                     "type=\"rotate\" from=\"0\" to=\"9\" begin=\"-2147483648ms\" dur=\"1ms\""))
                                          << QStringLiteral("times of an animation");
    QTest::newRow("deeply nested clip paths")
            << svgTitle(repeated("<clipPath>", 2000) + rect + repeated("</clipPath>", 2000))
            << QStringLiteral("nesting depth");
}

void HostileTitlesTest::refuses()
{
    QFETCH(QString, text);
    QFETCH(QString, limit);
    SvgDocument document(text);
    QVERIFY(!document.isLoaded());
    QVERIFY2(document.errorString().startsWith(QStringLiteral("line ")),
             qPrintable(document.errorString()));
    QVERIFY2(document.errorString().contains(limit), qPrintable(document.errorString()));
    QVERIFY(!document.errorString().contains(QLatin1Char('\n')));
    QVERIFY(document.documentRoot().isNull());
    QVERIFY(isBlank(handle(document)));
}

void HostileTitlesTest::showsTheHarmlessPart_data()
{
    QTest::addColumn<QString>("content");
    const auto beside = [](const char *name, const QString &content) {
        QTest::newRow(name) << redRect() + content;
    };
    beside("use of itself", QStringLiteral("<use id=\"u\" xlink:href=\"#u\"/>"));
    beside("uses of each other",
           QStringLiteral("<g id=\"a\"><use xlink:href=\"#b\"/></g><g id=\"b\"><use "
                          "xlink:href=\"#a\"/></g>"));
    beside("gradients of each other",
           QStringLiteral("<linearGradient id=\"b\" xlink:href=\"#c\"/><radialGradient id=\"c\" "
                          "xlink:href=\"#b\"/>"));
    beside("animations that wait for each other",
           QStringLiteral("<g><animate id=\"a\" attributeName=\"x\" begin=\"b.end\" dur=\"1s\" "
                          "from=\"0\" to=\"1\"/>"
                          "<animate id=\"b\" attributeName=\"x\" begin=\"a.end\" dur=\"1s\" "
                          "from=\"0\" to=\"1\"/></g>"));
    beside("nested definitions",
           repeated("<defs>", 250) + repeated("<g id=\"a\" visibility=\"x\"/>", 1000)
                   + repeated("</defs>", 250));
    beside("nested clip paths",
           repeated("<clipPath>", 200) + repeated("<g/>", 10) + repeated("</clipPath>", 200));
    beside("style sheet that imports",
           QStringLiteral("<style>@import url(\"/dev/zero\"); @font-face { src: url(\"/dev/zero\") "
                          "}</style>"));
    beside("references that do not resolve",
           QStringLiteral("<use xlink:href=\"/dev/zero#x\"/><use "
                          "xlink:href=\"http://localhost/a.svg#x\"/>"));
    beside("picture of another kind", image(QStringLiteral("data:image/svg+xml;base64,PHN2Zy8+")));
    beside("picture without an end", image(QStringLiteral("data:image/png;base64,iVBORw0KGgo=")));
    QTest::newRow("transform that began long ago")
            << animated("animateTransform",
                        "attributeName=\"transform\" type=\"translate\" from=\"0\" to=\"0\""
                        " begin=\"-2147483647ms\" dur=\"1ms\" repeatCount=\"indefinite\"");
    QTest::newRow("transform without values")
            << animated("animateTransform",
                        "attributeName=\"transform\" type=\"translate\" values=\";;;\" dur=\"1s\"");
    QTest::newRow("colour that began long ago")
            << animated("animateColor",
                        "attributeName=\"fill\" values=\"#ff0000;#ff0000\""
                        " begin=\"-2147483647ms\" dur=\"1ms\" repeatCount=\"indefinite\"");
}

void HostileTitlesTest::showsTheHarmlessPart()
{
    QFETCH(QString, content);
    SvgDocument document(svgTitle(content));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    SvgDocument twin(svgTitle(redRect()));
    COMPARE_PICTURES(handle(document), renderAt(twin, 0), 0);
}

void HostileTitlesTest::opensNoFile_data()
{
    QTest::addColumn<QString>("text"); // %1 stands for the file
    const auto add = [](const char *name, const char *reference) {
        QTest::newRow(name) << svgTitle(redRect() + image(QLatin1String(reference)));
    };
    add("absolute", "%1");
    add("behind spaces", " %1 ");
    add("without its ending", "%1.");
    add("file address", "file://%1");
    add("file address without slashes", "file:%1");
    add("network share", "/%1");
    QTest::newRow("style sheet") << QStringLiteral(
                                            "<?xml-stylesheet type=\"text/css\" href=\"%1\"?>")
                    + svgTitle(redRect());
    QTest::newRow("style sheet by address")
            << QStringLiteral("<?xml-stylesheet type=\"text/css\" href=\"file://%1\"?>")
                    + svgTitle(redRect());
}

/// Neither a picture or a style sheet that would be seen nor a pipe, which would never end.
void HostileTitlesTest::opensNoFile()
{
    QFETCH(QString, text);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("canary.png"));
    SvgDocument twin(svgTitle(redRect()));
    const QImage expected = renderAt(twin, 0);

    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(path));
    if (text.contains(QStringLiteral("xml-stylesheet"))) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write("rect { fill: #0000ff; opacity: 0.5 }") > 0);
    }
    SvgDocument document(QString(text).replace(QStringLiteral("%1"), path));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    COMPARE_PICTURES(handle(document), expected, 0);

#ifdef Q_OS_UNIX
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    SvgDocument waiting(QString(text).replace(QStringLiteral("%1"), pipe));
    COMPARE_PICTURES(handle(waiting), expected, 0);
#endif
}

void HostileTitlesTest::animatesNoForeignReference()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("canary.png"));
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(path));
    SvgDocument document(svgTitle(
            redRect()
            + QStringLiteral("<image width=\"100\" height=\"50\" xlink:href=\"#a\"><animate"
                             " attributeName=\"xlink:href\" values=\"%1;%1\" dur=\"1s\"/></image>")
                      .arg(path)));
    QVERIFY(document.isLoaded());
    SvgDocument twin(svgTitle(redRect()));
    COMPARE_PICTURES(handle(document), renderAt(twin, 0), 0);
    QVERIFY(!savedTree(document)
                     .elementsByTagName(QStringLiteral("image"))
                     .item(0)
                     .toElement()
                     .attribute(QStringLiteral("xlink:href"))
                     .contains(path));
}

void HostileTitlesTest::adjustsNoForeignReference()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("canary.png"));
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString embedded = QStringLiteral("data:image/png;base64,")
            + QString::fromLatin1(file.readAll().toBase64());

    SvgDocument document(svgTitle(redRect() + image(QStringLiteral("a.png"))));
    const QImage before = renderAt(document, 0);
    document.prepareAdjustedAttibutes({QStringLiteral("xlink:href")});
    document.adjustAttribute(QStringLiteral("xlink:href"), path);
    COMPARE_PICTURES(renderAt(document, 0), before, 0);
    document.adjustAttribute(QStringLiteral("xlink:href"), embedded);
    QCOMPARE(renderAt(document, 0).pixelColor(90, 45), QColor(Qt::blue));
}

/// Each level is copied again for all the levels around it.
void HostileTitlesTest::boundsCopiesOfClipPaths()
{
    const auto copied = [](int leaves) {
        SvgDocument document(svgTitle(repeated("<clipPath>", 200) + repeated("<g/>", leaves)
                                      + repeated("</clipPath>", 200)));
        const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
        return clipping ? savedTree(*clipping).elementsByTagName(QStringLiteral("g")).count() : -1;
    };
    QCOMPARE(copied(900), 200 * 900);
    QCOMPARE(copied(2000), 0);
}

QTEST_MAIN(HostileTitlesTest)

#include "tst_hostiletitles.moc"
