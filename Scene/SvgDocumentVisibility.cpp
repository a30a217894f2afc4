// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "AnimatableAttribute.h"
#include "TreeEdit_p.h"
#include "TreeWalk_p.h"

#include <boost/make_shared.hpp>

#include <map>
#include <optional>

// Showing and hiding what stands in "defs" through the "use" elements that draw it.

namespace {

bool meansShown(const QString &visibility)
{
    return visibility == QLatin1String("visible");
}

/// An element inside "defs" that "use" elements show.
struct Definition
{
    QDomElement element;
    QString id;
    std::optional<QString> controlledBy; ///< the id whose visibility becomes this element's own
};

/// The definitions of one "defs" element, by their numbers: from first, before last.
struct DefinitionRange
{
    std::size_t first;
    std::size_t last;
};

/// All definitions that isUsed(id) holds for, in document order, and the part of them that each
/// "defs" element holds.
class Definitions
{
public:
    template <typename IsUsed>
    Definitions(const QDomNode &root, IsUsed isUsed)
    {
        std::vector<OpenDefs> open;
        for (TreeWalk walk(root); !walk.atEnd(); walk.next()) {
            closeDefs(open, walk.depth());
            if (isDefs(walk.node()) && walk.node().isElement()) {
                open.push_back({m_ranges.size(), walk.depth()});
                m_ranges.push_back({m_definitions.size(), m_definitions.size()});
            }
            const QDomElement element = walk.node().toElement();
            if (open.empty() || !element.hasAttribute(QStringLiteral("id")))
                continue;
            const QString id = element.attribute(QStringLiteral("id"));
            if (isUsed(id))
                m_definitions.push_back({element, id, controllingId(walk)});
        }
        closeDefs(open, 0);
    }

    const std::vector<DefinitionRange> &ranges() const { return m_ranges; }
    const Definition &at(std::size_t number) const { return m_definitions[number]; }

private:
    struct OpenDefs
    {
        std::size_t range;
        std::size_t depth;
    };

    void closeDefs(std::vector<OpenDefs> &open, std::size_t depth)
    {
        for (; !open.empty() && open.back().depth >= depth; open.pop_back())
            m_ranges[open.back().range].last = m_definitions.size();
    }

    static std::optional<QString> controllingId(const TreeWalk &walk)
    {
        if (walk.element().hasVisibilityAncestor())
            return std::nullopt;
        return usedId(walk.node().toElement());
    }

    std::vector<Definition> m_definitions;
    std::vector<DefinitionRange> m_ranges;
};

/// What the definitions' own "visibility" attributes make of the elements that show them. A
/// definition that is itself a "use" element passes on what it has just been given.
std::map<QString, bool> shownIds(const Definitions &definitions)
{
    std::map<QString, bool> shown;
    for (const DefinitionRange &range : definitions.ranges()) {
        for (std::size_t number = range.first; number < range.last; ++number) {
            const Definition &definition = definitions.at(number);
            const auto given =
                    definition.controlledBy ? shown.find(*definition.controlledBy) : shown.end();
            if (given != shown.end())
                shown[definition.id] = given->second;
            else if (hasVisibility(definition.element))
                shown[definition.id] =
                        meansShown(definition.element.attribute(QStringLiteral("visibility")));
        }
    }
    return shown;
}

} // namespace

void SvgDocument::detectUseElements()
{
    parseTree();
    forgetElements();
    for (TreeWalk walk(m_dom.documentElement()); !walk.atEnd(); walk.next()) {
        if (const std::optional<QString> id = usedId(walk.node().toElement()))
            m_useElements[*id].push_back(boost::make_shared<SvgElement>(walk.element()));
    }
}

std::vector<boost::shared_ptr<const SvgElement>> SvgDocument::usesOf(const QString &id) const
{
    const auto uses = m_useElements.find(id);
    if (uses == m_useElements.end())
        return {};
    return {uses->second.begin(), uses->second.end()};
}

void SvgDocument::fixDefinitionsVisibility()
{
    parseTree();
    const QDomElement root = m_dom.documentElement();
    const Definitions definitions(root, [this](const QString &id) {
        const auto uses = m_useElements.find(id);
        return uses != m_useElements.end() && !uses->second.empty();
    });
    const std::map<QString, bool> shown = shownIds(definitions);
    for (const auto &entry : shown)
        showUses(m_useElements[entry.first], entry.second, root);
    if (!shown.empty())
        saveToBuffer();
}

bool SvgDocument::updateDefinitionVisibility(const QDomNode &root,
                                             boost::shared_ptr<AnimatableAttribute> attribute,
                                             const QString &value)
{
    if (!showsUsesOf(*attribute))
        return false;
    showUses(m_useElements[attribute->svgId()], value.isEmpty() || meansShown(value), root);
    return true;
}

/// Whether the attribute is the visibility of a definition that is used.
bool SvgDocument::showsUsesOf(const AnimatableAttribute &attribute) const
{
    return attribute.isDefinition() && attribute.attributeName() == QLatin1String("visibility")
            && m_useElements.find(attribute.svgId()) != m_useElements.end();
}

void SvgDocument::showUses(const SvgElements &uses, bool visible, const QDomNode &root)
{
    for (const auto &use : uses) {
        if (!use->hasVisibilityAncestor())
            edit(*use, root, QStringLiteral("visibility"), [visible](const QDomElement &element) {
                return writeVisibility(element, visible);
            });
    }
}
