// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "NumberScan_p.h"

#include "AdmissionLimits_p.h"

namespace {

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isExponentSign(QChar c)
{
    return c == QLatin1Char('e') || c == QLatin1Char('E');
}

bool isSign(QChar c)
{
    return c == QLatin1Char('-') || c == QLatin1Char('+');
}

bool mayBelongToReference(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('-') || c == QLatin1Char('_')
            || c == QLatin1Char('.');
}

/// Reads one number from its first digit or point on; at ends behind it.
bool isTooLargeNumber(const QChar *&at, const QChar *end)
{
    constexpr int harmlessDigits = 7; // 9,999,999
    const QChar *const start = at;
    while (at != end && isDigit(*at))
        ++at;
    bool isHarmless = at - start <= harmlessDigits;
    if (at != end && *at == QLatin1Char('.')) {
        ++at;
        while (at != end && isDigit(*at))
            ++at;
    }
    if (at != end && isExponentSign(*at)) {
        const QChar *exponent = at + 1;
        if (exponent != end && isSign(*exponent))
            ++exponent;
        if (exponent != end && isDigit(*exponent)) {
            isHarmless = false;
            at = exponent;
            while (at != end && isDigit(*at))
                ++at;
        }
    }
    if (isHarmless)
        return false;
    bool ok = false;
    const double value = QString(start, int(at - start)).toDouble(&ok);
    const bool isUnderflow = ok || value == 0.0;
    return !isUnderflow || value > double(AdmissionLimits::magnitude.most);
}

/// Whether the declaration of a style is about lengths. A name that is not written plainly may be.
bool concernsLengths(const QStringRef &name)
{
    return name.contains(QLatin1String("stroke-")) || name.contains(QLatin1String("font-size"))
            || name.trimmed() == QLatin1String("font") || name.contains(QLatin1Char('\\'))
            || name.contains(QLatin1String("/*"));
}

bool endsDeclaration(QChar c)
{
    return c == QLatin1Char(';') || c == QLatin1Char('{') || c == QLatin1Char('}');
}

bool isTooLargeDeclaration(const QStringRef &declaration)
{
    const int colon = declaration.indexOf(QLatin1Char(':'));
    return colon >= 0 && concernsLengths(declaration.left(colon))
            && scanNumbers(declaration.mid(colon + 1)).isTooLarge;
}

} // namespace

NumberScan scanNumbers(const QStringRef &text)
{
    NumberScan scan;
    const QChar *at = text.begin();
    const QChar *const end = text.end();
    while (at != end) {
        if (isDigit(*at) || *at == QLatin1Char('.')) {
            ++scan.count;
            scan.isTooLarge = isTooLargeNumber(at, end) || scan.isTooLarge;
        } else if (*at == QLatin1Char('#')) {
            ++at;
            while (at != end && mayBelongToReference(*at))
                ++at;
        } else {
            ++at;
        }
    }
    return scan;
}

bool hasTooLargeStyle(const QStringRef &declarations)
{
    int start = 0;
    for (int i = 0; i <= declarations.size(); ++i) {
        if (i < declarations.size() && !endsDeclaration(declarations.at(i)))
            continue;
        if (isTooLargeDeclaration(declarations.mid(start, i - start)))
            return true;
        start = i + 1;
    }
    return false;
}
