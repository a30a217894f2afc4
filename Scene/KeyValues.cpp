// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "KeyValues_p.h"

#include "TimeValue_p.h"

#include <algorithm>
#include <cmath>

namespace {

int boundedIndex(double position, int valueCount)
{
    return std::max(0, std::min(saturatedInt(position), valueCount - 1));
}

} // namespace

double cycleProgress(int time, int begin, int end, int repeatCount)
{
    const int duration = saturatedDifference(end, begin);
    if (duration <= 0)
        return 1.0;
    double progress = double(saturatedDifference(time, begin)) / double(duration);
    if (progress < 0.0)
        return 0.0;
    if (repeatCount >= 0 && progress > repeatCount)
        progress = repeatCount;
    // Exactly 1.0 stays: the last key value is reached at the end of the first cycle.
    if (progress > 1.0)
        progress -= std::trunc(progress);
    return progress;
}

KeyValuePosition keyValuePosition(double progress, int valueCount, bool discrete)
{
    const double position = double(valueCount - 1) * progress;
    KeyValuePosition result;
    result.index = boundedIndex(std::floor(position), valueCount);
    result.nextIndex = boundedIndex(std::ceil(position), valueCount);
    result.fraction = position > 1.0 ? position - std::trunc(position) : position;
    if (discrete)
        result.fraction = result.fraction > 0.5 ? 1.0 : 0.0;
    return result;
}

int keyValueSlice(double progress, int valueCount)
{
    return boundedIndex(std::floor(valueCount * progress), valueCount);
}

QString interpolatedNumber(double from, double to, double fraction)
{
    return QString::number(from + (to - from) * fraction, 'f', 3);
}
