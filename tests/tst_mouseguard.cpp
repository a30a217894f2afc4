// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/GraphicsViewportMouseGuard.h>
#include <Scene/Decorator/ResizeDecorator.h>

#include <QSignalSpy>

#include <memory>
#include <vector>

// The mouse stays with a viewport while the left button is held.

Q_DECLARE_METATYPE(QEvent::Type)
Q_DECLARE_METATYPE(Qt::MouseButton)

namespace {

/// The platform of the tests has no mouse to grab, and says so each time; the widget is known as
/// the grabber all the same.
class GrabWarnings
{
public:
    explicit GrabWarnings(int count)
    {
        const QString text = QStringLiteral("does not support grabbing the mouse");
        for (int i = 0; i < count; ++i)
            m_expected.push_back(std::make_unique<ExpectedWarning>(text));
    }

private:
    std::vector<std::unique_ptr<ExpectedWarning>> m_expected;
};

} // namespace

class MouseGuardTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void hasNoMethods();
    void keepsTheMouse_data();
    void keepsTheMouse();
    void otherButtonsDoNotLetGo();
    void dragLeavesTheViewport();
    void letsEveryEventPass_data();
    void letsEveryEventPass();
    void watchesWidgetsOnly();
    void unguardedGrabsNothing();
};

void MouseGuardTest::hasNoMethods()
{
    QObject parent;
    const auto *guard = new GraphicsViewportMouseGuard(&parent);
    QCOMPARE(guard->parent(), &parent);
    QCOMPARE(ownMethods(GraphicsViewportMouseGuard::staticMetaObject), QStringList());
    QCOMPARE(ownProperties(GraphicsViewportMouseGuard::staticMetaObject), QStringList());
}

void MouseGuardTest::keepsTheMouse_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<bool>("isKept");

    QTest::newRow("left") << Qt::LeftButton << true;
    QTest::newRow("right") << Qt::RightButton << false;
    QTest::newRow("middle") << Qt::MiddleButton << false;
}

void MouseGuardTest::keepsTheMouse()
{
    QFETCH(const Qt::MouseButton, button);
    QFETCH(const bool, isKept);

    SceneOnView stage;
    GraphicsViewportMouseGuard guard;
    QWidget *viewport = stage.view.viewport();
    viewport->installEventFilter(&guard);
    QCOMPARE(QWidget::mouseGrabber(), nullptr);
    const GrabWarnings warnings(isKept ? 2 : 0);
    ViewMouse mouse(stage.view);
    mouse.press(QPointF(20.0, 20.0), button);
    QCOMPARE(QWidget::mouseGrabber(), isKept ? viewport : nullptr);
    mouse.moveBy(QPoint(10, 10));
    QCOMPARE(QWidget::mouseGrabber(), isKept ? viewport : nullptr);
    mouse.release();
    QCOMPARE(QWidget::mouseGrabber(), nullptr);
}

void MouseGuardTest::otherButtonsDoNotLetGo()
{
    SceneOnView stage;
    GraphicsViewportMouseGuard guard;
    QWidget *viewport = stage.view.viewport();
    viewport->installEventFilter(&guard);
    const GrabWarnings warnings(2);
    ViewMouse left(stage.view);
    left.press(QPointF(20.0, 20.0));
    ViewMouse right(stage.view);
    right.press(QPointF(20.0, 20.0), Qt::RightButton);
    right.release();
    QCOMPARE(QWidget::mouseGrabber(), viewport);
    left.release();
    QCOMPARE(QWidget::mouseGrabber(), nullptr);
}

void MouseGuardTest::dragLeavesTheViewport()
{
    SceneOnView stage;
    GraphicsViewportMouseGuard guard;
    stage.view.viewport()->installEventFilter(&guard);
    auto *decorator = new ResizeDecorator(new RecordingChild);
    stage.scene.addItem(decorator);
    QSignalSpy moved(decorator, &ResizeDecorator::itemMoved);
    const GrabWarnings warnings(2);
    ViewMouse mouse(stage.view);
    mouse.press(centreOnScene(*decorator->child()));
    QCOMPARE(QWidget::mouseGrabber(), stage.view.viewport());
    mouse.moveBy(QPoint(-700, 900));
    QCOMPARE(decorator->pos(), QPointF(-700.0, 900.0));
    mouse.release();
    QCOMPARE(QWidget::mouseGrabber(), nullptr);
    QCOMPARE(moved.count(), 1);
}

void MouseGuardTest::letsEveryEventPass_data()
{
    QTest::addColumn<QEvent::Type>("type");
    QTest::addColumn<Qt::MouseButton>("button");

    QTest::newRow("left press") << QEvent::MouseButtonPress << Qt::LeftButton;
    QTest::newRow("left release") << QEvent::MouseButtonRelease << Qt::LeftButton;
    QTest::newRow("right press") << QEvent::MouseButtonPress << Qt::RightButton;
    QTest::newRow("right release") << QEvent::MouseButtonRelease << Qt::RightButton;
    QTest::newRow("move") << QEvent::MouseMove << Qt::NoButton;
    QTest::newRow("double click") << QEvent::MouseButtonDblClick << Qt::LeftButton;
}

void MouseGuardTest::letsEveryEventPass()
{
    QFETCH(const QEvent::Type, type);
    QFETCH(const Qt::MouseButton, button);

    QWidget widget;
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    GraphicsViewportMouseGuard guard;
    QMouseEvent event(type, QPointF(1.0, 1.0), button, button, Qt::NoModifier);
    const bool isGrab = type == QEvent::MouseButtonPress && button == Qt::LeftButton;
    const GrabWarnings warnings(isGrab ? 2 : 0);
    QVERIFY(!guard.eventFilter(&widget, &event));
    QCOMPARE(QWidget::mouseGrabber(), isGrab ? &widget : nullptr);
    if (isGrab)
        widget.releaseMouse();
}

void MouseGuardTest::watchesWidgetsOnly()
{
    GraphicsViewportMouseGuard guard;
    QObject other;
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(1.0, 1.0), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QVERIFY(!guard.eventFilter(&other, &event));
    QCOMPARE(QWidget::mouseGrabber(), nullptr);
}

void MouseGuardTest::unguardedGrabsNothing()
{
    SceneOnView stage;
    ViewMouse mouse(stage.view);
    mouse.press(QPointF(20.0, 20.0));
    QCOMPARE(QWidget::mouseGrabber(), nullptr);
    mouse.release();
}

QTEST_MAIN(MouseGuardTest)
#include "tst_mouseguard.moc"
