// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include "SceneTest.h"

#include <QApplication>
#include <QPainter>
#include <QSignalSpy>

// A handle is drawn twice, with the inner and then with the outer pen.

namespace {

const QRectF handleRect(0.0, 0.0, 20.0, 20.0);

QPen solid(const QColor &color, qreal width)
{
    return QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
}

/// What the handle paints into a picture with a margin of ten pixels.
QImage painted(const std::function<void(QPainter &)> &paint)
{
    QImage picture(40, 40, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.translate(10.0, 10.0);
    paint(painter);
    return picture;
}

} // namespace

class ResizeHandleItemTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void screenIsScaledAsAskedFor();
    void isARectangle();
    void drawsInnerThenOuterPen_data();
    void drawsInnerThenOuterPen();
    void fillsNothing();
    void leavesThePainterAsItWas();
    void pensRepaintNothing();
};

/// Or the tests that run once more on a screen of twice the resolution would not.
void ResizeHandleItemTest::screenIsScaledAsAskedFor()
{
    const bool isScaled = qEnvironmentVariableIsSet("QT_SCALE_FACTOR");
    const qreal factor = isScaled ? qEnvironmentVariableIntValue("QT_SCALE_FACTOR") : 1.0;
    QCOMPARE(qApp->devicePixelRatio(), factor);
}

void ResizeHandleItemTest::isARectangle()
{
    QGraphicsRectItem parent;
    const auto *handle = new ResizeHandleItem(handleRect, &parent);
    QCOMPARE(handle->parentItem(), &parent);
    QCOMPARE(handle->rect(), handleRect);
    // Half of the rectangle's own pen, which is not one of the two, is outside on each side.
    QCOMPARE(handle->boundingRect(), QRectF(-0.5, -0.5, 21.0, 21.0));

    const ResizeHandleItem alone(handleRect);
    QCOMPARE(alone.parentItem(), nullptr);
}

void ResizeHandleItemTest::drawsInnerThenOuterPen_data()
{
    QTest::addColumn<QPen>("inner");
    QTest::addColumn<QPen>("outer");
    QTest::addColumn<qreal>("ownWidth");

    const QPen wide = solid(Qt::red, 7.0);
    const QPen slim = solid(Qt::blue, 3.0);
    QTest::newRow("wide below slim") << wide << slim << 1.0;
    QTest::newRow("slim below wide") << slim << wide << 1.0;
    QTest::newRow("default pens") << QPen() << QPen() << 1.0;
    QTest::newRow("inner only") << wide << QPen(Qt::NoPen) << 1.0;
    QTest::newRow("outer only") << QPen(Qt::NoPen) << slim << 1.0;
    QTest::newRow("dashes") << slim << QPen(Qt::black, 3.0, Qt::DashLine) << 1.0;
    QTest::newRow("a wide pen of the rectangle's own") << wide << slim << 6.0;
}

void ResizeHandleItemTest::drawsInnerThenOuterPen()
{
    QFETCH(const QPen, inner);
    QFETCH(const QPen, outer);
    QFETCH(const qreal, ownWidth);

    ResizeHandleItem handle(handleRect);
    handle.setPen(QPen(Qt::green, ownWidth));
    handle.installPen(outer);
    handle.installInnerPen(inner);
    const QImage actual =
            painted([&](QPainter &painter) { handle.paint(&painter, nullptr, nullptr); });
    const QImage expected = painted([&](QPainter &painter) {
        const qreal beyond = ownWidth / 2.0;
        const QRectF rect = handleRect.adjusted(-beyond, -beyond, beyond, beyond);
        painter.setPen(inner);
        painter.drawRect(rect);
        painter.setPen(outer);
        painter.drawRect(rect);
    });
    COMPARE_PICTURES(actual, expected, 0);
}

void ResizeHandleItemTest::fillsNothing()
{
    ResizeHandleItem handle(handleRect);
    handle.setBrush(Qt::red);
    const QImage picture =
            painted([&](QPainter &painter) { handle.paint(&painter, nullptr, nullptr); });
    QCOMPARE(picture.pixelColor(20, 20), QColor(Qt::white));
    QVERIFY(!isBlank(picture));
}

void ResizeHandleItemTest::leavesThePainterAsItWas()
{
    ResizeHandleItem handle(handleRect);
    handle.installPen(solid(Qt::red, 3.0));
    painted([&](QPainter &painter) {
        painter.setPen(QPen(Qt::cyan, 9.0));
        handle.paint(&painter, nullptr, nullptr);
        QCOMPARE(painter.pen(), QPen(Qt::cyan, 9.0));
    });
}

void ResizeHandleItemTest::pensRepaintNothing()
{
    SceneOnView stage;
    auto *handle = new ResizeHandleItem(handleRect);
    stage.scene.addItem(handle);
    QSignalSpy changes(&stage.scene, &QGraphicsScene::changed);
    QVERIFY(changes.wait());
    QCoreApplication::processEvents();
    changes.clear();
    handle->installPen(solid(Qt::red, 3.0));
    handle->installInnerPen(solid(Qt::blue, 3.0));
    QCoreApplication::processEvents();
    QCOMPARE(changes.count(), 0);
    handle->update();
    QTRY_VERIFY(!changes.isEmpty());
}

QTEST_MAIN(ResizeHandleItemTest)
#include "tst_resizehandleitem.moc"
