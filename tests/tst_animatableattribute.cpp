// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeTest.h"

#include <Scene/AnimatableAttribute.h>

#include <boost/shared_ptr.hpp>

#include <QDomDocument>
#include <QRandomGenerator>

#include <cmath>
#include <limits>
#include <type_traits>

static_assert(AnimatableAttribute::Discrete == 0 && AnimatableAttribute::Linear == 1,
              "the calculation modes have fixed numbers");
static_assert(std::is_base_of<AdjustableAttribute, AnimatableAttribute>::value,
              "an animatable attribute is an adjustable one");
static_assert(std::is_abstract<AnimatableAttribute>::value, "only the value kinds have values");

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr auto Linear = AnimatableAttribute::Linear;
constexpr auto Discrete = AnimatableAttribute::Discrete;

/// A value kind whose values are the times that it is asked for.
class TimeAttribute final : public AnimatableAttribute
{
public:
    TimeAttribute(const QDomNode &element, const QDomNode &root, int valueCount)
        : AnimatableAttribute(element, root, QStringLiteral("x"))
    {
        setValueCount(valueCount);
    }

    TimeAttribute(const QDomNode &element, const SvgElement &place)
        : AnimatableAttribute(element, place, QStringLiteral("x"))
    {
    }

    ~TimeAttribute()
    {
        if (m_deletions)
            ++*m_deletions;
    }

    void countDeletionsIn(int *deletions) { m_deletions = deletions; }

    QString valueForTime(int time) const override { return QString::number(time); }

private:
    int *m_deletions = nullptr;
};

/// An animation of some attribute through a number of key values.
TimeAttribute animation(int valueCount)
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a/></svg>"));
    const QDomElement root = document.documentElement();
    return TimeAttribute(root.firstChild(), root, valueCount);
}

struct Position
{
    int index = -1;
    int nextIndex = -1;
    double fraction = -1.0;
};

Position position(const AnimatableAttribute &attribute, int time)
{
    Position result;
    attribute.calculateValues(time, result.index, result.nextIndex, result.fraction);
    return result;
}

/// A number that is often an edge case.
int anyInt(QRandomGenerator &random)
{
    const int small = random.bounded(0, 3);
    switch (random.bounded(5)) {
    case 0:
        return small - 1;
    case 1:
        return highest - small;
    case 2:
        return lowest + small;
    case 3:
        return random.bounded(-5000, 5000);
    default:
        return int(random.generate());
    }
}

} // namespace

class AnimatableAttributeTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void remembersElementAndAttribute();
    void timingBeforeItIsSet();
    void applicable_data();
    void applicable();
    void endTime_data();
    void endTime();
    void workedValues_data();
    void workedValues();
    void discrete_data();
    void discrete();
    void withoutDurationTheLastKeyValueShows_data();
    void withoutDurationTheLastKeyValueShows();
    void indicesStayInsideTheList();
    void applyWritesTheValueForTheTime();
    void applyLeavesALostElementAlone();
    void defaultComesBack();
    void sharedPointerDeletesTheValueKind();
};

void AnimatableAttributeTest::remembersElementAndAttribute()
{
    const QDomDocument document =
            parsed(QStringLiteral("<svg><a/><defs><a id='logo' x='5'/></defs></svg>"));
    const QDomElement root = document.documentElement();
    const QDomNode node = root.lastChild().firstChild();
    const TimeAttribute located(node, root, 1);
    const TimeAttribute placed(node, SvgElement(node, root));
    for (const TimeAttribute *attribute : {&located, &placed}) {
        QCOMPARE(attribute->attributeName(), QStringLiteral("x"));
        QCOMPARE(attribute->defaultValue(), QStringLiteral("5"));
        QCOMPARE(attribute->id(), QStringLiteral("10x"));
        QCOMPARE(attribute->svgId(), QStringLiteral("logo"));
        QVERIFY(attribute->isDefinition());
    }
}

// From 0 to 0, frozen.
void AnimatableAttributeTest::timingBeforeItIsSet()
{
    const TimeAttribute attribute = animation(3);
    QCOMPARE(attribute.endTime(), 0);
    for (const int time : {lowest, -1, 0, 1, highest}) {
        QVERIFY(!attribute.isApplicable(time));
        QCOMPARE(attribute.isApplicableFrozen(time), time >= 0);
        QCOMPARE(position(attribute, time).index, 2);
    }
}

void AnimatableAttributeTest::applicable_data()
{
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("time");
    QTest::addColumn<bool>("running");
    QTest::addColumn<bool>("ended");

    QTest::newRow("1 ms before the begin") << 1000 << 2000 << 999 << false << false;
    QTest::newRow("at the begin") << 1000 << 2000 << 1000 << true << false;
    QTest::newRow("inside") << 1000 << 2000 << 1500 << true << false;
    QTest::newRow("1 ms before the end") << 1000 << 2000 << 1999 << true << false;
    QTest::newRow("at the end") << 1000 << 2000 << 2000 << false << true;
    QTest::newRow("1 ms after the end") << 1000 << 2000 << 2001 << false << true;
    QTest::newRow("begun before the title") << -500 << 500 << 0 << true << false;
    QTest::newRow("ended before the title") << -1500 << -500 << 0 << false << true;
    QTest::newRow("no duration, before") << 1000 << 1000 << 999 << false << false;
    QTest::newRow("no duration, at its begin") << 1000 << 1000 << 1000 << false << true;
    QTest::newRow("no duration, after") << 1000 << 1000 << 1001 << false << true;
    QTest::newRow("negative duration, before both") << 2000 << 1000 << 999 << false << false;
    QTest::newRow("negative duration, at the end") << 2000 << 1000 << 1000 << false << true;
    QTest::newRow("negative duration, between") << 2000 << 1000 << 1500 << false << true;
    QTest::newRow("negative duration, at the begin") << 2000 << 1000 << 2000 << false << true;
    QTest::newRow("whole range, first time") << lowest << highest << lowest << true << false;
    QTest::newRow("whole range, last time") << lowest << highest << highest << false << true;
    QTest::newRow("at the highest, last time") << highest << highest << highest << false << true;
    QTest::newRow("at the lowest, first time") << lowest << lowest << lowest << false << true;
}

void AnimatableAttributeTest::applicable()
{
    QFETCH(int, begin);
    QFETCH(int, end);
    QFETCH(int, time);
    QFETCH(bool, running);
    QFETCH(bool, ended);
    TimeAttribute attribute = animation(2);
    // Repetition changes nothing: one simple duration is all that runs.
    for (const int repeatCount : {1, 0, 2, -1}) {
        attribute.setParams(begin, end, repeatCount, true, Linear);
        QCOMPARE(attribute.isApplicable(time), running);
        QCOMPARE(attribute.isApplicableFrozen(time), ended);
        attribute.setParams(begin, end, repeatCount, false, Linear);
        QCOMPARE(attribute.isApplicable(time), running);
        QVERIFY(!attribute.isApplicableFrozen(time));
    }
}

void AnimatableAttributeTest::endTime_data()
{
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");

    QTest::newRow("plain") << 0 << 1000;
    QTest::newRow("before the begin") << 0 << -1000;
    QTest::newRow("highest") << 0 << highest;
    QTest::newRow("lowest") << 0 << lowest;
}

void AnimatableAttributeTest::endTime()
{
    QFETCH(int, begin);
    QFETCH(int, end);
    TimeAttribute attribute = animation(2);
    attribute.setParams(begin, end, 5, true, Linear);
    QCOMPARE(attribute.endTime(), end);
}

void AnimatableAttributeTest::workedValues_data()
{
    QTest::addColumn<int>("valueCount");
    QTest::addColumn<int>("repeatCount");
    QTest::addColumn<int>("time");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("nextIndex");
    QTest::addColumn<double>("fraction");

    QTest::newRow("three values, 0") << 3 << 1 << 0 << 0 << 0 << 0.0;
    QTest::newRow("three values, 250") << 3 << 1 << 250 << 0 << 1 << 0.5;
    QTest::newRow("three values, 500") << 3 << 1 << 500 << 1 << 1 << 1.0;
    QTest::newRow("three values, 750") << 3 << 1 << 750 << 1 << 2 << 0.5;
    QTest::newRow("three values, end") << 3 << 1 << 1000 << 2 << 2 << 0.0;
    QTest::newRow("three values, after the end") << 3 << 1 << 1750 << 2 << 2 << 0.0;
    QTest::newRow("two values, end") << 2 << 1 << 1000 << 1 << 1 << 1.0;
    QTest::newRow("endless, end of the first cycle") << 3 << -1 << 1000 << 2 << 2 << 0.0;
    QTest::newRow("endless, end of the second cycle") << 3 << -1 << 2000 << 0 << 0 << 0.0;
    QTest::newRow("endless, third cycle") << 3 << -1 << 2750 << 1 << 2 << 0.5;
    QTest::newRow("any negative count is endless") << 3 << -5 << 2750 << 1 << 2 << 0.5;
    QTest::newRow("twice, 1500") << 3 << 2 << 1500 << 1 << 1 << 1.0;
    QTest::newRow("twice, 2000 is the first key value") << 3 << 2 << 2000 << 0 << 0 << 0.0;
    QTest::newRow("twice, for good the first key value") << 3 << 2 << 9750 << 0 << 0 << 0.0;
    QTest::newRow("huge count") << 3 << highest << 1000750 << 1 << 2 << 0.5;
    QTest::newRow("count 0, at the begin") << 3 << 0 << 0 << 0 << 0 << 0.0;
    QTest::newRow("count 0, later") << 3 << 0 << 750 << 0 << 0 << 0.0;
    QTest::newRow("count 0, at the end") << 3 << 0 << 1000 << 0 << 0 << 0.0;
    QTest::newRow("one value, begin") << 1 << 1 << 0 << 0 << 0 << 0.0;
    QTest::newRow("one value, middle") << 1 << 1 << 500 << 0 << 0 << 0.0;
    QTest::newRow("one value, end") << 1 << 1 << 1000 << 0 << 0 << 0.0;
    QTest::newRow("one value, later cycle") << 1 << -1 << 7500 << 0 << 0 << 0.0;
}

// From 4000 to 5000 ms; times are counted from the begin.
void AnimatableAttributeTest::workedValues()
{
    QFETCH(int, valueCount);
    QFETCH(int, repeatCount);
    QFETCH(int, time);
    QFETCH(int, index);
    QFETCH(int, nextIndex);
    QFETCH(double, fraction);
    TimeAttribute attribute = animation(valueCount);
    attribute.setParams(4000, 5000, repeatCount, true, Linear);
    const Position result = position(attribute, 4000 + time);
    QCOMPARE(result.index, index);
    QCOMPARE(result.nextIndex, nextIndex);
    QCOMPARE(result.fraction, fraction);
}

void AnimatableAttributeTest::discrete_data()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<double>("fraction");

    QTest::newRow("0") << 0 << 0.0;
    QTest::newRow("499") << 499 << 0.0;
    QTest::newRow("500 is still the first value") << 500 << 0.0;
    QTest::newRow("501") << 501 << 1.0;
    QTest::newRow("1000") << 1000 << 1.0;
}

void AnimatableAttributeTest::discrete()
{
    QFETCH(int, time);
    QFETCH(double, fraction);
    TimeAttribute attribute = animation(2);
    attribute.setParams(0, 1000, 1, true, Discrete);
    const Position result = position(attribute, time);
    QCOMPARE(result.fraction, fraction);
    QCOMPARE(result.index, time < 1000 ? 0 : 1);
    QCOMPARE(result.nextIndex, time > 0 ? 1 : 0);
}

void AnimatableAttributeTest::withoutDurationTheLastKeyValueShows_data()
{
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");

    QTest::newRow("none") << 1000 << 1000;
    QTest::newRow("none at 0") << 0 << 0;
    QTest::newRow("negative") << 1000 << 500;
    QTest::newRow("as negative as can be") << highest << lowest;
    QTest::newRow("none at the highest") << highest << highest;
    QTest::newRow("none at the lowest") << lowest << lowest;
}

void AnimatableAttributeTest::withoutDurationTheLastKeyValueShows()
{
    QFETCH(int, begin);
    QFETCH(int, end);
    TimeAttribute attribute = animation(4);
    for (const int repeatCount : {1, 0, 2, -1}) {
        for (const auto mode : {Linear, Discrete}) {
            attribute.setParams(begin, end, repeatCount, true, mode);
            for (const int time : {lowest, begin, end, 700, highest}) {
                const Position result = position(attribute, time);
                QCOMPARE(result.index, 3);
                QCOMPARE(result.nextIndex, 3);
            }
        }
    }
}

void AnimatableAttributeTest::indicesStayInsideTheList()
{
    QRandomGenerator random(5);
    for (int valueCount = 0; valueCount < 8; ++valueCount) {
        TimeAttribute attribute = animation(valueCount);
        for (int i = 0; i < 20000; ++i) {
            const int begin = anyInt(random);
            const int end = anyInt(random);
            const int repeatCount = anyInt(random);
            const int time = anyInt(random);
            attribute.setParams(begin, end, repeatCount, true,
                                random.bounded(2) == 0 ? Linear : Discrete);
            const Position result = position(attribute, time);
            const bool inside = result.index >= 0 && result.index <= result.nextIndex
                    && result.nextIndex < std::max(valueCount, 1) && result.fraction <= 1.0
                    && (result.fraction >= 0.0 || valueCount == 0);
            if (!inside) {
                QFAIL(qPrintable(QStringLiteral("time %1, begin %2, end %3, repeated %4, %5 values")
                                         .arg(time)
                                         .arg(begin)
                                         .arg(end)
                                         .arg(repeatCount)
                                         .arg(valueCount)));
            }
        }
    }
}

void AnimatableAttributeTest::applyWritesTheValueForTheTime()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a/><a x='5' y='6'/></svg>"));
    const QDomElement root = document.documentElement();
    const QDomElement element = root.lastChildElement();
    TimeAttribute attribute(element, root, 2);
    attribute.setParams(0, 1000, 1, false, Linear);
    // Any time in any order, whether the animation runs then or not.
    for (const int time : {250, 0, 1000, -3, highest, lowest, 250}) {
        attribute.apply(root, time);
        QCOMPARE(element.attribute(QStringLiteral("x")), QString::number(time));
    }
    QCOMPARE(element.attribute(QStringLiteral("y")), QStringLiteral("6"));
    QVERIFY(!root.hasAttributes());
    QVERIFY(!root.firstChildElement().hasAttributes());
}

void AnimatableAttributeTest::applyLeavesALostElementAlone()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a/><a/></svg>"));
    const TimeAttribute attribute(document.documentElement().lastChild(),
                                  document.documentElement(), 2);
    const QDomDocument other = parsed(QStringLiteral("<svg><a/></svg>"));
    const QString before = other.toString();
    attribute.apply(other.documentElement(), 1);
    attribute.apply(QDomNode(), 1);
    QCOMPARE(other.toString(), before);
}

void AnimatableAttributeTest::defaultComesBack()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a x='5'/><a/></svg>"));
    const QDomElement root = document.documentElement();
    for (const QDomElement &element : {root.firstChildElement(), root.lastChildElement()}) {
        const bool hadOne = element.hasAttribute(QStringLiteral("x"));
        TimeAttribute attribute(element, root, 2);
        attribute.apply(root, 77);
        QCOMPARE(element.attribute(QStringLiteral("x")), QStringLiteral("77"));
        attribute.restoreDefaultValue(root);
        QCOMPARE(element.hasAttribute(QStringLiteral("x")), hadOne);
        QCOMPARE(element.attribute(QStringLiteral("x")), attribute.defaultValue());
    }
}

void AnimatableAttributeTest::sharedPointerDeletesTheValueKind()
{
    const QDomDocument document = parsed(QStringLiteral("<svg/>"));
    const QDomElement root = document.documentElement();
    int deletions = 0;
    auto *made = new TimeAttribute(root, root, 2);
    made->countDeletionsIn(&deletions);
    boost::shared_ptr<AnimatableAttribute> shared(made);
    boost::shared_ptr<AnimatableAttribute> another = shared;
    shared.reset();
    QCOMPARE(deletions, 0);
    another.reset();
    QCOMPARE(deletions, 1);
}

QTEST_APPLESS_MAIN(AnimatableAttributeTest)

#include "tst_animatableattribute.moc"
