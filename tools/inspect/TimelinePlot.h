// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>

class Understood;

// The timeline as an SVG picture: a row for each animation with a bar (a rect of the class "bar")
// while it runs and a lighter one (of the class "held") while its last value holds, below a scale
// of times; a line where the closing part begins.
QByteArray timelinePlot(const Understood &title);
