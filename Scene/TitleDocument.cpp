// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleDocument_p.h"

#include <QImage>
#include <QVariant>

QVariant TitleDocument::loadResource(int type, const QUrl &)
{
    if (type != ImageResource)
        return QVariant();
    QImage nothing(1, 1, QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::transparent);
    return nothing;
}
