// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "AdjustableAttribute.h"
#include "TreeWalk_p.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
#include <utility>

// The attributes whose template values a user may replace.

namespace {

bool isAnimation(const QDomElement &element)
{
    static const std::array<QLatin1String, 4> animations{
            QLatin1String("animate"), QLatin1String("animateMotion"), QLatin1String("animateColor"),
            QLatin1String("animateTransform")};
    return std::find(animations.begin(), animations.end(), element.tagName()) != animations.end();
}

/// False for the values of "fill" and "stroke" that are no colour of the element's own.
bool isOwnColor(const QString &value)
{
    return value != QLatin1String("none") && value != QLatin1String("currentColor")
            && value != QLatin1String("inherit") && !value.startsWith(QLatin1String("url"));
}

bool isFill(const QString &name)
{
    return name == QLatin1String("fill");
}

bool isColor(const QString &name)
{
    return isFill(name) || name == QLatin1String("stroke");
}

bool isAdjustable(const QDomElement &element, const QString &name)
{
    const QDomAttr attribute = QDomElement(element).attributeNode(name);
    if (attribute.isNull() || (isFill(name) && isAnimation(element)))
        return false;
    return !isColor(name) || isOwnColor(attribute.value());
}

boost::shared_ptr<AdjustableAttribute> made(const QDomNode &node, const SvgElement &place,
                                            const QString &name)
{
    return boost::make_shared<AdjustableAttribute>(node, place, name);
}

/// Finds the places of nodes. Nodes asked for in document order are found in one walk; any other
/// one costs a walk of its own.
class PlaceFinder
{
public:
    explicit PlaceFinder(const QDomNode &root) : m_root(root), m_walk(root) {}

    SvgElement place(const QDomNode &node)
    {
        while (!m_walk.atEnd() && m_walk.node() != node)
            m_walk.next();
        return m_walk.atEnd() ? SvgElement(node, m_root) : m_walk.element();
    }

private:
    QDomNode m_root;
    TreeWalk m_walk;
};

} // namespace

/// The same as detectAdjustableAttibute() for each name and all nodes, in one walk.
void SvgDocument::prepareAdjustedAttibutes(const QStringList &names)
{
    parseTree();
    forgetElements();
    std::vector<AdjustableAttributes> attributes(std::size_t(names.size()));
    for (TreeWalk walk(m_dom.documentElement()); !walk.atEnd(); walk.next()) {
        const QDomElement element = walk.node().toElement();
        for (std::size_t i = 0; i < attributes.size(); ++i) {
            if (isAdjustable(element, names.at(int(i))))
                attributes[i].push_back(made(element, walk.element(), names.at(int(i))));
        }
    }
    m_adjustableAttributes.clear();
    for (std::size_t i = 0; i < attributes.size(); ++i)
        m_adjustableAttributes.emplace(names.at(int(i)), std::move(attributes[i]));
}

void SvgDocument::detectAdjustableAttibute(const QString &name, const std::vector<QDomNode> &nodes)
{
    AdjustableAttributes attributes;
    PlaceFinder finder(m_dom.documentElement());
    for (const QDomNode &node : nodes) {
        if (isAdjustable(node.toElement(), name))
            attributes.push_back(made(node, finder.place(node), name));
    }
    forgetElements();
    m_adjustableAttributes.insert(std::make_pair(name, attributes));
}

std::vector<boost::shared_ptr<const AdjustableAttribute>>
SvgDocument::adjustableAttributes(const QString &name) const
{
    const auto entry = m_adjustableAttributes.find(name);
    if (entry == m_adjustableAttributes.end())
        return {};
    return {entry->second.begin(), entry->second.end()};
}

void SvgDocument::adjustAttribute(const QString &name, const QString &value)
{
    const auto entry = m_adjustableAttributes.find(name);
    if (entry == m_adjustableAttributes.end() || entry->second.empty())
        return;
    const QByteArray before = isColor(name) ? QByteArray() : m_data.left(int(size()));
    const QDomElement root = m_dom.documentElement();
    for (const auto &attribute : entry->second)
        writeValue(*attribute, value, root);
    writeTree(QDomNode::EncodingFromDocument);
    if (isColor(name))
        return;

    // Numbers and references can make a title that exceeds the limits, colours cannot.
    m_knownText.clear();
    if (isTextAdmitted())
        return;
    const QString refusal = errorString();
    seek(0);
    write(before);
    parseTree();
    setErrorString(refusal);
}
