// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Project.h"

/// \file
/// Titles on the system's clipboard.

void copyToClipboard(const QVector<Title> &titles);

/// Empty when the clipboard holds no titles.
QVector<Title> titlesFromClipboard();
