// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QGuiApplication>

/// The application that documents need, without a display; what Qt has to say of bad titles goes
/// nowhere.
inline void makeFuzzApplication()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    static int count = 1;
    static QGuiApplication application(count, arguments);
}
