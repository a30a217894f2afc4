// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Output.h"

#include "Failure.h"
#include "Signals.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QSaveFile>
#include <QtEndian>

#include <cerrno>
#include <cstdio>

namespace {

QByteArray encodePng(const QString &path, const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    if (!writer.write(image))
        throw Failure(path, writer.errorString());
    return buffer.data();
}

} // namespace

void makeFolder(const QString &folder)
{
    const QFileInfo info(folder);
    if (info.isDir())
        return;
    if (info.exists())
        throw Failure(folder, QStringLiteral("is a file, not a folder"));
    if (!QDir().mkpath(folder))
        throw Failure(folder, QStringLiteral("the folder cannot be made"));
}

void writePng(const QString &path, const QImage &image)
{
    // Replacing a device by a file, as saving does, is never meant.
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        throw Failure(path, QStringLiteral("is not a regular file"));

    const QByteArray bytes = encodePng(path, image);

    // An interruption waits until the temporary file is gone: renamed, or removed after an error.
    const SignalHold hold;
    // Flushed by hand, since commit() overlooks an error in writing out what is buffered.
    QSaveFile file(path);
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()
            && file.flush() && file.commit();
    if (!isWritten)
        throw Failure(path, file.errorString());
}

RawOutput::RawOutput()
{
    if (isTerminal(stdout)) {
        throw Failure::usage(
                QStringLiteral("--raw does not write to a terminal: redirect standard output"));
    }
}

void RawOutput::write(QImage image)
{
    auto *pixels = reinterpret_cast<quint32 *>(image.bits());
    const qsizetype count = qsizetype(image.width()) * image.height();
    qToLittleEndian<quint32>(pixels, count, pixels);

    const size_t size = size_t(image.sizeInBytes());
    if (std::fwrite(pixels, 1, size, stdout) != size || std::fflush(stdout) != 0)
        throw Failure(QStringLiteral("standard output"), qt_error_string(errno));
}
