// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PlainXml_p.h"

#include <algorithm>
#include <array>

namespace {

/// What a byte may be part of; several bits for each.
enum ByteClass : quint8 {
    NameStart = 1,
    NamePart = 2,
    Space = 4,
    // What may stand in these places, and needs no closer look:
    Content = 8, ///< between tags
    Quoted = 16,
    Commented = 32
};

constexpr bool isLetter(int c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr std::array<quint8, 256> classesOfBytes()
{
    std::array<quint8, 256> classes{};
    for (int c = 0; c < 0x80; ++c) {
        int bits = 0;
        if (isLetter(c) || c == '_')
            bits |= NameStart | NamePart;
        if ((c >= '0' && c <= '9') || c == '-' || c == '.')
            bits |= NamePart;
        if (c == ' ' || c == '\t' || c == '\n' || c == '\r')
            bits |= Space | Content;
        if (c >= ' ' && c != '<' && c != '&' && c != '>')
            bits |= Content;
        if (c >= ' ' && c != '<' && c != '&' && c != '"' && c != '\'')
            bits |= Quoted;
        if (c != '-' && (c >= ' ' || (bits & Space)))
            bits |= Commented;
        classes[std::size_t(c)] = quint8(bits);
    }
    return classes;
}

constexpr std::array<quint8, 256> byteClasses = classesOfBytes();

bool is(char c, int bits)
{
    return byteClasses[uchar(c)] & bits;
}

bool isContinuation(char c)
{
    return (uchar(c) & 0xC0) == 0x80;
}

/// The bytes of the character beyond ASCII that begins here; 0 when XML has no such character or
/// it is not written in UTF-8.
int lengthOfCharacter(const char *at, const char *end)
{
    const uint lead = uchar(*at);
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    const int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (end - at < length || !std::all_of(at + 1, at + length, isContinuation))
        return 0;
    uint code = lead & (0x7Fu >> length);
    for (int i = 1; i < length; ++i)
        code = code << 6 | (uchar(at[i]) & 0x3F);
    const bool isShortest = length == 2 || code >= (length == 3 ? 0x800u : 0x10000u);
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    const bool isForbidden = isSurrogate || (code & 0xFFFE) == 0xFFFE || code > 0x10FFFF;
    return isShortest && !isForbidden ? length : 0;
}

/// After all that needs no closer look.
const char *afterPlain(const char *at, const char *end, int bits)
{
    while (at != end) {
        if (is(*at, bits)) {
            ++at;
        } else {
            const int length = lengthOfCharacter(at, end);
            if (length == 0)
                break;
            at += length;
        }
    }
    return at;
}

} // namespace

PlainXml::PlainXml(const QByteArray &text, int mostAttributes)
    : m_at(text.constData()), m_end(text.constData() + text.size()),
      m_mostAttributes(std::size_t(mostAttributes))
{
    skip(R"(<?xml version="1.0" encoding="UTF-8"?>)")
            || skip(R"(<?xml version="1.0" encoding="UTF-8" standalone="no"?>)");
}

PlainXml::Token PlainXml::next()
{
    if (m_isInEmptyElement)
        return closeElement();
    if (m_open.empty()) {
        if (!skipOutside())
            return Token::NotPlain;
        if (m_at == m_end)
            return m_isBeforeRoot ? Token::NotPlain : Token::End;
        return m_isBeforeRoot ? startElement() : Token::NotPlain;
    }
    if (m_at == m_end)
        return Token::NotPlain;
    return *m_at == '<' ? markup() : characters();
}

PlainXml::Token PlainXml::markup()
{
    while (isAt("<!--")) {
        if (!skipComment())
            return Token::NotPlain;
    }
    if (isAt("</"))
        return endElement();
    if (m_at != m_end && *m_at != '<')
        return characters();
    return startElement();
}

PlainXml::Token PlainXml::startElement()
{
    m_attributes.clear();
    m_normalised.clear();
    if (!skip("<") || !readName(&m_name))
        return Token::NotPlain;
    while (skipSpaces() && m_at != m_end && is(*m_at, NameStart)) {
        if (!readAttribute())
            return Token::NotPlain;
    }
    m_isInEmptyElement = skip("/");
    if (!skip(">"))
        return Token::NotPlain;
    m_isBeforeRoot = false;
    m_open.push_back(m_name);
    return Token::StartElement;
}

PlainXml::Token PlainXml::endElement()
{
    std::string_view name;
    if (!skip("</") || !readName(&name) || name != m_open.back())
        return Token::NotPlain;
    skipSpaces();
    return skip(">") ? closeElement() : Token::NotPlain;
}

PlainXml::Token PlainXml::closeElement()
{
    m_isInEmptyElement = false;
    m_open.pop_back();
    return Token::EndElement;
}

/// A ">" is left to others, for it may be the end of "]]>".
PlainXml::Token PlainXml::characters()
{
    const char *const start = m_at;
    m_at = afterPlain(m_at, m_end, Content);
    if (m_at == m_end || *m_at != '<')
        return Token::NotPlain;
    m_characters = std::string_view(start, std::size_t(m_at - start));
    return Token::Characters;
}

bool PlainXml::skipComment()
{
    if (!skip("<!--"))
        return false;
    while (true) {
        m_at = afterPlain(m_at, m_end, Commented);
        if (m_at == m_end || *m_at != '-' || isAt("--"))
            return skip("-->");
        ++m_at;
    }
}

/// A name with one prefix at most.
bool PlainXml::readName(std::string_view *name)
{
    const char *const start = m_at;
    for (bool hasPrefix = false;; hasPrefix = true) {
        if (m_at == m_end || !is(*m_at, NameStart))
            return false;
        m_at = std::find_if_not(m_at, m_end, [](char c) { return is(c, NamePart); });
        if (hasPrefix || !skip(":"))
            break;
    }
    *name = std::string_view(start, std::size_t(m_at - start));
    return true;
}

bool PlainXml::readAttribute()
{
    XmlAttribute attribute;
    if (m_attributes.size() == m_mostAttributes || !readName(&attribute.name))
        return false;
    skipSpaces();
    if (!skip("="))
        return false;
    skipSpaces();
    if (!readValue(&attribute.value))
        return false;
    m_attributes.push_back(attribute);
    return isNewAttribute();
}

/// Whether the last attribute has a name that no other has.
bool PlainXml::isNewAttribute() const
{
    const auto last = m_attributes.end() - 1;
    return std::none_of(m_attributes.begin(), last,
                        [last](const XmlAttribute &other) { return other.name == last->name; });
}

bool PlainXml::readValue(std::string_view *value)
{
    if (m_at == m_end || (*m_at != '"' && *m_at != '\''))
        return false;
    const char quote = *m_at++;
    const char *const start = m_at;
    bool isNormal = true;
    while (true) {
        m_at = afterPlain(m_at, m_end, Quoted);
        if (m_at == m_end || *m_at == quote)
            break;
        if (*m_at == '\n' || *m_at == '\t')
            isNormal = false;
        else if (*m_at != '"' && *m_at != '\'')
            return false;
        ++m_at;
    }
    *value = std::string_view(start, std::size_t(m_at - start));
    if (!isNormal)
        *value = normalised(*value);
    return skip(std::string_view(&quote, 1));
}

/// With spaces in place of line breaks and tabs.
std::string_view PlainXml::normalised(std::string_view value)
{
    std::string &copy = m_normalised.emplace_back(value);
    std::replace_if(
            copy.begin(), copy.end(), [](char c) { return is(c, Space); }, ' ');
    return copy;
}

/// Skips what may stand before and after the root, up to the next tag.
bool PlainXml::skipOutside()
{
    skipSpaces();
    while (isAt("<!--")) {
        if (!skipComment())
            return false;
        skipSpaces();
    }
    return m_at == m_end || *m_at == '<';
}

/// Whether there were any.
bool PlainXml::skipSpaces()
{
    const char *const start = m_at;
    m_at = std::find_if_not(m_at, m_end, [](char c) { return is(c, Space); });
    return m_at != start;
}

bool PlainXml::skip(std::string_view expected)
{
    if (!isAt(expected))
        return false;
    m_at += expected.size();
    return true;
}

bool PlainXml::isAt(std::string_view expected) const
{
    return std::string_view(m_at, std::size_t(m_end - m_at)).substr(0, expected.size()) == expected;
}
