// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "SourcePlaces.h"

#include <QString>

#include <vector>

class Understood;

// Something in a title that a person should know before using it.
struct Problem
{
    enum class Severity {
        Note,   // plays, but is easily lost or may look different
        Warning // does not play as a browser would play it
    };

    Severity severity = Severity::Warning;
    QString code; // names the kind of the problem
    Place place;
    QString reason;
    QString remedy;
};

QString nameOf(Problem::Severity severity);

// All problems of a title, in the order of their places.
std::vector<Problem> problemsOf(const Understood &title);

int countOf(Problem::Severity severity, const std::vector<Problem> &problems);
