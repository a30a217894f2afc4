// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QString>

class QImage;

// Writes a file that is complete or, whatever happens meanwhile, as it was before: a file that was
// there stays, and keeps its permissions when it is replaced; a link keeps leading to the file.
// Throws a Failure, with the system's words, for a file that can't be written, and for what is no
// file, such as a device. What is written may be lost when the machine itself goes down.
void writeFile(const QString &path, const QByteArray &bytes);

// The same for a picture, as PNG.
void writePng(const QString &path, const QImage &image);
