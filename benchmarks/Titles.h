// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QDir>
#include <QFile>
#include <QString>

#include <cstdio>
#include <cstdlib>
#include <vector>

// The titles that the benchmarks measure.

struct Title
{
    QString name;
    QString text;

    /// How often it takes to measure something that is slow with this title; 0 when nothing is.
    int iterations() const { return text.size() > 500'000 ? 7 : 0; }
};

/// The text of templates/<name>; ends the program when it cannot be read.
inline QString templateText(const QString &name)
{
    QFile file(QDir(QStringLiteral(TITLESCENE_TEMPLATES)).filePath(name));
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(file.fileName()),
                     qPrintable(file.errorString()));
        std::exit(1);
    }
    return QString::fromUtf8(file.readAll());
}

inline std::vector<Title> templates()
{
    const QDir folder(QStringLiteral(TITLESCENE_TEMPLATES));
    std::vector<Title> titles;
    for (const QString &name : folder.entryList({QStringLiteral("*.svg")}))
        titles.push_back({name, templateText(name)});
    return titles;
}

/// How a generated title is built.
struct Build
{
    int elements;
    int depth = 0;            ///< of the groups around the shapes
    bool hasSyncbase = false; ///< whether the begins of the animations refer to the first one
};

/// Small rectangles all over the picture. A tenth of the elements is animated, for the whole ten
/// seconds of the title.
inline QString generatedText(const Build &build)
{
    QString text = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" "
                                  "viewBox=\"0 0 1920 1080\">");
    text += QStringLiteral("<g>").repeated(build.depth);
    for (int i = 0; i < build.elements; ++i) {
        text += QStringLiteral("<rect x=\"%1\" y=\"%2\" width=\"5\" height=\"5\" fill=\"#%3\"")
                        .arg(i % 1900)
                        .arg(i % 1070)
                        .arg(i % 1000, 6, 10, QLatin1Char('0'));
        if (i % 10 != 0) {
            text += QStringLiteral("/>");
            continue;
        }
        text += QStringLiteral("><animate attributeName=\"x\" from=\"0\" to=\"1900\" dur=\"10s\" "
                               "fill=\"freeze\"");
        if (i == 0)
            text += QStringLiteral(" id=\"first\"");
        else if (build.hasSyncbase)
            text += QStringLiteral(" begin=\"first.begin\"");
        text += QStringLiteral("/></rect>");
    }
    return text + QStringLiteral("</g>").repeated(build.depth) + QStringLiteral("</svg>");
}

inline Title generatedTitle(const Build &build)
{
    QString name = build.depth == 0 ? QStringLiteral("flat") : QStringLiteral("nested");
    if (build.hasSyncbase)
        name += QStringLiteral("_syncbase");
    return {name + QStringLiteral("_%1_elements").arg(build.elements), generatedText(build)};
}

/// Flat ones and such with 200 groups around the shapes, of 200 to 100,000 elements.
inline std::vector<Title> generatedTitles()
{
    std::vector<Title> titles;
    for (const int depth : {0, 200}) {
        for (const int elements : {200, 2000, 20000, 100000})
            titles.push_back(generatedTitle({elements, depth}));
    }
    return titles;
}
