// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Markup_p.h"

#include "AdmissionLimits_p.h"

#include <algorithm>
#include <cstring>

// Markup in bytes of UTF-8, for what has to be known before a reader may see the text, and for
// changes after which all other bytes are the same.

namespace {

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isQuote(char c)
{
    return c == '"' || c == '\'';
}

/// The next "<", or -1. Much faster than QByteArray::indexOf().
int nextTag(const QByteArray &text, int from)
{
    if (from >= text.size())
        return -1;
    const char *const start = text.constData();
    const void *const found = std::memchr(start + from, '<', std::size_t(text.size() - from));
    return found ? int(static_cast<const char *>(found) - start) : -1;
}

bool startsAt(const QByteArray &text, int at, const char *token)
{
    return at <= text.size()
            && qstrncmp(text.constData() + at, token, uint(std::strlen(token))) == 0;
}

/// After the next token; the end of the text when there is none.
int after(const QByteArray &text, const char *token, int from)
{
    const int found = text.indexOf(token, from);
    return found < 0 ? text.size() : found + int(std::strlen(token));
}

/// After the quoted text that begins here.
int afterQuoted(const QByteArray &text, int at)
{
    const int end = text.indexOf(text.at(at), at + 1);
    return end < 0 ? text.size() : end + 1;
}

/// After a document type declaration that begins here; subset receives what is in its brackets.
int afterDocumentType(const QByteArray &text, int at, QByteArray *subset)
{
    int bracket = -1;
    while (at < text.size()) {
        const char c = text.at(at);
        if (bracket >= 0 && startsAt(text, at, "<!--")) {
            at = after(text, "-->", at);
        } else if (bracket >= 0 && startsAt(text, at, "<?")) {
            at = after(text, "?>", at);
        } else if (isQuote(c)) {
            at = afterQuoted(text, at);
        } else if (bracket < 0 && c == '[') {
            bracket = at++;
        } else if (bracket >= 0 && c == ']') {
            *subset = text.mid(bracket, at + 1 - bracket);
            return after(text, ">", at);
        } else if (bracket < 0 && c == '>') {
            return at + 1;
        } else {
            ++at;
        }
    }
    if (bracket >= 0)
        *subset = text.mid(bracket);
    return at;
}

/// After what begins with "<" here, if that is no start tag; otherwise the same place.
int afterOtherMarkup(const QByteArray &text, int at)
{
    QByteArray subset;
    const char kind = text.at(std::min(at + 1, text.size() - 1));
    if (kind != '!' && kind != '?' && kind != '/')
        return at;
    if (startsAt(text, at, "<!--"))
        return after(text, "-->", at + 4);
    if (startsAt(text, at, "<![CDATA["))
        return after(text, "]]>", at);
    if (startsAt(text, at, "<!"))
        return afterDocumentType(text, at, &subset);
    if (startsAt(text, at, "<?"))
        return after(text, "?>", at);
    if (startsAt(text, at, "</"))
        return after(text, ">", at);
    return at;
}

/// After the start tag that begins here. Visits each attribute: where its name begins and ends,
/// where its value begins and ends.
template <typename Visit>
int afterStartTag(const QByteArray &text, int at, Visit visit)
{
    int name = -1;
    int nameEnd = -1;
    for (++at; at < text.size() && text.at(at) != '>';) {
        if (isQuote(text.at(at))) {
            const int end = afterQuoted(text, at);
            visit(name, nameEnd, at + 1, end - 1);
            at = end;
            name = nameEnd = -1;
        } else if (isSpace(text.at(at)) || text.at(at) == '=') {
            if (name >= 0 && nameEnd < 0)
                nameEnd = at;
            ++at;
        } else {
            if (name < 0 || nameEnd >= 0) {
                name = at;
                nameEnd = -1;
            }
            ++at;
        }
    }
    return std::min(at + 1, text.size());
}

} // namespace

int lineOfTooManyAttributes(const QByteArray &text)
{
    // A tag holds no second "<", and an attribute has at least a space, a name, "=" and two quotes.
    constexpr int shortest = 5;
    const qint64 suspect = shortest * AdmissionLimits::attributes.most;
    for (int at = nextTag(text, 0); at >= 0;) {
        const int other = afterOtherMarkup(text, at);
        const int next = nextTag(text, std::max(other, at + 1));
        const int end = next < 0 ? text.size() : next;
        if (other == at && end - at > suspect) {
            qint64 count = 0;
            afterStartTag(text, at, [&count](int, int, int, int) { ++count; });
            if (count > AdmissionLimits::attributes.most)
                return 1 + int(std::count(text.begin(), text.begin() + at, '\n'));
        }
        at = next;
    }
    return 0;
}

QByteArray internalSubset(const QByteArray &text)
{
    QByteArray subset;
    for (int at = nextTag(text, 0); at >= 0; at = nextTag(text, at)) {
        if (startsAt(text, at, "<!DOCTYPE")) {
            afterDocumentType(text, at, &subset);
            break;
        }
        const int end = afterOtherMarkup(text, at);
        if (end == at)
            break; // the root
        at = end;
    }
    return subset;
}

QByteArray transparentPicture()
{
    return QByteArrayLiteral(
            "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAA"
            "C0lEQVR42mNgAAIAAAUAAen63NgAAAAASUVORK5CYII=");
}

QByteArray withoutForeignReferences(const QByteArray &text, const std::vector<int> &elements)
{
    QByteArray result;
    int copied = 0;
    const auto replace = [&](int start, int end, const QByteArray &replacement) {
        result += text.mid(copied, start - copied);
        result += replacement;
        copied = end;
    };
    auto next = elements.begin();
    int element = 0;
    for (int at = nextTag(text, 0); at >= 0; at = nextTag(text, at)) {
        const int end = afterOtherMarkup(text, at);
        if (end != at) {
            if (startsAt(text, at, "<?xml-stylesheet"))
                replace(at, end, QByteArray());
            at = end;
            continue;
        }
        const bool isMeant = next != elements.end() && *next == element;
        at = afterStartTag(text, at, [&](int name, int nameEnd, int value, int valueEnd) {
            if (isMeant && name >= 0 && text.mid(name, nameEnd - name) == "xlink:href")
                replace(value, valueEnd, transparentPicture());
        });
        next += isMeant ? 1 : 0;
        ++element;
    }
    return result + text.mid(copied);
}
