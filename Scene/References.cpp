// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "References_p.h"

#include <algorithm>

// Both kinds of references are followed alike: from an element to the links that its content holds,
// and from each of them to the elements that own the id. Every element is worked out once, after
// all that it refers to; a link back into the chain that is being followed counts as nothing, as it
// does for the renderer.

class References::Walk
{
public:
    Walk(const References &references, const Links &links)
        : m_references(references), m_links(links), m_found(references.m_ends.size())
    {
    }

    /// Works out the element and all that it refers to, up to the first excess.
    std::optional<Excess> follow(int element, const AdmissionLimit &depth)
    {
        enter(element);
        while (!m_chain.empty()) {
            Step &step = m_chain.back();
            if (step.link == m_links.size()
                || m_links[step.link].element >= m_references.m_ends[std::size_t(step.element)]) {
                leave();
                continue;
            }
            const Link &link = m_links[step.link];
            const QVector<int> owners = m_references.m_owners.value(link.id);
            if (step.owner == owners.size()) {
                ++step.link;
                step.owner = 0;
                continue;
            }
            const int target = owners.at(step.owner);
            if (found(target).state == Found::State::Unknown) {
                enter(target);
                continue;
            }
            ++step.owner;
            add(target, step.element);
            if (found(step.element).depth > depth.most)
                return Excess{depth, link.line};
            if (found(step.element).drawn > AdmissionLimits::drawnElements.most)
                return Excess{AdmissionLimits::drawnElements, link.line};
        }
        return std::nullopt;
    }

    bool hasRing() const { return m_hasRing; }

private:
    struct Found
    {
        enum class State : quint8 { Unknown, BeingFollowed, Known };
        State state = State::Unknown;
        qint64 drawn = 0;
        qint64 depth = 0;
    };

    struct Step
    {
        int element;
        std::size_t link;
        int owner;
    };

    Found &found(int element) { return m_found[std::size_t(element)]; }

    void enter(int element)
    {
        found(element).state = Found::State::BeingFollowed;
        found(element).drawn = m_references.m_ends[std::size_t(element)] - element;
        const auto first =
                std::lower_bound(m_links.begin(), m_links.end(), element,
                                 [](const Link &link, int e) { return link.element < e; });
        m_chain.push_back({element, std::size_t(first - m_links.begin()), 0});
    }

    void add(int target, int element)
    {
        if (found(target).state == Found::State::BeingFollowed) {
            m_hasRing = true;
            return;
        }
        Found &own = found(element);
        own.drawn += found(target).drawn;
        own.depth = std::max(own.depth, found(target).depth + 1);
    }

    void leave()
    {
        found(m_chain.back().element).state = Found::State::Known;
        m_chain.pop_back();
    }

    const References &m_references;
    const Links &m_links;
    std::vector<Found> m_found;
    std::vector<Step> m_chain;
    bool m_hasRing = false;
};

std::optional<References::Excess> References::excess() const
{
    using namespace AdmissionLimits;
    constexpr int root = 0;
    if (!m_gradients.empty()) {
        if (const std::optional<Excess> excess = Walk(*this, m_gradients).follow(root, gradientDepth))
            return excess;
    }
    if (m_uses.empty())
        return std::nullopt;
    Walk uses(*this, m_uses);
    if (const std::optional<Excess> excess = uses.follow(root, useDepth))
        return excess;
    if (uses.hasRing() && qint64(m_uses.size()) > usesBesideRing.most)
        return Excess{usesBesideRing, m_uses.back().line};
    return std::nullopt;
}
