// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeTest.h"

#include <Scene/SvgElement.h>

#include <QDomDocument>
#include <QMap>
#include <QTextStream>
#include <QXmlStreamReader>

using Location = std::vector<int>;

Q_DECLARE_METATYPE(Location)

namespace {

QDomElement descendantWithId(const QDomElement &element, const QString &id)
{
    if (element.attribute(QStringLiteral("id")) == id)
        return element;
    QDomElement found;
    for (QDomElement child = element.firstChildElement(); !child.isNull() && found.isNull();
         child = child.nextSiblingElement())
        found = descendantWithId(child, id);
    return found;
}

/// The element with an "id" attribute of this value, which has to be there.
QDomElement elementWithId(const QDomDocument &document, const QString &id)
{
    const QDomElement found = descendantWithId(document.documentElement(), id);
    if (found.isNull())
        QTest::qFail(qPrintable(QStringLiteral("No element has the id ") + id), __FILE__, __LINE__);
    return found;
}

QDomElement appendedElement(QDomNode parent, const QString &name)
{
    return parent.appendChild(parent.ownerDocument().createElement(name)).toElement();
}

void appendSpace(QDomNode parent)
{
    parent.appendChild(parent.ownerDocument().createTextNode(QStringLiteral("\n  ")));
}

QByteArray utf8Text(const QDomDocument &document)
{
    QByteArray text;
    QTextStream stream(&text);
    stream.setCodec("UTF-8");
    document.save(stream, 1);
    stream.flush();
    return text;
}

/// So many that the documents are few, so few that their attributes are found quickly.
constexpr int charactersAtOnce = 32;

using Attributes = QMap<QString, QString>;

Attributes attributesOf(const QDomElement &element)
{
    Attributes result;
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.size(); ++i)
        result.insert(attributes.item(i).nodeName(), attributes.item(i).nodeValue());
    return result;
}

/// The root's attributes as the stream reader reads them; none when there is an error.
Attributes streamedAttributes(const QByteArray &text)
{
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    reader.readNextStartElement();
    Attributes result;
    for (const QXmlStreamAttribute &attribute : reader.attributes())
        result.insert(attribute.qualifiedName().toString(), attribute.value().toString());
    while (!reader.atEnd())
        reader.readNext();
    return reader.hasError() ? Attributes() : result;
}

/// Compares the root's attributes with what both parsers that a title's text goes through read.
void compareWithWhatIsReadBack(const QDomDocument &document)
{
    const Attributes attributes = attributesOf(document.documentElement());
    const QByteArray text = utf8Text(document);
    QDomDocument readAgain;
    QVERIFY(readAgain.setContent(text));
    QCOMPARE(attributesOf(readAgain.documentElement()), attributes);
    QCOMPARE(streamedAttributes(text), attributes);
}

/// The elements that the tests below look for, with visibility and definitions around some of them.
const QString familyText = QStringLiteral(
        "<svg>"
        "<g id='plain'><rect id='inPlain'/></g>"
        "<g id='hidden' visibility='hidden'><g id='inHidden'><rect id='deepInHidden'/></g></g>"
        "<g id='emptyVisibility' visibility=''><rect id='inEmptyVisibility'/></g>"
        "<defs id='defs'><g id='inDefs'><rect id='deepInDefs'/></g></defs>"
        "<Defs id='Defs'><rect id='inCapitalDefs'/></Defs>"
        "<svg:defs xmlns:svg='http://www.w3.org/2000/svg'><rect id='inPrefixedDefs'/></svg:defs>"
        "<rect id='ownVisibility' visibility='visible'/>"
        "</svg>");

} // namespace

class SvgElementTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void locationCountsEveryNode();
    void idIsTheLocationWithoutSeparators_data();
    void idIsTheLocationWithoutSeparators();
    void differentLocationsShareAnId();
    void rootHasAnEmptyLocation();
    void svgIdIsTheIdAttribute_data();
    void svgIdIsTheIdAttribute();
    void ancestors_data();
    void ancestors();
    void visibilityOfTheRootCounts();
    void ancestorsAboveTheRootDoNotCount();
    void nodeOutsideTheRootIsLocatedFromTheDocument();
    void nullNode();
    void locationIsCalculatedAnew();
    void findsTheElementInAnotherTree();
    void findsNothingInATreeThatLostThePlace_data();
    void findsNothingInATreeThatLostThePlace();
    void placesWithoutElementAreLeftAlone();
    void showSetsVisibility_data();
    void showSetsVisibility();
    void showLeavesDescendantsOfVisibilityAlone_data();
    void showLeavesDescendantsOfVisibilityAlone();
    void ancestorsAreThoseOfTheConstruction();
    void setAndRemoveAttribute();
    void namesThatAreNoXmlNamesAreNeverWritten_data();
    void namesThatAreNoXmlNamesAreNeverWritten();
    void everyWrittenNameIsReadBack();
    void forbiddenCharactersAreNeverWritten_data();
    void forbiddenCharactersAreNeverWritten();
    void everyWrittenValueIsReadBack();
};

void SvgElementTest::locationCountsEveryNode()
{
    const QDomDocument document = parsed(QStringLiteral("<svg/>"));
    const QDomElement root = document.documentElement();
    appendSpace(root);
    appendedElement(root, QStringLiteral("g"));
    appendSpace(root);
    const QDomElement group = appendedElement(root, QStringLiteral("g"));
    appendSpace(group);
    appendedElement(group, QStringLiteral("rect"));
    appendSpace(group);
    const QDomElement second = appendedElement(group, QStringLiteral("rect"));

    QCOMPARE(SvgElement(group, root).location(), Location({3}));
    const SvgElement place(second, root);
    QCOMPARE(place.location(), Location({3, 3}));
    QCOMPARE(place.id(), QStringLiteral("33"));
    QVERIFY(place.findNode(root) == second);
}

void SvgElementTest::idIsTheLocationWithoutSeparators_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Location>("location");
    QTest::addColumn<QString>("id");

    const QString thirteen = QStringLiteral("<a/><a/><a/><a/><a/><a/><a/><a/><a/><a/><a/><a/>"
                                            "<a id='x'/>");
    QTest::newRow("first child") << QStringLiteral("<svg><a id='x'/></svg>") << Location{0}
                                 << QStringLiteral("0");
    QTest::newRow("root side first") << QStringLiteral("<svg><a/><g><a/><a/><a id='x'/></g></svg>")
                                     << Location{1, 2} << QStringLiteral("12");
    QTest::newRow("two digits")
            << QStringLiteral("<svg><g><a/><a/><a/><g>%1</g></g></svg>").arg(thirteen)
            << Location{0, 3, 12} << QStringLiteral("0312");
    QTest::newRow("after a comment") << QStringLiteral("<svg><!-- c --><a id='x'/></svg>")
                                     << Location{1} << QStringLiteral("1");
    QTest::newRow("after text") << QStringLiteral("<svg>text<a id='x'/></svg>") << Location{1}
                                << QStringLiteral("1");
    QTest::newRow("after a CDATA section")
            << QStringLiteral("<svg><![CDATA[text]]><a id='x'/></svg>") << Location{1}
            << QStringLiteral("1");
    QTest::newRow("after a processing instruction")
            << QStringLiteral("<svg><?target data?><a id='x'/></svg>") << Location{1}
            << QStringLiteral("1");
    QTest::newRow("what stands before the root does not count")
            << QStringLiteral("<?xml version='1.0'?><!-- c --><svg><a id='x'/></svg>")
            << Location{0} << QStringLiteral("0");
}

void SvgElementTest::idIsTheLocationWithoutSeparators()
{
    QFETCH(QString, text);
    QFETCH(Location, location);
    QFETCH(QString, id);
    const QDomDocument document = parsed(text);
    const QDomElement root = document.documentElement();
    const QDomElement element = elementWithId(document, QStringLiteral("x"));
    const SvgElement place(element, root);
    QCOMPARE(place.location(), location);
    QCOMPARE(place.id(), id);
    QVERIFY(place.findNode(root) == element);
}

void SvgElementTest::differentLocationsShareAnId()
{
    const QDomDocument document = parsed(
            QStringLiteral("<svg><a/><g><a/><a id='inner'/></g><a/><a/><a/><a/><a/><a/><a/><a/>"
                           "<a/><a id='outer'/></svg>"));
    const QDomElement root = document.documentElement();
    const SvgElement inner(elementWithId(document, QStringLiteral("inner")), root);
    const SvgElement outer(elementWithId(document, QStringLiteral("outer")), root);
    QCOMPARE(inner.location(), Location({1, 1}));
    QCOMPARE(outer.location(), Location({11}));
    QCOMPARE(inner.id(), QStringLiteral("11"));
    QCOMPARE(outer.id(), QStringLiteral("11"));
}

void SvgElementTest::rootHasAnEmptyLocation()
{
    const QDomDocument document = parsed(QStringLiteral("<svg id='logo' visibility='hidden'/>"));
    QDomElement root = document.documentElement();
    const SvgElement place(root, root);
    QCOMPARE(place.location(), Location());
    QCOMPARE(place.id(), QString());
    QCOMPARE(place.svgId(), QStringLiteral("logo"));
    QVERIFY(!place.hasVisibilityAncestor());
    QVERIFY(place.findNode(root) == root);
    place.setAttribute(root, QStringLiteral("opacity"), QStringLiteral("1"));
    QCOMPARE(root.attribute(QStringLiteral("opacity")), QStringLiteral("1"));
}

void SvgElementTest::svgIdIsTheIdAttribute_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("svgId");

    QTest::newRow("id") << QStringLiteral("<svg><a id='logo'/></svg>") << QStringLiteral("logo");
    QTest::newRow("spaces stay") << QStringLiteral("<svg><a id=' logo '/></svg>")
                                 << QStringLiteral(" logo ");
    QTest::newRow("empty id") << QStringLiteral("<svg><a id=''/></svg>") << QString();
    QTest::newRow("no id") << QStringLiteral("<svg><a/></svg>") << QString();
    QTest::newRow("other case") << QStringLiteral("<svg><a ID='logo'/></svg>") << QString();
    QTest::newRow("prefixed") << QStringLiteral("<svg><a xml:id='logo'/></svg>") << QString();
    QTest::newRow("no element") << QStringLiteral("<svg>text</svg>") << QString();
}

void SvgElementTest::svgIdIsTheIdAttribute()
{
    QFETCH(QString, text);
    QFETCH(QString, svgId);
    const QDomDocument document = parsed(text);
    const QDomElement root = document.documentElement();
    QVERIFY(!root.firstChild().isNull());
    QCOMPARE(SvgElement(root.firstChild(), root).svgId(), svgId);
}

void SvgElementTest::ancestors_data()
{
    QTest::addColumn<QString>("svgId");
    QTest::addColumn<bool>("hasVisibilityAncestor");
    QTest::addColumn<bool>("isDefinition");

    QTest::newRow("plain") << QStringLiteral("inPlain") << false << false;
    QTest::newRow("parent has visibility") << QStringLiteral("inHidden") << true << false;
    QTest::newRow("grandparent has visibility") << QStringLiteral("deepInHidden") << true << false;
    QTest::newRow("parent has empty visibility")
            << QStringLiteral("inEmptyVisibility") << true << false;
    QTest::newRow("own visibility does not count")
            << QStringLiteral("ownVisibility") << false << false;
    QTest::newRow("group with visibility itself") << QStringLiteral("hidden") << false << false;
    QTest::newRow("the defs element itself") << QStringLiteral("defs") << false << false;
    QTest::newRow("child of defs") << QStringLiteral("inDefs") << false << true;
    QTest::newRow("grandchild of defs") << QStringLiteral("deepInDefs") << false << true;
    QTest::newRow("defs is case-sensitive") << QStringLiteral("inCapitalDefs") << false << false;
    QTest::newRow("defs has no prefix") << QStringLiteral("inPrefixedDefs") << false << false;
}

void SvgElementTest::ancestors()
{
    QFETCH(QString, svgId);
    QFETCH(bool, hasVisibilityAncestor);
    QFETCH(bool, isDefinition);
    const QDomDocument document = parsed(familyText);
    const SvgElement place(elementWithId(document, svgId), document.documentElement());
    QCOMPARE(place.svgId(), svgId);
    QCOMPARE(place.hasVisibilityAncestor(), hasVisibilityAncestor);
    QCOMPARE(place.isDefinition(), isDefinition);
}

void SvgElementTest::visibilityOfTheRootCounts()
{
    const QDomDocument document = parsed(QStringLiteral("<defs visibility='visible'><a/></defs>"));
    const QDomElement root = document.documentElement();
    const SvgElement place(root.firstChild(), root);
    QVERIFY(place.hasVisibilityAncestor());
    QVERIFY(place.isDefinition());
}

void SvgElementTest::ancestorsAboveTheRootDoNotCount()
{
    const QDomDocument document =
            parsed(QStringLiteral("<svg visibility='hidden'><defs><g id='g'><a id='a'/></g></defs>"
                                  "</svg>"));
    const QDomElement group = elementWithId(document, QStringLiteral("g"));
    const SvgElement place(elementWithId(document, QStringLiteral("a")), group);
    QCOMPARE(place.location(), Location({0}));
    QVERIFY(!place.hasVisibilityAncestor());
    QVERIFY(!place.isDefinition());
}

void SvgElementTest::nodeOutsideTheRootIsLocatedFromTheDocument()
{
    const QDomDocument document =
            parsed(QStringLiteral("<!-- c --><svg visibility='hidden'><defs><a/><a id='a'/></defs>"
                                  "<g id='g'/></svg>"));
    const QDomElement root = elementWithId(document, QStringLiteral("g"));
    const SvgElement place(elementWithId(document, QStringLiteral("a")), root);
    // The document itself is the first and only one of its kind.
    QCOMPARE(place.location(), Location({0, 1, 0, 1}));
    QVERIFY(place.hasVisibilityAncestor());
    QVERIFY(place.isDefinition());
}

void SvgElementTest::nullNode()
{
    const QDomDocument document = parsed(familyText);
    const SvgElement place(QDomNode(), document.documentElement());
    QCOMPARE(place.location(), Location());
    QCOMPARE(place.id(), QString());
    QCOMPARE(place.svgId(), QString());
    QVERIFY(!place.hasVisibilityAncestor());
    QVERIFY(!place.isDefinition());
    QVERIFY(place.findNode(QDomNode()).isNull());
}

void SvgElementTest::locationIsCalculatedAnew()
{
    const QDomDocument document = parsed(familyText);
    const QDomElement root = document.documentElement();
    SvgElement place(elementWithId(document, QStringLiteral("deepInHidden")), root);
    QVERIFY(place.hasVisibilityAncestor());
    const QDomElement definition = elementWithId(document, QStringLiteral("deepInDefs"));
    place.calculateNodeLocation(definition, root);
    QCOMPARE(place.location(), Location({3, 0, 0}));
    QVERIFY(!place.hasVisibilityAncestor());
    QVERIFY(place.isDefinition());
    QVERIFY(place.findNode(root) == definition);
    // The id stays that of the construction.
    QCOMPARE(place.svgId(), QStringLiteral("deepInHidden"));
}

void SvgElementTest::findsTheElementInAnotherTree()
{
    const QDomDocument first = parsed(familyText);
    const SvgElement place(elementWithId(first, QStringLiteral("deepInDefs")),
                           first.documentElement());
    const QDomDocument second = parsed(familyText);
    const QDomElement found = place.findNode(second.documentElement()).toElement();
    QVERIFY(found == elementWithId(second, QStringLiteral("deepInDefs")));
    QVERIFY(found != elementWithId(first, QStringLiteral("deepInDefs")));
}

void SvgElementTest::findsNothingInATreeThatLostThePlace_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("no children") << QStringLiteral("<svg/>");
    QTest::newRow("too few children") << QStringLiteral("<svg><a/><a/></svg>");
    QTest::newRow("too few grandchildren") << QStringLiteral("<svg><a/><a/><g><a/></g></svg>");
    QTest::newRow("text in the parent's place")
            << QStringLiteral("<svg><a/><a/>text<g><a/><a/></g></svg>");
    QTest::newRow("no tree") << QString();
}

void SvgElementTest::findsNothingInATreeThatLostThePlace()
{
    QFETCH(QString, text);
    const QDomDocument whole = parsed(QStringLiteral("<svg><a/><a/><g><a/><a id='x'/></g></svg>"));
    SvgElement place(elementWithId(whole, QStringLiteral("x")), whole.documentElement());
    QCOMPARE(place.location(), Location({2, 1}));

    const QDomDocument document = parsed(text);
    const QDomElement root = document.documentElement();
    const QByteArray before = utf8Text(document);
    QVERIFY(place.findNode(root).isNull());
    place.setAttribute(root, QStringLiteral("opacity"), QStringLiteral("1"));
    place.removeAttribute(root, QStringLiteral("id"));
    place.show(root, false);
    QCOMPARE(utf8Text(document), before);
}

void SvgElementTest::placesWithoutElementAreLeftAlone()
{
    const QDomDocument document = parsed(QStringLiteral("<svg>text<!-- c --></svg>"));
    const QDomElement root = document.documentElement();
    const QByteArray before = utf8Text(document);
    for (const QDomNode &node : {root.firstChild(), root.lastChild()}) {
        SvgElement place(node, root);
        QVERIFY(place.findNode(root) == node);
        place.setAttribute(root, QStringLiteral("opacity"), QStringLiteral("1"));
        place.removeAttribute(root, QStringLiteral("opacity"));
        place.show(root, true);
    }
    QCOMPARE(utf8Text(document), before);
}

void SvgElementTest::showSetsVisibility_data()
{
    QTest::addColumn<QString>("svgId");

    QTest::newRow("no visibility") << QStringLiteral("inPlain");
    QTest::newRow("own visibility") << QStringLiteral("ownVisibility");
    QTest::newRow("definition") << QStringLiteral("deepInDefs");
}

void SvgElementTest::showSetsVisibility()
{
    QFETCH(QString, svgId);
    const QDomDocument document = parsed(familyText);
    const QDomElement root = document.documentElement();
    const QDomElement element = elementWithId(document, svgId);
    const SvgElement place(element, root);
    const QString visibility = QStringLiteral("visibility");
    place.show(root, false);
    QCOMPARE(element.attribute(visibility), QStringLiteral("hidden"));
    place.show(root, false);
    QCOMPARE(element.attribute(visibility), QStringLiteral("hidden"));
    place.show(root, true);
    QCOMPARE(element.attribute(visibility), QStringLiteral("visible"));
}

void SvgElementTest::showLeavesDescendantsOfVisibilityAlone_data()
{
    QTest::addColumn<QString>("svgId");

    QTest::newRow("child") << QStringLiteral("inHidden");
    QTest::newRow("grandchild") << QStringLiteral("deepInHidden");
    QTest::newRow("child of an empty visibility") << QStringLiteral("inEmptyVisibility");
}

void SvgElementTest::showLeavesDescendantsOfVisibilityAlone()
{
    QFETCH(QString, svgId);
    const QDomDocument document = parsed(familyText);
    const QDomElement root = document.documentElement();
    const QDomElement element = elementWithId(document, svgId);
    const QByteArray before = utf8Text(document);
    const SvgElement place(element, root);
    place.show(root, true);
    place.show(root, false);
    QVERIFY(!element.hasAttribute(QStringLiteral("visibility")));
    QCOMPARE(utf8Text(document), before);
}

// What an element knows of its ancestors it learnt when it was made.
void SvgElementTest::ancestorsAreThoseOfTheConstruction()
{
    const QDomDocument document = parsed(familyText);
    const QDomElement root = document.documentElement();
    const QDomElement inPlain = elementWithId(document, QStringLiteral("inPlain"));
    const QDomElement inHidden = elementWithId(document, QStringLiteral("inHidden"));
    const SvgElement plain(inPlain, root);
    const SvgElement hidden(inHidden, root);
    inPlain.parentNode().toElement().setAttribute(QStringLiteral("visibility"),
                                                  QStringLiteral("hidden"));
    inHidden.parentNode().toElement().removeAttribute(QStringLiteral("visibility"));

    plain.show(root, true);
    hidden.show(root, true);
    QCOMPARE(inPlain.attribute(QStringLiteral("visibility")), QStringLiteral("visible"));
    QVERIFY(!inHidden.hasAttribute(QStringLiteral("visibility")));
}

void SvgElementTest::setAndRemoveAttribute()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a/><a id='x' fill='red'/></svg>"));
    const QDomElement root = document.documentElement();
    const QDomElement element = elementWithId(document, QStringLiteral("x"));
    SvgElement place(element, root);

    place.setAttribute(root, QStringLiteral("fill"), QStringLiteral("#00ff00"));
    QCOMPARE(element.attribute(QStringLiteral("fill")), QStringLiteral("#00ff00"));
    place.setAttribute(root, QStringLiteral("opacity"), QStringLiteral(""));
    QVERIFY(element.hasAttribute(QStringLiteral("opacity")));
    QCOMPARE(element.attribute(QStringLiteral("opacity"), QStringLiteral("absent")), QString());
    QCOMPARE(element.attributes().size(), 3);

    place.removeAttribute(root, QStringLiteral("fill"));
    place.removeAttribute(root, QStringLiteral("opacity"));
    place.removeAttribute(root, QStringLiteral("stroke"));
    QVERIFY(!element.hasAttribute(QStringLiteral("fill")));
    QVERIFY(!element.hasAttribute(QStringLiteral("opacity")));
    QCOMPARE(element.attributes().size(), 1);
    QVERIFY(!root.firstChildElement().hasAttributes());
}

void SvgElementTest::namesThatAreNoXmlNamesAreNeverWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isWritten");

    QTest::newRow("plain") << QStringLiteral("opacity") << true;
    QTest::newRow("hyphen") << QStringLiteral("stop-color") << true;
    QTest::newRow("prefix") << QStringLiteral("xlink:href") << true;
    QTest::newRow("unknown prefix") << QStringLiteral("prefix:name") << true;
    QTest::newRow("Chinese") << QStringLiteral("\u989c\u8272") << true;
    QTest::newRow("empty") << QStringLiteral("") << false;
    QTest::newRow("null") << QString() << false;
    QTest::newRow("space") << QStringLiteral("x y") << false;
    QTest::newRow("two colons") << QStringLiteral("a:b:c") << false;
    QTest::newRow("markup") << QStringLiteral("a=\"1\" b") << false;
    QTest::newRow("end of the tag") << QStringLiteral("a><b") << false;
    QTest::newRow("leading digit") << QStringLiteral("1x") << false;
    QTest::newRow("control character") << QStringLiteral("a\u0001b") << false;
}

void SvgElementTest::namesThatAreNoXmlNamesAreNeverWritten()
{
    QFETCH(QString, name);
    QFETCH(bool, isWritten);
    const QDomDocument document = parsed(QStringLiteral("<svg/>"));
    const QDomElement root = document.documentElement();
    SvgElement place(root, root);
    place.setAttribute(root, name, QStringLiteral("0.5"));
    QCOMPARE(root.attributes().size(), isWritten ? 1 : 0);
    QCOMPARE(root.attribute(name), isWritten ? QStringLiteral("0.5") : QString());

    compareWithWhatIsReadBack(document);
    place.removeAttribute(root, name);
    QCOMPARE(root.attributes().size(), 0);
}

void SvgElementTest::everyWrittenNameIsReadBack()
{
    int written = 0;
    for (int block = 0; block <= 0xFFFF; block += charactersAtOnce) {
        const QDomDocument document = parsed(QStringLiteral("<svg/>"));
        const QDomElement root = document.documentElement();
        const SvgElement place(root, root);
        for (int c = block; c < block + charactersAtOnce; ++c) {
            for (const char *start : {"", "a", "p:"})
                place.setAttribute(root, QLatin1String(start) + QChar(c), QStringLiteral("1"));
        }
        written += root.attributes().size();
        compareWithWhatIsReadBack(document);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QString::number(block, 16)));
    }
    QVERIFY(written > 100000);
}

void SvgElementTest::forbiddenCharactersAreNeverWritten_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("written");

    const QString emoji = QStringLiteral("\U0001F600");
    QTest::newRow("markup is escaped, not lost")
            << QStringLiteral("<a b=\"c\">&'") << QStringLiteral("<a b=\"c\">&'");
    QTest::newRow("emoji") << QString(emoji + emoji) << QString(emoji + emoji);
    QTest::newRow("control character") << QStringLiteral("a\u0001b") << QStringLiteral("ab");
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(QChar::Null) + QStringLiteral("b"))
                         << QStringLiteral("ab");
    QTest::newRow("high surrogate")
            << QString(QStringLiteral("a") + emoji.at(0) + QStringLiteral("b"))
            << QStringLiteral("ab");
    QTest::newRow("low surrogate")
            << QString(QStringLiteral("a") + emoji.at(1) + QStringLiteral("b"))
            << QStringLiteral("ab");
    QTest::newRow("U+FFFE and U+FFFF")
            << QString(QStringLiteral("a") + QChar(0xFFFE) + QChar(0xFFFF) + QStringLiteral("b"))
            << QStringLiteral("ab");
    QTest::newRow("nothing else") << QStringLiteral("\u0001") << QString();
}

void SvgElementTest::forbiddenCharactersAreNeverWritten()
{
    QFETCH(QString, value);
    QFETCH(QString, written);
    const QDomDocument document = parsed(QStringLiteral("<svg><a/></svg>"));
    const QDomElement root = document.documentElement();
    const QDomElement element = root.firstChildElement();
    const QString fill = QStringLiteral("fill");
    SvgElement(element, root).setAttribute(root, fill, value);
    QVERIFY(element.hasAttribute(fill));
    QCOMPARE(element.attribute(fill), written);

    QDomDocument readAgain;
    QVERIFY(readAgain.setContent(utf8Text(document)));
    QCOMPARE(readAgain.documentElement().firstChildElement().attribute(fill), written);
}

void SvgElementTest::everyWrittenValueIsReadBack()
{
    for (int block = 0; block <= 0xFFFF; block += charactersAtOnce) {
        const QDomDocument document = parsed(QStringLiteral("<svg/>"));
        const QDomElement root = document.documentElement();
        const SvgElement place(root, root);
        for (int c = block; c < block + charactersAtOnce; ++c) {
            place.setAttribute(root, QLatin1Char('a') + QString::number(c),
                               QLatin1Char('<') + QString(QChar(c)) + QLatin1Char('>'));
        }
        QCOMPARE(root.attributes().size(), charactersAtOnce);
        compareWithWhatIsReadBack(document);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QString::number(block, 16)));
    }
}

QTEST_APPLESS_MAIN(SvgElementTest)

#include "tst_svgelement.moc"
