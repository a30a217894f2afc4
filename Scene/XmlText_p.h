// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QString>

/// \file
/// What may be written into XML text.

/// True for a name that an attribute can have so that every reader of the text reads it back.
bool isAttributeName(const QString &name);

/// The text without the characters that XML forbids (control characters, lone surrogates,
/// U+FFFE, U+FFFF).
QString withoutForbiddenCharacters(const QString &text);

/// The UTF-8 text with an XML declaration, if it has one, that says UTF-8.
QByteArray withUtf8Declaration(const QByteArray &text);
