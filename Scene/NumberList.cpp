// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "NumberList_p.h"

#include <algorithm>

namespace {

/// Calls visit(run) for every run of the wanted class that a character of the other class closes,
/// until visit returns false.
template <typename Visit>
void visitClosedRuns(const QString &text, bool wantNumbers, Visit visit)
{
    int start = -1;
    for (int i = 0; i < text.size(); ++i) {
        const bool wanted = isNumberCharacter(text.at(i)) == wantNumbers;
        if (wanted && start < 0) {
            start = i;
        } else if (!wanted && start >= 0) {
            if (!visit(text.midRef(start, i - start)))
                return;
            start = -1;
        }
    }
}

} // namespace

bool isNumberCharacter(QChar character)
{
    return character.isDigit() || character == QLatin1Char('.') || character == QLatin1Char('-');
}

QChar closingCharacter(const QString &text)
{
    const bool endsWithNumber = !text.isEmpty() && isNumberCharacter(text.back());
    return QLatin1Char(endsWithNumber ? '#' : '0');
}

std::vector<QString> separatorRuns(const QString &text)
{
    std::vector<QString> separators;
    visitClosedRuns(text, false, [&separators](const QStringRef &run) {
        separators.push_back(run.toString());
        return true;
    });
    return separators;
}

std::vector<double> numberRuns(const QString &text, bool *ok)
{
    std::vector<double> numbers;
    numbers.reserve(6); // those of a matrix
    bool allRead = true;
    visitClosedRuns(text, true, [&numbers, &allRead](const QStringRef &run) {
        const double number = run.toDouble(&allRead);
        if (allRead)
            numbers.push_back(number);
        return allRead;
    });
    *ok = allRead;
    return numbers;
}

QString interleaved(const std::vector<QString> &first, const std::vector<QString> &second)
{
    QString result;
    for (std::size_t i = 0; i < std::max(first.size(), second.size()); ++i) {
        if (i < first.size())
            result += first[i];
        if (i < second.size())
            result += second[i];
    }
    return result;
}
