// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>

// The name that stands for standard input in place of a file.
QString standardInputName();

// How messages call a title of this name.
QString displayName(const QString &titleName);

// Reads a title's text: UTF-16 and UTF-32 with a byte order mark, which is not part of the text;
// otherwise what its XML declaration says, such as ISO-8859-1, and UTF-8 when it says nothing that
// can be right. Throws a Failure when it cannot be read or is not such text.
QString readTitleText(const QString &titleName);
