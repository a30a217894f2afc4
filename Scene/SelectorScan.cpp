// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SelectorScan_p.h"

#include <algorithm>
#include <utility>

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

bool isNameCharacter(char c)
{
    return isLetterOrDigit(c) || c == '-' || c == '_' || uchar(c) >= 0x80;
}

/// What the renderer reads of a text in one piece costs as much as its characters, and each piece
/// as much as so many.
constexpr qint64 weightOfPiece = 16;

/// Weighs a text from its start on. Letters and digits don't begin a piece, white space begins one.
class Scale
{
public:
    explicit Scale(std::string_view text) : m_text(text) {}

    /// The weight of all before \a end, which never goes back.
    qint64 upTo(std::size_t end)
    {
        for (; m_at < end; ++m_at) {
            const bool isSpace = isOneOf(m_text[m_at], " \t\n\v\f\r");
            if (!isLetterOrDigit(m_text[m_at]) && !(isSpace && m_isAfterSpace))
                m_weight += weightOfPiece;
            m_isAfterSpace = isSpace;
        }
        return m_weight + qint64(end);
    }

private:
    const std::string_view m_text;
    std::size_t m_at = 0;
    qint64 m_weight = 0;
    bool m_isAfterSpace = false;
};

/// What all elements have that a selector without relations matches: an id or class first, since
/// few elements have them. Nothing where it says more than these and pseudo-classes.
std::string keyOf(std::string_view selector)
{
    const auto isKnown = [](char c) { return isNameCharacter(c) || isOneOf(c, ".#:*"); };
    if (!std::all_of(selector.begin(), selector.end(), isKnown))
        return {};
    selector = selector.substr(0, selector.find(':'));
    const std::size_t mark = selector.find_first_of(".#");
    if (mark == std::string_view::npos)
        return keyOfName(selector);
    const std::string_view part = selector.substr(mark);
    return std::string(part.substr(0, part.find_first_of(".#*", 1)));
}

/// Where there are more than fit into a style sheet that is let in, they are put together.
void addStyling(std::string key, qint64 weight, SelectorScan *scan)
{
    constexpr std::size_t most = 300'000;
    if (scan->stylings.size() < most)
        scan->stylings.push_back({std::move(key), weight});
    else
        scan->stylings.back() = {{}, scan->stylings.back().weight + weight};
}

/// The last of the selectors that a list parts with commas decides what it matches. A rule that
/// begins with "@" matches no element.
void addStylings(std::string_view list, qint64 weight, SelectorScan *scan)
{
    const std::size_t first = list.find_first_not_of(" \t\n\r\f");
    if (first == std::string_view::npos || list[first] == '@')
        return;
    for (std::size_t at = 0; at <= list.size();) {
        const std::size_t comma = std::min(list.find(',', at), list.size());
        std::string_view selector = list.substr(at, comma - at);
        while (!selector.empty() && isSeparator(selector.back()))
            selector.remove_suffix(1);
        const auto last = std::find_if(selector.rbegin(), selector.rend(), isSeparator);
        selector.remove_prefix(std::size_t(selector.rend() - last));
        addStyling(keyOf(selector), weight, scan);
        at = comma + 1;
    }
}

int hexDigitOf(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char small = char(c | 0x20);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

/// Whether the backslash here stands for a character beyond ASCII, which is part of a name.
bool isEscapedLetter(std::string_view text, std::size_t at)
{
    int code = 0;
    for (int digits = 0; digits < 6 && ++at < text.size() && hexDigitOf(text[at]) >= 0; ++digits)
        code = code * 16 + hexDigitOf(text[at]);
    return code >= 0x80 && code <= 0xFFFF;
}

bool hasOtherEscapes(std::string_view text)
{
    for (std::size_t at = text.find('\\'); at != std::string_view::npos;
         at = text.find('\\', at + 1)) {
        if (!isEscapedLetter(text, at))
            return true;
    }
    return false;
}

/// What a text weighs besides, because each escape in it may move all that follows it.
qint64 weightOfEscapes(std::string_view text)
{
    constexpr qint64 most = 1'000'000'000; // enough for any limit
    return std::min(most, std::count(text.begin(), text.end(), '\\') * qint64(text.size()) / 128);
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

/// A rule, the end of which is not yet known.
struct OpenRule
{
    std::string_view selectors;
    qint64 weightBefore;
};

} // namespace

std::string keyOfName(std::string_view name)
{
    const bool isPlain = std::none_of(name.begin(), name.end(),
                                      [](char c) { return uchar(c) >= 0x80 || c == '*'; });
    std::string key(isPlain ? name : std::string_view());
    std::transform(key.begin(), key.end(), key.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return key;
}

SelectorScan scanSelectors(std::string_view styleSheet)
{
    SelectorScan scan;
    Scale scale(styleSheet);
    std::vector<OpenRule> open;
    std::size_t start = 0;
    qint64 weightBefore = 0;
    std::size_t at = 0;
    for (; at < styleSheet.size(); ++at) {
        if (beginsHidden(styleSheet, at)) {
            const std::size_t after = afterHidden(styleSheet, at);
            if (after == at || hasOtherEscapes(styleSheet.substr(at, after - at)))
                break;
            if (isBlank(styleSheet.substr(start, at - start)) && styleSheet[at] == '/') {
                start = after;
                weightBefore = scale.upTo(after);
            }
            at = after - 1;
        } else if (styleSheet[at] == '\\') {
            if (!isEscapedLetter(styleSheet, at))
                break;
        } else if (isOneOf(styleSheet[at], "{};")) {
            const std::string_view before = styleSheet.substr(start, at - start);
            const qint64 weight = scale.upTo(at + 1);
            if (styleSheet[at] == '{') {
                addSelectors(before, &scan);
                if (open.empty() && isFontFace(before))
                    scan.embedded += countEmbedded(styleSheet.substr(at + 1));
                open.push_back({before, weightBefore});
            } else if (styleSheet[at] == '}' && !open.empty()) {
                addStylings(open.back().selectors, weight - open.back().weightBefore, &scan);
                open.pop_back();
            }
            start = at + 1;
            weightBefore = weight;
        }
    }
    const std::string_view rest = styleSheet.substr(start);
    const qint64 selectorsBefore = scan.single;
    addSelectors(rest, &scan);
    const qint64 end = scale.upTo(styleSheet.size());
    if (at < styleSheet.size()) // rules may begin and end anywhere
        addStyling({},
                   (scan.single - selectorsBefore) * (end - weightBefore + weightOfEscapes(rest)),
                   &scan);
    for (const OpenRule &rule : open)
        addStylings(rule.selectors, end - rule.weightBefore, &scan);
    scan.single = std::max<qint64>(scan.single, 1); // one without any is looked through, too
    return scan;
}
