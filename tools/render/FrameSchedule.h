// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>
#include <vector>

// Frames per second as an exact fraction, so that 30000/1001 does not drift in a long title.
class FrameRate
{
public:
    // Reads "25", "29.97" or "30000/1001"; nothing when it is no rate above 0 and up to 1000.
    static std::optional<FrameRate> fromText(const QString &text);

    QString toText() const;
    int timeOf(qint64 frame) const;        // in milliseconds, truncated
    qint64 frameCount(int duration) const; // of a title of so many milliseconds, at least 1

private:
    FrameRate(qint64 frames, qint64 seconds) : m_frames(frames), m_seconds(seconds) {}

    qint64 m_frames;
    qint64 m_seconds;
};

// An inclusive range of frame numbers.
struct FrameRange
{
    qint64 first = 0;
    qint64 last = 0;

    // Reads "12-40" or "12"; nothing when it is no such range.
    static std::optional<FrameRange> fromText(const QString &text);

    QString toText() const;
};

// Reads "0,1500,-200", in milliseconds; nothing when an entry is no whole number.
std::optional<std::vector<int>> timesFromText(const QString &text);
QString timesToText(const std::vector<int> &times);

// The pictures of one run in their order: when each is taken and what its file is called.
class FrameSchedule
{
public:
    FrameSchedule(const FrameRate &rate, const FrameRange &range) : m_rate(rate), m_range(range) {}
    explicit FrameSchedule(const std::vector<int> &times) : m_times(times) {}

    qint64 count() const;
    int timeOf(qint64 index) const;
    QString fileNameOf(qint64 index) const;

    // The command line arguments that ask for the pictures from `first` to `last` of this schedule.
    QStringList argumentsFor(qint64 first, qint64 last) const;

private:
    std::optional<FrameRate> m_rate; // none: the times are given
    FrameRange m_range;
    std::vector<int> m_times;
};
