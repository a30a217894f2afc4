// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Admission_p.h"

#include "TimeValue_p.h"

#include <QXmlStreamReader>

#include <limits>

namespace {

// Parsing into a tree and saving it recurse by element: about 1.4 KB of stack a level. The deepest
// titles in use have a dozen levels.
constexpr int deepestNesting = 256;

bool isPlayedByRenderer(const QXmlStreamReader &reader)
{
    return reader.name() == QLatin1String("animateTransform")
            || reader.name() == QLatin1String("animateColor");
}

/// The renderer keeps begin and end in an int each.
bool fitsRendererTimes(const QXmlStreamAttributes &attributes)
{
    const int begin = timeFromText(attributes.value(QLatin1String("begin")).toString());
    const int duration = timeFromText(attributes.value(QLatin1String("dur")).toString());
    const qint64 end = qint64(begin) + duration;
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr int lowest = std::numeric_limits<int>::min();
    return begin < highest && begin > lowest && duration < highest && duration > lowest
            && end < highest && end > lowest;
}

QString atLine(const QXmlStreamReader &reader, const QString &reason)
{
    return QStringLiteral("line %1: %2").arg(reader.lineNumber()).arg(reason.simplified());
}

QString readError(const QXmlStreamReader &reader)
{
    return atLine(reader, reader.errorString());
}

} // namespace

QString refusalOf(const QByteArray &text)
{
    if (text.trimmed().isEmpty())
        return QStringLiteral("the document is empty");
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    int depth = 0;
    do {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement) {
            ++depth;
            if (depth > deepestNesting)
                return atLine(reader,
                              QStringLiteral("elements are nested more than %1 deep")
                                      .arg(deepestNesting));
            if (isPlayedByRenderer(reader) && !fitsRendererTimes(reader.attributes()))
                return atLine(reader, QStringLiteral("the times of an animation are out of range"));
        }
        if (reader.hasError())
            return readError(reader);
    } while (depth > 0 || !reader.isEndElement());
    return QString();
}
