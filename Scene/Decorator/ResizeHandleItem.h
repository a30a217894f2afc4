// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QGraphicsRectItem>
#include <QPen>

/// A rectangle that a user drags: drawn twice, with an inner and then an outer pen, and not filled.
class TITLESCENE_EXPORT ResizeHandleItem : public QGraphicsRectItem
{
public:
    explicit ResizeHandleItem(const QRectF &rect, QGraphicsItem *parent = nullptr);
    ~ResizeHandleItem() override;

    /// The pens for the next paint; neither makes the item be painted.
    void installPen(const QPen &pen);
    void installInnerPen(const QPen &pen);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

private:
    QPen m_pen;
    QPen m_innerPen;
};
