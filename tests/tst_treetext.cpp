// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeTest.h"
#include "WarningFreeTest.h"

#include <Scene/TreeText_p.h>

#include <QDomDocument>

#include <iterator>
#include <vector>

// The text of a tree is, byte for byte, the one that Qt saves.

namespace {

QByteArray savedAsDeclared(const QDomDocument &tree)
{
    QByteArray text;
    {
        QTextStream stream(&text);
        stream.setCodec("UTF-8");
        tree.save(stream, 1, QDomNode::EncodingFromDocument);
    }
    return text;
}

bool isAsQtSaves(const QDomDocument &tree)
{
    return textOfTree(tree) == saved(tree)
            && textOfTree(tree, QDomNode::EncodingFromDocument) == savedAsDeclared(tree)
            && stringOfTree(tree) == tree.toString(1);
}

template <std::size_t count>
QString oneOf(const char *const (&pieces)[count], QRandomGenerator &random)
{
    return QString::fromUtf8(pieces[random.bounded(int(count))]);
}

/// What a character reference or a program can make of a value.
QString oddValue(QRandomGenerator &random)
{
    const char16_t units[] = {u'<',      u'>',      u'&',      u'"',     u'\'', u']',
                              u']',      u'-',      u'\t',     u'\n',    u'\r', u'\x01',
                              u'\x7f',   u'?',      u'\0',     u' ',     u'x',  u'\xa0',
                              u'\xd83d', u'\xde00', u'\xfeff', u'\xffff'};
    QString value;
    for (int i = random.bounded(6); i > 0; --i)
        value += QChar(units[random.bounded(int(std::size(units)))]);
    return value;
}

/// A prolog of any kind that the parser lets through.
QString randomProlog(QRandomGenerator &random)
{
    const char *const declarations[] = {"",
                                        "",
                                        "<?xml version='1.0'?>",
                                        "<?xml version='1.0' encoding='utf-8'?>",
                                        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
                                        "<?xml version='1.0' encoding='UTF-8' standalone='yes'?>"};
    const char *const misc[] = {"", "", "<!--m-->", "<?p?>", "<?q r 's'?>", "\n"};
    const char *const types[] = {
            "",
            "<!DOCTYPE svg>",
            "<!DOCTYPE svg []>",
            "<!DOCTYPE svg SYSTEM 's.dtd'>",
            "<!DOCTYPE svg SYSTEM \"it's.dtd\">",
            "<!DOCTYPE svg PUBLIC 'p' 's'>",
            "<!DOCTYPE svg PUBLIC '' '' [<!ENTITY e ''>]>",
            "<!DOCTYPE svg [<!ENTITY e 'x'>]>",
            "<!DOCTYPE svg [<!ENTITY e '&#38;#60;a/>\"&#37;&lt;&#38;&amp;'>]>",
            "<!DOCTYPE svg [<!ENTITY e \"'<d>y</d>é😀&#xFEFF;\">]>",
            "<!DOCTYPE svg [<!ENTITY % p '<!ENTITY e \"x\">'><!ENTITY e 'z'>%p;]>",
            "<!DOCTYPE svg [<!ENTITY e '&#xFEFF;x'><!ENTITY f SYSTEM 'f'><!ENTITY g PUBLIC 'h' 'i'>"
            "<!NOTATION n SYSTEM 'n'><!NOTATION o PUBLIC 'o'><!ENTITY k SYSTEM 'l' NDATA n>]>",
            "<!DOCTYPE svg [<!ELEMENT svg ANY><!ATTLIST svg a CDATA 'b'><!--c--><?d e?>"
            "<!ENTITY e '<![CDATA[f]]>'>]>",
    };
    return oneOf(declarations, random) + oneOf(misc, random) + oneOf(types, random)
            + oneOf(misc, random);
}

QString randomContent(QRandomGenerator &random, int depth)
{
    const char *const leaves[] = {"x",
                                  " ",
                                  "\n ",
                                  "&amp;&lt;&quot;\"'&gt;",
                                  "]]&gt;",
                                  "&#13;",
                                  "&#9;&#10;",
                                  "&#1;",
                                  "&#x1F600;",
                                  "é界😀",
                                  "&e;",
                                  "&nosuch;",
                                  "<d/>",
                                  "<d e='&quot;&#9;&#10;\n]]>&lt;&amp;' f=\"\"/>",
                                  "<d e='&e;'/>",
                                  "<x:d xmlns:x='u' x:e='f'/>",
                                  "<!---->",
                                  "<!--e-->",
                                  "<!-- - e->]]><!&amp;<?-->",
                                  "<!--\n\r\n\t-->",
                                  "<?f?>",
                                  "<?f g?>",
                                  "<?f   g=\"<&>'h' ? > ?>",
                                  "<?f \n?>",
                                  "<![CDATA[]]>",
                                  "<![CDATA[h]]>",
                                  "<![CDATA[]]]]>",
                                  "<![CDATA[]]]]><![CDATA[>]]>",
                                  "<![CDATA[>]]>",
                                  "<![CDATA[<a>&amp;&e;\"\n\r\n]] >]]>",
                                  "<![CDATA[ ]]>",
                                  "<![CDATA[é😀]]>"};
    QString text;
    for (int i = random.bounded(6); i > 0; --i) {
        text += depth < 4 && random.bounded(4) == 0
                ? QStringLiteral("<g a='%1'>%2</g>").arg(i).arg(randomContent(random, depth + 1))
                : oneOf(leaves, random);
    }
    return text;
}

QDomNode randomNode(QDomDocument &tree, QRandomGenerator &random)
{
    const QString name = QString(QLatin1Char(char('a' + random.bounded(3))));
    const QString value = oddValue(random);
    const QString uri = random.bounded(2) == 0 ? QStringLiteral("u") : value;
    const QString prefixed = random.bounded(2) == 0 ? name : QStringLiteral("p:") + name;
    switch (random.bounded(10)) {
    case 0:
        return tree.createTextNode(value);
    case 1:
        return tree.createCDATASection(value);
    case 2:
        return tree.createComment(value);
    case 3:
        return tree.createProcessingInstruction(
                random.bounded(5) == 0 ? QStringLiteral("xml") : name, value);
    case 4:
        return tree.createEntityReference(name);
    case 5:
        return tree.createElementNS(uri, prefixed);
    case 6: {
        QDomAttr attribute = tree.createAttributeNS(uri, prefixed);
        attribute.setValue(value);
        return attribute;
    }
    default:
        return tree.createElement(name);
    }
}

void setRandomAttribute(QDomElement element, QRandomGenerator &random)
{
    const QString name = QString(QLatin1Char(char('a' + random.bounded(3))));
    const QString uri = random.bounded(2) == 0 ? QStringLiteral("u") : oddValue(random);
    switch (random.bounded(3)) {
    case 0:
        element.setAttribute(name, oddValue(random));
        break;
    case 1:
        element.setAttributeNS(uri, name, oddValue(random));
        break;
    default:
        element.setAttributeNS(uri, QLatin1String(random.bounded(2) == 0 ? "p:" : "q:") + name,
                               oddValue(random));
        break;
    }
}

} // namespace

class TreeTextTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void isWhatQtSaves_data();
    void isWhatQtSaves();
    void values_data();
    void values();
    void randomTrees();
    void randomTreesOfAllNodes();
    void treesOfPrograms();
    void declaredEncoding_data();
    void declaredEncoding();
    void deepTree();
    void nullTree();
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
    QVERIFY(isAsQtSaves(tree));
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
    tree.appendChild(tree.createTextNode(value));
    QCOMPARE(textOfTree(tree), saved(tree));
    QVERIFY(isAsQtSaves(tree));
}

void TreeTextTest::randomTrees()
{
    QRandomGenerator random(6);
    for (int i = 0; i < 3000; ++i) {
        const QString text = randomTreeText(random);
        QVERIFY2(isAsQtSaves(parsed(text)), qPrintable(text));
    }
}

// Every kind of node, wherever the parser lets it come.
void TreeTextTest::randomTreesOfAllNodes()
{
    QRandomGenerator random(7);
    int compared = 0;
    for (int i = 0; i < 5000; ++i) {
        const QString text = randomProlog(random) + QStringLiteral("<svg>")
                + randomContent(random, 0) + QStringLiteral("</svg><!--z--><?z y?>");
        const QDomDocument tree = parsed(text);
        QVERIFY2(isAsQtSaves(tree), qPrintable(text));
        compared += tree.documentElement().isNull() ? 0 : 1;
    }
    QVERIFY(compared > 2000);
}

// What no parser lets through: odd values, namespaces, nodes where none belong.
void TreeTextTest::treesOfPrograms()
{
    QRandomGenerator random(8);
    for (int i = 0; i < 3000; ++i) {
        QDomDocument tree = parsed(randomProlog(random) + QStringLiteral("<svg/>"));
        std::vector<QDomNode> parents{tree, tree.documentElement()};
        for (int k = random.bounded(12); k > 0; --k) {
            QDomNode parent = parents[std::size_t(random.bounded(int(parents.size())))];
            const QDomNode node = random.bounded(2) == 0
                    ? parent.appendChild(randomNode(tree, random))
                    : parent.insertBefore(randomNode(tree, random), parent.firstChild());
            if (!node.isElement())
                continue;
            parents.push_back(node);
            for (int m = random.bounded(4); m > 0; --m)
                setRandomAttribute(node.toElement(), random);
        }
        // Half a character at the very end would wait for its other half in Qt's stream.
        tree.appendChild(tree.createComment(QStringLiteral("end")));
        QVERIFY2(isAsQtSaves(tree), tree.toString(1).toUtf8().toPercentEncoding(" <>\"/=!?"));
    }
}

void TreeTextTest::declaredEncoding_data()
{
    QTest::addColumn<QString>("declaration");
    for (const char *declaration :
         {"", "encoding=''", "encoding='none-such'", "encoding='utf-8'", "encoding = \"UTF8\"",
          "encoding='ISO-8859-1'", "encoding='US-ASCII'", "encoding='UTF-16'",
          "encoding='Shift_JIS'"})
        QTest::newRow(declaration) << QString::fromLatin1(declaration);
}

void TreeTextTest::declaredEncoding()
{
    QFETCH(QString, declaration);
    QDomDocument tree = parsed(QString::fromUtf8("<svg a='ж😀é'>ж<![CDATA[ж]]></svg>"));
    tree.insertBefore(tree.createProcessingInstruction(QStringLiteral("xml"), declaration),
                      tree.firstChild());
    QCOMPARE(textOfTree(tree, QDomNode::EncodingFromDocument), savedAsDeclared(tree));
    QCOMPARE(textOfTree(tree), saved(tree));
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

void TreeTextTest::nullTree()
{
    QVERIFY(isAsQtSaves(QDomDocument()));
}

QTEST_APPLESS_MAIN(TreeTextTest)

#include "tst_treetext.moc"
