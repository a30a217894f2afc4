// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeWalk_p.h"

#include "TreeEdit_p.h"

#include <utility>

TreeWalk::TreeWalk(const QDomNode &root) : m_node(root) {}

void TreeWalk::next()
{
    const QDomNode child = m_node.firstChild();
    if (!child.isNull()) {
        const bool inHidden = !m_levels.empty() && m_levels.back().hasVisibilityAncestor;
        const bool inDefs = !m_levels.empty() && m_levels.back().isDefinition;
        m_levels.push_back({0, inHidden || hasVisibility(m_node), inDefs || isDefs(m_node)});
        m_node = child;
        return;
    }
    while (!m_levels.empty()) {
        const QDomNode sibling = m_node.nextSibling();
        if (!sibling.isNull()) {
            ++m_levels.back().index;
            m_node = sibling;
            return;
        }
        m_node = m_node.parentNode();
        m_levels.pop_back();
    }
    m_node.clear();
}

SvgElement TreeWalk::element() const
{
    return elementAt(m_node, depth());
}

SvgElement TreeWalk::parentElement() const
{
    return elementAt(m_node.parentNode(), depth() - 1);
}

SvgElement TreeWalk::elementAt(const QDomNode &node, std::size_t depth) const
{
    std::vector<int> location;
    location.reserve(depth);
    for (std::size_t i = 0; i < depth; ++i)
        location.push_back(m_levels[i].index);
    const bool below = depth > 0;
    return SvgElement(node, std::move(location), below && m_levels[depth - 1].hasVisibilityAncestor,
                      below && m_levels[depth - 1].isDefinition);
}
