// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>

#include <vector>

/// \file
/// Texts that mix numbers with anything else, such as "translate(10, 20)" or "0 0 100 50", read
/// as an alternation of number runs and separator runs. Digits, "." and "-" are number
/// characters, all others are separator characters.

bool isNumberCharacter(QChar character);

/// A character of the other class than the text's last one: appended, it closes the last run.
QChar closingCharacter(const QString &text);

/// The separator runs that a number follows.
std::vector<QString> separatorRuns(const QString &text);

/// The number runs that a separator follows, as numbers. Stops at a run that is no number and
/// then sets ok to false.
std::vector<double> numberRuns(const QString &text, bool *ok);

/// first[0] second[0] first[1] second[1] and so on until both are used up.
QString interleaved(const std::vector<QString> &first, const std::vector<QString> &second);
