// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TimeValue_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

int saturated(qint64 value)
{
    return static_cast<int>(std::min<qint64>(std::max<qint64>(value, lowest), highest));
}

/// NaN for a text that can't be read.
double millisecondsIn(const QString &text)
{
    QStringRef number = QStringRef(&text).trimmed();
    double factor = 1000.0;
    if (number.endsWith(QLatin1String("ms"))) {
        number.chop(2);
        factor = 1.0;
    } else if (number.endsWith(QLatin1Char('s'))) {
        number.chop(1);
    }
    bool ok = false;
    const double value = number.toDouble(&ok);
    return ok ? factor * value : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

int saturatedInt(double value)
{
    if (std::isnan(value))
        return 0;
    if (value <= lowest)
        return lowest;
    if (value >= highest)
        return highest;
    return static_cast<int>(value);
}

int saturatedSum(int a, int b)
{
    return saturated(qint64(a) + b);
}

int saturatedDifference(int a, int b)
{
    return saturated(qint64(a) - b);
}

int timeFromText(const QString &text)
{
    return saturatedInt(millisecondsIn(text)); // 0 for NaN
}

bool isTimeText(const QString &text)
{
    return !std::isnan(millisecondsIn(text));
}

int BeginReference::offsetTime() const
{
    const int time = timeFromText(offset);
    return isNegative ? saturatedDifference(0, time) : time;
}

BeginReference referenceInBegin(const QString &begin)
{
    BeginReference result;
    const int fromBegin = begin.indexOf(QLatin1String(".begin"));
    result.fromBegin = fromBegin >= 0;
    const int reference = result.fromBegin ? fromBegin : begin.indexOf(QLatin1String(".end"));
    result.id = begin.left(std::max(reference, 0));
    if (result.id.isEmpty())
        return result;
    const int plus = begin.indexOf(QLatin1Char('+'));
    result.isNegative = plus < 0;
    const int sign = result.isNegative ? begin.indexOf(QLatin1Char('-')) : plus;
    if (sign >= 0)
        result.offset = begin.mid(sign + 1);
    return result;
}
