// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QString>

/// A picture that may be unpacked.
struct EmbeddedPicture
{
    QByteArray file;
    QByteArray format; // "png" or "jpeg"
    qint64 pixels = 0;
};

/// The PNG or JPEG file, by its content, that stands as base64 in the reference. Of no pixels for
/// every other reference. Opens nothing.
EmbeddedPicture embeddedPicture(const QString &reference);

/// How many pixels an embedded picture has that the renderer may unpack.
qint64 pixelsOfPicture(const QString &reference);
