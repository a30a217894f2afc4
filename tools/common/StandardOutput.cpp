// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "StandardOutput.h"

#include "Failure.h"

#include <cerrno>
#include <cstdio>

void writeToStandardOutput(const char *bytes, qint64 count)
{
    const auto size = std::size_t(count);
    if (std::fwrite(bytes, 1, size, stdout) != size || std::fflush(stdout) != 0)
        throw Failure(QStringLiteral("standard output"), qt_error_string(errno));
}

void writeToStandardOutput(const QByteArray &bytes)
{
    writeToStandardOutput(bytes.constData(), bytes.size());
}
