// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "SourcePlaces.h"

#include <QString>

#include <vector>

// A font that letters of a title ask for and do not get.
struct MissingFont
{
    enum class Cause {
        NotInstalled,
        List,    // several names, which the renderer takes for that of one font
        NoQuotes // a name of several words in a style sheet, which the renderer takes for a list
    };

    QString name;    // as the author wrote it
    QString standIn; // the font that is drawn instead
    Cause cause = Cause::NotInstalled;
    Place place; // of the name; of the "style" element when it stands in a style sheet

    QString reason() const; // what is wrong, in words
};

// After so many different names no other one is looked up.
constexpr int mostMissingFonts = 100;

// The missing fonts of a title, once for each place that names them. What is neither installed nor
// a font of the title itself is missing, but for the names of CSS that ask for no font in
// particular, such as "sans-serif". Needs a QGuiApplication.
std::vector<MissingFont> missingFonts(const SourcePlaces &source);
