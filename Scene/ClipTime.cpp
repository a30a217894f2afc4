// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ClipTime_p.h"

#include "TimeValue_p.h"

#include <algorithm>

namespace {

constexpr int shortestHold = 1000; // ms

} // namespace

int documentTime(const ClipTiming &timing, int clipTime)
{
    const int conclusion = saturatedInt(timing.conclusionDuration / timing.speed);
    const int main =
            saturatedDifference(saturatedInt(timing.documentDuration / timing.speed), conclusion);
    const int conclusionStart = std::max(saturatedDifference(timing.clipDuration, conclusion),
                                         saturatedSum(main, shortestHold));
    int itemTime = std::min(clipTime, main);
    if (clipTime > conclusionStart)
        itemTime = saturatedSum(main, saturatedDifference(clipTime, conclusionStart));
    return saturatedInt(itemTime * timing.speed);
}
