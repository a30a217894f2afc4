// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/AnimatableAttributeColor.h>
#include <Scene/AnimatableAttributeFloat.h>
#include <Scene/AnimatableAttributeFloatList.h>
#include <Scene/AnimatableAttributeText.h>

#include <QDomDocument>
#include <QRandomGenerator>

#include <array>
#include <limits>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr auto Linear = AnimatableAttribute::Linear;
constexpr auto Discrete = AnimatableAttribute::Discrete;

/// An element to animate an attribute of.
class Target
{
public:
    Target()
    {
        m_document.appendChild(m_document.createElement(QStringLiteral("svg")));
        m_element = m_document.createElement(QStringLiteral("rect"));
        root().appendChild(m_element);
        m_element.setAttribute(attributeName(), QStringLiteral("default"));
    }

    QDomElement root() const { return m_document.documentElement(); }
    QDomElement element() const { return m_element; }
    QString value() const { return m_element.attribute(attributeName()); }
    static QString attributeName() { return QStringLiteral("x"); }

private:
    QDomDocument m_document;
    QDomElement m_element;
};

QStringList split(const QString &keyValues)
{
    return keyValues.split(QLatin1Char('|'));
}

/// A value kind with key values "a|b|c", from 0 to 1000 ms, frozen.
template <typename Kind>
Kind made(const Target &target, const QString &keyValues,
          AnimatableAttribute::CalcModes mode = Linear, int repeatCount = 1)
{
    Kind kind(target.element(), target.root(), Target::attributeName(), split(keyValues));
    kind.setParams(0, 1000, repeatCount, true, mode);
    return kind;
}

template <typename Kind>
QString valueAt(int time, const QString &keyValues, AnimatableAttribute::CalcModes mode = Linear,
                int repeatCount = 1)
{
    return made<Kind>(Target(), keyValues, mode, repeatCount).valueForTime(time);
}

/// One animation of each kind.
struct AllKinds
{
    AllKinds(const Target &target, const QStringList &colors, const QStringList &numbers,
             const QStringList &texts, const QStringList &lists)
        : color(target.element(), target.root(), Target::attributeName(), colors),
          number(target.element(), target.root(), Target::attributeName(), numbers),
          text(target.element(), target.root(), Target::attributeName(), texts),
          list(target.element(), target.root(), Target::attributeName(), lists)
    {
    }

    std::array<AnimatableAttribute *, 4> all() { return {&color, &number, &text, &list}; }

    void setParams(int begin, int end, int repeatCount, AnimatableAttribute::CalcModes mode)
    {
        for (AnimatableAttribute *kind : all())
            kind->setParams(begin, end, repeatCount, true, mode);
    }

    AnimatableAttributeColor color;
    AnimatableAttributeFloat number;
    AnimatableAttributeText text;
    AnimatableAttributeFloatList list;
};

AllKinds withThreeKeyValues(const Target &target)
{
    return AllKinds(target, split(QStringLiteral("black|red|white")),
                    split(QStringLiteral("1|2|3")), split(QStringLiteral("a|b|c")),
                    split(QStringLiteral("(1)|(2)|(3)")));
}

/// The last key value that the timing arithmetic knows of.
int lastIndex(const AnimatableAttribute &attribute)
{
    int index = 0;
    int nextIndex = 0;
    double fraction = 0.0;
    attribute.calculateValues(attribute.endTime(), index, nextIndex, fraction);
    return nextIndex;
}

} // namespace

class ValueKindsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void numbers_data();
    void numbers();
    void colors_data();
    void colors();
    void colorsTakeEveryChannelTheirWay();
    void texts_data();
    void texts();
    void textsInSlicesOfTheirOwn_data();
    void textsInSlicesOfTheirOwn();
    void numberLists_data();
    void numberLists();
    void numberListsThatCanNotBeInterpolated_data();
    void numberListsThatCanNotBeInterpolated();
    void discrete_data();
    void discrete();
    void repetition_data();
    void repetition();
    void everyKeyValueCounts();
    void withoutDuration_data();
    void withoutDuration();
    void withoutKeyValues_data();
    void withoutKeyValues();
    void everyKindIsWrittenAndRestored_data();
    void everyKindIsWrittenAndRestored();
    void knownPlace();
    void askingChangesNothing();
    void anyTimeOfAnyTimingHasAValue();
};

void ValueKindsTest::numbers_data()
{
    QTest::addColumn<QString>("keyValues");
    QTest::addColumn<int>("time");
    QTest::addColumn<QString>("value");

    QTest::newRow("begin") << QStringLiteral("0|1") << 0 << QStringLiteral("0.000");
    QTest::newRow("quarter") << QStringLiteral("0|1") << 250 << QStringLiteral("0.250");
    QTest::newRow("end") << QStringLiteral("0|1") << 1000 << QStringLiteral("1.000");
    QTest::newRow("frozen") << QStringLiteral("0|1") << 5000 << QStringLiteral("1.000");
    QTest::newRow("before the begin") << QStringLiteral("3|1") << -200 << QStringLiteral("3.000");
    QTest::newRow("always three decimals")
            << QStringLiteral("12|12") << 500 << QStringLiteral("12.000");
    QTest::newRow("negative") << QStringLiteral("-3|-3.5") << 500 << QStringLiteral("-3.250");
    QTest::newRow("through 0") << QStringLiteral("-1|1") << 500 << QStringLiteral("0.000");
    QTest::newRow("rounded") << QStringLiteral("0|0.001") << 600 << QStringLiteral("0.001");
    QTest::newRow("large, no exponent")
            << QStringLiteral("0|2e9") << 500 << QStringLiteral("1000000000.000");
    QTest::newRow("three values, first half")
            << QStringLiteral("0|10|30") << 250 << QStringLiteral("5.000");
    QTest::newRow("three values, middle")
            << QStringLiteral("0|10|30") << 500 << QStringLiteral("10.000");
    QTest::newRow("three values, second half")
            << QStringLiteral("0|10|30") << 750 << QStringLiteral("20.000");
    QTest::newRow("three values, end")
            << QStringLiteral("0|10|30") << 1000 << QStringLiteral("30.000");
    QTest::newRow("one value") << QStringLiteral("7") << 300 << QStringLiteral("7.000");
    QTest::newRow("spaces around") << QStringLiteral(" 5 |\t5\n") << 500 << QStringLiteral("5.000");
    QTest::newRow("a unit makes it 0")
            << QStringLiteral("5px|5px") << 500 << QStringLiteral("0.000");
    QTest::newRow("a unit makes this one 0")
            << QStringLiteral("5px|4") << 500 << QStringLiteral("2.000");
    QTest::newRow("percent makes it 0")
            << QStringLiteral("50%|50%") << 500 << QStringLiteral("0.000");
    QTest::newRow("empty is 0") << QStringLiteral("|4") << 500 << QStringLiteral("2.000");
    QTest::newRow("empty at the end is 0")
            << QStringLiteral("4|") << 1000 << QStringLiteral("0.000");
    QTest::newRow("all empty") << QStringLiteral("|") << 500 << QStringLiteral("0.000");
    QTest::newRow("letters are 0") << QStringLiteral("abc|4") << 0 << QStringLiteral("0.000");
    QTest::newRow("exponents are understood")
            << QStringLiteral("1e1|3E1") << 500 << QStringLiteral("20.000");
    QTest::newRow("decimal comma is 0")
            << QStringLiteral("1,5|1,5") << 500 << QStringLiteral("0.000");
    QTest::newRow("Arabic-Indic digits are 0")
            << QStringLiteral("\u0665|\u0665") << 500 << QStringLiteral("0.000");
}

void ValueKindsTest::numbers()
{
    QFETCH(QString, keyValues);
    QFETCH(int, time);
    QFETCH(QString, value);
    QCOMPARE(valueAt<AnimatableAttributeFloat>(time, keyValues), value);
}

void ValueKindsTest::colors_data()
{
    QTest::addColumn<QString>("keyValues");
    QTest::addColumn<int>("time");
    QTest::addColumn<QString>("value");

    QTest::newRow("begin") << QStringLiteral("#000000|#ffffff") << 0 << QStringLiteral("#000000");
    QTest::newRow("half upwards is truncated")
            << QStringLiteral("#000000|#ffffff") << 500 << QStringLiteral("#7f7f7f");
    QTest::newRow("half downwards is truncated")
            << QStringLiteral("#ffffff|#000000") << 500 << QStringLiteral("#7f7f7f");
    QTest::newRow("nearly the end is truncated")
            << QStringLiteral("#000000|#ffffff") << 999 << QStringLiteral("#fefefe");
    QTest::newRow("nearly the end downwards is truncated")
            << QStringLiteral("#ffffff|#000000") << 999 << QStringLiteral("#000000");
    QTest::newRow("end") << QStringLiteral("#000000|#ffffff") << 1000 << QStringLiteral("#ffffff");
    QTest::newRow("frozen") << QStringLiteral("#000000|#abcdef") << 9000
                            << QStringLiteral("#abcdef");
    QTest::newRow("before the begin")
            << QStringLiteral("#123456|#ffffff") << -1 << QStringLiteral("#123456");
    QTest::newRow("lower case") << QStringLiteral("#ABCDEF|#ABCDEF") << 500
                                << QStringLiteral("#abcdef");
    QTest::newRow("channels of their own")
            << QStringLiteral("#00ff10|#ff0030") << 500 << QStringLiteral("#7f7f20");
    QTest::newRow("short notation")
            << QStringLiteral("#f80|#f80") << 500 << QStringLiteral("#ff8800");
    QTest::newRow("keywords") << QStringLiteral("red|blue") << 500 << QStringLiteral("#7f007f");
    QTest::newRow("keyword in another case")
            << QStringLiteral("Red|RED") << 500 << QStringLiteral("#ff0000");
    QTest::newRow("spaces around")
            << QStringLiteral(" red |\tblue\n") << 500 << QStringLiteral("#7f007f");
    QTest::newRow("three colours, middle")
            << QStringLiteral("red|lime|blue") << 500 << QStringLiteral("#00ff00");
    QTest::newRow("three colours, second half")
            << QStringLiteral("red|lime|blue") << 750 << QStringLiteral("#007f7f");
    QTest::newRow("three colours, end")
            << QStringLiteral("red|lime|blue") << 1000 << QStringLiteral("#0000ff");
    QTest::newRow("one colour") << QStringLiteral("teal") << 300 << QStringLiteral("#008080");
    QTest::newRow("the alpha is lost")
            << QStringLiteral("#80ff0000|#80ff0000") << 500 << QStringLiteral("#ff0000");
    QTest::newRow("different alphas are lost")
            << QStringLiteral("#00ff0000|#ff0000ff") << 500 << QStringLiteral("#7f007f");
    QTest::newRow("transparent is black")
            << QStringLiteral("transparent|#ffffff") << 500 << QStringLiteral("#7f7f7f");
    QTest::newRow("invalid is black")
            << QStringLiteral("no colour|no colour") << 500 << QStringLiteral("#000000");
    QTest::newRow("invalid is interpolated")
            << QStringLiteral("#12|#ffffff") << 500 << QStringLiteral("#7f7f7f");
    QTest::newRow("invalid at the end")
            << QStringLiteral("#ffffff|none") << 1000 << QStringLiteral("#000000");
    QTest::newRow("empty is black")
            << QStringLiteral("|#ffffff") << 500 << QStringLiteral("#7f7f7f");
    QTest::newRow("a function is no colour")
            << QStringLiteral("rgb(255,0,0)|rgb(255,0,0)") << 500 << QStringLiteral("#000000");
    QTest::newRow("invalid ones keep their places")
            << QStringLiteral("#ffffff|bad|#ffffff") << 500 << QStringLiteral("#000000");
}

void ValueKindsTest::colors()
{
    QFETCH(QString, keyValues);
    QFETCH(int, time);
    QFETCH(QString, value);
    QCOMPARE(valueAt<AnimatableAttributeColor>(time, keyValues), value);
}

void ValueKindsTest::colorsTakeEveryChannelTheirWay()
{
    const Target target;
    const auto color = made<AnimatableAttributeColor>(target, QStringLiteral("#0a64ff|#fa0000"));
    for (int time = 0; time <= 1000; ++time) {
        const double fraction = double(time) / 1000.0;
        const QColor expected(int(double(0xfa - 0x0a) * fraction + 0x0a),
                              int(double(0x00 - 0x64) * fraction + 0x64),
                              int(double(0x00 - 0xff) * fraction + 0xff));
        QCOMPARE(color.valueForTime(time), expected.name());
    }
}

void ValueKindsTest::texts_data()
{
    QTest::addColumn<QString>("keyValues");
    QTest::addColumn<int>("time");
    QTest::addColumn<QString>("value");

    const QString three = QStringLiteral("a|b|c");
    QTest::newRow("before the begin") << three << -5 << QStringLiteral("a");
    QTest::newRow("begin") << three << 0 << QStringLiteral("a");
    QTest::newRow("end of the first slice") << three << 333 << QStringLiteral("a");
    QTest::newRow("second slice") << three << 334 << QStringLiteral("b");
    QTest::newRow("end of the second slice") << three << 666 << QStringLiteral("b");
    QTest::newRow("last slice") << three << 667 << QStringLiteral("c");
    QTest::newRow("end of the last slice") << three << 999 << QStringLiteral("c");
    QTest::newRow("end") << three << 1000 << QStringLiteral("c");
    QTest::newRow("frozen") << three << 90000 << QStringLiteral("c");
    QTest::newRow("two texts change half-way")
            << QStringLiteral("hidden|visible") << 500 << QStringLiteral("visible");
    QTest::newRow("two texts just before")
            << QStringLiteral("hidden|visible") << 499 << QStringLiteral("hidden");
    QTest::newRow("one text") << QStringLiteral("visible") << 999 << QStringLiteral("visible");
    QTest::newRow("spaces around are left out")
            << QStringLiteral("\n a |b") << 0 << QStringLiteral("a");
    QTest::newRow("spaces inside stay")
            << QStringLiteral(" a  b |c") << 0 << QStringLiteral("a  b");
    QTest::newRow("empty text") << QStringLiteral("|visible") << 0 << QString();
    QTest::newRow("empty texts keep their places") << QStringLiteral("a||c") << 500 << QString();
    QTest::newRow("nothing is read into it")
            << QStringLiteral("1e3|#FFF") << 999 << QStringLiteral("#FFF");
}

void ValueKindsTest::texts()
{
    QFETCH(QString, keyValues);
    QFETCH(int, time);
    QFETCH(QString, value);
    QCOMPARE(valueAt<AnimatableAttributeText>(time, keyValues), value);
    // Text steps whatever the calculation mode is.
    QCOMPARE(valueAt<AnimatableAttributeText>(time, keyValues, Discrete), value);
}

void ValueKindsTest::textsInSlicesOfTheirOwn_data()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<QString>("value");

    QTest::newRow("100") << 100 << QStringLiteral("a");
    QTest::newRow("299") << 299 << QStringLiteral("a");
    QTest::newRow("300") << 300 << QStringLiteral("b");
    QTest::newRow("400") << 400 << QStringLiteral("b");
    QTest::newRow("599") << 599 << QStringLiteral("b");
    QTest::newRow("600") << 600 << QStringLiteral("c");
    QTest::newRow("700") << 700 << QStringLiteral("c");
    QTest::newRow("900") << 900 << QStringLiteral("c");
}

void ValueKindsTest::textsInSlicesOfTheirOwn()
{
    QFETCH(int, time);
    QFETCH(QString, value);
    const Target target;
    auto text = made<AnimatableAttributeText>(target, QStringLiteral("a|b|c"));
    text.setParams(0, 900, 1, true, Linear);
    QCOMPARE(text.valueForTime(time), value);
}

void ValueKindsTest::numberLists_data()
{
    QTest::addColumn<QString>("keyValues");
    QTest::addColumn<int>("time");
    QTest::addColumn<QString>("value");

    QTest::newRow("translation") << QStringLiteral("translate(10, 20)|translate(30, 40)") << 500
                                 << QStringLiteral("translate(20.000, 30.000)");
    QTest::newRow("rotation") << QStringLiteral("rotate(0 50 50)|rotate(360 50 50)") << 500
                              << QStringLiteral("rotate(180.000 50.000 50.000)");
    QTest::newRow("view box") << QStringLiteral("0 0 100 50|10 20 0 0") << 500
                              << QStringLiteral("5.000 10.000 50.000 25.000");
    QTest::newRow("begin") << QStringLiteral("0 0 100 50|1 1 1 1") << 0
                           << QStringLiteral("0.000 0.000 100.000 50.000");
    QTest::newRow("end") << QStringLiteral("0 0|1 2") << 1000 << QStringLiteral("1.000 2.000");
    QTest::newRow("frozen") << QStringLiteral("0 0|1 2") << 7000 << QStringLiteral("1.000 2.000");
    QTest::newRow("before the begin")
            << QStringLiteral("0 0|1 2") << -1 << QStringLiteral("0.000 0.000");
    QTest::newRow("three key values, second half")
            << QStringLiteral("0,0|10,20|30,60") << 750 << QStringLiteral("20.000,40.000");
    QTest::newRow("one key value")
            << QStringLiteral("M0 0L5 5") << 300 << QStringLiteral("M0.000 0.000L5.000 5.000");
    QTest::newRow("the first key value's separators are used")
            << QStringLiteral("a(1, 2)b|x[3;;4]y") << 1000 << QStringLiteral("a(3.000, 4.000)b");
    QTest::newRow("unit after") << QStringLiteral("10px|20px") << 500 << QStringLiteral("15.000px");
    QTest::newRow("number after the separator")
            << QStringLiteral("x10|x20") << 500 << QStringLiteral("x15.000");
    QTest::newRow("separators on both sides")
            << QStringLiteral("(10)|(20)") << 500 << QStringLiteral("(15.000)");
    QTest::newRow("number on both sides")
            << QStringLiteral("10 20|30 40") << 500 << QStringLiteral("20.000 30.000");
    QTest::newRow("spaces around")
            << QStringLiteral("  1 2\n|\t3 4  ") << 500 << QStringLiteral("2.000 3.000");
    QTest::newRow("long separators")
            << QStringLiteral("1 ,  2|3,4") << 500 << QStringLiteral("2.000 ,  3.000");
    QTest::newRow("negative numbers")
            << QStringLiteral("-1 -2|-3 2") << 500 << QStringLiteral("-2.000 0.000");
    QTest::newRow("bare points") << QStringLiteral(".5 1.|.5 1.") << 500
                                 << QStringLiteral("0.500 1.000");
    QTest::newRow("plus is a separator")
            << QStringLiteral("+1 +2|+3 +4") << 500 << QStringLiteral("+2.000 +3.000");
    QTest::newRow("an exponent is a separator and a number")
            << QStringLiteral("scale(1e3 2)|scale(1e3 2)") << 500
            << QStringLiteral("scale(1.000e3.000 2.000)");
    QTest::newRow("exponents are interpolated as numbers")
            << QStringLiteral("scale(1e3 2)|scale(3e5 4)") << 500
            << QStringLiteral("scale(2.000e4.000 3.000)");
    QTest::newRow("a bracket after a later key value")
            << QStringLiteral("a 1|a 2)") << 1000 << QStringLiteral("a 2.000");
    QTest::newRow("trailing separators")
            << QStringLiteral("1,2,|3,4,") << 500 << QStringLiteral("2.000,3.000,");
    QTest::newRow("leading separators")
            << QStringLiteral(",,1,2|,,3,4") << 500 << QStringLiteral(",,2.000,3.000");
    QTest::newRow("later trailing separators do not matter")
            << QStringLiteral("1,2|3,4,") << 500 << QStringLiteral("2.000,3.000");
    QTest::newRow("later leading separators do not matter")
            << QStringLiteral("1,2|,3,4") << 500 << QStringLiteral("2.000,3.000");
    QTest::newRow("no number anywhere")
            << QStringLiteral("none!|all!") << 500 << QStringLiteral("none!");
    QTest::newRow("not a decimal digit")
            << QStringLiteral("x\u00b2 1|y\u00b3 3") << 500 << QStringLiteral("x\u00b2 2.000");
    QTest::newRow("emoji") << QStringLiteral("\U0001F600 1|\U0001F601 3") << 500
                           << QStringLiteral("\U0001F600 2.000");

    const QString zeros = QString(300, QLatin1Char('0'));
    QTest::newRow("first empty: a template without numbers")
            << QStringLiteral("|abc") << 500 << QString();
    QTest::newRow("all empty") << QStringLiteral("||") << 500 << QString();
    QTest::newRow("all spaces") << QStringLiteral("  | ") << 500 << QString();
    // The digit that closes the last run of a text without numbers is the only one.
    QTest::newRow("first empty, then a number alone") << QStringLiteral("|5") << 1000 << QString();
    QTest::newRow("huge numbers") << QStringLiteral("1%1,1%1|1%1,1%1").arg(zeros) << 0
                                  << QStringLiteral("%1,%1").arg(QString::number(1e300, 'f', 3));
}

void ValueKindsTest::numberLists()
{
    QFETCH(QString, keyValues);
    QFETCH(int, time);
    QFETCH(QString, value);
    QCOMPARE(valueAt<AnimatableAttributeFloatList>(time, keyValues), value);
}

void ValueKindsTest::numberListsThatCanNotBeInterpolated_data()
{
    QTest::addColumn<QString>("keyValues");

    QTest::newRow("different lengths") << QStringLiteral("10,20|30");
    QTest::newRow("longer at the end") << QStringLiteral("10|20,30");
    QTest::newRow("one in the middle differs") << QStringLiteral("1,2|3,4,5|6,7");
    QTest::newRow("only the last differs") << QStringLiteral("1,2|3,4|5");
    QTest::newRow("no number at the end") << QStringLiteral("10,20|none");
    QTest::newRow("empty at the end") << QStringLiteral("10,20|");
    QTest::newRow("first empty, then numbers") << QStringLiteral("|translate(1, 2)");
    QTest::newRow("10-5 first") << QStringLiteral("10-5|10-5");
    QTest::newRow("1.2.3 first") << QStringLiteral("1.2.3|1.2.3");
    QTest::newRow("--5 first") << QStringLiteral("--5|--5");
    QTest::newRow("10-5 later") << QStringLiteral("10 5|10-5");
    QTest::newRow("unreadable after as many numbers as the others have")
            << QStringLiteral("1 2|1 2 3-4");
    QTest::newRow("unreadable in a list of one") << QStringLiteral("m 1-1");
    QTest::newRow("lone minus") << QStringLiteral("a - b|a - b");
    QTest::newRow("lone point") << QStringLiteral("a.b|a.b");
    QTest::newRow("Arabic-Indic digits") << QStringLiteral("a \u0661|a \u0662");
    QTest::newRow("too many digits for a double")
            << QStringLiteral("%1,1|%1,1").arg(QString(400, QLatin1Char('9')));
    // The first key value's end decides how the last run of each is closed.
    QTest::newRow("a later end without its bracket") << QStringLiteral("rotate(0)|rotate(5");
    QTest::newRow("a later end without its unit") << QStringLiteral("1px 2px|3px 4");
}

void ValueKindsTest::numberListsThatCanNotBeInterpolated()
{
    QFETCH(QString, keyValues);
    const Target target;
    const auto list = made<AnimatableAttributeFloatList>(target, keyValues);
    for (const int time : {lowest, -1, 0, 1, 500, 999, 1000, 5000, highest})
        QCOMPARE(list.valueForTime(time), QString());
    QCOMPARE(lastIndex(list), 0);

    // The attribute gets an empty text, it is not left as it is.
    list.apply(target.root(), 500);
    QVERIFY(target.element().hasAttribute(Target::attributeName()));
    QCOMPARE(target.value(), QString());
}

void ValueKindsTest::discrete_data()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<QString>("color");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("list");

    const QString firstColor = QStringLiteral("#ff0000");
    const QString lastColor = QStringLiteral("#0000ff");
    const QString firstList = QStringLiteral("(1.000 5.000)");
    const QString lastList = QStringLiteral("(3.000 9.000)");
    QTest::newRow("begin") << 0 << firstColor << QStringLiteral("1.000") << firstList;
    QTest::newRow("499") << 499 << firstColor << QStringLiteral("1.000") << firstList;
    QTest::newRow("exactly half") << 500 << firstColor << QStringLiteral("1.000") << firstList;
    QTest::newRow("501") << 501 << lastColor << QStringLiteral("3.000") << lastList;
    QTest::newRow("end") << 1000 << lastColor << QStringLiteral("3.000") << lastList;
    QTest::newRow("frozen") << 8000 << lastColor << QStringLiteral("3.000") << lastList;
}

void ValueKindsTest::discrete()
{
    QFETCH(int, time);
    QFETCH(QString, color);
    QFETCH(QString, number);
    QFETCH(QString, list);
    QCOMPARE(valueAt<AnimatableAttributeColor>(time, QStringLiteral("red|blue"), Discrete), color);
    QCOMPARE(valueAt<AnimatableAttributeFloat>(time, QStringLiteral("1|3"), Discrete), number);
    QCOMPARE(valueAt<AnimatableAttributeFloatList>(time, QStringLiteral("(1 5)|(3 9)"), Discrete),
             list);
}

void ValueKindsTest::repetition_data()
{
    QTest::addColumn<int>("repeatCount");
    QTest::addColumn<int>("time");
    QTest::addColumn<QString>("color");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("list");

    const auto row = [](const char *name, int repeatCount, int time, const QString &color,
                        const QString &number, const QString &text) {
        QTest::newRow(name) << repeatCount << time << color << number << text
                            << QString(QLatin1Char('(') + number + QLatin1Char(')'));
    };
    const QString black = QStringLiteral("#000000");
    const QString grey = QStringLiteral("#7f7f7f");
    const QString white = QStringLiteral("#ffffff");
    const QString zero = QStringLiteral("0.000");
    const QString half = QStringLiteral("0.500");
    const QString one = QStringLiteral("1.000");
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    row("once, end", 1, 1000, white, one, b);
    row("once, after", 1, 1500, white, one, b);
    row("twice, end of the first cycle", 2, 1000, white, one, b);
    row("twice, second cycle", 2, 1500, grey, half, b);
    row("twice, early in the second cycle", 2, 1000 + 1, black, QStringLiteral("0.001"), a);
    row("twice, end is the first value", 2, 2000, black, zero, a);
    row("twice, for good", 2, 2500, black, zero, a);
    row("endless, end of the second cycle", -1, 2000, black, zero, a);
    row("endless, third cycle", -1, 2500, grey, half, b);
    row("any negative count is endless", -5, 2500, grey, half, b);
    row("huge count", highest, 2500, grey, half, b);
    row("count 0, begin", 0, 0, black, zero, a);
    row("count 0, later", 0, 500, black, zero, a);
    row("count 0, end", 0, 1000, black, zero, a);
}

void ValueKindsTest::repetition()
{
    QFETCH(int, repeatCount);
    QFETCH(int, time);
    QFETCH(QString, color);
    QFETCH(QString, number);
    QFETCH(QString, text);
    QFETCH(QString, list);
    QCOMPARE(valueAt<AnimatableAttributeColor>(time, QStringLiteral("black|white"), Linear,
                                               repeatCount),
             color);
    QCOMPARE(valueAt<AnimatableAttributeFloat>(time, QStringLiteral("0|1"), Linear, repeatCount),
             number);
    QCOMPARE(valueAt<AnimatableAttributeText>(time, QStringLiteral("a|b"), Linear, repeatCount),
             text);
    QCOMPARE(valueAt<AnimatableAttributeFloatList>(time, QStringLiteral("(0)|(1)"), Linear,
                                                   repeatCount),
             list);
}

void ValueKindsTest::everyKeyValueCounts()
{
    const Target target;
    AllKinds kinds = withThreeKeyValues(target);
    kinds.setParams(0, 1000, 1, Linear);
    for (const AnimatableAttribute *kind : kinds.all())
        QCOMPARE(lastIndex(*kind), 2);
}

void ValueKindsTest::withoutDuration_data()
{
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");

    QTest::newRow("none") << 500 << 500;
    QTest::newRow("negative") << 500 << -500;
    QTest::newRow("as negative as can be") << highest << lowest;
    QTest::newRow("at the highest") << highest << highest;
}

// A frozen value is that of the end.
void ValueKindsTest::withoutDuration()
{
    QFETCH(int, begin);
    QFETCH(int, end);
    const Target target;
    AllKinds kinds = withThreeKeyValues(target);
    for (const int repeatCount : {1, 0, 2, -1}) {
        for (const auto mode : {Linear, Discrete}) {
            kinds.setParams(begin, end, repeatCount, mode);
            for (const int time : {lowest, begin, end, highest}) {
                QCOMPARE(kinds.color.valueForTime(time), QStringLiteral("#ffffff"));
                QCOMPARE(kinds.number.valueForTime(time), QStringLiteral("3.000"));
                QCOMPARE(kinds.text.valueForTime(time), QStringLiteral("c"));
                QCOMPARE(kinds.list.valueForTime(time), QStringLiteral("(3.000)"));
            }
        }
    }
}

void ValueKindsTest::withoutKeyValues_data()
{
    QTest::addColumn<int>("time");

    QTest::newRow("before the begin") << -1;
    QTest::newRow("begin") << 0;
    QTest::newRow("middle") << 500;
    QTest::newRow("end") << 1000;
    QTest::newRow("highest") << highest;
}

void ValueKindsTest::withoutKeyValues()
{
    QFETCH(int, time);
    const Target target;
    AllKinds kinds(target, {}, {}, {}, {});
    kinds.setParams(0, 1000, 1, Linear);
    for (const AnimatableAttribute *kind : kinds.all())
        QCOMPARE(kind->valueForTime(time), QString());
}

void ValueKindsTest::everyKindIsWrittenAndRestored_data()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<QStringList>("values");

    QTest::newRow("begin") << 0
                           << QStringList{QStringLiteral("#000000"), QStringLiteral("1.000"),
                                          QStringLiteral("a"), QStringLiteral("(1.000)")};
    QTest::newRow("quarter") << 250
                             << QStringList{QStringLiteral("#7f0000"), QStringLiteral("1.500"),
                                            QStringLiteral("a"), QStringLiteral("(1.500)")};
    QTest::newRow("end") << 1000
                         << QStringList{QStringLiteral("#ffffff"), QStringLiteral("3.000"),
                                        QStringLiteral("c"), QStringLiteral("(3.000)")};
}

void ValueKindsTest::everyKindIsWrittenAndRestored()
{
    QFETCH(int, time);
    QFETCH(QStringList, values);
    const Target target;
    AllKinds kinds = withThreeKeyValues(target);
    kinds.setParams(0, 1000, 1, Linear);
    for (AnimatableAttribute *kind : kinds.all()) {
        QCOMPARE(kind->defaultValue(), QStringLiteral("default"));
        kind->apply(target.root(), time);
        QCOMPARE(target.value(), values.takeFirst());
        kind->restoreDefaultValue(target.root());
        QCOMPARE(target.value(), QStringLiteral("default"));
    }
}

void ValueKindsTest::knownPlace()
{
    const Target target;
    const SvgElement place(target.element(), target.root());
    const QString name = Target::attributeName();
    const AnimatableAttributeColor color(target.element(), place, name, {QStringLiteral("red")});
    const AnimatableAttributeFloat number(target.element(), place, name, {QStringLiteral("7")});
    const AnimatableAttributeText text(target.element(), place, name, {QStringLiteral("a")});
    const AnimatableAttributeFloatList list(target.element(), place, name, {QStringLiteral("(7)")});
    QStringList written;
    const std::array<const AnimatableAttribute *, 4> all{&color, &number, &text, &list};
    for (const AnimatableAttribute *attribute : all) {
        QCOMPARE(attribute->id(), QStringLiteral("0x"));
        QCOMPARE(attribute->defaultValue(), QStringLiteral("default"));
        attribute->apply(target.root(), 0);
        written << target.value();
        target.element().setAttribute(name, QStringLiteral("default"));
    }
    QCOMPARE(written,
             QStringList({QStringLiteral("#ff0000"), QStringLiteral("7.000"), QStringLiteral("a"),
                          QStringLiteral("(7.000)")}));
}

void ValueKindsTest::askingChangesNothing()
{
    const Target target;
    const auto list = made<AnimatableAttributeFloatList>(target, QStringLiteral("(0 0)|(10 20)"));
    const QString middle = list.valueForTime(500);
    QCOMPARE(middle, QStringLiteral("(5.000 10.000)"));
    for (const int time : {1000, 0, highest, lowest, 1})
        list.valueForTime(time);
    QCOMPARE(list.valueForTime(500), middle);
    QCOMPARE(target.value(), QStringLiteral("default"));
}

// Whatever the timing is, a value is one of the texts between two neighbouring key values.
void ValueKindsTest::anyTimeOfAnyTimingHasAValue()
{
    const std::array<int, 13> numbers{lowest, lowest + 1, -1000, -2,      -1,          0,      1,
                                      2,      500,        1000,  1000000, highest - 1, highest};
    QRandomGenerator random(6);
    const auto anyNumber = [&] {
        return numbers[std::size_t(random.bounded(int(numbers.size())))];
    };
    const Target target;
    AllKinds kinds = withThreeKeyValues(target);
    const QStringList texts = split(QStringLiteral("a|b|c"));
    for (int i = 0; i < 20000; ++i) {
        const int begin = anyNumber();
        const int end = anyNumber();
        const int repeatCount = anyNumber();
        const auto mode = random.bounded(2) == 0 ? Linear : Discrete;
        kinds.setParams(begin, end, repeatCount, mode);
        const int time = anyNumber();
        const QString number = kinds.number.valueForTime(time);
        QVERIFY(number.toDouble() >= 1.0 && number.toDouble() <= 3.0);
        QCOMPARE(kinds.list.valueForTime(time),
                 QString(QLatin1Char('(') + number + QLatin1Char(')')));
        QVERIFY(texts.contains(kinds.text.valueForTime(time)));
        QVERIFY(QColor(kinds.color.valueForTime(time)).isValid());
    }
}

QTEST_APPLESS_MAIN(ValueKindsTest)

#include "tst_valuekinds.moc"
