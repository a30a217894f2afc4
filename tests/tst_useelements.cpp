// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/AnimatableAttributeText.h>
#include <Scene/SvgDocument.h>

#include <QDomDocument>
#include <QLoggingCategory>

// Which "use" elements the document finds for a definition. They show what was found when the
// definition is hidden.

namespace {

/// A title with a definition "a" and with elements of one's own.
QString svgWithDefinition(const QString &content)
{
    return svgTitle(QStringLiteral("<defs><rect id=\"a\" width=\"9\" height=\"9\"/></defs>")
                    + content);
}

QDomElement firstDefinition(const QDomNode &root)
{
    return root.firstChildElement(QStringLiteral("defs")).firstChildElement();
}

/// Hides the first definition of the title; true when the document knows of a use of it.
bool hideFirstDefinition(SvgDocument &document)
{
    const QDomNode root = document.documentRoot();
    const boost::shared_ptr<AnimatableAttribute> visibility(new AnimatableAttributeText(
            firstDefinition(root), root, QStringLiteral("visibility"), {QStringLiteral("hidden")}));
    return document.updateDefinitionVisibility(root, visibility, QStringLiteral("hidden"));
}

/// The ids of all elements that are hidden now, in document order.
QStringList hiddenElements(SvgDocument &document)
{
    std::vector<QDomNode> nodes;
    document.getAllNodes(document.documentRoot(), nodes);
    QStringList ids;
    for (const QDomNode &node : nodes) {
        const QDomElement element = node.toElement();
        if (element.attribute(QStringLiteral("visibility")) == QLatin1String("hidden"))
            ids.append(element.attribute(QStringLiteral("id")));
    }
    return ids;
}

} // namespace

class UseElementsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void findsUsesOfADefinition_data();
    void findsUsesOfADefinition();
    void keepsAnEmptyReferenceUnderTheEmptyId();
    void tellsDefinitionsApart();
    void tellsTheUsesOfADefinition();
    void findsUsesBeforeTheDefinition();
    void findsUsesInTextThatTheRendererRefuses();
    void parsesTheTextFirst();
    void findsUsesInTextWrittenLater();
    void addsToWhatItFoundBefore();
    void findsUsesAgainInALaterTree();
};

/// The renderer complains of references that lead nowhere.
void UseElementsTest::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false"));
}

void UseElementsTest::findsUsesOfADefinition_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QStringList>("hidden");

    const auto row = [](const char *name, const char *content, const QStringList &hidden) {
        QTest::newRow(name) << QString::fromLatin1(content) << !hidden.isEmpty() << hidden;
    };
    const QString u = QStringLiteral("u");
    const QString v = QStringLiteral("v");
    row("use", "<use id=\"u\" xlink:href=\"#a\"/>", {u});
    row("two uses", "<use id=\"u\" xlink:href=\"#a\"/><use id=\"v\" xlink:href=\"#a\"/>", {u, v});
    row("no use", "<rect/>", {});
    row("in a group", "<g><g><rect/><use id=\"u\" xlink:href=\"#a\"/></g></g>", {u});
    row("inside a definition", "<defs><g><use id=\"u\" xlink:href=\"#a\"/></g></defs>", {u});
    row("inside another use",
        "<use id=\"u\" xlink:href=\"#b\"><use id=\"v\" xlink:href=\"#a\"/></use>", {v});
    row("after text and comments",
        "<g>words<!-- note --><rect/>more words<use id=\"u\" xlink:href=\"#a\"/></g>", {u});
    row("without the prefix", "<use id=\"u\" href=\"#a\"/>", {});
    row("with another prefix",
        "<use id=\"u\" xmlns:xl=\"http://www.w3.org/1999/xlink\" xl:href=\"#a\"/>", {});
    row("both forms: the prefixed one counts", "<use id=\"u\" href=\"#a\" xlink:href=\"#b\"/>", {});
    row("in another file", "<use id=\"u\" xlink:href=\"other.svg#a\"/>", {});
    row("without the number sign", "<use id=\"u\" xlink:href=\"a\"/>", {});
    row("another sign before the id", "<use id=\"u\" xlink:href=\"?a\"/>", {});
    row("space before the number sign", "<use id=\"u\" xlink:href=\" #a\"/>", {});
    row("space after the id", "<use id=\"u\" xlink:href=\"#a \"/>", {});
    row("only one number sign is removed", "<use id=\"u\" xlink:href=\"##a\"/>", {});
    row("ids are case-sensitive", "<use id=\"u\" xlink:href=\"#A\"/>", {});
    row("another id", "<use id=\"u\" xlink:href=\"#ab\"/>", {});
    row("empty reference", "<use id=\"u\" xlink:href=\"\"/>", {});
    row("number sign alone", "<use id=\"u\" xlink:href=\"#\"/>", {});
    row("no reference", "<use id=\"u\"/>", {});
    row("not a use element", "<g id=\"u\" xlink:href=\"#a\"/>", {});
    row("the name is case-sensitive", "<Use id=\"u\" xlink:href=\"#a\"/>", {});
    row("a prefixed element has another name",
        "<s:use xmlns:s=\"http://www.w3.org/2000/svg\" id=\"u\" xlink:href=\"#a\"/>", {});
    row("a use with a visibility of its own",
        "<use id=\"u\" visibility=\"visible\" xlink:href=\"#a\"/>", {u});
    QTest::newRow("found, but inside something with a visibility")
            << QStringLiteral("<g visibility=\"visible\"><use id=\"u\" xlink:href=\"#a\"/></g>")
            << true << QStringList();
    QTest::newRow("one of two inside something with a visibility")
            << QStringLiteral("<g visibility=\"visible\"><use id=\"u\" xlink:href=\"#a\"/></g>"
                              "<use id=\"v\" xlink:href=\"#a\"/>")
            << true << QStringList{v};
}

void UseElementsTest::findsUsesOfADefinition()
{
    QFETCH(QString, content);
    QFETCH(bool, found);
    QFETCH(QStringList, hidden);
    SvgDocument document(svgWithDefinition(content));
    QVERIFY(document.isLoaded());
    QCOMPARE(hiddenElements(document), QStringList());
    QCOMPARE(hideFirstDefinition(document), found);
    QCOMPARE(hiddenElements(document), hidden);
}

void UseElementsTest::keepsAnEmptyReferenceUnderTheEmptyId()
{
    SvgDocument document(
            svgTitle(QStringLiteral("<defs><rect/></defs><use id=\"u\" xlink:href=\"#\"/>")));
    QVERIFY(hideFirstDefinition(document));
    QCOMPARE(hiddenElements(document), QStringList{QStringLiteral("u")});
}

void UseElementsTest::tellsDefinitionsApart()
{
    SvgDocument document(svgWithDefinition(
            QStringLiteral("<defs><rect id=\"b\"/></defs>"
                           "<use id=\"a1\" xlink:href=\"#a\"/><use id=\"b1\" xlink:href=\"#b\"/>"
                           "<use id=\"a2\" xlink:href=\"#a\"/><use id=\"b2\" xlink:href=\"#b\"/>"
                           "<use id=\"a3\" xlink:href=\"#a\"/>")));
    QVERIFY(hideFirstDefinition(document));
    QCOMPARE(hiddenElements(document),
             (QStringList{QStringLiteral("a1"), QStringLiteral("a2"), QStringLiteral("a3")}));
}

void UseElementsTest::findsUsesBeforeTheDefinition()
{
    SvgDocument document(svgTitle(QStringLiteral("<use id=\"u\" xlink:href=\"#a\"/><defs><rect "
                                                 "id=\"a\" width=\"9\" height=\"9\"/></defs>")));
    QVERIFY(hideFirstDefinition(document));
    QCOMPARE(hiddenElements(document), QStringList{QStringLiteral("u")});
}

void UseElementsTest::findsUsesInTextThatTheRendererRefuses()
{
    SvgDocument document(QStringLiteral(
            "<title xmlns:xlink=\"http://www.w3.org/1999/xlink\"><defs><rect id=\"a\"/></defs>"
            "<use id=\"u\" xlink:href=\"#a\"/></title>"));
    QVERIFY(!document.isLoaded());
    QVERIFY(hideFirstDefinition(document));
    QCOMPARE(hiddenElements(document), QStringList{QStringLiteral("u")});
}

void UseElementsTest::parsesTheTextFirst()
{
    SvgDocument document(svgWithDefinition(QStringLiteral("<use id=\"u\"/>")));
    QDomElement use = document.documentRoot().lastChildElement();
    use.setAttribute(QStringLiteral("xlink:href"), QStringLiteral("#a"));
    document.detectUseElements();
    QVERIFY(!document.documentRoot().lastChildElement().hasAttribute(QStringLiteral("xlink:href")));
    QVERIFY(!hideFirstDefinition(document));

    use = document.documentRoot().lastChildElement();
    use.setAttribute(QStringLiteral("xlink:href"), QStringLiteral("#a"));
    document.saveToBuffer();
    document.detectUseElements();
    QVERIFY(hideFirstDefinition(document));
    QCOMPARE(hiddenElements(document), QStringList{QStringLiteral("u")});
}

void UseElementsTest::findsUsesInTextWrittenLater()
{
    SvgDocument document(svgWithDefinition(QString()));
    QVERIFY(!hideFirstDefinition(document));
    document.seek(0);
    document.write(
            svgWithDefinition(QStringLiteral("<rect/><use id=\"u\" xlink:href=\"#a\"/>")).toUtf8());
    document.detectUseElements();
    QVERIFY(hideFirstDefinition(document));
    QCOMPARE(hiddenElements(document), QStringList{QStringLiteral("u")});
}

void UseElementsTest::addsToWhatItFoundBefore()
{
    SvgDocument document(svgWithDefinition(QStringLiteral("<use id=\"u\" xlink:href=\"#a\"/>")));
    document.seek(0);
    document.write(svgWithDefinition(QStringLiteral("<rect id=\"r\"/>"
                                                    "<use id=\"v\" xlink:href=\"#a\"/>"))
                           .toUtf8());
    document.detectUseElements();
    QVERIFY(hideFirstDefinition(document));
    // The element that now stands where the first one was found is taken for it.
    QCOMPARE(hiddenElements(document), (QStringList{QStringLiteral("r"), QStringLiteral("v")}));
}

void UseElementsTest::findsUsesAgainInALaterTree()
{
    SvgDocument document(
            svgWithDefinition(QStringLiteral("<g><rect/><use id=\"u\" xlink:href=\"#a\"/></g>")));
    for (int i = 0; i < 3; ++i) {
        document.viewBox();
        QCOMPARE(hiddenElements(document), QStringList());
        QVERIFY(hideFirstDefinition(document));
        QCOMPARE(hiddenElements(document), QStringList{QStringLiteral("u")});
    }

    // Without the path, nothing is hidden.
    document.viewBox();
    QDomNode root = document.documentRoot();
    root.removeChild(root.lastChildElement());
    QVERIFY(hideFirstDefinition(document));
    QCOMPARE(hiddenElements(document), QStringList());
}

void UseElementsTest::tellsTheUsesOfADefinition()
{
    const SvgDocument document(
            svgTitle(QStringLiteral("<defs><rect id=\"a\"/></defs><use id=\"u\" xlink:href=\"#a\"/>"
                                    "<g><use id=\"v\" xlink:href=\"#a\"/></g>")));
    const auto uses = document.usesOf(QStringLiteral("a"));
    QCOMPARE(uses.size(), std::size_t(2));
    QCOMPARE(uses[0]->svgId(), QStringLiteral("u"));
    QCOMPARE(uses[1]->svgId(), QStringLiteral("v"));
    QCOMPARE(document.usesOf(QStringLiteral("b")).size(), std::size_t(0));
}

QTEST_MAIN(UseElementsTest)

#include "tst_useelements.moc"
