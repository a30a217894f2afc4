// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeTest.h"

#include <Scene/TreeWalk_p.h>

#include <QDomDocument>
#include <QRandomGenerator>

namespace {

/// Some node: mostly an element, often one that matters for the elements below it.
QDomNode anyNode(QDomDocument &document, QRandomGenerator &random)
{
    switch (random.bounded(10)) {
    case 0:
        return document.createTextNode(QStringLiteral(" text "));
    case 1:
        return document.createComment(QStringLiteral("comment"));
    case 2:
        return document.createCDATASection(QStringLiteral("data"));
    case 3:
        return document.createProcessingInstruction(QStringLiteral("target"),
                                                    QStringLiteral("data"));
    default:
        break;
    }
    const bool isDefs = random.bounded(5) == 0;
    QDomElement element =
            document.createElement(isDefs ? QStringLiteral("defs") : QStringLiteral("g"));
    if (random.bounded(5) == 0)
        element.setAttribute(QStringLiteral("visibility"), QStringLiteral("hidden"));
    if (random.bounded(3) == 0)
        element.setAttribute(QStringLiteral("id"), QString::number(random.bounded(100)));
    return element;
}

/// A tree that grows at random elements; the smaller the spread, the deeper it is.
QDomDocument randomTree(QRandomGenerator &random, int size, int spread)
{
    QDomDocument document;
    QVector<QDomNode> elements{document.appendChild(document.createElement(QStringLiteral("svg")))};
    if (random.bounded(4) == 0)
        elements.first().toElement().setAttribute(QStringLiteral("visibility"), QString());
    for (int i = 1; i < size; ++i) {
        const int newest = elements.size() - 1;
        QDomNode parent = elements.at(newest - random.bounded(std::min(spread, newest + 1)));
        const QDomNode node = parent.appendChild(anyNode(document, random));
        if (node.isElement())
            elements.append(node);
    }
    return document;
}

void appendInPreOrder(const QDomNode &node, QVector<QDomNode> &nodes)
{
    nodes.append(node);
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
        appendInPreOrder(child, nodes);
}

int depthBelow(const QDomNode &root, QDomNode node)
{
    int depth = 0;
    for (; node != root; node = node.parentNode())
        ++depth;
    return depth;
}

bool isSame(const SvgElement &a, const SvgElement &b)
{
    return a.location() == b.location() && a.id() == b.id() && a.svgId() == b.svgId()
            && a.isDefinition() == b.isDefinition()
            && a.hasVisibilityAncestor() == b.hasVisibilityAncestor();
}

/// Walks over root and compares every step with the tree itself.
void compareWalkWithTree(const QDomNode &root)
{
    QVector<QDomNode> nodes;
    appendInPreOrder(root, nodes);
    TreeWalk walk(root);
    for (const QDomNode &node : qAsConst(nodes)) {
        QVERIFY(!walk.atEnd());
        QVERIFY(walk.node() == node);
        QCOMPARE(int(walk.depth()), depthBelow(root, node));
        QVERIFY(isSame(walk.element(), SvgElement(node, root)));
        if (node != root)
            QVERIFY(isSame(walk.parentElement(), SvgElement(node.parentNode(), root)));
        walk.next();
    }
    QVERIFY(walk.atEnd());
    QVERIFY(walk.node().isNull());
}

} // namespace

class TreeWalkTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void visitsInPreOrder();
    void nullNode();
    void singleNode();
    void siblingsOfTheRootAreNotVisited();
    void ancestorsAboveTheRootDoNotCount();
    void flagsEndWithTheirElement();
    void randomTrees_data();
    void randomTrees();
    void partsOfRandomTrees();
    void deepTree();
};

void TreeWalkTest::visitsInPreOrder()
{
    const QDomDocument document =
            parsed(QStringLiteral("<a><b>c<d/></b><!-- e --><f><g/><h/></f></a>"));
    QStringList visited;
    for (TreeWalk walk(document.documentElement()); !walk.atEnd(); walk.next()) {
        visited << QString(walk.node().nodeName() + QLatin1Char(' ') + walk.element().id()
                           + QLatin1Char(' ') + QString::number(walk.depth()));
    }
    QCOMPARE(visited,
             QStringList({QStringLiteral("a  0"), QStringLiteral("b 0 1"),
                          QStringLiteral("#text 00 2"), QStringLiteral("d 01 2"),
                          QStringLiteral("#comment 1 1"), QStringLiteral("f 2 1"),
                          QStringLiteral("g 20 2"), QStringLiteral("h 21 2")}));
}

void TreeWalkTest::nullNode()
{
    const TreeWalk walk{QDomNode()};
    QVERIFY(walk.atEnd());
}

void TreeWalkTest::singleNode()
{
    const QDomDocument document = parsed(QStringLiteral("<svg id='x' visibility='hidden'/>"));
    TreeWalk walk(document.documentElement());
    QVERIFY(walk.node() == document.documentElement());
    QCOMPARE(walk.element().svgId(), QStringLiteral("x"));
    QVERIFY(!walk.element().hasVisibilityAncestor());
    walk.next();
    QVERIFY(walk.atEnd());
}

void TreeWalkTest::siblingsOfTheRootAreNotVisited()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a/><g><b/></g><c><d/></c></svg>"));
    const QDomNode group = document.documentElement().childNodes().at(1);
    compareWalkWithTree(group);
    TreeWalk walk(group);
    walk.next();
    QCOMPARE(walk.node().nodeName(), QStringLiteral("b"));
    walk.next();
    QVERIFY(walk.atEnd());
}

void TreeWalkTest::ancestorsAboveTheRootDoNotCount()
{
    const QDomDocument document =
            parsed(QStringLiteral("<defs visibility='hidden'><g><a/></g></defs>"));
    TreeWalk walk(document.documentElement().firstChild());
    walk.next();
    QCOMPARE(walk.node().nodeName(), QStringLiteral("a"));
    QVERIFY(!walk.element().isDefinition());
    QVERIFY(!walk.element().hasVisibilityAncestor());
}

void TreeWalkTest::flagsEndWithTheirElement()
{
    const QDomDocument document = parsed(
            QStringLiteral("<svg><defs><a/></defs><g visibility=''><g><b/></g></g><c/></svg>"));
    QStringList definitions;
    QStringList belowVisibility;
    for (TreeWalk walk(document.documentElement()); !walk.atEnd(); walk.next()) {
        if (walk.element().isDefinition())
            definitions << walk.node().nodeName();
        if (walk.element().hasVisibilityAncestor())
            belowVisibility << walk.node().nodeName();
    }
    QCOMPARE(definitions, QStringList(QStringLiteral("a")));
    QCOMPARE(belowVisibility, QStringList({QStringLiteral("g"), QStringLiteral("b")}));
}

void TreeWalkTest::randomTrees_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("spread");

    QTest::newRow("single nodes") << 1 << 1;
    QTest::newRow("tiny") << 4 << 4;
    QTest::newRow("chains") << 60 << 1;
    QTest::newRow("deep") << 120 << 3;
    QTest::newRow("mixed") << 120 << 20;
    QTest::newRow("flat") << 120 << 120;
}

void TreeWalkTest::randomTrees()
{
    QFETCH(int, size);
    QFETCH(int, spread);
    QRandomGenerator random(7);
    for (int i = 0; i < 40; ++i) {
        const QDomDocument document = randomTree(random, size, spread);
        compareWalkWithTree(document.documentElement());
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(document.toString()));
    }
}

void TreeWalkTest::partsOfRandomTrees()
{
    QRandomGenerator random(8);
    for (int i = 0; i < 10; ++i) {
        const QDomDocument document = randomTree(random, 60, 10);
        QVector<QDomNode> nodes;
        appendInPreOrder(document, nodes);
        for (const QDomNode &node : qAsConst(nodes)) {
            compareWalkWithTree(node);
            if (QTest::currentTestFailed())
                QFAIL(qPrintable(document.toString()));
        }
    }
}

void TreeWalkTest::deepTree()
{
    constexpr int depth = 3000;
    QDomDocument document;
    QDomNode innermost = document.appendChild(document.createElement(QStringLiteral("svg")));
    for (int i = 0; i < depth; ++i)
        innermost = innermost.appendChild(document.createElement(QStringLiteral("g")));

    TreeWalk walk(document.documentElement());
    while (walk.node() != innermost)
        walk.next();
    QCOMPARE(int(walk.depth()), depth);
    QCOMPARE(walk.element().location(), std::vector<int>(depth, 0));
    walk.next();
    QVERIFY(walk.atEnd());
}

QTEST_APPLESS_MAIN(TreeWalkTest)

#include "tst_treewalk.moc"
