// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

/// Where a time stands among the key values of an animation: two neighbouring ones, and the weight
/// of the second. What AnimatableAttribute::keyValuesAt() gives to value kinds.
///
/// \ingroup documents
struct KeyValuePosition
{
    int index = 0;         ///< of the key value at or before the time, from 0
    int nextIndex = 0;     ///< of the one at or after it; the same where the time is at a key value
    double fraction = 0.0; ///< the weight of the second, 0 to 1
};
