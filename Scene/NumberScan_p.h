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

/// What declarations of a style hold.
struct StyleScan
{
    int dashes = 0;          ///< most of any declaration that may be about dashes
    bool isTooLarge = false; ///< some length is beyond that magnitude
};

StyleScan scanStyle(std::string_view declarations);
