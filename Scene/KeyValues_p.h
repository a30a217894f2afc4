// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "KeyValuePosition.h"

#include <QString>

/// \file
/// Where a time stands among the key values of an animation.

/// How far a time stands in its cycle of an animation that runs from begin to end (ms): 0 to 1.
/// A negative repeat count repeats without end. Times before the begin give 0; an animation
/// without a positive duration is always at 1.
double cycleProgress(int time, int begin, int end, int repeatCount);

/// The position of a progress (0 to 1) among valueCount key values at equal distances. With no
/// key values at all both indices are 0.
KeyValuePosition keyValuePosition(double progress, int valueCount, bool discrete);

/// The key value that a progress (0 to 1) selects when each of valueCount key values holds for an
/// equal slice of the cycle.
int keyValueSlice(double progress, int valueCount);

/// The number at a fraction of the way between two key values, with three decimals.
QString interpolatedNumber(double from, double to, double fraction);
