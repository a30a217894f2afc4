// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/DecoratorHandleProxy.h>
#include <Scene/Decorator/RotateDecorator.h>

#include <QPushButton>
#include <QSignalSpy>

// A double click is the child's on the frame, and two presses on a handle.

namespace {

template <typename Decorator>
struct Stage : SceneOnView
{
    Stage() : child(new RecordingChild), decorator(new Decorator(child)), mouse(view)
    {
        scene.addItem(decorator);
        decorator->updateDecoration();
    }

    /// The second press is held and dragged.
    void doubleClickAndDrag(const QPointF &from, const QPoint &pixels)
    {
        mouse.doubleClickHeld(from);
        mouse.moveBy(pixels);
        mouse.release();
    }

    RecordingChild *child;
    Decorator *decorator;
    ViewMouse mouse;
};

} // namespace

class HandleClicksTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void resizeHandles_data();
    void resizeHandles();
    void rotateHandle();
    void widgetAsHandle();
    void besideTheHandles();
};

void HandleClicksTest::resizeHandles_data()
{
    QTest::addColumn<Qt::WindowFrameSection>("section");

    for (const Qt::WindowFrameSection section : allSections())
        QTest::newRow(qPrintable(QString::number(section))) << section;
}

void HandleClicksTest::resizeHandles()
{
    QFETCH(const Qt::WindowFrameSection, section);

    Stage<ResizeDecorator> stage;
    QSignalSpy resized(stage.decorator, &ResizeDecorator::itemResized);
    const auto centre = [&] { return centreOnScene(*handlesOf(*stage.decorator).at(section)); };
    stage.mouse.doubleClick(centre());
    QCOMPARE(stage.child->calls, QStringList());
    QCOMPARE(resized.count(), 0);

    stage.doubleClickAndDrag(centre(), QPoint(6, 6));
    QVERIFY(!stage.child->calls.contains(QStringLiteral("setEditable")));
    QVERIFY(stage.child->size != QSizeF());
    QCOMPARE(resized.count(), 1);
}

void HandleClicksTest::rotateHandle()
{
    Stage<RotateDecorator> stage;
    QSignalSpy rotated(stage.decorator, &RotateDecorator::itemRotated);
    const QPointF centre = centreOnScene(*childHandles(*stage.decorator).first());
    stage.mouse.doubleClick(centre);
    QCOMPARE(stage.child->calls, QStringList());
    QCOMPARE(rotated.count(), 0);

    stage.doubleClickAndDrag(centre, QPoint(20, 0));
    QCOMPARE(stage.child->calls, QStringList());
    QVERIFY(stage.decorator->rotation() > 10.0);
    QCOMPARE(rotated.count(), 1);
}

void HandleClicksTest::widgetAsHandle()
{
    Stage<RotateDecorator> stage;
    auto *button = new QPushButton(QStringLiteral("turn"));
    auto *proxy = new DecoratorHandleProxy(button, stage.decorator);
    stage.decorator->setRotateHandleItem(proxy);
    QSignalSpy clicks(button, &QPushButton::clicked);
    for (int i = 0; i < 2; ++i)
        QTest::ignoreMessage(QtDebugMsg, "RotateHandleItem::mousePressEvent");
    stage.mouse.doubleClick(centreOnScene(*proxy));
    QCOMPARE(stage.child->calls, QStringList());
    QCOMPARE(clicks.count(), 0);
}

void HandleClicksTest::besideTheHandles()
{
    Stage<ResizeDecorator> sized;
    sized.mouse.doubleClick(QPointF(50.0, 25.0));
    QVERIFY(sized.child->editable);
    QCOMPARE(sized.child->editPosition, QPointF(50.0, 25.0));

    Stage<RotateDecorator> turned;
    turned.mouse.doubleClick(QPointF(50.0, 25.0));
    QVERIFY(turned.child->editable);
    QCOMPARE(turned.child->editPosition, QPointF(50.0, 25.0));
}

QTEST_MAIN(HandleClicksTest)
#include "tst_handleclicks.moc"
