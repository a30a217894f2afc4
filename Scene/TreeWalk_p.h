// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "SvgElement.h"

#include <QDomNode>

#include <vector>

/// A walk over a node and all that is below it, in pre-order, that knows the place of the current
/// node at every step. Visiting n nodes takes time proportional to n, however deep or flat the
/// tree is; asking for a place takes time proportional to its depth.
class TreeWalk
{
public:
    explicit TreeWalk(const QDomNode &root);

    bool atEnd() const { return m_node.isNull(); }
    void next();

    const QDomNode &node() const { return m_node; }
    /// 0 for the root of the walk.
    std::size_t depth() const { return m_levels.size(); }

    /// The current node as an element remembered by its place.
    SvgElement element() const;
    /// The same for the current node's parent, which has to be at or below the root of the walk.
    SvgElement parentElement() const;

private:
    struct Level
    {
        int index;
        bool hasVisibilityAncestor;
        bool isDefinition;
    };

    SvgElement elementAt(const QDomNode &node, std::size_t depth) const;

    QDomNode m_node;
    std::vector<Level> m_levels; // of the nodes from below the root down to the current one
};
