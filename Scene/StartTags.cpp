// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "StartTags_p.h"

#include "MarkupScanner_p.h"
#include "TreeText_p.h"
#include "TreeWalk_p.h"

namespace {

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
    for (AttributeScanner attribute(view(text), begin, end); attribute.next();) {
        if (attribute.name() == view(name))
            return {attribute.begin(), attribute.end(), {}};
    }
    return {end, end, {}};
}

bool nextStartTag(MarkupScanner *markup)
{
    while (markup->next()) {
        if (markup->kind() == MarkupScanner::Kind::StartTag)
            return true;
    }
    return false;
}

} // namespace

StartTags::StartTags(const QByteArray &savedText, const QDomNode &root,
                     const std::vector<QDomElement> &elements)
{
    m_attributes.reserve(elements.size());
    MarkupScanner markup(view(savedText));
    auto wanted = elements.begin();
    for (TreeWalk walk(root); !walk.atEnd() && wanted != elements.end(); walk.next()) {
        if (!walk.node().isElement() || !nextStartTag(&markup))
            continue;
        if (walk.node() == *wanted) {
            m_attributes.push_back(
                    {markup.attributesBegin(), markup.attributesEnd(), Change::None, {}});
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
