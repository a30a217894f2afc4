// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "StyleSheets.h"

#include "SourcePlaces.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

QString withoutComments(const QString &text)
{
    QString result;
    int kept = 0;
    int start = 0;
    while ((start = text.indexOf(QLatin1String("/*"), kept)) >= 0) {
        result += text.midRef(kept, start - kept);
        result += QLatin1Char(' ');
        const int end = text.indexOf(QLatin1String("*/"), start + 2);
        kept = end < 0 ? text.size() : end + 2;
    }
    return result + text.midRef(kept);
}

// After the block that begins at "{"; the text's end when it is not closed.
int afterBlock(const QString &text, int open)
{
    int depth = 0;
    for (int i = open; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('{'))
            ++depth;
        else if (text.at(i) == QLatin1Char('}') && --depth == 0)
            return i + 1;
    }
    return text.size();
}

// The head of a rule stands before its block, that of a statement before its ";".
bool endsHead(QChar c)
{
    return c == QLatin1Char('{') || c == QLatin1Char(';');
}

QStringList trimmedParts(const QString &text, QChar separator)
{
    QStringList parts;
    for (const QString &part : text.split(separator)) {
        if (!part.trimmed().isEmpty())
            parts += part.trimmed();
    }
    return parts;
}

} // namespace

std::vector<StyleDeclaration> declarationsIn(const QString &text)
{
    static const QRegularExpression important(QStringLiteral("\\s*!\\s*important$"));
    std::vector<StyleDeclaration> declarations;
    for (const QString &part : trimmedParts(text, QLatin1Char(';'))) {
        const int colon = part.indexOf(QLatin1Char(':'));
        if (colon <= 0)
            continue;
        StyleDeclaration declaration{part.left(colon).trimmed(), part.mid(colon + 1).trimmed()};
        const QString value = declaration.value;
        declaration.value.remove(important);
        declaration.isImportant = declaration.value != value;
        declarations.push_back(declaration);
    }
    return declarations;
}

StyleRules::StyleRules(const QString &styleSheet)
{
    static const QRegularExpression nameOfAtRule(QStringLiteral("^@[\\w-]+"));
    const QString text = withoutComments(styleSheet);
    int at = 0;
    while (at < text.size()) {
        const auto found = std::find_if(text.begin() + at, text.end(), endsHead);
        const int headEnd = int(found - text.begin());
        const bool hasBlock = found != text.end() && *found == QLatin1Char('{');
        const QString head = text.mid(at, headEnd - at).trimmed();
        const int end = hasBlock ? afterBlock(text, headEnd) : headEnd + 1;
        if (head.startsWith(QLatin1Char('@')))
            m_atRules += nameOfAtRule.match(head).captured();
        else if (hasBlock)
            m_rules.push_back({trimmedParts(head, QLatin1Char(',')),
                               declarationsIn(text.mid(headEnd + 1, end - headEnd - 2))});
        at = end;
    }
}

QStringList classesOf(const SourceElement &element)
{
    QStringList classes =
            trimmedParts(element.value(QStringLiteral("class")).simplified(), QLatin1Char(' '));
    classes.removeDuplicates();
    return classes;
}

std::optional<SimpleSelector> simpleSelector(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^(\\*|[\\w-]*)((?:[.#][\\w-]+)*)$"));
    static const QRegularExpression mark(QStringLiteral("[.#][\\w-]+"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch() || text.isEmpty())
        return std::nullopt;
    SimpleSelector selector;
    if (match.captured(1) != QLatin1String("*"))
        selector.type = match.captured(1);
    auto marks = mark.globalMatch(match.captured(2));
    while (marks.hasNext()) {
        const QString name = marks.next().captured();
        if (name.at(0) == QLatin1Char('#'))
            selector.id = name.mid(1);
        else
            selector.classes += name.mid(1);
    }
    return selector;
}

bool SimpleSelector::fits(const SourceElement &element, const QStringList &classesOfElement) const
{
    if (!type.isEmpty() && type != element.name)
        return false;
    if (!id.isEmpty() && id != element.value(QStringLiteral("id")))
        return false;
    return std::all_of(classes.begin(), classes.end(),
                       [&](const QString &name) { return classesOfElement.contains(name); });
}
