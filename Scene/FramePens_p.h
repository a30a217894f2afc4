// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QPen>

class QObject;
class QPainter;
class QRectF;
class QWidget;

/// The two pens with which a frame is drawn, as the application's styling object gives them. A
/// property that is missing or no pen gives a default pen.
struct FramePens
{
    QPen outer;
    QPen inner;
};

/// \a innerName is the property of the inner pen of a frame that is not selected.
FramePens framePens(const QObject &stylingObject, bool selected, const char *innerName);

/// Draws \a frame, both in the coordinates of the item whose \a bounds these are, with the inner
/// and then the outer pen. A viewport repaints no more than the bounds of what has moved and a few
/// pixels around them, so what a wide pen would draw beyond that is left out there. On anything
/// else (null) the pens are drawn in their whole width.
void drawFrame(QPainter *painter, const QRectF &frame, const FramePens &pens, const QRectF &bounds,
               const QWidget *viewport);
