// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SelectorScan_p.h"

#include <algorithm>

// Selectors stand before a "{". Where braces, comments and texts in quotes may be other than they
// look, all of the style sheet counts as selectors.

namespace {

bool isOneOf(char c, std::string_view characters)
{
    return characters.find(c) != std::string_view::npos;
}

bool isSeparator(char c)
{
    return isOneOf(c, " \t\n\v\f\r>+~,");
}

/// Counts the simple selectors in a list of selectors.
void addSelectors(std::string_view list, SelectorScan *scan)
{
    char combinator = ',';
    bool isAfterSeparator = true;
    for (const char c : list) {
        if (isSeparator(c)) {
            if (isOneOf(c, ">+~,"))
                combinator = c;
            else if (combinator == 0)
                combinator = ' ';
            isAfterSeparator = true;
            continue;
        }
        if (isAfterSeparator && (combinator == '+' || combinator == '~'))
            ++scan->sibling;
        else if (isAfterSeparator && combinator != ',')
            ++scan->ancestor;
        if (isAfterSeparator || isOneOf(c, ".#[:"))
            ++scan->single;
        isAfterSeparator = false;
        combinator = 0;
    }
}

/// After the comment or quoted text that begins here; the same place when nothing ends it on its
/// line or before the end.
std::size_t afterHidden(std::string_view text, std::size_t at)
{
    const bool isComment = text[at] == '/';
    const std::size_t end = isComment ? text.find("*/", at + 2) : text.find(text[at], at + 1);
    if (end == std::string_view::npos)
        return at;
    const std::size_t line = text.substr(at, end - at).find_first_of("\n\r\f");
    return !isComment && line != std::string_view::npos ? at : end + (isComment ? 2 : 1);
}

bool isBlank(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), isSeparator);
}

bool beginsHidden(std::string_view text, std::size_t at)
{
    return text[at] == '"' || text[at] == '\'' || text.substr(at, 2) == "/*";
}

bool isLetterOrDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isFontFace(std::string_view list)
{
    constexpr std::string_view keyword = "@font-face";
    const std::size_t start = std::min(list.find_first_not_of(" \t\n\r\f"), list.size());
    list.remove_prefix(start);
    return list.substr(0, keyword.size()) == keyword && isBlank(list.substr(keyword.size()));
}

/// What does not count of a rule for a font, from after its "{". Whatever breaks a token in two is
/// left to count, so that there can't be more tokens than that.
qint64 countEmbedded(std::string_view rule)
{
    constexpr std::string_view url = "url(";
    rule = rule.substr(0, rule.find('}'));
    if (rule.find('\\') != std::string_view::npos)
        return 0;
    qint64 count = 0;
    for (std::size_t at = 0; at < rule.size(); ++at) {
        const bool isUrl = rule.substr(at, url.size()) == url;
        if (!isUrl && rule[at] != '"' && rule[at] != '\'')
            continue;
        const std::size_t begin = at + (isUrl ? url.size() : 1);
        const std::size_t end = rule.find(isUrl ? ')' : rule[at], begin);
        if (end == std::string_view::npos)
            break;
        const std::string_view content = rule.substr(begin, end - begin);
        count += std::count_if(content.begin(), content.end(), isLetterOrDigit);
        at = end;
    }
    return count;
}

} // namespace

SelectorScan scanSelectors(std::string_view styleSheet)
{
    SelectorScan scan;
    std::size_t start = 0;
    int depth = 0;
    for (std::size_t at = 0; at < styleSheet.size(); ++at) {
        if (beginsHidden(styleSheet, at)) {
            const std::size_t after = afterHidden(styleSheet, at);
            if (after == at
                || styleSheet.substr(at, after - at).find('\\') != std::string_view::npos)
                break;
            if (isBlank(styleSheet.substr(start, at - start)) && styleSheet[at] == '/')
                start = after;
            at = after - 1;
        } else if (styleSheet[at] == '\\') {
            break;
        } else if (isOneOf(styleSheet[at], "{};")) {
            const std::string_view before = styleSheet.substr(start, at - start);
            if (styleSheet[at] == '{') {
                addSelectors(before, &scan);
                if (depth++ == 0 && isFontFace(before))
                    scan.embedded += countEmbedded(styleSheet.substr(at + 1));
            } else if (styleSheet[at] == '}') {
                depth = std::max(depth - 1, 0);
            }
            start = at + 1;
        }
    }
    addSelectors(styleSheet.substr(start), &scan);
    scan.single = std::max<qint64>(scan.single, 1); // one without any is looked through, too
    return scan;
}
