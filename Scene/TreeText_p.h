// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QDomDocument>

/// The text that QDomDocument::save() writes to a stream in UTF-8, indented by 1, with the
/// stream's encoding declared; null when the tree is null or has nodes other than elements,
/// comments and texts. It takes a fraction of the time, since the encoding can hold every character
/// and none needs to be tried, and no stack. Memory is taken for the expected size at once.
QByteArray textOfTree(const QDomDocument &tree, int expectedSize = 0);

/// An attribute as it stands in that text.
void appendAttribute(const QDomNode &attribute, QString *text);

/// All attributes of an element, each after a space.
void appendAttributes(const QDomNode &element, QString *text);
