// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "GraphicsViewportMouseGuard.h"

#include <QMouseEvent>
#include <QWidget>

namespace {

bool isLeftButton(const QEvent *event)
{
    return static_cast<const QMouseEvent *>(event)->button() == Qt::LeftButton;
}

} // namespace

GraphicsViewportMouseGuard::GraphicsViewportMouseGuard(QObject *parent) : QObject(parent) {}

GraphicsViewportMouseGuard::~GraphicsViewportMouseGuard() = default;

bool GraphicsViewportMouseGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (auto *widget = qobject_cast<QWidget *>(watched)) {
        if (event->type() == QEvent::MouseButtonPress && isLeftButton(event))
            widget->grabMouse();
        else if (event->type() == QEvent::MouseButtonRelease && isLeftButton(event))
            widget->releaseMouse();
    }
    return QObject::eventFilter(watched, event);
}
