// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QSize>

class FrameSchedule;
class QPainter;
class Reporter;
class Title;

// An overview of a run: evenly chosen pictures in rows, each with its time below.
class ContactSheet
{
public:
    // `canvas` is the size of the run's pictures. The title and the schedule outlive the sheet.
    ContactSheet(Title &title, const FrameSchedule &schedule, const QSize &canvas,
                 const QColor &background);

    int pictureCount() const { return m_count; }
    QImage paint(Reporter &reporter) const;

private:
    qint64 chosenIndex(int picture) const;
    QPoint cellPosition(int picture) const;
    void paintCell(QPainter *painter, const QPoint &position, const QImage &picture, int ms) const;

    Title &m_title;
    const FrameSchedule &m_schedule;
    QColor m_background;
    int m_count;
    int m_columns;
    int m_rows;
    QSize m_picture; // size of a picture on the sheet
    QSize m_cell;    // with the room for its time
};
