// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Understood.h"

// The stretch of time that pictures of a title's animations show, and where on it times are.
class Timeline
{
public:
    explicit Timeline(const Understood &title);

    int begin() const { return m_begin; } // ms
    int end() const { return m_end; }     // ms, after the begin

    // How far a time is from the begin to the end, 0 to 1.
    double positionOf(int ms) const;

    // A round distance of times, ms, at most `most` of which fit in.
    int tick(int most) const;

    // Until when an animation runs, ms: the renderer plays all cycles, the document one.
    int runsUntil(const Animation &animation) const;

    // Whether an animation's last value holds afterwards.
    static bool isHeld(const Animation &animation);

    // The begin of the closing part, ms; 0: there is none.
    int conclusion() const { return m_conclusion; }

private:
    int m_begin = 0;
    int m_end = 1;
    int m_conclusion = 0;
};

// "12.4 s", as short as it can be without loss.
QString secondsText(int ms);
