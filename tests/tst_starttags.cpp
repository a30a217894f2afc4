// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeTest.h"
#include "WarningFreeTest.h"

#include <Scene/StartTags_p.h>
#include <Scene/TreeWalk_p.h>

#include <QDomDocument>

#include <vector>

// A changed text that is put together from the old one is always compared with what saving the
// changed tree gives.

namespace {

/// All elements whose id starts with "e", in document order.
std::vector<QDomElement> markedElements(const QDomDocument &tree)
{
    std::vector<QDomElement> elements;
    for (TreeWalk walk(tree); !walk.atEnd(); walk.next()) {
        const QDomElement element = walk.node().toElement();
        if (element.attribute(QStringLiteral("id")).startsWith(QLatin1Char('e')))
            elements.push_back(element);
    }
    return elements;
}

/// A parsed tree, its saved text, and where that text has the attributes of its marked elements.
struct SavedTree
{
    explicit SavedTree(const QString &content)
        : tree(parsed(content)), elements(markedElements(tree)), text(saved(tree)),
          tags(text, tree.documentElement(), elements)
    {
    }

    void setValue(int number, const QString &name, const QString &value)
    {
        elements.at(std::size_t(number)).setAttribute(name, value);
        tags.noteValueChange(number, name);
    }

    QByteArray rewritten() { return text = tags.rewritten(text, elements); }

    QDomDocument tree;
    std::vector<QDomElement> elements;
    QByteArray text;
    StartTags tags;
};

} // namespace

class StartTagsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void changesOneValue_data();
    void changesOneValue();
    void writesValues_data();
    void writesValues();
    void addsAndRemovesAttributes();
    void changesSeveralValuesOfAnElement();
    void changesManyElementsAgainAndAgain();
    void knowsWhetherThereAreChanges();
};

void StartTagsTest::changesOneValue_data()
{
    QTest::addColumn<QString>("content");
    const auto add = [](const char *name, const char *content) {
        QTest::newRow(name) << QString::fromUtf8(content);
    };
    add("empty element", "<svg><a id='e' x='1'/></svg>");
    add("element with children", "<svg><a id='e' x='1'><b/></a></svg>");
    add("the root", "<svg id='e' x='1'><a/></svg>");
    add("after others", "<svg><a x='1'/><b x='1'/><a id='e' x='1'/><c x='1'/></svg>");
    add("inside text", "<text>a<a id='e' x='1'>b</a>c</text>");
    add("name begins like others", "<svg><a id='e' x1='2' ax='3' x='1' xx='4' x-x='5'/></svg>");
    add("name with a prefix", "<svg><a id='e' xlink:x='2' x='1' x:x='3'/></svg>");
    add("value that looks like the attribute",
        "<svg><a id='e' b='a x=' c=' x=\"2\"' x='1' d='x='/></svg>");
    add("value that looks like the end", "<svg><a id='e' b='/>' c='>' d='a/b' x='1'/></svg>");
    add("value that looks like a tag",
        "<svg><b c='&lt;a id=\"e\" x=\"1\"/>'/><a id='e' x='1'/></svg>");
    add("empty value", "<svg><a id='e' x=''/></svg>");
    add("comment that looks like a tag", "<svg><!-- <a x='1'/> --><a id='e' x='1'/></svg>");
    add("comment with > and quotes", "<svg><!-- > \" ' -> <b --><a id='e' x='1'/></svg>");
    add("comment before the root", "<!-- <a/> --><svg><a id='e' x='1'/></svg>");
    add("character data", "<svg><![CDATA[<a x='1'> ]] ]>]]><a id='e' x='1'/></svg>");
    add("processing instruction", "<?p <a x='1'> ?><svg><?q <b> \"?><a id='e' x='1'/></svg>");
    add("text with entities", "<svg>&lt;a x='1'&gt; &amp; ]]&gt;<a id='e' x='1'/></svg>");
    add("letters of two to four bytes",
        "<svg>ж界😀<!-- ж界😀 --><a id='e' é='ж' x='1' ж='界😀'/>ж</svg>");
}

void StartTagsTest::changesOneValue()
{
    QFETCH(QString, content);
    SavedTree title(content);
    QCOMPARE(title.elements.size(), std::size_t(1));
    for (const char *value : {"2", "", "longer than before", "2"}) {
        title.setValue(0, QStringLiteral("x"), QLatin1String(value));
        QCOMPARE(title.rewritten(), saved(title.tree));
    }
}

void StartTagsTest::writesValues_data()
{
    QTest::addColumn<QString>("value");
    for (const char *value : {"<", ">", "]]>", "&", "&amp;", "\"", "'", "a\nb", "\t", "\r\n",
                              " x=\"1\"", " ", "ж", "界", "😀", "a/>b", "é=\"\"", "\u00a0"})
        QTest::newRow(value) << QString::fromUtf8(value);
}

void StartTagsTest::writesValues()
{
    QFETCH(QString, value);
    SavedTree title(QStringLiteral("<svg><a id='e1' b='1' x='1' c='2'/><a id='e2' x='2'/></svg>"));
    title.setValue(0, QStringLiteral("x"), value);
    QCOMPARE(title.rewritten(), saved(title.tree));
    title.setValue(0, QStringLiteral("c"), value);
    title.setValue(1, QStringLiteral("x"), value);
    QCOMPARE(title.rewritten(), saved(title.tree));
}

void StartTagsTest::addsAndRemovesAttributes()
{
    SavedTree title(
            QStringLiteral("<svg><a id='e1' x='1'/>text<g id='e2'><b/></g><c id='e3'/></svg>"));
    for (int round = 0; round < 40; ++round) {
        QDomElement element = title.elements.at(std::size_t(round % 3));
        const QString name = QStringLiteral("a%1").arg(round * 7 % 11);
        if (element.hasAttribute(name))
            element.removeAttribute(name);
        else
            element.setAttribute(name, round);
        title.tags.noteChange(round % 3);
        QCOMPARE(title.rewritten(), saved(title.tree));
    }
    title.elements.front().removeAttribute(QStringLiteral("id"));
    title.elements.front().removeAttribute(QStringLiteral("x"));
    title.tags.noteChange(0);
    QCOMPARE(title.rewritten(), saved(title.tree));
}

void StartTagsTest::changesSeveralValuesOfAnElement()
{
    SavedTree title(QStringLiteral("<svg><a id='e1' x='1' y='2'/><a id='e2' x='1' y='2'/></svg>"));
    title.setValue(0, QStringLiteral("x"), QStringLiteral("10"));
    title.setValue(0, QStringLiteral("y"), QStringLiteral("20"));
    title.setValue(1, QStringLiteral("y"), QStringLiteral("3"));
    title.setValue(1, QStringLiteral("y"), QStringLiteral("30"));
    QCOMPARE(title.rewritten(), saved(title.tree));
    title.elements.at(1).setAttribute(QStringLiteral("z"), 1);
    title.tags.noteChange(1);
    title.setValue(1, QStringLiteral("x"), QStringLiteral("4"));
    title.setValue(0, QStringLiteral("x"), QStringLiteral("5"));
    title.elements.at(0).removeAttribute(QStringLiteral("y"));
    title.tags.noteChange(0);
    QCOMPARE(title.rewritten(), saved(title.tree));
}

void StartTagsTest::changesManyElementsAgainAndAgain()
{
    QString content = QStringLiteral("<svg>");
    for (int i = 0; i < 100; ++i)
        content += QStringLiteral("<g><a id='e%1' x='1'/></g><b y='%1'/>").arg(i);
    SavedTree title(content + QStringLiteral("</svg>"));
    QCOMPARE(title.elements.size(), std::size_t(100));
    for (int round = 1; round < 12; ++round) {
        for (int number = 99; number >= 0; number -= round)
            title.setValue(number, QStringLiteral("x"), QString(number % round, QLatin1Char('9')));
        QCOMPARE(title.rewritten(), saved(title.tree));
    }
}

void StartTagsTest::knowsWhetherThereAreChanges()
{
    SavedTree title(QStringLiteral("<svg><a id='e' x='1'/></svg>"));
    QVERIFY(!title.tags.hasChanges());
    const QByteArray before = title.text;
    QCOMPARE(title.rewritten(), before);
    title.setValue(0, QStringLiteral("x"), QStringLiteral("2"));
    QVERIFY(title.tags.hasChanges());
    title.rewritten();
    QVERIFY(!title.tags.hasChanges());
    title.tags.noteChange(0);
    QVERIFY(title.tags.hasChanges());
    title.rewritten();
    QVERIFY(!title.tags.hasChanges());
}

QTEST_APPLESS_MAIN(StartTagsTest)

#include "tst_starttags.moc"
