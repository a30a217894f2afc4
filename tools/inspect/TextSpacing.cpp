// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextSpacing.h"

#include "Properties.h"
#include "Understood.h"

namespace {

bool isWhiteSpace(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\n') || c == QLatin1Char('\t')
            || c == QLatin1Char('\r');
}

QString withPlainSpaces(QString letters)
{
    for (QChar &c : letters) {
        if (isWhiteSpace(c))
            c = QLatin1Char(' ');
    }
    return letters;
}

bool preserves(const QString &whiteSpace)
{
    return whiteSpace.startsWith(QLatin1String("pre"))
            || whiteSpace == QLatin1String("break-spaces");
}

} // namespace

void TextLine::append(QString more, int owner)
{
    letters += more.replace(QChar::Nbsp, QLatin1Char(' '));
    owners.insert(owners.end(), std::size_t(more.size()), owner);
}

void TextLine::cutLast()
{
    letters.chop(1);
    owners.pop_back();
}

void TextLine::cutSpacesAtBegin()
{
    while (letters.startsWith(QLatin1Char(' '))) {
        letters.remove(0, 1);
        owners.erase(owners.begin());
    }
}

void TextLine::cutSpacesAtEnd()
{
    while (letters.endsWith(QLatin1Char(' ')))
        cutLast();
}

QString TextLine::withoutSpacesAtEnd() const
{
    TextLine line = *this;
    line.cutSpacesAtEnd();
    return line.letters;
}

TextSpacing::TextSpacing(const Understood &title) : m_title(title)
{
    const StyledValues values(title);
    for (int number = 0; number < int(title.source().elements().size()); ++number) {
        const SourceElement &element = title.element(number);
        const bool isRoot = element.parent == SourceElement::none;
        const auto parent = std::size_t(isRoot ? 0 : element.parent);
        bool isKept = !isRoot && m_isPreserved[parent];
        bool isKeptInBrowser = !isRoot && m_isPreservedInBrowser[parent];
        if (const SourceAttribute *const space = element.attribute(QStringLiteral("xml:space")))
            isKept = isKeptInBrowser = space->value == QLatin1String("preserve");
        const QString whiteSpace = values.own(number, QStringLiteral("white-space"));
        if (!whiteSpace.isEmpty() && whiteSpace != QLatin1String("inherit"))
            isKeptInBrowser = preserves(whiteSpace);
        m_anchors.push_back(values.inherited(number, QStringLiteral("text-anchor")));
        m_isPreserved.push_back(isKept);
        m_isPreservedInBrowser.push_back(isKeptInBrowser);
    }
}

// The letters of a tspan inside a tspan are those of the outer one, and letters in elements that
// have a meaning elsewhere are those of what is around them.
int TextSpacing::ownerOf(const SourceText::Piece &piece, const SourceText &text) const
{
    static const QStringList seenThrough{QStringLiteral("a"), QStringLiteral("title"),
                                         QStringLiteral("desc"), QStringLiteral("metadata")};
    int owner = piece.element;
    for (int number = owner; number != text.element; number = m_title.element(number).parent) {
        const SourceElement &element = m_title.element(number);
        const QString name = withoutPrefix(element.name);
        if (name == QLatin1String("tspan"))
            owner = number;
        else if (seenThrough.contains(name) || isAnimationElement(element))
            owner = element.parent;
        else
            return SourceElement::none;
    }
    return owner;
}

bool TextSpacing::isDrawnInBrowser(const SourceText::Piece &piece, const SourceText &text) const
{
    static const QStringList drawn{QStringLiteral("tspan"), QStringLiteral("a")};
    for (int number = piece.element; number != text.element;
         number = m_title.element(number).parent) {
        if (!drawn.contains(m_title.element(number).name))
            return false;
    }
    return true;
}

void TextSpacing::cutWhatCountsNot(TextLine &line, const SourceText &text) const
{
    const QString &anchor = m_anchors[std::size_t(text.element)];
    if (anchor == QLatin1String("end"))
        line.cutSpacesAtBegin();
    else if (anchor != QLatin1String("middle"))
        line.cutSpacesAtEnd();
}

// Runs of the text itself get one space for those at their ends, and tspan elements none.
TextLine TextSpacing::byRenderer(const SourceText &text) const
{
    std::vector<SourceText::Piece> runs;
    for (const SourceText::Piece &piece : text.pieces) {
        if (!isDrawnInBrowser(piece, text) && !piece.letters.trimmed().isEmpty())
            continue; // told of by itself
        const int owner = ownerOf(piece, text);
        const bool goesOn = owner != text.element && !runs.empty() && runs.back().element == owner;
        if (goesOn)
            runs.back().letters += piece.letters;
        else if (owner != SourceElement::none)
            runs.push_back({piece.letters, owner});
    }

    const QString space(QLatin1Char(' '));
    TextLine line;
    bool isSpaceDue = false;
    for (const SourceText::Piece &run : runs) {
        QString letters = withPlainSpaces(run.letters);
        const bool isSimplified = !isPreserved(run.element);
        const bool keepsEnds = isSimplified && run.element == text.element;
        const bool beginsApart = keepsEnds && !line.letters.isEmpty() && letters.startsWith(space);
        if (isSpaceDue || beginsApart)
            line.append(space, run.element);
        isSpaceDue = keepsEnds && letters.endsWith(space);
        if (isSimplified) {
            letters = letters.simplified();
            isSpaceDue = isSpaceDue && !letters.isEmpty();
        }
        line.append(letters, run.element);
    }
    cutWhatCountsNot(line, text);
    return line;
}

TextLine TextSpacing::inBrowser(const SourceText &text) const
{
    TextLine line;
    bool followsSpace = true; // that takes in the next one
    for (const SourceText::Piece &piece : text.pieces) {
        const int owner = ownerOf(piece, text);
        if (owner == SourceElement::none || !isDrawnInBrowser(piece, text))
            continue;
        const bool isKept = m_isPreservedInBrowser[std::size_t(piece.element)];
        for (const QChar c : withPlainSpaces(piece.letters)) {
            const bool joins = !isKept && c == QLatin1Char(' ');
            if (!joins || !followsSpace)
                line.append(c, owner);
            followsSpace = joins;
        }
    }
    if (followsSpace && !line.letters.isEmpty())
        line.cutLast();
    cutWhatCountsNot(line, text);
    return line;
}
