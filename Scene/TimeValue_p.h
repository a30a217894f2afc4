// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>

/// \file
/// Document times: whole milliseconds in an int, computed so that nothing overflows.

/// The double as an int: truncated towards zero, saturated at int's limits, 0 for NaN.
int saturatedInt(double value);

/// a + b, saturated at int's limits.
int saturatedSum(int a, int b);

/// a - b, saturated at int's limits.
int saturatedDifference(int a, int b);

/// The milliseconds that a time text such as "2", "1.5s" or "250ms" stands for; 0 when it can't
/// be read.
int timeFromText(const QString &text);

/// Whether a time text can be read.
bool isTimeText(const QString &text);

/// A begin that refers to another animation, such as "intro.end+0.5s".
struct BeginReference
{
    QString id;             ///< of the other animation; empty for a begin that refers to none
    bool fromBegin = false; ///< from that animation's begin, else from its end
    QString offset;         ///< the time text after the first sign, wherever that stands
    bool isNegative = false;

    int offsetTime() const; ///< ms
};

/// The reference in a begin without white space around it.
BeginReference referenceInBegin(const QString &begin);
