// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>

// What a path has, read from its "d" up to the first thing that is none of a path.
struct PathData
{
    explicit PathData(const QString &d);

    bool hasArcs = false;
    bool hasDots = false; // a part with segments, and all of them without a length
    bool isWhole = false; // nothing in it is none of a path
    QString commands;     // a letter for each segment, those that are not written included
};
