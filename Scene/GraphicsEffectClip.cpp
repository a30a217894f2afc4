// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "GraphicsEffectClip.h"

#include <QPainter>

GraphicsEffectClip::GraphicsEffectClip(QRectF clipRect, QObject *parent)
    : QGraphicsEffect(parent), m_clipRect(clipRect)
{
}

GraphicsEffectClip::~GraphicsEffectClip() = default;

QRectF GraphicsEffectClip::clipRect() const
{
    return m_clipRect;
}

void GraphicsEffectClip::setClipRect(QRectF rect)
{
    m_clipRect = rect;
}

void GraphicsEffectClip::draw(QPainter *painter)
{
    const bool wasClipped = painter->hasClipping();
    // Not by asking for the clip path and setting it again: that turns it into coordinates of the
    // item and back, which is not exact, impossible for an item of no size, and wrong when the
    // item's children have left their own transform behind.
    painter->save();
    painter->setClipRect(m_clipRect, Qt::ReplaceClip);
    drawSource(painter);
    painter->restore();
    if (!wasClipped) {
        painter->setClipRect(QRectF(), Qt::ReplaceClip);
        painter->setClipping(false);
    }
}
