// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QColor>
#include <QSize>
#include <QString>

#include <memory>

class QPainter;
class SvgDocument;

// A title ready to be painted: its document, and the shapes that erase parts of it.
class Title
{
public:
    // `name` is what messages call it. A valid `color` replaces the title's fills and strokes.
    // Throws a Failure for a text that is no title that can be drawn.
    Title(const QString &name, const QString &text, const QColor &color);
    ~Title();

    QString name() const { return m_name; }
    QSize size() const;
    int duration() const; // in milliseconds

    // Paints the moment `ms` at the title's own size on a transparent device.
    void paint(QPainter *painter, int ms);

private:
    QString m_name;
    std::unique_ptr<SvgDocument> m_document;
    std::unique_ptr<SvgDocument> m_clipping; // null: nothing is erased
};
