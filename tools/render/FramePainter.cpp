// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FramePainter.h"

#include "Failure.h"
#include "PictureLimits.h"
#include "Title.h"

#include <QPainter>

namespace {

// 96 dots per inch: an SVG pixel is a pixel of the picture, whatever screen is attached.
constexpr int dotsPerMeter = 3780;

QRect centredFit(const QSize &size, const QSize &canvas)
{
    const QSize fitted = size.scaled(canvas, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    const QSize rest = canvas - fitted;
    return QRect(QPoint(rest.width() / 2, rest.height() / 2), fitted);
}

} // namespace

FramePainter::FramePainter(Title &title, const QSize &canvas, const QColor &background)
    : m_title(title), m_canvas(canvas), m_place(centredFit(title.size(), canvas)),
      m_background(background)
{
    const QString problem = sizeProblem(m_canvas);
    if (!problem.isEmpty())
        throw Failure(m_title.name(), problem);
}

QImage FramePainter::paint(int ms) const
{
    QImage picture = emptyPicture(m_canvas, m_background);
    QPainter painter(&picture);
    painter.drawImage(m_place.topLeft(), paintTitle(ms));
    painter.end();
    return picture;
}

// The title has a picture of its own: what it erases is itself, never the background, and what
// it draws outside its bounds stays out of the canvas.
QImage FramePainter::paintTitle(int ms) const
{
    QImage picture = emptyPicture(m_place.size(), Qt::transparent);
    QPainter painter(&picture);
    painter.scale(qreal(m_place.width()) / m_title.size().width(),
                  qreal(m_place.height()) / m_title.size().height());
    m_title.paint(&painter, ms);
    painter.end();
    return picture;
}

QImage FramePainter::emptyPicture(const QSize &size, const QColor &color) const
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        throw Failure(m_title.name(), QStringLiteral("not enough memory for a picture"));
    picture.setDotsPerMeterX(dotsPerMeter);
    picture.setDotsPerMeterY(dotsPerMeter);
    picture.fill(color);
    return picture;
}
