// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/AnimatableAttribute.h>
#include <Scene/SvgDocument.h>

#include <QDomDocument>

#include <limits>

// What the document makes of "animate" elements. The values that it writes into the tree tell.

namespace {

/// A shape with one animation of its attribute "a".
QString svgWithAnimate(const QString &attributes)
{
    return svgTitle(
            QStringLiteral("<rect id=\"r\" a=\"template\"><animate attributeName=\"a\" %1/></rect>")
                    .arg(attributes));
}

QString attributeAt(SvgDocument &document, int ms, const QString &name = QStringLiteral("a"))
{
    document.applyAnimation(ms);
    return savedTree(document)
            .elementsByTagName(QStringLiteral("rect"))
            .at(0)
            .toElement()
            .attribute(name);
}

} // namespace

class AnimationDetectionTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void choosesTheKindByASample_data();
    void choosesTheKindByASample();
    void keepsKeyValuesAsTheyAre_data();
    void keepsKeyValuesAsTheyAre();
    void readsTimes_data();
    void readsTimes();
    void givesBeginAndEndOfTexts_data();
    void givesBeginAndEndOfTexts();
    void readsRepeatCounts_data();
    void readsRepeatCounts();
    void readsFill_data();
    void readsFill();
    void readsCalcMode_data();
    void readsCalcMode();
    void countsTheLatestEnd_data();
    void countsTheLatestEnd();

    void skipsAnimationsWithoutAttributeName();
    void animatesTheParent();
    void animatesTheRoot();
    void countsAnAnimationThatIsTheRoot();
    void leavesOtherAnimationsToTheRenderer();
    void changesNothingInTheTree();
    void tellsWhatItFound();

    void parsesTheTextFirst();
    void readsRewrittenBegins();
    void readsTextWrittenLater();
    void appendsToWhatItFoundBefore();
    void readsNothingFromBrokenText();
};

/// A quarter of the way, where the four kinds write different things.
void AnimationDetectionTest::choosesTheKindByASample_data()
{
    QTest::addColumn<QString>("animate");
    QTest::addColumn<QString>("value");

    const auto row = [](const char *name, const char *animate, const char *value) {
        QTest::newRow(name) << QString::fromUtf8(animate) << QString::fromUtf8(value);
    };
    row("colour names", "values=\"red;blue\"", "#bf003f");
    row("colour by digits", "from=\"#000\" to=\"#ffffff\"", "#3f3f3f");
    row("a name that is also a word is a colour", "values=\"transparent;white\"", "#3f3f3f");
    row("colour names in any case", "values=\"RED;Blue\"", "#bf003f");
    row("colours are known by their first value", "values=\"red;no colour\"", "#bf0000");
    row("a word first makes texts of colours", "values=\"none;red;blue;lime\"", "red");
    row("colour notations with parentheses are number lists",
        "values=\"rgb(0,0,0);rgb(100,200,40)\"", "rgb(25.000,50.000,10.000)");

    row("numbers", "from=\"0\" to=\"1\"", "0.250");
    row("number with a fraction and a sign", "from=\"-1.5\" to=\"2.5\"", "-0.500");
    row("number with an exponent", "from=\"1e2\" to=\"2e2\"", "125.000");
    row("numbers are known by their first value", "values=\"4;8px\"", "3.000");
    row("a number in spaces", "values=\" 4 ; 8 \"", "5.000");
    row("nan counts as a number", "values=\"nan;1\"", "nan");

    row("words", "values=\"visible;hidden;none;inherit\"", "hidden");
    row("word at the end only", "to=\"hidden\"", "");
    row("letters beyond ASCII", "values=\"\xD0\xB4\xD0\xB0;\xD0\xBD\xD0\xB5\xD1\x82;x;y\"",
        "\xD0\xBD\xD0\xB5\xD1\x82");
    row("words are known by their first value", "values=\"auto;1;2;3\"", "1");
    row("an empty first value makes texts", "values=\";5;6;7\"", "5");
    row("a blank first value makes texts", "values=\"  ;5;6;7\"", "5");
    row("nothing at all makes texts", "", "");
    row("a blank from counts before the to", "from=\" \" to=\"8\"", "");

    row("unit", "from=\"0px\" to=\"10px\"", "2.500px");
    row("unit at the end only", "to=\"10px\"", "");
    row("several numbers", "values=\" 0 0 ; 10 20\"", "2.500 5.000");
    row("transformation", "values=\"translate(0, 4);translate(8, 8)\"", "translate(2.000, 5.000)");
    row("letters and digits", "values=\"a0;a8;a8;a8;a8\"", "a8.000");
    row("a hyphen is no letter", "values=\"ease-in;ease-out;x;y\"", "");
    row("a letter beyond ASCII and a sign", "values=\"\xD0\xB4!0;\xD0\xB4!4\"", "\xD0\xB4!1.000");

    row("from counts before to", "from=\"1\" to=\"red\"", "0.750");
    row("to when there is no from", "to=\"4\"", "1.000");
    row("to when from is empty", "from=\"\" to=\"4\"", "1.000");
    row("values count before from and to", "from=\"red\" to=\"blue\" values=\"0;4\"", "1.000");
    row("empty values do not count", "from=\"0\" to=\"4\" values=\"\"", "1.000");
}

void AnimationDetectionTest::choosesTheKindByASample()
{
    QFETCH(QString, animate);
    QFETCH(QString, value);
    SvgDocument document(svgWithAnimate(animate + QStringLiteral(" dur=\"1s\"")));
    QVERIFY(document.isLoaded());
    QCOMPARE(attributeAt(document, 250), value);
    QCOMPARE(attributeAt(document, 1000), QStringLiteral("template"));
}

void AnimationDetectionTest::keepsKeyValuesAsTheyAre_data()
{
    QTest::addColumn<QString>("animate");
    QTest::addColumn<QStringList>("values"); // at equal distances, the last at 6 s

    const auto row = [](const char *name, const char *animate, const char *values) {
        QTest::newRow(name) << QString::fromLatin1(animate)
                            << QString::fromLatin1(values).split(QLatin1Char('|'));
    };
    row("from and to", "from=\"1\" to=\"5\"", "1.000|5.000");
    row("to alone begins with an empty value", "to=\"5\"", "0.000|5.000");
    row("from alone ends with an empty value", "from=\"5\"", "5.000|0.000");
    row("values", "values=\"1;2;9\"", "1.000|2.000|9.000");
    row("empty values are kept", "values=\"1;;9;\"", "1.000|0.000|9.000|0.000");
    row("one value", "values=\"7\"", "7.000|7.000");
    row("values with spaces", "values=\" 0 1 ; 10 20 \"", "0.000 1.000|10.000 20.000");
    row("texts", "values=\"a; b ;;d\"", "a|b||d");
}

void AnimationDetectionTest::keepsKeyValuesAsTheyAre()
{
    QFETCH(QString, animate);
    QFETCH(QStringList, values);
    SvgDocument document(svgWithAnimate(animate + QStringLiteral(" dur=\"6s\" fill=\"freeze\"")));
    for (int i = 0; i < values.size(); ++i)
        QCOMPARE(attributeAt(document, 6000 * i / (values.size() - 1)), values.at(i));
}

void AnimationDetectionTest::readsTimes_data()
{
    QTest::addColumn<QString>("times");
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");

    const auto row = [](const char *name, const char *times, int begin, int end) {
        QTest::newRow(name) << QString::fromLatin1(times) << begin << end;
    };
    row("begin and duration", "begin=\"1s\" dur=\"2s\"", 1000, 3000);
    row("milliseconds and plain numbers", "begin=\"250ms\" dur=\"1.5\"", 250, 1750);
    row("no begin", "dur=\"2s\"", 0, 2000);
    row("negative begin", "begin=\"-1s\" dur=\"2s\"", -1000, 1000);
    row("spaces", "begin=\" 1s \" dur=\" 2s \"", 1000, 3000);
    row("unreadable begin", "begin=\"click\" dur=\"2s\"", 0, 2000);
    row("repetitions do not count", "begin=\"1s\" dur=\"2s\" repeatCount=\"3\"", 1000, 3000);
    row("endless repetition does not count", "begin=\"1s\" dur=\"2s\" repeatCount=\"indefinite\"",
        1000, 3000);
    row("an end does not count", "begin=\"1s\" dur=\"2s\" end=\"9s\"", 1000, 3000);
    row("reaching beyond int", "begin=\"2147483s\" dur=\"99s\"", 2147483000,
        std::numeric_limits<int>::max());
}

void AnimationDetectionTest::readsTimes()
{
    QFETCH(QString, times);
    QFETCH(int, begin);
    QFETCH(int, end);
    SvgDocument document(svgWithAnimate(QStringLiteral("values=\"on\" ") + times));
    QVERIFY(document.isLoaded());
    const QString still = QStringLiteral("template");
    const QString animated = QStringLiteral("on");
    QCOMPARE(attributeAt(document, begin - 1), still);
    QCOMPARE(attributeAt(document, begin), animated);
    QCOMPARE(attributeAt(document, end - 1), animated);
    QCOMPARE(attributeAt(document, end), still);

    int latestEnd = -1;
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(latestEnd, end);
    QCOMPARE(document.animationDurationTotal(), end);
}

void AnimationDetectionTest::givesBeginAndEndOfTexts_data()
{
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("dur");
    QTest::addColumn<int>("beginMs");
    QTest::addColumn<int>("endMs");

    const auto row = [](const char *name, const char *begin, const char *dur, int beginMs,
                        int endMs) {
        QTest::newRow(name) << QString::fromLatin1(begin) << QString::fromLatin1(dur) << beginMs
                            << endMs;
    };
    row("both readable", "1s", "500ms", 1000, 1500);
    row("unreadable begin", "x", "2s", 0, 2000);
    row("unreadable duration", "1s", "indefinite", 1000, 1000);
    row("nothing", "", "", 0, 0);
    row("negative", "-1s", "-2s", -1000, -3000);
    row("beyond int", "2147483s", "2147483s", 2147483000, std::numeric_limits<int>::max());
}

void AnimationDetectionTest::givesBeginAndEndOfTexts()
{
    QFETCH(QString, begin);
    QFETCH(QString, dur);
    QFETCH(int, beginMs);
    QFETCH(int, endMs);
    const SvgDocument document(svgWithAnimate(QString()));
    int readBegin = -1;
    int readEnd = -1;
    document.getBeginEndParams(begin, dur, readBegin, readEnd);
    QCOMPARE(readBegin, beginMs);
    QCOMPARE(readEnd, endMs);
}

/// Frozen, the value goes on through the cycles that there are.
void AnimationDetectionTest::readsRepeatCounts_data()
{
    QTest::addColumn<QString>("repeatCount");
    QTest::addColumn<QString>("atTwoAndAHalf");
    QTest::addColumn<QString>("atThree");
    QTest::addColumn<QString>("atFourAndAHalf");

    const auto row = [](const char *name, const char *repeatCount, const char *atTwoAndAHalf,
                        const char *atThree, const char *atFourAndAHalf) {
        QTest::newRow(name) << QString::fromLatin1(repeatCount)
                            << QString::fromLatin1(atTwoAndAHalf) << QString::fromLatin1(atThree)
                            << QString::fromLatin1(atFourAndAHalf);
    };
    const char *const once[] = {"8.000", "8.000", "8.000"};
    const char *const endless[] = {"4.000", "0.000", "4.000"};
    row("absent is 1", "", once[0], once[1], once[2]);
    row("empty is 1", "repeatCount=\"\"", once[0], once[1], once[2]);
    row("1", "repeatCount=\"1\"", once[0], once[1], once[2]);
    row("0 stays at the first value", "repeatCount=\"0\"", "0.000", "0.000", "0.000");
    row("3 ends at the first value", "repeatCount=\"3\"", "4.000", "0.000", "0.000");
    row("spaces", "repeatCount=\" 3 \"", "4.000", "0.000", "0.000");
    row("indefinite", "repeatCount=\"indefinite\"", endless[0], endless[1], endless[2]);
    row("negative is indefinite", "repeatCount=\"-1\"", endless[0], endless[1], endless[2]);
    row("a fraction is indefinite", "repeatCount=\"2.5\"", endless[0], endless[1], endless[2]);
    row("a whole number with decimals is indefinite", "repeatCount=\"1.0\"", endless[0], endless[1],
        endless[2]);
    row("a word is indefinite", "repeatCount=\"often\"", endless[0], endless[1], endless[2]);
    row("blank is indefinite", "repeatCount=\" \"", endless[0], endless[1], endless[2]);
    row("beyond int is indefinite", "repeatCount=\"9999999999\"", endless[0], endless[1],
        endless[2]);
}

void AnimationDetectionTest::readsRepeatCounts()
{
    QFETCH(QString, repeatCount);
    QFETCH(QString, atTwoAndAHalf);
    QFETCH(QString, atThree);
    QFETCH(QString, atFourAndAHalf);
    SvgDocument document(svgWithAnimate(
            QStringLiteral("from=\"0\" to=\"8\" dur=\"1s\" fill=\"freeze\" ") + repeatCount));
    QCOMPARE(attributeAt(document, 2500), atTwoAndAHalf);
    QCOMPARE(attributeAt(document, 3000), atThree);
    QCOMPARE(attributeAt(document, 4500), atFourAndAHalf);
}

void AnimationDetectionTest::readsFill_data()
{
    QTest::addColumn<QString>("fill");
    QTest::addColumn<bool>("freezes");
    QTest::newRow("freeze") << QStringLiteral("fill=\"freeze\"") << true;
    QTest::newRow("absent") << QString() << false;
    QTest::newRow("empty") << QStringLiteral("fill=\"\"") << false;
    QTest::newRow("remove") << QStringLiteral("fill=\"remove\"") << false;
    QTest::newRow("case-sensitive") << QStringLiteral("fill=\"Freeze\"") << false;
    QTest::newRow("not trimmed") << QStringLiteral("fill=\" freeze\"") << false;
}

void AnimationDetectionTest::readsFill()
{
    QFETCH(QString, fill);
    QFETCH(bool, freezes);
    SvgDocument document(svgWithAnimate(QStringLiteral("from=\"0\" to=\"8\" dur=\"1s\" ") + fill));
    QCOMPARE(attributeAt(document, 999999),
             freezes ? QStringLiteral("8.000") : QStringLiteral("template"));
    QCOMPARE(attributeAt(document, -1), QStringLiteral("template"));
}

void AnimationDetectionTest::readsCalcMode_data()
{
    QTest::addColumn<QString>("calcMode");
    QTest::addColumn<bool>("jumps");
    QTest::newRow("discrete") << QStringLiteral("calcMode=\"discrete\"") << true;
    QTest::newRow("absent") << QString() << false;
    QTest::newRow("empty") << QStringLiteral("calcMode=\"\"") << false;
    QTest::newRow("linear") << QStringLiteral("calcMode=\"linear\"") << false;
    QTest::newRow("paced") << QStringLiteral("calcMode=\"paced\"") << false;
    QTest::newRow("spline") << QStringLiteral("calcMode=\"spline\"") << false;
    QTest::newRow("case-sensitive") << QStringLiteral("calcMode=\"Discrete\"") << false;
    QTest::newRow("not trimmed") << QStringLiteral("calcMode=\"discrete \"") << false;
}

void AnimationDetectionTest::readsCalcMode()
{
    QFETCH(QString, calcMode);
    QFETCH(bool, jumps);
    SvgDocument document(
            svgWithAnimate(QStringLiteral("from=\"0\" to=\"8\" dur=\"1s\" ") + calcMode));
    QCOMPARE(attributeAt(document, 250), jumps ? QStringLiteral("0.000") : QStringLiteral("2.000"));
    QCOMPARE(attributeAt(document, 500), jumps ? QStringLiteral("0.000") : QStringLiteral("4.000"));
    QCOMPARE(attributeAt(document, 750), jumps ? QStringLiteral("8.000") : QStringLiteral("6.000"));
}

void AnimationDetectionTest::countsTheLatestEnd_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<int>("latestEnd");

    const auto row = [](const char *name, const char *content, int latestEnd) {
        QTest::newRow(name) << QString::fromLatin1(content) << latestEnd;
    };
    row("none", "<rect/>", 0);
    row("one", "<rect><animate attributeName=\"a\" begin=\"1s\" dur=\"2s\"/></rect>", 3000);
    row("the latest, not the last",
        "<rect><animate attributeName=\"a\" begin=\"1s\" dur=\"8s\"/>"
        "<animate attributeName=\"b\" begin=\"5s\" dur=\"2s\"/></rect>",
        9000);
    row("no duration", "<rect><animate attributeName=\"a\" begin=\"4s\"/></rect>", 4000);
    row("indefinite duration",
        "<rect><animate attributeName=\"a\" begin=\"4s\" dur=\"indefinite\"/></rect>", 4000);
    row("all before 0", "<rect><animate attributeName=\"a\" begin=\"-4s\" dur=\"2s\"/></rect>", 0);
    row("without attribute name", "<rect><animate begin=\"1s\" dur=\"2s\"/></rect>", 0);
    row("with an empty attribute name",
        "<rect><animate attributeName=\"\" begin=\"1s\" dur=\"2s\"/></rect>", 3000);
    row("the name of the attribute is case-sensitive",
        "<rect><animate attributename=\"a\" begin=\"1s\" dur=\"2s\"/></rect>", 0);
    row("other animations",
        "<g><animateMotion dur=\"5s\"/><set attributeName=\"a\" to=\"1\" dur=\"5s\"/></g>", 0);
}

void AnimationDetectionTest::countsTheLatestEnd()
{
    QFETCH(QString, content);
    QFETCH(int, latestEnd);
    SvgDocument document(svgTitle(content));
    QVERIFY(document.isLoaded());
    QCOMPARE(document.animationDurationTotal(), latestEnd);
    int end = -1;
    document.detectAnimatableAttibutes(end);
    QCOMPARE(end, latestEnd);
}

void AnimationDetectionTest::skipsAnimationsWithoutAttributeName()
{
    const QString text =
            svgTitle(QStringLiteral("<rect id=\"r\"><animate from=\"0\" to=\"8\" dur=\"1s\"/>"
                                    "<animate name=\"a\" to=\"8\" dur=\"1s\"/></rect>"));
    SvgDocument document(text);
    QCOMPARE(document.animationDurationTotal(), 0);
    document.applyAnimation(500);
    QCOMPARE(document.data(), text.toUtf8());
}

void AnimationDetectionTest::animatesTheParent()
{
    // Whatever else it refers to.
    SvgDocument document(
            svgTitle(QStringLiteral("<circle id=\"c\" a=\"template\"/><rect id=\"r\"><g id=\"g\">"
                                    "<animate xlink:href=\"#c\" href=\"#c\" targetElement=\"c\""
                                    " attributeName=\"a\" to=\"8\" dur=\"1s\"/></g></rect>")));
    document.applyAnimation(500);
    const QDomDocument tree = savedTree(document);
    const auto value = [&tree](const char *tag) {
        return tree.elementsByTagName(QLatin1String(tag))
                .at(0)
                .toElement()
                .attribute(QStringLiteral("a"));
    };
    QCOMPARE(value("g"), QStringLiteral("4.000"));
    QCOMPARE(value("circle"), QStringLiteral("template"));
    QCOMPARE(value("rect"), QString());
    QCOMPARE(value("animate"), QString());
}

void AnimationDetectionTest::animatesTheRoot()
{
    SvgDocument document(svgTitle(QStringLiteral("<rect/><animate attributeName=\"a\" to=\"8\""
                                                 " dur=\"1s\"/>")));
    document.applyAnimation(500);
    QCOMPARE(savedTree(document).documentElement().attribute(QStringLiteral("a")),
             QStringLiteral("4.000"));
    document.applyAnimation(1000);
    QVERIFY(!savedTree(document).documentElement().hasAttribute(QStringLiteral("a")));
}

/// It is no title and shows nothing, but an "animate" element all the same.
void AnimationDetectionTest::countsAnAnimationThatIsTheRoot()
{
    SvgDocument document(QStringLiteral("<animate attributeName=\"a\" to=\"8\" dur=\"2s\"/>"));
    int latestEnd = 0;
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(latestEnd, 2000);
    QCOMPARE(document.animations().size(), std::size_t(1));
    QCOMPARE(document.animations().front()->location(), std::vector<int>{0});
}

void AnimationDetectionTest::leavesOtherAnimationsToTheRenderer()
{
    SvgDocument document(svgTitle(
            QStringLiteral("<rect id=\"r\"><animate attributeName=\"a\" to=\"8\" dur=\"1s\"/>"
                           "<animateColor attributeName=\"b\" from=\"red\" to=\"blue\""
                           " dur=\"1s\"/><animateTransform attributeName=\"c\" type=\"rotate\""
                           " from=\"0\" to=\"8\" dur=\"1s\"/><animateMotion attributeName=\"d\""
                           " to=\"8\" dur=\"1s\"/><set attributeName=\"e\" to=\"8\" dur=\"1s\"/>"
                           "<Animate attributeName=\"f\" to=\"8\" dur=\"1s\"/></rect>")));
    document.applyAnimation(500);
    const QDomElement rect =
            savedTree(document).elementsByTagName(QStringLiteral("rect")).at(0).toElement();
    QCOMPARE(rect.attribute(QStringLiteral("a")), QStringLiteral("4.000"));
    QCOMPARE(rect.attributes().count(), 2);
}

void AnimationDetectionTest::changesNothingInTheTree()
{
    const QString text = svgWithAnimate(QStringLiteral("to=\"8\" dur=\"1s\""));
    SvgDocument document(text);
    QCOMPARE(document.data(), text.toUtf8());
    int latestEnd = 0;
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(document.data(), text.toUtf8());
    QCOMPARE(document.documentRoot().firstChild().childNodes().count(), 1);
}

void AnimationDetectionTest::parsesTheTextFirst()
{
    SvgDocument document(svgWithAnimate(QStringLiteral("to=\"8\" dur=\"1s\"")));
    QDomElement animate = document.documentRoot().firstChild().firstChildElement();
    animate.setAttribute(QStringLiteral("dur"), QStringLiteral("5s"));
    int latestEnd = 0;
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(latestEnd, 1000);

    animate = document.documentRoot().firstChild().firstChildElement();
    QCOMPARE(animate.attribute(QStringLiteral("dur")), QStringLiteral("1s"));
    animate.setAttribute(QStringLiteral("dur"), QStringLiteral("5s"));
    document.saveToBuffer();
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(latestEnd, 5000);
    QCOMPARE(document.animationDurationTotal(), 1000);
}

void AnimationDetectionTest::readsRewrittenBegins()
{
    SvgDocument document(svgTitle(
            QStringLiteral("<rect a=\"template\"><animate attributeName=\"a\" values=\"on\""
                           " begin=\"intro.end+1s\" dur=\"2s\"/><animate id=\"intro\""
                           " attributeName=\"b\" to=\"1\" dur=\"4s\"/></rect>")));
    QCOMPARE(document.animationDurationTotal(), 7000);
    QCOMPARE(attributeAt(document, 4999), QStringLiteral("template"));
    QCOMPARE(attributeAt(document, 5000), QStringLiteral("on"));
}

void AnimationDetectionTest::readsTextWrittenLater()
{
    SvgDocument document(svgTitle(QStringLiteral("<rect/>")));
    document.seek(0);
    document.write(svgWithAnimate(QStringLiteral("to=\"8\" dur=\"3s\"")).toUtf8());
    int latestEnd = 0;
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(latestEnd, 3000);
    QCOMPARE(attributeAt(document, 1500), QStringLiteral("4.000"));
}

void AnimationDetectionTest::appendsToWhatItFoundBefore()
{
    SvgDocument document(svgWithAnimate(QStringLiteral("from=\"0\" to=\"8\" dur=\"1s\"")));
    document.seek(0);
    document.write(
            svgTitle(QStringLiteral("<rect a=\"later\"><animate attributeName=\"a\" from=\"100\""
                                    " to=\"108\" begin=\"500ms\" dur=\"1s\"/></rect>"))
                    .toUtf8());
    int latestEnd = 0;
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(latestEnd, 1500);
    QCOMPARE(attributeAt(document, 250), QStringLiteral("2.000"));
    QCOMPARE(attributeAt(document, 750), QStringLiteral("102.000"));
    QCOMPARE(attributeAt(document, 1500), QStringLiteral("later"));
}

void AnimationDetectionTest::readsNothingFromBrokenText()
{
    SvgDocument document(
            QStringLiteral("<svg><rect><animate attributeName=\"a\" to=\"8\" dur=\"1s\"/></rect>"));
    int latestEnd = -1;
    document.detectAnimatableAttibutes(latestEnd);
    QCOMPARE(latestEnd, 0);
    QCOMPARE(document.animationDurationTotal(), 0);
}

void AnimationDetectionTest::tellsWhatItFound()
{
    const SvgDocument document(svgTitle(QStringLiteral(
            "<rect id=\"r\"><animate attributeName=\"x\" values=\"0;1;2\" begin=\"b.end+1s\""
            " dur=\"2s\" repeatCount=\"3\" fill=\"freeze\"/></rect><g><animate id=\"b\""
            " attributeName=\"transform\" from=\"scale(1)\" to=\"scale(1 2)\" dur=\"500ms\""
            " repeatCount=\"indefinite\" calcMode=\"discrete\"/></g><g><animate/></g>")));
    const auto animations = document.animations();
    QCOMPARE(animations.size(), std::size_t(2));

    const AnimatableAttribute &first = *animations[0];
    QCOMPARE(first.svgId(), QStringLiteral("r"));
    QCOMPARE(first.attributeName(), QStringLiteral("x"));
    QCOMPARE(first.beginTime(), 1500);
    QCOMPARE(first.endTime(), 3500);
    QCOMPARE(first.repeatCount(), 3);
    QCOMPARE(first.isFrozen(), true);
    QCOMPARE(first.calcMode(), AnimatableAttribute::Linear);
    QCOMPARE(first.valueCount(), 3);

    const AnimatableAttribute &second = *animations[1];
    QCOMPARE(second.beginTime(), 0);
    QCOMPARE(second.endTime(), 500);
    QVERIFY(second.repeatCount() < 0);
    QCOMPARE(second.isFrozen(), false);
    QCOMPARE(second.calcMode(), AnimatableAttribute::Discrete);
    QCOMPARE(second.valueCount(), 0); // the numbers don't match
    QCOMPARE(SvgDocument(svgTitle(QString())).animations().size(), std::size_t(0));
}

QTEST_MAIN(AnimationDetectionTest)

#include "tst_animationdetection.moc"
