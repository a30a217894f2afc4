// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "SourcePlaces.h"

#include <QString>

#include <vector>

class Understood;

// The letters of a text one after the other, with the spaces that are seen between them.
struct TextLine
{
    QString letters;         // a plain space for each white space that XML knows
    std::vector<int> owners; // the element of each

    void append(QString more, int owner);
    void cutLast();
    void cutSpacesAtBegin();
    void cutSpacesAtEnd();
    QString withoutSpacesAtEnd() const;
};

// The spaces of a title's texts, as they are drawn here and elsewhere. Those at the begin count
// for nothing in a text that is anchored by its end, and the other way round.
class TextSpacing
{
public:
    explicit TextSpacing(const Understood &title);

    TextLine byRenderer(const SourceText &text) const;
    TextLine inBrowser(const SourceText &text) const;

    // Of what a letter is a part to the renderer: the text itself or one of its tspan children.
    // None: it is not drawn.
    int ownerOf(const SourceText::Piece &piece, const SourceText &text) const;

    // Whether a browser draws them.
    bool isDrawnInBrowser(const SourceText::Piece &piece, const SourceText &text) const;

    // Whether xml:space holds the spaces of an element.
    bool isPreserved(int element) const { return m_isPreserved[std::size_t(element)]; }

private:
    void cutWhatCountsNot(TextLine &line, const SourceText &text) const;

    const Understood &m_title;
    std::vector<bool> m_isPreserved;
    std::vector<QString> m_anchors;
    std::vector<bool> m_isPreservedInBrowser; // where "white-space" has a say, too
};
