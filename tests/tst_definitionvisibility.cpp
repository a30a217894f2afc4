// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/AnimatableAttributeText.h>
#include <Scene/SvgDocument.h>
#include <Scene/SvgElement.h>

#include <QDomDocument>
#include <QLoggingCategory>
#include <QRandomGenerator>

#include <map>

// The visibility of what stands in "defs", handed on to the "use" elements that show it.

namespace {

/// For each "use" element, in document order, its id and its visibility: "u=hidden v=-".
QString usesIn(const QDomDocument &tree)
{
    QStringList parts;
    const QDomNodeList uses = tree.elementsByTagName(QStringLiteral("use"));
    for (int i = 0; i < uses.count(); ++i) {
        const QDomElement use = uses.at(i).toElement();
        parts.append(use.attribute(QStringLiteral("id")) + QLatin1Char('=')
                     + use.attribute(QStringLiteral("visibility"), QStringLiteral("-")));
    }
    return parts.join(QLatin1Char(' '));
}

QString usesAt(SvgDocument &document, int ms)
{
    document.applyAnimation(ms);
    return usesIn(savedTree(document));
}

boost::shared_ptr<AnimatableAttribute> animationOf(const QDomNode &root, const char *id,
                                                   const char *attributeName)
{
    return boost::shared_ptr<AnimatableAttribute>(
            new AnimatableAttributeText(elementById(root, QLatin1String(id)), root,
                                        QLatin1String(attributeName), {QStringLiteral("hidden")}));
}

/// The rules in their plainest form; true when the text is to be rewritten.
bool fixVisibilityPlainly(QDomDocument &tree)
{
    const QDomNode root = tree.documentElement();
    std::map<QString, std::vector<SvgElement>> users;
    const QDomNodeList uses = tree.elementsByTagName(QStringLiteral("use"));
    for (int i = 0; i < uses.count(); ++i) {
        const QString href = uses.at(i).toElement().attribute(QStringLiteral("xlink:href"));
        if (href.startsWith(QLatin1Char('#')))
            users[href.mid(1)].push_back(SvgElement(uses.at(i), root));
    }

    SvgDocument walker{QString()};
    std::vector<QDomNode> nodes;
    const QDomNodeList defs = tree.elementsByTagName(QStringLiteral("defs"));
    for (int i = 0; i < defs.count(); ++i)
        walker.getAllNodes(defs.at(i), nodes);

    bool changed = false;
    for (const QDomNode &node : nodes) {
        const QDomElement element = node.toElement();
        if (!element.hasAttribute(QStringLiteral("id"))
            || !element.hasAttribute(QStringLiteral("visibility")))
            continue;
        const auto found = users.find(element.attribute(QStringLiteral("id")));
        if (found == users.end())
            continue;
        const bool visible =
                element.attribute(QStringLiteral("visibility")) == QLatin1String("visible");
        for (const SvgElement &user : found->second) {
            user.show(root, visible);
            changed = true;
        }
    }
    return changed;
}

/// Elements that nest, share ids, refer to each other and have visibilities, by chance.
QString randomContent(QRandomGenerator &random, int depth)
{
    const QStringList ids{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QString()};
    const QStringList values{QStringLiteral("visible"), QStringLiteral("hidden"),
                             QStringLiteral("inherit"), QString()};
    QString content;
    for (int i = random.bounded(4); i >= 0; --i) {
        QString tag = QStringLiteral("g");
        const int kind = random.bounded(6);
        if (kind < 2)
            tag = QStringLiteral("defs");
        else if (kind < 4)
            tag = QStringLiteral("use");
        content += QLatin1Char('<') + tag;
        if (random.bounded(3) > 0)
            content += QStringLiteral(" id=\"%1\"").arg(ids.at(random.bounded(ids.size())));
        if (random.bounded(3) == 0)
            content += QStringLiteral(" visibility=\"%1\"")
                               .arg(values.at(random.bounded(values.size())));
        if (tag == QLatin1String("use"))
            content +=
                    QStringLiteral(" xlink:href=\"#%1\"").arg(ids.at(random.bounded(ids.size())));
        content += QLatin1Char('>');
        if (depth > 0)
            content += randomContent(random, depth - 1);
        content += QStringLiteral("</%1>").arg(tag);
    }
    return content;
}

const QString twoUses = QStringLiteral("<use id=\"u\" xlink:href=\"#d\"/>"
                                       "<use id=\"v\" xlink:href=\"#d\"/>");

QString definition(const QString &attributes, const QString &content = QString())
{
    return QStringLiteral("<defs><rect id=\"d\" width=\"9\" height=\"9\" %1>%2</rect></defs>")
            .arg(attributes, content);
}

QString animateVisibility(const QString &values)
{
    return QStringLiteral("<animate attributeName=\"visibility\" values=\"%1\" dur=\"1s\"/>")
            .arg(values);
}

} // namespace

class DefinitionVisibilityTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void handsOnTheTemplatesValue_data();
    void handsOnTheTemplatesValue();
    void findsDefinitions_data();
    void findsDefinitions();
    void leavesTextAloneWithoutUsedVisibility_data();
    void leavesTextAloneWithoutUsedVisibility();
    void rewritesTextEvenWhenAllStaysTheSame();
    void followsTheRulesToTheLetter();
    void drawsWhatIsVisible();
    void savesOverALongerText();
    void parsesTheTextFirst();
    void usesTextWrittenLater();
    void latestDefinitionCountsWhereAUseShowsTwo_data();
    void latestDefinitionCountsWhereAUseShowsTwo();
    void usesStayWhatTheyWereWhenTheyWereFound_data();
    void usesStayWhatTheyWereWhenTheyWereFound();

    void updatesUses_data();
    void updatesUses();
    void declinesOtherAnimations_data();
    void declinesOtherAnimations();
    void acceptsWithoutAnyUseToChange();
    void updatesTheGivenTree();

    void playsOnTheUses();
    void restoresTheTemplatesValue_data();
    void restoresTheTemplatesValue();
    void playsEverythingElseOnTheDefinition_data();
    void playsEverythingElseOnTheDefinition();
    void drawsOnlyVisibleUsesAtAnyTime();
};

/// The renderer complains of uses that it can't draw.
void DefinitionVisibilityTest::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false"));
}

void DefinitionVisibilityTest::handsOnTheTemplatesValue_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("given");
    const QString hidden = QStringLiteral("hidden");
    QTest::newRow("hidden") << hidden << hidden;
    QTest::newRow("visible") << QStringLiteral("visible") << QStringLiteral("visible");
    QTest::newRow("inherit") << QStringLiteral("inherit") << hidden;
    QTest::newRow("collapse") << QStringLiteral("collapse") << hidden;
    QTest::newRow("empty") << QString() << hidden;
    QTest::newRow("case-sensitive") << QStringLiteral("Visible") << hidden;
    QTest::newRow("not trimmed") << QStringLiteral(" visible") << hidden;
    QTest::newRow("anything") << QStringLiteral("whatever") << hidden;
}

void DefinitionVisibilityTest::handsOnTheTemplatesValue()
{
    QFETCH(QString, value);
    QFETCH(QString, given);
    const QString text =
            svgTitle(definition(QStringLiteral("visibility=\"%1\"").arg(value)) + twoUses);
    SvgDocument document(text);
    QVERIFY(document.isLoaded());
    QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=%1 v=%1").arg(given));
    QVERIFY(document.data() != text.toUtf8());
    QCOMPARE(elementById(savedTree(document), QStringLiteral("d"))
                     .attribute(QStringLiteral("visibility")),
             value);
}

void DefinitionVisibilityTest::findsDefinitions_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("uses");

    const auto row = [](const char *name, const char *content, const char *uses) {
        QString text = QString::fromLatin1(content);
        text.replace(QStringLiteral("hide"), QStringLiteral("visibility=\"hidden\""));
        text.replace(QStringLiteral("show"), QStringLiteral("visibility=\"visible\""));
        text.replace(QStringLiteral("of="), QStringLiteral("xlink:href="));
        QTest::newRow(name) << text << QString::fromLatin1(uses);
    };
    row("deep inside defs",
        "<defs><g><g><g id=\"d\" hide/></g></g></defs><use id=\"u\" of=\"#d\"/>", "u=hidden");
    row("after text and comments",
        "<defs>words<!--note--><g id=\"d\" hide/></defs><use id=\"u\" of=\"#d\"/>", "u=hidden");
    row("defs inside a group", "<g><defs><g id=\"d\" hide/></defs></g><use id=\"u\" of=\"#d\"/>",
        "u=hidden");
    row("several defs",
        "<defs><g id=\"d\" hide/></defs><use id=\"u\" of=\"#d\"/><use id=\"v\" of=\"#e\"/>"
        "<defs><g id=\"e\" show/></defs>",
        "u=hidden v=visible");
    row("the defs element itself", "<defs id=\"d\" hide/><use id=\"u\" of=\"#d\"/>", "u=hidden");
    row("nested defs", "<defs><defs><g id=\"d\" hide/></defs></defs><use id=\"u\" of=\"#d\"/>",
        "u=hidden");
    row("a visibility of the use is overwritten",
        "<defs><g id=\"d\" hide/></defs><use id=\"u\" of=\"#d\" show/>", "u=hidden");
    row("inside something with a visibility the use is left alone",
        "<defs><g id=\"d\" hide/></defs><g show><use id=\"u\" of=\"#d\"/></g>"
        "<g><use id=\"v\" of=\"#d\"/></g>",
        "u=- v=hidden");
    row("however far up that visibility is",
        "<defs><g id=\"d\" hide/></defs><g show><g><g><use id=\"u\" of=\"#d\" show/></g></g></g>",
        "u=visible");
    row("an empty visibility further up counts, too",
        "<defs><g id=\"d\" hide/></defs><g visibility=\"\"><use id=\"u\" of=\"#d\"/></g>", "u=-");
    row("only what is referred to",
        "<defs><g id=\"d\" hide/><g id=\"e\"/></defs><use id=\"u\" of=\"#d\"/>"
        "<use id=\"v\" of=\"#e\"/>",
        "u=hidden v=-");
    row("of two definitions with one id the last counts",
        "<defs><g id=\"d\" hide/><g id=\"d\" show/></defs><use id=\"u\" of=\"#d\"/>", "u=visible");
    row("what stands in nested defs is visited again, and so counts last",
        "<defs><defs><g id=\"d\" show/></defs><g id=\"d\" hide/></defs><use id=\"u\" of=\"#d\"/>",
        "u=visible");
    row("the empty id", "<defs><g id=\"\" hide/></defs><use id=\"u\" of=\"#\"/>", "u=hidden");

    row("a definition that is a use of the empty id hands on what it was given",
        "<defs><g id=\"\" hide/><use id=\"d\" of=\"#\"/></defs><use id=\"u\" of=\"#d\"/>",
        "d=hidden u=hidden");
    row("a definition that is a use hands on what it was given",
        "<defs><g id=\"x\" hide/><use id=\"d\" of=\"#x\"/></defs><use id=\"u\" of=\"#d\"/>",
        "d=hidden u=hidden");
    row("through several uses",
        "<defs><g id=\"x\" hide/><use id=\"d\" of=\"#x\"/><use id=\"e\" of=\"#d\"/></defs>"
        "<use id=\"u\" of=\"#e\"/>",
        "d=hidden e=hidden u=hidden");
    row("instead of its own value",
        "<defs><g id=\"x\" hide/><use id=\"d\" of=\"#x\" show/></defs><use id=\"u\" of=\"#d\"/>",
        "d=hidden u=hidden");
    row("not when what it shows comes later",
        "<defs><use id=\"d\" of=\"#x\"/><g id=\"x\" hide/></defs><use id=\"u\" of=\"#d\"/>",
        "d=hidden u=-");
    row("its own value when what it shows comes later",
        "<defs><use id=\"d\" of=\"#x\" show/><g id=\"x\" hide/></defs><use id=\"u\" of=\"#d\"/>",
        "d=hidden u=visible");
    row("what it was given when it is visited again",
        "<defs><defs><use id=\"d\" of=\"#x\"/></defs><g id=\"x\" hide/></defs>"
        "<use id=\"u\" of=\"#d\"/>",
        "d=hidden u=hidden");
    row("its own value inside something with a visibility",
        "<defs><g id=\"x\" hide/><g show><use id=\"d\" of=\"#x\" show/></g></defs>"
        "<use id=\"u\" of=\"#d\"/>",
        "d=visible u=visible");
}

void DefinitionVisibilityTest::findsDefinitions()
{
    QFETCH(QString, content);
    QFETCH(QString, uses);
    SvgDocument document(svgTitle(content));
    QVERIFY(document.isLoaded());
    QCOMPARE(usesIn(savedTree(document)), uses);
}

void DefinitionVisibilityTest::leavesTextAloneWithoutUsedVisibility_data()
{
    QTest::addColumn<QString>("content");
    QTest::newRow("no visibility") << definition(QString()) + twoUses;
    QTest::newRow("no uses") << definition(QStringLiteral("visibility=\"hidden\""));
    QTest::newRow("uses of another definition")
            << definition(QStringLiteral("visibility=\"hidden\""))
                    + QStringLiteral("<use xlink:href=\"#other\"/>");
    QTest::newRow("no id") << QStringLiteral("<defs><g visibility=\"hidden\"/></defs>"
                                             "<use xlink:href=\"#\"/>");
    QTest::newRow("outside defs") << QStringLiteral("<g id=\"d\" visibility=\"hidden\"/>")
                    + twoUses;
    QTest::newRow("another name") << QStringLiteral(
                                             "<Defs><g id=\"d\" visibility=\"hidden\"/></Defs>")
                    + twoUses;
    QTest::newRow("text and comments alone")
            << QStringLiteral("<defs>words<!--note--></defs>") + twoUses;
    QTest::newRow("visibility is case-sensitive")
            << definition(QStringLiteral("Visibility=\"hidden\"")) + twoUses;
}

void DefinitionVisibilityTest::leavesTextAloneWithoutUsedVisibility()
{
    QFETCH(QString, content);
    const QString text = svgTitle(content);
    SvgDocument document(text);
    QVERIFY(document.isLoaded());
    QCOMPARE(document.data(), text.toUtf8());
    document.fixDefinitionsVisibility();
    QCOMPARE(document.data(), text.toUtf8());
}

void DefinitionVisibilityTest::rewritesTextEvenWhenAllStaysTheSame()
{
    const QString text = svgTitle(definition(QStringLiteral("visibility=\"hidden\""))
                                  + QStringLiteral("<g visibility=\"visible\"><use id=\"u\""
                                                   " xlink:href=\"#d\"/></g>"));
    SvgDocument document(text);
    QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=-"));
    QVERIFY(document.data() != text.toUtf8());
}

void DefinitionVisibilityTest::followsTheRulesToTheLetter()
{
    QRandomGenerator random(7);
    int rewritten = 0;
    int handedOn = 0;
    for (int round = 0; round < 3000; ++round) {
        const QString text = svgTitle(randomContent(random, 2));
        QDomDocument expected;
        QVERIFY(expected.setContent(text));
        const QString before = usesIn(expected);
        const bool rewrites = fixVisibilityPlainly(expected);
        SvgDocument document(text);
        const QString uses = usesIn(savedTree(document));
        QVERIFY2(
                uses == usesIn(expected),
                qPrintable(text + QLatin1Char('\n') + uses + QLatin1Char('\n') + usesIn(expected)));
        QCOMPARE(document.data() != text.toUtf8(), rewrites);
        rewritten += rewrites;
        handedOn += uses != before;
    }
    QVERIFY(rewritten > 500);
    QVERIFY(handedOn > 500);
}

void DefinitionVisibilityTest::drawsWhatIsVisible()
{
    const QString defs =
            QStringLiteral("<defs><rect id=\"d\" width=\"20\" height=\"20\" %1/>"
                           "<rect id=\"e\" x=\"40\" width=\"20\" height=\"20\"/></defs>"
                           "%2<use xlink:href=\"#e\"/>");
    const QString use = QStringLiteral("<use xlink:href=\"#d\"/>");
    SvgDocument hidden(svgTitle(defs.arg(QStringLiteral("visibility=\"hidden\""), use)));
    SvgDocument twin(svgTitle(defs.arg(QString(), QString())));
    COMPARE_PICTURES(renderAt(hidden, 0), renderAt(twin, 0), 0);
}

void DefinitionVisibilityTest::savesOverALongerText()
{
    const QString words = QStringLiteral("Титры 字幕 \U0001F3AC");
    for (int gap = 60; gap < 200; ++gap) {
        const QString text = svgTitle(
                definition(QStringLiteral("visibility=\"hidden\"") + QString(gap, QLatin1Char(' ')))
                + twoUses + QStringLiteral("<text>%1</text>").arg(words));
        SvgDocument document(text);
        const QByteArray source = text.toUtf8();
        const int length = int(document.size());
        QVERIFY(document.isLoaded());
        QCOMPARE(document.data().size(), qMax(length, source.size()));
        QCOMPARE(document.data().mid(length), source.mid(length));
        QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=hidden v=hidden"));
        QCOMPARE(savedTree(document)
                         .elementsByTagName(QStringLiteral("text"))
                         .at(0)
                         .toElement()
                         .text(),
                 words);
    }
}

void DefinitionVisibilityTest::parsesTheTextFirst()
{
    SvgDocument document(svgTitle(definition(QString()) + twoUses));
    const auto hide = [&document] {
        elementById(document.documentRoot(), QStringLiteral("d"))
                .setAttribute(QStringLiteral("visibility"), QStringLiteral("hidden"));
    };
    hide();
    document.fixDefinitionsVisibility();
    QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=- v=-"));
    hide();
    document.saveToBuffer();
    document.fixDefinitionsVisibility();
    QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=hidden v=hidden"));
}

void DefinitionVisibilityTest::usesTextWrittenLater()
{
    SvgDocument document(svgTitle(definition(QString()) + twoUses));
    document.seek(0);
    document.write(svgTitle(definition(QStringLiteral("visibility=\"hidden\"")) + twoUses
                            + QStringLiteral("<use id=\"w\" xlink:href=\"#d\"/>"))
                           .toUtf8());
    document.fixDefinitionsVisibility();
    // The last use was not there when uses were looked for.
    QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=hidden v=hidden w=-"));
}

void DefinitionVisibilityTest::latestDefinitionCountsWhereAUseShowsTwo_data()
{
    QTest::addColumn<QString>("definitions");
    QTest::addColumn<QString>("uses");
    const char *const a = "<g id=\"a\" visibility=\"visible\"/>";
    const char *const b = "<g id=\"b\" visibility=\"hidden\"/>";
    const auto row = [](const char *name, const char *first, const char *second, const char *third,
                        const char *uses) {
        QTest::newRow(name) << QLatin1String(first) + QLatin1String(second) + QLatin1String(third)
                            << QString::fromLatin1(uses);
    };
    row("in the order of ids", a, b, "", "u=hidden");
    row("against the order of ids", b, a, "", "u=visible");
    row("one of them twice", b, a, b, "u=hidden");
    // A definition that is such a use passes the latest on.
    const char *const c =
            "<use id=\"c\" xlink:href=\"#a\"/><g><use id=\"v\" xlink:href=\"#c\"/></g>";
    row("passed on in the order of ids", a, b, c, "c=hidden v=hidden u=hidden");
    row("passed on against the order of ids", b, a, c, "c=visible v=visible u=visible");
    row("passed on before the latest", a, c, b, "c=hidden v=visible u=hidden");
}

void DefinitionVisibilityTest::latestDefinitionCountsWhereAUseShowsTwo()
{
    QFETCH(QString, definitions);
    QFETCH(QString, uses);
    const QString text =
            svgTitle(QStringLiteral("<defs>%1</defs><use id=\"u\" xlink:href=\"#a\"/>"));
    SvgDocument document(text.arg(
            QString(definitions).replace(QStringLiteral("visibility"), QStringLiteral("note"))));
    // The same uses refer to something else now, and to both when they are looked for again.
    QString other = text.arg(definitions);
    other.replace(QStringLiteral("#a"), QStringLiteral("#b"));
    document.seek(0);
    document.write(other.toUtf8());
    document.detectUseElements();
    document.fixDefinitionsVisibility();
    QCOMPARE(usesIn(savedTree(document)), uses);
}

void DefinitionVisibilityTest::usesStayWhatTheyWereWhenTheyWereFound_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("uses");
    const QString visible = QStringLiteral("visibility=\"visible\"");
    QTest::newRow("an ancestor has a visibility now")
            << QString() << visible << QStringLiteral("c=hidden v=hidden");
    QTest::newRow("an ancestor had a visibility")
            << visible << QString() << QStringLiteral("c=- v=-");
}

void DefinitionVisibilityTest::usesStayWhatTheyWereWhenTheyWereFound()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(QString, uses);
    const QString text = svgTitle(
            QStringLiteral("<defs><g id=\"d\" %2/><g %1><use id=\"c\" xlink:href=\"#d\"/></g>"
                           "</defs><use id=\"v\" xlink:href=\"#c\"/>"));
    SvgDocument document(text.arg(before, QString()));
    document.seek(0);
    document.write(text.arg(after, QStringLiteral("visibility=\"hidden\"")).toUtf8());
    document.fixDefinitionsVisibility();
    QCOMPARE(usesIn(savedTree(document)), uses);
}

void DefinitionVisibilityTest::updatesUses_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("given");
    const QString hidden = QStringLiteral("hidden");
    QTest::newRow("hidden") << hidden << hidden;
    QTest::newRow("visible") << QStringLiteral("visible") << QStringLiteral("visible");
    QTest::newRow("empty counts as visible") << QString() << QStringLiteral("visible");
    QTest::newRow("inherit") << QStringLiteral("inherit") << hidden;
    QTest::newRow("collapse") << QStringLiteral("collapse") << hidden;
    QTest::newRow("case-sensitive") << QStringLiteral("Visible") << hidden;
    QTest::newRow("blank") << QStringLiteral(" ") << hidden;
}

void DefinitionVisibilityTest::updatesUses()
{
    QFETCH(QString, value);
    QFETCH(QString, given);
    SvgDocument document(svgTitle(definition(QString()) + twoUses
                                  + QStringLiteral("<use id=\"w\" xlink:href=\"#other\"/>")));
    const QByteArray text = document.data();
    const QDomNode root = document.documentRoot();
    QVERIFY(document.updateDefinitionVisibility(root, animationOf(root, "d", "visibility"), value));
    QCOMPARE(document.data(), text);
    QVERIFY(!elementById(root, QStringLiteral("d")).hasAttribute(QStringLiteral("visibility")));
    document.saveToBuffer();
    QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=%1 v=%1 w=-").arg(given));
}

void DefinitionVisibilityTest::declinesOtherAnimations_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("attributeName");
    const QString visibility = QStringLiteral("visibility");
    QTest::newRow("another attribute")
            << definition(QString()) + twoUses << QStringLiteral("opacity");
    QTest::newRow("visibility is case-sensitive")
            << definition(QString()) + twoUses << QStringLiteral("Visibility");
    QTest::newRow("outside defs") << QStringLiteral("<rect id=\"d\" width=\"9\" height=\"9\"/>")
                    + twoUses << visibility;
    QTest::newRow("the defs element itself")
            << QStringLiteral("<defs id=\"d\"/>") + twoUses << visibility;
    QTest::newRow("not used") << definition(QString()) << visibility;
    QTest::newRow("used by name only")
            << definition(QString()) + QStringLiteral("<use id=\"u\" href=\"#d\"/>") << visibility;
}

void DefinitionVisibilityTest::declinesOtherAnimations()
{
    QFETCH(QString, content);
    QFETCH(QString, attributeName);
    SvgDocument document(svgTitle(content));
    const QDomNode root = document.documentRoot();
    const QByteArray name = attributeName.toLatin1();
    QVERIFY(!document.updateDefinitionVisibility(root, animationOf(root, "d", name.constData()),
                                                 QStringLiteral("hidden")));
    document.saveToBuffer();
    QVERIFY(!usesIn(savedTree(document)).contains(QLatin1String("hidden")));
}

void DefinitionVisibilityTest::acceptsWithoutAnyUseToChange()
{
    SvgDocument document(svgTitle(definition(QString())
                                  + QStringLiteral("<g visibility=\"visible\"><use id=\"u\""
                                                   " xlink:href=\"#d\"/></g>")));
    const QDomNode root = document.documentRoot();
    QVERIFY(document.updateDefinitionVisibility(root, animationOf(root, "d", "visibility"),
                                                QStringLiteral("hidden")));
    document.saveToBuffer();
    QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=-"));
}

void DefinitionVisibilityTest::updatesTheGivenTree()
{
    SvgDocument document(svgTitle(
            definition(QString(), animateVisibility(QStringLiteral("visible;hidden"))) + twoUses));
    QCOMPARE(usesAt(document, 0), QStringLiteral("u=visible v=visible"));
    QDomDocument other = savedTree(document);
    const QDomNode root = other.documentElement();
    QVERIFY(document.updateDefinitionVisibility(root, animationOf(root, "d", "visibility"),
                                                QStringLiteral("hidden")));
    QCOMPARE(usesIn(other), QStringLiteral("u=hidden v=hidden"));
    document.saveToBuffer();
    QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=visible v=visible"));
    QCOMPARE(usesAt(document, 500), QStringLiteral("u=hidden v=hidden"));
    QCOMPARE(usesAt(document, 0), QStringLiteral("u=visible v=visible"));
    QCOMPARE(usesIn(other), QStringLiteral("u=hidden v=hidden"));
}

void DefinitionVisibilityTest::playsOnTheUses()
{
    SvgDocument document(svgTitle(
            definition(QString(),
                       animateVisibility(QStringLiteral("hidden;visible;collapse;"))
                               + QStringLiteral("<animate attributeName=\"opacity\" from=\"0\""
                                                " to=\"1\" dur=\"1s\"/>"))
            + twoUses
            + QStringLiteral("<g visibility=\"visible\"><use id=\"w\" xlink:href=\"#d\"/></g>")));
    QCOMPARE(usesIn(savedTree(document)), QStringLiteral("u=- v=- w=-"));
    const QString hidden = QStringLiteral("u=hidden v=hidden w=-");
    const QString visible = QStringLiteral("u=visible v=visible w=-");
    QCOMPARE(usesAt(document, 0), hidden);
    QCOMPARE(usesAt(document, 250), visible);
    QCOMPARE(usesAt(document, 500), hidden);
    QCOMPARE(usesAt(document, 999), visible); // the last value is empty
    QCOMPARE(usesAt(document, 249), hidden);
    QCOMPARE(usesAt(document, 1000), visible);
    QCOMPARE(usesAt(document, -1), visible);

    document.applyAnimation(500);
    const QDomElement rect = elementById(savedTree(document), QStringLiteral("d"));
    QVERIFY(!rect.hasAttribute(QStringLiteral("visibility")));
    QCOMPARE(rect.attribute(QStringLiteral("opacity")), QStringLiteral("0.500"));
}

/// After the animation the template's value of the definition holds again, by the rule for values
/// that are played.
void DefinitionVisibilityTest::restoresTheTemplatesValue_data()
{
    QTest::addColumn<QString>("visibility");
    QTest::addColumn<QString>("restored");
    QTest::newRow("none") << QString() << QStringLiteral("visible");
    QTest::newRow("empty") << QStringLiteral("visibility=\"\"") << QStringLiteral("visible");
    QTest::newRow("visible") << QStringLiteral("visibility=\"visible\"")
                             << QStringLiteral("visible");
    QTest::newRow("hidden") << QStringLiteral("visibility=\"hidden\"") << QStringLiteral("hidden");
    QTest::newRow("inherit") << QStringLiteral("visibility=\"inherit\"")
                             << QStringLiteral("hidden");
}

void DefinitionVisibilityTest::restoresTheTemplatesValue()
{
    QFETCH(QString, visibility);
    QFETCH(QString, restored);
    for (const QString &played : {QStringLiteral("visible"), QStringLiteral("hidden")}) {
        SvgDocument document(svgTitle(definition(visibility, animateVisibility(played)) + twoUses));
        QCOMPARE(usesAt(document, 500), QStringLiteral("u=%1 v=%1").arg(played));
        QCOMPARE(usesAt(document, 1000), QStringLiteral("u=%1 v=%1").arg(restored));
        QCOMPARE(usesAt(document, 500), QStringLiteral("u=%1 v=%1").arg(played));
        QCOMPARE(usesAt(document, -1), QStringLiteral("u=%1 v=%1").arg(restored));
    }
}

void DefinitionVisibilityTest::playsEverythingElseOnTheDefinition_data()
{
    QTest::addColumn<QString>("content");
    const QString hide = animateVisibility(QStringLiteral("hidden"));
    QTest::newRow("not used") << definition(QString(), hide);
    QTest::newRow("outside defs")
            << QStringLiteral("<rect id=\"d\" width=\"9\" height=\"9\">%1</rect>").arg(hide)
                    + twoUses;
    QTest::newRow("inside the definition, without an id")
            << QStringLiteral("<defs><g id=\"e\"><rect width=\"9\" height=\"9\">%1</rect></g>"
                              "</defs><use id=\"u\" xlink:href=\"#e\"/>")
                       .arg(hide);
}

void DefinitionVisibilityTest::playsEverythingElseOnTheDefinition()
{
    QFETCH(QString, content);
    SvgDocument document(svgTitle(content));
    const auto visibility = [&document](int ms) {
        document.applyAnimation(ms);
        return savedTree(document)
                .elementsByTagName(QStringLiteral("rect"))
                .at(0)
                .toElement()
                .attribute(QStringLiteral("visibility"), QStringLiteral("-"));
    };
    QCOMPARE(visibility(500), QStringLiteral("hidden"));
    QVERIFY(!usesIn(savedTree(document)).contains(QLatin1String("hidden")));
    QCOMPARE(visibility(1000), QStringLiteral("-"));
}

void DefinitionVisibilityTest::drawsOnlyVisibleUsesAtAnyTime()
{
    const QString content =
            QStringLiteral("<defs><rect id=\"d\" width=\"20\" height=\"20\">%1</rect></defs>"
                           "<rect x=\"60\" width=\"20\" height=\"20\"/>%2");
    const QString use = QStringLiteral("<use xlink:href=\"#d\"/>");
    SvgDocument document(
            svgTitle(content.arg(animateVisibility(QStringLiteral("hidden;visible")), use)));
    SvgDocument with(svgTitle(content.arg(QString(), use)));
    SvgDocument without(svgTitle(content.arg(QString(), QString())));
    const QImage shown = renderAt(with, 0);
    const QImage hidden = renderAt(without, 0);
    QVERIFY(shown != hidden);
    for (const int ms : {700, 100, 1000, 0, 499, 500, -5, 100})
        COMPARE_PICTURES(renderAt(document, ms), ms >= 0 && ms < 500 ? hidden : shown, 0);
}

QTEST_MAIN(DefinitionVisibilityTest)

#include "tst_definitionvisibility.moc"
