// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/ClipTime_p.h>

#include <QRandomGenerator>

#include <cmath>
#include <limits>

// How the time of a clip becomes the time of the title shown on it.

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A title of 4 s with a closing part of 1 s.
ClipTiming titleOn(int clipDuration, double speed = 1.0)
{
    return {clipDuration, 4000, 1000, speed};
}

/// The same rule once more in wide numbers, good where every time is far from the ends of an int.
qint64 expectedTime(const ClipTiming &timing, int clipTime)
{
    const auto whole = [](double value) { return qint64(std::trunc(value)); };
    const qint64 conclusion = whole(timing.conclusionDuration / timing.speed);
    const qint64 main = whole(timing.documentDuration / timing.speed) - conclusion;
    qint64 conclusionStart = timing.clipDuration - conclusion;
    if (conclusionStart < main + 1000)
        conclusionStart = main + 1000;
    qint64 itemTime = clipTime;
    if (!(clipTime < main)) {
        itemTime = main;
        if (clipTime > conclusionStart)
            itemTime = main + (clipTime - conclusionStart);
    }
    return whole(double(itemTime) * timing.speed);
}

QString described(const ClipTiming &timing, int clipTime)
{
    return QStringLiteral("clip %1, document %2, conclusion %3, speed %4, time %5")
            .arg(timing.clipDuration)
            .arg(timing.documentDuration)
            .arg(timing.conclusionDuration)
            .arg(timing.speed)
            .arg(clipTime);
}

} // namespace

Q_DECLARE_METATYPE(ClipTiming)

class ClipTimeTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void documentTimeOfAClipTime_data();
    void documentTimeOfAClipTime();
    void agreesWithTheRuleInWideNumbers();
    void neverRunsBackwards();
};

void ClipTimeTest::documentTimeOfAClipTime_data()
{
    QTest::addColumn<ClipTiming>("timing");
    QTest::addColumn<int>("clipTime");
    QTest::addColumn<int>("documentTime");

    const auto row = [](const char *name, const ClipTiming &timing, int clipTime, int expected) {
        QTest::newRow(name) << timing << clipTime << expected;
    };

    row("long clip: start", titleOn(10000), 0, 0);
    row("long clip: 2 s", titleOn(10000), 2000, 2000);
    row("long clip: just before the hold", titleOn(10000), 2999, 2999);
    row("long clip: the hold begins", titleOn(10000), 3000, 3000);
    row("long clip: in the hold", titleOn(10000), 5000, 3000);
    row("long clip: the closing part begins", titleOn(10000), 9000, 3000);
    row("long clip: just after that", titleOn(10000), 9001, 3001);
    row("long clip: in the closing part", titleOn(10000), 9500, 3500);
    row("long clip: end", titleOn(10000), 10000, 4000);
    row("long clip: after the end", titleOn(10000), 10500, 4500);
    row("long clip: before the start", titleOn(10000), -500, -500);

    row("short clip: before the hold", titleOn(3500), 2999, 2999);
    row("short clip: end, in the hold", titleOn(3500), 3500, 3000);
    row("short clip: the hold is a second", titleOn(3500), 4000, 3000);
    row("short clip: the closing part follows after the end", titleOn(3500), 4001, 3001);
    row("clip of just the title and a second: hold", titleOn(5000), 4000, 3000);
    row("clip of just the title and a second: end", titleOn(5000), 5000, 4000);
    row("clip 1 ms longer: the hold too", titleOn(5001), 4001, 3000);
    row("clip 1 ms longer: end", titleOn(5001), 5001, 4000);
    row("clip of no length: the hold is a second", titleOn(0), 4000, 3000);
    row("clip of no length: after it", titleOn(0), 4500, 3500);
    row("clip of negative length", titleOn(-7000), 4500, 3500);

    row("double speed: 0.5 s", titleOn(10000, 2.0), 500, 1000);
    row("double speed: 1 s", titleOn(10000, 2.0), 1000, 2000);
    row("double speed: the hold begins", titleOn(10000, 2.0), 1500, 3000);
    row("double speed: the hold ends", titleOn(10000, 2.0), 9500, 3000);
    row("double speed: end", titleOn(10000, 2.0), 10000, 4000);
    row("double speed: the hold is a second of the clip", titleOn(0, 2.0), 2500, 3000);
    row("double speed: after it", titleOn(0, 2.0), 2600, 3200);
    row("half speed: 3 s", titleOn(20000, 0.5), 3000, 1500);
    row("half speed: odd times are truncated", titleOn(20000, 0.5), 3001, 1500);
    row("half speed: end", titleOn(20000, 0.5), 20000, 4000);
    // 333 + 1000 of item time and a hold at 1000 x 3 instead of 3000.
    row("speed 3: conclusion and length are truncated", titleOn(10000, 3.0), 5000, 3000);
    row("speed 3: the closing part begins at 9667", titleOn(10000, 3.0), 9668, 3003);
    row("speed 3: end", titleOn(10000, 3.0), 10000, 3999);
    row("speed 0.3: the product is truncated", titleOn(50000, 0.3), 7, 2);
    row("speed 0.3: so it is below 0", titleOn(50000, 0.3), -7, -2);

    row("no closing part: hold to the end", {10000, 4000, 0, 1.0}, 10000, 4000);
    row("no closing part: goes on after the clip", {10000, 4000, 0, 1.0}, 10001, 4001);
    row("still title", {10000, 0, 0, 1.0}, 5000, 0);
    row("nothing but a closing part", {10000, 4000, 4000, 1.0}, 7000, 1000);
    row("closing part longer than the title", {10000, 4000, 5000, 1.0}, 0, -1000);
    row("closing part begins after the end", {10000, 4000, -500, 1.0}, 4400, 4400);
    row("closing part begins after the end: hold", {10000, 4000, -500, 1.0}, 6000, 4500);

    row("speed 0", titleOn(10000, 0.0), 5000, 0);
    row("speed 0, still title", {10000, 0, 0, 0.0}, 5000, 0);
    row("speed -0", titleOn(10000, -0.0), 5000, 0);
    row("speed NaN", titleOn(10000, notANumber), 5000, 0);
    row("infinite speed: the hold", titleOn(10000, infinite), 5000, 0);
    row("infinite speed: after the hold", titleOn(10000, infinite), 10001, highest);
    row("infinite speed: before the start", titleOn(10000, infinite), -1, lowest);
    row("infinite speed backwards: before the start", titleOn(10000, -infinite), -1, highest);
    row("smallest speed", titleOn(10000, std::numeric_limits<double>::denorm_min()), 5000, 0);
    row("largest speed", titleOn(10000, std::numeric_limits<double>::max()), 10001, highest);
    // conclusion -1000, main -3000, and the closing part from 11000 on.
    row("backwards: before main", titleOn(10000, -1.0), -4000, 4000);
    row("backwards: hold", titleOn(10000, -1.0), 5000, 3000);
    row("backwards: after the clip", titleOn(10000, -1.0), 11500, 2500);

    row("latest time", titleOn(10000), highest, highest - 6000);
    row("earliest time", titleOn(10000), lowest, lowest);
    row("latest time, double speed", titleOn(10000, 2.0), highest, highest);
    row("earliest time, double speed", titleOn(10000, 2.0), lowest, lowest);
    row("earliest time, backwards", titleOn(10000, -1.0), lowest, highest);
    row("longest clip: hold", titleOn(highest), highest - 1000, 3000);
    row("longest clip: end", titleOn(highest), highest, 4000);
    row("most negative clip", titleOn(lowest), 4001, 3001);
    row("longest title", {10000, highest, 0, 1.0}, highest, highest);
    row("longest title with the longest closing part", {10000, highest, highest, 1.0}, 1000, 0);
    row("longest title, closing part below 0", {10000, highest, lowest, 1.0}, highest, highest);
    row("shortest title, longest closing part", {10000, lowest, highest, 1.0}, -5, -10006);
    row("all at the lower end", {lowest, lowest, lowest, -1.0}, lowest, highest);
    row("all at the upper end", {highest, highest, highest, 0.5}, highest, 1073741323);
}

void ClipTimeTest::documentTimeOfAClipTime()
{
    QFETCH(const ClipTiming, timing);
    QFETCH(const int, clipTime);

    QTEST(documentTime(timing, clipTime), "documentTime");
}

void ClipTimeTest::agreesWithTheRuleInWideNumbers()
{
    QRandomGenerator random(4711);
    const double speeds[] = {1.0, 0.1, 0.3, 0.5, 0.7, 1.1, 2.0, 3.0, 7.5, -1.0, -0.6};
    for (int round = 0; round < 20000; ++round) {
        const ClipTiming timing{random.bounded(-2000, 30000), random.bounded(0, 20000),
                                random.bounded(-1000, 21000),
                                speeds[random.bounded(int(std::size(speeds)))]};
        const int clipTime = random.bounded(-5000, 40000);
        const QString what = described(timing, clipTime);
        QVERIFY2(documentTime(timing, clipTime) == expectedTime(timing, clipTime),
                 qPrintable(what));
    }
}

/// Played forwards, a later time of the clip never shows an earlier time of the title.
void ClipTimeTest::neverRunsBackwards()
{
    const int edges[] = {lowest, lowest + 1, -1000, 0, 1, 3000, 9000, highest - 1000, highest};
    for (const double speed : {1e-300, 0.001, 1.0, 2.5, 1e9, 1e300}) {
        for (const int clipDuration : edges) {
            int previous = lowest;
            for (const int clipTime : edges) {
                const ClipTiming timing = titleOn(clipDuration, speed);
                const int time = documentTime(timing, clipTime);
                QVERIFY2(time >= previous, qPrintable(described(timing, clipTime)));
                previous = time;
            }
        }
    }
}

QTEST_APPLESS_MAIN(ClipTimeTest)
#include "tst_cliptime.moc"
