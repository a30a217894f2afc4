// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "MetaObjectText.h"
#include "WarningFreeTest.h"

#include <Scene/Decorator/ResizeDecorator.h>
#include <Scene/Decorator/ResizeHandleItem.h>

#include <QCoreApplication>
#include <QCursor>
#include <QGraphicsObject>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <cmath>
#include <functional>
#include <map>
#include <memory>

Q_DECLARE_METATYPE(Qt::WindowFrameSection)

//! A graphics object that is nothing but its bounding rectangle; has no slots of its own.
class PlainChild : public QGraphicsObject
{
public:
    explicit PlainChild(const QRectF &rect = QRectF(0.0, 0.0, 100.0, 50.0)) : m_rect(rect) {}

    QRectF boundingRect() const override { return m_rect; }
    void paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *) override {}

    void setRect(const QRectF &rect)
    {
        prepareGeometryChange();
        m_rect = rect;
    }

private:
    QRectF m_rect;
};

//! A child with everything that a decorator looks for. It writes down what it is told, and takes
//! the sizes that it is given.
class RecordingChild : public PlainChild
{
    Q_OBJECT

public:
    using PlainChild::PlainChild;

    QStringList calls;
    bool editable = false;
    QPointF editPosition;
    QSizeF size;
    qreal scale = 0.0;
    bool highlighted = false;
    //! Runs at the end of every slot.
    std::function<void()> whenCalled = [] {};

Q_SIGNALS:
    void geometryChanged();
    void decorationChanged();

public Q_SLOTS:
    void setEditable(bool newEditable, const QPointF &newPosition)
    {
        editable = newEditable;
        editPosition = newPosition;
        called(QStringLiteral("setEditable"));
    }
    void setSize(const QSizeF &newSize)
    {
        size = newSize;
        setRect(QRectF(boundingRect().topLeft(), newSize));
        called(QStringLiteral("setSize"));
    }
    void setViewScale(qreal newScale)
    {
        scale = newScale;
        called(QStringLiteral("setViewScale"));
    }
    void setHighlight(bool highlight)
    {
        highlighted = highlight;
        called(QStringLiteral("setHighlight"));
    }

private:
    void called(const QString &name)
    {
        calls.append(name);
        const std::function<void()> reaction = whenCalled; // the child may be deleted by it
        reaction();
    }
};

//! A large scene, and a view that shows it around the origin.
struct SceneOnView
{
    explicit SceneOnView(qreal zoom = 1.0)
    {
        scene.setSceneRect(-1000.0, -1000.0, 2000.0, 2000.0);
        view.setFrameShape(QFrame::NoFrame);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.resize(600, 600);
        view.scale(zoom, zoom);
        view.centerOn(0.0, 0.0);
        view.show();
        if (!QTest::qWaitForWindowExposed(&view))
            QTest::qFail("The view does not appear", __FILE__, __LINE__);
    }

    QGraphicsScene scene;
    QGraphicsView view{&scene};
};

//! Puts the cursor where the view shows a point of the scene, since QGraphicsItem::isUnderMouse()
//! asks the cursor and no event.
inline QPoint putCursorOn(const QGraphicsView &view, const QPointF &scenePoint)
{
    const QPoint at = view.mapFromScene(scenePoint);
    QCursor::setPos(view.viewport()->mapToGlobal(at));
    QCoreApplication::processEvents();
    return at;
}

//! The mouse of somebody who works in a view: real mouse events to its viewport.
class ViewMouse
{
public:
    explicit ViewMouse(QGraphicsView &view) : m_view(view) {}

    void press(const QPointF &scenePoint, Qt::MouseButton button = Qt::LeftButton)
    {
        m_at = putCursorOn(m_view, scenePoint);
        m_button = button;
        send(QEvent::MouseButtonPress, button, button);
    }

    //! Takes the mouse away by a number of pixels.
    void moveBy(const QPoint &pixels)
    {
        m_at += pixels;
        send(QEvent::MouseMove, Qt::NoButton, m_button);
    }

    void moveTo(const QPointF &scenePoint) { moveBy(m_view.mapFromScene(scenePoint) - m_at); }

    void release() { send(QEvent::MouseButtonRelease, m_button, Qt::NoButton); }

    void drag(const QPointF &scenePoint, const QPoint &pixels)
    {
        press(scenePoint);
        moveBy(pixels);
        release();
    }

    void doubleClick(const QPointF &scenePoint)
    {
        doubleClickHeld(scenePoint);
        release();
    }

    //! With the button still down at the end.
    void doubleClickHeld(const QPointF &scenePoint)
    {
        press(scenePoint);
        release();
        send(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton);
    }

    //! Where the mouse is on the scene.
    QPointF scenePosition() const { return m_view.mapToScene(m_at); }

private:
    void send(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, m_at, m_view.viewport()->mapToGlobal(m_at), button, buttons,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(m_view.viewport(), &event);
    }

    QGraphicsView &m_view;
    QPoint m_at;
    Qt::MouseButton m_button = Qt::LeftButton;
};

//! Sends a left-button event straight to the scene, at exact points and without any view.
inline void sendToScene(QGraphicsScene &scene, QEvent::Type type, const QPointF &scenePoint,
                        const QPointF &lastScenePoint)
{
    const bool isMove = type == QEvent::GraphicsSceneMouseMove;
    const bool isRelease = type == QEvent::GraphicsSceneMouseRelease;
    QGraphicsSceneMouseEvent event(type);
    event.setScenePos(scenePoint);
    event.setLastScenePos(lastScenePoint);
    event.setButtonDownScenePos(Qt::LeftButton, lastScenePoint);
    event.setButton(isMove ? Qt::NoButton : Qt::LeftButton);
    event.setButtons(isRelease ? Qt::NoButton : Qt::LeftButton);
    QCoreApplication::sendEvent(&scene, &event);
}

//! Whether an item accepts an event of the left button that was ignored so far.
inline bool accepts(QGraphicsItem &item, QEvent::Type type)
{
    QGraphicsSceneMouseEvent event(type);
    event.setButton(Qt::LeftButton);
    event.setButtons(Qt::LeftButton);
    event.ignore();
    item.scene()->sendEvent(&item, &event);
    return event.isAccepted();
}

//! A drag of one move, sent straight to the scene.
inline void dragOnScene(QGraphicsScene &scene, const QPointF &from, const QPointF &to)
{
    sendToScene(scene, QEvent::GraphicsSceneMousePress, from, from);
    sendToScene(scene, QEvent::GraphicsSceneMouseMove, to, from);
    sendToScene(scene, QEvent::GraphicsSceneMouseRelease, to, from);
}

inline const QVector<Qt::WindowFrameSection> &allSections()
{
    static const QVector<Qt::WindowFrameSection> sections = {
            Qt::LeftSection,  Qt::TopLeftSection,     Qt::TopSection,    Qt::TopRightSection,
            Qt::RightSection, Qt::BottomRightSection, Qt::BottomSection, Qt::BottomLeftSection};
    return sections;
}

//! The handles among an item's children.
inline QVector<ResizeHandleItem *> childHandles(const QGraphicsItem &item)
{
    QVector<ResizeHandleItem *> handles;
    const QList<QGraphicsItem *> children = item.childItems();
    for (QGraphicsItem *child : children) {
        if (auto *handle = dynamic_cast<ResizeHandleItem *>(child))
            handles.append(handle);
    }
    return handles;
}

//! The decorator's handles by section; found out by making one at a time available.
inline std::map<Qt::WindowFrameSection, ResizeHandleItem *> handlesOf(ResizeDecorator &decorator)
{
    const QSet<Qt::WindowFrameSection> available = decorator.availableHandles();
    std::map<Qt::WindowFrameSection, ResizeHandleItem *> handles;
    for (const Qt::WindowFrameSection section : allSections()) {
        decorator.setAvailableHandles({section});
        const QVector<ResizeHandleItem *> shown = childHandles(decorator);
        if (shown.size() == 1)
            handles[section] = shown.first();
        else
            QTest::qFail("Not one handle for a section", __FILE__, __LINE__);
    }
    decorator.setAvailableHandles(available);
    return handles;
}

inline QPointF centreOnScene(const QGraphicsItem &item)
{
    return item.mapToScene(item.boundingRect().center());
}

//! The colour in the middle of a handle's upper edge.
inline QColor paintedColor(QGraphicsItem &handle)
{
    QImage picture(30, 30, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.translate(5.0, 5.0);
    QStyleOptionGraphicsItem option;
    handle.paint(&painter, &option, nullptr);
    painter.end();
    return picture.pixelColor(15, 4);
}

//! Tries each of the four pens of a styling object on the handles of a decorator.
inline void comparePensOfHandles(AbstractDecorator &decorator,
                                 const QVector<ResizeHandleItem *> &handles)
{
    const auto compare = [&](const QColor &color) {
        decorator.paint(nullptr, nullptr);
        for (ResizeHandleItem *handle : handles)
            QCOMPARE(paintedColor(*handle), color);
    };
    compare(Qt::black);
    QObject styling;
    styling.setProperty("decoratorPen", QPen(Qt::red, 3.0));
    styling.setProperty("decoratorSelectedPen", QPen(Qt::green, 3.0));
    styling.setProperty("strokePen", QPen(Qt::yellow, 3.0));
    styling.setProperty("strokeSelectedPen", QPen(Qt::cyan, 3.0));
    decorator.setStylingObject(&styling);
    compare(Qt::red);
    decorator.setHighlight(true);
    compare(Qt::green);
    // The inner pen is seen where there is no outer one.
    styling.setProperty("decoratorSelectedPen", QPen(Qt::NoPen));
    compare(Qt::cyan);
    styling.setProperty("decoratorPen", QPen(Qt::NoPen));
    decorator.setHighlight(false);
    compare(Qt::yellow);
    // Without a styling object the pens stay.
    decorator.setStylingObject(nullptr);
    compare(Qt::yellow);
}

inline bool isClose(qreal a, qreal b)
{
    return std::abs(a - b) < 1e-6;
}

//! Fails the test function when two points, or sizes, are not the same but for rounding.
#define COMPARE_POINTS(actual, expected) \
    do { \
        const QPointF actual_ = actual; \
        const QPointF expected_ = expected; \
        if (!isClose(actual_.x(), expected_.x()) || !isClose(actual_.y(), expected_.y())) \
            QCOMPARE(actual_, expected_); \
    } while (false)
#define COMPARE_SIZES(actual, expected) \
    do { \
        const QSizeF actualSize_ = actual; \
        const QSizeF expectedSize_ = expected; \
        COMPARE_POINTS(QPointF(actualSize_.width(), actualSize_.height()), \
                       QPointF(expectedSize_.width(), expectedSize_.height())); \
    } while (false)
#define COMPARE_CLOSE(actual, expected) COMPARE_POINTS(QPointF(actual, 0.0), QPointF(expected, 0.0))
