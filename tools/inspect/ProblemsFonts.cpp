// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MissingFonts.h"
#include "ProblemList.h"
#include "Understood.h"

// The fonts of texts, which other machines may have.

namespace {

// Lists have a warning of their own: they are never found.
void findMissingFonts(const Understood &title, ProblemList &problems)
{
    for (const MissingFont &font : missingFonts(title.source())) {
        if (font.cause == MissingFont::Cause::NotInstalled)
            problems.note("missing-font", font.place, font.reason(),
                          QStringLiteral("Install it, or name one that the machine has."));
        else if (font.cause == MissingFont::Cause::NoQuotes)
            problems.warn("missing-font", font.place, font.reason(),
                          QStringLiteral("Put the name in quotes."));
    }
}

} // namespace

const std::vector<Check> &fontChecks()
{
    static const std::vector<Check> checks{findMissingFonts};
    return checks;
}
