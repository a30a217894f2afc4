// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FramedWorld.h"

#include <Scene/Decorator/FocusHandler.h>

#include <algorithm>

// Decorators, children, handles, scenes, views and helpers go in any order. Each test ends with all
// of them gone, once.

namespace {

using Forecast = std::function<Fate(const World &)>;

/// A child that tells of changes to the very end.
class TalkativeChild : public CountedChild
{
public:
    ~TalkativeChild() override
    {
        Q_EMIT geometryChanged();
        Q_EMIT decorationChanged();
    }
};

/// Something that deletes, and what will be left.
struct Ending
{
    QString name;
    Action action;
    Forecast forecast;
};

/// What is on the scene, and the items below that, go with it.
Fate withoutScene(const World &world, bool isSceneLeft)
{
    return {world.decorator && !isOn(world.scene, world.decorator),
            world.child && !isOn(world.scene, world.child), isSceneLeft};
}

Fate unchanged(const World &world)
{
    return {!world.decorator.isNull(), !world.child.isNull(), !world.scene.isNull()};
}

Fate withoutDecorator(const World &world)
{
    const bool isChildFree = world.child && world.child->parentItem() != world.decorator;
    return {false, isChildFree || (world.child && !world.decorator), !world.scene.isNull()};
}

const QVector<Ending> &deletions()
{
    static const QVector<Ending> steps = {
            {QStringLiteral("decorator"), [](World &world) { delete world.decorator; },
             withoutDecorator},
            {QStringLiteral("child"), [](World &world) { delete world.child; },
             [](const World &world) {
                 return Fate{!world.decorator.isNull(), false, !world.scene.isNull()};
             }},
            {QStringLiteral("handle"), [](World &world) { delete world.firstHandle(); }, unchanged},
            {QStringLiteral("helper and scene"), [](World &world) { delete world.helper; },
             [](const World &world) { return withoutScene(world, false); }},
            {QStringLiteral("view"), [](World &world) { delete world.view; }, unchanged},
    };
    return steps;
}

const QVector<Ending> &endings()
{
    static const QVector<Ending> steps = deletions()
            + QVector<Ending>{
                    {QStringLiteral("scene alone"), [](World &world) { delete world.scene; },
                     [](const World &world) { return withoutScene(world, false); }},
                    {QStringLiteral("scene clears"), [](World &world) { world.scene->clear(); },
                     [](const World &world) { return withoutScene(world, true); }},
                    {QStringLiteral("deleted later"),
                     [](World &world) {
                         world.helper->deleteItemLater(world.decorator);
                         QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                     },
                     [](const World &world) {
                         return world.helper->hasItems() ? withoutDecorator(world)
                                                         : unchanged(world);
                     }},
            };
    return steps;
}

void end(World &world, const Ending &ending)
{
    const int handles = world.decorator ? childHandles(*world.decorator).size() : 0;
    const Fate expected = ending.forecast(world);
    ending.action(world);
    verifyFate(world, expected);
    if (ending.name == QLatin1String("handle") && world.decorator)
        QCOMPARE(childHandles(*world.decorator).size(), std::max(0, handles - 1));
}

} // namespace

Q_DECLARE_METATYPE(Ending)

class DecoratorLifetimeTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void everyOrderOfDeleting_data();
    void everyOrderOfDeleting();
    void changesBeforeTheEnd_data();
    void changesBeforeTheEnd();
    void focusedItemsGo_data();
    void focusedItemsGo();
    void childInTwoFrames_data();
    void childInTwoFrames();
    void childTellsOfItsEnd_data();
    void childTellsOfItsEnd();
    void leavesTheIndexOfItsScene_data();
    void leavesTheIndexOfItsScene();
    void boundsFollowThePlaceOfTheChild_data() { leavesTheIndexOfItsScene_data(); }
    void boundsFollowThePlaceOfTheChild();
    void emptyFrame();
    void frameAroundNothing();
};

void DecoratorLifetimeTest::cleanup()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorLifetimeTest::everyOrderOfDeleting_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<QVector<int>>("order");

    for (const Frame frame : allFrames()) {
        QVector<int> order = {0, 1, 2, 3, 4};
        do {
            QStringList names;
            for (const int step : order)
                names.append(deletions().at(step).name);
            const QString row =
                    nameOf(frame) + QStringLiteral(": ") + names.join(QStringLiteral(", "));
            QTest::newRow(qPrintable(row)) << frame << order;
        } while (std::next_permutation(order.begin(), order.end()));
    }
}

void DecoratorLifetimeTest::everyOrderOfDeleting()
{
    QFETCH(const Frame, frame);
    QFETCH(const QVector<int>, order);

    World world(frame);
    for (const int step : order) {
        end(world, deletions().at(step));
        useWhatIsLeft(world);
    }
    verifyFate(world, {false, false, false});
    QVERIFY(!world.view);
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorLifetimeTest::changesBeforeTheEnd_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<Action>("first");
    QTest::addColumn<Action>("second");
    QTest::addColumn<Ending>("ending");

    for (const Frame frame : allFrames()) {
        for (const Change &first : changes()) {
            for (const Change &second : changes()) {
                for (const Ending &ending : endings()) {
                    const QString row =
                            QStringLiteral("%1: %2, %3, %4")
                                    .arg(nameOf(frame), first.name, second.name, ending.name);
                    QTest::newRow(qPrintable(row))
                            << frame << first.action << second.action << ending;
                }
            }
        }
    }
}

void DecoratorLifetimeTest::changesBeforeTheEnd()
{
    QFETCH(const Frame, frame);
    QFETCH(const Action, first);
    QFETCH(const Action, second);
    QFETCH(const Ending, ending);

    {
        World world(frame);
        first(world);
        verifyConsistent(world);
        second(world);
        verifyFate(world, {true, true, true});
        world.decorator->updateDecoration();
        verifyConsistent(world);
        end(world, ending);
        useWhatIsLeft(world);
    }
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorLifetimeTest::focusedItemsGo_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<bool>("isDecoratorWatched");
    QTest::addColumn<Ending>("ending");

    for (const Frame frame : allFrames()) {
        for (const bool isDecoratorWatched : {true, false}) {
            for (const Ending &ending : endings()) {
                const QString row = QStringLiteral("%1, focus on %2: %3")
                                            .arg(nameOf(frame),
                                                 isDecoratorWatched ? QStringLiteral("the frame")
                                                                    : QStringLiteral("the child"),
                                                 ending.name);
                QTest::newRow(qPrintable(row)) << frame << isDecoratorWatched << ending;
            }
        }
    }
}

void DecoratorLifetimeTest::focusedItemsGo()
{
    QFETCH(const Frame, frame);
    QFETCH(const bool, isDecoratorWatched);
    QFETCH(const Ending, ending);

    {
        World world(frame);
        world.showView();
        world.child->setFlag(QGraphicsItem::ItemIsFocusable);
        QGraphicsItem *watched = world.child;
        if (isDecoratorWatched)
            watched = world.decorator;
        watched->installSceneEventFilter(new FocusHandler(world.child));
        watched->setFocus();
        QVERIFY(world.child->highlighted);
        end(world, ending);
        useWhatIsLeft(world);
    }
    QCOMPARE(CountedChild::count(), 0);
}

/// The frame that the child left for another one must not take it along.
void DecoratorLifetimeTest::childInTwoFrames_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<bool>("isFirstDeletedFirst");

    for (const Frame frame : allFrames()) {
        QTest::addRow("%s: first frame, second frame", qPrintable(nameOf(frame))) << frame << true;
        QTest::addRow("%s: second frame, first frame", qPrintable(nameOf(frame))) << frame << false;
    }
}

void DecoratorLifetimeTest::childInTwoFrames()
{
    QFETCH(const Frame, frame);
    QFETCH(const bool, isFirstDeletedFirst);

    World world(frame);
    AbstractDecorator *second = newFrame(frame, world.child);
    world.helper->addItem(second);
    QCOMPARE(world.child->parentItem(), second);
    QCOMPARE(world.decorator->child(), world.child.data());
    if (isFirstDeletedFirst) {
        delete world.decorator;
        QVERIFY(world.child);
        second->setSize(QSizeF(30.0, 40.0));
        QCOMPARE(world.child->size, QSizeF(30.0, 40.0));
        delete second;
    } else {
        delete second;
        QCOMPARE(world.decorator->child(), nullptr);
        useWhatIsLeft(world);
        delete world.decorator;
    }
    QVERIFY(!world.child);
}

void DecoratorLifetimeTest::childTellsOfItsEnd_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<bool>("isChildFirst");

    for (const Frame frame : allFrames()) {
        QTest::addRow("%s: frame", qPrintable(nameOf(frame))) << frame << false;
        QTest::addRow("%s: child, frame", qPrintable(nameOf(frame))) << frame << true;
    }
}

void DecoratorLifetimeTest::childTellsOfItsEnd()
{
    QFETCH(const Frame, frame);
    QFETCH(const bool, isChildFirst);

    auto *child = new TalkativeChild;
    auto decorator = std::unique_ptr<AbstractDecorator>(newFrame(frame, child));
    int updates = 0;
    connect(decorator.get(), &AbstractDecorator::decorationChanged, [&] { ++updates; });
    if (isChildFirst) {
        delete child;
        // It was still there when it told of itself.
        QCOMPARE(updates, 2);
        QCOMPARE(decorator->child(), nullptr);
    }
    updates = 0;
    decorator.reset();
    QCOMPARE(updates, 0);
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorLifetimeTest::leavesTheIndexOfItsScene_data()
{
    QTest::addColumn<Frame>("frame");

    for (const Frame frame : allFrames())
        QTest::newRow(qPrintable(nameOf(frame))) << frame;
}

/// The index has the frame where it was before its child shrank.
void DecoratorLifetimeTest::leavesTheIndexOfItsScene()
{
    QFETCH(const Frame, frame);

    World world(frame);
    for (int i = 0; i < 100; ++i)
        world.scene->addRect(-500.0 + 10.0 * i, -500.0 + 10.0 * i, 5.0, 5.0);
    world.child->setRect(QRectF(-500.0, -500.0, 1000.0, 1000.0));
    world.decorator->updateDecoration();
    const auto isFound = [&world](const QRectF &area) {
        QGraphicsItem *const item = world.decorator;
        return world.scene->items(area).contains(item);
    };
    const QRectF corner(400.0, 400.0, 100.0, 100.0);
    QVERIFY(isFound(corner));

    world.child->setRect(QRectF(0.0, 0.0, 10.0, 10.0));
    QVERIFY(world.decorator->boundingRect().width() >= 1000.0);
    world.decorator->updateDecoration();
    QVERIFY(world.decorator->boundingRect().width() < 100.0);
    world.helper->removeItem(world.decorator);
    QVERIFY(!world.decorator->scene());
    QVERIFY(world.decorator->boundingRect().width() < 100.0);
    delete world.decorator;
    QVERIFY(!world.child);
    QVERIFY(!isFound(corner));
    QCOMPARE(world.scene->items(corner).size(), 10);
}

void DecoratorLifetimeTest::boundsFollowThePlaceOfTheChild()
{
    QFETCH(const Frame, frame);

    World world(frame);
    const QRectF before = world.decorator->boundingRect();
    world.child->setPos(3000.0, 2000.0);
    QVERIFY(world.decorator->boundingRect() != before);
    QCOMPARE(world.decorator->boundingRect(), world.decorator->childrenBoundingRect());
    world.child->setRotation(30.0);
    QCOMPARE(world.decorator->boundingRect(), world.decorator->childrenBoundingRect());
    world.child->setScale(2.0);
    QCOMPARE(world.decorator->boundingRect(), world.decorator->childrenBoundingRect());
}

/// What remains without the child is a frame around nothing, which still can be moved.
void DecoratorLifetimeTest::emptyFrame()
{
    World world(Frame::Resize);
    world.showView();
    delete world.child;
    QCOMPARE(world.decorator->child(), nullptr);
    useWhatIsLeft(world);
    QCOMPARE(childHandles(*world.decorator).size(), 8);
    world.decorator->setViewScale(1.0);
    const QPointF before = world.decorator->pos();
    auto *resize = qobject_cast<ResizeDecorator *>(world.decorator);
    QVERIFY(resize);
    QCOMPARE(handlesOf(*resize).at(Qt::RightSection)->pos(), QPointF(0.0, -10.5));
    ViewMouse mouse(*world.view);
    mouse.drag(world.decorator->mapToScene(QPointF(-15.0, 0.0)), QPoint(-9, -7));
    QCOMPARE(world.decorator->pos(), before + QPointF(-9.0, 0.0));
}

void DecoratorLifetimeTest::frameAroundNothing()
{
    for (const Frame frame : allFrames()) {
        const std::unique_ptr<AbstractDecorator> decorator(newFrame(frame, nullptr));
        QCOMPARE(decorator->child(), nullptr);
        decorator->setSize(QSizeF(10.0, 10.0));
        decorator->setEditable(true, QPointF());
        decorator->setHighlight(true);
        decorator->setViewScale(2.0);
        QCOMPARE(decorator->viewScale(), 2.0);
    }
}

QTEST_MAIN(DecoratorLifetimeTest)
#include "tst_decoratorlifetime.moc"
