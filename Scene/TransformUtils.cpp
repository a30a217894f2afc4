// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TransformUtils.h"

#include <QRectF>

#include <cmath>

namespace {

constexpr double pi = 3.141592653589793;

bool isSameSize(const QSizeF &a, const QSizeF &b)
{
    return qFuzzyCompare(a.width(), b.width()) && qFuzzyCompare(a.height(), b.height());
}

/// The arctangent of the slope tells no left from right, and a vertical axis is one of 90 degrees.
double angleOfXAxis(const QTransform &transform)
{
    const QPointF a = transform.map(QPointF(1.0, 0.0));
    const QPointF b = transform.map(QPointF(0.0, 0.0));
    return std::atan((a.y() - b.y()) / (a.x() - b.x())) * -180.0 / pi;
}

} // namespace

QTransform RescaleTransform(const QSizeF &from, const QSizeF &to)
{
    if (from.isNull() || to.isNull() || isSameSize(from, to))
        return QTransform();
    // An extent that both sizes lack gives NaN; the other one decides then.
    const double scale = std::fmin(to.height() / from.height(), to.width() / from.width());
    return QTransform().scale(scale, scale)
            * QTransform::fromTranslate((to.width() - from.width() * scale) * 0.5,
                                        (to.height() - from.height() * scale) * 0.5);
}

QSizeF ExtractScale(const QTransform &transform, const QPointF &origin)
{
    QTransform unrotated = transform;
    unrotated.translate(origin.x(), origin.y());
    unrotated.rotate(angleOfXAxis(transform), Qt::ZAxis);
    unrotated.translate(-origin.x(), -origin.y());
    return unrotated.mapRect(QRectF(0.0, 0.0, 1.0, 1.0)).size();
}
