// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <string_view>

/// The numbers in an attribute's value, however they are separated.
struct NumberScan
{
    int count = 0;
    bool isTooLarge = false; ///< some number is beyond the magnitude that the renderer can hold
};

/// Passes over colours and references that begin with "#".
NumberScan scanNumbers(std::string_view text);

/// Whether declarations of a style hold numbers beyond that magnitude where they would be lengths.
bool hasTooLargeStyle(std::string_view declarations);
