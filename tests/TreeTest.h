// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "WarningFreeTest.h"

#include <QDomDocument>

/// The tree of a text.
inline QDomDocument parsed(const QString &text)
{
    QDomDocument document;
    document.setContent(text);
    return document;
}
