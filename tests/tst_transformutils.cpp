// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/TransformUtils.h>

#include <QRandomGenerator>
#include <QRectF>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

/// A scale and a move after it.
QTransform scaledAndMoved(double scale, double dx, double dy)
{
    return QTransform(scale, 0, 0, scale, dx, dy);
}

double randomBetween(QRandomGenerator &random, double low, double high)
{
    return low + random.generateDouble() * (high - low);
}

QSizeF randomSize(QRandomGenerator &random)
{
    return {randomBetween(random, 0.1, 2000), randomBetween(random, 0.1, 2000)};
}

bool isClose(double a, double b)
{
    return std::abs(a - b) <= 1e-9 * std::max({1.0, std::abs(a), std::abs(b)});
}

/// Not fuzzy: also tells 0 from what is nearly 0.
void compareSizes(const QSizeF &actual, const QSizeF &expected)
{
    const QString what = QStringLiteral("%1 x %2 instead of %3 x %4")
                                 .arg(actual.width())
                                 .arg(actual.height())
                                 .arg(expected.width())
                                 .arg(expected.height());
    QVERIFY2(isClose(actual.width(), expected.width())
                     && isClose(actual.height(), expected.height()),
             qPrintable(what));
}

} // namespace

class TransformUtilsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void rescales_data();
    void rescales();
    void leavesNearlyEqualSizesAlone();
    void rescaledContentFits();
    void rescalesSizesOfOneExtent_data();
    void rescalesSizesOfOneExtent();
    void extractsScales_data();
    void extractsScales();
    void extractsScalesOfTurnedContent();
    void extractsTheSameScaleAtEveryOrigin();
    void survivesDegenerateTransforms_data();
    void survivesDegenerateTransforms();
    void survivesDegenerateSizes();
};

void TransformUtilsTest::rescales_data()
{
    QTest::addColumn<QSizeF>("from");
    QTest::addColumn<QSizeF>("to");
    QTest::addColumn<QTransform>("transform");

    const auto row = [](const char *name, const QSizeF &from, const QSizeF &to,
                        const QTransform &transform) {
        QTest::newRow(name) << from << to << transform;
    };
    const QTransform identity;
    row("room above and below", {100, 50}, {200, 200}, scaledAndMoved(2, 0, 50));
    row("room at the sides", {50, 100}, {200, 200}, scaledAndMoved(2, 50, 0));
    row("same aspect ratio", {100, 50}, {300, 150}, scaledAndMoved(3, 0, 0));
    row("smaller", {200, 200}, {100, 50}, scaledAndMoved(0.25, 25, 0));
    row("only narrower", {100, 50}, {50, 50}, scaledAndMoved(0.5, 0, 12.5));
    row("only wider", {100, 50}, {200, 50}, scaledAndMoved(1, 50, 0));
    row("only higher", {100, 50}, {100, 80}, scaledAndMoved(1, 0, 15));
    row("fractions", {0.5, 0.25}, {1, 1}, scaledAndMoved(2, 0, 0.25));

    row("from nothing", {0, 0}, {10, 10}, identity);
    row("to nothing", {10, 10}, {0, 0}, identity);
    row("nothing to nothing", {0, 0}, {0, 0}, identity);
    row("equal sizes", {1920, 1080}, {1920, 1080}, identity);
    row("equal sizes of one extent", {100, 0}, {100, 0}, identity);
    row("equal negative sizes", {-5, -7}, {-5, -7}, identity);

    row("to no height", {10, 10}, {20, 0}, scaledAndMoved(0, 10, 0));
    row("to no width", {10, 10}, {0, 20}, scaledAndMoved(0, 0, 10));
    row("from no width", {0, 50}, {100, 100}, scaledAndMoved(2, 50, 0));
    row("from no height", {50, 0}, {100, 100}, scaledAndMoved(2, 0, 50));
    row("mirrored width", {100, 50}, {-100, 50}, scaledAndMoved(-1, 0, 50));
}

void TransformUtilsTest::rescales()
{
    QFETCH(const QSizeF, from);
    QFETCH(const QSizeF, to);
    QTEST(RescaleTransform(from, to), "transform");
}

void TransformUtilsTest::leavesNearlyEqualSizesAlone()
{
    const QSizeF from(100, 50);
    QVERIFY(RescaleTransform(from, QSizeF(100 + 1e-11, 50 - 1e-11)).isIdentity());
    QVERIFY(!RescaleTransform(from, QSizeF(100 + 1e-9, 50)).isIdentity());
    QVERIFY(!RescaleTransform(from, QSizeF(100, 50 - 1e-9)).isIdentity());
    QVERIFY(!RescaleTransform(QSizeF(0, 50), QSizeF(1e-13, 50)).isIdentity());
}

void TransformUtilsTest::rescaledContentFits()
{
    QRandomGenerator random(1);
    for (int round = 0; round < 2000; ++round) {
        const QSizeF from = randomSize(random);
        const QSizeF to = randomSize(random);
        const QTransform transform = RescaleTransform(from, to);
        QCOMPARE(transform.m11(), transform.m22());
        QCOMPARE(transform.m12(), 0.0);
        QCOMPARE(transform.m21(), 0.0);

        const QRectF content = transform.mapRect(QRectF(QPointF(), from));
        QVERIFY(isClose(content.center().x(), to.width() / 2));
        QVERIFY(isClose(content.center().y(), to.height() / 2));
        const bool fillsWidth = isClose(content.width(), to.width());
        const bool fillsHeight = isClose(content.height(), to.height());
        QVERIFY(fillsWidth || fillsHeight);
        QVERIFY(fillsWidth || content.width() < to.width());
        QVERIFY(fillsHeight || content.height() < to.height());
    }
}

void TransformUtilsTest::rescalesSizesOfOneExtent_data()
{
    QTest::addColumn<QSizeF>("from");
    QTest::addColumn<QSizeF>("to");

    QTest::newRow("lines across") << QSizeF(50, 0) << QSizeF(100, 0);
    QTest::newRow("lines down") << QSizeF(0, 50) << QSizeF(0, 100);
}

/// The extent that both sizes lack has no say.
void TransformUtilsTest::rescalesSizesOfOneExtent()
{
    QFETCH(const QSizeF, from);
    QFETCH(const QSizeF, to);
    QCOMPARE(RescaleTransform(from, to), scaledAndMoved(2, 0, 0));
}

void TransformUtilsTest::extractsScales_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<QPointF>("origin");
    QTest::addColumn<QSizeF>("scale");

    const auto row = [](const char *name, const QTransform &transform, const QSizeF &scale) {
        const QPointF origins[] = {{0, 0}, {5, 6}, {-100, 0.25}};
        for (const QPointF &origin : origins) {
            QTest::addRow("%s, at (%g, %g)", name, origin.x(), origin.y())
                    << transform << origin << scale;
        }
    };
    const auto turned = [](double degrees) { return QTransform().rotate(degrees); };
    row("identity", QTransform(), {1, 1});
    row("scaled", QTransform().scale(2, 3), {2, 3});
    row("moved", QTransform::fromTranslate(70, -80), {1, 1});
    row("scaled and moved", QTransform(2, 0, 0, 3, 70, -80), {2, 3});
    row("turned by 30 degrees", turned(30), {1, 1});
    row("turned by 45 degrees", turned(45), {1, 1});
    row("turned by -30 degrees", turned(-30), {1, 1});
    row("turned by 89.9 degrees", turned(89.9), {1, 1});
    row("x axis straight down", turned(90), {1, 1});
    row("x axis straight up", turned(-90), {1, 1});
    row("x axis straight up, by 270 degrees", turned(270), {1, 1});
    row("turned upside down", turned(180), {1, 1});
    row("turned by 150 degrees", turned(150), {1, 1});
    row("turned by -150 degrees", turned(-150), {1, 1});
    row("evenly scaled, turned by 30 degrees", turned(30).scale(4, 4), {4, 4});
    row("evenly scaled, x axis straight down", turned(90).scale(4, 4), {4, 4});
    row("evenly scaled, upside down", turned(180).scale(4, 4), {4, 4});
    // The turn is undone in front of the scale, so the axes change places.
    row("scaled, x axis straight down", turned(90).scale(2, 3), {3, 2});
    row("x axis straight down, then scaled", turned(90) * QTransform::fromScale(2, 3), {2, 3});
    row("scaled, upside down", turned(180).scale(2, 3), {2, 3});
    row("mirrored across", QTransform().scale(-2, 3), {2, 3});
    row("mirrored down", QTransform().scale(2, -3), {2, 3});
    row("sheared across", QTransform().shear(0.5, 0), {1.5, 1});
    row("no height", QTransform().scale(2, 0), {2, 0});
}

void TransformUtilsTest::extractsScales()
{
    QFETCH(const QTransform, transform);
    QFETCH(const QPointF, origin);
    QFETCH(const QSizeF, scale);
    compareSizes(ExtractScale(transform, origin), scale);
}

/// A turn after the scale is undone exactly, whatever its angle, when the scale is even.
void TransformUtilsTest::extractsScalesOfTurnedContent()
{
    QRandomGenerator random(2);
    for (int round = 0; round < 2000; ++round) {
        const double scale = randomBetween(random, 0.01, 50);
        const double degrees = randomBetween(random, -720, 720);
        const QTransform transform = QTransform::fromScale(scale, scale)
                * QTransform().rotate(degrees)
                * QTransform::fromTranslate(randomBetween(random, -500, 500),
                                            randomBetween(random, -500, 500));
        compareSizes(ExtractScale(transform, QPointF()), QSizeF(scale, scale));
    }
}

void TransformUtilsTest::extractsTheSameScaleAtEveryOrigin()
{
    QRandomGenerator random(3);
    for (int round = 0; round < 2000; ++round) {
        const auto number = [&random] { return randomBetween(random, -10, 10); };
        const QTransform transform(number(), number(), number(), number(), number(), number());
        const QPointF origin(number(), number());
        compareSizes(ExtractScale(transform, origin), ExtractScale(transform, QPointF()));
    }
}

void TransformUtilsTest::survivesDegenerateTransforms_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<QPointF>("origin");

    const auto row = [](const char *name, const QTransform &transform, const QPointF &origin) {
        QTest::newRow(name) << transform << origin;
    };
    row("x axis of no length", QTransform(0, 0, 0, 1, 0, 0), {});
    row("nothing", QTransform(0, 0, 0, 0, 0, 0), {});
    row("NaN scale", QTransform(notANumber, 0, 0, 1, 0, 0), {});
    row("NaN turn", QTransform(1, notANumber, notANumber, 1, 0, 0), {});
    row("all NaN",
        QTransform(notANumber, notANumber, notANumber, notANumber, notANumber, notANumber), {});
    row("infinite scale", QTransform(infinite, 0, 0, infinite, 0, 0), {1, 1});
    row("NaN origin", QTransform().rotate(30), {notANumber, 0});
    row("infinite origin", QTransform().rotate(30), {infinite, -infinite});
    row("largest scale, turned", QTransform(largest, largest, -largest, largest, 0, 0), {1, 1});
    row("far away", QTransform(1, 0, 0, 1, largest, largest), {});
    row("projection without a horizon", QTransform(1, 0, 0, 0, 1, 0, 0, 0, 0), {});
}

/// There is no scale to be had, or none worth anything.
void TransformUtilsTest::survivesDegenerateTransforms()
{
    QFETCH(const QTransform, transform);
    QFETCH(const QPointF, origin);
    const QSizeF scale = ExtractScale(transform, origin);
    QVERIFY(!(scale.width() < 0) && !(scale.height() < 0));
}

void TransformUtilsTest::survivesDegenerateSizes()
{
    const double extents[] = {0.0,      -0.0,    1.0,      -1.0,      smallest,
                              -largest, largest, infinite, -infinite, notANumber};
    for (const double fromWidth : extents) {
        for (const double fromHeight : extents) {
            for (const double toWidth : extents) {
                for (const double toHeight : extents) {
                    const QTransform transform = RescaleTransform(QSizeF(fromWidth, fromHeight),
                                                                  QSizeF(toWidth, toHeight));
                    QVERIFY(transform.isAffine());
                    QCOMPARE(transform.m12(), 0.0);
                    QCOMPARE(transform.m21(), 0.0);
                }
            }
        }
    }
}

QTEST_APPLESS_MAIN(TransformUtilsTest)
#include "tst_transformutils.moc"
