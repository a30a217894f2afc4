// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

/// \file
/// Holding an animation that the renderer plays still while it draws.

/// The numbers by which the renderer plays one animation: progress is
/// (elapsed - from) / runningTime, and stops at repeatCount unless that is negative.
struct RendererTiming
{
    double from = 0.0;        ///< begin, ms
    double runningTime = 0.0; ///< one simple duration, ms
    double repeatCount = 0.0;
};

/// What the renderer does with an animation after its last repetition.
enum class AfterEnd { ShowsNothing, ShowsEnd };

/// The timing that makes the renderer show, whatever its clock says while it draws, what the given
/// timing shows at elapsed (ms). An animation whose progress the renderer could not place among
/// its key values has not begun for good.
RendererTiming heldTiming(const RendererTiming &timing, AfterEnd afterEnd, int elapsed);

/// A timing under which an animation never begins.
RendererTiming neverBegun();
