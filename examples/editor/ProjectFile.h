// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Project.h"

#include <QByteArray>

#include <optional>

/// \file
/// Projects as JSON, in memory and in files.

QByteArray toJson(const Project &project);

/// Nothing, with the reason in \a error, when anything in the text is not as toJson() writes it.
std::optional<Project> projectFromJson(const QByteArray &json, QString *error);

std::optional<Project> readProject(const QString &path, QString *error);

/// Writes the whole file or leaves it as it was; then false, with the reason in \a error.
bool writeProject(const Project &project, const QString &path, QString *error);
