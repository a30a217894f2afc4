// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/HeldAnimation_p.h>

#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
const double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

/// What the renderer makes of a timing at a reading of its clock.
struct Shown
{
    bool anything = false;
    bool finished = false; ///< it no longer moves in the picture that is being drawn
    double progress = 0.0; ///< where it stands in its cycle
};

/// The last step of the renderer's arithmetic, for a progress that an int can hold.
double withinCycle(double progress)
{
    return progress > 1.0 ? progress - int(progress) : progress;
}

/// The renderer's arithmetic for transforms: an animation that does not freeze is left out after
/// its last repetition.
Shown shownTransform(const RendererTiming &timing, bool freeze, int elapsed)
{
    if (elapsed < timing.from)
        return {};
    const bool staysForGood = freeze || timing.repeatCount < 0.0;
    double progress = 0.0;
    bool finished = false;
    if (timing.runningTime == 0.0) {
        if (!staysForGood)
            return {};
    } else {
        progress = (elapsed - timing.from) / timing.runningTime;
        if (!staysForGood && progress > timing.repeatCount)
            return {};
        if (timing.repeatCount >= 0.0 && timing.repeatCount < progress) {
            finished = true;
            progress = timing.repeatCount;
        }
    }
    return {true, finished, withinCycle(progress)};
}

/// The renderer's arithmetic for colours: after the last repetition the end stays.
Shown shownColor(const RendererTiming &timing, int elapsed)
{
    if (elapsed < timing.from)
        return {};
    double progress = 0.0;
    if (timing.runningTime != 0.0)
        progress = (elapsed - timing.from) / timing.runningTime;
    bool finished = false;
    if (timing.repeatCount >= 0.0 && timing.repeatCount < progress) {
        finished = true;
        progress = timing.repeatCount;
    }
    return {true, finished, withinCycle(progress)};
}

enum Kind { Transform, FrozenTransform, Color };

AfterEnd afterEnd(Kind kind)
{
    return kind == Transform ? AfterEnd::ShowsNothing : AfterEnd::ShowsEnd;
}

Shown shown(Kind kind, const RendererTiming &timing, int elapsed)
{
    return kind == Color ? shownColor(timing, elapsed)
                         : shownTransform(timing, kind == FrozenTransform, elapsed);
}

/// The same to the last bit.
bool operator==(const Shown &a, const Shown &b)
{
    return a.anything == b.anything && a.finished == b.finished
            && std::memcmp(&a.progress, &b.progress, sizeof a.progress) == 0;
}

QString described(const Shown &shown)
{
    if (!shown.anything)
        return QStringLiteral("nothing");
    return QString::number(shown.progress, 'g', 17)
            + (shown.finished ? QStringLiteral(" (finished)") : QString());
}

QString described(const RendererTiming &timing)
{
    return QStringLiteral("from %1, running %2, repeated %3")
            .arg(timing.from, 0, 'g', 17)
            .arg(timing.runningTime, 0, 'g', 17)
            .arg(timing.repeatCount, 0, 'g', 17);
}

/// Readings of the renderer's clock while it draws the picture for a time.
std::array<int, 9> readings(int ms)
{
    const int later = ms > highest - 5000 ? highest : ms + 5000;
    return {ms, later, 0, 1, -1, -5000, highest, lowest, highest / 2};
}

/// Says how a picture that takes its time differs from one drawn at once; empty when it does not.
QString difference(Kind kind, const RendererTiming &timing, int ms)
{
    const RendererTiming held = heldTiming(timing, afterEnd(kind), ms);
    const Shown expected = shown(kind, timing, ms);
    for (const int reading : readings(ms)) {
        const Shown actual = shown(kind, held, reading);
        if (!(actual == expected)) {
            return QStringLiteral("%1, held at %2 and read at %3: %4 instead of %5")
                    .arg(described(timing))
                    .arg(ms)
                    .arg(reading)
                    .arg(described(actual), described(expected));
        }
    }
    return QString();
}

/// A begin and a running time as the renderer accepts them: the end fits into an int.
RendererTiming anyTiming(QRandomGenerator &random)
{
    static const std::array<double, 14> repeatCounts{-1.0, 0.0, 0.1, 0.5, 1.0, 1.5,  2.0,
                                                     2.5,  3.0, 7.0, 0.3, 1e9, -2.5, 1.0 / 3.0};
    const bool isExtreme = random.bounded(4) == 0;
    const int begin = isExtreme ? int(random.generate()) / 2 : random.bounded(-5000, 5000);
    const int running =
            isExtreme ? random.bounded(4, highest - std::max(begin, 0)) : random.bounded(1, 2000);
    return {double(begin), double(running),
            repeatCounts[std::size_t(random.bounded(int(repeatCounts.size())))]};
}

/// A time at which the progress fits into an int.
int anyTime(QRandomGenerator &random, const RendererTiming &timing)
{
    if (random.bounded(8) == 0)
        return random.bounded(-10000, 10000);
    const bool isWhole = random.bounded(3) == 0;
    const int rest = isWhole ? 0 : random.bounded(int(timing.runningTime));
    const double time = timing.from + random.bounded(6) * timing.runningTime + rest;
    return int(std::min(time, double(highest)));
}

} // namespace

Q_DECLARE_METATYPE(RendererTiming)

class HeldAnimationTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void shows_data();
    void shows();
    void holdsStill_data();
    void holdsStill();
    void holdsStillAtAnyTime_data();
    void holdsStillAtAnyTime();
    void neverBegins_data();
    void neverBegins();
};

void HeldAnimationTest::shows_data()
{
    QTest::addColumn<RendererTiming>("timing");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("ms");
    QTest::addColumn<double>("progress"); // NaN for nothing

    const RendererTiming once{1000, 2000, 1};
    QTest::newRow("begin") << once << int(Transform) << 1000 << 0.0;
    QTest::newRow("quarter") << once << int(Transform) << 1500 << 0.25;
    QTest::newRow("colour, quarter") << once << int(Color) << 1500 << 0.25;
    QTest::newRow("end is 1") << once << int(Transform) << 3000 << 1.0;
    QTest::newRow("after the end, not frozen") << once << int(Transform) << 3001 << notANumber;
    QTest::newRow("after the end, frozen") << once << int(FrozenTransform) << 3001 << 1.0;
    QTest::newRow("after the end, colour") << once << int(Color) << 3001 << 1.0;
    QTest::newRow("last possible time, frozen") << once << int(FrozenTransform) << highest << 1.0;

    const RendererTiming twice{0, 1000, 2};
    QTest::newRow("second cycle") << twice << int(Transform) << 1250 << 0.25;
    QTest::newRow("end of the first cycle is 1") << twice << int(Transform) << 1000 << 1.0;
    QTest::newRow("end of the second cycle is 0") << twice << int(Transform) << 2000 << 0.0;
    QTest::newRow("after the second cycle, frozen") << twice << int(FrozenTransform) << 2001 << 0.0;

    const RendererTiming oneAndAHalf{0, 1000, 1.5};
    QTest::newRow("end of half a cycle") << oneAndAHalf << int(Transform) << 1500 << 0.5;
    QTest::newRow("after half a cycle, not frozen")
            << oneAndAHalf << int(Transform) << 1501 << notANumber;
    QTest::newRow("after half a cycle, frozen")
            << oneAndAHalf << int(FrozenTransform) << 1501 << 0.5;

    const RendererTiming endless{-500, 1000, -1};
    QTest::newRow("endless, begun before the title") << endless << int(Transform) << 0 << 0.5;
    QTest::newRow("endless, later") << endless << int(Transform) << 7750 << 0.25;
    QTest::newRow("endless, whole cycles are 0") << endless << int(Transform) << 7500 << 0.0;

    const RendererTiming never{0, 1000, 0};
    QTest::newRow("count 0 at the begin") << never << int(Transform) << 0 << 0.0;
    QTest::newRow("count 0 later, not frozen") << never << int(Transform) << 1 << notANumber;
    QTest::newRow("count 0 later, frozen") << never << int(FrozenTransform) << 1 << 0.0;
    QTest::newRow("count 0 later, colour") << never << int(Color) << 1 << 0.0;
}

void HeldAnimationTest::shows()
{
    QFETCH(RendererTiming, timing);
    QFETCH(int, kind);
    QFETCH(int, ms);
    QFETCH(double, progress);
    const RendererTiming held = heldTiming(timing, afterEnd(Kind(kind)), ms);
    for (const int reading : readings(ms)) {
        const Shown result = shown(Kind(kind), held, reading);
        const bool isRight = std::isnan(progress) ? !result.anything
                                                  : result.anything && result.progress == progress;
        QVERIFY2(isRight, qPrintable(described(result)));
    }
}

void HeldAnimationTest::holdsStill_data()
{
    QTest::addColumn<RendererTiming>("timing");
    QTest::addColumn<int>("ms");

    QTest::newRow("a third of the way") << RendererTiming{0, 3, 1} << 1;
    QTest::newRow("smallest step of the longest cycle") << RendererTiming{0, highest, 1} << 1;
    QTest::newRow("nearly the end of the longest cycle")
            << RendererTiming{0, highest, 1} << highest - 1;
    QTest::newRow("earliest begin, longest cycle, end")
            << RendererTiming{lowest + 1, highest, 1} << 0;
    QTest::newRow("earliest begin, longest cycle, after the end")
            << RendererTiming{lowest + 1, highest, 1} << highest;
    QTest::newRow("earliest begin, endless, last time")
            << RendererTiming{lowest + 1, 1000, -1} << highest;
    QTest::newRow("latest begin") << RendererTiming{highest - 2, 1, 1} << highest - 2;
    QTest::newRow("before the latest begin") << RendererTiming{highest - 2, 1, 1} << highest - 3;
    QTest::newRow("1 ms cycles, late") << RendererTiming{0, 1, -1} << highest - 1;
    QTest::newRow("first time") << RendererTiming{lowest, 1000, 1} << lowest;
    QTest::newRow("no running time at the begin") << RendererTiming{1000, 0, 1} << 1000;
    QTest::newRow("no running time later") << RendererTiming{1000, 0, 1} << 9000;
    QTest::newRow("no running time before") << RendererTiming{1000, 0, 1} << 999;
    QTest::newRow("no running time, endless") << RendererTiming{1000, 0, -1} << 9000;
    QTest::newRow("no running time, count 0") << RendererTiming{1000, 0, 0} << 9000;
    QTest::newRow("exactly at a count that is no whole number")
            << RendererTiming{0, 1000, 2.5} << 2500;
    QTest::newRow("after a count that is no whole number") << RendererTiming{0, 1000, 2.5} << 2501;
    QTest::newRow("after a count below 1") << RendererTiming{0, 1000, 0.25} << 251;
    QTest::newRow("huge count") << RendererTiming{0, 10, 1e300} << 1234567;
    QTest::newRow("infinite count") << RendererTiming{0, 10, infinity} << 1234567;
    QTest::newRow("a count that is no number repeats endlessly")
            << RendererTiming{0, 1000, notANumber} << 7250;
}

void HeldAnimationTest::holdsStill()
{
    QFETCH(RendererTiming, timing);
    QFETCH(int, ms);
    for (const Kind kind : {Transform, FrozenTransform, Color})
        QCOMPARE(difference(kind, timing, ms), QString());
}

void HeldAnimationTest::holdsStillAtAnyTime_data()
{
    QTest::addColumn<int>("kind");

    QTest::newRow("transform") << int(Transform);
    QTest::newRow("frozen transform") << int(FrozenTransform);
    QTest::newRow("colour") << int(Color);
}

void HeldAnimationTest::holdsStillAtAnyTime()
{
    QFETCH(int, kind);
    QRandomGenerator random(4);
    int running = 0;
    int finished = 0;
    int nothing = 0;
    for (int i = 0; i < 100000; ++i) {
        const RendererTiming timing = anyTiming(random);
        const int ms = anyTime(random, timing);
        QCOMPARE(difference(Kind(kind), timing, ms), QString());
        const Shown expected = shown(Kind(kind), timing, ms);
        ++(expected.finished ? finished : expected.anything ? running : nothing);
    }
    // All three states have been met often.
    QVERIFY(running > 1000);
    QVERIFY(nothing > 1000);
    QVERIFY(finished > 1000 || kind == Transform);
}

void HeldAnimationTest::neverBegins_data()
{
    QTest::addColumn<RendererTiming>("timing");
    QTest::addColumn<int>("ms");

    QTest::newRow("1 ms before the begin") << RendererTiming{1000, 500, 1} << 999;
    QTest::newRow("long before the begin") << RendererTiming{1000, 500, 1} << lowest;
    QTest::newRow("before the begin, endless") << RendererTiming{1000, 500, -1} << 0;
    QTest::newRow("before the begin, no running time") << RendererTiming{1000, 0, -1} << 0;
    QTest::newRow("infinite begin") << RendererTiming{infinity, 500, 1} << highest;
    QTest::newRow("negative running time") << RendererTiming{1000, -500, 1} << 1500;
    QTest::newRow("negative running time, endless") << RendererTiming{1000, -500, -1} << 1500;
    QTest::newRow("negative running time, count 0") << RendererTiming{1000, -500, 0} << 1500;
    QTest::newRow("begin is no number") << RendererTiming{notANumber, 500, 1} << 1500;
    QTest::newRow("running time is no number") << RendererTiming{1000, notANumber, 1} << 1500;
    QTest::newRow("nothing is a number")
            << RendererTiming{notANumber, notANumber, notANumber} << 1500;
    QTest::newRow("begun for ever, for ever") << RendererTiming{-infinity, infinity, 1} << 0;
}

void HeldAnimationTest::neverBegins()
{
    QFETCH(RendererTiming, timing);
    QFETCH(int, ms);
    for (const Kind kind : {Transform, FrozenTransform, Color}) {
        const RendererTiming held = heldTiming(timing, afterEnd(kind), ms);
        for (const int reading : readings(ms))
            QVERIFY(!shown(kind, held, reading).anything);
    }
    for (const int reading : readings(ms))
        QVERIFY(reading < neverBegun().from);
}

QTEST_APPLESS_MAIN(HeldAnimationTest)

#include "tst_heldanimation.moc"
