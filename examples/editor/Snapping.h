// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>

/// How a rectangle that is being moved snaps to the canvas.
struct Snap
{
    QPointF offset;                 ///< to be added to the rectangle's position
    std::optional<double> vertical; ///< where the line is that it has snapped to
    std::optional<double> horizontal;
};

/// Snaps edges to the edges of the same side and centre to centre, along each axis to the nearest
/// that is not farther away than \a reach.
Snap snapToCanvas(const QRectF &moving, const QRectF &canvas, double reach);
