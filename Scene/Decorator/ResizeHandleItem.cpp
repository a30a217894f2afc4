// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ResizeHandleItem.h"

#include "../FramePens_p.h"

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

void ResizeHandleItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *widget)
{
    drawFrame(painter, boundingRect(), {m_pen, m_innerPen}, boundingRect(), widget);
}
