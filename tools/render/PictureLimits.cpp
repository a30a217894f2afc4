// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PictureLimits.h"

namespace {

constexpr int longestSide = 16384;
constexpr qint64 bytesPerPixel = 4;
constexpr qint64 mebibyte = qint64(1024) * 1024;
constexpr qint64 mostMebibytes = 512;

} // namespace

QString sizeProblem(const QSize &size)
{
    const QString given = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    if (size.isEmpty())
        return QStringLiteral("a picture of %1 pixels is empty").arg(given);
    if (size.width() > longestSide || size.height() > longestSide) {
        return QStringLiteral("a picture of %1 pixels is too large (at most %2 a side)")
                .arg(given)
                .arg(longestSide);
    }
    if (qint64(size.width()) * size.height() * bytesPerPixel > mostMebibytes * mebibyte) {
        return QStringLiteral("a picture of %1 pixels is too large (more than %2 MiB)")
                .arg(given)
                .arg(mostMebibytes);
    }
    return QString();
}
