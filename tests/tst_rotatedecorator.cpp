// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/RotateDecorator.h>

#include <QGraphicsEllipseItem>
#include <QSignalSpy>

// The frame with the one handle that turns the child, in views and with real mouse events.

namespace {

constexpr qreal degrees = 180.0 / 3.141592653589793;

/// A frame of 100 by 50, whose centre is the view's.
class Stage : public SceneOnView
{
public:
    explicit Stage(qreal zoom = 1.0, const QTransform &transform = QTransform())
        : SceneOnView(zoom), child(new RecordingChild), decorator(new RotateDecorator(child)),
          mouse(view), rotated(decorator, &RotateDecorator::itemRotated),
          moved(decorator, &RotateDecorator::itemMoved)
    {
        scene.addItem(decorator);
        decorator->setTransform(transform);
        const QPointF centre = child->boundingRect().center();
        decorator->setPos(-decorator->mapToScene(centre));
        decorator->setViewScale(1.0 / zoom);
    }

    ResizeHandleItem *handle() const { return childHandles(*decorator).first(); }
    QPointF handleCentre() const { return centreOnScene(*handle()); }
    QPointF centre() const { return centreOnScene(*child); }

    RecordingChild *child;
    RotateDecorator *decorator;
    ViewMouse mouse;
    QSignalSpy rotated;
    QSignalSpy moved;
};

qreal direction(const QPointF &way)
{
    return std::atan2(way.y(), way.x()) * degrees;
}

} // namespace

class RotateDecoratorTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void methods();
    void startsWithOneHandle();
    void startsAboveAChildThatStoodElsewhere();
    void turnsAboutTheCentreOfTheChild();

    void placesTheHandle_data();
    void placesTheHandle();
    void handleKeepsItsSizeOnScreen_data();
    void handleKeepsItsSizeOnScreen();

    void follows_data();
    void follows();
    void followsStepByStep();
    void quarterTurnIsHalfAPixelOff();
    void angleIsBroughtIntoNoRange();
    void goesOnFromWhereItIs();
    void centreIsThatOfThePress();
    void reportsOnce();
    void reportsAMoveBeforeTheRotation();
    void acceptsPressAndMoveOfAHandle();
    void pressAndReleaseReportNothing();
    void lostMouseEndsTheDrag();
    void theRestDragsTheWholeFrame();
    void withoutViewTheWholeFrameIsDragged();

    void takesAnotherHandle();
    void takesTheSameHandleAgain();
    void worksWithoutHandle();
    void forgetsAHandleThatOthersDelete();
    void forgetsAHandleThatOthersTakeAway();
    void handleDeletedDuringTheDrag();
    void givesTheHandleItsPens();
    void otherHandlesGetNoPens();
};

void RotateDecoratorTest::methods()
{
    QCOMPARE(ownMethods(RotateDecorator::staticMetaObject),
             QStringList({QStringLiteral("signal void itemRotated()")}));
}

void RotateDecoratorTest::startsWithOneHandle()
{
    auto *child = new RecordingChild;
    RotateDecorator decorator(child);
    QCOMPARE(decorator.parentItem(), nullptr);
    QCOMPARE(decorator.child(), child);
    const QVector<ResizeHandleItem *> handles = childHandles(decorator);
    QCOMPARE(handles.size(), 1);
    QCOMPARE(handles.first()->rect(), QRectF(0.0, 0.0, 20.0, 20.0));
    QCOMPARE(handles.first()->zValue(), 1000.0);
    QSignalSpy updates(&decorator, &AbstractDecorator::decorationChanged);
    Q_EMIT child->geometryChanged();
    QCOMPARE(updates.count(), 1);
}

/// The placement of the child is taken over after that, with the child's own origin point, which a
/// press replaces.
void RotateDecoratorTest::startsAboveAChildThatStoodElsewhere()
{
    auto *child = new PlainChild;
    child->setPos(30.0, 40.0);
    RotateDecorator decorator(child);
    QCOMPARE(decorator.pos(), QPointF(30.0, 40.0));
    QCOMPARE(childHandles(decorator).first()->pos(), QPointF(39.5, -21.0));
}

void RotateDecoratorTest::turnsAboutTheCentreOfTheChild()
{
    auto *child = new RecordingChild(QRectF(10.0, 20.0, 40.0, 60.0));
    child->setTransformOriginPoint(1.0, 2.0);
    RotateDecorator decorator(child);
    QCOMPARE(decorator.transformOriginPoint(), QPointF(1.0, 2.0));
    decorator.updateTransformCenter();
    QCOMPARE(decorator.transformOriginPoint(), QPointF(30.0, 50.0));
    child->setPos(5.0, 5.0);
    QCOMPARE(decorator.transformOriginPoint(), QPointF(30.0, 50.0));
    decorator.updateTransformCenter();
    QCOMPARE(decorator.transformOriginPoint(), QPointF(35.0, 55.0));
}

void RotateDecoratorTest::placesTheHandle_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<qreal>("viewScale");
    QTest::addColumn<QPointF>("position");

    // With its pen a handle is 21 wide and high.
    QTest::newRow("unscaled") << QRectF(0.0, 0.0, 100.0, 50.0) << 1.0 << QPointF(39.5, -21.0);
    QTest::newRow("scaled") << QRectF(0.0, 0.0, 100.0, 50.0) << 2.0 << QPointF(29.0, -42.0);
    QTest::newRow("away from the origin")
            << QRectF(10.0, 20.0, 100.0, 50.0) << 1.0 << QPointF(49.5, -1.0);
    QTest::newRow("no size") << QRectF() << 1.0 << QPointF(-10.5, -21.0);
}

void RotateDecoratorTest::placesTheHandle()
{
    QFETCH(const QRectF, rect);
    QFETCH(const qreal, viewScale);
    QFETCH(const QPointF, position);

    RotateDecorator decorator(new RecordingChild(rect));
    QSignalSpy updates(&decorator, &AbstractDecorator::decorationChanged);
    decorator.setViewScale(viewScale);
    QCOMPARE(updates.count(), 1);
    QCOMPARE(childHandles(decorator).first()->pos(), position);
    QCOMPARE(childHandles(decorator).first()->scale(), viewScale);
}

void RotateDecoratorTest::handleKeepsItsSizeOnScreen_data()
{
    QTest::addColumn<qreal>("zoom");
    QTest::addColumn<QTransform>("transform");

    QTest::newRow("unzoomed") << 1.0 << QTransform();
    QTest::newRow("zoom 0.5") << 0.5 << QTransform();
    QTest::newRow("zoom 3") << 3.0 << QTransform();
    QTest::newRow("turned and scaled") << 1.0 << QTransform().rotate(90.0).scale(2.0, 2.0);
}

void RotateDecoratorTest::handleKeepsItsSizeOnScreen()
{
    QFETCH(const qreal, zoom);
    QFETCH(const QTransform, transform);

    const Stage stage(zoom, transform);
    const QTransform toView = stage.handle()->deviceTransform(stage.view.viewportTransform());
    COMPARE_SIZES(toView.mapRect(stage.handle()->rect()).size(), QSizeF(20.0, 20.0));
    // It stands on the upper edge of the child, with the half of its pen that is outside.
    const QRectF onChild = stage.handle()->mapRectToParent(stage.handle()->boundingRect());
    COMPARE_CLOSE(onChild.bottom(), -0.5 * stage.decorator->viewScale());
}

void RotateDecoratorTest::follows_data()
{
    QTest::addColumn<qreal>("zoom");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<QPointF>("mouse");

    struct Place
    {
        const char *name;
        qreal zoom;
        QTransform transform;
    };
    const Place places[] = {
            {"unzoomed", 1.0, QTransform()},
            {"zoom 0.5", 0.5, QTransform()},
            {"zoom 3", 3.0, QTransform()},
            {"scaled", 1.0, QTransform::fromScale(2.0, 2.0)},
            {"scaled unevenly", 1.0, QTransform::fromScale(1.0, 2.0)},
            {"turned by the transform", 1.0, QTransform().rotate(30.0)},
            {"mirrored", 1.0, QTransform::fromScale(-1.0, 1.0)},
    };
    struct Way
    {
        const char *name;
        QPointF mouse;
    };
    const Way ways[] = {
            {"right", {60.0, 0.0}},  {"below", {0.0, 60.0}},   {"left", {-60.0, 6.0}},
            {"above", {0.0, -60.0}}, {"aslant", {42.0, 18.0}}, {"a little left", {-6.0, -60.0}},
    };
    for (const Place &place : places) {
        for (const Way &way : ways) {
            const QString name = QStringLiteral("%1, %2").arg(QLatin1String(place.name),
                                                              QLatin1String(way.name));
            QTest::newRow(qPrintable(name)) << place.zoom << place.transform << way.mouse;
        }
    }
}

/// The angle is that from the handle, unturned, to the mouse, both seen from the centre.
void RotateDecoratorTest::follows()
{
    QFETCH(const qreal, zoom);
    QFETCH(const QTransform, transform);
    QFETCH(const QPointF, mouse);

    Stage stage(zoom, transform);
    const QPointF centreBefore = stage.centre();
    const qreal handleDirection = direction(stage.handleCentre() - centreBefore);
    stage.mouse.press(stage.handleCentre());
    stage.mouse.moveTo(stage.centre() + mouse);
    const qreal mouseDirection = direction(stage.mouse.scenePosition() - centreBefore);

    COMPARE_CLOSE(stage.decorator->rotation(), mouseDirection - handleDirection);
    stage.mouse.release();
    COMPARE_CLOSE(stage.decorator->rotation(), mouseDirection - handleDirection);
    QCOMPARE(stage.rotated.count(), 1);
    QCOMPARE(stage.moved.count(), 0);
    QCOMPARE(stage.child->rotation(), 0.0);
}

/// Also when nothing is painted between two steps.
void RotateDecoratorTest::followsStepByStep()
{
    Stage stage;
    const qreal handleDirection = direction(stage.handleCentre() - stage.centre());
    stage.mouse.press(stage.handleCentre());
    for (int i = 0; i < 8; ++i) {
        stage.mouse.moveBy(QPoint(9, 7));
        const qreal mouseDirection = direction(stage.mouse.scenePosition() - stage.centre());
        COMPARE_CLOSE(stage.decorator->rotation(), mouseDirection - handleDirection);
    }
    stage.mouse.release();
    QCOMPARE(stage.rotated.count(), 1);
}

/// The centre of the handle is half a pixel beside that of the child.
void RotateDecoratorTest::quarterTurnIsHalfAPixelOff()
{
    Stage stage;
    COMPARE_POINTS(stage.handleCentre() - stage.centre(), QPointF(-0.5, -36.0));
    stage.mouse.press(stage.handleCentre());
    stage.mouse.moveTo(QPointF(80.0, 0.0));
    stage.mouse.release();
    COMPARE_CLOSE(stage.decorator->rotation(), 90.0 + std::atan2(0.5, 36.0) * degrees);

    // A handle that is centred exactly turns it exactly.
    Stage exact;
    auto *handle = new QGraphicsRectItem(0.0, 0.0, 20.0, 20.0, exact.decorator);
    handle->setPen(Qt::NoPen);
    exact.decorator->setRotateHandleItem(handle);
    exact.mouse.press(centreOnScene(*handle));
    exact.mouse.moveTo(QPointF(80.0, 0.0));
    exact.mouse.release();
    COMPARE_CLOSE(exact.decorator->rotation(), 90.0);
}

/// To the left, the direction to the mouse leaps from 180 to -180 degrees.
void RotateDecoratorTest::angleIsBroughtIntoNoRange()
{
    Stage stage;
    stage.mouse.press(stage.handleCentre());
    stage.mouse.moveTo(QPointF(-80.0, 0.0));
    QVERIFY(stage.decorator->rotation() > 180.0);
    const qreal below = stage.decorator->rotation();
    stage.mouse.moveBy(QPoint(0, -4));
    QVERIFY(stage.decorator->rotation() < 0.0);
    QVERIFY(below - stage.decorator->rotation() > 300.0);
    stage.mouse.release();
}

void RotateDecoratorTest::goesOnFromWhereItIs()
{
    Stage stage;
    stage.mouse.drag(stage.handleCentre(), QPoint(40, 10));
    const qreal turned = stage.decorator->rotation();
    QVERIFY(turned > 10.0);
    // Taking the handle at its centre and moving it nowhere leaves it, but for whole pixels.
    stage.mouse.press(stage.handleCentre());
    stage.mouse.moveBy(QPoint(0, 0));
    QVERIFY(std::abs(stage.decorator->rotation() - turned) < 2.0);
    stage.mouse.release();
    QCOMPARE(stage.rotated.count(), 2);
}

void RotateDecoratorTest::centreIsThatOfThePress()
{
    Stage stage;
    stage.decorator->setTransformOriginPoint(0.0, 0.0);
    stage.child->setRect(QRectF(0.0, 0.0, 60.0, 50.0));
    stage.decorator->updateDecoration();
    stage.mouse.press(centreOnScene(*stage.child)); // beside the handle
    stage.mouse.release();
    QCOMPARE(stage.decorator->transformOriginPoint(), QPointF(0.0, 0.0));
    stage.mouse.press(stage.handleCentre());
    QCOMPARE(stage.decorator->transformOriginPoint(), QPointF(30.0, 25.0));
    stage.mouse.release();
}

void RotateDecoratorTest::reportsOnce()
{
    Stage stage;
    stage.mouse.press(stage.handleCentre());
    for (int i = 0; i < 5; ++i)
        stage.mouse.moveBy(QPoint(5, 1));
    QCOMPARE(stage.rotated.count(), 0);
    stage.mouse.release();
    QCOMPARE(stage.rotated.count(), 1);
    // The next one begins anew.
    stage.mouse.press(stage.handleCentre());
    stage.mouse.release();
    QCOMPARE(stage.rotated.count(), 1);
}

/// Only code can move the frame while its handle is dragged.
void RotateDecoratorTest::reportsAMoveBeforeTheRotation()
{
    Stage stage;
    QStringList reports;
    connect(stage.decorator, &RotateDecorator::itemMoved, this,
            [&reports] { reports.append(QStringLiteral("moved")); });
    connect(stage.decorator, &RotateDecorator::itemRotated, this,
            [&reports] { reports.append(QStringLiteral("rotated")); });
    stage.mouse.press(stage.handleCentre());
    stage.mouse.moveBy(QPoint(5, 1));
    stage.decorator->setPos(stage.decorator->pos() + QPointF(1.0, 1.0));
    stage.mouse.release();
    QCOMPARE(reports, QStringList({QStringLiteral("moved"), QStringLiteral("rotated")}));
}

void RotateDecoratorTest::acceptsPressAndMoveOfAHandle()
{
    Stage stage;
    putCursorOn(stage.view, stage.handleCentre());
    QVERIFY(accepts(*stage.decorator, QEvent::GraphicsSceneMousePress));
    QVERIFY(accepts(*stage.decorator, QEvent::GraphicsSceneMouseMove));
}

void RotateDecoratorTest::pressAndReleaseReportNothing()
{
    Stage stage;
    stage.mouse.press(stage.handleCentre());
    QCOMPARE(stage.scene.mouseGrabberItem(), stage.decorator);
    stage.mouse.release();
    QCOMPARE(stage.rotated.count(), 0);
    QCOMPARE(stage.moved.count(), 0);
    QCOMPARE(stage.decorator->rotation(), 0.0);
}

void RotateDecoratorTest::lostMouseEndsTheDrag()
{
    Stage stage;
    stage.mouse.press(stage.handleCentre());
    stage.mouse.moveBy(QPoint(20, 0));
    const qreal turned = stage.decorator->rotation();
    stage.decorator->hide();
    stage.decorator->show();
    stage.mouse.release();
    stage.mouse.drag(stage.centre(), QPoint(20, 20));
    QCOMPARE(stage.decorator->rotation(), turned);
    QCOMPARE(stage.rotated.count(), 0);
    QCOMPARE(stage.moved.count(), 1);
}

void RotateDecoratorTest::theRestDragsTheWholeFrame()
{
    Stage stage;
    const QPointF before = stage.decorator->pos();
    stage.mouse.drag(stage.centre(), QPoint(12, -7));
    QCOMPARE(stage.decorator->pos(), before + QPointF(12.0, -7.0));
    QCOMPARE(stage.decorator->rotation(), 0.0);
    QCOMPARE(stage.moved.count(), 1);
    QCOMPARE(stage.rotated.count(), 0);
}

void RotateDecoratorTest::withoutViewTheWholeFrameIsDragged()
{
    QGraphicsScene scene;
    auto *decorator = new RotateDecorator(new RecordingChild);
    scene.addItem(decorator);
    QSignalSpy rotated(decorator, &RotateDecorator::itemRotated);
    dragOnScene(scene, QPointF(50.0, -10.0), QPointF(60.0, -5.0));
    QCOMPARE(decorator->pos(), QPointF(10.0, 5.0));
    QCOMPARE(decorator->rotation(), 0.0);
    QCOMPARE(rotated.count(), 0);
}

void RotateDecoratorTest::takesAnotherHandle()
{
    Stage stage;
    stage.decorator->setViewScale(2.0);
    QSignalSpy updates(stage.decorator, &AbstractDecorator::decorationChanged);
    auto *handle = new QGraphicsEllipseItem(0.0, 0.0, 10.0, 10.0, stage.decorator);
    handle->setPen(Qt::NoPen);
    stage.decorator->setRotateHandleItem(handle);
    QCOMPARE(updates.count(), 1);
    QCOMPARE(childHandles(*stage.decorator).size(), 0);
    QCOMPARE(handle->scale(), 2.0);
    QCOMPARE(handle->pos(), QPointF(40.0, -20.0));
    QCOMPARE(handle->zValue(), 1000.0);
    stage.mouse.drag(centreOnScene(*handle), QPoint(30, 10));
    QCOMPARE(stage.rotated.count(), 1);
}

void RotateDecoratorTest::takesTheSameHandleAgain()
{
    Stage stage;
    ResizeHandleItem *handle = stage.handle();
    handle->setPos(0.0, 0.0);
    stage.decorator->setRotateHandleItem(handle);
    QCOMPARE(stage.handle(), handle);
    QCOMPARE(handle->pos(), QPointF(39.5, -21.0));
}

void RotateDecoratorTest::worksWithoutHandle()
{
    Stage stage;
    const QPointF handleCentre = stage.handleCentre();
    stage.decorator->setRotateHandleItem(nullptr);
    QCOMPARE(stage.decorator->childItems(), QList<QGraphicsItem *>({stage.child}));

    QSignalSpy updates(stage.decorator, &AbstractDecorator::decorationChanged);
    stage.decorator->updateDecoration();
    QCOMPARE(updates.count(), 1);
    QObject styling;
    stage.decorator->setStylingObject(&styling);
    QVERIFY(!stage.view.grab().isNull());
    stage.mouse.drag(handleCentre, QPoint(10, 10));
    QCOMPARE(stage.rotated.count(), 0);
    stage.mouse.drag(stage.centre(), QPoint(10, 10));
    QCOMPARE(stage.moved.count(), 1);
    QCOMPARE(stage.decorator->rotation(), 0.0);

    auto *handle = new ResizeHandleItem(QRectF(0.0, 0.0, 20.0, 20.0), stage.decorator);
    stage.decorator->setRotateHandleItem(handle);
    QCOMPARE(handle->pos(), QPointF(39.5, -21.0));
    stage.mouse.drag(stage.handleCentre(), QPoint(10, 10));
    QCOMPARE(stage.rotated.count(), 1);
}

void RotateDecoratorTest::forgetsAHandleThatOthersDelete()
{
    Stage stage;
    delete stage.handle();
    stage.decorator->updateDecoration();
    stage.mouse.drag(stage.centre(), QPoint(10, 10));
    QCOMPARE(stage.moved.count(), 1);
    stage.decorator->setRotateHandleItem(nullptr);
    QCOMPARE(stage.decorator->childItems(), QList<QGraphicsItem *>({stage.child}));
}

void RotateDecoratorTest::forgetsAHandleThatOthersTakeAway()
{
    Stage stage;
    ResizeHandleItem *handle = stage.handle();
    QGraphicsRectItem other;
    handle->setParentItem(&other);
    handle->setPos(1.0, 2.0);
    stage.decorator->updateDecoration();
    QCOMPARE(handle->pos(), QPointF(1.0, 2.0));
    stage.decorator->setRotateHandleItem(nullptr);
    QCOMPARE(other.childItems(), QList<QGraphicsItem *>({handle}));
}

void RotateDecoratorTest::handleDeletedDuringTheDrag()
{
    Stage stage;
    stage.mouse.press(stage.handleCentre());
    stage.mouse.moveBy(QPoint(20, 0));
    const qreal turned = stage.decorator->rotation();
    delete stage.handle();
    stage.mouse.moveBy(QPoint(20, 0));
    QCOMPARE(stage.decorator->rotation(), turned);
    stage.mouse.release();
    QCOMPARE(stage.rotated.count(), 1);
}

void RotateDecoratorTest::givesTheHandleItsPens()
{
    RotateDecorator decorator(new PlainChild);
    QCOMPARE(childHandles(decorator).size(), 1);
    comparePensOfHandles(decorator, childHandles(decorator));
}

void RotateDecoratorTest::otherHandlesGetNoPens()
{
    RotateDecorator decorator(new PlainChild);
    auto *handle = new QGraphicsRectItem(0.0, 0.0, 20.0, 20.0, &decorator);
    handle->setPen(QPen(Qt::blue, 3.0));
    decorator.setRotateHandleItem(handle);
    QObject styling;
    styling.setProperty("decoratorPen", QPen(Qt::red, 3.0));
    decorator.setStylingObject(&styling);
    decorator.paint(nullptr, nullptr);
    QCOMPARE(handle->pen(), QPen(Qt::blue, 3.0));
    QCOMPARE(paintedColor(*handle), QColor(Qt::blue));
}

QTEST_MAIN(RotateDecoratorTest)
#include "tst_rotatedecorator.moc"
