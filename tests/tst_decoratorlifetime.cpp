// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FramedWorld.h"

#include <Scene/Decorator/FocusHandler.h>

#include <algorithm>

// Decorators, children, handles, scenes, views and helpers go in any order, from anywhere. Each
// test ends with all of them gone, once.

namespace {

using Action = std::function<void(World &)>;

struct Step
{
    QString name;
    Action action;
};

void setHandles(World &world, const QSet<Qt::WindowFrameSection> &sections)
{
    if (auto *resize = qobject_cast<ResizeDecorator *>(world.decorator))
        resize->setAvailableHandles(sections);
    if (auto *rotate = qobject_cast<RotateDecorator *>(world.decorator))
        rotate->setRotateHandleItem(nullptr);
}

const QVector<Step> &deletions()
{
    static const QVector<Step> steps = {
            {QStringLiteral("decorator"), [](World &world) { delete world.decorator; }},
            {QStringLiteral("child"), [](World &world) { delete world.child; }},
            {QStringLiteral("handle"), [](World &world) { delete world.firstHandle(); }},
            {QStringLiteral("helper and scene"), [](World &world) { delete world.helper; }},
            {QStringLiteral("view"), [](World &world) { delete world.view; }},
    };
    return steps;
}

const QVector<Step> &changes()
{
    static const QVector<Step> steps = {
            {QStringLiteral("scene removes"),
             [](World &world) {
                 if (world.decorator && world.decorator->scene())
                     world.scene->removeItem(world.decorator);
             }},
            {QStringLiteral("helper removes"),
             [](World &world) { world.helper->removeItem(world.decorator); }},
            {QStringLiteral("helper adds"),
             [](World &world) { world.helper->addItem(world.decorator); }},
            {QStringLiteral("helper clears"), [](World &world) { world.helper->clear(); }},
            {QStringLiteral("child leaves the frame"),
             [](World &world) { world.child->setParentItem(nullptr); }},
            {QStringLiteral("child comes back"),
             [](World &world) { world.child->setParentItem(world.decorator); }},
            {QStringLiteral("frame into a group"),
             [](World &world) {
                 auto *group = new QGraphicsRectItem;
                 world.scene->addItem(group);
                 world.decorator->setParentItem(group);
             }},
            {QStringLiteral("frame out of the group"),
             [](World &world) { world.decorator->setParentItem(nullptr); }},
            {QStringLiteral("no handles"), [](World &world) { setHandles(world, {}); }},
            {QStringLiteral("one handle"),
             [](World &world) { setHandles(world, {Qt::TopSection}); }},
            {QStringLiteral("hidden and shown"),
             [](World &world) {
                 world.decorator->hide();
                 world.decorator->show();
             }},
            {QStringLiteral("no index"),
             [](World &world) { world.scene->setItemIndexMethod(QGraphicsScene::NoIndex); }},
            {QStringLiteral("another child"),
             [](World &world) {
                 auto *more = new CountedChild;
                 more->setParentItem(world.decorator);
             }},
    };
    return steps;
}

const QVector<Step> &endings()
{
    static const QVector<Step> steps = deletions()
            + QVector<Step>{
                    {QStringLiteral("scene clears"), [](World &world) { world.scene->clear(); }},
                    {QStringLiteral("deleted later"),
                     [](World &world) {
                         world.helper->deleteItemLater(world.decorator);
                         QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                     }},
            };
    return steps;
}

/// What everybody may do with what is left.
void useWhatIsLeft(World &world)
{
    if (world.helper)
        world.helper->setViewScale(0.5);
    if (world.decorator) {
        world.decorator->setEditable(true, QPointF(1.0, 2.0));
        world.decorator->setSize(QSizeF(50.0, 60.0));
        world.decorator->setViewScale(2.0);
        world.decorator->setHighlight(true);
        world.decorator->setPos(3.0, 4.0);
        world.decorator->updateDecoration();
        QVERIFY(!world.decorator->boundingRect().isNull()
                || world.decorator->childItems().isEmpty());
    }
    if (world.view)
        QVERIFY(!world.view->grab().isNull());
}

// What a user does. Each tells of something at its end.

void drag(World &world, const QPointF &from, bool alsoRelease = true)
{
    ViewMouse mouse(*world.view);
    mouse.press(from);
    mouse.moveBy(QPoint(-9, -7));
    if (world.view && alsoRelease)
        mouse.release();
}

void dragFrame(World &world)
{
    drag(world, centreOnScene(*world.child));
}

void dragHandle(World &world)
{
    drag(world, centreOnScene(*world.firstHandle()));
}

const QVector<Step> &reactions()
{
    static const QVector<Step> steps = {
            {QStringLiteral("delete decorator"), [](World &world) { delete world.decorator; }},
            {QStringLiteral("delete child"), [](World &world) { delete world.child; }},
            {QStringLiteral("delete child, then decorator"),
             [](World &world) {
                 delete world.child;
                 delete world.decorator;
             }},
            {QStringLiteral("delete handle"), [](World &world) { delete world.firstHandle(); }},
            {QStringLiteral("clear helper"), [](World &world) { world.helper->clear(); }},
            {QStringLiteral("clear helper, delete decorator"),
             [](World &world) {
                 world.helper->clear();
                 delete world.decorator;
             }},
            {QStringLiteral("remove from helper"),
             [](World &world) { world.helper->removeItem(world.decorator); }},
            {QStringLiteral("remove and add again"),
             [](World &world) {
                 world.helper->removeItem(world.decorator);
                 world.helper->addItem(world.decorator);
             }},
            {QStringLiteral("clear scene"), [](World &world) { world.scene->clear(); }},
            {QStringLiteral("delete decorator later"),
             [](World &world) { world.decorator->deleteLater(); }},
            {QStringLiteral("delete by the helper later"),
             [](World &world) { world.helper->deleteItemLater(world.decorator); }},
            {QStringLiteral("delete scene later"),
             [](World &world) { world.scene->deleteLater(); }},
            {QStringLiteral("delete helper later"),
             [](World &world) { world.helper->deleteLater(); }},
            {QStringLiteral("child leaves the frame"),
             [](World &world) { world.child->setParentItem(nullptr); }},
            {QStringLiteral("no handles"), [](World &world) { setHandles(world, {}); }},
            {QStringLiteral("hide"), [](World &world) { world.decorator->hide(); }},
    };
    return steps;
}

} // namespace

Q_DECLARE_METATYPE(Action)

class DecoratorLifetimeTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void everyOrderOfDeleting_data();
    void everyOrderOfDeleting();
    void changesBeforeTheEnd_data();
    void changesBeforeTheEnd();
    void inSlots_data();
    void inSlots();
    void scenesInSlots_data();
    void scenesInSlots();
    void inFocusSlots_data();
    void inFocusSlots();
    void duringADrag_data();
    void duringADrag();
    void focusedItemsGo_data();
    void focusedItemsGo();
    void geometryListenersDeleteLater();
    void emptyFrame();
    void frameAroundNothing();

private:
    void addRows(const char *what, const QVector<Frame> &frames, const Action &trigger);
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
        deletions().at(step).action(world);
        useWhatIsLeft(world);
    }
    QVERIFY(!world.decorator);
    QVERIFY(!world.child);
    QVERIFY(!world.scene);
    QVERIFY(!world.view);
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorLifetimeTest::changesBeforeTheEnd_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<Action>("first");
    QTest::addColumn<Action>("second");
    QTest::addColumn<Action>("ending");

    for (const Frame frame : allFrames()) {
        for (const Step &first : changes()) {
            for (const Step &second : changes()) {
                for (const Step &ending : endings()) {
                    const QString row =
                            QStringLiteral("%1: %2, %3, %4")
                                    .arg(nameOf(frame), first.name, second.name, ending.name);
                    QTest::newRow(qPrintable(row))
                            << frame << first.action << second.action << ending.action;
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
    QFETCH(const Action, ending);

    {
        World world(frame);
        first(world);
        second(world);
        QVERIFY(world.decorator && world.child);
        world.decorator->updateDecoration();
        ending(world);
        QVERIFY(!world.decorator || world.decorator->child() == world.child);
        if (world.decorator && world.child)
            world.decorator->setSize(QSizeF(10.0, 10.0));
    }
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorLifetimeTest::addRows(const char *what, const QVector<Frame> &frames,
                                    const Action &trigger)
{
    for (const Frame frame : frames) {
        for (const Step &reaction : reactions()) {
            const QString row = QStringLiteral("%1, %2: %3")
                                        .arg(QLatin1String(what), nameOf(frame), reaction.name);
            QTest::newRow(qPrintable(row))
                    << frame << QString::fromLatin1(what).section(QLatin1Char(' '), 0, 0) << trigger
                    << reaction.action;
        }
    }
}

void DecoratorLifetimeTest::inSlots_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<Action>("trigger");
    QTest::addColumn<Action>("reaction");

    const QVector<Frame> resize = {Frame::Resize, Frame::ResizeWithFewHandles};
    addRows("itemMoved by the frame", allFrames(), dragFrame);
    addRows("itemMoved by a handle", resize, dragHandle);
    addRows("itemResized", resize, dragHandle);
    addRows("itemRotated", {Frame::Rotate}, dragHandle);
    addRows("selectionChanged", allFrames(), [](World &world) {
        ViewMouse mouse(*world.view);
        mouse.press(centreOnScene(*world.child));
        mouse.release();
    });
    addRows("setSize by code", allFrames(),
            [](World &world) { world.decorator->setSize(QSizeF(20.0, 30.0)); });
    addRows("setSize by a drag", resize, dragHandle);
    addRows("setEditable by code", allFrames(),
            [](World &world) { world.decorator->setEditable(true, QPointF()); });
    addRows("setEditable by a double click", allFrames(), [](World &world) {
        const QPointF centre = centreOnScene(*world.child);
        ViewMouse mouse(*world.view);
        mouse.doubleClick(centre);
    });
    addRows("setViewScale by code", allFrames(),
            [](World &world) { world.decorator->setViewScale(2.0); });
    addRows("setHighlight by code", allFrames(),
            [](World &world) { world.decorator->setHighlight(true); });
    addRows("decorationChanged by setSize", allFrames(),
            [](World &world) { world.decorator->setSize(QSizeF(20.0, 30.0)); });
    addRows("decorationChanged by setViewScale", allFrames(),
            [](World &world) { world.decorator->setViewScale(2.0); });
    addRows("decorationChanged by setAvailableHandles", resize,
            [](World &world) { setHandles(world, {Qt::TopSection}); });
    addRows("decorationChanged by setRotateHandleItem", {Frame::Rotate},
            [](World &world) { setHandles(world, {}); });
    addRows("decorationChanged by a drag", resize, dragHandle);
}

namespace {

/// Runs the reaction once, when the signal or the child's slot of that name comes.
void reactTo(World &world, const QString &signal, const Action &reaction, int &count)
{
    const auto react = [&world, reaction, &count] {
        if (count++ == 0)
            reaction(world);
    };
    if (auto *resize = qobject_cast<ResizeDecorator *>(world.decorator);
        resize && signal == QLatin1String("itemResized"))
        QObject::connect(resize, &ResizeDecorator::itemResized, react);
    else if (auto *rotate = qobject_cast<RotateDecorator *>(world.decorator);
             rotate && signal == QLatin1String("itemRotated"))
        QObject::connect(rotate, &RotateDecorator::itemRotated, react);
    else if (signal == QLatin1String("itemMoved"))
        QObject::connect(world.decorator, &AbstractDecorator::itemMoved, react);
    else if (signal == QLatin1String("decorationChanged"))
        QObject::connect(world.decorator, &AbstractDecorator::decorationChanged, react);
    else if (signal == QLatin1String("selectionChanged"))
        QObject::connect(world.scene, &QGraphicsScene::selectionChanged, react);
    else
        world.child->whenCalled = [child = world.child, signal, react] {
            if (child && child->calls.last() == signal)
                react();
        };
}

} // namespace

void DecoratorLifetimeTest::inSlots()
{
    QFETCH(const Frame, frame);
    QFETCH(const QString, signal);
    QFETCH(const Action, trigger);
    QFETCH(const Action, reaction);

    {
        World world(frame);
        world.showView();
        int count = 0;
        reactTo(world, signal, reaction, count);
        trigger(world);
        QVERIFY(count >= 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        useWhatIsLeft(world);
    }
    QCOMPARE(CountedChild::count(), 0);
}

/// Where no event of the scene is under way, the scene may go at once.
void DecoratorLifetimeTest::scenesInSlots_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<Action>("trigger");

    const auto row = [](const char *signal, const Action &trigger) {
        for (const Frame frame : allFrames()) {
            QTest::newRow(qPrintable(QLatin1String(signal) + QStringLiteral(", ") + nameOf(frame)))
                    << frame << QString::fromLatin1(signal) << trigger;
        }
    };
    row("setSize", [](World &world) { world.decorator->setSize(QSizeF(20.0, 30.0)); });
    row("setEditable", [](World &world) { world.decorator->setEditable(true, QPointF()); });
    row("setViewScale", [](World &world) { world.decorator->setViewScale(2.0); });
    row("setHighlight", [](World &world) { world.decorator->setHighlight(true); });
    row("decorationChanged", [](World &world) { world.decorator->updateDecoration(); });
}

void DecoratorLifetimeTest::scenesInSlots()
{
    QFETCH(const Frame, frame);
    QFETCH(const QString, signal);
    QFETCH(const Action, trigger);

    World world(frame);
    int count = 0;
    reactTo(
            world, signal, [](World &w) { delete w.helper; }, count);
    trigger(world);
    QCOMPARE(count, 1);
    QVERIFY(!world.scene);
    QVERIFY(!world.decorator);
    QVERIFY(!world.child);
}

void DecoratorLifetimeTest::inFocusSlots_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<bool>("isFocusIn");
    QTest::addColumn<Action>("reaction");

    // Qt itself goes on with the event filters of the item, so it has to stay until then.
    const QVector<Step> steps = {
            {QStringLiteral("delete decorator later"),
             [](World &world) { world.decorator->deleteLater(); }},
            {QStringLiteral("delete child later"),
             [](World &world) { world.child->deleteLater(); }},
            {QStringLiteral("delete scene later"),
             [](World &world) { world.scene->deleteLater(); }},
            {QStringLiteral("delete helper later"),
             [](World &world) { world.helper->deleteLater(); }},
            {QStringLiteral("delete by the helper later"),
             [](World &world) { world.helper->deleteItemLater(world.decorator); }},
            {QStringLiteral("clear helper later"),
             [](World &world) {
                 QMetaObject::invokeMethod(world.helper, "clear", Qt::QueuedConnection);
             }},
            {QStringLiteral("remove from helper later"),
             [](World &world) {
                 QMetaObject::invokeMethod(world.helper, "removeItem", Qt::QueuedConnection,
                                           Q_ARG(QGraphicsItem *, world.decorator));
             }},
            {QStringLiteral("clear scene later"),
             [](World &world) {
                 QMetaObject::invokeMethod(world.scene, "clear", Qt::QueuedConnection);
             }},
    };
    for (const Frame frame : allFrames()) {
        for (const bool isFocusIn : {true, false}) {
            for (const Step &step : steps) {
                const QString row =
                        QStringLiteral("%1, focus %2: %3")
                                .arg(nameOf(frame),
                                     isFocusIn ? QStringLiteral("in") : QStringLiteral("out"),
                                     step.name);
                QTest::newRow(qPrintable(row)) << frame << isFocusIn << step.action;
            }
        }
    }
}

void DecoratorLifetimeTest::inFocusSlots()
{
    QFETCH(const Frame, frame);
    QFETCH(const bool, isFocusIn);
    QFETCH(const Action, reaction);

    {
        World world(frame);
        world.showView();
        world.decorator->installSceneEventFilter(new FocusHandler(world.child));
        int count = 0;
        if (!isFocusIn)
            world.decorator->setFocus();
        reactTo(world, QStringLiteral("setHighlight"), reaction, count);
        if (isFocusIn)
            world.decorator->setFocus();
        else
            world.decorator->clearFocus();
        QVERIFY(count >= 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        useWhatIsLeft(world);
    }
    QCOMPARE(CountedChild::count(), 0);
}

/// Between two events of a drag.
void DecoratorLifetimeTest::duringADrag_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<bool>("isHandle");
    QTest::addColumn<Action>("change");

    QVector<Step> steps = reactions() + changes();
    steps.append({QStringLiteral("delete helper"), [](World &world) { delete world.helper; }});
    for (const Frame frame : allFrames()) {
        for (const bool isHandle : {true, false}) {
            for (const Step &step : qAsConst(steps)) {
                const QString row = QStringLiteral("%1, dragged by %2: %3")
                                            .arg(nameOf(frame),
                                                 isHandle ? QStringLiteral("a handle")
                                                          : QStringLiteral("itself"),
                                                 step.name);
                QTest::addRow("%s", qPrintable(row)) << frame << isHandle << step.action;
            }
        }
    }
}

void DecoratorLifetimeTest::duringADrag()
{
    QFETCH(const Frame, frame);
    QFETCH(const bool, isHandle);
    QFETCH(const Action, change);

    {
        World world(frame);
        world.showView();
        ViewMouse mouse(*world.view);
        mouse.press(isHandle ? centreOnScene(*world.firstHandle()) : centreOnScene(*world.child));
        QCOMPARE(world.scene->mouseGrabberItem(), world.decorator);
        mouse.moveBy(QPoint(-5, -5));
        change(world);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        mouse.moveBy(QPoint(-5, -5));
        mouse.release();
        if (world.scene)
            QCOMPARE(world.scene->mouseGrabberItem(), nullptr);
        useWhatIsLeft(world);
    }
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorLifetimeTest::focusedItemsGo_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<bool>("isDecoratorWatched");
    QTest::addColumn<Action>("ending");

    for (const Frame frame : allFrames()) {
        for (const bool isDecoratorWatched : {true, false}) {
            for (const Step &ending : endings()) {
                const QString row = QStringLiteral("%1, focus on %2: %3")
                                            .arg(nameOf(frame),
                                                 isDecoratorWatched ? QStringLiteral("the frame")
                                                                    : QStringLiteral("the child"),
                                                 ending.name);
                QTest::newRow(qPrintable(row)) << frame << isDecoratorWatched << ending.action;
            }
        }
    }
}

void DecoratorLifetimeTest::focusedItemsGo()
{
    QFETCH(const Frame, frame);
    QFETCH(const bool, isDecoratorWatched);
    QFETCH(const Action, ending);

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
        ending(world);
        useWhatIsLeft(world);
    }
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorLifetimeTest::geometryListenersDeleteLater()
{
    World world(Frame::Resize);
    connect(world.decorator, &AbstractDecorator::geometryChanged, world.decorator,
            &QObject::deleteLater);
    world.decorator->setPos(10.0, 10.0);
    QVERIFY(world.decorator);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!world.decorator);
    QVERIFY(!world.child);
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
    drag(world, world.decorator->mapToScene(QPointF(-15.0, 0.0)));
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
