// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Project.h"

#include <QSizeF>

#include <memory>

class QGraphicsItem;
class QGraphicsObject;

/// \file
/// Makes titles, and the graphics items that show them.

/// An SVG title as large as fits into the canvas and in its centre; null with a reason in \a error
/// when the text can't be shown.
std::unique_ptr<Title> madeSvgTitle(const QString &name, const QString &svg, const QSize &canvas,
                                    QString *error);

Title madeTextTitle(const QString &text, const QSize &canvas);

/// The item that shows the title, not placed yet. A title draws nothing outside its bounds, and
/// its clip paths leave alone what lies below it.
std::unique_ptr<QGraphicsObject> madeItem(const Title &title, int clipLength);

/// Gives the title's line colour to the item. The template's own colours can't be given back.
void setLineColor(QGraphicsItem *item, const QColor &color);

void setClipTime(QGraphicsItem *item, int ms);
void setClipLength(QGraphicsItem *item, int ms);
void setSpeed(QGraphicsItem *item, double speed);

/// The size of the item before any scale.
QSizeF ownSize(const QGraphicsItem *item);
