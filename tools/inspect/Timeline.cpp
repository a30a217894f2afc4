// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Timeline.h"

#include <algorithm>
#include <cmath>
#include <limits>

Timeline::Timeline(const Understood &title)
{
    m_end = std::max(m_end, title.duration());
    for (const Animation &animation : title.animations()) {
        m_begin = std::min(m_begin, animation.begin);
        m_end = std::max({m_end, animation.begin, animation.end});
    }
    if (title.conclusionDuration() != 0)
        m_conclusion = title.duration() - title.conclusionDuration();
}

double Timeline::positionOf(int ms) const
{
    const double length = double(m_end) - m_begin;
    return std::min(std::max((double(ms) - m_begin) / length, 0.0), 1.0);
}

int Timeline::tick(int most) const
{
    const double least = (double(m_end) - m_begin) / most;
    const double power = std::pow(10.0, std::floor(std::log10(std::max(least, 1.0))));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (power * factor >= least)
            return int(power * factor);
    }
    return int(std::min(power * 10.0, double(std::numeric_limits<int>::max())));
}

int Timeline::runsUntil(const Animation &animation) const
{
    if (animation.player != Animation::Player::Renderer)
        return animation.end;
    if (animation.repeatCount < 0.0)
        return m_end;
    const double duration = double(animation.end) - animation.begin;
    return int(std::min(animation.begin + duration * animation.repeatCount, double(m_end)));
}

bool Timeline::isHeld(const Animation &animation)
{
    return animation.freezes && animation.player != Animation::Player::Nobody;
}

QString secondsText(int ms)
{
    QString text = QString::number(ms / 1000.0, 'f', 3);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text + QStringLiteral(" s");
}
