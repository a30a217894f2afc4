// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QString>

// What a worker process writes to the process that started it: a line for each message, whose
// first letter is the kind.
struct WorkerMessage
{
    enum Kind : char { PictureDone = 'p', Warned = 'w', Failed = 'f' };

    Kind kind;
    QString text; // without line breaks

    QByteArray toLine() const { return kind + text.toUtf8() + '\n'; }

    static WorkerMessage fromLine(const QByteArray &line) // with or without its end
    {
        const int end = line.endsWith('\n') ? line.size() - 1 : line.size();
        return {Kind(line.at(0)), QString::fromUtf8(line.mid(1, end - 1))};
    }
};
