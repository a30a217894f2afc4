// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/ElementIndex_p.h>
#include <Scene/SvgElement.h>

#include <QDomDocument>
#include <QRandomGenerator>

#include <algorithm>

namespace {

using Places = std::vector<SvgElement>;
using Addresses = std::vector<const SvgElement *>;

Addresses addresses(const Places &places)
{
    Addresses result;
    for (const SvgElement &place : places)
        result.push_back(&place);
    return result;
}

/// All nodes of a tree in the order in which they were put into it.
struct Tree
{
    QDomDocument document;
    QVector<QDomNode> nodes;

    QDomElement root() const { return document.documentElement(); }

    QDomNode append(const QDomNode &node, QDomNode parent)
    {
        nodes.append(parent.appendChild(node));
        return nodes.last();
    }

    Places places() const
    {
        Places result;
        for (const QDomNode &node : nodes)
            result.emplace_back(node, root());
        return result;
    }
};

/// A tree that grows at random elements; three of four nodes are elements.
Tree randomTree(QRandomGenerator &random, int size)
{
    Tree tree;
    const QDomElement root = tree.document.createElement(QStringLiteral("svg"));
    QVector<QDomNode> elements{tree.append(root, tree.document)};
    const int spread = random.bounded(1, size + 1);
    for (int i = 1; i < size; ++i) {
        const int newest = elements.size() - 1;
        const QDomNode parent = elements.at(newest - random.bounded(std::min(spread, newest + 1)));
        if (random.bounded(4) == 0)
            tree.append(tree.document.createTextNode(QStringLiteral(" ")), parent);
        else
            elements.append(tree.append(tree.document.createElement(QStringLiteral("g")), parent));
    }
    return tree;
}

Tree parsed(const QString &text)
{
    Tree tree;
    tree.document.setContent(text);
    return tree;
}

/// The element that the index has for a place; null when it has none.
QDomElement elementAt(const ElementIndex &index, const SvgElement &place)
{
    const int number = index.number(place);
    return number == ElementIndex::none ? QDomElement() : index.elements().at(std::size_t(number));
}

/// Looks up every place in a tree and compares with what the place finds by itself.
void compareWithPlaces(const QDomNode &root, const Places &places, Addresses order)
{
    const ElementIndex index(root, std::move(order));
    for (const SvgElement &place : places)
        QVERIFY2(elementAt(index, place) == place.findNode(root).toElement(),
                 qPrintable(place.id()));
}

} // namespace

class ElementIndexTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void findsElements();
    void findsTheRoot();
    void nodesThatAreNoElements();
    void noPlaces();
    void unknownPlace();
    void equalPlaces();
    void elementsInDocumentOrder();
    void severalDigits();
    void placesAfterTheEnd();
    void nullRoot();
    void everyPlaceInRandomTrees();
    void somePlacesInRandomTrees();
    void placesOfOtherTrees();
    void treeParsedAnew();
    void placesBelowAnotherRoot();
};

void ElementIndexTest::findsElements()
{
    const Tree tree = parsed(QStringLiteral("<svg><a/>text<g><b/><c/></g><!-- c --><d/></svg>"));
    const QDomElement root = tree.root();
    const QDomElement group = root.firstChildElement(QStringLiteral("g"));
    const SvgElement c(group.lastChild(), root);
    const SvgElement d(root.lastChild(), root);
    const SvgElement a(root.firstChild(), root);
    const ElementIndex index(root, {&c, &d, &a});
    QCOMPARE(elementAt(index, a).tagName(), QStringLiteral("a"));
    QCOMPARE(elementAt(index, c).tagName(), QStringLiteral("c"));
    QCOMPARE(elementAt(index, d).tagName(), QStringLiteral("d"));
    QVERIFY(elementAt(index, c) == group.lastChild());
}

void ElementIndexTest::findsTheRoot()
{
    const Tree tree = parsed(QStringLiteral("<svg><a/></svg>"));
    const SvgElement place(tree.root(), tree.root());
    const SvgElement child(tree.root().firstChild(), tree.root());
    const ElementIndex index(tree.root(), {&child, &place});
    QVERIFY(elementAt(index, place) == tree.root());
    QVERIFY(elementAt(index, child) == tree.root().firstChild());
}

void ElementIndexTest::nodesThatAreNoElements()
{
    const Tree tree = parsed(QStringLiteral("<svg>text<a/><!-- c --></svg>"));
    const SvgElement text(tree.root().firstChild(), tree.root());
    const SvgElement comment(tree.root().lastChild(), tree.root());
    const SvgElement element(tree.root().firstChildElement(), tree.root());
    const ElementIndex index(tree.root(), {&text, &comment, &element});
    QVERIFY(elementAt(index, text).isNull());
    QVERIFY(elementAt(index, comment).isNull());
    QCOMPARE(elementAt(index, element).tagName(), QStringLiteral("a"));
}

void ElementIndexTest::noPlaces()
{
    const Tree tree = parsed(QStringLiteral("<svg/>"));
    const ElementIndex index(tree.root(), {});
    QVERIFY(elementAt(index, SvgElement(tree.root(), tree.root())).isNull());
}

// Places are known by address, not by what they lead to.
void ElementIndexTest::unknownPlace()
{
    const Tree tree = parsed(QStringLiteral("<svg><a/></svg>"));
    const SvgElement known(tree.root().firstChild(), tree.root());
    const SvgElement unknown = known;
    const ElementIndex index(tree.root(), {&known});
    QVERIFY(!elementAt(index, known).isNull());
    QVERIFY(elementAt(index, unknown).isNull());
}

void ElementIndexTest::equalPlaces()
{
    const Tree tree = parsed(QStringLiteral("<svg><a/><g><b/></g></svg>"));
    const QDomNode b = tree.root().lastChild().firstChild();
    const Places places(5, SvgElement(b, tree.root()));
    Addresses twice = addresses(places);
    twice.insert(twice.end(), twice.begin(), twice.begin() + 2);
    const ElementIndex index(tree.root(), twice);
    for (const SvgElement &place : places)
        QVERIFY(elementAt(index, place) == b);
}

void ElementIndexTest::elementsInDocumentOrder()
{
    const Tree tree = parsed(QStringLiteral("<svg><a/><g><b/><c/></g><d/></svg>"));
    Places places;
    for (const char *name : {"d", "c", "a", "c", "g"})
        places.emplace_back(tree.document.elementsByTagName(QLatin1String(name)).at(0),
                            tree.root());
    const ElementIndex index(tree.root(), addresses(places));
    QStringList names;
    for (const QDomElement &element : index.elements())
        names.append(element.tagName());
    QCOMPARE(names,
             (QStringList{QStringLiteral("a"), QStringLiteral("g"), QStringLiteral("c"),
                          QStringLiteral("d")}));
    QCOMPARE(index.number(places.at(0)), 3);
    QCOMPARE(index.number(places.at(1)), 2);
    QCOMPARE(index.number(places.at(3)), 2);
    QCOMPARE(index.number(places.at(4)), 1);
}

// Places are in order by their numbers, not by their texts.
void ElementIndexTest::severalDigits()
{
    Tree tree = parsed(QStringLiteral("<svg/>"));
    for (int i = 0; i < 120; ++i)
        tree.append(tree.document.createElement(QStringLiteral("a")), tree.root());
    const Places places = tree.places();
    compareWithPlaces(tree.root(), places, addresses(places));
}

void ElementIndexTest::placesAfterTheEnd()
{
    const Tree whole = parsed(QStringLiteral("<svg><a/><g><b/><b><b/><b/></b></g><c/></svg>"));
    const QDomElement root = whole.root();
    const QDomNode group = root.firstChildElement(QStringLiteral("g"));
    const Places places{SvgElement(root.firstChild(), root),
                        SvgElement(group, root),
                        SvgElement(group.firstChild(), root),
                        SvgElement(group.lastChild(), root),
                        SvgElement(group.lastChild().firstChild(), root),
                        SvgElement(group.lastChild().lastChild(), root),
                        SvgElement(root.lastChild(), root)};
    for (const QString &text :
         {QStringLiteral("<svg/>"), QStringLiteral("<svg><a/></svg>"),
          QStringLiteral("<svg><a/><g/></svg>"), QStringLiteral("<svg><a/><g><b/></g></svg>"),
          QStringLiteral("<svg><a/><g/><c/></svg>"), QStringLiteral("<svg><a/>text<c/></svg>"),
          QStringLiteral("<svg><a/><g><b/><b><b/></b></g><c/></svg>")}) {
        const Tree lesser = parsed(text);
        compareWithPlaces(lesser.root(), places, addresses(places));
    }
}

void ElementIndexTest::nullRoot()
{
    const Tree tree = parsed(QStringLiteral("<svg><a/></svg>"));
    const SvgElement root(tree.root(), tree.root());
    const SvgElement child(tree.root().firstChild(), tree.root());
    const ElementIndex index(QDomNode(), {&root, &child});
    QVERIFY(elementAt(index, root).isNull());
    QVERIFY(elementAt(index, child).isNull());
}

void ElementIndexTest::everyPlaceInRandomTrees()
{
    QRandomGenerator random(9);
    for (int i = 0; i < 100; ++i) {
        const Tree tree = randomTree(random, random.bounded(1, 120));
        const Places places = tree.places();
        Addresses order = addresses(places);
        compareWithPlaces(tree.root(), places, order);
        std::shuffle(order.begin(), order.end(), random);
        compareWithPlaces(tree.root(), places, order);
        std::reverse(order.begin(), order.end());
        compareWithPlaces(tree.root(), places, order);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(tree.document.toString()));
    }
}

void ElementIndexTest::somePlacesInRandomTrees()
{
    QRandomGenerator random(10);
    for (int i = 0; i < 200; ++i) {
        const Tree tree = randomTree(random, random.bounded(1, 120));
        Places places = tree.places();
        std::shuffle(places.begin(), places.end(), random);
        places.erase(places.begin() + random.bounded(int(places.size()) + 1), places.end());
        compareWithPlaces(tree.root(), places, addresses(places));
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(tree.document.toString()));
    }
}

// Where another tree has something else, or nothing.
void ElementIndexTest::placesOfOtherTrees()
{
    QRandomGenerator random(11);
    int found = 0;
    int lost = 0;
    for (int i = 0; i < 200; ++i) {
        const Tree tree = randomTree(random, random.bounded(1, 120));
        const Places places = randomTree(random, random.bounded(1, 120)).places();
        compareWithPlaces(tree.root(), places, addresses(places));
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(tree.document.toString()));
        for (const SvgElement &place : places)
            ++(place.findNode(tree.root()).isNull() ? lost : found);
    }
    QVERIFY(found > 500);
    QVERIFY(lost > 500);
}

void ElementIndexTest::treeParsedAnew()
{
    const QString text = QStringLiteral("<svg><a/>text<g><b/><c><d/></c></g><!-- c --><e/></svg>");
    const Tree first = parsed(text);
    const Tree second = parsed(text);
    Places places;
    for (const QString &name : {QStringLiteral("a"), QStringLiteral("d"), QStringLiteral("e")})
        places.emplace_back(first.document.elementsByTagName(name).at(0), first.root());
    const ElementIndex index(second.root(), addresses(places));
    QVERIFY(elementAt(index, places.at(0)) == second.root().firstChild());
    QCOMPARE(elementAt(index, places.at(1)).tagName(), QStringLiteral("d"));
    QVERIFY(elementAt(index, places.at(1)).ownerDocument() == second.document);
    QVERIFY(elementAt(index, places.at(2)) == second.root().lastChild());
}

void ElementIndexTest::placesBelowAnotherRoot()
{
    const Tree tree = parsed(QStringLiteral("<svg><a/><g><b/><c/></g></svg>"));
    const SvgElement second(tree.root().lastChild(), tree.root());
    const ElementIndex below(tree.root().lastChild(), {&second});
    QCOMPARE(elementAt(below, second).tagName(), QStringLiteral("c"));
}

QTEST_APPLESS_MAIN(ElementIndexTest)

#include "tst_elementindex.moc"
