// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/AbstractDecorator.h>

#include <QGraphicsRectItem>
#include <QPainter>
#include <QSignalSpy>

// What all decorators have in common, by the simplest decorator that there can be.

namespace {

using Action = std::function<void(AbstractDecorator &)>;
using ChildAction = std::function<void(RecordingChild &)>;

class SimplestDecorator : public AbstractDecorator
{
public:
    explicit SimplestDecorator(QGraphicsObject *child, QGraphicsItem *parent = nullptr)
        : AbstractDecorator(child, parent)
    {
        adjustToChild();
        setUpChildConnections();
    }

    using AbstractDecorator::childRect;
    using AbstractDecorator::isHighlighted;

    void updateDecoration() override
    {
        ++updates;
        Q_EMIT decorationChanged();
    }

    void setEditable(bool editable, const QPointF &pos) override
    {
        ++edits;
        AbstractDecorator::setEditable(editable, pos);
    }

    int updates = 0;
    int edits = 0;
};

/// A child with only the slot that takes a size.
class SizeableChild : public PlainChild
{
    Q_OBJECT

public:
    QVector<QSizeF> sizes;

public Q_SLOTS:
    void setSize(const QSizeF &size) { sizes.append(size); }
};

/// A framed child in a view, and who works there.
struct Stage : SceneOnView
{
    explicit Stage(qreal zoom = 1.0)
        : SceneOnView(zoom), child(new RecordingChild), decorator(new SimplestDecorator(child)),
          moved(decorator, &AbstractDecorator::itemMoved), mouse(view)
    {
        scene.addItem(decorator);
    }

    RecordingChild *child;
    SimplestDecorator *decorator;
    QSignalSpy moved;
    ViewMouse mouse;
};

} // namespace

Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(ChildAction)

class AbstractDecoratorTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void methods_data();
    void methods();
    void hasNothingElse();
    void isMadeReadyToBeEdited();
    void drawsNothing();
    void surroundsItsChildren();
    void handsOutWhatItWasGiven();

    void adoptsPlacement_data();
    void adoptsPlacement();
    void adoptsPlacementInParent();
    void countsRotationAndScaleTwice();

    void forwardsByName_data();
    void forwardsByName();
    void forwardsNothingToAPlainChild();
    void forwardsTheOneSlotThatThereIs();
    void mapsTheEditPosition();
    void mapsTheSize();
    void sizeUpdatesInAnyCase();
    void highlightRepaints();
    void viewScales_data();
    void viewScales();
    void viewScaleCountsAllScales();
    void viewScaleOfAFlatDecoratorStays();

    void followsTheChild_data();
    void followsTheChild();
    void followsAPlainChild();
    void tellsOfGeometry_data();
    void tellsOfGeometry();
    void updatesWhenShownOrHidden();
    void updatesBeforeItIsShownOrHidden();

    void dragIsReportedOnce_data();
    void dragIsReportedOnce();
    void clickIsNoDrag();
    void codeMovesSilently();
    void codeMovesWhileTheMouseIsHeld();
    void moveWithoutReleaseIsReportedByTheNextOne();
    void unmovableIsNotMoved();
    void doubleClickEdits();
};

void AbstractDecoratorTest::methods_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("isSignal");
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QByteArray>("parameters");

    const auto row = [](int index, bool isSignal, const char *signature, const char *parameters) {
        QTest::newRow(signature) << index << isSignal << QByteArray(signature)
                                 << QByteArray(parameters);
    };
    row(0, true, "itemMoved()", "");
    row(1, true, "geometryChanged()", "");
    row(2, true, "decorationChanged()", "");
    row(3, false, "setEditable(bool,QPointF)", "editable,pos");
    row(4, false, "setSize(QSizeF)", "size");
    row(5, false, "setViewScale(qreal)", "scale");
    row(6, false, "setHighlight(bool)", "highlight");
    row(7, false, "updateDecoration()", "");
}

void AbstractDecoratorTest::methods()
{
    QFETCH(const int, index);
    QFETCH(const bool, isSignal);
    QFETCH(const QByteArray, signature);
    QFETCH(const QByteArray, parameters);

    const QMetaObject &metaObject = AbstractDecorator::staticMetaObject;
    const QMetaMethod method = metaObject.method(metaObject.methodOffset() + index);
    QCOMPARE(method.methodType(), isSignal ? QMetaMethod::Signal : QMetaMethod::Slot);
    QCOMPARE(method.access(), QMetaMethod::Public);
    QCOMPARE(method.returnType(), int(QMetaType::Void));
    QCOMPARE(method.parameterNames().join(','), parameters);
    // Spelt with "qreal", as the code that looks slots up by name spells it.
    QCOMPARE(metaObject.indexOfMethod(signature), metaObject.methodOffset() + index);
}

void AbstractDecoratorTest::hasNothingElse()
{
    const QMetaObject &metaObject = AbstractDecorator::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QGraphicsObject::staticMetaObject);
    QCOMPARE(metaObject.methodCount() - metaObject.methodOffset(), 8);
    QCOMPARE(metaObject.propertyCount(), metaObject.propertyOffset());
}

void AbstractDecoratorTest::isMadeReadyToBeEdited()
{
    auto *child = new RecordingChild;
    child->setFlags(QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable
                    | QGraphicsItem::ItemIsFocusable);
    const SimplestDecorator decorator(child);

    QCOMPARE(child->parentItem(), &decorator);
    QCOMPARE(child->flags(), QGraphicsItem::GraphicsItemFlags(QGraphicsItem::ItemIsFocusable));
    QCOMPARE(decorator.flags(),
             QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsFocusable
                     | QGraphicsItem::ItemIsSelectable | QGraphicsItem::ItemSendsGeometryChanges
                     | QGraphicsItem::ItemSendsScenePositionChanges);
    QVERIFY(!decorator.handlesChildEvents());
    QCOMPARE(decorator.parentItem(), nullptr);
    QCOMPARE(decorator.viewScale(), 1.0);
    QCOMPARE(decorator.stylingObject(), nullptr);
    QVERIFY(!decorator.isHighlighted());
    QCOMPARE(child->calls, QStringList());
}

void AbstractDecoratorTest::drawsNothing()
{
    SimplestDecorator decorator(new PlainChild);
    QImage picture(100, 50, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::red);
    const QImage before = picture.copy();
    QPainter painter(&picture);
    decorator.paint(&painter, nullptr);
    painter.end();
    QCOMPARE(picture, before);
}

void AbstractDecoratorTest::surroundsItsChildren()
{
    SimplestDecorator decorator(new PlainChild(QRectF(10.0, 20.0, 30.0, 40.0)));
    QCOMPARE(decorator.boundingRect(), QRectF(10.0, 20.0, 30.0, 40.0));
    QCOMPARE(decorator.childRect(), QRectF(10.0, 20.0, 30.0, 40.0));

    auto *more = new PlainChild(QRectF(0.0, 0.0, 5.0, 5.0));
    more->setParentItem(&decorator);
    QCOMPARE(decorator.boundingRect(), QRectF(0.0, 0.0, 40.0, 60.0));
    QCOMPARE(decorator.childRect(), QRectF(10.0, 20.0, 30.0, 40.0));
}

void AbstractDecoratorTest::handsOutWhatItWasGiven()
{
    auto *child = new PlainChild;
    SimplestDecorator decorator(child);
    QCOMPARE(decorator.child(), child);

    auto styling = std::make_unique<QObject>();
    decorator.setStylingObject(styling.get());
    QCOMPARE(decorator.stylingObject(), styling.get());
    styling.reset();
    QCOMPARE(decorator.stylingObject(), nullptr);
}

void AbstractDecoratorTest::adoptsPlacement_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<QPointF>("origin");

    const QTransform turned = QTransform().rotate(30.0).scale(2.0, 3.0);
    QTest::newRow("nothing") << QPointF() << QTransform() << QPointF();
    QTest::newRow("position") << QPointF(12.0, -7.0) << QTransform() << QPointF();
    QTest::newRow("scaled") << QPointF() << QTransform::fromScale(2.0, 4.0) << QPointF();
    QTest::newRow("turned") << QPointF(5.0, 6.0) << turned << QPointF();
    QTest::newRow("turned about a point") << QPointF(5.0, 6.0) << turned << QPointF(50.0, 25.0);
    QTest::newRow("sheared") << QPointF(1.0, 1.0) << QTransform().shear(0.5, 0.0) << QPointF();
    QTest::newRow("moved by the transform")
            << QPointF(5.0, 6.0) << QTransform::fromTranslate(10.0, 20.0) << QPointF();
}

/// The child stays where it was, and the decorator has its placement. As long as a transform that
/// turns about the origin point does not move the item, that is.
void AbstractDecoratorTest::adoptsPlacement()
{
    QFETCH(const QPointF, position);
    QFETCH(const QTransform, transform);
    QFETCH(const QPointF, origin);

    QGraphicsScene scene;
    auto *child = new PlainChild;
    scene.addItem(child);
    child->setPos(position);
    child->setTransformOriginPoint(origin);
    child->setTransform(transform);
    const QTransform before = child->sceneTransform();
    // The origin point is seen through the child's placement, which the decorator has not yet.
    const QPointF originBefore = child->mapToParent(origin);

    auto *decorator = new SimplestDecorator(child);
    scene.addItem(decorator);

    COMPARE_POINTS(decorator->transformOriginPoint(), originBefore);
    COMPARE_POINTS(decorator->pos(), before.map(QPointF(0.0, 0.0)));
    COMPARE_POINTS(decorator->transform().map(QPointF(0.0, 0.0)), QPointF());
    COMPARE_POINTS(decorator->transform().map(QPointF(10.0, 20.0)),
                   before.map(QPointF(10.0, 20.0)) - before.map(QPointF(0.0, 0.0)));
    QCOMPARE(decorator->rotation(), 0.0);
    QCOMPARE(child->transform(), QTransform());
    QCOMPARE(child->pos(), QPointF());
    COMPARE_POINTS(child->mapToScene(QPointF(0.0, 0.0)), before.map(QPointF(0.0, 0.0)));
    COMPARE_POINTS(child->mapToScene(QPointF(100.0, 50.0)), before.map(QPointF(100.0, 50.0)));
}

void AbstractDecoratorTest::adoptsPlacementInParent()
{
    QGraphicsScene scene;
    auto *group = new QGraphicsRectItem;
    scene.addItem(group);
    group->setPos(1000.0, 2000.0);
    group->setTransform(QTransform::fromScale(5.0, 5.0));
    auto *child = new PlainChild;
    child->setPos(3.0, 4.0);
    child->setTransform(QTransform::fromScale(2.0, 2.0));

    auto *decorator = new SimplestDecorator(child, group);

    QCOMPARE(decorator->parentItem(), group);
    QCOMPARE(decorator->pos(), QPointF(3.0, 4.0));
    QCOMPARE(decorator->transform(), QTransform::fromScale(2.0, 2.0));
    QCOMPARE(child->mapToScene(QPointF(10.0, 10.0)), QPointF(1115.0, 2120.0));
}

void AbstractDecoratorTest::countsRotationAndScaleTwice()
{
    auto *turned = new PlainChild;
    turned->setRotation(30.0);
    const SimplestDecorator turnedDecorator(turned);
    QCOMPARE(turnedDecorator.rotation(), 30.0);
    QCOMPARE(turned->rotation(), 0.0);
    COMPARE_POINTS(turned->mapToScene(QPointF(10.0, 0.0)),
                   QTransform().rotate(60.0).map(QPointF(10.0, 0.0)));

    auto *scaled = new PlainChild;
    scaled->setScale(2.0);
    const SimplestDecorator scaledDecorator(scaled);
    QCOMPARE(scaledDecorator.scale(), 1.0);
    QCOMPARE(scaled->scale(), 2.0);
    COMPARE_POINTS(scaled->mapToScene(QPointF(10.0, 0.0)), QPointF(40.0, 0.0));
}

void AbstractDecoratorTest::forwardsByName_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QString>("call");

    QTest::newRow("setEditable") << Action([](AbstractDecorator &decorator) {
        decorator.setEditable(true, QPointF());
    }) << QStringLiteral("setEditable");
    QTest::newRow("setSize") << Action([](AbstractDecorator &decorator) {
        decorator.setSize(QSizeF(30.0, 40.0));
    }) << QStringLiteral("setSize");
    QTest::newRow("setViewScale") << Action([](AbstractDecorator &decorator) {
        decorator.setViewScale(0.5);
    }) << QStringLiteral("setViewScale");
    QTest::newRow("setHighlight") << Action([](AbstractDecorator &decorator) {
        decorator.setHighlight(true);
    }) << QStringLiteral("setHighlight");
}

void AbstractDecoratorTest::forwardsByName()
{
    QFETCH(const Action, action);
    QFETCH(const QString, call);

    auto *child = new RecordingChild;
    SimplestDecorator decorator(child);
    action(decorator);

    QCOMPARE(child->calls, QStringList({call}));
    const bool isSize = call == QLatin1String("setSize");
    QCOMPARE(child->editable, call == QLatin1String("setEditable"));
    QCOMPARE(child->size, isSize ? QSizeF(30.0, 40.0) : QSizeF());
    QCOMPARE(child->scale, call == QLatin1String("setViewScale") ? 0.5 : 0.0);
    QCOMPARE(child->highlighted, call == QLatin1String("setHighlight"));
}

void AbstractDecoratorTest::forwardsNothingToAPlainChild()
{
    SimplestDecorator decorator(new PlainChild);
    QSignalSpy updates(&decorator, &AbstractDecorator::decorationChanged);
    decorator.setEditable(true, QPointF(1.0, 2.0));
    QCOMPARE(updates.count(), 0);
    decorator.setHighlight(true);
    QCOMPARE(updates.count(), 0);
    QVERIFY(decorator.isHighlighted());
    decorator.setViewScale(3.0);
    QCOMPARE(updates.count(), 1);
    QCOMPARE(decorator.viewScale(), 3.0);
    QCOMPARE(decorator.childRect(), QRectF(0.0, 0.0, 100.0, 50.0));
}

void AbstractDecoratorTest::forwardsTheOneSlotThatThereIs()
{
    auto *child = new SizeableChild;
    SimplestDecorator decorator(child);
    decorator.setEditable(true, QPointF());
    decorator.setHighlight(true);
    decorator.setViewScale(2.0);
    decorator.setSize(QSizeF(1.0, 2.0));
    QCOMPARE(child->sizes, QVector<QSizeF>({QSizeF(1.0, 2.0)}));
}

void AbstractDecoratorTest::mapsTheEditPosition()
{
    auto *child = new RecordingChild;
    SimplestDecorator decorator(child);
    child->setPos(10.0, 20.0);
    child->setScale(2.0);
    decorator.setEditable(true, QPointF(14.0, 26.0));
    QVERIFY(child->editable);
    QCOMPARE(child->editPosition, QPointF(2.0, 3.0));
    decorator.setEditable(false, QPointF(10.0, 20.0));
    QVERIFY(!child->editable);
    QCOMPARE(child->editPosition, QPointF());
}

void AbstractDecoratorTest::mapsTheSize()
{
    auto *child = new RecordingChild;
    SimplestDecorator decorator(child);
    child->setPos(10.0, 20.0);
    child->setTransform(QTransform::fromScale(2.0, 4.0));
    decorator.setSize(QSizeF(60.0, 80.0));
    QCOMPARE(child->size, QSizeF(30.0, 20.0));
}

void AbstractDecoratorTest::sizeUpdatesInAnyCase()
{
    SimplestDecorator plain(new PlainChild);
    plain.setSize(QSizeF(10.0, 10.0));
    QCOMPARE(plain.updates, 1);

    SimplestDecorator recording(new RecordingChild);
    recording.setSize(QSizeF(10.0, 10.0));
    QCOMPARE(recording.updates, 1);
}

void AbstractDecoratorTest::highlightRepaints()
{
    SceneOnView stage;
    auto *child = new RecordingChild;
    auto *decorator = new SimplestDecorator(child);
    stage.scene.addItem(decorator);
    QSignalSpy changes(&stage.scene, &QGraphicsScene::changed);
    QVERIFY(changes.wait());
    changes.clear();

    decorator->setHighlight(true);
    QVERIFY(decorator->isHighlighted());
    QTRY_VERIFY(!changes.isEmpty());
    QRectF repainted;
    const auto regions = changes.first().first().value<QList<QRectF>>();
    for (const QRectF &region : regions)
        repainted |= region;
    QVERIFY(repainted.contains(QRectF(0.0, 0.0, 100.0, 50.0)));

    decorator->setHighlight(false);
    QVERIFY(!decorator->isHighlighted());
    QVERIFY(!child->highlighted);
}

void AbstractDecoratorTest::viewScales_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<qreal>("scale");
    QTest::addColumn<qreal>("viewScale");

    QTest::newRow("unscaled") << QTransform() << 2.0 << 2.0;
    QTest::newRow("the larger scale wins") << QTransform::fromScale(2.0, 4.0) << 2.0 << 0.5;
    QTest::newRow("made smaller") << QTransform::fromScale(0.5, 0.25) << 1.0 << 2.0;
    QTest::newRow("turned") << QTransform().rotate(30.0) << 3.0 << 3.0;
    QTest::newRow("turned and scaled") << QTransform().rotate(30.0).scale(4.0, 4.0) << 2.0 << 0.5;
}

void AbstractDecoratorTest::viewScales()
{
    QFETCH(const QTransform, transform);
    QFETCH(const qreal, scale);
    QFETCH(const qreal, viewScale);

    auto *child = new RecordingChild;
    SimplestDecorator decorator(child);
    decorator.setTransform(transform);
    decorator.updates = 0;
    decorator.setViewScale(scale);
    COMPARE_CLOSE(decorator.viewScale(), viewScale);
    QCOMPARE(child->scale, scale);
    QCOMPARE(decorator.updates, 1);
}

/// Those of the parents as well, for which a new call is needed.
void AbstractDecoratorTest::viewScaleCountsAllScales()
{
    QGraphicsRectItem group;
    auto *decorator = new SimplestDecorator(new PlainChild, &group);
    group.setScale(2.0);
    decorator->setScale(5.0);
    QCOMPARE(decorator->viewScale(), 1.0);
    decorator->setViewScale(1.0);
    COMPARE_CLOSE(decorator->viewScale(), 0.1);
}

void AbstractDecoratorTest::viewScaleOfAFlatDecoratorStays()
{
    auto *child = new RecordingChild;
    SimplestDecorator decorator(child);
    decorator.setViewScale(2.0);
    decorator.setTransform(QTransform(0.0, 0.0, 0.0, 0.0, 0.0, 0.0));
    decorator.setViewScale(3.0);
    QCOMPARE(decorator.viewScale(), 2.0);
    QCOMPARE(child->scale, 3.0);
    QCOMPARE(decorator.updates, 2);
}

void AbstractDecoratorTest::followsTheChild_data()
{
    QTest::addColumn<ChildAction>("change");

    const auto row = [](const char *name, const ChildAction &change) {
        QTest::newRow(name) << change;
    };
    row("enabledChanged", [](RecordingChild &child) { child.setEnabled(false); });
    row("opacityChanged", [](RecordingChild &child) { child.setOpacity(0.5); });
    row("rotationChanged", [](RecordingChild &child) { child.setRotation(10.0); });
    row("scaleChanged", [](RecordingChild &child) { child.setScale(2.0); });
    row("visibleChanged", [](RecordingChild &child) { child.setVisible(false); });
    row("xChanged", [](RecordingChild &child) { child.setX(10.0); });
    row("yChanged", [](RecordingChild &child) { child.setY(10.0); });
    row("zChanged", [](RecordingChild &child) { child.setZValue(10.0); });
    row("geometryChanged", [](RecordingChild &child) { Q_EMIT child.geometryChanged(); });
    row("decorationChanged", [](RecordingChild &child) { Q_EMIT child.decorationChanged(); });
}

void AbstractDecoratorTest::followsTheChild()
{
    QFETCH(const ChildAction, change);

    auto *child = new RecordingChild;
    SimplestDecorator decorator(child);
    QCOMPARE(decorator.updates, 0);
    change(*child);
    QCOMPARE(decorator.updates, 1);
}

void AbstractDecoratorTest::followsAPlainChild()
{
    auto *child = new PlainChild;
    SimplestDecorator decorator(child);
    child->setEnabled(false);
    child->setOpacity(0.5);
    child->setRotation(10.0);
    child->setScale(2.0);
    child->setVisible(false);
    child->setX(10.0);
    child->setY(10.0);
    child->setZValue(10.0);
    QCOMPARE(decorator.updates, 8);
}

void AbstractDecoratorTest::tellsOfGeometry_data()
{
    QTest::addColumn<Action>("change");
    QTest::addColumn<int>("count");

    const auto row = [](const char *name, const Action &change, int count) {
        QTest::newRow(name) << change << count;
    };
    // A new transform is a change of the scene position to Qt, too.
    row(
            "position", [](AbstractDecorator &decorator) { decorator.setPos(10.0, 20.0); }, 1);
    row(
            "the same position", [](AbstractDecorator &decorator) { decorator.setPos(0.0, 0.0); },
            0);
    row(
            "rotation", [](AbstractDecorator &decorator) { decorator.setRotation(10.0); }, 1);
    row(
            "scale", [](AbstractDecorator &decorator) { decorator.setScale(2.0); }, 1);
    row(
            "transform",
            [](AbstractDecorator &decorator) { decorator.setTransform(QTransform().rotate(10.0)); },
            2);
    row(
            "position of the parent",
            [](AbstractDecorator &decorator) { decorator.parentItem()->setPos(5.0, 5.0); }, 1);
    row(
            "opacity", [](AbstractDecorator &decorator) { decorator.setOpacity(0.5); }, 0);
    row(
            "highlight", [](AbstractDecorator &decorator) { decorator.setHighlight(true); }, 0);
}

void AbstractDecoratorTest::tellsOfGeometry()
{
    QFETCH(const Action, change);
    QFETCH(const int, count);

    QGraphicsScene scene;
    auto *group = new QGraphicsRectItem;
    scene.addItem(group);
    SimplestDecorator decorator(new PlainChild, group);
    QSignalSpy changes(&decorator, &AbstractDecorator::geometryChanged);
    change(decorator);
    QCOMPARE(changes.count(), count);
}

void AbstractDecoratorTest::updatesWhenShownOrHidden()
{
    SimplestDecorator decorator(new PlainChild);
    decorator.setVisible(false);
    // Once by itself, once since the child is hidden with it.
    QCOMPARE(decorator.updates, 2);
    decorator.setVisible(true);
    QCOMPARE(decorator.updates, 4);
}

void AbstractDecoratorTest::updatesBeforeItIsShownOrHidden()
{
    SimplestDecorator decorator(nullptr);
    QVector<bool> visible;
    connect(&decorator, &AbstractDecorator::decorationChanged, this,
            [&] { visible.append(decorator.isVisible()); });
    decorator.setVisible(false);
    decorator.setVisible(true);
    QCOMPARE(visible, QVector<bool>({true, false}));
}

void AbstractDecoratorTest::dragIsReportedOnce_data()
{
    QTest::addColumn<qreal>("zoom");
    QTest::addColumn<qreal>("rotation");

    QTest::newRow("unzoomed") << 1.0 << 0.0;
    QTest::newRow("zoom 0.5") << 0.5 << 0.0;
    QTest::newRow("zoom 3") << 3.0 << 0.0;
    QTest::newRow("turned, zoom 3") << 3.0 << 90.0;
}

void AbstractDecoratorTest::dragIsReportedOnce()
{
    QFETCH(const qreal, zoom);
    QFETCH(const qreal, rotation);

    Stage stage(zoom);
    stage.decorator->setRotation(rotation);

    stage.mouse.press(centreOnScene(*stage.decorator));
    stage.mouse.moveBy(QPoint(12, 6));
    stage.mouse.moveBy(QPoint(12, 6));
    stage.mouse.moveBy(QPoint(6, 6));
    QCOMPARE(stage.moved.count(), 0);
    stage.mouse.release();
    QCOMPARE(stage.moved.count(), 1);
    COMPARE_POINTS(stage.decorator->pos(), QPointF(30.0, 18.0) / zoom);

    stage.mouse.drag(centreOnScene(*stage.decorator), QPoint(-30, -18));
    QCOMPARE(stage.moved.count(), 2);
    COMPARE_POINTS(stage.decorator->pos(), QPointF());

    // A click after it reports nothing more.
    stage.mouse.drag(centreOnScene(*stage.decorator), QPoint());
    QCOMPARE(stage.moved.count(), 2);
}

void AbstractDecoratorTest::clickIsNoDrag()
{
    Stage stage;
    stage.mouse.drag(QPointF(10.0, 10.0), QPoint());
    QVERIFY(stage.decorator->isSelected());
    QVERIFY(stage.decorator->hasFocus());
    QCOMPARE(stage.moved.count(), 0);
}

void AbstractDecoratorTest::codeMovesSilently()
{
    Stage stage;
    stage.decorator->setPos(10.0, 10.0);
    stage.decorator->moveBy(1.0, 1.0);
    stage.mouse.press(QPointF(20.0, 20.0));
    stage.mouse.release();
    QCOMPARE(stage.moved.count(), 0);
}

/// Whoever moves the decorator then, it counts as the user's drag.
void AbstractDecoratorTest::codeMovesWhileTheMouseIsHeld()
{
    Stage stage;
    stage.mouse.press(QPointF(20.0, 20.0));
    stage.decorator->setPos(10.0, 10.0);
    QCOMPARE(stage.moved.count(), 0);
    stage.mouse.release();
    QCOMPARE(stage.moved.count(), 1);
    stage.mouse.drag(QPointF(20.0, 20.0), QPoint());
    QCOMPARE(stage.moved.count(), 1);
}

void AbstractDecoratorTest::moveWithoutReleaseIsReportedByTheNextOne()
{
    Stage stage;
    stage.mouse.press(QPointF(20.0, 20.0));
    stage.mouse.moveBy(QPoint(10, 10));
    stage.decorator->hide();
    stage.mouse.release();
    stage.decorator->show();
    QCOMPARE(stage.decorator->pos(), QPointF(10.0, 10.0));
    QCOMPARE(stage.moved.count(), 0);
    stage.mouse.drag(QPointF(30.0, 30.0), QPoint());
    QCOMPARE(stage.moved.count(), 1);
}

void AbstractDecoratorTest::unmovableIsNotMoved()
{
    Stage stage;
    stage.decorator->setFlag(QGraphicsItem::ItemIsMovable, false);
    stage.mouse.press(QPointF(20.0, 20.0));
    QCOMPARE(stage.scene.mouseGrabberItem(), stage.decorator);
    stage.mouse.moveBy(QPoint(10, 10));
    stage.decorator->setPos(1.0, 1.0);
    stage.mouse.release();
    QCOMPARE(stage.moved.count(), 0);
    QCOMPARE(stage.decorator->pos(), QPointF(1.0, 1.0));
}

void AbstractDecoratorTest::doubleClickEdits()
{
    Stage stage;
    stage.decorator->setPos(-50.0, -20.0);
    stage.mouse.doubleClick(QPointF(-40.0, 0.0));
    QCOMPARE(stage.decorator->edits, 1);
    QVERIFY(stage.child->editable);
    QCOMPARE(stage.child->editPosition, QPointF(10.0, 20.0));
    QCOMPARE(stage.child->calls, QStringList({QStringLiteral("setEditable")}));
    QCOMPARE(stage.moved.count(), 0);
    // The item base class has a double click as well: it is a press to it.
    stage.decorator->setSelected(false);
    const QPointF point(-40.0, 0.0);
    sendToScene(stage.scene, QEvent::GraphicsSceneMouseDoubleClick, point, point);
    QCOMPARE(stage.decorator->edits, 2);
    QVERIFY(stage.decorator->isSelected());
}

QTEST_MAIN(AbstractDecoratorTest)
#include "tst_abstractdecorator.moc"
