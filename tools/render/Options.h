// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "FrameSchedule.h"

#include <QColor>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// What the command line asks for.
struct Options
{
    enum class Task { Render, ShowHelp, ShowVersion };

    Task task = Task::Render;

    QString title;        // a file name, or standardInputName()
    QString outputFolder; // empty: no picture files
    QString contactSheet; // empty: none
    bool raw = false;
    bool quiet = false;
    bool strict = false;
    bool worker = false; // renders a part of another process's run

    FrameRate rate = *FrameRate::fromText(QStringLiteral("25"));
    std::optional<FrameRange> frames;
    std::optional<std::vector<int>> times;

    QSize size; // invalid: the title's own
    QColor background = Qt::transparent;
    QColor color; // invalid: the title's own colours
    int jobs = 1;

    static QString helpText(); // needs the application object

    // Throws a usage Failure for arguments (the program's name first) that make no sense.
    static Options fromArguments(const QStringList &arguments);

    // The arguments of a worker that renders, from a title on its standard input, the pictures
    // that `which` selects (see FrameSchedule::argumentsFor) in the same way as these options.
    QStringList workerArguments(const QStringList &which) const;
};
