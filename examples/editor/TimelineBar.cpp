// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TimelineBar.h"

#include "Project.h"
#include "Timeline.h"

#include <QAction>
#include <QDoubleSpinBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>

namespace {

/// Minutes, seconds and frames.
QString timeCode(qint64 ms)
{
    const QLatin1Char zero('0');
    return QStringLiteral("%1:%2:%3")
            .arg(ms / 60000, 2, 10, zero)
            .arg(ms / 1000 % 60, 2, 10, zero)
            .arg(ms % 1000 / frameLength, 2, 10, zero);
}

} // namespace

TimelineBar::TimelineBar(const QList<QAction *> &buttons, QWidget *parent)
    : QWidget(parent), m_timeline(new Timeline(this)), m_time(new QLabel(this)),
      m_clipLength(new QDoubleSpinBox(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 4, 6, 4);
    for (QAction *action : buttons) {
        auto *button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setAutoRaise(true);
        layout->addWidget(button);
    }
    m_time->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_time->setToolTip(tr("Minutes, seconds and frames"));
    layout->addWidget(m_time);
    layout->addWidget(m_timeline, 1);
    layout->addWidget(new QLabel(tr("Clip:"), this));
    m_clipLength->setObjectName(QStringLiteral("clipLength"));
    m_clipLength->setRange(frameLength / 1000.0, 86400.0);
    m_clipLength->setDecimals(2);
    m_clipLength->setSuffix(tr(" s"));
    m_clipLength->setKeyboardTracking(false);
    m_clipLength->setToolTip(tr("Length of the clip that the titles are shown on"));
    layout->addWidget(m_clipLength);
    connect(m_clipLength, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this](double seconds) { Q_EMIT clipLengthEdited(qRound(seconds * 1000.0)); });
    setTime(0);
}

TimelineBar::~TimelineBar() = default;

Timeline *TimelineBar::timeline() const
{
    return m_timeline;
}

void TimelineBar::setClipLength(int ms)
{
    const QSignalBlocker blocker(m_clipLength);
    m_clipLength->setValue(ms / 1000.0);
    m_timeline->setClipLength(ms);
}

void TimelineBar::setTime(qint64 ms)
{
    m_time->setText(timeCode(ms));
    m_timeline->setTime(ms);
}
