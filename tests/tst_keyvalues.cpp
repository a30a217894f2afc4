// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/KeyValues_p.h>

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

const double justAboveHalf = std::nextafter(0.5, 1.0);
const double justBelowOne = std::nextafter(1.0, 0.0);

/// A number that is often an edge case: at int's limits, around 0, or a plain time.
int anyInt(QRandomGenerator &random)
{
    const int small = random.bounded(-3, 4);
    switch (random.bounded(6)) {
    case 0:
        return small;
    case 1:
        return small < 0 ? highest + small : highest - small;
    case 2:
        return small < 0 ? lowest - small : lowest + small;
    case 3:
        return random.bounded(-5000, 5000);
    case 4:
        return 1000 * small;
    default:
        return int(random.generate());
    }
}

struct Timing
{
    int time;
    int begin;
    int end;
    int repeatCount;
    int valueCount;
    bool discrete;
};

Timing anyTiming(QRandomGenerator &random)
{
    const int begin = anyInt(random);
    const int end = random.bounded(4) == 0 ? begin : anyInt(random);
    const int valueCount = random.bounded(8) == 0 ? highest : random.bounded(1, 9);
    return {anyInt(random), begin, end, anyInt(random), valueCount, random.bounded(2) == 0};
}

QByteArray described(const Timing &timing)
{
    return QStringLiteral("time %1, begin %2, end %3, repeated %4, %5 key values, %6")
            .arg(timing.time)
            .arg(timing.begin)
            .arg(timing.end)
            .arg(timing.repeatCount)
            .arg(timing.valueCount)
            .arg(timing.discrete ? QStringLiteral("discrete") : QStringLiteral("linear"))
            .toUtf8();
}

} // namespace

class KeyValuesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void progress_data();
    void progress();
    void position_data();
    void position();
    void workedValues_data();
    void workedValues();
    void discrete_data();
    void discrete();
    void slice_data();
    void slice();
    void interpolatedNumber_data();
    void interpolatedNumber();
    void everythingStaysInsideTheList();
    void plainTimingsFollowTheArithmetic();
};

void KeyValuesTest::progress_data()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("repeatCount");
    QTest::addColumn<double>("progress");

    QTest::newRow("begin") << 0 << 0 << 1000 << 1 << 0.0;
    QTest::newRow("quarter") << 250 << 0 << 1000 << 1 << 0.25;
    QTest::newRow("later begin") << 1750 << 1500 << 2500 << 1 << 0.25;
    QTest::newRow("negative begin") << -250 << -500 << 500 << 1 << 0.25;
    QTest::newRow("end of the only cycle is 1") << 1000 << 0 << 1000 << 1 << 1.0;
    QTest::newRow("after the only cycle") << 1001 << 0 << 1000 << 1 << 1.0;
    QTest::newRow("long after the only cycle") << highest << 0 << 1000 << 1 << 1.0;
    QTest::newRow("last ms of the first cycle") << 999 << 0 << 1000 << 1 << 0.999;

    QTest::newRow("twice, end of the first cycle is 1") << 1000 << 0 << 1000 << 2 << 1.0;
    QTest::newRow("twice, second cycle") << 1500 << 0 << 1000 << 2 << 0.5;
    QTest::newRow("twice, exactly 2 wraps to 0") << 2000 << 0 << 1000 << 2 << 0.0;
    QTest::newRow("twice, after the end wraps to 0") << 2001 << 0 << 1000 << 2 << 0.0;
    QTest::newRow("thrice, exactly 2 wraps to 0") << 2000 << 0 << 1000 << 3 << 0.0;
    QTest::newRow("thrice, exactly 3 wraps to 0") << 3000 << 0 << 1000 << 3 << 0.0;
    QTest::newRow("thrice, long after the end") << 99500 << 0 << 1000 << 3 << 0.0;
    QTest::newRow("huge count, last cycle") << 2000000500 << 0 << 1000 << highest << 0.5;
    QTest::newRow("huge count, 1 ms cycles") << highest << 0 << 1 << highest << 0.0;

    QTest::newRow("count 0 at the begin") << 0 << 0 << 1000 << 0 << 0.0;
    QTest::newRow("count 0 after the begin") << 1 << 0 << 1000 << 0 << 0.0;
    QTest::newRow("count 0 at the end") << 1000 << 0 << 1000 << 0 << 0.0;
    QTest::newRow("count 0 after the end") << 5500 << 0 << 1000 << 0 << 0.0;

    QTest::newRow("endless, first cycle") << 250 << 0 << 1000 << -1 << 0.25;
    QTest::newRow("endless, end of the first cycle is 1") << 1000 << 0 << 1000 << -1 << 1.0;
    QTest::newRow("endless, exactly 2 wraps to 0") << 2000 << 0 << 1000 << -1 << 0.0;
    QTest::newRow("endless, exactly 3 wraps to 0") << 3000 << 0 << 1000 << -1 << 0.0;
    QTest::newRow("endless, later cycle") << 7250 << 0 << 1000 << -1 << 0.25;
    QTest::newRow("any negative count is endless") << 7250 << 0 << 1000 << -5 << 0.25;
    QTest::newRow("lowest count is endless") << 7250 << 0 << 1000 << lowest << 0.25;

    QTest::newRow("before the begin") << 999 << 1000 << 2000 << 1 << 0.0;
    QTest::newRow("long before the begin") << lowest << 1000 << 2000 << 1 << 0.0;
    QTest::newRow("before the begin, endless") << -2500 << 0 << 1000 << -1 << 0.0;
    QTest::newRow("before the begin, count 0") << -2500 << 0 << 1000 << 0 << 0.0;

    QTest::newRow("no duration, at its end") << 500 << 500 << 500 << 1 << 1.0;
    QTest::newRow("no duration, later") << 9000 << 500 << 500 << 1 << 1.0;
    QTest::newRow("no duration, before") << 0 << 500 << 500 << 1 << 1.0;
    QTest::newRow("no duration, endless") << 9000 << 500 << 500 << -1 << 1.0;
    QTest::newRow("no duration, count 0") << 9000 << 500 << 500 << 0 << 1.0;
    QTest::newRow("no duration, count 2") << 9000 << 500 << 500 << 2 << 1.0;
    QTest::newRow("negative duration, at its end") << 500 << 1000 << 500 << 1 << 1.0;
    QTest::newRow("negative duration, at its begin") << 1000 << 1000 << 500 << 1 << 1.0;
    QTest::newRow("negative duration, later") << 9000 << 1000 << 500 << -1 << 1.0;
    QTest::newRow("lowest duration") << 0 << highest << lowest << 1 << 1.0;

    QTest::newRow("the difference to the begin saturates") << highest << lowest << 0 << 1 << 1.0;
    QTest::newRow("both differences saturate") << highest << lowest << highest << 1 << 1.0;
    QTest::newRow("the duration saturates") << lowest << lowest << highest << 1 << 0.0;
    QTest::newRow("begin at the highest") << highest << highest << highest << 1 << 1.0;
    QTest::newRow("begin at the highest, before") << lowest << highest - 1 << highest << -1 << 0.0;
    QTest::newRow("last possible cycle") << highest << highest - 1 << highest << 1 << 1.0;
    QTest::newRow("first possible cycle") << lowest + 1 << lowest << lowest + 2 << 1 << 0.5;
    QTest::newRow("longest cycle from 0") << highest << 0 << highest << 1 << 1.0;
}

void KeyValuesTest::progress()
{
    QFETCH(int, time);
    QFETCH(int, begin);
    QFETCH(int, end);
    QFETCH(int, repeatCount);
    QFETCH(double, progress);
    QVERIFY2(cycleProgress(time, begin, end, repeatCount) == progress,
             qPrintable(QString::number(cycleProgress(time, begin, end, repeatCount), 'g', 17)));
}

void KeyValuesTest::position_data()
{
    QTest::addColumn<double>("progress");
    QTest::addColumn<int>("valueCount");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("nextIndex");
    QTest::addColumn<double>("fraction");

    QTest::newRow("two values, start") << 0.0 << 2 << 0 << 0 << 0.0;
    QTest::newRow("two values, quarter") << 0.25 << 2 << 0 << 1 << 0.25;
    QTest::newRow("two values, nearly the end") << justBelowOne << 2 << 0 << 1 << justBelowOne;
    QTest::newRow("two values, end keeps fraction 1") << 1.0 << 2 << 1 << 1 << 1.0;
    QTest::newRow("three values, first half") << 0.25 << 3 << 0 << 1 << 0.5;
    QTest::newRow("three values, at the middle one") << 0.5 << 3 << 1 << 1 << 1.0;
    QTest::newRow("three values, second half") << 0.75 << 3 << 1 << 2 << 0.5;
    QTest::newRow("three values, end") << 1.0 << 3 << 2 << 2 << 0.0;
    QTest::newRow("five values, at the second") << 0.25 << 5 << 1 << 1 << 1.0;
    QTest::newRow("five values, at the third") << 0.5 << 5 << 2 << 2 << 0.0;
    QTest::newRow("five values, after the third") << 0.625 << 5 << 2 << 3 << 0.5;
    QTest::newRow("five values, end") << 1.0 << 5 << 4 << 4 << 0.0;
    QTest::newRow("one value, start") << 0.0 << 1 << 0 << 0 << 0.0;
    QTest::newRow("one value, middle") << 0.5 << 1 << 0 << 0 << 0.0;
    QTest::newRow("one value, end") << 1.0 << 1 << 0 << 0 << 0.0;
    QTest::newRow("very many values") << 1.0 << highest << highest - 1 << highest - 1 << 0.0;
}

void KeyValuesTest::position()
{
    QFETCH(double, progress);
    QFETCH(int, valueCount);
    QFETCH(int, index);
    QFETCH(int, nextIndex);
    QFETCH(double, fraction);
    const KeyValuePosition result = keyValuePosition(progress, valueCount, false);
    QCOMPARE(result.index, index);
    QCOMPARE(result.nextIndex, nextIndex);
    QVERIFY2(result.fraction == fraction, qPrintable(QString::number(result.fraction, 'g', 17)));
}

void KeyValuesTest::workedValues_data()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<int>("repeatCount");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("nextIndex");
    QTest::addColumn<double>("fraction");

    QTest::newRow("0") << 0 << 1 << 0 << 0 << 0.0;
    QTest::newRow("250") << 250 << 1 << 0 << 1 << 0.5;
    QTest::newRow("500") << 500 << 1 << 1 << 1 << 1.0;
    QTest::newRow("750") << 750 << 1 << 1 << 2 << 0.5;
    QTest::newRow("1000") << 1000 << 1 << 2 << 2 << 0.0;
    QTest::newRow("1000, endless") << 1000 << -1 << 2 << 2 << 0.0;
    QTest::newRow("1500, twice") << 1500 << 2 << 1 << 1 << 1.0;
    QTest::newRow("2000, twice, is the first key value") << 2000 << 2 << 0 << 0 << 0.0;
    QTest::newRow("2000, endless, is the first key value") << 2000 << -1 << 0 << 0 << 0.0;
    QTest::newRow("1, count 0") << 1 << 0 << 0 << 0 << 0.0;
    QTest::newRow("750, count 0") << 750 << 0 << 0 << 0 << 0.0;
}

// Three key values from 0 to 1000 ms.
void KeyValuesTest::workedValues()
{
    QFETCH(int, time);
    QFETCH(int, repeatCount);
    QFETCH(int, index);
    QFETCH(int, nextIndex);
    QFETCH(double, fraction);
    const KeyValuePosition result =
            keyValuePosition(cycleProgress(time, 0, 1000, repeatCount), 3, false);
    QCOMPARE(result.index, index);
    QCOMPARE(result.nextIndex, nextIndex);
    QCOMPARE(result.fraction, fraction);
}

void KeyValuesTest::discrete_data()
{
    QTest::addColumn<double>("progress");
    QTest::addColumn<int>("valueCount");
    QTest::addColumn<int>("shown");

    QTest::newRow("two values, start") << 0.0 << 2 << 0;
    QTest::newRow("two values, just before half") << 0.499 << 2 << 0;
    QTest::newRow("two values, exactly half") << 0.5 << 2 << 0;
    QTest::newRow("two values, just above half") << justAboveHalf << 2 << 1;
    QTest::newRow("two values, end") << 1.0 << 2 << 1;
    QTest::newRow("three values, exactly half of the first way") << 0.25 << 3 << 0;
    QTest::newRow("three values, above half of the first way") << 0.26 << 3 << 1;
    QTest::newRow("three values, at the middle one") << 0.5 << 3 << 1;
    QTest::newRow("three values, exactly half of the second way") << 0.75 << 3 << 1;
    QTest::newRow("three values, above half of the second way") << 0.76 << 3 << 2;
    QTest::newRow("three values, end") << 1.0 << 3 << 2;
    QTest::newRow("one value") << 0.75 << 1 << 0;
}

// The fraction is 0 or 1 then, so one key value alone shows.
void KeyValuesTest::discrete()
{
    QFETCH(double, progress);
    QFETCH(int, valueCount);
    QFETCH(int, shown);
    const KeyValuePosition result = keyValuePosition(progress, valueCount, true);
    QVERIFY(result.fraction == 0.0 || result.fraction == 1.0);
    QCOMPARE(result.fraction == 1.0 ? result.nextIndex : result.index, shown);
    const KeyValuePosition linear = keyValuePosition(progress, valueCount, false);
    QCOMPARE(result.index, linear.index);
    QCOMPARE(result.nextIndex, linear.nextIndex);
}

void KeyValuesTest::slice_data()
{
    QTest::addColumn<double>("progress");
    QTest::addColumn<int>("valueCount");
    QTest::addColumn<int>("slice");

    QTest::newRow("three values, start") << 0.0 << 3 << 0;
    QTest::newRow("three values, 100 of 900") << 100.0 / 900.0 << 3 << 0;
    QTest::newRow("three values, 299 of 900") << 299.0 / 900.0 << 3 << 0;
    QTest::newRow("three values, 300 of 900") << 300.0 / 900.0 << 3 << 1;
    QTest::newRow("three values, 400 of 900") << 400.0 / 900.0 << 3 << 1;
    QTest::newRow("three values, 600 of 900") << 600.0 / 900.0 << 3 << 2;
    QTest::newRow("three values, 700 of 900") << 700.0 / 900.0 << 3 << 2;
    QTest::newRow("three values, the last holds at the end") << 1.0 << 3 << 2;
    QTest::newRow("two values, just below half") << 0.499 << 2 << 0;
    QTest::newRow("two values, half") << 0.5 << 2 << 1;
    QTest::newRow("two values, end") << 1.0 << 2 << 1;
    QTest::newRow("one value, start") << 0.0 << 1 << 0;
    QTest::newRow("one value, end") << 1.0 << 1 << 0;
    QTest::newRow("no value") << 1.0 << 0 << 0;
    QTest::newRow("very many values") << 1.0 << highest << highest - 1;
}

void KeyValuesTest::slice()
{
    QFETCH(double, progress);
    QFETCH(int, valueCount);
    QFETCH(int, slice);
    QCOMPARE(keyValueSlice(progress, valueCount), slice);
}

void KeyValuesTest::interpolatedNumber_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("fraction");
    QTest::addColumn<QString>("text");

    QTest::newRow("start") << 0.0 << 1.0 << 0.0 << QStringLiteral("0.000");
    QTest::newRow("quarter") << 0.0 << 1.0 << 0.25 << QStringLiteral("0.250");
    QTest::newRow("end") << 0.0 << 1.0 << 1.0 << QStringLiteral("1.000");
    QTest::newRow("three decimals of a whole number")
            << 12.0 << 12.0 << 0.5 << QStringLiteral("12.000");
    QTest::newRow("downwards to a negative") << 3.25 << -3.25 << 1.0 << QStringLiteral("-3.250");
    QTest::newRow("middle of a descent") << 10.0 << -20.0 << 0.5 << QStringLiteral("-5.000");
    QTest::newRow("rounded up") << 0.0 << 0.0006 << 1.0 << QStringLiteral("0.001");
    QTest::newRow("rounded down") << 0.0 << 1.0 << 1.0 / 3.0 << QStringLiteral("0.333");
    QTest::newRow("no exponent when large")
            << 0.0 << 1e15 << 1.0 << QStringLiteral("1000000000000000.000");
    QTest::newRow("no exponent when small") << 0.0 << 1e-9 << 1.0 << QStringLiteral("0.000");
}

void KeyValuesTest::interpolatedNumber()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, fraction);
    QFETCH(QString, text);
    QCOMPARE(::interpolatedNumber(from, to, fraction), text);
}

void KeyValuesTest::everythingStaysInsideTheList()
{
    QRandomGenerator random(2);
    for (int i = 0; i < 300000; ++i) {
        const Timing timing = anyTiming(random);
        const double progress =
                cycleProgress(timing.time, timing.begin, timing.end, timing.repeatCount);
        const KeyValuePosition position =
                keyValuePosition(progress, timing.valueCount, timing.discrete);
        const int slice = keyValueSlice(progress, timing.valueCount);
        const KeyValuePosition none = keyValuePosition(progress, 0, timing.discrete);
        const bool inside = progress >= 0.0 && progress <= 1.0 && position.index >= 0
                && position.index <= position.nextIndex && position.nextIndex < timing.valueCount
                && position.nextIndex - position.index <= 1 && position.fraction >= 0.0
                && position.fraction <= 1.0 && slice >= 0 && slice < timing.valueCount;
        if (!inside)
            QFAIL(described(timing).constData());
        if (none.index != 0 || none.nextIndex != 0)
            QFAIL(described(timing).constData());
        const bool hasDuration = timing.end > timing.begin;
        if (!hasDuration && position.index != timing.valueCount - 1)
            QFAIL(described(timing).constData());
    }
}

// Times that need no care for int's limits, step by step.
void KeyValuesTest::plainTimingsFollowTheArithmetic()
{
    QRandomGenerator random(3);
    for (int i = 0; i < 100000; ++i) {
        const int begin = random.bounded(-5000, 5000);
        const int duration = random.bounded(1, 3000);
        const int time = begin + random.bounded(0, 10000);
        const int repeatCount = random.bounded(-2, 5);
        const int valueCount = random.bounded(1, 9);
        const bool discrete = random.bounded(2) == 0;

        double p = double(time - begin) / double(duration);
        if (repeatCount >= 0 && p > repeatCount)
            p = repeatCount;
        if (p > 1.0)
            p -= std::trunc(p);
        const double x = double(valueCount - 1) * p;
        double fraction = x > 1.0 ? x - std::trunc(x) : x;
        if (discrete)
            fraction = fraction > 0.5 ? 1.0 : 0.0;

        const double progress = cycleProgress(time, begin, begin + duration, repeatCount);
        const KeyValuePosition position = keyValuePosition(progress, valueCount, discrete);
        const bool follows = progress == p && position.index == int(std::floor(x))
                && position.nextIndex == int(std::ceil(x)) && position.fraction == fraction
                && keyValueSlice(progress, valueCount)
                        == std::min(int(std::floor(valueCount * p)), valueCount - 1);
        if (!follows) {
            QFAIL(described({time, begin, begin + duration, repeatCount, valueCount, discrete})
                          .constData());
        }
    }
}

QTEST_APPLESS_MAIN(KeyValuesTest)

#include "tst_keyvalues.moc"
