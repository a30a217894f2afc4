// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QWidget>

class QAction;
class QDoubleSpinBox;
class QLabel;
class Timeline;

/// The timeline with its buttons, the time, and the length of the clip.
class TimelineBar : public QWidget
{
    Q_OBJECT

public:
    explicit TimelineBar(const QList<QAction *> &buttons, QWidget *parent = nullptr);
    ~TimelineBar() override;

    Timeline *timeline() const;

public Q_SLOTS:
    void setClipLength(int ms);
    void setTime(qint64 ms);

Q_SIGNALS:
    void clipLengthEdited(int ms);

private:
    Timeline *m_timeline;
    QLabel *m_time;
    QDoubleSpinBox *m_clipLength;
};
