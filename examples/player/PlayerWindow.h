// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QElapsedTimer>
#include <QGraphicsScene>
#include <QMainWindow>
#include <QTimer>

class QAction;
class QLabel;
class QSlider;
class TitleSvgItem;

/// Plays one title in a window.
///
/// The clip that the title is shown on is a second longer than the title: for that second the title
/// stands complete before its closing part. Moving the slider or stepping pauses.
class PlayerWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit PlayerWindow(const QString &svgText, QWidget *parent = nullptr);

    bool isPlaying() const;

public Q_SLOTS:
    /// Plays from the current time; from the start when the current time is the end.
    void play();
    void pause();
    void togglePlaying();
    void stepBack();
    void stepForward();

private:
    void makeView();
    void makeActions();
    void makeControls();
    QAction *makeAction(const QString &text, const QKeySequence &shortcut,
                        void (PlayerWindow::*slot)());
    void step(int ms);
    void showTime(int ms);
    void showPlayedTime();
    void updatePlayAction();

    QGraphicsScene m_scene;
    TitleSvgItem *m_title = nullptr; // on the scene, which owns it
    QAction *m_playAction = nullptr;
    QAction *m_backAction = nullptr;
    QAction *m_forwardAction = nullptr;
    QSlider *m_slider = nullptr; // its value is the current time of the clip, ms
    QLabel *m_timeLabel = nullptr;
    QTimer m_frameTimer;
    QElapsedTimer m_clock; // runs while playing
    int m_playedFrom = 0;
};
