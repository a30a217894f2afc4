// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "CanvasScene.h"

#include <Scene/Decorator/AbstractDecorator.h>
#include <Scene/TitleItem.h>

#include <QApplication>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>

CanvasScene::CanvasScene(QObject *parent) : QGraphicsScene(parent) {}

CanvasScene::~CanvasScene() = default;

/// The only selected frame, when the event hits its title and not one of its handles.
AbstractDecorator *CanvasScene::selectedFrameAt(const QGraphicsSceneMouseEvent &event) const
{
    if (event.button() != Qt::LeftButton || event.modifiers() != Qt::NoModifier
        || selectedItems().size() != 1)
        return nullptr;
    auto *frame = dynamic_cast<AbstractDecorator *>(selectedItems().first());
    const QGraphicsItem *hit = itemAt(event.scenePos(), QTransform());
    if (!frame || !frame->child() || hit != frame->child())
        return nullptr;
    const auto *text = dynamic_cast<const TitleItem *>(frame->child());
    return text && text->isEditable() ? nullptr : frame;
}

void CanvasScene::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    m_pressed = selectedFrameAt(*event);
    m_pressPos = event->screenPos();
    QGraphicsScene::mousePressEvent(event);
}

void CanvasScene::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    const int distance = (event->screenPos() - m_pressPos).manhattanLength();
    if (distance >= QApplication::startDragDistance())
        m_pressed = nullptr;
    QGraphicsScene::mouseMoveEvent(event);
    if (event->buttons().testFlag(Qt::LeftButton))
        Q_EMIT dragged(event->modifiers());
}

void CanvasScene::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    QGraphicsScene::mouseReleaseEvent(event);
    AbstractDecorator *clicked = std::exchange(m_pressed, nullptr);
    Q_EMIT released();
    if (clicked && selectedItems().contains(clicked))
        Q_EMIT clickedAgain(clicked);
}

void CanvasScene::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    m_pressed = nullptr;
    QGraphicsScene::mouseDoubleClickEvent(event);
}
