// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FramePens_p.h"

#include <QGraphicsView>
#include <QObject>
#include <QPainter>
#include <QVariant>

namespace {

/// The pixels around an item's bounds that a view repaints with them; negative for no view.
int repaintedMargin(const QWidget *viewport)
{
    const auto *view = viewport ? qobject_cast<QGraphicsView *>(viewport->parentWidget()) : nullptr;
    if (!view)
        return -1;
    return view->optimizationFlags() & QGraphicsView::DontAdjustForAntialiasing ? 1 : 2;
}

void clipOnDevice(QPainter *painter, const QRectF &bounds, int margin)
{
    const QTransform toDevice = painter->worldTransform();
    const QRect onDevice = toDevice.mapRect(bounds).toAlignedRect();
    painter->setWorldTransform(QTransform());
    painter->setClipRect(onDevice.adjusted(-margin, -margin, margin, margin), Qt::IntersectClip);
    painter->setWorldTransform(toDevice);
}

} // namespace

FramePens framePens(const QObject &stylingObject, bool selected, const char *innerName)
{
    const auto pen = [&stylingObject](const char *name) {
        return stylingObject.property(name).value<QPen>();
    };
    return {pen(selected ? "decoratorSelectedPen" : "decoratorPen"),
            pen(selected ? "strokeSelectedPen" : innerName)};
}

void drawFrame(QPainter *painter, const QRectF &frame, const FramePens &pens, const QRectF &bounds,
               const QWidget *viewport)
{
    painter->save();
    const int margin = repaintedMargin(viewport);
    if (margin >= 0)
        clipOnDevice(painter, bounds, margin);
    painter->setPen(pens.inner);
    painter->drawRect(frame);
    painter->setPen(pens.outer);
    painter->drawRect(frame);
    painter->restore();
}
