// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QSize>
#include <QString>

// What is wrong with a picture of this size, or nothing when it can be made.
QString sizeProblem(const QSize &size);
