// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QGraphicsProxyWidget>

/// An ordinary widget as a handle of a decorator. Mouse presses fall through to the decorator below
/// it, whatever the widget would do with them.
///
/// \ingroup decorators
class TITLESCENE_EXPORT DecoratorHandleProxy : public QGraphicsProxyWidget
{
    Q_OBJECT

public:
    /// Embeds \a widget, if it is not null, and takes ownership of it.
    explicit DecoratorHandleProxy(QWidget *widget, QGraphicsItem *parent = nullptr);
    ~DecoratorHandleProxy() override;

protected:
    /// Lets the press fall through, and logs a line (qDebug) that it came.
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
};
