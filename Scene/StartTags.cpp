// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "StartTags_p.h"

#include "TreeText_p.h"
#include "TreeWalk_p.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

bool startsWith(const char *text, const char *end, const char *start)
{
    const auto length = std::ptrdiff_t(std::strlen(start));
    return end - text >= length && std::equal(start, start + length, text);
}

/// Goes from start tag to start tag through a well-formed text.
class TagScanner
{
public:
    explicit TagScanner(const QByteArray &text)
        : m_begin(text.constData()), m_at(m_begin), m_end(m_begin + text.size())
    {
    }

    /// Moves on to the next start tag; false when there is none.
    bool next()
    {
        while (true) {
            m_at = std::find(m_at, m_end, '<');
            if (m_at == m_end)
                return false;
            if (startsWith(m_at, m_end, "<!--"))
                skipTo("-->");
            else if (startsWith(m_at, m_end, "<![CDATA["))
                skipTo("]]>");
            else if (startsWith(m_at, m_end, "<?"))
                skipTo("?>");
            else if (startsWith(m_at, m_end, "</"))
                skipTo(">");
            else
                break;
        }
        readTag();
        return true;
    }

    /// After the name of the start tag.
    int attributesBegin() const { return int(m_attributes - m_begin); }
    /// At the ">" or "/>" of the start tag.
    int attributesEnd() const { return int(m_at - m_begin); }

private:
    void skipTo(const char *closing)
    {
        m_at = std::search(m_at, m_end, closing, closing + std::strlen(closing));
    }

    void readTag()
    {
        m_attributes =
                std::find_if(m_at, m_end, [](char c) { return c == ' ' || c == '/' || c == '>'; });
        m_at = m_attributes;
        while (m_at != m_end && *m_at != '>' && *m_at != '/') {
            // After a name there is a value in double quotes.
            m_at = std::find_if(m_at, m_end,
                                [](char c) { return c == '"' || c == '>' || c == '/'; });
            if (m_at != m_end && *m_at == '"') {
                m_at = std::find(m_at + 1, m_end, '"');
                m_at += m_at != m_end;
            }
        }
    }

    const char *m_begin;
    const char *m_at;
    const char *m_end;
    const char *m_attributes = nullptr;
};

/// The part of a text that is to be replaced, and what replaces it.
struct Replacement
{
    int begin;
    int end;
    QByteArray text;
};

/// Where an attribute with its value stands in a piece of text that holds attributes as a save
/// writes them. An empty range at the end when it is not there.
Replacement attributeRange(const QByteArray &text, int begin, int end, const QByteArray &name)
{
    const char *const first = text.constData() + begin;
    const char *const last = text.constData() + end;
    for (const char *at = first; at != last;) {
        const char *const nameBegin = std::find_if_not(at, last, [](char c) { return c == ' '; });
        const char *const nameEnd = std::find(nameBegin, last, '=');
        const char *const opening = std::find(nameEnd, last, '"');
        if (opening == last)
            break;
        const char *const closing = std::find(opening + 1, last, '"');
        at = closing == last ? last : closing + 1;
        if (std::equal(nameBegin, nameEnd, name.begin(), name.end()))
            return {begin + int(nameBegin - first), begin + int(at - first), {}};
    }
    return {end, end, {}};
}

} // namespace

StartTags::StartTags(const QByteArray &savedText, const QDomNode &root,
                     const std::vector<QDomElement> &elements)
{
    m_attributes.reserve(elements.size());
    TagScanner tags(savedText);
    auto wanted = elements.begin();
    for (TreeWalk walk(root); !walk.atEnd() && wanted != elements.end(); walk.next()) {
        if (!walk.node().isElement() || !tags.next())
            continue;
        if (walk.node() == *wanted) {
            m_attributes.push_back(
                    {tags.attributesBegin(), tags.attributesEnd(), Change::None, {}});
            ++wanted;
        }
    }
}

void StartTags::noteValueChange(int number, const QString &attributeName)
{
    Attributes &attributes = m_attributes[std::size_t(number)];
    const bool isOnlyOne = attributes.change == Change::None
            || (attributes.change == Change::OneValue && attributes.changedName == attributeName);
    attributes.change = isOnlyOne ? Change::OneValue : Change::Any;
    attributes.changedName = attributeName;
    m_hasChanges = true;
}

void StartTags::noteChange(int number)
{
    m_attributes[std::size_t(number)].change = Change::Any;
    m_hasChanges = true;
}

const QByteArray &StartTags::rewritten(const QByteArray &text,
                                       const std::vector<QDomElement> &elements)
{
    QString written;
    const auto replacementOf = [&](const Attributes &attributes, QDomElement element) {
        written.resize(0);
        Replacement replacement{attributes.begin, attributes.end, {}};
        if (attributes.change == Change::Any) {
            appendAttributes(element, &written);
        } else {
            replacement = attributeRange(text, attributes.begin, attributes.end,
                                         attributes.changedName.toUtf8());
            appendAttribute(element.attributeNode(attributes.changedName), &written);
        }
        replacement.text = written.toUtf8();
        return replacement;
    };

    m_text.reserve(text.size());
    m_text.resize(0);
    int copied = 0;
    int shift = 0;
    for (std::size_t number = 0; number < m_attributes.size(); ++number) {
        Attributes &attributes = m_attributes[number];
        const int begin = attributes.begin + shift;
        if (attributes.change != Change::None) {
            const Replacement replacement = replacementOf(attributes, elements[number]);
            m_text.append(text.constData() + copied, replacement.begin - copied);
            m_text += replacement.text;
            copied = replacement.end;
            shift = m_text.size() - copied;
            attributes.change = Change::None;
        }
        attributes.begin = begin;
        attributes.end += shift;
    }
    m_text.append(text.constData() + copied, text.size() - copied);
    m_hasChanges = false;
    return m_text;
}
