// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "HostileTitles.h"
#include "TitleTest.h"

// What several hostile titles are made of.

inline QString repeated(const char *text, int count)
{
    return QString::fromLatin1(text).repeated(count);
}

inline QString withoutViewBox(const QString &content)
{
    return svgTitle(content).remove(QStringLiteral(" viewBox=\"0 0 100 50\""));
}

inline QString useLevels(int levels, int width)
{
    QString content = QStringLiteral("<defs><g id=\"l0\">%1</g>").arg(redRect());
    for (int i = 1; i <= levels; ++i)
        content += QStringLiteral("<g id=\"l%1\">%2</g>")
                           .arg(i)
                           .arg(QStringLiteral("<use xlink:href=\"#l%1\"/>")
                                        .arg(i - 1)
                                        .repeated(width));
    return content + QStringLiteral("</defs><use xlink:href=\"#l%1\"/>").arg(levels);
}

inline QString gradients(int count)
{
    QString content;
    for (int i = 0; i < count; ++i)
        content += QStringLiteral("<linearGradient id=\"c%1\" xlink:href=\"#c%2\"/>")
                           .arg(i)
                           .arg(i + 1);
    return content + QStringLiteral("<rect width=\"9\" height=\"9\" fill=\"url(#c0)\"/>");
}

inline QString attributes(int count)
{
    QString content;
    for (int i = 0; i < count; ++i)
        content += QStringLiteral(" a%1=\"1\"").arg(i);
    return QStringLiteral("<g%1/>").arg(content);
}

inline QString declared(const QString &declarations, const QString &content)
{
    return QStringLiteral("<!DOCTYPE svg [%1]>").arg(declarations) + svgTitle(content);
}

inline QString entityLevels(int levels)
{
    QString declarations = QStringLiteral("<!ENTITY e0 \"laugh\">");
    for (int i = 1; i < levels; ++i)
        declarations += QStringLiteral("<!ENTITY e%1 \"%2\">")
                                .arg(i)
                                .arg(QStringLiteral("&e%1;").arg(i - 1).repeated(10));
    return declarations;
}

inline QString animated(const char *element, const char *timing)
{
    return QStringLiteral("<rect x=\"10\" y=\"10\" width=\"30\" height=\"20\" fill=\"#ff0000\">"
                          "<%1 %2/></rect>")
            .arg(QLatin1String(element), QLatin1String(timing));
}
