// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PlayerWindow.h"

#include <Scene/GraphicsEffectClip.h>
#include <Scene/TitleSvgItem.h>

#include <QAction>
#include <QGraphicsView>
#include <QKeySequence>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QSlider>
#include <QStyle>
#include <QToolBar>

namespace {

// Milliseconds.
constexpr int frameLength = 40;
constexpr int pageLength = 1000;
constexpr int hold = 1000;
constexpr qint64 longestClip = 24 * 60 * 60 * 1000;

/// Shows the whole scene, however large the view is.
class FittingView : public QGraphicsView
{
public:
    using QGraphicsView::QGraphicsView;

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QGraphicsView::resizeEvent(event);
        fitInView(sceneRect(), Qt::KeepAspectRatio);
    }
};

int clipLength(const TitleSvgItem &title)
{
    return int(qMin(qint64(title.documentDuration()) + hold, longestClip));
}

QString secondsText(int ms)
{
    return QLocale().toString(ms / 1000.0, 'f', 2);
}

/// The text, and a tool tip that also tells the shortcut.
void nameAction(QAction &action, const QString &text)
{
    action.setText(text);
    action.setToolTip(QString());
    action.setToolTip(QStringLiteral("%1 (%2)").arg(
            action.toolTip(), action.shortcut().toString(QKeySequence::NativeText)));
}

} // namespace

PlayerWindow::PlayerWindow(const QString &svgText, QWidget *parent)
    : QMainWindow(parent), m_title(new TitleSvgItem(svgText))
{
    m_title->setDuration(clipLength(*m_title));
    // Otherwise the clip paths of a title would cut holes into the view's background.
    m_title->setPaintOnImage(true);
    // What a title draws beside its canvas is not meant to be seen.
    m_title->setGraphicsEffect(new GraphicsEffectClip(m_title->boundingRect()));
    m_scene.setSceneRect(m_title->boundingRect());
    m_scene.addItem(m_title);

    makeView();
    makeActions();
    makeControls();

    m_frameTimer.setTimerType(Qt::PreciseTimer);
    m_frameTimer.setInterval(frameLength);
    connect(&m_frameTimer, &QTimer::timeout, this, &PlayerWindow::showPlayedTime);
    showTime(0);
}

void PlayerWindow::makeView()
{
    auto *view = new FittingView(&m_scene, this);
    view->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    view->setBackgroundBrush(palette().color(QPalette::Dark));
    view->setFrameShape(QFrame::NoFrame);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setFocusPolicy(Qt::NoFocus);
    view->setAccessibleName(tr("Title"));
    setCentralWidget(view);
}

void PlayerWindow::makeActions()
{
    m_backAction = makeAction(tr("Step &Back"), Qt::Key_Left, &PlayerWindow::stepBack);
    m_backAction->setIcon(style()->standardIcon(QStyle::SP_MediaSeekBackward));
    m_playAction = makeAction(tr("&Play"), Qt::Key_Space, &PlayerWindow::togglePlaying);
    m_forwardAction = makeAction(tr("Step &Forward"), Qt::Key_Right, &PlayerWindow::stepForward);
    m_forwardAction->setIcon(style()->standardIcon(QStyle::SP_MediaSeekForward));

    QMenu *titleMenu = menuBar()->addMenu(tr("&Title"));
    QAction *quitAction = titleMenu->addAction(tr("&Quit"), this, &PlayerWindow::close);
    quitAction->setShortcut(Qt::CTRL | Qt::Key_Q);

    QMenu *playbackMenu = menuBar()->addMenu(tr("&Playback"));
    playbackMenu->addActions({m_backAction, m_playAction, m_forwardAction});
    updatePlayAction();
}

QAction *PlayerWindow::makeAction(const QString &text, const QKeySequence &shortcut,
                                  void (PlayerWindow::*slot)())
{
    auto *action = new QAction(this);
    action->setShortcut(shortcut);
    nameAction(*action, text);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void PlayerWindow::makeControls()
{
    m_slider = new QSlider(Qt::Horizontal);
    m_slider->setRange(0, m_title->duration());
    m_slider->setSingleStep(frameLength);
    m_slider->setPageStep(pageLength);
    m_slider->setToolTip(tr("The time of the clip"));
    m_slider->setAccessibleName(tr("Time"));
    connect(m_slider, &QSlider::valueChanged, this, &PlayerWindow::showTime);
    connect(m_slider, &QSlider::sliderPressed, this, &PlayerWindow::pause);
    connect(m_slider, &QSlider::actionTriggered, this, &PlayerWindow::pause);

    m_timeLabel = new QLabel;
    m_timeLabel->setToolTip(tr("The time and the length of the clip, in seconds"));

    auto *controls = new QToolBar(tr("Playback"));
    controls->setMovable(false);
    controls->setContextMenuPolicy(Qt::PreventContextMenu);
    controls->addActions({m_backAction, m_playAction, m_forwardAction});
    controls->addWidget(m_slider);
    controls->addWidget(m_timeLabel);
    addToolBar(Qt::BottomToolBarArea, controls);
    m_slider->setFocus();
}

bool PlayerWindow::isPlaying() const
{
    return m_frameTimer.isActive();
}

void PlayerWindow::play()
{
    if (m_slider->value() == m_slider->maximum())
        m_slider->setValue(0);
    m_playedFrom = m_slider->value();
    m_clock.start();
    m_frameTimer.start();
    updatePlayAction();
}

void PlayerWindow::pause()
{
    m_frameTimer.stop();
    updatePlayAction();
}

void PlayerWindow::togglePlaying()
{
    if (isPlaying())
        pause();
    else
        play();
}

void PlayerWindow::stepBack()
{
    step(-frameLength);
}

void PlayerWindow::stepForward()
{
    step(frameLength);
}

void PlayerWindow::step(int ms)
{
    pause();
    m_slider->setValue(m_slider->value() + ms);
}

void PlayerWindow::showPlayedTime()
{
    const qint64 time = m_playedFrom + m_clock.elapsed();
    m_slider->setValue(int(qMin<qint64>(time, m_slider->maximum())));
    if (time >= m_slider->maximum())
        pause();
}

void PlayerWindow::showTime(int ms)
{
    m_title->setCurrentTime(ms);
    m_title->update();
    m_timeLabel->setText(tr("%1 / %2 s").arg(secondsText(ms), secondsText(m_slider->maximum())));
}

void PlayerWindow::updatePlayAction()
{
    const bool playing = isPlaying();
    nameAction(*m_playAction, playing ? tr("&Pause") : tr("&Play"));
    m_playAction->setIcon(
            style()->standardIcon(playing ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
}
