// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <QGraphicsRectItem>
#include <QSignalSpy>

// The frame with eight handles, in views and with real mouse events. Where handles are and what a
// drag makes of a frame is tested without views as well.

namespace {

using Sections = QSet<Qt::WindowFrameSection>;

/// A frame of 100 by 50 around the centre of a view; its handles have their size on the screen.
class Stage : public SceneOnView
{
public:
    explicit Stage(bool keepAspectRatio = false, qreal zoom = 1.0,
                   const QTransform &transform = QTransform())
        : SceneOnView(zoom), child(new RecordingChild),
          decorator(new ResizeDecorator(child, nullptr, keepAspectRatio)), mouse(view),
          resized(decorator, &ResizeDecorator::itemResized),
          moved(decorator, &ResizeDecorator::itemMoved)
    {
        scene.addItem(decorator);
        decorator->setTransform(transform);
        decorator->setPos(start);
        decorator->setViewScale(1.0 / zoom);
        handles = handlesOf(*decorator);
    }

    QPointF centreOf(Qt::WindowFrameSection section) const
    {
        return centreOnScene(*handles.at(section));
    }

    /// How many pixels a way in the decorator's units is on the view.
    QPoint pixels(const QPointF &way) const
    {
        const QTransform toView = decorator->deviceTransform(view.viewportTransform());
        return (toView.map(way) - toView.map(QPointF())).toPoint();
    }

    const QPointF start{-50.0, -20.0};
    RecordingChild *child;
    ResizeDecorator *decorator;
    ViewMouse mouse;
    QSignalSpy resized;
    QSignalSpy moved;
    std::map<Qt::WindowFrameSection, ResizeHandleItem *> handles;
};

void addPlacementRow(const QString &name, qreal zoom, const QTransform &transform,
                     const QPointF &half, qreal whole)
{
    const QPointF positions[] = {
            {-whole, 25.0 - half.y()},
            {-half.x(), -half.y()},
            {50.0 - half.x(), -2.0 * half.y()},
            {100.0 - half.x(), -half.y()},
            {100.0, 25.0 - half.y()},
            {100.0 - half.x(), 50.0 - half.y()},
            {50.0 - half.x(), 50.0},
            {-half.x(), 50.0 - half.y()},
    };
    for (const Qt::WindowFrameSection section : allSections()) {
        const QString row = QStringLiteral("%1, section %2").arg(name).arg(int(section));
        QTest::newRow(qPrintable(row))
                << zoom << transform << section << positions[int(section) - Qt::LeftSection];
    }
}

} // namespace

class ResizeDecoratorTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void methods();
    void startsWithEightHandles();
    void defaults();
    void startsAroundAChildThatStoodElsewhere();

    void placesHandlesOnScreen_data();
    void placesHandlesOnScreen();
    void placesHandlesWithoutView_data();
    void placesHandlesWithoutView();
    void placesHandlesForTheFirstOfTwoViews();
    void thicknessOfThePenMovesHandles();
    void handlesFollowTheChild();
    void handlesKeepTheirSizeOnScreen_data();
    void handlesKeepTheirSizeOnScreen();
    void handlesAreStaleUntilTheUpdate();

    void showsAvailableHandles();
    void unavailableHandlesAreOutOfTheScene();
    void pressesAvailableHandlesOnly_data();
    void pressesAvailableHandlesOnly();
    void availableHandlesThroughTheMetaObject();
    void firstOfOverlappingHandlesIsDragged();

    void drags_data();
    void drags();
    void dragsInSteps();
    void keepsTheRatioOfTheSides();
    void movesInTheUnitsOfTheParent();
    void dragsAcrossTheOppositeEdge();
    void flatFrameKeepsItsPlace();
    void reportsOnceAndInOrder();
    void acceptsPressAndMoveOfAHandle();
    void pressAndReleaseReportNothing();
    void unchangedFrameIsNotReported();
    void childThatGrewUnnoticedIsNotReported();
    void lostMouseEndsTheDrag();
    void theRestDragsTheWholeFrame();
    void withoutViewTheWholeFrameIsDragged();
    void childWithoutSlotsKeepsItsSize();

    void pensOfTheStylingObject();
    void givesHandlesTheirPens();
};

void ResizeDecoratorTest::methods()
{
    QCOMPARE(ownMethods(ResizeDecorator::staticMetaObject),
             QStringList({QStringLiteral("signal void itemResized()"),
                          QStringLiteral("slot void setAvailableHandles("
                                         "QSet<Qt::WindowFrameSection> handles)")}));
}

void ResizeDecoratorTest::startsWithEightHandles()
{
    ResizeDecorator decorator(new PlainChild);
    const Sections all(allSections().cbegin(), allSections().cend());
    QCOMPARE(decorator.availableHandles(), all);
    const QVector<ResizeHandleItem *> handles = childHandles(decorator);
    QCOMPARE(handles.size(), 8);
    for (const ResizeHandleItem *handle : handles) {
        QCOMPARE(handle->rect(), QRectF(0.0, 0.0, 20.0, 20.0));
        QCOMPARE(handle->zValue(), 1000.0);
        QCOMPARE(handle->scale(), 1.0);
        QVERIFY(handle->isVisible());
    }
}

void ResizeDecoratorTest::defaults()
{
    auto *child = new RecordingChild;
    ResizeDecorator decorator(child);
    QCOMPARE(decorator.parentItem(), nullptr);
    QCOMPARE(decorator.child(), child);
    // The placement is taken over.
    auto *placed = new PlainChild;
    placed->setPos(7.0, 8.0);
    const ResizeDecorator placedDecorator(placed);
    QCOMPARE(placedDecorator.pos(), QPointF(7.0, 8.0));
    QCOMPARE(placed->pos(), QPointF());
    // And the child is followed, each change once.
    QSignalSpy updates(&decorator, &AbstractDecorator::decorationChanged);
    Q_EMIT child->geometryChanged();
    QCOMPARE(updates.count(), 1);
}

void ResizeDecoratorTest::startsAroundAChildThatStoodElsewhere()
{
    auto *child = new PlainChild;
    child->setPos(30.0, 40.0);
    ResizeDecorator decorator(child);
    QCOMPARE(decorator.pos(), QPointF(30.0, 40.0));
    // Not by handlesOf(), which places them anew.
    QPolygonF positions;
    for (const ResizeHandleItem *handle : childHandles(decorator))
        positions.append(handle->pos());
    QCOMPARE(positions.boundingRect(), QRectF(-21.0, -21.0, 121.0, 71.0));
}

void ResizeDecoratorTest::placesHandlesOnScreen_data()
{
    QTest::addColumn<qreal>("zoom");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<Qt::WindowFrameSection>("section");
    QTest::addColumn<QPointF>("position");

    // A handle and the default pen are 21 pixels.
    const auto row = [](const char *name, qreal zoom, const QTransform &transform,
                        const QPointF &half, qreal whole) {
        addPlacementRow(QString::fromLatin1(name), zoom, transform, half, whole);
    };
    row("unzoomed", 1.0, QTransform(), QPointF(10.5, 10.5), 21.0);
    row("zoom 0.5", 0.5, QTransform(), QPointF(21.0, 21.0), 42.0);
    row("zoom 3", 3.0, QTransform(), QPointF(3.5, 3.5), 7.0);
    row("scaled", 1.0, QTransform::fromScale(2.0, 4.0), QPointF(5.25, 2.625), 10.5);
    row("half a turn", 1.0, QTransform().rotate(180.0), QPointF(10.5, 10.5), 21.0);
    // The whole size is measured with a line of one pixel, which stands upright here.
    row("a quarter turn", 1.0, QTransform().rotate(90.0), QPointF(10.5, 10.5), 1.0);
    row("a quarter turn, zoom 3", 3.0, QTransform().rotate(90.0), QPointF(3.5, 3.5), 1.0 / 3.0);
    const qreal turned = 10.5 * std::sqrt(2.0);
    row("an eighth of a turn", 1.0, QTransform().rotate(45.0), QPointF(turned, turned),
        22.0 * std::sqrt(0.5));
}

void ResizeDecoratorTest::placesHandlesOnScreen()
{
    QFETCH(const qreal, zoom);
    QFETCH(const QTransform, transform);
    QFETCH(const Qt::WindowFrameSection, section);
    QFETCH(const QPointF, position);

    const Stage stage(false, zoom, transform);
    COMPARE_POINTS(stage.handles.at(section)->pos(), position);
}

void ResizeDecoratorTest::placesHandlesWithoutView_data()
{
    QTest::addColumn<qreal>("zoom");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<Qt::WindowFrameSection>("section");
    QTest::addColumn<QPointF>("position");

    // The same whatever the scale.
    for (const qreal scale : {1.0, 4.0}) {
        addPlacementRow(QStringLiteral("scale %1").arg(scale), 1.0,
                        QTransform::fromScale(scale, scale), QPointF(10.5, 10.5), 21.0);
    }
}

void ResizeDecoratorTest::placesHandlesWithoutView()
{
    QFETCH(const QTransform, transform);
    QFETCH(const Qt::WindowFrameSection, section);
    QFETCH(const QPointF, position);

    ResizeDecorator withoutScene(new PlainChild);
    withoutScene.setTransform(transform);
    withoutScene.updateDecoration();
    QCOMPARE(handlesOf(withoutScene).at(section)->pos(), position);

    QGraphicsScene scene;
    auto *decorator = new ResizeDecorator(new PlainChild);
    scene.addItem(decorator);
    decorator->setTransform(transform);
    decorator->updateDecoration();
    QCOMPARE(handlesOf(*decorator).at(section)->pos(), position);
}

void ResizeDecoratorTest::placesHandlesForTheFirstOfTwoViews()
{
    QGraphicsScene scene;
    QGraphicsView first(&scene);
    QGraphicsView second(&scene);
    first.scale(2.0, 2.0);
    second.scale(4.0, 4.0);
    auto *decorator = new ResizeDecorator(new PlainChild);
    scene.addItem(decorator);
    decorator->updateDecoration();
    QCOMPARE(handlesOf(*decorator).at(Qt::TopLeftSection)->pos(), QPointF(-5.25, -5.25));
}

void ResizeDecoratorTest::thicknessOfThePenMovesHandles()
{
    QObject styling;
    styling.setProperty("decoratorPen", QPen(Qt::red, 4.9));
    styling.setProperty("decoratorSelectedPen", QPen(Qt::red, 10.0));
    ResizeDecorator decorator(new PlainChild);
    decorator.setStylingObject(&styling);
    decorator.updateDecoration();
    const auto handles = handlesOf(decorator);
    // The width counts as a whole number.
    QCOMPARE(handles.at(Qt::LeftSection)->pos(), QPointF(-25.0, 12.5));
    QCOMPARE(handles.at(Qt::TopLeftSection)->pos(), QPointF(-12.5, -12.5));
    decorator.setHighlight(true);
    decorator.updateDecoration();
    QCOMPARE(handles.at(Qt::LeftSection)->pos(), QPointF(-30.0, 10.0));
}

void ResizeDecoratorTest::handlesFollowTheChild()
{
    auto *child = new RecordingChild(QRectF(-10.0, -20.0, 40.0, 40.0));
    ResizeDecorator decorator(child);
    const auto handles = handlesOf(decorator);
    QCOMPARE(handles.at(Qt::RightSection)->pos(), QPointF(30.0, -10.5));
    child->setRect(QRectF(0.0, 0.0, 200.0, 100.0));
    Q_EMIT child->geometryChanged();
    QCOMPARE(handles.at(Qt::RightSection)->pos(), QPointF(200.0, 39.5));
    child->setScale(0.5);
    QCOMPARE(handles.at(Qt::RightSection)->pos(), QPointF(100.0, 14.5));
    child->setX(5.0);
    QCOMPARE(handles.at(Qt::RightSection)->pos(), QPointF(105.0, 14.5));
}

void ResizeDecoratorTest::handlesKeepTheirSizeOnScreen_data()
{
    QTest::addColumn<qreal>("zoom");
    QTest::addColumn<QTransform>("transform");

    QTest::newRow("unzoomed") << 1.0 << QTransform();
    QTest::newRow("zoom 0.5") << 0.5 << QTransform();
    QTest::newRow("zoom 3") << 3.0 << QTransform();
    QTest::newRow("scaled") << 1.0 << QTransform::fromScale(2.0, 2.0);
    QTest::newRow("turned and scaled, zoom 3") << 3.0 << QTransform().rotate(90.0).scale(2.0, 2.0);
}

void ResizeDecoratorTest::handlesKeepTheirSizeOnScreen()
{
    QFETCH(const qreal, zoom);
    QFETCH(const QTransform, transform);

    const Stage stage(false, zoom, transform);
    for (const auto &entry : stage.handles) {
        const QTransform toView = entry.second->deviceTransform(stage.view.viewportTransform());
        COMPARE_SIZES(toView.mapRect(entry.second->rect()).size(), QSizeF(20.0, 20.0));
    }
}

void ResizeDecoratorTest::handlesAreStaleUntilTheUpdate()
{
    Stage stage;
    const ResizeHandleItem *handle = stage.handles.at(Qt::LeftSection);
    stage.view.scale(0.5, 0.5);
    COMPARE_POINTS(handle->pos(), QPointF(-21.0, 14.5));
    stage.decorator->setViewScale(2.0);
    COMPARE_POINTS(handle->pos(), QPointF(-42.0, 4.0));
    QCOMPARE(handle->scale(), 2.0);
}

void ResizeDecoratorTest::showsAvailableHandles()
{
    ResizeDecorator decorator(new PlainChild);
    const auto handles = handlesOf(decorator);
    QSignalSpy updates(&decorator, &AbstractDecorator::decorationChanged);
    decorator.setAvailableHandles({Qt::RightSection, Qt::BottomSection});
    QCOMPARE(updates.count(), 1);
    QCOMPARE(decorator.availableHandles(), Sections({Qt::RightSection, Qt::BottomSection}));
    for (const auto &entry : handles) {
        const bool available = entry.first == Qt::RightSection || entry.first == Qt::BottomSection;
        QCOMPARE(entry.second->isVisible(), available);
        QCOMPARE(entry.second->parentItem(), available ? &decorator : nullptr);
        QCOMPARE(entry.second->zValue(), 1000.0);
    }
    decorator.setAvailableHandles({});
    QCOMPARE(childHandles(decorator).size(), 0);
    QCOMPARE(decorator.boundingRect(), QRectF(0.0, 0.0, 100.0, 50.0));
    decorator.setAvailableHandles({Qt::TopSection});
    QCOMPARE(childHandles(decorator), QVector<ResizeHandleItem *>({handles.at(Qt::TopSection)}));
    QVERIFY(handles.at(Qt::TopSection)->isVisible());
}

void ResizeDecoratorTest::unavailableHandlesAreOutOfTheScene()
{
    QGraphicsScene scene;
    auto *decorator = new ResizeDecorator(new PlainChild);
    scene.addItem(decorator);
    QCOMPARE(scene.items().size(), 10);
    decorator->setAvailableHandles({Qt::RightSection});
    QCOMPARE(scene.items().size(), 3);
    decorator->setAvailableHandles({Qt::RightSection, Qt::LeftSection});
    QCOMPARE(scene.items().size(), 4);
}

void ResizeDecoratorTest::pressesAvailableHandlesOnly_data()
{
    QTest::addColumn<Qt::WindowFrameSection>("section");
    for (const Qt::WindowFrameSection section : allSections())
        QTest::newRow(qPrintable(QStringLiteral("section %1").arg(int(section)))) << section;
}

void ResizeDecoratorTest::pressesAvailableHandlesOnly()
{
    QFETCH(const Qt::WindowFrameSection, section);

    Stage stage;
    const bool isAvailable = section == Qt::RightSection || section == Qt::BottomSection;
    stage.decorator->setAvailableHandles({Qt::RightSection, Qt::BottomSection});
    // A little inwards, so that the frame is below where the handle is not.
    const QPointF centre = centreOnScene(*stage.child);
    const QPointF handle =
            stage.decorator->mapToScene(stage.handles.at(section)->pos()) + QPointF(10.5, 10.5);
    const QPointF inwards = isAvailable ? QPointF() : (centre - handle) * 0.5;
    stage.mouse.drag(handle + inwards, QPoint(8, 6));

    QCOMPARE(stage.resized.count(), isAvailable ? 1 : 0);
    QCOMPARE(stage.moved.count(), isAvailable ? 0 : 1);
    COMPARE_POINTS(stage.decorator->pos(),
                   stage.start + (isAvailable ? QPointF() : QPointF(8.0, 6.0)));
}

void ResizeDecoratorTest::availableHandlesThroughTheMetaObject()
{
    ResizeDecorator decorator(new PlainChild);
    const Sections sections = {Qt::TopSection, Qt::LeftSection};
    QVERIFY(QMetaObject::invokeMethod(&decorator, "setAvailableHandles", Qt::QueuedConnection,
                                      Q_ARG(QSet<Qt::WindowFrameSection>, sections)));
    QTRY_COMPARE(decorator.availableHandles(), sections);
}

/// On a frame without size the handles of the corners lie on one another.
void ResizeDecoratorTest::firstOfOverlappingHandlesIsDragged()
{
    Stage stage;
    stage.child->setRect(QRectF(0.0, 0.0, 1.0, 1.0));
    stage.decorator->updateDecoration();
    stage.mouse.drag(stage.decorator->mapToScene(0.5, 0.5), QPoint(-10, -10));
    QCOMPARE(stage.child->size, QSizeF(11.0, 11.0));
    QCOMPARE(stage.decorator->pos(), stage.start - QPointF(10.0, 10.0));
}

void ResizeDecoratorTest::drags_data()
{
    QTest::addColumn<qreal>("zoom");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<bool>("keepAspectRatio");
    QTest::addColumn<Qt::WindowFrameSection>("section");
    QTest::addColumn<QPointF>("drag");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QPointF>("move");

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
            {"a quarter turn", 1.0, QTransform().rotate(90.0)},
            {"a quarter turn, scaled, zoom 3", 3.0, QTransform().rotate(90.0).scale(2.0, 2.0)},
    };
    struct Rule
    {
        const char *name;
        Qt::WindowFrameSection section;
        QPointF drag;
        QSizeF size;
        QPointF move;
        QSizeF sizeWithRatio;
        QPointF moveWithRatio;
    };
    const QPointF inOut(12.0, 4.0);
    const Rule rules[] = {
            {"left", Qt::LeftSection, inOut, {88, 50}, {12, 0}, {88, 44}, {12, 3}},
            {"top left", Qt::TopLeftSection, inOut, {88, 46}, {12, 4}, {88, 44}, {12, 6}},
            {"top", Qt::TopSection, inOut, {100, 46}, {0, 4}, {92, 46}, {4, 4}},
            {"top right", Qt::TopRightSection, inOut, {112, 46}, {0, 4}, {112, 56}, {0, -6}},
            {"right", Qt::RightSection, inOut, {112, 50}, {0, 0}, {112, 56}, {0, -3}},
            {"bottom right", Qt::BottomRightSection, inOut, {112, 54}, {0, 0}, {112, 56}, {0, 0}},
            {"bottom", Qt::BottomSection, inOut, {100, 54}, {0, 0}, {108, 54}, {-4, 0}},
            {"bottom left", Qt::BottomLeftSection, inOut, {88, 54}, {12, 0}, {88, 44}, {12, 0}},
            {"bottom right by (10, 4)",
             Qt::BottomRightSection,
             QPointF(10, 4),
             {110, 54},
             {0, 0},
             {110, 55},
             {0, 0}},
            {"right by 10",
             Qt::RightSection,
             QPointF(10, 0),
             {110, 50},
             {0, 0},
             {110, 55},
             {0, -2.5}},
            {"left by -10",
             Qt::LeftSection,
             QPointF(-10, 0),
             {110, 50},
             {-10, 0},
             {110, 55},
             {-10, -2.5}},
    };
    for (const Place &place : places) {
        for (const Rule &rule : rules) {
            const QString name = QStringLiteral("%1, %2").arg(QLatin1String(place.name),
                                                              QLatin1String(rule.name));
            QTest::newRow(qPrintable(name)) << place.zoom << place.transform << false
                                            << rule.section << rule.drag << rule.size << rule.move;
            QTest::newRow(qPrintable(name + QStringLiteral(", keeping the ratio")))
                    << place.zoom << place.transform << true << rule.section << rule.drag
                    << rule.sizeWithRatio << rule.moveWithRatio;
        }
    }
}

void ResizeDecoratorTest::drags()
{
    QFETCH(const qreal, zoom);
    QFETCH(const QTransform, transform);
    QFETCH(const bool, keepAspectRatio);
    QFETCH(const Qt::WindowFrameSection, section);
    QFETCH(const QPointF, drag);
    QFETCH(const QSizeF, size);
    QFETCH(const QPointF, move);

    Stage stage(keepAspectRatio, zoom, transform);
    stage.mouse.drag(stage.centreOf(section), stage.pixels(drag));

    QCOMPARE(stage.child->calls.count(QStringLiteral("setSize")), 1);
    COMPARE_SIZES(stage.child->size, size);
    COMPARE_POINTS(stage.decorator->pos(), stage.start + move);
    QCOMPARE(stage.child->pos(), QPointF());
    QCOMPARE(stage.resized.count(), 1);
    QCOMPARE(stage.moved.count(), move.isNull() ? 0 : 1);
}

void ResizeDecoratorTest::dragsInSteps()
{
    Stage stage;
    stage.mouse.press(stage.centreOf(Qt::TopLeftSection));
    for (int i = 1; i <= 5; ++i) {
        stage.mouse.moveBy(QPoint(-3, -2));
        QCOMPARE(stage.child->size, QSizeF(100.0 + 3.0 * i, 50.0 + 2.0 * i));
        QCOMPARE(stage.decorator->mapToScene(stage.child->boundingRect().bottomRight()),
                 stage.start + QPointF(100.0, 50.0));
        QCOMPARE(stage.resized.count(), 0);
    }
    stage.mouse.release();
    QCOMPARE(stage.resized.count(), 1);
}

void ResizeDecoratorTest::keepsTheRatioOfTheSides()
{
    Stage stage(true);
    for (const Qt::WindowFrameSection section : allSections()) {
        stage.mouse.drag(stage.centreOf(section), QPoint(7, 9));
        COMPARE_CLOSE(stage.child->size.width() / stage.child->size.height(), 2.0);
    }
}

/// So on a scaled decorator the opposite edge does not stay.
void ResizeDecoratorTest::movesInTheUnitsOfTheParent()
{
    Stage stage(false, 1.0, QTransform::fromScale(2.0, 2.0));
    stage.mouse.drag(stage.centreOf(Qt::LeftSection), QPoint(-20, 0));
    QCOMPARE(stage.child->size, QSizeF(110.0, 50.0));
    QCOMPARE(stage.decorator->pos(), stage.start - QPointF(10.0, 0.0));
    QCOMPARE(stage.decorator->mapToScene(110.0, 0.0), stage.start + QPointF(210.0, 0.0));
}

/// A child is told such sizes as they are.
void ResizeDecoratorTest::dragsAcrossTheOppositeEdge()
{
    Stage stage;
    stage.mouse.drag(stage.centreOf(Qt::RightSection), QPoint(-100, 0));
    QCOMPARE(stage.child->size, QSizeF(0.0, 50.0));

    Stage across;
    across.mouse.drag(across.centreOf(Qt::BottomRightSection), QPoint(-130, -60));
    QCOMPARE(across.child->size, QSizeF(-30.0, -10.0));
}

void ResizeDecoratorTest::flatFrameKeepsItsPlace()
{
    Stage stage(true);
    stage.child->setRect(QRectF(0.0, 0.0, 100.0, 0.0));
    stage.decorator->updateDecoration();
    stage.mouse.drag(stage.centreOf(Qt::TopSection), QPoint(0, -10));
    QVERIFY(std::isfinite(stage.decorator->x()));
    QVERIFY(std::isfinite(stage.decorator->y()));
    QCOMPARE(stage.child->calls.count(QStringLiteral("setSize")), 1);
}

void ResizeDecoratorTest::reportsOnceAndInOrder()
{
    Stage stage;
    QStringList reports;
    connect(stage.decorator, &ResizeDecorator::itemMoved,
            [&] { reports.append(QStringLiteral("moved")); });
    connect(stage.decorator, &ResizeDecorator::itemResized,
            [&] { reports.append(QStringLiteral("resized")); });
    stage.mouse.press(stage.centreOf(Qt::LeftSection));
    for (int i = 0; i < 4; ++i)
        stage.mouse.moveBy(QPoint(-2, 0));
    QCOMPARE(reports, QStringList());
    stage.mouse.release();
    QCOMPARE(reports, QStringList({QStringLiteral("moved"), QStringLiteral("resized")}));
    // The next one begins anew.
    stage.mouse.drag(centreOnScene(*stage.child), QPoint(3, 3));
    QCOMPARE(reports.mid(2), QStringList({QStringLiteral("moved")}));
}

void ResizeDecoratorTest::acceptsPressAndMoveOfAHandle()
{
    Stage stage;
    putCursorOn(stage.view, stage.centreOf(Qt::RightSection));
    QVERIFY(accepts(*stage.decorator, QEvent::GraphicsSceneMousePress));
    QVERIFY(accepts(*stage.decorator, QEvent::GraphicsSceneMouseMove));
}

void ResizeDecoratorTest::pressAndReleaseReportNothing()
{
    Stage stage;
    for (const Qt::WindowFrameSection section : allSections()) {
        stage.mouse.press(stage.centreOf(section));
        QCOMPARE(stage.scene.mouseGrabberItem(), stage.decorator);
        stage.mouse.release();
        QCOMPARE(stage.scene.mouseGrabberItem(), nullptr);
    }
    QCOMPARE(stage.resized.count(), 0);
    QCOMPARE(stage.moved.count(), 0);
    QCOMPARE(stage.child->size, QSizeF());
}

void ResizeDecoratorTest::unchangedFrameIsNotReported()
{
    Stage stage;
    stage.mouse.press(stage.centreOf(Qt::RightSection));
    stage.mouse.moveBy(QPoint(0, 10)); // along the edge
    stage.mouse.release();
    QCOMPARE(stage.child->size, QSizeF(100.0, 50.0));
    QCOMPARE(stage.resized.count(), 0);
}

void ResizeDecoratorTest::childThatGrewUnnoticedIsNotReported()
{
    SceneOnView stage(1.0);
    auto *child = new PlainChild;
    auto *decorator = new ResizeDecorator(child);
    stage.scene.addItem(decorator);
    const ResizeHandleItem *const handle = handlesOf(*decorator).at(Qt::LeftSection);
    decorator->setAvailableHandles({Qt::LeftSection});
    const QSignalSpy resized(decorator, &ResizeDecorator::itemResized);

    ViewMouse mouse(stage.view);
    mouse.press(centreOnScene(*handle));
    child->setRect(QRectF(0.0, 0.0, 150.0, 50.0));
    mouse.moveBy(QPoint(0, 10)); // along the edge
    mouse.release();
    QCOMPARE(resized.count(), 0);
}

void ResizeDecoratorTest::lostMouseEndsTheDrag()
{
    Stage stage;
    stage.mouse.press(stage.centreOf(Qt::RightSection));
    stage.mouse.moveBy(QPoint(10, 0));
    stage.decorator->hide();
    stage.decorator->show();
    stage.mouse.release();
    QCOMPARE(stage.resized.count(), 0);

    stage.mouse.drag(centreOnScene(*stage.child), QPoint(4, 4));
    QCOMPARE(stage.child->size, QSizeF(110.0, 50.0));
    QCOMPARE(stage.decorator->pos(), stage.start + QPointF(4.0, 4.0));
    QCOMPARE(stage.resized.count(), 0);
    QCOMPARE(stage.moved.count(), 1);
}

void ResizeDecoratorTest::theRestDragsTheWholeFrame()
{
    Stage stage;
    stage.mouse.drag(centreOnScene(*stage.child), QPoint(12, -7));
    QCOMPARE(stage.decorator->pos(), stage.start + QPointF(12.0, -7.0));
    QCOMPARE(stage.child->size, QSizeF());
    QCOMPARE(stage.moved.count(), 1);
    QCOMPARE(stage.resized.count(), 0);
}

/// Whether a handle is under the mouse is seen in a view.
void ResizeDecoratorTest::withoutViewTheWholeFrameIsDragged()
{
    QGraphicsScene scene;
    auto *child = new RecordingChild;
    auto *decorator = new ResizeDecorator(child);
    scene.addItem(decorator);
    QSignalSpy resized(decorator, &ResizeDecorator::itemResized);
    QSignalSpy moved(decorator, &ResizeDecorator::itemMoved);
    dragOnScene(scene, QPointF(105.0, 25.0), QPointF(115.0, 30.0));
    QCOMPARE(decorator->pos(), QPointF(10.0, 5.0));
    QCOMPARE(child->size, QSizeF());
    QCOMPARE(moved.count(), 1);
    QCOMPARE(resized.count(), 0);
}

void ResizeDecoratorTest::childWithoutSlotsKeepsItsSize()
{
    SceneOnView stage;
    auto *child = new PlainChild;
    auto *decorator = new ResizeDecorator(child);
    stage.scene.addItem(decorator);
    decorator->updateDecoration();
    QSignalSpy resized(decorator, &ResizeDecorator::itemResized);
    QSignalSpy updates(decorator, &ResizeDecorator::decorationChanged);
    ViewMouse mouse(stage.view);
    mouse.press(centreOnScene(*handlesOf(*decorator).at(Qt::RightSection)));
    updates.clear();
    mouse.moveBy(QPoint(10, 0));
    QCOMPARE(updates.count(), 1);
    mouse.release();
    QCOMPARE(child->boundingRect(), QRectF(0.0, 0.0, 100.0, 50.0));
    QCOMPARE(resized.count(), 0);
}

void ResizeDecoratorTest::pensOfTheStylingObject()
{
    ResizeDecorator decorator(new PlainChild);
    QCOMPARE(decorator.currentPen(), QPen());
    QObject styling;
    decorator.setStylingObject(&styling);
    QCOMPARE(decorator.currentPen(), QPen());
    styling.setProperty("decoratorPen", QPen(Qt::red, 3.0));
    styling.setProperty("decoratorSelectedPen", QPen(Qt::blue, 5.0));
    QCOMPARE(decorator.currentPen(), QPen(Qt::red, 3.0));
    decorator.setHighlight(true);
    QCOMPARE(decorator.currentPen(), QPen(Qt::blue, 5.0));
    styling.setProperty("decoratorSelectedPen", QStringLiteral("no pen"));
    QCOMPARE(decorator.currentPen(), QPen());
}

/// Those that are not shown as well.
void ResizeDecoratorTest::givesHandlesTheirPens()
{
    ResizeDecorator decorator(new PlainChild);
    QVector<ResizeHandleItem *> handles;
    for (const auto &entry : handlesOf(decorator))
        handles.append(entry.second);
    QCOMPARE(handles.size(), 8);
    decorator.setAvailableHandles({Qt::LeftSection});
    comparePensOfHandles(decorator, handles);
}

QTEST_MAIN(ResizeDecoratorTest)
#include "tst_resizedecorator.moc"
