// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>

#include <string_view>

/// As long as the text stays as it is.
inline std::string_view view(const QByteArray &text)
{
    return std::string_view(text.constData(), std::size_t(text.size()));
}

/// Goes from one piece of markup to the next through XML in UTF-8, by the bytes alone, and says
/// where each begins and ends.
///
/// Up to the first place where the text is not well-formed, the pieces are those that readers of
/// XML find. After it they are anything: who judges a text by them has to know that a reader stops
/// there. Each byte is looked at once, however broken the text is.
///
/// Who looks for the start tags of a text that QDomDocument has saved relies on this: it writes
/// one start tag for each element, in document order, with "<" as "&lt;" everywhere else but in
/// comments, character data and instructions, which it writes as they were read; attributes, each
/// after one space, as name="value" in double quotes, whose value holds none of them but may hold
/// ">" and "'"; and nothing between the last one and the ">" or "/>".
class MarkupScanner
{
public:
    enum class Kind {
        StartTag, ///< of an empty element, too
        EndTag,
        Comment,
        CharacterData, ///< "<![CDATA["
        Instruction,   ///< the XML declaration, too
        Declaration ///< any other "<!": a document type with all that is in it, or one part of it
    };

    /// Where the text is from.
    enum class Place {
        Document,
        DocumentType ///< between its brackets
    };

    /// The text has to outlive the scanner.
    explicit MarkupScanner(std::string_view text, Place place = Place::Document)
        : m_text(text), m_place(place)
    {
    }

    /// Moves on to the next piece; false when there is none.
    bool next();

    Kind kind() const { return m_kind; }
    /// At the "<".
    int begin() const { return int(m_begin); }
    /// After the ">", or the end of the text.
    int end() const { return int(m_end); }
    /// Whether the piece ends before the text does.
    bool isFinished() const { return m_isFinished; }
    std::string_view piece() const { return m_text.substr(m_begin, m_end - m_begin); }

    /// After the name of a start tag.
    int attributesBegin() const;
    /// At the ">" or "/>" of a start tag.
    int attributesEnd() const;

    /// Of a document type, what is between its brackets.
    std::string_view internalSubset() const { return m_subset; }

private:
    void skipPast(std::string_view closing);
    template <typename Predicate>
    void skipPastFirst(Predicate predicate);
    void skipTag();
    void skipDeclaration();
    void skipSubset();

    const std::string_view m_text;
    const Place m_place;
    Kind m_kind = Kind::StartTag;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    bool m_isFinished = true;
    std::string_view m_subset;
};

/// Goes from one attribute to the next through a part of a text that MarkupScanner has found.
class AttributeScanner
{
public:
    AttributeScanner(std::string_view text, int begin, int end)
        : m_text(text.substr(0, std::size_t(end))), m_end(std::size_t(begin))
    {
    }
    explicit AttributeScanner(std::string_view text, const MarkupScanner &startTag)
        : AttributeScanner(text, startTag.attributesBegin(), startTag.attributesEnd())
    {
    }

    /// Moves on to the next attribute; false when there is none.
    bool next();

    std::string_view name() const { return m_text.substr(m_begin, m_nameEnd - m_begin); }
    /// At the name.
    int begin() const { return int(m_begin); }
    /// After the quote that ends the value.
    int end() const { return int(m_end); }
    int valueBegin() const { return int(m_valueBegin); }
    int valueEnd() const { return int(m_end) - 1; }

private:
    const std::string_view m_text;
    std::size_t m_begin = 0;
    std::size_t m_nameEnd = 0;
    std::size_t m_valueBegin = 0;
    std::size_t m_end;
};
