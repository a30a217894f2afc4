// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FocusHandler.h"

#include "../NamedSlots_p.h"

#include <QEvent>

namespace {

void highlightTopLevelItem(const QGraphicsItem &target, bool highlight)
{
    QGraphicsObject *top = target.topLevelItem()->toGraphicsObject();
    if (hasSlot(top, "setHighlight(bool)"))
        QMetaObject::invokeMethod(top, "setHighlight", Q_ARG(bool, highlight));
}

} // namespace

FocusHandler::FocusHandler(QGraphicsObject *target) : QGraphicsObject(target), m_target(target)
{
    setFlag(ItemHasNoContents);
}

FocusHandler::~FocusHandler() = default;

void FocusHandler::paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *) {}

QRectF FocusHandler::boundingRect() const
{
    return QRectF();
}

/// When the handler leaves the scene meanwhile, the scene's list of filters has changed under the
/// scene's own walk along it. The walk ends where a filter returns true.
bool FocusHandler::sceneEventFilter(QGraphicsItem *watched, QEvent *event)
{
    const bool isFocusIn = event->type() == QEvent::FocusIn;
    const QPointer<FocusHandler> guard(this);
    m_leftScene = false;
    if (m_target && (isFocusIn || event->type() == QEvent::FocusOut))
        highlightTopLevelItem(*m_target, isFocusIn);
    return !guard || m_leftScene || QGraphicsObject::sceneEventFilter(watched, event);
}

QVariant FocusHandler::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemSceneHasChanged)
        m_leftScene = true;
    return QGraphicsObject::itemChange(change, value);
}
