// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>

class QImage;

// Makes the folder unless it is there. Throws a Failure when that is not possible.
void makeFolder(const QString &folder);

// Standard output as a sequence of raw pictures.
class RawOutput
{
public:
    // Throws a usage Failure when standard output is a terminal.
    RawOutput();

    // Appends the picture's pixels: blue, green, red, alpha; premultiplied. Throws a Failure.
    void write(QImage image);
};
