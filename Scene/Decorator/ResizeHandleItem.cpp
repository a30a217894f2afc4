// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ResizeHandleItem.h"

#include <QPainter>

ResizeHandleItem::ResizeHandleItem(const QRectF &rect, QGraphicsItem *parent)
    : QGraphicsRectItem(rect, parent)
{
}

ResizeHandleItem::~ResizeHandleItem() = default;

void ResizeHandleItem::installPen(const QPen &pen)
{
    m_pen = pen;
}

void ResizeHandleItem::installInnerPen(const QPen &pen)
{
    m_innerPen = pen;
}

void ResizeHandleItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->save();
    painter->setPen(m_innerPen);
    painter->drawRect(boundingRect());
    painter->setPen(m_pen);
    painter->drawRect(boundingRect());
    painter->restore();
}
