// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextTitleWindow.h"

#include <QApplication>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("titlescene-texttitle"));
    QApplication::setApplicationDisplayName(QStringLiteral("Text Titles"));

    TextTitleWindow window;
    window.resize(1000, 660);
    window.show();
    return QApplication::exec();
}
