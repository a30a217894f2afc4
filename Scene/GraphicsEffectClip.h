// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QGraphicsEffect>
#include <QRectF>

/// Cuts what an item draws to one rectangle.
///
/// Set it on an item with QGraphicsItem::setGraphicsEffect(), which takes ownership of it. The
/// rectangle replaces a clip that the painter has already for as long as the item draws: an item
/// with this effect may draw outside a clip that its parent set.
///
/// \ingroup items
class TITLESCENE_EXPORT GraphicsEffectClip : public QGraphicsEffect
{
    Q_OBJECT
    /// The rectangle, in the coordinates of the painter while the item draws.
    Q_PROPERTY(QRectF clipRect READ clipRect WRITE setClipRect)

public:
    /// Cuts to \a clipRect.
    explicit GraphicsEffectClip(QRectF clipRect, QObject *parent = nullptr);
    ~GraphicsEffectClip() override;

    /// The rectangle, in the coordinates of the painter while the item draws.
    QRectF clipRect() const;

    /// Takes effect when the item is painted next; does not make it be painted. An empty \a rect
    /// lets nothing through.
    void setClipRect(QRectF rect);

protected:
    /// Draws the item. The painter is as before afterwards; when it did not clip, switching its
    /// clipping on again lets nothing through.
    void draw(QPainter *painter) override;

private:
    QRectF m_clipRect;
};
