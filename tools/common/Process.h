// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>
#include <QStringList>

// Prepares the process of a command without windows, before there is an application object.
void prepareProcess(const QString &name, const QString &version);

// The program's name and what follows it on the command line.
QStringList argumentList(int argc, char **argv);
