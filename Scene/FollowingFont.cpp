// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FollowingFont_p.h"

#include <QTextBlock>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>

#include <vector>

namespace {

/// Text of one format, or, when it is empty, a paragraph.
struct FormatRun
{
    int begin;
    int end;
    QTextCharFormat format;
    bool isShown;
};

/// A paragraph's own format gives its empty lines their height.
bool showsOwnFormat(const QTextBlock &block)
{
    return block.length() == 1 || block.text().contains(QChar::LineSeparator);
}

std::vector<FormatRun> formatRuns(const QTextDocument &document)
{
    std::vector<FormatRun> runs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const int begin = block.position();
        runs.push_back({begin, begin, block.charFormat(), showsOwnFormat(block)});
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment text = it.fragment();
            const int end = text.position() + text.length();
            runs.push_back({text.position(), end, text.charFormat(), true});
        }
    }
    return runs;
}

std::vector<QTextCharFormat> shownFormats(const QTextDocument &document)
{
    std::vector<QTextCharFormat> formats;
    for (const FormatRun &run : formatRuns(document)) {
        if (run.isShown)
            formats.push_back(run.format);
    }
    return formats;
}

/// The fonts of formats in a document of another default font.
std::vector<QFont> fontsUnder(const QFont &defaultFont, const std::vector<QTextCharFormat> &formats)
{
    QTextDocument document;
    document.setDefaultFont(defaultFont);
    QTextCursor cursor(&document);
    std::vector<QFont> fonts;
    fonts.reserve(formats.size());
    for (const QTextCharFormat &format : formats) {
        cursor.setCharFormat(format);
        fonts.push_back(cursor.charFormat().font());
    }
    return fonts;
}

/// Whether no format tells which of the two is the default font.
bool areTheSame(const std::vector<QTextCharFormat> &formats, const QFont &oneDefault,
                const QFont &other)
{
    return fontsUnder(oneDefault, formats) == fontsUnder(other, formats);
}

/// The format with its whole font written into it.
QTextCharFormat withWholeFont(const QTextCharFormat &format)
{
    QTextCharFormat whole = format;
    whole.setFont(format.font());
    if (format.hasProperty(QTextFormat::TextUnderlineStyle))
        whole.setUnderlineStyle(format.underlineStyle()); // a font knows no other line than a solid
    whole.clearProperty(QTextFormat::FontSizeAdjustment);
    return whole;
}

/// Lets the text leave nothing to the default font. For a document without anything to undo.
void writeWholeFonts(QTextDocument &document)
{
    const bool wasModified = document.isModified();
    const bool hadUndo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (const FormatRun &run : formatRuns(document)) {
        cursor.setPosition(run.begin);
        cursor.setPosition(run.end, QTextCursor::KeepAnchor);
        if (cursor.hasSelection())
            cursor.setCharFormat(withWholeFont(run.format));
        else
            cursor.setBlockCharFormat(withWholeFont(run.format));
    }
    cursor.endEditBlock();
    document.setUndoRedoEnabled(hadUndo);
    document.setModified(wasModified);
}

} // namespace

FollowingFont &FollowingFont::of(QTextDocument &document)
{
    auto *font = document.findChild<FollowingFont *>(QString(), Qt::FindDirectChildrenOnly);
    return font ? *font : *new FollowingFont(document);
}

FollowingFont::FollowingFont(QTextDocument &document)
    : QObject(&document), m_document(document), m_own(document.defaultFont()), m_followed(m_own)
{
    connect(&document, &QTextDocument::contentsChanged, this, &FollowingFont::keepLookOfText);
}

/// No longer after the application has chosen another default font.
bool FollowingFont::isFollowing() const
{
    return m_followed != m_own && m_document.defaultFont().isCopyOf(m_followed);
}

void FollowingFont::follow(const QFont &font)
{
    if (!isFollowing())
        m_own = m_document.defaultFont();
    if (!areTheSame(shownFormats(m_document), m_own, font) && !m_document.isUndoAvailable()
        && !m_document.isRedoAvailable())
        writeWholeFonts(m_document);
    if (!areTheSame(shownFormats(m_document), m_own, font))
        return;
    m_followed = font;
    m_document.setDefaultFont(font);
}

void FollowingFont::keepLookOf(const QTextCharFormat &format)
{
    if (isFollowing() && !areTheSame({format}, m_own, m_followed))
        m_document.setDefaultFont(m_own);
}

/// An undo, say, has brought text back that relies on the document's own font.
void FollowingFont::keepLookOfText()
{
    if (isFollowing() && !areTheSame(shownFormats(m_document), m_own, m_followed))
        m_document.setDefaultFont(m_own);
}
