// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FrameSchedule.h"

#include "FrameNames.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

constexpr qint64 millisecondsPerSecond = 1000;
constexpr qint64 highestRate = 1000; // above it, frames would share a millisecond

// With these limits no product below leaves 64 bits, whatever the length of the title.
constexpr qint64 largestNumerator = 1000000000;
constexpr qint64 largestDenominator = 1000000;

qint64 powerOfTen(int exponent)
{
    qint64 result = 1;
    for (int i = 0; i < exponent; ++i)
        result *= 10;
    return result;
}

QRegularExpression wholeMatch(const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern));
}

} // namespace

std::optional<FrameRate> FrameRate::fromText(const QString &text)
{
    static const QRegularExpression fraction =
            wholeMatch(QStringLiteral("([0-9]{1,10})/([0-9]{1,7})"));
    static const QRegularExpression decimal =
            wholeMatch(QStringLiteral("([0-9]{1,4})(?:\\.([0-9]{1,6}))?"));

    qint64 frames = 0;
    qint64 seconds = 1;
    if (const auto match = fraction.match(text); match.hasMatch()) {
        frames = match.captured(1).toLongLong();
        seconds = match.captured(2).toLongLong();
    } else if (const auto plain = decimal.match(text); plain.hasMatch()) {
        const QString places = plain.captured(2);
        frames = (plain.captured(1) + places).toLongLong();
        seconds = powerOfTen(places.size());
    }

    const bool usable = frames > 0 && seconds > 0 && frames <= largestNumerator
            && seconds <= largestDenominator && frames <= highestRate * seconds;
    if (!usable)
        return std::nullopt;
    return FrameRate(frames, seconds);
}

QString FrameRate::toText() const
{
    return QStringLiteral("%1/%2").arg(m_frames).arg(m_seconds);
}

int FrameRate::timeOf(qint64 frame) const
{
    return int(frame * millisecondsPerSecond * m_seconds / m_frames);
}

qint64 FrameRate::frameCount(int duration) const
{
    const qint64 unit = millisecondsPerSecond * m_seconds;
    const qint64 count = (qMax(0, duration) * m_frames + unit - 1) / unit;
    return qMax(qint64(1), count);
}

std::optional<FrameRange> FrameRange::fromText(const QString &text)
{
    static const QRegularExpression pattern =
            wholeMatch(QStringLiteral("([0-9]{1,10})(?:-([0-9]{1,10}))?"));

    const auto match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;

    FrameRange range;
    range.first = match.captured(1).toLongLong();
    range.last = match.captured(2).isEmpty() ? range.first : match.captured(2).toLongLong();
    if (range.last < range.first)
        return std::nullopt;
    return range;
}

QString FrameRange::toText() const
{
    return QStringLiteral("%1-%2").arg(first).arg(last);
}

std::optional<std::vector<int>> timesFromText(const QString &text)
{
    std::vector<int> times;
    const QStringList entries = text.split(QLatin1Char(','));
    for (const QString &entry : entries) {
        bool isNumber = false;
        times.push_back(entry.toInt(&isNumber));
        if (!isNumber)
            return std::nullopt;
    }
    return times;
}

QString timesToText(const std::vector<int> &times)
{
    QStringList entries;
    for (int time : times)
        entries += QString::number(time);
    return entries.join(QLatin1Char(','));
}

qint64 FrameSchedule::count() const
{
    return m_rate ? m_range.last - m_range.first + 1 : qint64(m_times.size());
}

int FrameSchedule::timeOf(qint64 index) const
{
    return m_rate ? m_rate->timeOf(m_range.first + index) : m_times[size_t(index)];
}

QString FrameSchedule::fileNameOf(qint64 index) const
{
    if (m_rate)
        return frameFileName(m_range.first + index);

    const qint64 time = timeOf(index);
    const QString sign = time < 0 ? QStringLiteral("-") : QString();
    return QStringLiteral("at-%1%2ms.png").arg(sign).arg(qAbs(time), 8, 10, QLatin1Char('0'));
}

QStringList FrameSchedule::argumentsFor(qint64 first, qint64 last) const
{
    if (!m_rate) {
        const std::vector<int> part(m_times.begin() + first, m_times.begin() + last + 1);
        return {QStringLiteral("--at"), timesToText(part)};
    }
    const FrameRange part{m_range.first + first, m_range.first + last};
    return {QStringLiteral("--fps"), m_rate->toText(), QStringLiteral("--frames"), part.toText()};
}
