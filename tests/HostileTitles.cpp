// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "HostileTitles.h"

#include "HostileParts.h"

#include <QBuffer>
#include <QImage>

namespace {

QByteArray blankPicture(int width, int height)
{
    QByteArray file;
    QBuffer buffer(&file);
    QImage image(width, height, QImage::Format_Mono);
    image.fill(0);
    image.save(&buffer, "png");
    return file;
}

} // namespace

QString redRect()
{
    return QStringLiteral("<rect x=\"10\" y=\"10\" width=\"30\" height=\"20\" fill=\"#ff0000\"/>");
}

QString imageElement(const QString &reference)
{
    return QStringLiteral("<image width=\"100\" height=\"50\" xlink:href=\"%1\"/>").arg(reference);
}

std::vector<RefusedTitle> refusedTitles()
{
    std::vector<RefusedTitle> titles;
    const auto add = [&titles](const QByteArray &name, const QString &text,
                               const QString &refusal) {
        titles.push_back({{name, text.toUtf8()}, refusal});
    };
    const QString rect = redRect();
    const QString entity =
            QStringLiteral("<!ENTITY a \"%1\">").arg(QString(4000, QLatin1Char('x')));
    add("entities in entities", declared(entityLevels(10), QStringLiteral("<text>&e9;</text>")),
        QStringLiteral("entity expansion limit"));
    add("entities in entities in an attribute",
        declared(entityLevels(10), QStringLiteral("<g id=\"&e9;\"/>")),
        QStringLiteral("entity expansion limit"));
    add("long entity often",
        declared(entity, QStringLiteral("<text>%1</text>").arg(repeated("&a;", 1001))),
        QStringLiteral("entity references"));
    add("long entity in many elements", declared(entity, repeated("<text>&a;</text>", 1001)),
        QStringLiteral("entity references"));
    add("entity of itself",
        declared(QStringLiteral("<!ENTITY a \"&a;\">"), QStringLiteral("<text>&a;</text>")),
        QStringLiteral("Self-referencing entity"));
    add("nested content model",
        declared(QStringLiteral("<!ELEMENT a %1b%2>")
                         .arg(repeated("(", 70000), repeated(")", 70000)),
                 rect),
        QStringLiteral("more than entities"));
    add("default attributes", declared(QStringLiteral("<!ATTLIST g a CDATA \"v\">"), rect),
        QStringLiteral("more than entities"));
    add("many entities", declared(repeated("<!ENTITY a \"b\">", 257), rect),
        QStringLiteral("declared entities"));
    add("parameter entities", declared(QStringLiteral("<!ENTITY % a \"b\">"), rect),
        QStringLiteral("more than entities"));
    // What looks as if it ended elsewhere, before something that is not to be declared.
    const QString model =
            QStringLiteral("<!ELEMENT r %1a%2>").arg(repeated("(", 100000), repeated(")", 100000));
    for (const char *const before : {"<!-->-->",
                                     "<!-->]-->",
                                     "<!--->-->",
                                     "<!--->]>-->",
                                     "<!-- ' -->",
                                     "<!-- \" -->",
                                     "<!-- <!-- -->",
                                     "<!--?>-->",
                                     "<!--]]>-->",
                                     "<?x?>",
                                     "<?x ]>?>",
                                     "<?x ' ?>",
                                     "<?x -->?>",
                                     "<?x <!-- ?>",
                                     "<?x ?\?\?>",
                                     "<!ENTITY a ']>'>",
                                     "<!ENTITY a \"'\">",
                                     "<!ENTITY a '<!--'>",
                                     "<!ENTITY a '<![CDATA['>",
                                     "<!ENTITY a SYSTEM '<!--'>"}) {
        const QString start = QLatin1String(before);
        add(QByteArray("content model after ") + before, declared(start + model, rect),
            QStringLiteral("more than entities"));
        add(QByteArray("default attributes after ") + before,
            declared(start + QStringLiteral("<!ATTLIST g a CDATA \"v\">"), rect),
            QStringLiteral("more than entities"));
        add(QByteArray("many entities after ") + before,
            declared(start + repeated("<!ENTITY e \"b\">", 1500), rect),
            QStringLiteral("declared entities"));
    }
    const QString secondType = QStringLiteral("<!DOCTYPE svg [%1]>").arg(model);
    add("content model in a second document type",
        QStringLiteral("<!DOCTYPE svg>") + secondType + svgTitle(rect),
        QStringLiteral("more than entities"));
    add("content model in a document type inside", svgTitle(secondType + rect),
        QStringLiteral("more than entities"));
    add("content model after a byte order mark",
        QChar(QChar::ByteOrderMark) + declared(model, rect), QStringLiteral("more than entities"));
    add("content model after a quoted bracket",
        QStringLiteral("<!DOCTYPE svg PUBLIC \"-//]>[\" '\"[]>' [%1]>").arg(model) + svgTitle(rect),
        QStringLiteral("more than entities"));
    add("content model in a conditional section",
        declared(QStringLiteral("<![INCLUDE[%1]]>").arg(model), rect),
        QStringLiteral("more than entities"));
    add("conditional sections in each other", declared(repeated("<![INCLUDE[", 15000), rect),
        QStringLiteral("document type"));
    add("reference in the document type", declared(QStringLiteral("%a;") + model, rect),
        QStringLiteral("more than entities"));
    add("percent sign in the value of an entity",
        declared(QStringLiteral("<!ENTITY a \"100%\">"), rect), QStringLiteral("Unexpected '%'"));
    add("notation", declared(QStringLiteral("<!NOTATION a SYSTEM \"b\">"), rect),
        QStringLiteral("more than entities"));
    add("deep nesting", svgTitle(repeated("<g>", 10000) + rect + repeated("</g>", 10000)),
        QStringLiteral("nesting depth"));
    add("never closed", svgTitle(repeated("<g>", 100000)), QStringLiteral("nesting depth"));
    add("many elements", svgTitle(repeated("<g/>", 200000)), QStringLiteral("number of elements"));
    add("many attributes", svgTitle(attributes(100000)), QStringLiteral("number of attributes"));
    add("large text", svgTitle(repeated("<!-- -->", 2100000)), QStringLiteral("text size"));
    add("long words", svgTitle(QStringLiteral("<text>%1</text>").arg(repeated("word ", 20001))),
        QStringLiteral("text length"));

    add("use of use", svgTitle(useLevels(30, 2)), QStringLiteral("drawn elements"));
    add("use of use without a view box", withoutViewBox(useLevels(26, 2)),
        QStringLiteral("drawn elements"));
    add("four wide levels of use", svgTitle(useLevels(4, 100)), QStringLiteral("drawn elements"));
    add("chain of use", svgTitle(useLevels(2000, 1)), QStringLiteral("depth of use"));
    add("chain of use without a view box", withoutViewBox(useLevels(2000, 1)),
        QStringLiteral("depth of use"));
    add("heavy group often",
        svgTitle(QStringLiteral("<g id=\"a\">%1</g>").arg(repeated("<g/>", 2000))
                 + repeated("<use xlink:href=\"#a\"/>", 2000)),
        QStringLiteral("drawn elements"));
    add("use of use that an animation makes",
        svgTitle(useLevels(4, 100).replace(
                QStringLiteral("<use xlink:href=\"#l3\"/>"),
                QStringLiteral("<use><animate attributeName=\"xlink:href\" values=\"#l3;#l2\" "
                               "dur=\"1s\"/></use>"))),
        QStringLiteral("drawn elements"));
    add("use of use under the plain name",
        svgTitle(useLevels(4, 100).replace(QStringLiteral("xlink:href"), QStringLiteral("href"))),
        QStringLiteral("drawn elements"));
    add("use of use under the plain name beside an empty one",
        svgTitle(useLevels(4, 100).replace(QStringLiteral("xlink:href"),
                                           QStringLiteral("xlink:href=\"\" href"))),
        QStringLiteral("drawn elements"));
    add("identifiers that animations give",
        svgTitle(useLevels(4, 100).replace(
                QStringLiteral("<g id=\"l3\">"),
                QStringLiteral("<g><animate attributeName=\"xml:id\" values=\"a;l3\" "
                               "dur=\"1s\"/>"))),
        QStringLiteral("drawn elements"));
    add("ring with many uses",
        svgTitle(QStringLiteral("<g id=\"a\"><use xlink:href=\"#b\"/></g><g id=\"b\">%1</g>")
                         .arg(repeated("<use xlink:href=\"#a\"/>", 64))),
        QStringLiteral("ring of references"));
    add("chain of gradients", svgTitle(gradients(1000)), QStringLiteral("depth of gradient"));
    add("many stops",
        svgTitle(QStringLiteral("<linearGradient>%1</linearGradient>")
                         .arg(repeated("<stop/>", 10000))),
        QStringLiteral("gradient stops"));

    add("dashes that get nowhere",
        withoutViewBox(QStringLiteral("<path stroke=\"blue\" d=\"M -1e20 -1e20 L -1e20 0 H 2\" "
                                      "stroke-dasharray=\"50\"/>")),
        QStringLiteral("magnitude"));
    add("animated dashes that get nowhere",
        withoutViewBox(QStringLiteral(
                "<path stroke=\"blue\" d=\"M 0 0 H 2\" stroke-dasharray=\"50\">"
                "<animate attributeName=\"d\" to=\"M -1e20 -1e20 H 2\" dur=\"1s\"/></path>")),
        QStringLiteral("magnitude"));
    add("scales to infinity",
        svgTitle(repeated("<g transform=\"scale(1e30)\">", 20) + rect + repeated("</g>", 20)),
        QStringLiteral("magnitude"));
    add("long dash pattern",
        svgTitle(QStringLiteral("<path d=\"M 0 9 H 90\" stroke=\"red\" stroke-dasharray=\"%1\"/>")
                         .arg(repeated("1,2,", 50000))),
        QStringLiteral("number of dashes"));
    add("long path", svgTitle(QStringLiteral("<path d=\"M0 0%1\"/>").arg(repeated("L1 1", 120000))),
        QStringLiteral("coordinates"));
    add("long list of transforms",
        svgTitle(QStringLiteral("<g transform=\"%1\"/>").arg(repeated("rotate(1)", 230000))),
        QStringLiteral("attribute length"));
    add("long style",
        svgTitle(QStringLiteral("<g style=\"%1\"/>").arg(repeated("fill:red;", 120000))),
        QStringLiteral("attribute length"));
    add("long text often",
        svgTitle(
                QStringLiteral("<defs><text id=\"t\">%1</text></defs>").arg(repeated("word ", 9999))
                + repeated("<use xlink:href=\"#t\"/>", 1000)),
        QStringLiteral("drawn characters"));
    add("text of one character a line",
        svgTitle(QStringLiteral("<textArea width=\"1\">%1</textArea>").arg(repeated("a", 99'999))),
        QStringLiteral("text length"));
    add("long path often",
        svgTitle(QStringLiteral("<defs><path id=\"p\" d=\"M0 0%1\"/></defs>")
                         .arg(repeated("L1 1L99 9", 20'000))
                 + repeated("<use xlink:href=\"#p\"/>", 1000)),
        QStringLiteral("drawn coordinates"));
    add("letters of long paths",
        svgTitle(QStringLiteral("<font id=\"F\"><glyph unicode=\"a\" d=\"M0 0%1\"/></font>"
                                "<text font-family=\"F\">%2</text>")
                         .arg(repeated("L1 1L99 9", 20'000), repeated("a", 10'000))),
        QStringLiteral("drawn coordinates"));
    add("many comments between characters", svgTitle(repeated("a<!---->", 2'000'000)),
        QStringLiteral("comments and instructions"));
    add("many instructions", svgTitle(QString()) + repeated("<?b?>", 3'000'000),
        QStringLiteral("comments and instructions"));
    add("many attributes of many elements", svgTitle(attributes(250).repeated(5000)),
        QStringLiteral("number of all attributes"));
    add("style sheets for many elements",
        svgTitle(QStringLiteral("<style>%1</style>").arg(repeated("a<!---->", 50'000))
                 + repeated("<g/>", 100'000)),
        QStringLiteral("times selectors"));
    add("rules inside an element of a style",
        svgTitle(QStringLiteral("<style><g>%1</g></style>").arg(repeated("a{}", 50'000))
                 + repeated("<g/>", 50'000)),
        QStringLiteral("times selectors"));
    add("rules for long rows of elements",
        svgTitle(QStringLiteral("<style>%1</style>").arg(repeated("*+*{}", 100))
                 + repeated("<g/>", 50'000)),
        QStringLiteral("times selectors"));
    add("rules for deep elements",
        svgTitle(QStringLiteral("<style>%1</style>").arg(repeated("x *{}", 1000))
                 + repeated("<g>", 250) + repeated("<g/>", 9000) + repeated("</g>", 250)),
        QStringLiteral("times selectors"));
    add("one rule of many conditions",
        svgTitle(QStringLiteral("<style>*%1{}</style>").arg(repeated("[id]", 60'000))
                 + repeated("<g id=\"a\"/>", 20'000)),
        QStringLiteral("times selectors"));
    add("many rules for many elements",
        svgTitle(QStringLiteral("<style>%1</style>").arg(repeated(".c{fill:red}", 5000))
                 + repeated("<g/>", 5000)),
        QStringLiteral("times selectors"));
    add("many declarations for many elements",
        svgTitle(QStringLiteral("<style>*{%1}</style>").arg(repeated("fill:red;", 25'000))
                 + repeated("<g/>", 1000)),
        QStringLiteral("weight of rules"));
    add("a rule of many values for many elements",
        svgTitle(QStringLiteral("<style>.c{a:%1}</style>").arg(repeated("1 ", 125'000))
                 + repeated("<g class=\"c\"/>", 1000)),
        QStringLiteral("weight of rules"));
    add("a long value for many elements",
        svgTitle(QStringLiteral("<style>rect{opacity:'%1'}</style>").arg(repeated("1", 250'000))
                 + repeated("<rect/>", 10'000)),
        QStringLiteral("weight of rules"));
    add("a rule of many selectors",
        svgTitle(QStringLiteral("<style>%1*{}</style>").arg(repeated("*,", 120'000))
                 + repeated("<g/>", 100)),
        QStringLiteral("weight of rules"));
    add("millions of selectors",
        svgTitle(QStringLiteral("<style>%1*{}</style>").arg(repeated("*,", 8'000'000))),
        QStringLiteral("style sheet size"));
    add("many escapes in styles",
        svgTitle(QStringLiteral("<g style=\"a:%1\"/>").arg(repeated("\\41", 340'000))),
        QStringLiteral("number of escapes"));
    add("nested brackets in a style sheet",
        svgTitle(QStringLiteral("<style>%1</style>").arg(repeated("a(", 200000))),
        QStringLiteral("style sheet size"));
    add("many key values",
        svgTitle(QStringLiteral("<animate attributeName=\"x\" values=\"%1\"/>")
                         .arg(repeated("1;", 20001))),
        QStringLiteral("key values"));
    add("begin that overflows",
        svgTitle(animated(
                "animateTransform",
                "type=\"rotate\" from=\"0\" to=\"9\" begin=\"-2147483648ms\" dur=\"1ms\"")),
        QStringLiteral("times of an animation"));
    add("deeply nested clip paths",
        svgTitle(repeated("<clipPath>", 2000) + rect + repeated("</clipPath>", 2000)),
        QStringLiteral("nesting depth"));
    return titles;
}

std::vector<RefusedTitle> titlesTurningHostile()
{
    std::vector<RefusedTitle> titles;
    const auto add = [&titles](const QByteArray &name, const QString &content,
                               const char *refusal) {
        titles.push_back({{name, svgTitle(redRect() + content).toUtf8()}, QLatin1String(refusal)});
    };
    const auto animation = [](const QString &attributes) {
        return QStringLiteral("<animate begin=\"0.1s\" dur=\"0.8s\" attributeName=%1/>")
                .arg(attributes);
    };
    for (const char *name : {"xlink:href", "href"}) {
        const QString use = QStringLiteral("<use>%1</use>")
                                    .arg(animation(QStringLiteral("\"%1\" values=\"#l-8;#l12\"")
                                                           .arg(QLatin1String(name))));
        add(QByteArray(name) + " between key values",
            useLevels(2, 100).replace(QStringLiteral("id=\"l2\""), QStringLiteral("id=\"l2.000\""))
                    + use.repeated(100),
            "drawn elements");
    }
    add("identifiers between key values",
        useLevels(3, 100).replace(QStringLiteral("#l2\""), QStringLiteral("#l2.000\""))
                + QStringLiteral("<g>%1%2</g>")
                          .arg(animation(QStringLiteral("\"xml:id\" values=\"l-8;l12\"")),
                               repeated("<use xlink:href=\"#l1\"/>", 100)),
        "drawn elements");
    add("numbers between key values",
        QStringLiteral("<path stroke=\"blue\" stroke-dasharray=\"5\" d=\"M 0 0 H 2\">%1</path>")
                .arg(animation(QStringLiteral("\"d\" values=\"M 1e1 0 H 2;M 1 29 0 H 2\""))),
        "magnitude");
    add("long paths often used",
        QStringLiteral("<defs><path id=\"p\" d=\"M 0 0\">%1</path></defs>%2")
                .arg(animation(QStringLiteral("\"d\" from=\"M%1\" to=\"M%1\"")
                                       .arg(repeated(" 1", 50'000))),
                     repeated("<use xlink:href=\"#p\"/>", 100)),
        "drawn coordinates");
    add("dashes in a style that an animation writes",
        QStringLiteral("<path d=\"M 0 0 H 2\">%1</path>")
                .arg(animation(QStringLiteral("\"style\" from=\"a\" to=\"stroke-dasharray:%1\"")
                                       .arg(repeated("0.001,", 100'000)))),
        "number of dashes");
    add("classes that an animation writes",
        QStringLiteral("<style>.c{%1}</style>%2")
                .arg(repeated("a:b;", 25'000),
                     QStringLiteral("<g>%1</g>")
                             .arg(animation(QStringLiteral("\"class\" values=\"c;c\"")))
                             .repeated(200)),
        "weight of rules");
    const QString picture = QStringLiteral("data:image/png;base64,")
            + QString::fromLatin1(blankPicture(4096, 2048).toBase64());
    add("pictures that animations show",
        QStringLiteral("<image width=\"9\" height=\"9\" xlink:href=\"\">%1</image>")
                .arg(animation(QStringLiteral("\"xlink:href\" from=\"a\" to=\"%1\"").arg(picture)))
                .repeated(5),
        "refers to another file");
    return titles;
}

std::vector<HostileTitle> harmlessTitles()
{
    std::vector<HostileTitle> titles;
    const auto add = [&titles](const char *name, const QString &content) {
        titles.push_back({name, svgTitle(content).toUtf8()});
    };
    const auto beside = [&add](const char *name, const QString &content) {
        add(name, redRect() + content);
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
    beside("picture of another kind",
           imageElement(QStringLiteral("data:image/svg+xml;base64,PHN2Zy8+")));
    beside("picture without an end",
           imageElement(QStringLiteral("data:image/png;base64,iVBORw0KGgo=")));
    add("transform that began long ago",
        animated("animateTransform",
                 "attributeName=\"transform\" type=\"translate\" from=\"0\" to=\"0\""
                 " begin=\"-2147483647ms\" dur=\"1ms\" repeatCount=\"indefinite\""));
    add("transform without values",
        animated("animateTransform",
                 "attributeName=\"transform\" type=\"translate\" values=\";;;\" dur=\"1s\""));
    add("colour that began long ago",
        animated("animateColor",
                 "attributeName=\"fill\" values=\"#ff0000;#ff0000\""
                 " begin=\"-2147483647ms\" dur=\"1ms\" repeatCount=\"indefinite\""));
    return titles;
}

std::vector<HostileTitle> titlesNamingFile()
{
    std::vector<HostileTitle> titles;
    const auto add = [&titles](const char *name, const QString &text) {
        titles.push_back({name, text.toUtf8()});
    };
    const auto addImage = [&add](const char *name, const char *reference) {
        add(name, svgTitle(redRect() + imageElement(QLatin1String(reference))));
    };
    addImage("absolute", "%1");
    addImage("after spaces", " %1 ");
    addImage("without its ending", "%1.");
    addImage("file address", "file://%1");
    addImage("file address without slashes", "file:%1");
    addImage("network share", "/%1");
    add("style sheet",
        QStringLiteral("<?xml-stylesheet type=\"text/css\" href=\"%1\"?>") + svgTitle(redRect()));
    add("style sheet by address",
        QStringLiteral("<?xml-stylesheet type=\"text/css\" href=\"file://%1\"?>")
                + svgTitle(redRect()));
    return titles;
}
