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
    return ok ? saturatedInt(factor * value) : 0;
}
