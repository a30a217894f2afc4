// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <limits>
#include <vector>

/// What a fuzzer's input stands for: the text of a title and, after a NUL if there is one, the
/// times at which it is looked at. Any file of a title is an input.
struct TitleInput
{
    explicit TitleInput(const QByteArray &bytes)
    {
        const int end = bytes.indexOf('\0');
        text = QString::fromUtf8(end < 0 ? bytes : bytes.left(end));
        if (end >= 0) {
            for (const QByteArray &time : bytes.mid(end + 1).split(' '))
                addTime(time);
        }
        if (times.empty())
            times = {700, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    }

    QString text;
    std::vector<int> times; ///< a few, but at least one

private:
    void addTime(const QByteArray &time)
    {
        bool ok = false;
        const int ms = time.toInt(&ok);
        if (ok && times.size() < 4)
            times.push_back(ms);
    }
};
