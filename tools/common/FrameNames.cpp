// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FrameNames.h"

QString frameFileName(qint64 frame)
{
    return QStringLiteral("frame-%1.png").arg(frame, 6, 10, QLatin1Char('0'));
}
