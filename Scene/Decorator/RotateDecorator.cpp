// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "RotateDecorator.h"

#include "../FramePens_p.h"
#include "ResizeHandleItem.h"

#include <QGraphicsSceneMouseEvent>

#include <cmath>
#include <utility>

namespace {

constexpr qreal handleSize = 20.0;
constexpr qreal handleZValue = 1000.0;

qreal directionOf(const QPointF &vector)
{
    return std::atan2(vector.y(), vector.x()) * 180.0 / 3.141592653589793;
}

} // namespace

RotateDecorator::RotateDecorator(QGraphicsObject *child, QGraphicsItem *parent)
    : AbstractDecorator(child, parent),
      m_rotateHandle(new ResizeHandleItem(QRectF(0.0, 0.0, handleSize, handleSize), this))
{
    updateTransformCenter();
    RotateDecorator::updateDecoration();
    adjustToChild();
    setUpChildConnections();
    RotateDecorator::updateDecoration();
}

RotateDecorator::~RotateDecorator() = default;

void RotateDecorator::setRotateHandleItem(QGraphicsItem *item)
{
    QGraphicsItem *const replaced = std::exchange(m_rotateHandle, item);
    if (replaced && replaced != item) {
        // Qt's rectangle around all children keeps one that is deleted as a child.
        replaced->setParentItem(nullptr);
        delete replaced;
    }
    updateDecoration();
}

void RotateDecorator::updateTransformCenter()
{
    if (child())
        setTransformOriginPoint(child()->mapToParent(child()->boundingRect().center()));
}

void RotateDecorator::updateDecoration()
{
    prepareGeometryChange();
    if (m_rotateHandle) {
        m_rotateHandle->setScale(viewScale());
        const QRectF frame = childRect();
        const QSizeF handle =
                m_rotateHandle->mapRectToParent(m_rotateHandle->boundingRect()).size();
        m_rotateHandle->setPos(frame.x() + frame.width() / 2.0 - handle.width() / 2.0,
                               frame.y() - handle.height());
        m_rotateHandle->setZValue(handleZValue);
    }
    Q_EMIT decorationChanged();
}

bool RotateDecorator::isHandleUnderMouse() const
{
    return m_rotateHandle && m_rotateHandle->isUnderMouse();
}

void RotateDecorator::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    m_rotating = isHandleUnderMouse();
    if (!m_rotating) {
        AbstractDecorator::mousePressEvent(event);
        return;
    }
    updateTransformCenter();
    event->accept();
}

void RotateDecorator::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    if (isHandleUnderMouse())
        mousePressEvent(event);
    else
        AbstractDecorator::mouseDoubleClickEvent(event);
}

void RotateDecorator::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (!m_rotating || !m_rotateHandle) {
        AbstractDecorator::mouseMoveEvent(event);
        return;
    }
    const QPointF centre = transformOriginPoint();
    const QPointF handle = m_rotateHandle->mapToParent(m_rotateHandle->boundingRect().center());
    // Both as the parent item sees them, whose own turns and scales are none of the frame's.
    const qreal mouseDirection = directionOf(mapToParent(event->pos()) - mapToParent(centre));
    const qreal handleDirection = directionOf(transform().map(handle - centre));
    m_rotated = true;
    event->accept();
    setRotation(mouseDirection - handleDirection);
    // Qt maps the next event by the scene transform as it was last asked for.
    sceneTransform();
}

void RotateDecorator::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    const bool wasRotated = m_rotating && m_rotated;
    m_rotating = false;
    m_rotated = false;
    const QPointer<RotateDecorator> guard(this);
    AbstractDecorator::mouseReleaseEvent(event);
    if (guard && wasRotated)
        Q_EMIT itemRotated();
}

/// A drag that loses the mouse, since the item is hidden, say, ends without a release.
bool RotateDecorator::sceneEvent(QEvent *event)
{
    if (event->type() == QEvent::UngrabMouse) {
        m_rotating = false;
        m_rotated = false;
    }
    return AbstractDecorator::sceneEvent(event);
}

void RotateDecorator::paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *)
{
    auto *handle = dynamic_cast<ResizeHandleItem *>(m_rotateHandle);
    const QObject *styling = stylingObject();
    if (!handle || !styling)
        return;
    const FramePens pens = framePens(*styling, isHighlighted(), "strokePen");
    handle->installPen(pens.outer);
    handle->installInnerPen(pens.inner);
}

/// A handle that others delete, or take away, is no longer ours.
QVariant RotateDecorator::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemChildRemovedChange && value.value<QGraphicsItem *>() == m_rotateHandle)
        m_rotateHandle = nullptr;
    return AbstractDecorator::itemChange(change, value);
}
