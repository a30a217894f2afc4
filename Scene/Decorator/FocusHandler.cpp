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

bool FocusHandler::sceneEventFilter(QGraphicsItem *watched, QEvent *event)
{
    const bool isFocusIn = event->type() == QEvent::FocusIn;
    const QPointer<FocusHandler> guard(this);
    if (m_target && (isFocusIn || event->type() == QEvent::FocusOut))
        highlightTopLevelItem(*m_target, isFocusIn);
    return guard && QGraphicsObject::sceneEventFilter(watched, event);
}
