// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QSize>

class Title;

// Makes the pictures of a title: fitted into a canvas of any size, over a background.
class FramePainter
{
public:
    // The title must outlive the painter. Throws a Failure for a canvas that is too large.
    FramePainter(Title &title, const QSize &canvas, const QColor &background);

    // The picture at `ms`, premultiplied. Throws a Failure when the memory is not enough.
    QImage paint(int ms) const;

private:
    QImage emptyPicture(const QSize &size, const QColor &color) const;
    QImage paintTitle(int ms) const;

    Title &m_title;
    QSize m_canvas;
    QRect m_place; // of the title on the canvas, in whole pixels so that its edges stay sharp
    QColor m_background;
};
