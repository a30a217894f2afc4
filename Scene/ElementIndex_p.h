// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QDomElement>
#include <QHash>

#include <vector>

class SvgElement;

/// The elements of one tree that a set of places leads to, found in one walk and remembered, so
/// that writing many attributes does not walk to each element anew.
///
/// The index knows its places by address: they have to stay where they are as long as it is used.
class ElementIndex
{
public:
    /// Finds all \a places below \a root.
    ElementIndex(const QDomNode &root, std::vector<const SvgElement *> places);

    /// The element at a place that was given to the constructor; null when the tree has none
    /// there.
    QDomElement element(const SvgElement &place) const { return m_elements.value(&place); }

private:
    QHash<const SvgElement *, QDomElement> m_elements;
};
