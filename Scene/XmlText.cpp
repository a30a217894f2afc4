// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "XmlText_p.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

/// Between ASCII and U+00C0 there are letters, but none for names.
bool isNameStart(QChar c)
{
    return (c.isLetter() && (c < QChar(0x80) || c >= QChar(0xC0))) || c == QLatin1Char('_');
}

bool isNameCharacter(QChar c)
{
    return isNameStart(c) || (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            || c == QLatin1Char('-') || c == QLatin1Char('.');
}

bool isUnprefixedName(const QStringRef &name)
{
    return !name.isEmpty() && isNameStart(name.front())
            && std::all_of(name.begin(), name.end(), isNameCharacter);
}

bool isForbidden(const QString &text, int i)
{
    const QChar c = text.at(i);
    if (c.isHighSurrogate())
        return i + 1 >= text.size() || !text.at(i + 1).isLowSurrogate();
    if (c.isLowSurrogate())
        return i == 0 || !text.at(i - 1).isHighSurrogate();
    if (c < QLatin1Char(' '))
        return c != QLatin1Char('\t') && c != QLatin1Char('\n') && c != QLatin1Char('\r');
    return c == QChar(0xFFFE) || c == QChar(0xFFFF);
}

} // namespace

bool isAttributeName(const QString &name)
{
    const int colon = name.indexOf(QLatin1Char(':'));
    return isUnprefixedName(name.midRef(colon + 1))
            && (colon < 0 || isUnprefixedName(name.leftRef(colon)));
}

QString withoutForbiddenCharacters(const QString &text)
{
    QString kept;
    int start = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (isForbidden(text, i)) {
            kept += text.midRef(start, i - start);
            start = i + 1;
        }
    }
    return start == 0 ? text : kept + text.midRef(start);
}

QByteArray withUtf8Declaration(const QByteArray &text)
{
    static const QByteArray byteOrderMark("\xEF\xBB\xBF");
    const int start = text.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    if (text.mid(start, 5) != "<?xml")
        return text;
    const int end = text.indexOf("?>", start);
    if (end < 0)
        return text;
    static const QRegularExpression encoding(
            QStringLiteral("^<\\?xml\\s(?:.*\\s)?encoding\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')"),
            QRegularExpression::DotMatchesEverythingOption);
    const QString declaration = QString::fromLatin1(text.mid(start, end - start));
    const QRegularExpressionMatch match = encoding.match(declaration);
    if (!match.hasMatch())
        return text;
    const int group = match.lastCapturedIndex();
    if (match.captured(group).compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) == 0)
        return text;
    QByteArray result = text;
    return result.replace(start + match.capturedStart(group), match.capturedLength(group), "UTF-8");
}
