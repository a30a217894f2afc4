// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PlayerWindow.h"

#include <Scene/SvgDocument.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

constexpr int failed = 1;
constexpr int wronglyCalled = 2;

void printError(const QString &text)
{
    std::fprintf(stderr, "titlescene-player: %s\n", qPrintable(text));
}

int playTitle(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        printError(QStringLiteral("%1: %2").arg(path, file.errorString()));
        return failed;
    }
    const QString svgText = QString::fromUtf8(file.readAll());
    const SvgDocument document(svgText);
    if (!document.isLoaded()) {
        printError(QStringLiteral("%1: %2").arg(path, document.errorString()));
        return failed;
    }
    PlayerWindow window(svgText);
    window.setWindowTitle(QFileInfo(path).fileName());
    window.resize(960, 640);
    window.show();
    window.play();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("titlescene-player"));
    QApplication::setApplicationDisplayName(QStringLiteral("Title Player"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Plays an animated SVG title."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("FILE.svg"), QStringLiteral("The title to play."));
    parser.process(application);
    const QStringList files = parser.positionalArguments();
    if (files.size() != 1) {
        printError(QStringLiteral("one FILE.svg is needed; see --help"));
        return wronglyCalled;
    }
    return playTitle(files.first());
}
