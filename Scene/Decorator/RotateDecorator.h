// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/Decorator/AbstractDecorator.h>

/// A frame with one handle above the decorated item that a user drags to turn it.
///
/// The item turns about its centre, by whole and broken degrees as the mouse goes; the angle is not
/// brought into a range. The handle points to the mouse however the frame's parent items are
/// turned, mirrored, scaled or sheared. It does so only as long as the frame's own transform keeps
/// angles: where that mirrors, say, the item turns against the mouse.
///
/// Around a ResizeDecorator it makes an item one to be sized and turned; the opposite edge then
/// stays where it is while the item is sized, however it is turned: \code auto *sizing = new
/// ResizeDecorator(title); auto *turning = new RotateDecorator(sizing); scene->addItem(turning);
/// \endcode
/// A RotateDecorator inside of a ResizeDecorator does not work (see there).
///
/// \ingroup decorators
class TITLESCENE_EXPORT RotateDecorator : public AbstractDecorator
{
    Q_OBJECT

public:
    /// A frame around \a child, with a square of 20 pixels on the screen as its handle.
    explicit RotateDecorator(QGraphicsObject *child, QGraphicsItem *parent = nullptr);
    ~RotateDecorator() override;

    /// Deletes the current handle and uses \a item, which the caller makes a child item of the
    /// decorator. Null leaves the frame without a handle; the current handle is kept as it is. A
    /// handle that others delete, or move to another parent, is the decorator's no more.
    void setRotateHandleItem(QGraphicsItem *item);

    /// Makes the centre of the child the point that the decorator turns about.
    void updateTransformCenter();

    /// Gives the handle the pens of the styling object, if there is one and the handle is a
    /// ResizeHandleItem.
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

    /// Places the handle above the middle of the child's upper edge, with its size on the screen,
    /// and emits decorationChanged().
    void updateDecoration() override;

Q_SIGNALS:
    /// The user has dragged the handle and released the mouse, once for each drag. Does not come
    /// for a drag that has lost the mouse, though the frame keeps its new angle.
    void itemRotated();

protected:
    /// Ends a drag, and reports it.
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

    /// Begins a drag of the handle when it is below the cursor, or of the frame.
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;

    /// Begins the child's edit mode; on the handle it is one more press.
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

    /// Turns the decorator so that the handle points to the mouse.
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;

    /// Ends a drag without a report when the mouse is lost.
    bool sceneEvent(QEvent *event) override;

    /// Notices that the handle is no child item any more.
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    bool isHandleUnderMouse() const;

    QGraphicsItem *m_rotateHandle = nullptr; // a child item; null without a handle
    bool m_rotating = false;
    bool m_rotated = false;
};
