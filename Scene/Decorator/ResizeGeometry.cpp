// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ResizeGeometry_p.h"

namespace {

bool isLeft(Qt::WindowFrameSection section)
{
    return section == Qt::LeftSection || section == Qt::TopLeftSection
            || section == Qt::BottomLeftSection;
}

bool isRight(Qt::WindowFrameSection section)
{
    return section == Qt::RightSection || section == Qt::TopRightSection
            || section == Qt::BottomRightSection;
}

bool isTop(Qt::WindowFrameSection section)
{
    return section == Qt::TopSection || section == Qt::TopLeftSection
            || section == Qt::TopRightSection;
}

bool isBottom(Qt::WindowFrameSection section)
{
    return section == Qt::BottomSection || section == Qt::BottomLeftSection
            || section == Qt::BottomRightSection;
}

QRectF dragged(Qt::WindowFrameSection section, QRectF frame, const QPointF &drag)
{
    if (isLeft(section))
        frame.setLeft(frame.left() + drag.x());
    if (isRight(section))
        frame.setWidth(frame.width() + drag.x());
    if (isTop(section))
        frame.setTop(frame.top() + drag.y());
    if (isBottom(section))
        frame.setHeight(frame.height() + drag.y());
    return frame;
}

/// The width leads, except when the upper or lower edge is dragged. The side that follows grows
/// from the edge that stays, or from the centre when an edge is dragged.
QRectF withRatio(Qt::WindowFrameSection section, QRectF frame, const QRectF &before, qreal ratio)
{
    if (section == Qt::TopSection || section == Qt::BottomSection) {
        const qreal width = ratio * frame.height();
        frame.moveLeft(before.center().x() - width / 2.0);
        frame.setWidth(width);
        return frame;
    }
    const qreal height = frame.width() / ratio;
    if (section == Qt::LeftSection || section == Qt::RightSection)
        frame.moveTop(before.center().y() - height / 2.0);
    else if (isTop(section))
        frame.moveTop(before.bottom() - height);
    frame.setHeight(height);
    return frame;
}

} // namespace

QPointF handlePosition(Qt::WindowFrameSection section, const QRectF &frame,
                       const HandleOffsets &offsets)
{
    const qreal ox = offsets.half.x();
    const qreal oy = offsets.half.y();
    const QPointF centre(frame.x() + frame.width() / 2.0 - ox,
                         frame.y() + frame.height() / 2.0 - oy);
    switch (section) {
    case Qt::TopLeftSection:
        return {frame.x() - ox, frame.y() - oy};
    case Qt::TopRightSection:
        return {frame.x() + frame.width() - ox, frame.y() - oy};
    case Qt::BottomLeftSection:
        return {frame.x() - ox, frame.y() + frame.height() - oy};
    case Qt::BottomRightSection:
        return {frame.x() + frame.width() - ox, frame.y() + frame.height() - oy};
    case Qt::TopSection:
        return {centre.x(), frame.y() - 2.0 * oy};
    case Qt::BottomSection:
        return {centre.x(), frame.y() + frame.height()};
    case Qt::LeftSection:
        return {frame.x() - offsets.whole, centre.y()};
    case Qt::RightSection:
        return {frame.x() + frame.width(), centre.y()};
    default:
        return centre;
    }
}

ResizedFrame resizedFrame(Qt::WindowFrameSection section, const QRectF &frame, const QPointF &drag,
                          bool keepAspectRatio)
{
    QRectF changed = dragged(section, frame, drag);
    if (keepAspectRatio)
        changed = withRatio(section, changed, frame, frame.width() / frame.height());
    return {changed.size(), changed.topLeft() - frame.topLeft()};
}
