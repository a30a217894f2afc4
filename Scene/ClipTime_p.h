// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

/// \file
/// How the time of a clip becomes the time of the title shown on it.

/// What a title item knows of its clip and its title; times in ms.
struct ClipTiming
{
    int clipDuration = 0;
    int documentDuration = 0;
    int conclusionDuration = 0; ///< the closing part of the document
    double speed = 1.0;         ///< document time for each unit of clip time
};

/// The document time to show at a time of the clip. The title plays up to its closing part, holds
/// for at least a second, and plays its closing part so that it ends with the clip; a clip too
/// short for that is cut off.
int documentTime(const ClipTiming &timing, int clipTime);
