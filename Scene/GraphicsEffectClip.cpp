// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "GraphicsEffectClip.h"

#include <QPainter>
#include <QPainterPath>

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
    const QPainterPath clipBefore = wasClipped ? painter->clipPath() : QPainterPath();
    painter->setClipRect(m_clipRect, Qt::ReplaceClip);
    drawSource(painter);
    if (wasClipped) {
        painter->setClipPath(clipBefore, Qt::ReplaceClip);
    } else {
        painter->setClipRect(QRectF(), Qt::ReplaceClip);
        painter->setClipping(false);
    }
}
