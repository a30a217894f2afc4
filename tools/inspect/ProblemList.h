// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Problems.h"

#include <set>
#include <utility>
#include <vector>

// What the checks add to.
class ProblemList
{
public:
    void warn(const char *code, const Place &place, const QString &reason, const QString &remedy)
    {
        add(Problem::Severity::Warning, code, place, reason, remedy);
    }

    void note(const char *code, const Place &place, const QString &reason, const QString &remedy)
    {
        add(Problem::Severity::Note, code, place, reason, remedy);
    }

    // Whether there is a problem with this element or one of its attributes.
    bool isAbout(const SourceElement &element) const;

    std::vector<Problem> inOrder() const; // of their places

private:
    void add(Problem::Severity severity, const char *code, const Place &place,
             const QString &reason, const QString &remedy)
    {
        m_places.emplace(place.line, place.column);
        m_problems.push_back({severity, QLatin1String(code), place, reason, remedy});
    }

    std::vector<Problem> m_problems;
    std::set<std::pair<int, int>> m_places; // line and column
};

// One look at a title.
using Check = void (*)(const Understood &title, ProblemList &problems);

// The checks, by what they are about, in the order in which they are made.
const std::vector<Check> &timingChecks();
const std::vector<Check> &valueChecks();
const std::vector<Check> &writtenChecks();
const std::vector<Check> &transformChecks();
const std::vector<Check> &progressChecks();
const std::vector<Check> &repetitionChecks();
const std::vector<Check> &drawingChecks();
const std::vector<Check> &styleChecks();
const std::vector<Check> &paintChecks();
const std::vector<Check> &pathChecks();
const std::vector<Check> &textChecks();
const std::vector<Check> &fontChecks();
const std::vector<Check> &documentChecks();
