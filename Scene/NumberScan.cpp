// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "NumberScan_p.h"

#include "AdmissionLimits_p.h"

#include <QByteArray>

#include <algorithm>

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isExponentSign(char c)
{
    return c == 'e' || c == 'E';
}

bool isSign(char c)
{
    return c == '-' || c == '+';
}

bool mayBelongToReference(char c)
{
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || uchar(c) >= 0x80;
    return isLetter || isDigit(c) || c == '-' || c == '_' || c == '.';
}

/// Reads one number from its first digit or point on; at ends after it.
bool isTooLargeNumber(const char *&at, const char *end)
{
    constexpr int harmlessDigits = 7; // 9,999,999
    const char *const start = at;
    while (at != end && isDigit(*at))
        ++at;
    bool isHarmless = at - start <= harmlessDigits;
    if (at != end && *at == '.') {
        ++at;
        while (at != end && isDigit(*at))
            ++at;
    }
    if (at != end && isExponentSign(*at)) {
        const char *exponent = at + 1;
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
    const double value = QByteArray(start, int(at - start)).toDouble(&ok);
    const bool isUnderflow = ok || value == 0.0;
    return !isUnderflow || value > double(AdmissionLimits::magnitude.most);
}

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

std::string_view trimmed(std::string_view text)
{
    constexpr const char *spaces = " \t\n\v\f\r";
    text.remove_prefix(std::min(text.find_first_not_of(spaces), text.size()));
    return text.substr(0, text.find_last_not_of(spaces) + 1);
}

/// Any property may have a name that is not written plainly.
bool isHidden(std::string_view name)
{
    return contains(name, "\\") || contains(name, "/*");
}

bool concernsLengths(std::string_view name)
{
    return contains(name, "stroke-") || contains(name, "font-size") || trimmed(name) == "font"
            || trimmed(name) == "transform" || isHidden(name);
}

bool concernsDashes(std::string_view name)
{
    return contains(name, "dash") || isHidden(name);
}

bool endsDeclaration(char c)
{
    return c == ';' || c == '{' || c == '}';
}

void addDeclaration(std::string_view declaration, StyleScan *scan)
{
    const std::size_t colon = declaration.find(':');
    if (colon == std::string_view::npos)
        return;
    const std::string_view name = declaration.substr(0, colon);
    const NumberScan numbers = scanNumbers(declaration.substr(colon + 1));
    if (concernsDashes(name))
        scan->dashes = std::max(scan->dashes, numbers.count);
    scan->isTooLarge = scan->isTooLarge || (concernsLengths(name) && numbers.isTooLarge);
}

} // namespace

NumberScan scanNumbers(std::string_view text)
{
    NumberScan scan;
    const char *at = text.data();
    const char *const end = at + text.size();
    while (at != end) {
        if (isDigit(*at) || *at == '.') {
            ++scan.count;
            scan.isTooLarge = isTooLargeNumber(at, end) || scan.isTooLarge;
        } else if (*at == '#') {
            ++at;
            while (at != end && mayBelongToReference(*at))
                ++at;
        } else {
            ++at;
        }
    }
    return scan;
}

StyleScan scanStyle(std::string_view declarations)
{
    StyleScan scan;
    for (std::string_view rest = declarations; !rest.empty();) {
        const auto end = std::find_if(rest.begin(), rest.end(), endsDeclaration);
        const auto length = std::size_t(end - rest.begin());
        addDeclaration(rest.substr(0, length), &scan);
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    return scan;
}
