// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Output.h"

#include "Failure.h"
#include "Signals.h"
#include "StandardOutput.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QtEndian>

#include <filesystem>
#include <system_error>

void makeFolder(const QString &folder)
{
    const QFileInfo info(folder);
    if (info.isDir())
        return;
    if (info.exists())
        throw Failure(folder, QStringLiteral("is a file, not a folder"));
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(folder).toStdString(), error);
    if (error)
        throw Failure(folder, QString::fromStdString(error.message()));
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

    writeToStandardOutput(reinterpret_cast<const char *>(pixels), image.sizeInBytes());
}
