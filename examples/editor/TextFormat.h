// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>
#include <QTextCharFormat>

/// \file
/// Formats of whole texts, as HTML.

/// The text with \a format on top of the formats that it has.
QString withFormat(const QString &html, const QTextCharFormat &format);

/// The format of the first character.
QTextCharFormat firstFormat(const QString &html);
