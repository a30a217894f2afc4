// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>

#include <vector>

/// Whether a tag has more attributes than the limit allows, by the bytes alone: a reader would
/// need time that is quadratic in them to say so. Gives the line, or 0.
int lineOfTooManyAttributes(const QByteArray &text);

/// What all document types of a text declare, by the bytes alone.
struct DocumentTypeScan
{
    qint64 size = 0; ///< in bytes
    qint64 entities = 0;
    bool declaresMore = false; ///< than entities, or may do so
    bool isFinished = true;
};

DocumentTypeScan scanDocumentTypes(const QByteArray &text);

/// How many references to declared entities there may be in a text.
qint64 countEntityReferences(const QByteArray &text);

/// A reference to a picture of one transparent pixel.
QByteArray transparentPicture();

/// The same well-formed text without "xml-stylesheet" instructions, and with transparentPicture()
/// in place of those that the elements of these numbers, in document order,
/// refer to. Everything else stays byte for byte.
QByteArray withoutForeignReferences(const QByteArray &text, const std::vector<int> &elements);
