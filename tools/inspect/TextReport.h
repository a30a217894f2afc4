// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>

#include <vector>

struct Problem;
class Understood;

// For a person: what the library understood of a title.
QString factsText(const Understood &title);

// What will not play: two lines for each problem, and a line that counts them.
QString problemsText(const QString &titleName, const std::vector<Problem> &problems);
