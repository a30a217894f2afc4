// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/RotateDecorator.h>

#include <QGraphicsRectItem>
#include <QRandomGenerator>

// Frames inside of groups that are turned, mirrored, sheared and scaled, beside twins on a scene of
// their own: what a drag does within a group is what it does without one.

namespace {

constexpr int rounds = 60;

/// The same places every time.
class Dice
{
public:
    explicit Dice(quint32 seed) : m_generator(seed) {}

    qreal between(qreal low, qreal high)
    {
        return low + (high - low) * m_generator.generateDouble();
    }
    qreal sign() { return m_generator.bounded(2) ? 1.0 : -1.0; }
    QPointF way(qreal reach) { return {between(-reach, reach), between(-reach, reach)}; }

private:
    QRandomGenerator m_generator;
};

QTransform turnedOrMirrored(Dice &dice)
{
    return QTransform()
            .rotate(dice.between(-180.0, 180.0))
            .scale(dice.sign() * dice.between(0.6, 1.8), dice.sign() * dice.between(0.6, 1.8))
            .shear(dice.between(-0.4, 0.4), 0.0);
}

/// Turned and evenly scaled, so that angles stay what they are.
QTransform keepingAngles(Dice &dice)
{
    const qreal scale = dice.between(0.6, 1.8);
    return QTransform().rotate(dice.between(-180.0, 180.0)).scale(scale, scale);
}

QPointF mappedWay(const QTransform &transform, const QPointF &way)
{
    return transform.map(way) - transform.map(QPointF());
}

/// A frame of 100 by 50 around the middle of a view.
template <typename Decorator>
class Place
{
public:
    explicit Place(const QTransform &groupTransform = QTransform())
        : m_group(new QGraphicsRectItem), child(new RecordingChild),
          decorator(new Decorator(child, m_group))
    {
        m_group->setTransform(groupTransform);
        m_stage.scene.addItem(m_group);
        setTransform(QTransform());
    }

    /// The frame's own, which the group's comes on top of.
    void setTransform(const QTransform &transform)
    {
        decorator->setTransform(transform);
        m_group->setPos(m_group->pos() - centreOnScene(*child));
        decorator->setViewScale(1.0);
    }

    QTransform groupTransform() const { return m_group->sceneTransform(); }

    /// At exact points of the scene. Which handle is meant, the cursor says.
    void press(const QPointF &at)
    {
        putCursorOn(m_stage.view, at);
        m_at = at;
        sendToScene(m_stage.scene, QEvent::GraphicsSceneMousePress, at, at);
        QCOMPARE(m_stage.scene.mouseGrabberItem(), decorator);
    }
    /// As far as the group sees it.
    void moveBy(const QPointF &way)
    {
        const QPointF from = m_at;
        m_at += mappedWay(groupTransform(), way);
        sendToScene(m_stage.scene, QEvent::GraphicsSceneMouseMove, m_at, from);
    }
    void release() { sendToScene(m_stage.scene, QEvent::GraphicsSceneMouseRelease, m_at, m_at); }

    QPointF mouse() const { return m_at; }

private:
    SceneOnView m_stage;
    QGraphicsRectItem *m_group;
    QPointF m_at;

public:
    RecordingChild *child;
    Decorator *decorator;
};

QPointF unit(const QPointF &way)
{
    return way / std::hypot(way.x(), way.y());
}

} // namespace

class TurnedFramesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void pressTurnsNothing();
    void handlePointsToTheMouse();
    void turnsAsWithoutAGroup();
    void sizesAsWithoutAGroup_data();
    void sizesAsWithoutAGroup();
    void movesWithTheMouse();
};

/// A move of no distance, from the middle of the handle.
void TurnedFramesTest::pressTurnsNothing()
{
    Dice dice(1);
    for (int round = 0; round < rounds; ++round) {
        Place<RotateDecorator> place(turnedOrMirrored(dice));
        place.setTransform(keepingAngles(dice));
        const qreal before = dice.between(-180.0, 180.0);
        place.decorator->updateTransformCenter();
        place.decorator->setRotation(before);
        place.press(centreOnScene(*childHandles(*place.decorator).first()));
        place.moveBy(QPointF());
        place.release();
        COMPARE_CLOSE(std::remainder(place.decorator->rotation() - before, 360.0), 0.0);
    }
}

void TurnedFramesTest::handlePointsToTheMouse()
{
    Dice dice(2);
    for (int round = 0; round < rounds; ++round) {
        Place<RotateDecorator> place(turnedOrMirrored(dice));
        place.setTransform(keepingAngles(dice));
        const ResizeHandleItem *handle = childHandles(*place.decorator).first();
        place.press(centreOnScene(*handle));
        for (int step = 0; step < 4; ++step) {
            place.moveBy(dice.way(150.0));
            const QPointF centre = centreOnScene(*place.child);
            COMPARE_POINTS(unit(centreOnScene(*handle) - centre), unit(place.mouse() - centre));
        }
        place.release();
    }
}

/// Also where the frame's own transform keeps no angles, and the handle points elsewhere.
void TurnedFramesTest::turnsAsWithoutAGroup()
{
    Dice dice(3);
    for (int round = 0; round < rounds; ++round) {
        Place<RotateDecorator> place(turnedOrMirrored(dice));
        Place<RotateDecorator> twin;
        const QTransform own = turnedOrMirrored(dice);
        place.setTransform(own);
        twin.setTransform(own);
        // Of the same size in both, as the direction to it counts.
        twin.decorator->setViewScale(place.decorator->viewScale() / twin.decorator->viewScale());
        place.press(centreOnScene(*childHandles(*place.decorator).first()));
        twin.press(centreOnScene(*childHandles(*twin.decorator).first()));
        for (int step = 0; step < 4; ++step) {
            const QPointF way = dice.way(150.0);
            place.moveBy(way);
            twin.moveBy(way);
            COMPARE_CLOSE(place.decorator->rotation(), twin.decorator->rotation());
        }
        place.release();
        twin.release();
    }
}

void TurnedFramesTest::sizesAsWithoutAGroup_data()
{
    QTest::addColumn<Qt::WindowFrameSection>("section");

    for (const Qt::WindowFrameSection section : allSections())
        QTest::newRow(qPrintable(QString::number(section))) << section;
}

void TurnedFramesTest::sizesAsWithoutAGroup()
{
    QFETCH(const Qt::WindowFrameSection, section);

    Dice dice(4);
    for (int round = 0; round < rounds / 10; ++round) {
        Place<ResizeDecorator> place(turnedOrMirrored(dice));
        Place<ResizeDecorator> twin;
        const QPointF start = twin.decorator->pos();
        place.decorator->setPos(start);
        for (Place<ResizeDecorator> *each : {&place, &twin}) {
            each->decorator->setAvailableHandles({section});
            each->press(centreOnScene(*childHandles(*each->decorator).first()));
        }
        for (int step = 0; step < 4; ++step) {
            const QPointF way = dice.way(20.0);
            place.moveBy(way);
            twin.moveBy(way);
            COMPARE_SIZES(place.child->size, twin.child->size);
            COMPARE_POINTS(place.decorator->pos(), twin.decorator->pos());
        }
        place.release();
        twin.release();
    }
}

void TurnedFramesTest::movesWithTheMouse()
{
    Dice dice(5);
    for (int round = 0; round < rounds; ++round) {
        Place<ResizeDecorator> place(turnedOrMirrored(dice));
        place.setTransform(turnedOrMirrored(dice));
        place.press(centreOnScene(*place.child));
        for (int step = 0; step < 4; ++step) {
            place.moveBy(dice.way(50.0));
            COMPARE_POINTS(centreOnScene(*place.child), place.mouse());
        }
        place.release();
    }
}

QTEST_MAIN(TurnedFramesTest)
#include "tst_turnedframes.moc"
