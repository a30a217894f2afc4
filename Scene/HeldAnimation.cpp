// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "HeldAnimation_p.h"

#include <cmath>
#include <limits>

namespace {

// A power of two, so that a progress times this and divided by it again stays the same to the last
// bit, and so large that no reading of the renderer's clock changes a sum with it.
const double endless = std::ldexp(1.0, 1000);

RendererTiming heldAt(double progress)
{
    if (progress == 0.0)
        return {-endless, std::numeric_limits<double>::infinity(), -1.0};
    return {-progress * endless, endless, -1.0};
}

/// The renderer marks an animation as finished when its progress is beyond the repeat count, and
/// shows the repeat count from then on.
RendererTiming finishedAt(double progress)
{
    return {-2.0 * endless, endless, progress};
}

/// As the renderer does it: exactly 1 is the end of the first cycle.
double withinCycle(double progress)
{
    return progress > 1.0 ? progress - std::trunc(progress) : progress;
}

} // namespace

RendererTiming neverBegun()
{
    return {endless, 1.0, 1.0};
}

RendererTiming heldTiming(const RendererTiming &timing, AfterEnd afterEnd, int elapsed)
{
    if (elapsed < timing.from)
        return neverBegun();
    if (timing.runningTime == 0.0) {
        const bool shown = afterEnd == AfterEnd::ShowsEnd || timing.repeatCount < 0.0;
        return shown ? heldAt(0.0) : neverBegun();
    }
    const double progress = (elapsed - timing.from) / timing.runningTime;
    if (!(progress >= 0.0))
        return neverBegun();
    if (timing.repeatCount >= 0.0 && progress > timing.repeatCount) {
        if (afterEnd == AfterEnd::ShowsNothing)
            return neverBegun();
        return finishedAt(withinCycle(timing.repeatCount));
    }
    return heldAt(withinCycle(progress));
}
