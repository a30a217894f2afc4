// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "SourcePlaces.h"

#include <QString>
#include <QtGlobal>

#include <vector>

// Listens to what the renderer says of a text, as long as it lives.
class RendererMessages
{
public:
    RendererMessages();
    ~RendererMessages();

    // An element that the renderer could not read and leaves out.
    struct LeftOut
    {
        QString name;
        Place end; // of the start tag
    };
    const std::vector<LeftOut> &leftOut() const { return m_leftOut; }

private:
    Q_DISABLE_COPY(RendererMessages)
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    QtMessageHandler m_before;
    std::vector<LeftOut> m_leftOut;
};
