// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QDomDocument>

/// The text that QDomDocument::save() writes to a stream in UTF-8, indented by 1. It takes time in
/// proportion to the text, where Qt's is quadratic in the characters of an attribute or a text that
/// have to be escaped, and no stack. Memory is taken for the expected size at once. Only where the
/// tree is to be written in another encoding that it declares, which nothing parsed ever is, Qt
/// saves it.
QByteArray textOfTree(const QDomDocument &tree,
                      QDomNode::EncodingPolicy policy = QDomNode::EncodingFromTextStream,
                      int expectedSize = 0);

/// The same as QDomDocument::toString(), indented by 1, for a tree that declares no other encoding
/// than UTF-8.
QString stringOfTree(const QDomDocument &tree);

/// An attribute as it stands in that text.
void appendAttribute(const QDomNode &attribute, QString *text);

/// All attributes of an element, each after a space.
void appendAttributes(const QDomNode &element, QString *text);
