// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/RotateDecorator.h>

#include <QRandomGenerator>
#include <QSignalSpy>

// A frame to size and a frame to turn around the same item.

namespace {

/// As it should be: the item, the frame that sizes it, the frame that turns both.
struct Stage : SceneOnView
{
    Stage()
        : child(new RecordingChild), sizing(new ResizeDecorator(child)),
          turning(new RotateDecorator(sizing)), mouse(view)
    {
        scene.addItem(turning);
        turning->setPos(-50.0, -25.0);
        turning->setViewScale(1.0);
    }

    ResizeHandleItem *sizingHandle(Qt::WindowFrameSection section)
    {
        return handlesOf(*sizing).at(section);
    }
    ResizeHandleItem *turningHandle() const { return childHandles(*turning).first(); }

    RecordingChild *child;
    ResizeDecorator *sizing;
    RotateDecorator *turning;
    ViewMouse mouse;
};

qreal lengthOnScene(const QGraphicsItem &item, const QPointF &from, const QPointF &to)
{
    return QLineF(item.mapToScene(from), item.mapToScene(to)).length();
}

} // namespace

class NestedFramesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void handlesOfBothAreApart();
    void sizesWithinTheTurnedFrame_data();
    void sizesWithinTheTurnedFrame();
    void wigglesLeaveTheSize();
    void turnsWhatIsSized();
    void movesAsOne();
    void passesOnWhatTheChildIsTold();
    void sizingFrameOutsideTakesTheHandleIn();
    void takesTheChildOutOfItsGroup();
    void staysInTheGroup();
};

void NestedFramesTest::handlesOfBothAreApart()
{
    Stage stage;
    const QRectF turning = stage.turningHandle()->sceneBoundingRect();
    for (const Qt::WindowFrameSection section : allSections())
        QVERIFY(!turning.intersects(stage.sizingHandle(section)->sceneBoundingRect()));
}

void NestedFramesTest::sizesWithinTheTurnedFrame_data()
{
    QTest::addColumn<qreal>("rotation");

    QTest::newRow("unturned") << 0.0;
    QTest::newRow("a little") << 30.0;
    QTest::newRow("a quarter") << 90.0;
    QTest::newRow("almost upside down") << -170.0;
}

/// The opposite edge stays where it is, though a resize frame that is turned itself would lose it.
void NestedFramesTest::sizesWithinTheTurnedFrame()
{
    QFETCH(const qreal, rotation);

    Stage stage;
    stage.turning->updateTransformCenter();
    stage.turning->setRotation(rotation);
    stage.sizing->updateDecoration();
    QSignalSpy resized(stage.sizing, &ResizeDecorator::itemResized);
    const auto upperRight = [&stage] {
        return stage.child->mapToScene(stage.child->boundingRect().topRight());
    };
    const QPointF edge = upperRight();
    const ResizeHandleItem *handle = stage.sizingHandle(Qt::LeftSection);
    stage.mouse.press(centreOnScene(*handle));
    const QPointF from = stage.mouse.scenePosition();
    stage.mouse.moveTo(from + stage.turning->mapToScene(-40.0, 0.0)
                       - stage.turning->mapToScene(0.0, 0.0));
    const QPointF way = stage.turning->mapFromScene(stage.mouse.scenePosition())
            - stage.turning->mapFromScene(from);
    stage.mouse.release();
    COMPARE_SIZES(stage.child->size, QSizeF(100.0 - way.x(), 50.0));
    COMPARE_POINTS(upperRight(), edge);
    QCOMPARE(resized.count(), 1);
    QCOMPARE(stage.turning->rotation(), rotation);
}

/// Back and forth, with either handle.
void NestedFramesTest::wigglesLeaveTheSize()
{
    Stage stage;
    QRandomGenerator dice(3);
    for (int i = 0; i < 10; ++i) {
        const QPoint way(dice.bounded(-30, 30), dice.bounded(-30, 30));
        stage.mouse.press(centreOnScene(*stage.sizingHandle(Qt::BottomRightSection)));
        stage.mouse.moveBy(way);
        stage.mouse.moveBy(-way);
        stage.mouse.release();
        COMPARE_SIZES(stage.child->boundingRect().size(), QSizeF(100.0, 50.0));
        stage.mouse.drag(centreOnScene(*stage.turningHandle()), way);
        COMPARE_SIZES(stage.child->boundingRect().size(), QSizeF(100.0, 50.0));
    }
}

/// About the middle of the frame, handles included, by which the size does not change.
void NestedFramesTest::turnsWhatIsSized()
{
    Stage stage;
    QSignalSpy rotated(stage.turning, &RotateDecorator::itemRotated);
    stage.mouse.press(centreOnScene(*stage.turningHandle()));
    const QPointF centre = stage.turning->mapToScene(stage.turning->transformOriginPoint());
    stage.mouse.moveTo(centre + QPointF(90.0, 0.0));
    stage.mouse.release();
    QCOMPARE(rotated.count(), 1);
    QVERIFY(std::abs(stage.turning->rotation() - 90.0) < 2.0);
    COMPARE_CLOSE(lengthOnScene(*stage.child, QPointF(0.0, 0.0), QPointF(100.0, 0.0)), 100.0);
    COMPARE_CLOSE(lengthOnScene(*stage.child, QPointF(0.0, 0.0), QPointF(0.0, 50.0)), 50.0);
    COMPARE_POINTS(stage.turning->mapToScene(stage.turning->transformOriginPoint()), centre);
}

void NestedFramesTest::movesAsOne()
{
    Stage stage;
    QSignalSpy moved(stage.turning, &AbstractDecorator::itemMoved);
    QSignalSpy movedWithin(stage.sizing, &AbstractDecorator::itemMoved);
    const QPointF before = centreOnScene(*stage.child);
    stage.mouse.drag(before, QPoint(12, -7));
    COMPARE_POINTS(centreOnScene(*stage.child), before + QPointF(12.0, -7.0));
    QCOMPARE(stage.sizing->pos(), QPointF());
    QCOMPARE(moved.count(), 1);
    // The inner frame only moves within the outer one, and tells of that by itemResized().
    stage.mouse.drag(centreOnScene(*stage.sizingHandle(Qt::LeftSection)), QPoint(-10, 0));
    QCOMPARE(stage.sizing->pos(), QPointF(-10.0, 0.0));
    QCOMPARE(movedWithin.count(), 0);
    QCOMPARE(moved.count(), 1);
}

void NestedFramesTest::passesOnWhatTheChildIsTold()
{
    Stage stage;
    stage.child->calls.clear();
    stage.turning->setHighlight(true);
    QVERIFY(stage.child->highlighted);
    stage.turning->setViewScale(2.0);
    QCOMPARE(stage.child->scale, 2.0);
    QCOMPARE(stage.sizing->viewScale(), 2.0);
    stage.mouse.doubleClick(centreOnScene(*stage.child));
    QVERIFY(stage.child->editable);
    COMPARE_POINTS(stage.child->editPosition, QPointF(50.0, 25.0));
}

/// The other way round the handle that turns counts as part of what is sized.
void NestedFramesTest::sizingFrameOutsideTakesTheHandleIn()
{
    SceneOnView stage;
    auto *child = new RecordingChild;
    auto *turning = new RotateDecorator(child);
    auto *sizing = new ResizeDecorator(turning);
    stage.scene.addItem(sizing);
    sizing->updateDecoration();
    ViewMouse mouse(stage.view);
    // The handle adds 21.5, which each move adds again.
    QCOMPARE(turning->boundingRect().height(), 71.5);
    mouse.press(centreOnScene(*handlesOf(*sizing).at(Qt::BottomSection)));
    mouse.moveBy(QPoint(0, 1));
    QCOMPARE(child->size.height(), 72.5);
    mouse.moveBy(QPoint(0, -1));
    QCOMPARE(child->size.height(), 93.0);
    mouse.release();
}

void NestedFramesTest::takesTheChildOutOfItsGroup()
{
    QGraphicsScene scene;
    auto *group = scene.addRect(QRectF());
    group->setPos(100.0, 200.0);
    group->setRotation(90.0);
    auto *child = new RecordingChild;
    child->setParentItem(group);
    child->setPos(3.0, 4.0);
    QCOMPARE(child->scene(), &scene);

    auto *frame = new ResizeDecorator(child);
    QCOMPARE(child->scene(), nullptr);
    QVERIFY(group->childItems().isEmpty());
    scene.addItem(frame);
    QCOMPARE(child->scene(), &scene);
    COMPARE_POINTS(child->mapToScene(QPointF(10.0, 0.0)), QPointF(13.0, 4.0));
}

void NestedFramesTest::staysInTheGroup()
{
    QGraphicsScene scene;
    auto *group = scene.addRect(QRectF());
    group->setPos(100.0, 200.0);
    group->setRotation(90.0);
    auto *child = new RecordingChild;
    child->setParentItem(group);
    child->setPos(3.0, 4.0);
    const QPointF before = child->mapToScene(QPointF(10.0, 0.0));

    const auto *frame = new ResizeDecorator(child, group);
    QCOMPARE(frame->scene(), &scene);
    COMPARE_POINTS(child->mapToScene(QPointF(10.0, 0.0)), before);
}

QTEST_MAIN(NestedFramesTest)
#include "tst_nestedframes.moc"
