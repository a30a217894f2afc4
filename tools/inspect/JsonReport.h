// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

struct Problem;
class Understood;

// For programs: what the library understood of a title and what will not play, as a JSON object.
QByteArray jsonReport(const Understood &title, const std::vector<Problem> &problems);

// The same for a title that can't be read: its name, and the reason as "error".
QByteArray jsonFailure(const QString &titleName, const QString &reason);
