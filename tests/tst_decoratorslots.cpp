// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FramedWorld.h"

#include <Scene/Decorator/FocusHandler.h>

// What slots may do to the frame that calls them, and what may happen to a frame amid a drag.

namespace {

constexpr Fate allThere;
constexpr Fate childGone{true, false, true};
constexpr Fate gone{false, false, true};
constexpr Fate allGone{false, false, false};

/// What a slot does, and what is left in the end.
struct Reaction
{
    QString name;
    Action action;
    Fate fate;
};

// What a user does. Each tells of something at its end.

void drag(World &world, const QPointF &from, const QPoint &pixels = QPoint(-9, -7))
{
    ViewMouse mouse(*world.view);
    mouse.drag(from, pixels);
}

void click(World &world)
{
    drag(world, centreOnScene(*world.child), QPoint());
}

/// The others lose their selection when the mouse is released.
void clickAmongSelected(World &world)
{
    auto *other = new QGraphicsRectItem;
    other->setFlag(QGraphicsItem::ItemIsSelectable);
    world.scene->addItem(other);
    {
        const QSignalBlocker blocker(world.scene);
        other->setSelected(true);
        world.decorator->setSelected(true);
    }
    click(world);
}

void dragFrame(World &world)
{
    drag(world, centreOnScene(*world.child));
}

void dragHandle(World &world)
{
    drag(world, centreOnScene(*world.firstHandle()));
}

/// What Qt allows while it changes an item.
const QVector<Reaction> &lateReactions()
{
    static const QVector<Reaction> steps = {
            {QStringLiteral("delete child later"), [](World &world) { world.child->deleteLater(); },
             childGone},
            {QStringLiteral("delete decorator later"),
             [](World &world) { world.decorator->deleteLater(); }, gone},
            {QStringLiteral("delete by the helper later"),
             [](World &world) { world.helper->deleteItemLater(world.decorator); }, gone},
            {QStringLiteral("delete scene later"), [](World &world) { world.scene->deleteLater(); },
             allGone},
            {QStringLiteral("delete helper later"),
             [](World &world) { world.helper->deleteLater(); }, allGone},
    };
    return steps;
}

/// What Qt itself allows while it handles an event of the frame.
const QVector<Reaction> &gentleReactions()
{
    static const QVector<Reaction> steps = lateReactions()
            + QVector<Reaction>{
                    {QStringLiteral("delete child"), [](World &world) { delete world.child; },
                     childGone},
                    {QStringLiteral("delete handle"),
                     [](World &world) { delete world.firstHandle(); }, allThere},
                    {QStringLiteral("clear helper"), [](World &world) { world.helper->clear(); },
                     allThere},
                    {QStringLiteral("remove from helper"),
                     [](World &world) { world.helper->removeItem(world.decorator); }, allThere},
                    {QStringLiteral("remove and add again"),
                     [](World &world) {
                         world.helper->removeItem(world.decorator);
                         world.helper->addItem(world.decorator);
                     },
                     allThere},
                    {QStringLiteral("child leaves the frame"),
                     [](World &world) { world.child->setParentItem(nullptr); }, allThere},
                    {QStringLiteral("no handles"), [](World &world) { setHandles(world, {}); },
                     allThere},
                    {QStringLiteral("hide"), [](World &world) { world.decorator->hide(); },
                     allThere},
            };
    return steps;
}

const QVector<Reaction> &reactions()
{
    static const QVector<Reaction> steps = gentleReactions()
            + QVector<Reaction>{
                    {QStringLiteral("delete decorator"),
                     [](World &world) { delete world.decorator; }, gone},
                    {QStringLiteral("delete child, then decorator"),
                     [](World &world) {
                         delete world.child;
                         delete world.decorator;
                     },
                     gone},
                    {QStringLiteral("clear helper, delete decorator"),
                     [](World &world) {
                         world.helper->clear();
                         delete world.decorator;
                     },
                     gone},
                    {QStringLiteral("clear scene"), [](World &world) { world.scene->clear(); },
                     gone},
            };
    return steps;
}

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

class DecoratorSlotsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void inSlots_data();
    void inSlots();
    void scenesInSlots_data();
    void scenesInSlots();
    void inFocusSlots_data();
    void inFocusSlots();
    void duringADrag_data();
    void duringADrag();
    void geometryListenersDeleteLater();

private:
    void addRows(const char *what, const QVector<Frame> &frames, const Action &trigger,
                 const QVector<Reaction> &slotReactions = reactions());
};

void DecoratorSlotsTest::cleanup()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorSlotsTest::addRows(const char *what, const QVector<Frame> &frames,
                                 const Action &trigger, const QVector<Reaction> &slotReactions)
{
    for (const Frame frame : frames) {
        for (const Reaction &reaction : slotReactions) {
            const QString row = QStringLiteral("%1, %2: %3")
                                        .arg(QLatin1String(what), nameOf(frame), reaction.name);
            QTest::newRow(qPrintable(row))
                    << frame << QString::fromLatin1(what).section(QLatin1Char(' '), 0, 0) << trigger
                    << reaction.action << reaction.fate;
        }
    }
}

void DecoratorSlotsTest::inSlots_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<Action>("trigger");
    QTest::addColumn<Action>("reaction");
    QTest::addColumn<Fate>("fate");

    const QVector<Frame> resize = {Frame::Resize, Frame::ResizeWithFewHandles};
    addRows("itemMoved by the frame", allFrames(), dragFrame);
    addRows("itemMoved by a handle", resize, dragHandle);
    addRows("itemResized", resize, dragHandle);
    addRows("itemRotated", {Frame::Rotate}, dragHandle);
    addRows("selectionChanged by a press", allFrames(), click, gentleReactions());
    addRows("selectionChanged by a release", allFrames(), clickAmongSelected, gentleReactions());
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
    addRows(
            "decorationChanged by hiding", allFrames(),
            [](World &world) { world.decorator->hide(); }, gentleReactions());
    addRows(
            "decorationChanged by showing", allFrames(),
            [](World &world) {
                {
                    const QSignalBlocker blocker(world.decorator);
                    world.decorator->hide();
                }
                world.decorator->show();
            },
            gentleReactions());
    addRows(
            "decorationChanged by coming to a scene", allFrames(),
            [](World &world) {
                world.scene->removeItem(world.decorator);
                world.scene->addItem(world.decorator);
                QCoreApplication::processEvents();
            },
            gentleReactions());
    addRows(
            "decorationChanged by a move of the child", allFrames(),
            [](World &world) { world.child->setX(10.0); }, lateReactions());
}

void DecoratorSlotsTest::inSlots()
{
    QFETCH(const Frame, frame);
    QFETCH(const QString, signal);
    QFETCH(const Action, trigger);
    QFETCH(const Action, reaction);
    QFETCH(const Fate, fate);

    {
        World world(frame);
        world.showView();
        int count = 0;
        reactTo(world, signal, reaction, count);
        trigger(world);
        QVERIFY(count >= 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        verifyFate(world, fate);
        useWhatIsLeft(world);
    }
    QCOMPARE(CountedChild::count(), 0);
}

/// Where no event of the scene is under way, the scene may go at once.
void DecoratorSlotsTest::scenesInSlots_data()
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

void DecoratorSlotsTest::scenesInSlots()
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

void DecoratorSlotsTest::inFocusSlots_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<bool>("isFocusIn");
    QTest::addColumn<Action>("reaction");
    QTest::addColumn<Fate>("fate");

    for (const Frame frame : allFrames()) {
        for (const bool isFocusIn : {true, false}) {
            for (const Reaction &step : reactions()) {
                const QString row =
                        QStringLiteral("%1, focus %2: %3")
                                .arg(nameOf(frame),
                                     isFocusIn ? QStringLiteral("in") : QStringLiteral("out"),
                                     step.name);
                QTest::newRow(qPrintable(row)) << frame << isFocusIn << step.action << step.fate;
            }
        }
    }
}

void DecoratorSlotsTest::inFocusSlots()
{
    QFETCH(const Frame, frame);
    QFETCH(const bool, isFocusIn);
    QFETCH(const Action, reaction);
    QFETCH(const Fate, fate);

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
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        verifyFate(world, fate);
        useWhatIsLeft(world);
    }
    QCOMPARE(CountedChild::count(), 0);
}

/// Between two events of a drag.
void DecoratorSlotsTest::duringADrag_data()
{
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<bool>("isHandle");
    QTest::addColumn<Action>("change");
    QTest::addColumn<Fate>("fate");

    QVector<Reaction> steps = reactions();
    for (const Change &change : changes())
        steps.append({change.name, change.action, allThere});
    steps.append(
            {QStringLiteral("delete helper"), [](World &world) { delete world.helper; }, allGone});
    for (const Frame frame : allFrames()) {
        for (const bool isHandle : {true, false}) {
            for (const Reaction &step : qAsConst(steps)) {
                const QString row = QStringLiteral("%1, dragged by %2: %3")
                                            .arg(nameOf(frame),
                                                 isHandle ? QStringLiteral("a handle")
                                                          : QStringLiteral("itself"),
                                                 step.name);
                QTest::addRow("%s", qPrintable(row))
                        << frame << isHandle << step.action << step.fate;
            }
        }
    }
}

void DecoratorSlotsTest::duringADrag()
{
    QFETCH(const Frame, frame);
    QFETCH(const bool, isHandle);
    QFETCH(const Action, change);
    QFETCH(const Fate, fate);

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
        if (world.view->scene()) // where the release went
            QCOMPARE(world.scene->mouseGrabberItem(), nullptr);
        verifyFate(world, fate);
        useWhatIsLeft(world);
    }
    QCOMPARE(CountedChild::count(), 0);
}

void DecoratorSlotsTest::geometryListenersDeleteLater()
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

QTEST_MAIN(DecoratorSlotsTest)
#include "tst_decoratorslots.moc"
