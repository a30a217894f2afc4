// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QColor>
#include <QPointF>
#include <QSize>
#include <QString>
#include <QVector>

/// Frames are 40 ms long: 25 of them in a second.
constexpr int frameLength = 40;

/// Where a title is on the canvas.
struct Placement
{
    QPointF pos;           ///< of the title's own origin, its upper left corner when not turned
    double rotation = 0.0; ///< degrees, clockwise
    double scaleX = 1.0;   ///< of an SVG title
    double scaleY = 1.0;
    double textWidth = 0.0; ///< of a text title, which breaks its lines instead of scaling

    /// Equal for all that a user can see.
    bool isSameAs(const Placement &other) const;
};

/// All that there is to know of one title: what undo restores and a project file holds.
struct Title
{
    enum Kind { Svg, Text };

    Kind kind = Svg;
    QString name;
    Placement placement;

    QString svg;
    QColor lineColor; ///< invalid: the colours of the template
    double speed = 1.0;

    QString html;
};

/// A canvas with titles, the lowest one first.
struct Project
{
    QSize canvas = QSize(1920, 1080);
    int clipLength = 8000; ///< ms
    QVector<Title> titles;

    int frameCount() const;
};
