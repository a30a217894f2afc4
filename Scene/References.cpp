// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "References_p.h"

#include <algorithm>

// Both kinds of references are followed alike: from the root to the links that it holds, from each
// of them to the elements that own the id, to the links that those hold, and so on. Every id is
// worked out once, after all that its owners refer to, and the costliest owner counts. A link back
// into the chain that is being followed is a ring and counts as nothing.

namespace {

void add(References::Amount *sum, const References::Amount &more)
{
    sum->elements += more.elements;
    sum->characters += more.characters;
    sum->coordinates += more.coordinates;
}

References::Amount costlier(const References::Amount &a, const References::Amount &b)
{
    return {std::max(a.elements, b.elements), std::max(a.characters, b.characters),
            std::max(a.coordinates, b.coordinates)};
}

} // namespace

class References::Walk
{
public:
    Walk(const References &references, const Links &links)
        : m_references(references), m_links(links), m_found(references.m_owners.size())
    {
    }

    /// Works out the root and all that it refers to, up to the first excess.
    std::optional<Excess> follow(const AdmissionLimit &depth)
    {
        open(rootId, root);
        while (!m_chain.empty()) {
            Step &step = m_chain.back();
            if (isAtEnd(step)) {
                close();
                continue;
            }
            const Link &link = m_links[step.link];
            const Found &target = m_found[std::size_t(link.id)];
            if (target.state == Found::State::Unknown && hasOwner(link.id)) {
                open(link.id, ownersOf(link.id).front());
                continue;
            }
            m_hasRing = m_hasRing || target.state == Found::State::BeingFollowed;
            if (target.state == Found::State::Known) {
                add(&step.drawn, target.drawn);
                step.depth = std::max(step.depth, target.depth + 1);
            }
            ++step.link;
            if (step.depth > depth.most)
                return Excess{depth, link.line};
            if (const auto limit = m_references.exceededBy(step.drawn))
                return Excess{*limit, link.line};
        }
        return std::nullopt;
    }

    bool hasRing() const { return m_hasRing; }

private:
    static constexpr int root = 0;
    static constexpr int rootId = -1; // the root is where it starts, whatever its id

    struct Found
    {
        enum class State : quint8 { Unknown, BeingFollowed, Known };
        State state = State::Unknown;
        Amount drawn;
        qint64 depth = 0;
    };

    /// One owner of an id.
    struct Step
    {
        int id;
        std::size_t owner;
        std::size_t link;
        int end;
        Amount drawn;
        qint64 depth;
    };

    const std::vector<int> &ownersOf(int id) const
    {
        return m_references.m_owners[std::size_t(id)];
    }
    bool hasOwner(int id) const { return !ownersOf(id).empty(); }
    bool isAtEnd(const Step &step) const
    {
        return step.link == m_links.size() || m_links[step.link].element >= step.end;
    }

    Step stepInto(int id, std::size_t owner, int element) const
    {
        const auto first = std::lower_bound(
                m_links.begin(), m_links.end(), element,
                [](const Link &link, int number) { return link.element < number; });
        return {id,
                owner,
                std::size_t(first - m_links.begin()),
                m_references.m_ends[std::size_t(element)],
                m_references.contentOf(element),
                0};
    }

    void open(int id, int element)
    {
        if (id != rootId)
            m_found[std::size_t(id)].state = Found::State::BeingFollowed;
        m_chain.push_back(stepInto(id, 0, element));
    }

    /// Goes on with the next owner of the id, or back to what refers to it.
    void close()
    {
        const Step done = m_chain.back();
        m_chain.pop_back();
        if (done.id == rootId)
            return;
        Found &found = m_found[std::size_t(done.id)];
        found.drawn = costlier(found.drawn, done.drawn);
        found.depth = std::max(found.depth, done.depth);
        const std::size_t next = done.owner + 1;
        if (next < ownersOf(done.id).size())
            m_chain.push_back(stepInto(done.id, next, ownersOf(done.id)[next]));
        else
            found.state = Found::State::Known;
    }

    const References &m_references;
    const Links &m_links;
    std::vector<Found> m_found; // by number of the id
    std::vector<Step> m_chain;
    bool m_hasRing = false;
};

/// What an element and all inside it take, without what they refer to.
References::Amount References::contentOf(int element) const
{
    const auto end = std::size_t(m_ends[std::size_t(element)]);
    const Amount &before = m_before[std::size_t(element)];
    const Amount &after = end < m_before.size() ? m_before[end] : m_total;
    return {after.elements - before.elements, after.characters - before.characters,
            after.coordinates - before.coordinates};
}

std::optional<AdmissionLimit> References::exceededBy(const Amount &drawn) const
{
    using namespace AdmissionLimits;
    if (drawn.elements > drawnElements.most)
        return drawnElements;
    if (drawn.characters > drawnCharacters.most)
        return drawnCharacters;
    if (drawn.coordinates + drawn.characters * m_longestGlyph > drawnCoordinates.most)
        return drawnCoordinates;
    return std::nullopt;
}

std::optional<References::Excess> References::excess(bool hasCanvas) const
{
    using namespace AdmissionLimits;
    if (!m_gradients.empty()) {
        if (const std::optional<Excess> excess = Walk(*this, m_gradients).follow(gradientDepth))
            return excess;
    }
    if (m_uses.empty())
        return std::nullopt;
    Walk uses(*this, m_uses);
    if (const std::optional<Excess> excess = uses.follow(useDepth))
        return excess;
    const AdmissionLimit &besideRing = hasCanvas ? usesBesideRing : usesBesideRingWithoutCanvas;
    if (uses.hasRing() && qint64(m_uses.size()) > besideRing.most)
        return Excess{besideRing, m_uses.back().line};
    return std::nullopt;
}
