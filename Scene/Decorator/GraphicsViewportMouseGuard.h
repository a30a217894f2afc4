// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QObject>

/// Keeps the mouse with a view's viewport while the left button is held, so that a drag out of the
/// viewport still reaches the scene. Install it as an event filter on the viewport; it lets every
/// event pass.
class TITLESCENE_EXPORT GraphicsViewportMouseGuard : public QObject
{
    Q_OBJECT

public:
    explicit GraphicsViewportMouseGuard(QObject *parent = nullptr);
    ~GraphicsViewportMouseGuard() override;

    bool eventFilter(QObject *watched, QEvent *event) override;
};
