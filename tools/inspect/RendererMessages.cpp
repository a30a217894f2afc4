// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "RendererMessages.h"

#include <QRegularExpression>

namespace {

// Where Qt's message handler, a plain function, finds the one that listens.
RendererMessages *listening = nullptr;

} // namespace

RendererMessages::RendererMessages() : m_before(qInstallMessageHandler(handle))
{
    listening = this;
}

RendererMessages::~RendererMessages()
{
    listening = nullptr;
    qInstallMessageHandler(m_before);
}

void RendererMessages::handle(QtMsgType type, const QMessageLogContext &context,
                              const QString &text)
{
    static const QRegularExpression leftOut(
            QStringLiteral("^<input>:([0-9]+):([0-9]+): Problem parsing (\\w+)"));
    const QRegularExpressionMatch match = leftOut.match(text);
    if (match.hasMatch())
        listening->m_leftOut.push_back(
                {match.captured(3), {match.captured(1).toInt(), match.captured(2).toInt() + 1}});
    else if (listening->m_before)
        listening->m_before(type, context, text);
}
