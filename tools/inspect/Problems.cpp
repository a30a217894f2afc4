// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Problems.h"

#include "ProblemList.h"

#include <algorithm>
#include <tuple>

bool ProblemList::isAbout(const SourceElement &element) const
{
    const auto isProblem = [this](const Place &place) {
        return m_places.count({place.line, place.column}) > 0;
    };
    return isProblem(element.place)
            || std::any_of(
                    element.attributes.begin(), element.attributes.end(),
                    [&](const SourceAttribute &attribute) { return isProblem(attribute.place); });
}

std::vector<Problem> ProblemList::inOrder() const
{
    std::vector<Problem> problems = m_problems;
    std::stable_sort(problems.begin(), problems.end(), [](const Problem &a, const Problem &b) {
        return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
    });
    return problems;
}

QString nameOf(Problem::Severity severity)
{
    return severity == Problem::Severity::Note ? QStringLiteral("note") : QStringLiteral("warning");
}

std::vector<Problem> problemsOf(const Understood &title)
{
    ProblemList problems;
    for (const auto &checks :
         {timingChecks(), progressChecks(), repetitionChecks(), valueChecks(), writtenChecks(),
          transformChecks(), styleChecks(), paintChecks(), pathChecks(), textChecks(), fontChecks(),
          drawingChecks(), documentChecks()}) {
        for (const Check check : checks)
            check(title, problems);
    }
    return problems.inOrder();
}

int countOf(Problem::Severity severity, const std::vector<Problem> &problems)
{
    return int(std::count_if(problems.begin(), problems.end(), [severity](const Problem &problem) {
        return problem.severity == severity;
    }));
}
