// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>

// Writes all of it at once. Throws a Failure, with the system's words, when that is not possible.
void writeToStandardOutput(const char *bytes, qint64 count);
void writeToStandardOutput(const QByteArray &bytes);
