// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "XmlAttribute_p.h"

#include <QByteArray>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// Reads XML in its plainest form, as most titles are written: elements with ASCII names,
/// attributes, characters and comments. It understands no document type, no references such as
/// "&amp;", no CDATA sections and no instructions but the usual XML declaration; what it does
/// understand is well-formed, and read several times as fast as by QXmlStreamReader.
class PlainXml
{
public:
    enum class Token {
        StartElement, ///< name() and attributes() are known
        EndElement,
        Characters, ///< text() is known; comments part characters
        End,
        NotPlain ///< this or all that follows may be anything, well-formed XML or not
    };

    /// Reads from the text, which has to outlive the reader. Refuses elements with more attributes.
    PlainXml(const QByteArray &text, int mostAttributes);

    Token next();

    std::string_view name() const { return m_name; }
    const std::vector<XmlAttribute> &attributes() const { return m_attributes; }
    std::string_view text() const { return m_characters; }

private:
    Token markup();
    Token startElement();
    Token endElement();
    Token closeElement();
    Token characters();
    bool skipComment();
    bool readName(std::string_view *name);
    bool readAttribute();
    bool readValue(std::string_view *value);
    std::string_view normalised(std::string_view value);
    bool isNewAttribute() const;
    bool skipOutside();
    bool skipSpaces();
    bool skip(std::string_view expected);
    bool isAt(std::string_view expected) const;

    const char *m_at;
    const char *const m_end;
    const std::size_t m_mostAttributes;
    bool m_isBeforeRoot = true;
    bool m_isInEmptyElement = false;
    std::vector<std::string_view> m_open; // names, from the root on

    std::string_view m_name;
    std::vector<XmlAttribute> m_attributes;
    std::string_view m_characters;
    std::deque<std::string> m_normalised; // values that had line breaks or tabs
};
