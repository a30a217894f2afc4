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
