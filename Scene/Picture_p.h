// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>

/// How many pixels a picture has that the renderer may unpack: a PNG or JPEG file, by its content,
/// that stands as base64 in the reference. 0 for every other reference. Opens nothing.
qint64 pixelsOfPicture(const QString &reference);
