// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QGraphicsRectItem>
#include <QPen>

/// A rectangle that a user drags: drawn twice, with an inner and then an outer pen, and not filled.
///
/// Half of the pens' width is outside of the bounding rectangle. In a view, what is more than two
/// pixels outside is left out, since the view would not repaint it (one pixel with
/// QGraphicsView::DontAdjustForAntialiasing).
///
/// \ingroup decorators
class TITLESCENE_EXPORT ResizeHandleItem : public QGraphicsRectItem
{
public:
    /// The rectangle \a rect, in item coordinates, with two default pens.
    explicit ResizeHandleItem(const QRectF &rect, QGraphicsItem *parent = nullptr);
    ~ResizeHandleItem() override;

    /// Sets the outer pen, for the next paint; does not make the item be painted.
    void installPen(const QPen &pen);

    /// Sets the inner pen, likewise.
    void installInnerPen(const QPen &pen);

    /// Draws the bounding rectangle with either pen.
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

private:
    QPen m_pen;
    QPen m_innerPen;
};
