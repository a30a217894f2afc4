// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QGraphicsScene>
#include <QPoint>

class AbstractDecorator;

/// The scene of the canvas. Says when the user drags, lets go, and clicks a selected frame again.
class CanvasScene : public QGraphicsScene
{
    Q_OBJECT

public:
    explicit CanvasScene(QObject *parent = nullptr);
    ~CanvasScene() override;

Q_SIGNALS:
    /// The frames are where the mouse has brought them.
    void dragged(Qt::KeyboardModifiers modifiers);
    void released();
    void clickedAgain(AbstractDecorator *frame);

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

private:
    AbstractDecorator *selectedFrameAt(const QGraphicsSceneMouseEvent &event) const;

    AbstractDecorator *m_pressed = nullptr; // only while the button is down
    QPoint m_pressPos;
};
