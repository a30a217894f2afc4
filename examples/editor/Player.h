// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/SceneHelper.h>

#include <QElapsedTimer>
#include <QTimer>

/// Moves the scene's time: by playing, by frames, and to any place of the clip.
class Player : public QObject
{
    Q_OBJECT

public:
    explicit Player(SceneHelper *helper, QObject *parent = nullptr);
    ~Player() override;

    bool isPlaying() const;

public Q_SLOTS:
    void setClipLength(int ms);
    void setTime(int ms);

    /// Plays from the current time to the end; from the start when it is at the end.
    void setPlaying(bool playing);
    void stepForward();
    void stepBack();
    void toStart();
    void toEnd();

Q_SIGNALS:
    void playingChanged(bool playing);

private:
    void tick();
    void step(int frames);
    int lastFrameTime() const;

    SceneHelper *m_helper;
    int m_clipLength = 0;
    QTimer m_timer;
    QElapsedTimer m_clock;
    int m_playedFrom = 0;
};
