// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ElementIndex_p.h"

#include "SvgElement.h"

#include <algorithm>

namespace {

/// Goes from place to place through the tree. Places asked for in lexicographic order make it pass
/// every node at most once.
class Cursor
{
public:
    explicit Cursor(const QDomNode &root) : m_root(root) {}

    QDomNode moveTo(const std::vector<int> &location)
    {
        auto index = location.begin();
        std::size_t depth = 0;
        while (index != location.end() && depth < m_steps.size()
               && m_steps[depth].index == *index) {
            ++index;
            ++depth;
        }
        if (index == location.end()) {
            m_steps.resize(depth);
            return nodeAt(depth);
        }
        // The node where the ways part is reached from its sibling on the old way.
        if (depth < m_steps.size() && m_steps[depth].index < *index) {
            m_steps.resize(depth + 1);
            forward(*index++);
        } else {
            m_steps.resize(depth);
        }
        for (; index != location.end(); ++index) {
            m_steps.push_back({0, nodeAt(m_steps.size()).firstChild()});
            forward(*index);
        }
        return nodeAt(m_steps.size());
    }

private:
    struct Step
    {
        int index;
        QDomNode node;
    };

    QDomNode nodeAt(std::size_t depth) const
    {
        return depth == 0 ? m_root : m_steps[depth - 1].node;
    }

    void forward(int index)
    {
        Step &step = m_steps.back();
        for (; step.index < index && !step.node.isNull(); ++step.index)
            step.node = step.node.nextSibling();
        step.index = index;
    }

    QDomNode m_root;
    std::vector<Step> m_steps;
};

bool standsBefore(const SvgElement *a, const SvgElement *b)
{
    return a->location() < b->location();
}

} // namespace

ElementIndex::ElementIndex(const QDomNode &root, std::vector<const SvgElement *> places)
{
    std::sort(places.begin(), places.end(), standsBefore);
    m_numbers.reserve(int(places.size()));
    Cursor cursor(root);
    for (const SvgElement *place : places) {
        const QDomElement element = cursor.moveTo(place->location()).toElement();
        if (element.isNull())
            continue;
        if (m_elements.empty() || m_elements.back() != element)
            m_elements.push_back(element);
        m_numbers.insert(place, int(m_elements.size()) - 1);
    }
}
