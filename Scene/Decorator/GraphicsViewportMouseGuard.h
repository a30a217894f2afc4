// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QObject>

/// Keeps the mouse with a view's viewport while the left button is held, so that a drag out of the
/// viewport still reaches the scene. Install it as an event filter on the viewport; it lets every
/// event pass.
///
/// \ingroup decorators
class TITLESCENE_EXPORT GraphicsViewportMouseGuard : public QObject
{
    Q_OBJECT

public:
    /// Guards nothing until it is installed.
    explicit GraphicsViewportMouseGuard(QObject *parent = nullptr);
    ~GraphicsViewportMouseGuard() override;

    /// Grabs the mouse for \a watched, a widget, with a press of the left button, and lets it go
    /// with the release. Returns false.
    bool eventFilter(QObject *watched, QEvent *event) override;
};
