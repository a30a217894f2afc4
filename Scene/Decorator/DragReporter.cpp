// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "DragReporter.h"

#include <QEvent>
#include <QGraphicsScene>

#include <utility>

DragReporter::DragReporter(QGraphicsScene *scene, QObject *parent) : QObject(parent), m_scene(scene)
{
    qRegisterMetaType<QList<AbstractDecorator *>>();
    scene->installEventFilter(this);
}

DragReporter::~DragReporter() = default;

DragReporter::Shape DragReporter::shapeOf(const AbstractDecorator &frame)
{
    Shape shape;
    shape.frame =
            frame.parentItem() ? frame.itemTransform(frame.parentItem()) : frame.sceneTransform();
    if (const QGraphicsObject *child = frame.child()) {
        shape.child = child->itemTransform(&frame);
        shape.childBounds = child->boundingRect();
    }
    return shape;
}

bool DragReporter::isSame(const Shape &a, const Shape &b)
{
    return a.frame == b.frame && a.child == b.child && a.childBounds == b.childBounds;
}

/// A frame gets the mouse before a press, and loses it after the release or earlier. One that
/// ignores the press loses it at once.
bool DragReporter::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseDoubleClick:
        if (watched == m_scene && !m_holder)
            beginDrag();
        break;
    case QEvent::GrabMouse:
        m_holder = watched;
        break;
    case QEvent::UngrabMouse:
        endDragOf(watched);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void DragReporter::beginDrag()
{
    report();
    const QList<QGraphicsItem *> items = m_scene ? m_scene->items() : QList<QGraphicsItem *>();
    for (QGraphicsItem *item : items) {
        auto *frame = qobject_cast<AbstractDecorator *>(item->toGraphicsObject());
        if (!frame)
            continue;
        m_before.append({frame, shapeOf(*frame)});
        frame->installEventFilter(this);
        connect(frame, &QObject::destroyed, this, &DragReporter::endDragOf, Qt::UniqueConnection);
    }
}

/// Qt is not done with the frame yet, and the application may be amid what took the mouse from it.
void DragReporter::endDragOf(QObject *frame)
{
    if (frame != m_holder)
        return;
    m_holder = nullptr;
    QMetaObject::invokeMethod(this, &DragReporter::report, Qt::QueuedConnection);
}

void DragReporter::report()
{
    if (m_holder)
        return;
    QList<AbstractDecorator *> changed;
    for (const Before &before : std::exchange(m_before, {})) {
        if (before.frame && !isSame(shapeOf(*before.frame), before.shape))
            changed.append(before.frame);
    }
    if (!changed.isEmpty())
        Q_EMIT framesDragged(changed);
}
