// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <qnamespace.h>

/// \file
/// The geometry of a frame with eight handles.

/// How far the handles stand off the frame.
struct HandleOffsets
{
    QPointF half; ///< half a handle, along both axes
    qreal whole;  ///< a whole one, along the x axis
};

/// Where the top left corner of a section's handle is placed around a frame.
QPointF handlePosition(Qt::WindowFrameSection section, const QRectF &frame,
                       const HandleOffsets &offsets);

/// What dragging a handle makes of a frame.
struct ResizedFrame
{
    QSizeF size;
    QPointF move; ///< of the decorator
};

ResizedFrame resizedFrame(Qt::WindowFrameSection section, const QRectF &frame, const QPointF &drag,
                          bool keepAspectRatio);
