// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/Decorator/AbstractDecorator.h>

#include <QSet>

#include <map>

/// A frame with eight handles that a user drags to size the decorated item.
///
/// Handles keep their size and distance on the first view of the scene; call updateDecoration()
/// after the view, the scene or the styling object have changed.
///
/// The edges that are not dragged stay where they are on the screen, as long as the decorator is
/// neither rotated nor scaled. There is no smallest size: a handle dragged across the opposite edge
/// gives the child a negative one. A drag that shifts the decorator, as one of a left or upper
/// handle does, is reported by itemMoved() as well, before itemResized(): an undo stack makes one
/// step of the two, or listens to a DragReporter.
///
/// An item that is to be sized and turned gets a ResizeDecorator, and that a RotateDecorator around
/// it. Not the other way round: what is sized is the child's bounding rectangle, which for a frame
/// holds its handles, so the item would grow by the handle that turns with every move of the mouse.
///
/// \ingroup decorators
class TITLESCENE_EXPORT ResizeDecorator : public AbstractDecorator
{
    Q_OBJECT

public:
    /// With \a keepAspectRatio every drag keeps the ratio of width to height; at a corner the
    /// height follows the width.
    explicit ResizeDecorator(QGraphicsObject *child, QGraphicsItem *parent = nullptr,
                             bool keepAspectRatio = false);
    ~ResizeDecorator() override;

    /// The handles that are shown and can be dragged; at first all eight.
    QSet<Qt::WindowFrameSection> availableHandles() const;

    /// The outer pen of the frame, as the styling object gives it; a default pen without one.
    QPen currentPen() const;

    /// Gives the handles the pens of the styling object, if there is one.
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

    /// Places the handles around the child, each with its size on the screen, and emits
    /// decorationChanged().
    void updateDecoration() override;

Q_SIGNALS:
    /// The user has dragged a handle, the frame has changed, and the mouse was released, once for
    /// each drag. Does not come for a drag that has lost the mouse, though the child keeps its new
    /// size.
    void itemResized();

public Q_SLOTS:
    /// Shows these handles, and only these. Qt::NoSection and Qt::TitleBarArea are no handles.
    void setAvailableHandles(QSet<Qt::WindowFrameSection> handles);

protected:
    /// Ends a drag, and reports it.
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

    /// Begins a drag of the handle below the cursor, or of the frame.
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;

    /// Begins the child's edit mode; on a handle it is one more press.
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

    /// Sizes the child as far as the mouse has moved.
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;

    /// Ends a drag without a report when the mouse is lost.
    bool sceneEvent(QEvent *event) override;

private:
    class Handle;

    void createHandle(Qt::WindowFrameSection section);
    void attach(QGraphicsItem *handle);
    void detach(QGraphicsItem *handle);
    Qt::WindowFrameSection sectionUnderMouse() const;

    // Owned, those out of the scene as well. A handle that others delete takes itself out.
    std::map<Qt::WindowFrameSection, Handle *> m_handles;
    Qt::WindowFrameSection m_activeSection = Qt::NoSection;
    QSet<Qt::WindowFrameSection> m_availableHandles;
    bool m_keepAspectRatio;
    bool m_resized = false;
};
