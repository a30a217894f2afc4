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
    static constexpr int none = -1;

    /// Finds all \a places below \a root.
    ElementIndex(const QDomNode &root, std::vector<const SvgElement *> places);

    /// The number of the element at a place that was given to the constructor; none when the tree
    /// has no element there.
    int number(const SvgElement &place) const { return m_numbers.value(&place, none); }

    /// All elements that were found, each once, in document order: number 0 and so on.
    const std::vector<QDomElement> &elements() const { return m_elements; }

private:
    QHash<const SvgElement *, int> m_numbers;
    std::vector<QDomElement> m_elements;
};
