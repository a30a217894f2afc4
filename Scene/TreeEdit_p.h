// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QDomElement>
#include <QString>

#include <optional>

/// \file
/// Reading and writing the attributes of single elements. Every function takes a null element and
/// does nothing then; the ones that write tell whether they changed the tree.

bool hasVisibility(const QDomNode &node);
bool isDefs(const QDomNode &node);

/// The id that a "use" element refers to, without the "#"; nothing when it refers to nothing in the
/// document or the element is no "use" element.
std::optional<QString> usedId(const QDomElement &element);

bool writeAttribute(QDomElement element, const QString &name, const QString &value);
bool eraseAttribute(QDomElement element, const QString &name);
bool writeVisibility(const QDomElement &element, bool visible);
