// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QtGlobal>

#include <string>
#include <string_view>
#include <vector>

/// What the renderer compares with every element: the simple selectors of a style sheet, by how
/// far they make it look around. Never fewer than there are.
struct SelectorScan
{
    qint64 single = 0;   ///< looked at once
    qint64 ancestor = 0; ///< looked for among the elements around
    qint64 sibling = 0;  ///< looked for among the elements before

    /// Letters and digits in quotes and url() of "@font-face", as those of a font that stands in
    /// the text. The renderer reads them once, at the price of other text, and uses none.
    qint64 embedded = 0;

    /// What a selector costs on every element that it matches: the weight of its rule, of which the
    /// renderer reads all declarations anew and copies the list of selectors.
    struct Styling
    {
        std::string key; ///< "#id", ".class" or "name": what it matches has that; empty: anything
        qint64 weight;
    };
    std::vector<Styling> stylings;
};

SelectorScan scanSelectors(std::string_view styleSheet);

/// The name of an element as the key of a selector.
std::string keyOfName(std::string_view name);
