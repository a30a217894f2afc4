// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/Decorator/ResizeGeometry_p.h>

#include <QMetaType>

#include <cmath>
#include <limits>

// Where the handles of a frame are, and what dragging one makes of the frame.

Q_DECLARE_METATYPE(Qt::WindowFrameSection)

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// 100 wide, 50 high and away from the origin.
const QRectF frame(10.0, 20.0, 100.0, 50.0);

} // namespace

class ResizeGeometryTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void placesHandles_data();
    void placesHandles();
    void resizes_data();
    void resizes();
    void aspectRatioFollows_data();
    void aspectRatioFollows();
    void noSmallestSize_data();
    void noSmallestSize();
    void flatFramesGiveNoRatio();
    void noSectionChangesNothing();
};

void ResizeGeometryTest::placesHandles_data()
{
    QTest::addColumn<Qt::WindowFrameSection>("section");
    QTest::addColumn<QPointF>("position");

    // The offsets are 3 and 4 for half a handle, 7 for a whole one.
    QTest::newRow("left") << Qt::LeftSection << QPointF(3.0, 41.0);
    QTest::newRow("top left") << Qt::TopLeftSection << QPointF(7.0, 16.0);
    QTest::newRow("top") << Qt::TopSection << QPointF(57.0, 12.0);
    QTest::newRow("top right") << Qt::TopRightSection << QPointF(107.0, 16.0);
    QTest::newRow("right") << Qt::RightSection << QPointF(110.0, 41.0);
    QTest::newRow("bottom right") << Qt::BottomRightSection << QPointF(107.0, 66.0);
    QTest::newRow("bottom") << Qt::BottomSection << QPointF(57.0, 70.0);
    QTest::newRow("bottom left") << Qt::BottomLeftSection << QPointF(7.0, 66.0);
}

void ResizeGeometryTest::placesHandles()
{
    QFETCH(Qt::WindowFrameSection, section);
    QFETCH(QPointF, position);

    QCOMPARE(handlePosition(section, frame, {QPointF(3.0, 4.0), 7.0}), position);
}

void ResizeGeometryTest::resizes_data()
{
    QTest::addColumn<Qt::WindowFrameSection>("section");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QPointF>("move");

    // A drag by (8, 6).
    QTest::newRow("left") << Qt::LeftSection << QSizeF(92.0, 50.0) << QPointF(8.0, 0.0);
    QTest::newRow("top left") << Qt::TopLeftSection << QSizeF(92.0, 44.0) << QPointF(8.0, 6.0);
    QTest::newRow("top") << Qt::TopSection << QSizeF(100.0, 44.0) << QPointF(0.0, 6.0);
    QTest::newRow("top right") << Qt::TopRightSection << QSizeF(108.0, 44.0) << QPointF(0.0, 6.0);
    QTest::newRow("right") << Qt::RightSection << QSizeF(108.0, 50.0) << QPointF();
    QTest::newRow("bottom right") << Qt::BottomRightSection << QSizeF(108.0, 56.0) << QPointF();
    QTest::newRow("bottom") << Qt::BottomSection << QSizeF(100.0, 56.0) << QPointF();
    QTest::newRow("bottom left") << Qt::BottomLeftSection << QSizeF(92.0, 56.0)
                                 << QPointF(8.0, 0.0);
}

void ResizeGeometryTest::resizes()
{
    QFETCH(Qt::WindowFrameSection, section);
    QFETCH(QSizeF, size);
    QFETCH(QPointF, move);

    const ResizedFrame resized = resizedFrame(section, frame, QPointF(8.0, 6.0), false);

    QCOMPARE(resized.size, size);
    QCOMPARE(resized.move, move);
}

void ResizeGeometryTest::aspectRatioFollows_data()
{
    QTest::addColumn<Qt::WindowFrameSection>("section");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QPointF>("move");

    // A drag by (8, 6) at a ratio of 2: the width leads, but for the upper and the lower edge.
    QTest::newRow("left, centre kept")
            << Qt::LeftSection << QSizeF(92.0, 46.0) << QPointF(8.0, 2.0);
    QTest::newRow("top left, bottom kept")
            << Qt::TopLeftSection << QSizeF(92.0, 46.0) << QPointF(8.0, 4.0);
    QTest::newRow("top, centre kept") << Qt::TopSection << QSizeF(88.0, 44.0) << QPointF(6.0, 6.0);
    QTest::newRow("top right, bottom kept")
            << Qt::TopRightSection << QSizeF(108.0, 54.0) << QPointF(0.0, -4.0);
    QTest::newRow("right, centre kept")
            << Qt::RightSection << QSizeF(108.0, 54.0) << QPointF(0.0, -2.0);
    QTest::newRow("bottom right, top kept")
            << Qt::BottomRightSection << QSizeF(108.0, 54.0) << QPointF();
    QTest::newRow("bottom, centre kept")
            << Qt::BottomSection << QSizeF(112.0, 56.0) << QPointF(-6.0, 0.0);
    QTest::newRow("bottom left, top kept")
            << Qt::BottomLeftSection << QSizeF(92.0, 46.0) << QPointF(8.0, 0.0);
}

void ResizeGeometryTest::aspectRatioFollows()
{
    QFETCH(Qt::WindowFrameSection, section);
    QFETCH(QSizeF, size);
    QFETCH(QPointF, move);

    const ResizedFrame resized = resizedFrame(section, frame, QPointF(8.0, 6.0), true);

    QCOMPARE(resized.size, size);
    QCOMPARE(resized.move, move);
}

void ResizeGeometryTest::noSmallestSize_data()
{
    QTest::addColumn<Qt::WindowFrameSection>("section");
    QTest::addColumn<QPointF>("drag");
    QTest::addColumn<bool>("keepAspectRatio");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QPointF>("move");

    QTest::newRow("right onto left")
            << Qt::RightSection << QPointF(-100.0, 0.0) << false << QSizeF(0.0, 50.0) << QPointF();
    QTest::newRow("right across left") << Qt::RightSection << QPointF(-130.0, 0.0) << false
                                       << QSizeF(-30.0, 50.0) << QPointF();
    QTest::newRow("left across right") << Qt::LeftSection << QPointF(130.0, 0.0) << false
                                       << QSizeF(-30.0, 50.0) << QPointF(130.0, 0.0);
    QTest::newRow("bottom right across both") << Qt::BottomRightSection << QPointF(-130.0, -60.0)
                                              << false << QSizeF(-30.0, -10.0) << QPointF();
    QTest::newRow("aspect, right across left") << Qt::RightSection << QPointF(-130.0, 0.0) << true
                                               << QSizeF(-30.0, -15.0) << QPointF(0.0, 32.5);
    QTest::newRow("aspect, bottom across top") << Qt::BottomSection << QPointF(0.0, -60.0) << true
                                               << QSizeF(-20.0, -10.0) << QPointF(60.0, 0.0);
}

void ResizeGeometryTest::noSmallestSize()
{
    QFETCH(Qt::WindowFrameSection, section);
    QFETCH(QPointF, drag);
    QFETCH(bool, keepAspectRatio);
    QFETCH(QSizeF, size);
    QFETCH(QPointF, move);

    const ResizedFrame resized = resizedFrame(section, frame, drag, keepAspectRatio);

    QCOMPARE(resized.size, size);
    QCOMPARE(resized.move, move);
}

void ResizeGeometryTest::flatFramesGiveNoRatio()
{
    const ResizedFrame flat = resizedFrame(Qt::BottomRightSection, QRectF(0.0, 0.0, 100.0, 0.0),
                                           QPointF(10.0, 5.0), true);
    QCOMPARE(flat.size, QSizeF(110.0, 0.0));

    const ResizedFrame grown =
            resizedFrame(Qt::BottomSection, QRectF(0.0, 0.0, 100.0, 0.0), QPointF(0.0, 5.0), true);
    QCOMPARE(grown.size.width(), infinite);
    QCOMPARE(grown.size.height(), 5.0);

    const ResizedFrame empty =
            resizedFrame(Qt::BottomRightSection, QRectF(), QPointF(10.0, 5.0), true);
    QCOMPARE(empty.size.width(), 10.0);
    QVERIFY(std::isnan(empty.size.height()));

    const ResizedFrame unknown = resizedFrame(Qt::RightSection, QRectF(0.0, 0.0, notANumber, 50.0),
                                              QPointF(10.0, 5.0), false);
    QVERIFY(std::isnan(unknown.size.width()));
    QCOMPARE(unknown.size.height(), 50.0);
}

void ResizeGeometryTest::noSectionChangesNothing()
{
    const ResizedFrame resized = resizedFrame(Qt::NoSection, frame, QPointF(8.0, 6.0), false);

    QCOMPARE(resized.size, frame.size());
    QCOMPARE(resized.move, QPointF());
}

QTEST_APPLESS_MAIN(ResizeGeometryTest)
#include "tst_resizegeometry.moc"
