// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Timeline.h"

#include "Project.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int margin = 16;
constexpr int widthOfLabel = 64;

} // namespace

Timeline::Timeline(QWidget *parent) : QWidget(parent)
{
    setMinimumHeight(40);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setToolTip(tr("Drag to look at any frame"));
}

Timeline::~Timeline() = default;

QSize Timeline::sizeHint() const
{
    return QSize(400, 40);
}

int Timeline::positionOf(int ms) const
{
    return margin + int(double(ms) / m_clipLength * (width() - 2 * margin));
}

int Timeline::timeAt(int x) const
{
    const double part = double(x - margin) / std::max(1, width() - 2 * margin);
    const int time = int(std::clamp(part, 0.0, 1.0) * m_clipLength);
    const int frame = (time + frameLength / 2) / frameLength;
    return frame * frameLength;
}

void Timeline::setClipLength(int ms)
{
    m_clipLength = std::max(1, ms);
    update();
}

void Timeline::setTime(qint64 ms)
{
    m_time = ms;
    update();
}

void Timeline::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT scrubbed(timeAt(event->pos().x()));
}

void Timeline::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        Q_EMIT scrubbed(timeAt(event->pos().x()));
}

/// The smallest round time between two labels that do not touch.
int Timeline::tickStep() const
{
    for (const int step : {40, 200, 1000, 2000, 5000, 10000, 30000, 60000, 300000, 600000}) {
        if (positionOf(step) - margin >= widthOfLabel)
            return step;
    }
    return std::max(3600000, m_clipLength / 10);
}

void Timeline::drawTicks(QPainter &painter) const
{
    const int step = tickStep();
    for (int time = 0; time <= m_clipLength; time += step) {
        const int x = positionOf(time);
        painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));
        painter.drawLine(x, height() - 12, x, height() - 4);
        painter.setPen(palette().color(QPalette::WindowText));
        const QRect label(x - widthOfLabel / 2, 2, widthOfLabel, height() - 16);
        painter.drawText(label, Qt::AlignCenter,
                         QStringLiteral("%1 s").arg(time / 1000.0, 0, 'f', step < 1000 ? 2 : 0));
    }
}

void Timeline::drawPlayhead(QPainter &painter) const
{
    const int x = positionOf(int(m_time));
    const QColor color = palette().color(QPalette::Highlight);
    painter.fillRect(QRect(margin, height() - 4, x - margin, 4), color);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath head;
    head.addPolygon(QPolygonF({{x - 6.0, 0.0}, {x + 6.0, 0.0}, {x + 0.5, 9.0}, {x - 0.5, 9.0}}));
    head.closeSubpath();
    head.addRect(x - 0.75, 0.0, 1.5, height());
    head.setFillRule(Qt::WindingFill);
    painter.fillPath(head, color);
}

void Timeline::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.fillRect(QRect(margin, height() - 4, width() - 2 * margin, 4),
                     palette().color(QPalette::Mid));
    drawTicks(painter);
    drawPlayhead(painter);
}
