// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeTest.h"
#include "WarningFreeTest.h"

#include <Scene/RoundTrip_p.h>

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QRandomGenerator>

// A tree that survives saving need not be parsed again: its saved text gives the same tree.

class RoundTripTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void survives_data();
    void survives();
    void doesNotSurvive_data();
    void doesNotSurvive();
    void blankTextsOfHandBuiltTrees();
    void templatesSurvive();
    void randomTrees();

private:
    static void compareWithParsed(const QDomDocument &tree);
};

/// Saves and parses the tree, and compares.
void RoundTripTest::compareWithParsed(const QDomDocument &tree)
{
    QDomDocument kept = tree.cloneNode().toDocument();
    declareAsSaved(&kept);
    QCOMPARE(contentOf(kept), contentOf(parsed(QString::fromUtf8(saved(tree)))));
}

void RoundTripTest::survives_data()
{
    QTest::addColumn<QString>("text");
    const auto add = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromUtf8(text);
    };
    add("empty root", "<svg/>");
    add("elements", "<svg><a><b/><c/></a><d/></svg>");
    add("indented elements", "<svg>\n  <a>\n    <b/>\n  </a>\n</svg>\n");
    add("text", "<text>one</text>");
    add("text with white space around", "<text>  one\n two\t</text>");
    add("text between elements", "<text>a<b/>c<d>e</d>f</text>");
    add("adjacent spans", "<text><tspan>a</tspan><tspan>b</tspan></text>");
    add("spans with space between", "<text><tspan>a</tspan> <tspan>b</tspan></text>");
    add("span before text", "<text><tspan>a</tspan>b</text>");
    add("text before span", "<text>a<tspan>b</tspan></text>");
    add("comments", "<!-- a --><svg><!-- b --><c/><!-- d -->e<!-- f --></svg><!-- g -->");
    add("empty comment", "<svg><!----></svg>");
    add("entities", "<svg a='&lt;&gt;&amp;&quot;&apos;'>x&lt;y&gt;z&amp;]]&gt;</svg>");
    add("characters by number", "<svg a='&#65;&#9;&#10;&#13;&#x1F600;'>&#65;&#x1F600;</svg>");
    add("all kinds of letters", "<svg é='ж界😀'>ж界😀<ж/></svg>");
    add("declaration", "<?xml version='1.0'?><svg/>");
    add("declaration with encoding", "<?xml version=\"1.0\" encoding=\"utf-8\"?><svg/>");
    add("standalone declaration", "<?xml version='1.0' encoding='UTF-8' standalone='yes'?><svg/>");
    add("prefixes", "<svg:svg xmlns:svg='urn:s' svg:a='1' xml:space='preserve'><svg:b/></svg:svg>");
    add("spaces in attributes", "<svg a='  b   c ' d=''/>");
}

void RoundTripTest::survives()
{
    QFETCH(QString, text);
    const QDomDocument tree = parsed(text);
    QVERIFY(!tree.isNull());
    QVERIFY(survivesSaving(tree));
    compareWithParsed(tree);
}

void RoundTripTest::doesNotSurvive_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("document type") << QStringLiteral("<!DOCTYPE svg><svg/>");
    QTest::newRow("internal subset")
            << QStringLiteral("<!DOCTYPE svg [<!ENTITY e 'x'>]><svg>&e;</svg>");
    QTest::newRow("character data") << QStringLiteral("<svg><![CDATA[a]]></svg>");
    QTest::newRow("instruction in the tree") << QStringLiteral("<svg><?a b?>text</svg>");
    QTest::newRow("instruction before the root") << QStringLiteral("<?a b?><svg/>");
    QTest::newRow("carriage return in text") << QStringLiteral("<svg>a&#13;b</svg>");
}

void RoundTripTest::doesNotSurvive()
{
    QFETCH(QString, text);
    QVERIFY(!survivesSaving(parsed(text)));
}

void RoundTripTest::blankTextsOfHandBuiltTrees()
{
    QDomDocument tree = parsed(QStringLiteral("<svg><a/><b>text</b></svg>"));
    QVERIFY(survivesSaving(tree));
    QDomElement root = tree.documentElement();

    QDomNode blank = root.appendChild(tree.createTextNode(QStringLiteral(" \n")));
    QVERIFY(!survivesSaving(tree));
    blank.setNodeValue(QStringLiteral(" x "));
    QVERIFY(survivesSaving(tree));
    compareWithParsed(tree);

    root.lastChildElement().appendChild(tree.createTextNode(QStringLiteral("more")));
    QVERIFY(!survivesSaving(tree));
}

void RoundTripTest::templatesSurvive()
{
    const QDir folder(QStringLiteral(TITLESCENE_TEMPLATES));
    const QStringList names = folder.entryList({QStringLiteral("*.svg")});
    QVERIFY(names.size() >= 6);
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QDomDocument tree = parsed(QString::fromUtf8(file.readAll()));
        QVERIFY2(survivesSaving(tree), qPrintable(name));
        compareWithParsed(tree);
    }
}

void RoundTripTest::randomTrees()
{
    QRandomGenerator random(5);
    int surviving = 0;
    int others = 0;
    for (int i = 0; i < 3000; ++i) {
        const QString text = randomTreeText(random);
        const QDomDocument tree = parsed(text);
        QVERIFY2(!tree.isNull(), qPrintable(text));
        if (!survivesSaving(tree)) {
            ++others;
            continue;
        }
        ++surviving;
        compareWithParsed(tree);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(text));
    }
    QVERIFY(surviving > 500);
    QVERIFY(others > 500);
}

QTEST_APPLESS_MAIN(RoundTripTest)

#include "tst_roundtrip.moc"
