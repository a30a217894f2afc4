// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QWidget>

/// A ruler over the clip. The user scrubs by pressing and dragging on it.
class Timeline : public QWidget
{
    Q_OBJECT

public:
    explicit Timeline(QWidget *parent = nullptr);
    ~Timeline() override;

    /// Where on the widget a time is.
    int positionOf(int ms) const;

    QSize sizeHint() const override;

public Q_SLOTS:
    void setClipLength(int ms);
    void setTime(qint64 ms);

Q_SIGNALS:
    void scrubbed(int ms);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    int timeAt(int x) const;
    int tickStep() const;
    void drawTicks(QPainter &painter) const;
    void drawPlayhead(QPainter &painter) const;

    int m_clipLength = 1;
    qint64 m_time = 0;
};
