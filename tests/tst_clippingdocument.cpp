// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/SvgDocument.h>

#include <QDomDocument>

#include <memory>

// The companion document that draws the shapes of a title's clip paths.

namespace {

const QString viewBox = QStringLiteral("viewBox=\"0 0 100 50\"");

QString svg(const QString &content, const QString &rootAttributes = viewBox)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                          " xmlns:xlink=\"http://www.w3.org/1999/xlink\" %1>%2</svg>")
            .arg(rootAttributes, content);
}

std::unique_ptr<SvgDocument> clippingOf(SvgDocument &document)
{
    return std::unique_ptr<SvgDocument>(document.makeClippingDocument());
}

/// Element, text and comment below a node, children in brackets: "g#a[rect#b \"words\"]".
QString outline(const QDomNode &parent)
{
    QStringList parts;
    for (QDomNode node = parent.firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString id = node.toElement().attribute(QStringLiteral("id"));
        QString part = node.isElement() ? node.nodeName() : node.nodeValue().trimmed();
        if (node.isText())
            part = QLatin1Char('"') + part + QLatin1Char('"');
        if (!id.isEmpty())
            part += QLatin1Char('#') + id;
        if (node.hasChildNodes())
            part += QLatin1Char('[') + outline(node) + QLatin1Char(']');
        parts.append(part);
    }
    return parts.join(QLatin1Char(' '));
}

QStringList attributeNames(const QDomNode &node)
{
    QStringList names;
    const QDomNamedNodeMap attributes = node.attributes();
    for (int i = 0; i < attributes.count(); ++i)
        names.append(attributes.item(i).nodeName());
    names.sort();
    return names;
}

QStringList keptAttributes()
{
    return {QStringLiteral("xmlns:svg"), QStringLiteral("xmlns"), QStringLiteral("xmlns:xlink"),
            QStringLiteral("version"),   QStringLiteral("width"), QStringLiteral("height"),
            QStringLiteral("viewBox")};
}

/// The one pass over the live map of a copy of the title's root, counted before it begins.
QStringList attributesLeftByOnePass(const QDomNode &titleRoot)
{
    QDomElement copy = titleRoot.cloneNode(false).toElement();
    const QDomNamedNodeMap attributes = copy.attributes();
    const int n = attributes.length();
    for (int i = 0; i < n; ++i) {
        const QString name = attributes.item(i).nodeName();
        if (!name.isEmpty() && !keptAttributes().contains(name))
            copy.removeAttribute(name);
    }
    return attributeNames(copy);
}

} // namespace

class ClippingDocumentTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void isNullWithoutClipping_data();
    void isNullWithoutClipping();
    void isACompleteDocument();
    void keepsListedRootAttributes_data();
    void keepsListedRootAttributes();
    void removesAForeignRootAttribute_data();
    void removesAForeignRootAttribute();
    void passesOverTheRootAttributesOnce();

    void copiesWhatClipPathsHold_data();
    void copiesWhatClipPathsHold();
    void leavesTheTitleAsItIs();
    void keepsTheDocumentType();
    void drawsTheShapesOnly();
    void erasesTheTitle();
    void hasTheCanvasOfTheTemplate();
    void lacksWhatStandsOutside();

    void rewritesColors();
    void playsAnimations();
    void copiesAdjustments();
    void copiesTheAnimationState();
    void copiesUnsavedChanges();
    void isIndependent();
};

void ClippingDocumentTest::isNullWithoutClipping_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("no clip path") << svg(QStringLiteral("<rect width=\"9\" height=\"9\"/>"));
    QTest::newRow("empty text") << QString();
    QTest::newRow("broken text") << QStringLiteral("<svg><clipPath><rect/></clipPath>");
    QTest::newRow("another root") << QStringLiteral("<title><clipPath><rect/></clipPath></title>");
}

void ClippingDocumentTest::isNullWithoutClipping()
{
    QFETCH(QString, text);
    SvgDocument document(text);
    QVERIFY(!document.hasClipping());
    QVERIFY(!document.makeClippingDocument());
}

void ClippingDocumentTest::isACompleteDocument()
{
    SvgDocument document(
            svg(QStringLiteral("<clipPath><rect width=\"9\" height=\"9\"/></clipPath>")));
    const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
    QVERIFY(clipping);
    QVERIFY(clipping->isLoaded());
    QVERIFY(!clipping->parent());
    QVERIFY(!clipping->hasClipping());
    QCOMPARE(clipping->bounds(), QRectF(0, 0, 100, 50));
    QCOMPARE(clipping->animationDurationTotal(), 0);
    QCOMPARE(outline(clipping->documentRoot()), QStringLiteral("rect"));
}

void ClippingDocumentTest::keepsListedRootAttributes_data()
{
    QTest::addColumn<QString>("attribute");
    QTest::newRow("version") << QStringLiteral("version=\"1.1\"");
    QTest::newRow("width") << QStringLiteral("width=\"100\"");
    QTest::newRow("height") << QStringLiteral("height=\"50\"");
    QTest::newRow("viewBox") << viewBox;
    QTest::newRow("xmlns:svg") << QStringLiteral("xmlns:svg=\"http://www.w3.org/2000/svg\"");
    QTest::newRow("all") << QStringLiteral("version=\"1.1\" width=\"100\" height=\"50\" "
                                           "xmlns:svg=\"http://www.w3.org/2000/svg\" ")
                    + viewBox;
}

void ClippingDocumentTest::keepsListedRootAttributes()
{
    QFETCH(QString, attribute);
    SvgDocument document(svg(QStringLiteral("<clipPath/>"), attribute));
    const QStringList names = attributeNames(document.documentRoot());
    QVERIFY(names.contains(QStringLiteral("xmlns")));
    QVERIFY(names.contains(QStringLiteral("xmlns:xlink")));
    const QDomElement root = clippingOf(document)->documentRoot().toElement();
    QCOMPARE(attributeNames(root), names);
    for (const QString &name : names)
        QCOMPARE(root.attribute(name), document.documentRoot().toElement().attribute(name));
}

void ClippingDocumentTest::removesAForeignRootAttribute_data()
{
    QTest::addColumn<QString>("attribute");
    for (const char *name :
         {"id", "class", "style", "fill", "visibility", "baseProfile", "preserveAspectRatio",
          "Version", "VERSION", "viewbox", "Width", "xml:space", "xmlns:other"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

/// A single one can't have moved out of sight.
void ClippingDocumentTest::removesAForeignRootAttribute()
{
    QFETCH(QString, attribute);
    const QString kept = viewBox + QStringLiteral(" width=\"100\" height=\"50\" version=\"1.1\" ");
    SvgDocument document(
            svg(QStringLiteral("<clipPath/>"), kept + attribute + QStringLiteral("=\"default\"")));
    QVERIFY(document.isLoaded());
    QStringList expected = attributeNames(document.documentRoot());
    QVERIFY(expected.removeOne(attribute));
    QCOMPARE(attributeNames(clippingOf(document)->documentRoot()), expected);
}

/// An attribute that moves up into the place of a removed one is passed over.
void ClippingDocumentTest::passesOverTheRootAttributesOnce()
{
    int passedOver = 0;
    for (int count = 1; count <= 60; ++count) {
        QString attributes = viewBox + QStringLiteral(" version=\"1.1\"");
        for (int i = 0; i < count; ++i)
            attributes += QStringLiteral(" data-%1=\"x\"").arg(i * count);
        SvgDocument document(svg(QStringLiteral("<clipPath/>"), attributes));
        const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
        const QStringList left = attributeNames(clipping->documentRoot());
        QCOMPARE(left, attributesLeftByOnePass(document.documentRoot()));
        passedOver += left.size() > 4;
    }
    QVERIFY(passedOver > 30);
}

void ClippingDocumentTest::copiesWhatClipPathsHold_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("copied");
    const auto row = [](const char *name, const char *content, const char *copied) {
        QTest::newRow(name) << QString::fromLatin1(content) << QString::fromLatin1(copied);
    };
    row("one shape", "<clipPath id=\"c\"><rect id=\"a\"/></clipPath>", "rect#a");
    row("two clip paths in document order",
        "<clipPath><rect id=\"a\"/></clipPath><g/><clipPath><circle id=\"b\"/></clipPath>",
        "rect#a circle#b");
    row("several shapes", "<clipPath><rect id=\"a\"/><circle id=\"b\"/><path id=\"c\"/></clipPath>",
        "rect#a circle#b path#c");
    row("with everything below",
        "<clipPath><g id=\"g\"><rect id=\"a\"/><g><text>words</text></g>"
        "</g></clipPath>",
        "g#g[rect#a g[text[\"words\"]]]");
    row("text and comments", "<clipPath>words<!--note--><rect id=\"a\"/></clipPath>",
        "\"words\" note rect#a");
    row("in defs and in groups",
        "<defs><clipPath><rect id=\"a\"/></clipPath></defs>"
        "<g><g><clipPath><rect id=\"b\"/></clipPath></g></g>",
        "rect#a rect#b");
    row("nothing else of the title",
        "<style>rect {}</style><defs><g id=\"d\"/></defs><rect id=\"x\"/>"
        "<clipPath><rect id=\"a\"/></clipPath><text>words</text>",
        "rect#a");
    row("a nested clip path is copied inside the outer one and emptied at the root",
        "<clipPath id=\"o\"><clipPath id=\"i\"><rect id=\"a\"/></clipPath><g id=\"b\"/></clipPath>",
        "clipPath#i[rect#a] g#b rect#a");
    row("empty", "<clipPath/>", "");
    row("in a comment only", "<!-- <clipPath --><rect id=\"x\"/>", "");
    row("the name is case-sensitive",
        "<clipPath/><clippath><rect id=\"a\"/></clippath><ClipPath><rect id=\"b\"/></ClipPath>",
        "");
    row("prefixed",
        "<clipPath/><s:clipPath xmlns:s=\"http://www.w3.org/2000/svg\"><rect id=\"a\"/>"
        "</s:clipPath>",
        "");
}

void ClippingDocumentTest::copiesWhatClipPathsHold()
{
    QFETCH(QString, content);
    QFETCH(QString, copied);
    SvgDocument document(svg(content));
    QVERIFY(document.isLoaded());
    const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
    QVERIFY(clipping);
    QVERIFY(clipping->isLoaded());
    QCOMPARE(outline(clipping->documentRoot()), copied);
    QCOMPARE(clipping->hasClipping(), copied.contains(QLatin1String("clipPath")));
}

void ClippingDocumentTest::leavesTheTitleAsItIs()
{
    const QString text = svg(QStringLiteral("<g id=\"g\"/><clipPath><rect id=\"a\"/></clipPath>"),
                             viewBox + QStringLiteral(" id=\"root\" class=\"c\" fill=\"red\""));
    SvgDocument document(text);
    const QStringList names = attributeNames(document.documentRoot());
    clippingOf(document);
    QCOMPARE(document.data(), text.toUtf8());
    QCOMPARE(attributeNames(document.documentRoot()), names);
    QCOMPARE(outline(document.documentRoot()), QStringLiteral("g#g clipPath[rect#a]"));
}

void ClippingDocumentTest::keepsTheDocumentType()
{
    SvgDocument document(QStringLiteral("<!DOCTYPE svg>")
                         + svg(QStringLiteral("<clipPath><rect/></clipPath>")));
    const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
    QVERIFY(clipping->isLoaded());
    QVERIFY(clipping->data().contains("<!DOCTYPE svg>"));

    SvgDocument plain(svg(QStringLiteral("<clipPath><rect/></clipPath>")));
    QVERIFY(!clippingOf(plain)->data().contains("DOCTYPE"));
}

void ClippingDocumentTest::drawsTheShapesOnly()
{
    const QString shapes =
            QStringLiteral("<rect x=\"10\" y=\"5\" width=\"30\" height=\"20\" fill=\"#ff0000\"/>"
                           "<circle cx=\"70\" cy=\"25\" r=\"15\" fill=\"#0000ff\"/>");
    SvgDocument document(svg(QStringLiteral("<rect width=\"100\" height=\"50\"/><clipPath>%1"
                                            "</clipPath>")
                                     .arg(shapes)));
    SvgDocument twin(svg(shapes));
    COMPARE_PICTURES(renderAt(*clippingOf(document), 0), renderAt(twin, 0), 0);

    SvgDocument empty(svg(QStringLiteral("<rect width=\"9\" height=\"9\"/><clipPath/>")));
    QVERIFY(isBlank(renderAt(*clippingOf(empty), 0)));
}

void ClippingDocumentTest::erasesTheTitle()
{
    SvgDocument document(svg(QStringLiteral(
            "<rect width=\"100\" height=\"50\" fill=\"#00ff00\"/>"
            "<defs><clipPath><rect x=\"20\" y=\"10\" width=\"30\" height=\"20\"/></clipPath>"
            "</defs>")));
    QImage picture = renderAt(document, 0);
    QCOMPARE(picture.pixelColor(30, 20), QColor(0, 255, 0));
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    clippingOf(document)->paint(&painter, 0);
    painter.end();
    QCOMPARE(picture.pixelColor(30, 20).alpha(), 0);
    QCOMPARE(picture.pixelColor(10, 20), QColor(0, 255, 0));
    QCOMPARE(picture.pixelColor(60, 40), QColor(0, 255, 0));
}

void ClippingDocumentTest::hasTheCanvasOfTheTemplate()
{
    SvgDocument document(svg(QStringLiteral("<clipPath><rect/></clipPath>"),
                             QStringLiteral("viewBox=\"5 6 300 200\" width=\"7\"")));
    document.setBounds(QRectF(1, 2, 3, 4));
    const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
    QCOMPARE(clipping->bounds(), QRectF(0, 0, 300, 200));
    QCOMPARE(document.bounds(), QRectF(1, 2, 3, 4));
}

void ClippingDocumentTest::lacksWhatStandsOutside()
{
    SvgDocument document(svg(QStringLiteral(
            "<defs><rect id=\"d\" width=\"40\" height=\"40\"/></defs>"
            "<clipPath><use xlink:href=\"#d\"/></clipPath><use xlink:href=\"#d\"/>")));
    QVERIFY(!isBlank(renderAt(document, 0)));
    const ExpectedWarning atLoading(QStringLiteral("link #d is undefined"));
    const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
    QCOMPARE(outline(clipping->documentRoot()), QStringLiteral("use"));
    const ExpectedWarning atPainting(QStringLiteral("link #d is undefined"));
    QVERIFY(isBlank(renderAt(*clipping, 0)));
}

void ClippingDocumentTest::rewritesColors()
{
    SvgDocument document(
            svg(QStringLiteral("<clipPath><rect width=\"9\" height=\"9\"/></clipPath>")));
    QDomElement rect = document.documentRoot().firstChildElement().firstChildElement();
    rect.setAttribute(QStringLiteral("fill"), QStringLiteral("rgba(16, 32, 48, 1)"));
    const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
    QCOMPARE(clipping->documentRoot().firstChildElement().attribute(QStringLiteral("fill")),
             QStringLiteral("#102030"));
}

void ClippingDocumentTest::playsAnimations()
{
    const QString shape = QStringLiteral(
            "<rect y=\"10\" width=\"20\" height=\"20\"><animate attributeName=\"x\" from=\"0\""
            " to=\"80\" begin=\"%1\" dur=\"2s\"/></rect>");
    // The title resolves the begin; the clipping document does not know the other animation.
    SvgDocument document(
            svg(QStringLiteral("<rect width=\"9\" height=\"9\"><animate id=\"intro\""
                               " attributeName=\"x\" to=\"5\" dur=\"3s\"/></rect><clipPath>")
                + shape.arg(QStringLiteral("intro.end")) + QStringLiteral("</clipPath>")));
    SvgDocument twin(svg(shape.arg(QStringLiteral("3s"))));
    QCOMPARE(document.animationDurationTotal(), 5000);
    const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
    QCOMPARE(clipping->animationDurationTotal(), 5000);
    for (const int ms : {4000, 0, 3000, 4999, 6000})
        COMPARE_PICTURES(renderAt(*clipping, ms), renderAt(twin, ms), 0);
}

void ClippingDocumentTest::copiesAdjustments()
{
    SvgDocument document(svg(
            QStringLiteral("<clipPath><rect width=\"9\" height=\"9\" fill=\"red\"/></clipPath>")));
    document.prepareAdjustedAttibutes({QStringLiteral("fill")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#0000ff"));
    QCOMPARE(renderAt(*clippingOf(document), 0).pixelColor(4, 4), QColor(0, 0, 255));
}

void ClippingDocumentTest::copiesTheAnimationState()
{
    SvgDocument document(svg(QStringLiteral(
            "<clipPath><rect id=\"a\" x=\"1\"><animate attributeName=\"x\" from=\"0\" to=\"80\""
            " dur=\"1s\"/></rect></clipPath>")));
    const auto copiedX = [&document] {
        const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
        return clipping->documentRoot().firstChildElement().attribute(QStringLiteral("x"));
    };
    QCOMPARE(copiedX(), QStringLiteral("1"));
    document.applyAnimation(500);
    QCOMPARE(copiedX(), QStringLiteral("40.000"));
    document.applyAnimation(1500);
    QCOMPARE(copiedX(), QStringLiteral("1"));
}

void ClippingDocumentTest::copiesUnsavedChanges()
{
    SvgDocument document(svg(QStringLiteral("<clipPath><rect id=\"a\"/></clipPath>")));
    QDomElement clipPath = document.documentRoot().firstChildElement();
    clipPath.appendChild(clipPath.firstChild().cloneNode());
    QCOMPARE(outline(clippingOf(document)->documentRoot()), QStringLiteral("rect#a rect#a"));
}

void ClippingDocumentTest::isIndependent()
{
    SvgDocument document(svg(
            QStringLiteral("<clipPath><rect width=\"9\" height=\"9\" fill=\"red\"/></clipPath>")));
    const std::unique_ptr<SvgDocument> clipping = clippingOf(document);
    document.prepareAdjustedAttibutes({QStringLiteral("fill")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#0000ff"));
    QCOMPARE(renderAt(*clipping, 0).pixelColor(4, 4), QColor(255, 0, 0));

    clipping->prepareAdjustedAttibutes({QStringLiteral("fill")});
    clipping->adjustAttribute(QStringLiteral("fill"), QStringLiteral("#00ff00"));
    QCOMPARE(renderAt(*clippingOf(document), 0).pixelColor(4, 4), QColor(0, 0, 255));
}

QTEST_MAIN(ClippingDocumentTest)

#include "tst_clippingdocument.moc"
