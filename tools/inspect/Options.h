// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>
#include <QStringList>

// What the command line asks for.
struct Options
{
    enum class Task { Inspect, ShowHelp, ShowVersion };

    Task task = Task::Inspect;

    QStringList titles; // file names, or standardInputName(); a single one for a plot or JSON
    QString plot;       // empty: none
    bool json = false;
    bool quiet = false;
    bool strict = false;

    static QString helpText(); // needs the application object

    // Throws a usage Failure for arguments (the program's name first) that make no sense.
    static Options fromArguments(const QStringList &arguments);
};
