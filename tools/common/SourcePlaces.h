// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "StyleSheets.h"

#include <QString>

#include <optional>
#include <vector>

// Where something stands in a text, both counted from 1; columns count UTF-16 units. Line 0: it is
// not known.
struct Place
{
    int line = 0;
    int column = 0;
};

// An attribute as the author wrote it.
struct SourceAttribute
{
    QString name;
    QString value;
    Place place; // of the name
};

// An element as the author wrote it.
struct SourceElement
{
    static constexpr int none = -1;

    QString name; // with its prefix
    Place place;  // of the start tag
    int parent = none;
    std::vector<SourceAttribute> attributes;

    const SourceAttribute *attribute(const QString &name) const; // null when there is none
    QString value(const QString &name) const; // of an attribute; empty when there is none
    Place placeOf(const QString &name) const; // of an attribute; of the tag when there is none
};

// What a text says in a "text" or "textArea" element, in the pieces in which it is read: an empty
// one for each start of a "tspan", and the letters.
struct SourceText
{
    struct Piece
    {
        QString letters;
        int element; // the innermost one around them
    };

    int element = SourceElement::none;
    std::vector<Piece> pieces;
};

// A well-formed text's elements in document order, up to the end of the root, each with its place:
// what a document's tree does not remember.
class SourcePlaces
{
public:
    explicit SourcePlaces(const QString &text);

    const std::vector<SourceElement> &elements() const { return m_elements; }
    const std::vector<SourceText> &texts() const { return m_texts; }

    std::optional<Place> documentType() const { return m_documentType; }

    // Entities that the text itself does not define.
    struct Entity
    {
        QString name;
        Place place;
    };
    const std::vector<Entity> &undefinedEntities() const { return m_undefinedEntities; }

    // Instructions to fetch a style sheet.
    const std::vector<Place> &styleInstructions() const { return m_styleInstructions; }

    // The text of style elements.
    struct StyleSheet
    {
        QString text;
        Place place; // of the element
        int element;
        StyleRules rules;
    };
    const std::vector<StyleSheet> &styleSheets() const { return m_styleSheets; }

private:
    class Reading;

    std::vector<SourceElement> m_elements;
    std::vector<SourceText> m_texts;
    std::optional<Place> m_documentType;
    std::vector<Entity> m_undefinedEntities;
    std::vector<Place> m_styleInstructions;
    std::vector<StyleSheet> m_styleSheets;
};
