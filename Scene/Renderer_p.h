// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <memory>

class QPainter;
class QRectF;
class QSvgTinyDocument;
class QXmlStreamReader;

/// The SVG renderer's own document of a title's text.
///
/// The renderer plays some animations by itself, by a clock that runs on while it draws; holdAt()
/// makes it show one time, however long drawing takes. This is the only place that knows the
/// renderer's private classes.
class RendererDocument
{
public:
    /// Reads from the reader's device up to the end of the svg element; null when the text is not
    /// accepted.
    static std::unique_ptr<RendererDocument> load(QXmlStreamReader *reader);
    ~RendererDocument();

    /// The latest end of the animations that the renderer plays, ms.
    int animationDuration() const;

    void setSize(int width, int height);

    /// Sets the clock so that ms have elapsed, and holds every animation where it is then.
    void holdAt(int ms);

    /// Draws into a rectangle that is not empty.
    void draw(QPainter *painter, const QRectF &bounds);

private:
    explicit RendererDocument(QSvgTinyDocument *document);

    std::unique_ptr<QSvgTinyDocument> m_document;
};
