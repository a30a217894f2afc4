// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeTest.h"
#include "WarningFreeTest.h"

#include <Scene/TreeText_p.h>

#include <QDomDocument>

// The text of a tree is, byte for byte, the one that Qt saves.

class TreeTextTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void isWhatQtSaves_data();
    void isWhatQtSaves();
    void values_data();
    void values();
    void randomTrees();
    void leavesOtherNodesToQt_data();
    void leavesOtherNodesToQt();
    void deepTree();
    void leavesNullTreesToQt();
};

void TreeTextTest::isWhatQtSaves_data()
{
    QTest::addColumn<QString>("text");
    const auto add = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromUtf8(text);
    };
    add("empty root", "<svg/>");
    add("nested elements", "<svg><a><b/><c><d/></c></a><e/></svg>");
    add("text first", "<a>x<b/></a>");
    add("text last", "<a><b/>x</a>");
    add("text between", "<a><b/>x<c>y</c></a>");
    add("text around", "<a>x<b/>y</a>");
    add("text alone", "<a>x</a>");
    add("attributes", "<a b='1' c='' d='&lt;&amp;&quot;&gt;' xlink:e='f' xmlns:xlink='u'/>");
    add("declaration", "<?xml version='1.0'?><svg/>");
    add("declaration with another encoding", "<?xml version='1.0' encoding='utf-8'?><!--a--><b/>");
    add("comments", "<!--a--><svg><!--b--><c><!--d-->e<!--f--></c><!--g--></svg><!--h-->");
    add("comment with - inside", "<svg><!-- - b --></svg>");
    add("document type", "<!DOCTYPE svg [<!ENTITY e 'x'>]><svg>&e;</svg>");
    add("letters", "<svg é='ж界😀'>ж界😀<!--ж界😀--></svg>");
}

void TreeTextTest::isWhatQtSaves()
{
    QFETCH(QString, text);
    const QDomDocument tree = parsed(text);
    QVERIFY(!tree.isNull());
    QCOMPARE(textOfTree(tree), saved(tree));
}

void TreeTextTest::values_data()
{
    QTest::addColumn<QString>("value");
    for (const char *value :
         {"",     " ",          "<",     ">",  "]]>", "]>",     "a]]>b]]>", ">]]",
          "]]",   "&",          "&amp;", "\"", "'",   "\t",     "\n",       "\r",
          "\r\n", "a<b>&\"c\"", "ж",     "界", "😀",   "\u00a0", "-"})
        QTest::newRow(value) << QString::fromUtf8(value);
}

void TreeTextTest::values()
{
    QFETCH(QString, value);
    QDomDocument tree = parsed(QStringLiteral("<svg><a/><b>c</b></svg>"));
    QDomElement root = tree.documentElement();
    root.setAttribute(QStringLiteral("x"), value);
    root.firstChildElement().appendChild(tree.createTextNode(value));
    root.appendChild(tree.createComment(value));
    root.appendChild(tree.createTextNode(value));
    QCOMPARE(textOfTree(tree), saved(tree));
}

void TreeTextTest::randomTrees()
{
    QRandomGenerator random(6);
    int compared = 0;
    for (int i = 0; i < 3000; ++i) {
        const QString text = randomTreeText(random);
        const QDomDocument tree = parsed(text);
        const QByteArray ours = textOfTree(tree);
        if (ours.isNull())
            continue;
        ++compared;
        QVERIFY2(ours == saved(tree), qPrintable(text));
    }
    QVERIFY(compared > 1000);
}

void TreeTextTest::leavesOtherNodesToQt_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("character data") << QStringLiteral("<svg><a/><![CDATA[b]]></svg>");
    QTest::newRow("instruction") << QStringLiteral("<svg><a/><?b c?></svg>");
    QTest::newRow("instruction before the root") << QStringLiteral("<?b c?><svg/>");
}

void TreeTextTest::leavesOtherNodesToQt()
{
    QFETCH(QString, text);
    QVERIFY(textOfTree(parsed(text)).isNull());
}

// Each level would take stack if the writer called itself.
void TreeTextTest::deepTree()
{
    QDomDocument tree = parsed(QStringLiteral("<g/>"));
    QDomNode parent = tree.documentElement();
    for (int i = 0; i < 1000; ++i)
        parent = parent.appendChild(tree.createElement(QStringLiteral("g")));
    QCOMPARE(textOfTree(tree), saved(tree));
}

void TreeTextTest::leavesNullTreesToQt()
{
    QVERIFY(textOfTree(QDomDocument()).isNull());
}

QTEST_APPLESS_MAIN(TreeTextTest)

#include "tst_treetext.moc"
