// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MarkupScanner_p.h"

#include <algorithm>

namespace {

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isQuote(char c)
{
    return c == '"' || c == '\'';
}

/// The end of the text when there is none.
template <typename Predicate>
std::size_t firstOf(std::string_view text, std::size_t from, Predicate predicate)
{
    const auto found = std::find_if(text.begin() + std::ptrdiff_t(from), text.end(), predicate);
    return std::size_t(found - text.begin());
}

} // namespace

bool MarkupScanner::next()
{
    m_subset = std::string_view();
    m_begin = std::min(m_text.find('<', m_end), m_text.size());
    m_end = m_begin;
    if (m_begin == m_text.size())
        return false;
    const std::string_view rest = m_text.substr(m_begin);
    // A comment, an instruction and character data end at the first closing after all of the
    // opening: "<!-->" and "<?>" are not whole.
    if (startsWith(rest, "<!--")) {
        m_kind = Kind::Comment;
        m_end += 4;
        skipPast("-->");
    } else if (startsWith(rest, "<![CDATA[")) {
        m_kind = Kind::CharacterData;
        m_end += 9;
        skipPast("]]>");
    } else if (startsWith(rest, "<!")) {
        m_kind = Kind::Declaration;
        m_end += 2;
        skipDeclaration();
    } else if (startsWith(rest, "<?")) {
        m_kind = Kind::Instruction;
        m_end += 2;
        skipPast("?>");
    } else if (startsWith(rest, "</")) {
        m_kind = Kind::EndTag;
        m_end += 2;
        skipPast(">");
    } else {
        m_kind = Kind::StartTag;
        ++m_end;
        skipTag();
    }
    return true;
}

void MarkupScanner::skipPast(std::string_view closing)
{
    const std::size_t found = m_text.find(closing, m_end);
    m_isFinished = found != std::string_view::npos;
    m_end = m_isFinished ? found + closing.size() : m_text.size();
}

void MarkupScanner::skipTag()
{
    skipPastFirst([](char c) { return c == '>'; });
}

/// Only a document type has brackets of its own: in it they would end it or mean nothing.
void MarkupScanner::skipDeclaration()
{
    const bool mayHaveSubset = m_place == Place::Document;
    skipPastFirst([mayHaveSubset](char c) { return c == '>' || (mayHaveSubset && c == '['); });
    if (m_isFinished && m_text[m_end - 1] == '[')
        skipSubset();
}

/// Past the first such byte outside of quotes.
template <typename Predicate>
void MarkupScanner::skipPastFirst(Predicate predicate)
{
    while (true) {
        m_end = firstOf(m_text, m_end, [&](char c) { return isQuote(c) || predicate(c); });
        m_isFinished = m_end != m_text.size();
        if (!m_isFinished)
            return;
        const std::size_t at = m_end++;
        if (!isQuote(m_text[at]))
            return;
        skipPast(m_text.substr(at, 1));
    }
}

/// The bracket that ends it is the first one outside of markup.
void MarkupScanner::skipSubset()
{
    const std::size_t begin = m_end;
    MarkupScanner part(m_text, Place::DocumentType);
    part.m_end = begin;
    while (true) {
        m_end = firstOf(m_text, part.m_end, [](char c) { return c == '<' || c == ']'; });
        if (m_end == m_text.size() || m_text[m_end] == ']')
            break;
        part.next();
    }
    m_subset = m_text.substr(begin, m_end - begin);
    skipPast(">");
}

int MarkupScanner::attributesBegin() const
{
    const std::size_t nameEnd =
            firstOf(m_text, m_begin, [](char c) { return isSpace(c) || c == '/' || c == '>'; });
    return int(std::min(nameEnd, m_end));
}

int MarkupScanner::attributesEnd() const
{
    if (!m_isFinished)
        return end();
    const bool isEmptyElement = m_text[m_end - 2] == '/';
    return end() - (isEmptyElement ? 2 : 1);
}

bool AttributeScanner::next()
{
    m_begin = firstOf(m_text, m_end, [](char c) { return !isSpace(c); });
    const std::size_t opening = firstOf(m_text, m_begin, isQuote);
    if (opening == m_text.size())
        return false;
    m_nameEnd =
            firstOf(m_text, m_begin, [](char c) { return isSpace(c) || c == '=' || isQuote(c); });
    m_valueBegin = opening + 1;
    const std::size_t closing = m_text.find(m_text[opening], m_valueBegin);
    if (closing == std::string_view::npos)
        return false;
    m_end = closing + 1;
    return true;
}
