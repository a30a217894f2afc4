// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "Agreement_p.h"
#include "AnimatableAttribute.h"
#include "ElementIndex_p.h"
#include "TreeEdit_p.h"
#include "TreeWalk_p.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <vector>

// Showing and hiding what stands in "defs" through the "use" elements that draw it.

namespace {

bool meansShown(const QString &visibility)
{
    return visibility == QLatin1String("visible");
}

using Uses = std::map<QString, std::vector<boost::shared_ptr<SvgElement>>>;
using Ids = std::vector<QString>;

/// For each element that shows definitions, the ids of those. Normally one; more when the "use"
/// elements were looked for again after a reference had changed.
class ShownIds
{
public:
    ShownIds(const Uses &uses, const ElementIndex &index)
        : m_elements(index.elements()), m_ids(m_elements.size())
    {
        for (const auto &entry : uses) {
            for (const auto &use : entry.second) {
                const int number = index.number(*use);
                if (number != ElementIndex::none && !use->hasVisibilityAncestor())
                    m_ids[std::size_t(number)].push_back(entry.first);
            }
        }
    }

    /// To be asked for every node, in document order.
    Ids of(const QDomNode &node)
    {
        return m_next < m_elements.size() && m_elements[m_next] == node ? m_ids[m_next++] : Ids();
    }

private:
    const std::vector<QDomElement> &m_elements;
    std::vector<Ids> m_ids;
    std::size_t m_next = 0;
};

/// An element inside "defs" that "use" elements show.
struct Definition
{
    QDomElement element;
    QString id;
    Ids shown; ///< by the element itself
};

/// The definitions of one "defs" element, by their numbers: from first, before last.
struct DefinitionRange
{
    std::size_t first;
    std::size_t last;
};

/// All definitions that are used, in document order, and the part of them that each "defs" element
/// holds.
class Definitions
{
public:
    Definitions(const QDomNode &root, const Uses &uses, ShownIds shownIds)
    {
        std::vector<OpenDefs> open;
        for (TreeWalk walk(root); !walk.atEnd(); walk.next()) {
            closeDefs(open, walk.depth());
            if (isDefs(walk.node()) && walk.node().isElement()) {
                open.push_back({m_ranges.size(), walk.depth()});
                m_ranges.push_back({m_definitions.size(), m_definitions.size()});
            }
            const Ids shown = shownIds.of(walk.node());
            const QDomElement element = walk.node().toElement();
            if (open.empty() || !element.hasAttribute(QStringLiteral("id")))
                continue;
            const QString id = element.attribute(QStringLiteral("id"));
            if (uses.find(id) != uses.end())
                m_definitions.push_back({element, id, shown});
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

    std::vector<Definition> m_definitions;
    std::vector<DefinitionRange> m_ranges;
};

/// What is to become of the elements that show a definition.
struct Showing
{
    QString id;
    bool visible;
    std::size_t turn; ///< the later one counts where both concern the same element
};

/// The showings of the definitions' own "visibility" attributes, in the order of their turns. A
/// definition that itself shows another one passes on what it has just been given.
class Showings
{
public:
    explicit Showings(const Definitions &definitions)
    {
        for (const DefinitionRange &range : definitions.ranges()) {
            for (std::size_t number = range.first; number < range.last; ++number)
                add(definitions.at(number));
        }
    }

    std::vector<Showing> inTurn() const
    {
        std::vector<Showing> result;
        for (const auto &entry : m_latest)
            result.push_back(entry.second);
        std::sort(result.begin(), result.end(),
                  [](const Showing &a, const Showing &b) { return a.turn < b.turn; });
        return result;
    }

private:
    void add(const Definition &definition)
    {
        const Showing *const given = latestOf(definition.shown);
        if (!given && !hasVisibility(definition.element))
            return;
        const bool visible = given
                ? given->visible
                : meansShown(definition.element.attribute(QStringLiteral("visibility")));
        m_latest[definition.id] = {definition.id, visible, m_turns++};
    }

    const Showing *latestOf(const Ids &ids) const
    {
        const Showing *latest = nullptr;
        for (const QString &id : ids) {
            const auto found = m_latest.find(id);
            if (found != m_latest.end() && (!latest || found->second.turn > latest->turn))
                latest = &found->second;
        }
        return latest;
    }

    std::map<QString, Showing> m_latest; // by id
    std::size_t m_turns = 0;
};

} // namespace

void SvgDocument::detectUseElements()
{
    m_agreement->parse();
    m_agreement->forgetPlaces();
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
    m_agreement->parse();
    if (m_useElements.empty())
        return;
    const QDomElement root = m_dom.documentElement();
    const ShownIds shownIds(m_useElements, m_agreement->elements());
    const std::vector<Showing> showings =
            Showings(Definitions(root, m_useElements, shownIds)).inTurn();
    for (const Showing &showing : showings)
        showUses(m_useElements[showing.id], showing.visible, root);
    if (!showings.empty())
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
            m_agreement->edit(*use, root, QStringLiteral("visibility"),
                              [visible](const QDomElement &element) {
                                  return writeVisibility(element, visible);
                              });
    }
}
