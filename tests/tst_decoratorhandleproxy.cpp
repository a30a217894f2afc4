// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/DecoratorHandleProxy.h>
#include <Scene/Decorator/RotateDecorator.h>

#include <QPushButton>
#include <QSignalSpy>

// A widget as a handle, which leaves the mouse to the decorator.

namespace {

struct Message
{
    QtMsgType type;
    QString text;
    QString category;
    QString function;
    QString file;
};

/// Takes Qt's messages in place of the test's own handler while it lives.
class MessageCatcher
{
public:
    MessageCatcher() : m_previous(qInstallMessageHandler(take)) { caught().clear(); }
    ~MessageCatcher() { qInstallMessageHandler(m_previous); }

    QVector<Message> messages() const { return caught(); }

private:
    Q_DISABLE_COPY(MessageCatcher)

    static QVector<Message> &caught()
    {
        static QVector<Message> messages;
        return messages;
    }

    static void take(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        caught().append({type, text, QString::fromLatin1(context.category),
                         QString::fromLatin1(context.function), QString::fromLatin1(context.file)});
    }

    const QtMessageHandler m_previous;
};

/// Whether the item took a left-button press that the scene sent it.
bool takesPress(QGraphicsScene &scene, QGraphicsItem &item)
{
    QGraphicsSceneMouseEvent event(QEvent::GraphicsSceneMousePress);
    event.setButton(Qt::LeftButton);
    event.setButtons(Qt::LeftButton);
    event.accept();
    scene.sendEvent(&item, &event);
    return event.isAccepted();
}

} // namespace

class DecoratorHandleProxyTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void embedsTheWidget();
    void needsNoWidget();
    void saysThatItWasPressed();
    void takesNoPress_data();
    void takesNoPress();
    void pressFallsThroughToTheDecorator_data();
    void pressFallsThroughToTheDecorator();
};

void DecoratorHandleProxyTest::embedsTheWidget()
{
    QGraphicsRectItem parent;
    auto *widget = new QPushButton(QStringLiteral("turn"));
    const auto *proxy = new DecoratorHandleProxy(widget, &parent);
    QCOMPARE(proxy->parentItem(), &parent);
    QCOMPARE(proxy->widget(), widget);
    QCOMPARE(proxy->windowFlags(), Qt::WindowFlags());
}

void DecoratorHandleProxyTest::needsNoWidget()
{
    const DecoratorHandleProxy proxy(nullptr, nullptr);
    QCOMPARE(proxy.widget(), nullptr);
    QCOMPARE(proxy.parentItem(), nullptr);
}

void DecoratorHandleProxyTest::saysThatItWasPressed()
{
    QGraphicsScene scene;
    auto *proxy = new DecoratorHandleProxy(nullptr, nullptr);
    scene.addItem(proxy);
    const MessageCatcher catcher;
    QVERIFY(!takesPress(scene, *proxy));

    const QVector<Message> messages = catcher.messages();
    QCOMPARE(messages.size(), 1);
    const Message message = messages.first();
    QCOMPARE(message.type, QtDebugMsg);
    QCOMPARE(message.text, QStringLiteral("RotateHandleItem::mousePressEvent"));
    QCOMPARE(message.category, QStringLiteral("default"));
    QCOMPARE(message.function,
             QStringLiteral("virtual void DecoratorHandleProxy::mousePressEvent("
                            "QGraphicsSceneMouseEvent *)"));
    QCOMPARE(message.file, QStringLiteral("Scene/Decorator/DecoratorHandleProxy"));
}

void DecoratorHandleProxyTest::takesNoPress_data()
{
    QTest::addColumn<bool>("hasWidget");
    QTest::newRow("a button") << true;
    QTest::newRow("nothing") << false;
}

void DecoratorHandleProxyTest::takesNoPress()
{
    QFETCH(const bool, hasWidget);

    QGraphicsScene scene;
    auto *button = hasWidget ? new QPushButton(QStringLiteral("turn")) : nullptr;
    auto *proxy = new DecoratorHandleProxy(button, nullptr);
    scene.addItem(proxy);
    const MessageCatcher catcher;
    QVERIFY(!takesPress(scene, *proxy));
    QVERIFY(!button || !button->isDown());
    // An ordinary proxy takes it.
    auto *plainButton = new QPushButton(QStringLiteral("turn"));
    QGraphicsProxyWidget *plain = scene.addWidget(plainButton);
    QVERIFY(takesPress(scene, *plain));
}

void DecoratorHandleProxyTest::pressFallsThroughToTheDecorator_data()
{
    QTest::addColumn<qreal>("zoom");
    QTest::newRow("unzoomed") << 1.0;
    QTest::newRow("zoom 0.5") << 0.5;
    QTest::newRow("zoom 3") << 3.0;
}

void DecoratorHandleProxyTest::pressFallsThroughToTheDecorator()
{
    QFETCH(const qreal, zoom);

    SceneOnView stage(zoom);
    auto *decorator = new RotateDecorator(new RecordingChild);
    stage.scene.addItem(decorator);
    auto *button = new QPushButton(QStringLiteral("turn"));
    button->setFixedSize(40, 20);
    QSignalSpy clicked(button, &QPushButton::clicked);
    auto *handle = new DecoratorHandleProxy(button, decorator);
    decorator->setRotateHandleItem(handle);
    QCOMPARE(handle->pos(), QPointF(30.0, -20.0));
    QSignalSpy rotated(decorator, &RotateDecorator::itemRotated);

    const MessageCatcher catcher;
    ViewMouse mouse(stage.view);
    mouse.press(centreOnScene(*handle));
    QCOMPARE(stage.scene.mouseGrabberItem(), decorator);
    QCOMPARE(catcher.messages().size(), 1);
    mouse.moveBy(QPoint(40, 40));
    mouse.release();
    QCOMPARE(rotated.count(), 1);
    QVERIFY(decorator->rotation() > 10.0);
    QCOMPARE(clicked.count(), 0);
    QVERIFY(!button->isDown());
}

QTEST_MAIN(DecoratorHandleProxyTest)
#include "tst_decoratorhandleproxy.moc"
