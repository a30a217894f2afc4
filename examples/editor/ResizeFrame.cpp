// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ResizeFrame.h"

#include <Scene/Decorator/ResizeHandleItem.h>

#include <QGraphicsSceneMouseEvent>

namespace {

const QSizeF smallestSize(20.0, 20.0);

/// -1 near the begin of a range, 1 near its end, 0 in the middle.
int sideOf(qreal value, qreal begin, qreal length)
{
    const qreal part = length > 0.0 ? (value - begin) / length : 0.5;
    if (part < 0.25)
        return -1;
    return part > 0.75 ? 1 : 0;
}

qreal fixedCoordinate(int draggedSide, qreal begin, qreal length, bool fromCentre)
{
    if (draggedSide < 0)
        return begin + length;
    return draggedSide == 0 && fromCentre ? begin + length / 2.0 : begin;
}

const ResizeHandleItem *handleUnderMouse(const QGraphicsItem &frame)
{
    for (const QGraphicsItem *item : frame.childItems()) {
        const auto *handle = dynamic_cast<const ResizeHandleItem *>(item);
        if (handle && handle->isVisible() && handle->isUnderMouse())
            return handle;
    }
    return nullptr;
}

} // namespace

ResizeFrame::ResizeFrame(QGraphicsObject *child) : ResizeDecorator(child) {}

ResizeFrame::~ResizeFrame() = default;

bool ResizeFrame::isDragging() const
{
    return m_horizontal != 0 || m_vertical != 0;
}

QPointF ResizeFrame::fixedPoint() const
{
    const QRectF rect = childRect();
    return QPointF(fixedCoordinate(m_horizontal, rect.x(), rect.width(), m_keepsAspect),
                   fixedCoordinate(m_vertical, rect.y(), rect.height(), m_keepsAspect));
}

QSizeF ResizeFrame::constrained(const QSizeF &size) const
{
    const QSizeF large = size.expandedTo(smallestSize);
    if (!m_keepsAspect)
        return large;
    return m_horizontal != 0 ? QSizeF(large.width(), large.width() / m_aspect)
                             : QSizeF(large.height() * m_aspect, large.height());
}

void ResizeFrame::setSize(const QSizeF &size)
{
    ResizeDecorator::setSize(isDragging() ? constrained(size) : size);
}

void ResizeFrame::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    m_horizontal = 0;
    m_vertical = 0;
    if (const ResizeHandleItem *handle = handleUnderMouse(*this)) {
        const QRectF rect = childRect();
        const QPointF centre = handle->mapToParent(handle->rect().center());
        m_horizontal = sideOf(centre.x(), rect.x(), rect.width());
        m_vertical = sideOf(centre.y(), rect.y(), rect.height());
        m_aspect = rect.width() / rect.height();
    }
    ResizeDecorator::mousePressEvent(event);
}

void ResizeFrame::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (!isDragging()) {
        ResizeDecorator::mouseMoveEvent(event);
        return;
    }
    m_keepsAspect = event->modifiers().testFlag(Qt::ShiftModifier);
    const QPointF before = mapToParent(fixedPoint());
    ResizeDecorator::mouseMoveEvent(event);
    setPos(pos() + before - mapToParent(fixedPoint()));
}

void ResizeFrame::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    m_horizontal = 0;
    m_vertical = 0;
    ResizeDecorator::mouseReleaseEvent(event);
}
