// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QPointF>
#include <QSizeF>
#include <QTransform>

/// The transform that fits content of the size \a from into \a to, keeping its aspect ratio and
/// centring it. The identity when either size is null (0 x 0) or both are equal.
///
/// \ingroup helpers
TITLESCENE_EXPORT QTransform RescaleTransform(const QSizeF &from, const QSizeF &to);

/// How much \a transform scales along its own axes at \a origin, whatever it rotates: the width is
/// the horizontal scale, the height the vertical one. A transform that points the x axis to the
/// left counts as one rotated by the same slope to the right.
///
/// \ingroup helpers
TITLESCENE_EXPORT QSizeF ExtractScale(const QTransform &transform, const QPointF &origin);
