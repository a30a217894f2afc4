// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Player.h"

#include "Project.h"

#include <algorithm>

Player::Player(SceneHelper *helper, QObject *parent) : QObject(parent), m_helper(helper)
{
    m_timer.setInterval(frameLength);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Player::tick);
}

Player::~Player() = default;

bool Player::isPlaying() const
{
    return m_timer.isActive();
}

int Player::lastFrameTime() const
{
    return std::max(0, (m_clipLength - 1) / frameLength * frameLength);
}

void Player::setClipLength(int ms)
{
    m_clipLength = ms;
    if (m_helper->sceneTime() > lastFrameTime())
        setTime(lastFrameTime());
}

void Player::setTime(int ms)
{
    m_helper->setSceneTime(std::clamp(ms, 0, lastFrameTime()));
    m_playedFrom = int(m_helper->sceneTime());
    m_clock.restart();
}

void Player::setPlaying(bool playing)
{
    if (playing == isPlaying())
        return;
    if (playing) {
        const int time = int(m_helper->sceneTime());
        setTime(time >= lastFrameTime() ? 0 : time);
        m_timer.start();
    } else {
        m_timer.stop();
    }
    Q_EMIT playingChanged(playing);
}

/// By the clock and not by ticks: a slow machine leaves frames out and keeps the pace.
void Player::tick()
{
    const qint64 elapsed = m_playedFrom + m_clock.elapsed();
    const qint64 time = std::min<qint64>(elapsed, lastFrameTime());
    m_helper->setSceneTime(time / frameLength * frameLength);
    if (time >= lastFrameTime())
        setPlaying(false);
}

void Player::step(int frames)
{
    setPlaying(false);
    const int frame = int(m_helper->sceneTime()) / frameLength;
    setTime((frame + frames) * frameLength);
}

void Player::stepForward()
{
    step(1);
}

void Player::stepBack()
{
    step(-1);
}

void Player::toStart()
{
    setTime(0);
}

void Player::toEnd()
{
    setTime(lastFrameTime());
}
