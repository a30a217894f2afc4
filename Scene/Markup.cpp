// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Markup_p.h"

#include "AdmissionLimits_p.h"
#include "MarkupScanner_p.h"

#include <algorithm>
#include <array>
#include <cstring>

// Markup in bytes of UTF-8, for what has to be known before a reader may see the text, and for
// changes after which all other bytes are the same.

namespace {

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/// Whether nothing but a general entity can be meant: outside of quotes there are only names.
bool isEntity(std::string_view declaration)
{
    constexpr std::string_view opening = "<!ENTITY";
    if (!startsWith(declaration, opening))
        return false;
    char quote = 0;
    for (const char c : declaration.substr(opening.size())) {
        if (quote != 0)
            quote = c == quote ? 0 : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (std::strchr("%&<[]", c))
            return false;
    }
    return true;
}

bool isBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\n\r") == std::string_view::npos;
}

void scanSubset(std::string_view subset, DocumentTypeScan *scan)
{
    MarkupScanner part(subset, MarkupScanner::Place::DocumentType);
    std::size_t end = 0;
    while (part.next()) {
        const bool isDeclaration = part.kind() == MarkupScanner::Kind::Declaration;
        const bool isHarmless = isDeclaration ? isEntity(part.piece())
                                              : part.kind() == MarkupScanner::Kind::Comment
                        || part.kind() == MarkupScanner::Kind::Instruction;
        scan->entities += isDeclaration ? 1 : 0;
        const auto begin = std::size_t(part.begin());
        if (!isHarmless || !isBlank(subset.substr(end, begin - end)))
            scan->declaresMore = true;
        end = std::size_t(part.end());
    }
    if (!isBlank(subset.substr(end)))
        scan->declaresMore = true;
}

} // namespace

int lineOfTooManyAttributes(const QByteArray &text)
{
    // An attribute has at least a space, a name, "=" and two quotes.
    constexpr int shortest = 5;
    const qint64 suspect = shortest * AdmissionLimits::attributes.most;
    MarkupScanner markup(view(text));
    while (markup.next()) {
        if (markup.kind() != MarkupScanner::Kind::StartTag
            || markup.end() - markup.begin() <= suspect)
            continue;
        qint64 count = 0;
        for (AttributeScanner attribute(view(text), markup); attribute.next();)
            ++count;
        if (count > AdmissionLimits::attributes.most)
            return 1 + int(std::count(text.begin(), text.begin() + markup.begin(), '\n'));
    }
    return 0;
}

DocumentTypeScan scanDocumentTypes(const QByteArray &text)
{
    DocumentTypeScan scan;
    if (!text.contains("<!DOCTYPE"))
        return scan;
    MarkupScanner markup(view(text));
    while (markup.next()) {
        if (markup.kind() != MarkupScanner::Kind::Declaration)
            continue;
        scan.size += qint64(markup.piece().size());
        scan.isFinished = scan.isFinished && markup.isFinished();
        scanSubset(markup.internalSubset(), &scan);
    }
    return scan;
}

qint64 countEntityReferences(const QByteArray &text)
{
    // Both parsers take these for what they are, whatever is declared.
    constexpr std::array<std::string_view, 6> others{"&#",    "&lt;",   "&gt;",
                                                     "&amp;", "&apos;", "&quot;"};
    const std::string_view all = view(text);
    qint64 count = 0;
    for (std::size_t at = all.find('&'); at != std::string_view::npos; at = all.find('&', at + 1)) {
        const std::string_view rest = all.substr(at);
        count += std::none_of(others.begin(), others.end(),
                              [rest](std::string_view other) { return startsWith(rest, other); });
    }
    return count;
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
    MarkupScanner markup(view(text));
    while (markup.next()) {
        if (markup.kind() == MarkupScanner::Kind::Instruction
            && startsWith(markup.piece(), "<?xml-stylesheet"))
            replace(markup.begin(), markup.end(), QByteArray());
        if (markup.kind() != MarkupScanner::Kind::StartTag)
            continue;
        const bool isMeant = next != elements.end() && *next == element++;
        if (!isMeant)
            continue;
        ++next;
        for (AttributeScanner attribute(view(text), markup); attribute.next();) {
            if (attribute.name() == "xlink:href")
                replace(attribute.valueBegin(), attribute.valueEnd(), transparentPicture());
        }
    }
    return result + text.mid(copied);
}
