// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/Decorator/ResizeDecorator.h>

/// A resize frame as users of drawing programs know it: Shift keeps the aspect ratio, the opposite
/// edge stays where it is however the title is turned, and nothing shrinks to less than a size
/// that can be taken hold of again.
class ResizeFrame : public ResizeDecorator
{
    Q_OBJECT

public:
    explicit ResizeFrame(QGraphicsObject *child);
    ~ResizeFrame() override;

    void setSize(const QSizeF &size) override;

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

private:
    bool isDragging() const;
    QPointF fixedPoint() const;
    QSizeF constrained(const QSizeF &size) const;

    // Which edges are dragged: -1 the left or upper one, 1 the right or lower one, 0 none.
    int m_horizontal = 0;
    int m_vertical = 0;
    bool m_keepsAspect = false;
    qreal m_aspect = 1.0;
};
