// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/FocusHandler.h>
#include <Scene/Decorator/RotateDecorator.h>

#include <QPainter>
#include <QPointer>

// An item is highlighted while another has the keyboard focus.

namespace {

/// A child that has the focus, and writes down that it was given or taken.
class FocusChild : public RecordingChild
{
    Q_OBJECT

public:
    FocusChild() { setFlag(ItemIsFocusable); }

    QVector<bool> focusEvents;

protected:
    void focusInEvent(QFocusEvent *) override { focusEvents.append(true); }
    void focusOutEvent(QFocusEvent *) override { focusEvents.append(false); }
};

/// Gives the filter away.
class OpenFocusHandler : public FocusHandler
{
public:
    using FocusHandler::FocusHandler;
    using FocusHandler::sceneEventFilter;
};

} // namespace

class FocusHandlerTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void hasNothingToShow();
    void hasNoMethods();
    void needsATarget();
    void highlightsTheDecorator();
    void highlightsATargetWithoutParent();
    void highlightsTheOutermostItem();
    void leavesOthersAlone_data();
    void leavesOthersAlone();
    void otherEventsHighlightNothing_data();
    void otherEventsHighlightNothing();
    void consumesNothing();
    void followsFocusOfTheDecoratorItself();
    void watchesOneItemForAnother();
    void slotTakesTheItemsOffTheScene_data();
    void slotTakesTheItemsOffTheScene();
};

void FocusHandlerTest::hasNothingToShow()
{
    PlainChild target;
    auto *handler = new FocusHandler(&target);
    QCOMPARE(handler->parentItem(), &target);
    QCOMPARE(handler->boundingRect(), QRectF());
    QVERIFY(handler->flags() & QGraphicsItem::ItemHasNoContents);

    QImage picture(20, 20, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::red);
    const QImage before = picture.copy();
    QPainter painter(&picture);
    handler->paint(&painter, nullptr, nullptr);
    painter.end();
    QCOMPARE(picture, before);
}

void FocusHandlerTest::hasNoMethods()
{
    QCOMPARE(ownMethods(FocusHandler::staticMetaObject), QStringList());
    QCOMPARE(ownProperties(FocusHandler::staticMetaObject), QStringList());
    QCOMPARE(FocusHandler::staticMetaObject.superClass(), &QGraphicsObject::staticMetaObject);
}

void FocusHandlerTest::needsATarget()
{
    OpenFocusHandler handler(nullptr);
    QCOMPARE(handler.parentItem(), nullptr);
    PlainChild watched;
    QEvent event(QEvent::FocusIn);
    QVERIFY(!handler.sceneEventFilter(&watched, &event));
}

void FocusHandlerTest::highlightsTheDecorator()
{
    SceneOnView stage;
    auto *child = new FocusChild;
    auto *decorator = new ResizeDecorator(child);
    stage.scene.addItem(decorator);
    auto *handler = new FocusHandler(child);
    child->installSceneEventFilter(handler);
    QObject styling;
    styling.setProperty("decoratorPen", QPen(Qt::red));
    styling.setProperty("decoratorSelectedPen", QPen(Qt::blue));
    decorator->setStylingObject(&styling);
    QApplication::setActiveWindow(&stage.view);
    stage.view.setFocus();

    child->setFocus();
    QVERIFY(child->highlighted);
    QCOMPARE(decorator->currentPen(), QPen(Qt::blue));
    child->clearFocus();
    QVERIFY(!child->highlighted);
    QCOMPARE(decorator->currentPen(), QPen(Qt::red));
    QCOMPARE(child->calls,
             QStringList({QStringLiteral("setHighlight"), QStringLiteral("setHighlight")}));
    QCOMPARE(child->focusEvents, QVector<bool>({true, false}));
}

void FocusHandlerTest::highlightsATargetWithoutParent()
{
    SceneOnView stage;
    auto *target = new FocusChild;
    stage.scene.addItem(target);
    target->installSceneEventFilter(new FocusHandler(target));
    QApplication::setActiveWindow(&stage.view);
    target->setFocus();
    QVERIFY(target->highlighted);
    target->clearFocus();
    QVERIFY(!target->highlighted);
    QCOMPARE(target->focusEvents, QVector<bool>({true, false}));
}

void FocusHandlerTest::highlightsTheOutermostItem()
{
    QGraphicsScene scene;
    auto *outermost = new RecordingChild;
    auto *middle = new RecordingChild;
    auto *target = new RecordingChild;
    middle->setParentItem(outermost);
    target->setParentItem(middle);
    scene.addItem(outermost);
    OpenFocusHandler handler(target);
    QEvent event(QEvent::FocusIn);
    QVERIFY(!handler.sceneEventFilter(target, &event));
    QVERIFY(outermost->highlighted);
    QVERIFY(!middle->highlighted);
    QVERIFY(!target->highlighted);
}

void FocusHandlerTest::leavesOthersAlone_data()
{
    QTest::addColumn<bool>("isObject");
    QTest::newRow("a top-level item that is no object") << false;
    QTest::newRow("a top-level item without the slot") << true;
}

void FocusHandlerTest::leavesOthersAlone()
{
    QFETCH(const bool, isObject);

    SceneOnView stage;
    QGraphicsItem *top = nullptr;
    if (isObject)
        top = new PlainChild;
    else
        top = new QGraphicsRectItem;
    stage.scene.addItem(top);
    auto *target = new FocusChild;
    target->setParentItem(top);
    target->installSceneEventFilter(new FocusHandler(target));
    QApplication::setActiveWindow(&stage.view);
    target->setFocus();
    target->clearFocus();
    QCOMPARE(target->calls, QStringList());
    QCOMPARE(target->focusEvents, QVector<bool>({true, false}));
}

void FocusHandlerTest::otherEventsHighlightNothing_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("press") << int(QEvent::GraphicsSceneMousePress);
    QTest::newRow("hover") << int(QEvent::GraphicsSceneHoverEnter);
    QTest::newRow("key") << int(QEvent::KeyPress);
    QTest::newRow("about to change the focus") << int(QEvent::FocusAboutToChange);
}

void FocusHandlerTest::otherEventsHighlightNothing()
{
    QFETCH(const int, type);

    RecordingChild target;
    OpenFocusHandler handler(&target);
    QEvent event{QEvent::Type(type)};
    QVERIFY(!handler.sceneEventFilter(&target, &event));
    QCOMPARE(target.calls, QStringList());
}

void FocusHandlerTest::consumesNothing()
{
    RecordingChild target;
    OpenFocusHandler handler(&target);
    for (const QEvent::Type type : {QEvent::FocusIn, QEvent::FocusOut}) {
        QEvent event(type);
        QVERIFY(!handler.sceneEventFilter(&target, &event));
        QVERIFY(event.isAccepted());
    }
    QCOMPARE(target.calls,
             QStringList({QStringLiteral("setHighlight"), QStringLiteral("setHighlight")}));
}

/// As when a user clicks on frames.
void FocusHandlerTest::followsFocusOfTheDecoratorItself()
{
    SceneOnView stage;
    auto *left = new RecordingChild;
    auto *right = new RecordingChild;
    right->setPos(150.0, 0.0);
    for (RecordingChild *child : {left, right}) {
        auto *decorator = new RotateDecorator(child);
        stage.scene.addItem(decorator);
        decorator->installSceneEventFilter(new FocusHandler(child));
    }
    QApplication::setActiveWindow(&stage.view);
    ViewMouse mouse(stage.view);
    mouse.drag(QPointF(50.0, 25.0), QPoint());
    QVERIFY(left->highlighted);
    QVERIFY(!right->highlighted);
    mouse.drag(QPointF(200.0, 25.0), QPoint());
    QVERIFY(!left->highlighted);
    QVERIFY(right->highlighted);
    mouse.drag(QPointF(0.0, 150.0), QPoint());
    QVERIFY(!left->highlighted);
    QVERIFY(!right->highlighted);
}

void FocusHandlerTest::watchesOneItemForAnother()
{
    SceneOnView stage;
    auto *target = new RecordingChild;
    auto *watched = new FocusChild;
    stage.scene.addItem(target);
    stage.scene.addItem(watched);
    watched->installSceneEventFilter(new FocusHandler(target));
    QApplication::setActiveWindow(&stage.view);
    watched->setFocus();
    QVERIFY(target->highlighted);
    QVERIFY(!watched->highlighted);
}

void FocusHandlerTest::slotTakesTheItemsOffTheScene_data()
{
    QTest::addColumn<bool>("isAddedAgain");
    QTest::addColumn<bool>("isDeleted");
    QTest::newRow("for good") << false << false;
    QTest::newRow("and puts them back") << true << false;
    QTest::newRow("and deletes them") << false << true;
}

/// The scene has forgotten its filters then, while it was still going through them.
void FocusHandlerTest::slotTakesTheItemsOffTheScene()
{
    QFETCH(const bool, isAddedAgain);
    QFETCH(const bool, isDeleted);

    SceneOnView stage;
    auto child = std::make_unique<FocusChild>();
    const QPointer<FocusChild> guard(child.get());
    stage.scene.addItem(child.get());
    child->installSceneEventFilter(new FocusHandler(child.get()));
    child->whenCalled = [&] {
        child->whenCalled = [] {};
        stage.scene.removeItem(child.get());
        if (isAddedAgain)
            stage.scene.addItem(child.get());
        if (isDeleted)
            child.reset();
    };
    QApplication::setActiveWindow(&stage.view);
    child->setFocus();
    QCOMPARE(guard.isNull(), isDeleted);
    if (isDeleted)
        return;
    // The item has lost the focus with the scene. It never saw that it got it: the event ended with
    // the slot.
    QVERIFY(!child->highlighted);
    QCOMPARE(child->focusEvents, QVector<bool>({false}));
    QCOMPARE(child->scene(), isAddedAgain ? &stage.scene : nullptr);
}

QTEST_MAIN(FocusHandlerTest)
#include "tst_focushandler.moc"
