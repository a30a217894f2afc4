// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QDomElement>
#include <QString>

#include <optional>

/// \file
/// What single nodes are, and reading and writing the attributes of elements. Every function takes
/// a null node and does nothing then; the ones that write tell whether they changed the tree.

bool hasVisibility(const QDomNode &node);
bool isDefs(const QDomNode &node);
bool isXmlDeclaration(const QDomNode &node);

/// The id that a "use" element refers to, without the "#"; nothing when it refers to nothing in the
/// document or the element is no "use" element.
std::optional<QString> usedId(const QDomElement &element);

bool writeAttribute(QDomElement element, const QString &name, const QString &value);
bool eraseAttribute(QDomElement element, const QString &name);
bool writeVisibility(const QDomElement &element, bool visible);
