// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ContactSheet.h"

#include "FramePainter.h"
#include "FrameSchedule.h"
#include "Reporter.h"

#include <QBrush>
#include <QFont>
#include <QPainter>

namespace {

constexpr int mostPictures = 24;
constexpr int mostColumns = 6;
constexpr QSize largestPicture(320, 240);
constexpr int narrowestCell = 100; // as wide as a time
constexpr int labelHeight = 24;
constexpr int labelPixelSize = 14;
constexpr int gap = 12;
constexpr int checkerSquare = 8;

constexpr QRgb sheetColor = 0xff303030;
constexpr QRgb labelColor = 0xfff0f0f0;
constexpr QRgb lightSquare = 0xffc0c0c0;
constexpr QRgb darkSquare = 0xff989898;

int dividedUp(int number, int divisor)
{
    return (number + divisor - 1) / divisor;
}

QBrush checkerboard()
{
    const QSize square(checkerSquare, checkerSquare);
    QImage tile(square * 2, QImage::Format_RGB32);
    tile.fill(lightSquare);
    QPainter painter(&tile);
    painter.fillRect(QRect(QPoint(checkerSquare, 0), square), QColor(darkSquare));
    painter.fillRect(QRect(QPoint(0, checkerSquare), square), QColor(darkSquare));
    painter.end();
    return QBrush(tile);
}

QString timeLabel(int ms)
{
    return QStringLiteral("%1 s").arg(ms / 1000.0, 0, 'f', 3);
}

} // namespace

ContactSheet::ContactSheet(Title &title, const FrameSchedule &schedule, const QSize &canvas,
                           const QColor &background)
    : m_title(title), m_schedule(schedule), m_background(background),
      m_count(int(qMin<qint64>(mostPictures, schedule.count()))),
      m_picture(canvas.scaled(largestPicture, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)))
{
    m_rows = dividedUp(m_count, mostColumns);
    m_columns = dividedUp(m_count, m_rows);
    m_cell = QSize(qMax(m_picture.width(), narrowestCell), m_picture.height() + labelHeight);
}

QImage ContactSheet::paint(Reporter &reporter) const
{
    QImage sheet(gap + m_columns * (m_cell.width() + gap), gap + m_rows * (m_cell.height() + gap),
                 QImage::Format_RGB32);
    sheet.fill(sheetColor);

    const FramePainter pictures(m_title, m_picture, m_background);
    QPainter painter(&sheet);
    QFont font;
    font.setPixelSize(labelPixelSize);
    painter.setFont(font);
    for (int i = 0; i < m_count; ++i) {
        const int ms = m_schedule.timeOf(chosenIndex(i));
        paintCell(&painter, cellPosition(i), pictures.paint(ms), ms);
        reporter.pictureDone();
    }
    painter.end();
    return sheet;
}

// Spread from the first picture of the run to its last.
qint64 ContactSheet::chosenIndex(int picture) const
{
    return m_count == 1 ? 0 : picture * (m_schedule.count() - 1) / (m_count - 1);
}

QPoint ContactSheet::cellPosition(int picture) const
{
    const int column = picture % m_columns;
    const int row = picture / m_columns;
    return QPoint(gap + column * (m_cell.width() + gap), gap + row * (m_cell.height() + gap));
}

void ContactSheet::paintCell(QPainter *painter, const QPoint &position, const QImage &picture,
                             int ms) const
{
    const QPoint corner = position + QPoint((m_cell.width() - m_picture.width()) / 2, 0);
    painter->setBrushOrigin(corner);
    painter->fillRect(QRect(corner, m_picture), checkerboard());
    painter->drawImage(corner, picture);

    const QRect label(position.x(), position.y() + m_picture.height(), m_cell.width(), labelHeight);
    painter->setPen(QColor(labelColor));
    painter->drawText(label, Qt::AlignCenter, timeLabel(ms));
}
