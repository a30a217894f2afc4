// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "DecoratorHandleProxy.h"

#include <QGraphicsSceneMouseEvent>
#include <QMessageLogger>

DecoratorHandleProxy::DecoratorHandleProxy(QWidget *widget, QGraphicsItem *parent)
    : QGraphicsProxyWidget(parent)
{
    if (widget)
        setWidget(widget);
}

DecoratorHandleProxy::~DecoratorHandleProxy() = default;

void DecoratorHandleProxy::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    // The context is given by hand: the compiler's own would be spelt its own way, and missing in
    // a release build.
    const QMessageLogger logger(
            "Scene/Decorator/DecoratorHandleProxy", __LINE__,
            "virtual void DecoratorHandleProxy::mousePressEvent(QGraphicsSceneMouseEvent *)",
            "default");
    logger.debug("RotateHandleItem::mousePressEvent");
    event->ignore();
}
