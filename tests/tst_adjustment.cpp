// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/AdjustableAttribute.h>
#include <Scene/SvgDocument.h>

#include <QDomDocument>

#include <algorithm>

// Attributes of a title that a user's value replaces.

namespace {

const QString fill = QStringLiteral("fill");
const QString stroke = QStringLiteral("stroke");
const QString mark = QStringLiteral("adjusted");

/// Two shapes "a" and "b", both with a fill.
QString twoShapes()
{
    return svgTitle(QStringLiteral(
            "<rect id=\"a\" x=\"0\" width=\"20\" height=\"20\" fill=\"#ff0000\"/>"
            "<rect id=\"b\" x=\"40\" width=\"20\" height=\"20\" fill=\"#0000ff\"/>"));
}

/// The values of an attribute on all elements that have it, in document order: "a=1 b=2".
QString values(SvgDocument &walker, const QDomNode &root, const QString &name)
{
    std::vector<QDomNode> nodes;
    walker.getAllNodes(root, nodes);
    QStringList parts;
    for (const QDomNode &node : nodes) {
        const QDomElement element = node.toElement();
        if (element.hasAttribute(name))
            parts.append(element.attribute(QStringLiteral("id")) + QLatin1Char('=')
                         + element.attribute(name));
    }
    return parts.join(QLatin1Char(' '));
}

QString savedValues(SvgDocument &document, const QString &name)
{
    return values(document, savedTree(document).documentElement(), name);
}

void writeText(SvgDocument &document, const QString &text)
{
    document.seek(0);
    document.write(text.toUtf8());
}

} // namespace

class AdjustmentTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void replacesOnlyColorsOfItsOwn_data();
    void replacesOnlyColorsOfItsOwn();
    void replacesOtherAttributesWhateverTheyHold_data();
    void replacesOtherAttributesWhateverTheyHold();
    void knowsTheFillOfAnimations_data();
    void knowsTheFillOfAnimations();
    void replacesOnAllElementsThatHaveTheAttribute();
    void tellsNamesApart_data();
    void tellsNamesApart();
    void tellsWhatItAdjusts();

    void changesNothingForUnknownNames_data();
    void changesNothingForUnknownNames();
    void changesTreeTextAndPicture();
    void replacesAgainAndAgain();
    void savesOtherChangesOfTheTreeAlong();
    void savesEvenWhenTheValueStays();
    void savesWhatStandsBeforeTheRoot_data();
    void savesWhatStandsBeforeTheRoot();
    void escapesValues_data();
    void escapesValues();
    void leavesForbiddenCharactersOut_data();
    void leavesForbiddenCharactersOut();
    void savesValuesOfAnyLength_data();
    void savesValuesOfAnyLength();
    void adjustsTextWithADeclaredEncoding_data();
    void adjustsTextWithADeclaredEncoding();

    void preparesFromTheText();
    void preparesAnew();
    void preparesWhatAnAdjustmentMadeAdjustable();
    void preparesWhatAnAnimationHasWritten();
    void keepsTheFirstRecordOfAName();
    void recordsWithinTheGivenNodes();
    void recordsNodesInAnyOrder();

    void staysThroughFrames();
    void givesWayToAnimations();
    void looksElementsUpByTheirPlace();
    void skipsElementsThatAreGone();
};

void AdjustmentTest::replacesOnlyColorsOfItsOwn_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("adjustable");

    const auto row = [](const char *value, bool adjustable, const char *name = nullptr) {
        QTest::newRow(name ? name : value) << QString::fromLatin1(value) << adjustable;
    };
    row("none", false);
    row("currentColor", false);
    row("inherit", false);
    row("url(#grad)", false);
    row("url", false);
    row("urls are known by their first three letters", false);
    row("#123456", true);
    row("red", true);
    row("no colour at all", true);
    row("transparent", true);
    row("", true, "empty");
    row("None", true);
    row("NONE", true);
    row("currentcolor", true);
    row("Inherit", true);
    row("URL(#grad)", true);
    row("Url(#grad)", true);
    row(" none", true, "none after a space");
    row("none ", true, "none before a space");
    row(" url(#grad)", true, "url after a space");
    row("inherit!", true);
}

void AdjustmentTest::replacesOnlyColorsOfItsOwn()
{
    QFETCH(QString, value);
    QFETCH(bool, adjustable);
    for (const QString &name : {fill, stroke}) {
        const QString text =
                svgTitle(QStringLiteral("<rect id=\"a\" %1=\"%2\"/>").arg(name, value));
        SvgDocument document(text);
        document.prepareAdjustedAttibutes({name});
        document.adjustAttribute(name, mark);
        QCOMPARE(savedValues(document, name),
                 QStringLiteral("a=%1").arg(adjustable ? mark : value));
        QCOMPARE(document.data() != text.toUtf8(), adjustable);
    }
}

void AdjustmentTest::replacesOtherAttributesWhateverTheyHold_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    for (const char *value : {"none", "currentColor", "inherit", "url(#grad)", "", "5"}) {
        for (const char *name : {"opacity", "clip-path", "xlink:href", "id"})
            QTest::addRow("%s: '%s'", name, value)
                    << QString::fromLatin1(name) << QString::fromLatin1(value);
    }
}

void AdjustmentTest::replacesOtherAttributesWhateverTheyHold()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    SvgDocument document(svgTitle(QStringLiteral("<rect %1=\"%2\"/>").arg(name, value)));
    document.prepareAdjustedAttibutes({name});
    document.adjustAttribute(name, mark);
    QCOMPARE(savedTree(document).documentElement().firstChildElement().attribute(name), mark);
}

void AdjustmentTest::knowsTheFillOfAnimations_data()
{
    QTest::addColumn<QString>("element");
    QTest::addColumn<bool>("adjustable");
    QTest::newRow("animate") << QStringLiteral("<animate %1/>") << false;
    QTest::newRow("animateMotion") << QStringLiteral("<animateMotion %1/>") << false;
    QTest::newRow("animateColor") << QStringLiteral(
            "<animateColor attributeName=\"fill\" from=\"red\" to=\"blue\""
            " dur=\"1s\" %1/>") << false;
    QTest::newRow("animateTransform")
            << QStringLiteral("<animateTransform attributeName=\"transform\" type=\"rotate\""
                              " from=\"0\" to=\"9\" dur=\"1s\" %1/>")
            << false;
    QTest::newRow("set is none of them") << QStringLiteral("<set %1/>") << true;
    QTest::newRow("names are case-sensitive") << QStringLiteral("<Animate %1/>") << true;
    QTest::newRow("a shape") << QStringLiteral("<rect %1/>") << true;
}

void AdjustmentTest::knowsTheFillOfAnimations()
{
    QFETCH(QString, element);
    QFETCH(bool, adjustable);
    const QString attributes = QStringLiteral("id=\"e\" fill=\"freeze\" stroke=\"freeze\"");
    SvgDocument document(svgTitle(
            QStringLiteral("<rect id=\"r\" fill=\"red\">%1</rect>").arg(element.arg(attributes))));
    document.prepareAdjustedAttibutes({fill, stroke});
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, fill),
             QStringLiteral("r=adjusted e=%1").arg(adjustable ? mark : QStringLiteral("freeze")));
    document.adjustAttribute(stroke, mark);
    QCOMPARE(savedValues(document, stroke), QStringLiteral("e=adjusted"));
}

void AdjustmentTest::replacesOnAllElementsThatHaveTheAttribute()
{
    SvgDocument document(QStringLiteral(
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 9 9\" id=\"root\" fill=\"1\">"
            "<defs id=\"defs\" fill=\"2\"><clipPath><g id=\"clip\" fill=\"3\"/></clipPath></defs>"
            "words<g id=\"plain\"><!--note--><g/><g><path id=\"deep\" fill=\"4\"/></g></g>"
            "<g id=\"none\" fill=\"none\"/><text id=\"text\" fill=\"5\">more<tspan id=\"span\""
            " fill=\"6\">words</tspan></text></svg>"));
    document.prepareAdjustedAttibutes({fill});
    document.adjustAttribute(fill, QStringLiteral("x"));
    const QString expected = QStringLiteral("root=x defs=x clip=x deep=x none=none text=x span=x");
    QCOMPARE(savedValues(document, fill), expected);
    QCOMPARE(values(document, document.documentRoot(), fill), expected);
}

void AdjustmentTest::tellsNamesApart_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("case") << QStringLiteral("Fill");
    QTest::newRow("beginning") << QStringLiteral("fil");
    QTest::newRow("longer") << QStringLiteral("fill-opacity");
    QTest::newRow("prefix") << QStringLiteral("svg:fill");
    QTest::newRow("space") << QStringLiteral(" fill");
    QTest::newRow("empty") << QString();
}

void AdjustmentTest::tellsNamesApart()
{
    QFETCH(QString, name);
    const QString text = twoShapes();
    SvgDocument document(text);
    document.prepareAdjustedAttibutes({name});
    document.adjustAttribute(name, mark);
    document.adjustAttribute(fill, mark);
    QCOMPARE(document.data(), text.toUtf8());
}

void AdjustmentTest::changesNothingForUnknownNames_data()
{
    QTest::addColumn<QStringList>("prepared");
    QTest::newRow("nothing prepared") << QStringList();
    QTest::newRow("another name prepared") << QStringList{fill};
    QTest::newRow("prepared, but found nowhere") << QStringList{fill, stroke};
}

void AdjustmentTest::changesNothingForUnknownNames()
{
    QFETCH(QStringList, prepared);
    const QString text = twoShapes();
    SvgDocument document(text);
    if (!prepared.isEmpty())
        document.prepareAdjustedAttibutes(prepared);
    document.documentRoot().toElement().setAttribute(QStringLiteral("class"), mark);
    document.adjustAttribute(stroke, mark);
    QCOMPARE(document.data(), text.toUtf8());
    QCOMPARE(values(document, document.documentRoot(), stroke), QString());
    QCOMPARE(document.documentRoot().toElement().attribute(QStringLiteral("class")), mark);
}

void AdjustmentTest::changesTreeTextAndPicture()
{
    SvgDocument document(twoShapes());
    document.prepareAdjustedAttibutes({fill});
    document.adjustAttribute(fill, QStringLiteral("#00ff00"));
    const QString expected = QStringLiteral("a=#00ff00 b=#00ff00");
    QCOMPARE(savedValues(document, fill), expected);
    QCOMPARE(values(document, document.documentRoot(), fill), expected);
    SvgDocument twin(twoShapes()
                             .replace(QStringLiteral("#ff0000"), QStringLiteral("#00ff00"))
                             .replace(QStringLiteral("#0000ff"), QStringLiteral("#00ff00")));
    COMPARE_PICTURES(renderAt(document, 0), renderAt(twin, 0), 0);
}

void AdjustmentTest::replacesAgainAndAgain()
{
    SvgDocument document(twoShapes());
    document.prepareAdjustedAttibutes({fill});
    for (const char *value : {"none", "url(#grad)", "", "#123456"}) {
        document.adjustAttribute(fill, QString::fromLatin1(value));
        QCOMPARE(savedValues(document, fill),
                 QStringLiteral("a=%1 b=%1").arg(QLatin1String(value)));
    }
}

void AdjustmentTest::savesOtherChangesOfTheTreeAlong()
{
    SvgDocument document(twoShapes());
    document.prepareAdjustedAttibutes({fill});
    document.documentRoot().toElement().setAttribute(QStringLiteral("class"), mark);
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedTree(document).documentElement().attribute(QStringLiteral("class")), mark);
}

void AdjustmentTest::savesEvenWhenTheValueStays()
{
    const QString text = svgTitle(QStringLiteral("<rect id=\"a\" fill=\"red\"/>"));
    SvgDocument document(text);
    document.prepareAdjustedAttibutes({fill});
    document.adjustAttribute(fill, QStringLiteral("red"));
    QVERIFY(savedText(document).contains("\n <rect "));
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=red"));
}

void AdjustmentTest::savesWhatStandsBeforeTheRoot_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QByteArray>("saved");
    QTest::newRow("nothing") << QString() << QByteArray("<svg");
    QTest::newRow("declaration") << QStringLiteral("<?xml version=\"1.0\"?>")
                                 << QByteArray("<?xml version='1.0'?>\n<svg");
    QTest::newRow("document type")
            << QStringLiteral("<!DOCTYPE svg>") << QByteArray("<!DOCTYPE svg>\n<svg");
    QTest::newRow("comment") << QStringLiteral("<!--mine-->") << QByteArray("<!--mine-->\n<svg");
}

/// Unlike a frame, an adjustment declares no encoding that the template did not.
void AdjustmentTest::savesWhatStandsBeforeTheRoot()
{
    QFETCH(QString, before);
    QFETCH(QByteArray, saved);
    SvgDocument document(before + svgTitle(QStringLiteral("<rect fill=\"red\"/>")));
    document.prepareAdjustedAttibutes({QStringLiteral("fill")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("blue"));
    const QByteArray text = savedText(document);
    QCOMPARE(text.left(saved.size()), saved);
    document.saveToBuffer();
    QVERIFY(savedText(document).startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
}

void AdjustmentTest::escapesValues_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("markup") << QStringLiteral("\"/><script/>");
    QTest::newRow("quotes") << QStringLiteral("a\"b'c");
    QTest::newRow("ampersands") << QStringLiteral("&amp; & &#65;");
    QTest::newRow("end of a section") << QStringLiteral("]]>--?>");
    QTest::newRow("alphabets") << QStringLiteral("Титры 字幕 \U0001F3AC");
}

void AdjustmentTest::escapesValues()
{
    QFETCH(QString, value);
    SvgDocument document(twoShapes());
    document.prepareAdjustedAttibutes({fill});
    document.adjustAttribute(fill, value);
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=%1 b=%1").arg(value));
    QVERIFY(SvgDocument(QString::fromUtf8(savedText(document))).isLoaded());
}

void AdjustmentTest::leavesForbiddenCharactersOut_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("control characters")
            << QStringLiteral("re") + QChar(1) + QChar(0) + QStringLiteral("d") + QChar(0x1F);
    QTest::newRow("high surrogate alone")
            << QStringLiteral("re") + QChar(0xD83C) + QStringLiteral("d");
    QTest::newRow("low surrogate alone")
            << QStringLiteral("re") + QChar(0xDFAC) + QStringLiteral("d");
    QTest::newRow("surrogates in the wrong order")
            << QStringLiteral("re") + QChar(0xDFAC) + QChar(0xD83C) + QStringLiteral("d");
    QTest::newRow("no characters") << QStringLiteral("red") + QChar(0xFFFE) + QChar(0xFFFF);
}

void AdjustmentTest::leavesForbiddenCharactersOut()
{
    QFETCH(QString, value);
    SvgDocument document(twoShapes());
    document.prepareAdjustedAttibutes({fill});
    document.adjustAttribute(fill, value);
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=red b=red"));
    QCOMPARE(renderAt(document, 0).pixelColor(5, 5), QColor(255, 0, 0));
}

void AdjustmentTest::savesValuesOfAnyLength_data()
{
    QTest::addColumn<QString>("letter");
    QTest::newRow("one byte") << QStringLiteral("x");
    QTest::newRow("two bytes") << QStringLiteral("Я");
    QTest::newRow("three bytes") << QStringLiteral("字");
    QTest::newRow("four bytes") << QStringLiteral("\U0001F3AC");
}

/// A shorter text leaves the end of a longer one after it, cut anywhere.
void AdjustmentTest::savesValuesOfAnyLength()
{
    QFETCH(QString, letter);
    const QString words = letter.repeated(30);
    SvgDocument document(
            svgTitle(QStringLiteral("<rect id=\"a\" width=\"20\" height=\"20\" fill=\"\"/>"
                                    "<text y=\"40\" font-size=\"8\">%1</text>")
                             .arg(words)));
    document.prepareAdjustedAttibutes({fill});
    document.adjustAttribute(fill, QStringLiteral("#00ff00"));
    const QImage expected = renderAt(document, 0);
    const QByteArray green = savedText(document);
    for (int length = 0; length < 150; ++length) {
        document.adjustAttribute(fill, QString(length, QLatin1Char('y')));
        QCOMPARE(savedValues(document, fill),
                 QStringLiteral("a=%1").arg(QString(length, QLatin1Char('y'))));
        document.adjustAttribute(fill, QStringLiteral("#00ff00"));
        QCOMPARE(document.size(), qint64(green.size()));
        QCOMPARE(savedText(document), green);
        QVERIFY(document.data().startsWith(green));
        QCOMPARE(savedTree(document)
                         .elementsByTagName(QStringLiteral("text"))
                         .at(0)
                         .toElement()
                         .text(),
                 words);
        COMPARE_PICTURES(renderAt(document, 0), expected, 0);
    }
    QVERIFY(document.data().size() > green.size() + 100);
}

void AdjustmentTest::adjustsTextWithADeclaredEncoding_data()
{
    QTest::addColumn<QString>("encoding");
    for (const char *encoding : {"UTF-8", "ISO-8859-1", "UTF-16", "windows-1251", "X-UNKNOWN"})
        QTest::newRow(encoding) << QString::fromLatin1(encoding);
}

void AdjustmentTest::adjustsTextWithADeclaredEncoding()
{
    QFETCH(QString, encoding);
    const QString words = QStringLiteral("Титры 字幕 äöü \U0001F3AC");
    const QString content = twoShapes().replace(QStringLiteral("</svg>"),
                                                QStringLiteral("<text>%1</text></svg>").arg(words));
    SvgDocument document(QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?>").arg(encoding)
                         + content);
    for (const char *value : {"#00ff00", "#ffff00"}) {
        document.prepareAdjustedAttibutes({fill});
        document.adjustAttribute(fill, QString::fromLatin1(value));
        QCOMPARE(savedValues(document, fill),
                 QStringLiteral("a=%1 b=%1").arg(QLatin1String(value)));
        QCOMPARE(savedTree(document)
                         .elementsByTagName(QStringLiteral("text"))
                         .at(0)
                         .toElement()
                         .text(),
                 words);
        QVERIFY(savedText(document).contains(words.toUtf8()));
        QCOMPARE(renderAt(document, 0).pixelColor(5, 5), QColor(QLatin1String(value)));
    }
}

void AdjustmentTest::preparesFromTheText()
{
    SvgDocument document(twoShapes());
    document.documentRoot().firstChildElement().setAttribute(stroke, QStringLiteral("red"));
    document.prepareAdjustedAttibutes({fill, stroke});
    QVERIFY(!document.documentRoot().firstChildElement().hasAttribute(stroke));
    document.adjustAttribute(stroke, mark);
    QCOMPARE(savedValues(document, stroke), QString());

    writeText(document, svgTitle(QStringLiteral("<g/><g/><g id=\"g\" stroke=\"red\"/>")));
    document.prepareAdjustedAttibutes({fill, stroke});
    document.adjustAttribute(stroke, mark);
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, stroke), QStringLiteral("g=adjusted"));
    QCOMPARE(savedValues(document, fill), QString());
}

void AdjustmentTest::preparesAnew()
{
    SvgDocument document(svgTitle(QStringLiteral("<g id=\"a\" fill=\"1\" stroke=\"2\"/>")));
    document.prepareAdjustedAttibutes({fill, fill});
    document.prepareAdjustedAttibutes({stroke});
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=1"));
    document.adjustAttribute(stroke, mark);
    QCOMPARE(savedValues(document, stroke), QStringLiteral("a=adjusted"));
    document.prepareAdjustedAttibutes({});
    document.adjustAttribute(stroke, QStringLiteral("3"));
    QCOMPARE(savedValues(document, stroke), QStringLiteral("a=adjusted"));
}

void AdjustmentTest::preparesWhatAnAdjustmentMadeAdjustable()
{
    SvgDocument document(
            svgTitle(QStringLiteral("<g id=\"a\" fill=\"red\"/><g id=\"b\" fill=\"none\"/>")));
    document.prepareAdjustedAttibutes({fill});
    document.adjustAttribute(fill, QStringLiteral("none"));
    document.prepareAdjustedAttibutes({fill});
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=none b=none"));
}

void AdjustmentTest::preparesWhatAnAnimationHasWritten()
{
    SvgDocument document(svgTitle(QStringLiteral(
            "<rect id=\"a\"><animate attributeName=\"stroke\" from=\"#000000\" to=\"#ffffff\""
            " dur=\"1s\"/></rect>")));
    document.prepareAdjustedAttibutes({stroke});
    document.adjustAttribute(stroke, mark);
    QCOMPARE(savedValues(document, stroke), QString());
    document.applyAnimation(500);
    QCOMPARE(savedValues(document, stroke), QStringLiteral("a=#7f7f7f"));
    document.prepareAdjustedAttibutes({stroke});
    document.adjustAttribute(stroke, mark);
    QCOMPARE(savedValues(document, stroke), QStringLiteral("a=adjusted"));
    document.applyAnimation(1000);
    QCOMPARE(savedValues(document, stroke), QString());
}

void AdjustmentTest::keepsTheFirstRecordOfAName()
{
    SvgDocument document(twoShapes());
    std::vector<QDomNode> nodes;
    document.getAllNodes(document.documentRoot(), nodes);

    document.detectAdjustableAttibute(fill, nodes);
    document.detectAdjustableAttibute(fill, {});
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=adjusted b=adjusted"));

    // Also when nothing was found the first time.
    document.detectAdjustableAttibute(QStringLiteral("x"), {});
    document.detectAdjustableAttibute(QStringLiteral("x"), nodes);
    document.adjustAttribute(QStringLiteral("x"), mark);
    QCOMPARE(savedValues(document, QStringLiteral("x")), QStringLiteral("a=0 b=40"));
}

void AdjustmentTest::recordsWithinTheGivenNodes()
{
    SvgDocument document(
            svgTitle(QStringLiteral("<g id=\"a\" fill=\"1\"/>words<g id=\"b\" fill=\"2\">"
                                    "<!--note--><g id=\"c\" fill=\"3\"/></g>")));
    const QDomNode b = document.documentRoot().lastChildElement();
    document.detectAdjustableAttibute(fill, {b.firstChild(), b, b.previousSibling()});
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=1 b=adjusted c=3"));
}

void AdjustmentTest::recordsNodesInAnyOrder()
{
    SvgDocument document(
            svgTitle(QStringLiteral("<g id=\"a\" fill=\"1\"><g id=\"b\" fill=\"2\"/></g>"
                                    "<g id=\"c\" fill=\"3\"/><g id=\"d\" fill=\"none\"/>")));
    std::vector<QDomNode> nodes;
    document.getAllNodes(document.documentRoot(), nodes);
    std::reverse(nodes.begin(), nodes.end());
    document.detectAdjustableAttibute(fill, nodes);
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, fill),
             QStringLiteral("a=adjusted b=adjusted c=adjusted d=none"));
}

void AdjustmentTest::staysThroughFrames()
{
    const QString animated = svgTitle(
            QStringLiteral("<rect id=\"a\" width=\"20\" height=\"20\" fill=\"#ff0000\"><animate"
                           " attributeName=\"x\" from=\"0\" to=\"80\" dur=\"1s\"/></rect>"));
    SvgDocument document(animated);
    SvgDocument twin(
            QString(animated).replace(QStringLiteral("#ff0000"), QStringLiteral("#00ff00")));
    document.prepareAdjustedAttibutes({fill});
    QVERIFY(!isBlank(renderAt(document, 250)));
    document.adjustAttribute(fill, QStringLiteral("#00ff00"));
    QCOMPARE(savedValues(document, QStringLiteral("x")), QStringLiteral("a=20.000"));
    for (const int ms : {500, 0, 2000, 999})
        COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, ms), 0);
}

/// The next frame brings the template's own value back.
void AdjustmentTest::givesWayToAnimations()
{
    SvgDocument document(svgTitle(QStringLiteral(
            "<rect id=\"a\" fill=\"#ff0000\"><animate attributeName=\"fill\" from=\"#000000\""
            " to=\"#ffffff\" begin=\"1s\" dur=\"1s\"/></rect><rect id=\"b\" fill=\"#ff0000\"/>")));
    document.prepareAdjustedAttibutes({fill});
    document.adjustAttribute(fill, QStringLiteral("#00ff00"));
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=#00ff00 b=#00ff00"));
    document.applyAnimation(0);
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=#ff0000 b=#00ff00"));
    document.applyAnimation(1500);
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=#7f7f7f b=#00ff00"));
}

void AdjustmentTest::looksElementsUpByTheirPlace()
{
    SvgDocument document(twoShapes());
    document.prepareAdjustedAttibutes({fill});
    QDomNode root = document.documentRoot();
    QDomElement front = root.firstChildElement().cloneNode().toElement();
    front.setAttribute(QStringLiteral("id"), QStringLiteral("front"));
    root.insertBefore(front, root.firstChild());
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, fill), QStringLiteral("front=adjusted a=adjusted b=#0000ff"));
}

void AdjustmentTest::skipsElementsThatAreGone()
{
    SvgDocument document(twoShapes());
    document.prepareAdjustedAttibutes({fill});
    QDomNode root = document.documentRoot();
    root.removeChild(root.lastChild());
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, fill), QStringLiteral("a=adjusted"));

    root.removeChild(root.lastChild());
    document.adjustAttribute(fill, mark);
    QCOMPARE(savedValues(document, fill), QString());
    QCOMPARE(savedTree(document).documentElement().nodeName(), QStringLiteral("svg"));
}

void AdjustmentTest::tellsWhatItAdjusts()
{
    SvgDocument document(svgTitle(QStringLiteral(
            "<g fill=\"red\"><rect id=\"r\" fill=\"#00ff00\"/></g><rect fill=\"none\"/>")));
    const QString fill = QStringLiteral("fill");
    QCOMPARE(document.adjustableAttributes(fill).size(), std::size_t(0));

    document.prepareAdjustedAttibutes({fill, QStringLiteral("stroke")});
    document.adjustAttribute(fill, QStringLiteral("blue"));
    const auto attributes = document.adjustableAttributes(fill);
    QCOMPARE(attributes.size(), std::size_t(2));
    QCOMPARE(attributes[0]->defaultValue(), QStringLiteral("red"));
    QCOMPARE(attributes[1]->defaultValue(), QStringLiteral("#00ff00"));
    QCOMPARE(attributes[1]->svgId(), QStringLiteral("r"));
    QCOMPARE(document.adjustableAttributes(QStringLiteral("stroke")).size(), std::size_t(0));
    QCOMPARE(document.adjustableAttributes(QStringLiteral("color")).size(), std::size_t(0));
}

QTEST_MAIN(AdjustmentTest)

#include "tst_adjustment.moc"
