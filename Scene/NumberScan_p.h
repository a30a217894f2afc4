// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QStringRef>

/// The numbers in an attribute's value, however they are separated.
struct NumberScan
{
    int count = 0;
    bool isTooLarge = false; ///< some number is beyond the magnitude that the renderer can hold
};

/// Passes over colours and references that begin with "#".
NumberScan scanNumbers(const QStringRef &text);

/// Whether declarations of a style hold numbers beyond that magnitude where they would be lengths.
bool hasTooLargeStyle(const QStringRef &declarations);
