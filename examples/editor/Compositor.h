// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Project.h"

#include <QGraphicsScene>
#include <QImage>

#include <vector>

class QGraphicsObject;

/// Draws the frames of a project, with no editor around it: no frames, no background.
class Compositor
{
public:
    explicit Compositor(const Project &project);
    ~Compositor();

    /// The canvas as it is \a ms after the start of the clip; transparent where no title is.
    QImage frame(int ms);

    /// The same, fitted into \a size.
    QImage frame(int ms, const QSize &size);

private:
    Q_DISABLE_COPY(Compositor)

    QSize m_canvas;
    QGraphicsScene m_scene;
    std::vector<QGraphicsObject *> m_items; // the scene's
};

/// What a template looks like when all of it is shown; null when it can't be.
QImage thumbnail(const QString &svg, const QSize &size);
