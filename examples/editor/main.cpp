// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MainWindow.h"
#include "TemplateList.h"

#include <Failure.h>
#include <SafeFile.h>
#include <Signals.h>

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>
#include <cstdlib>

namespace {

/// Saves a picture of the window once all templates are shown, and ends the program.
void takeScreenshot(MainWindow *window, const QString &path)
{
    const auto *templates = window->findChild<TemplateList *>();
    QObject::connect(templates, &TemplateList::loaded, window, [window, path] {
        try {
            writePng(path, window->grab().toImage());
            QApplication::exit(EXIT_SUCCESS);
        } catch (const Failure &failure) {
            std::fputs(qPrintable(failure.message() + QLatin1Char('\n')), stderr);
            QApplication::exit(EXIT_FAILURE);
        }
    });
}

} // namespace

int main(int argc, char *argv[])
{
    reportWriteSignalsAsErrors();
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("titlescene-editor"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QApplication::translate("main", "Edits titles on a canvas."));
    parser.addHelpOption();
    const QCommandLineOption templates(
            QStringLiteral("templates"),
            QApplication::translate("main", "The folder of the list of templates."),
            QApplication::translate("main", "folder"), QStringLiteral(TITLESCENE_TEMPLATES));
    const QCommandLineOption time(
            QStringLiteral("time"),
            QApplication::translate("main", "The time to begin at, in milliseconds."),
            QApplication::translate("main", "ms"), QStringLiteral("0"));
    const QCommandLineOption screenshot(
            QStringLiteral("screenshot"),
            QApplication::translate("main", "Save a picture of the window and quit."),
            QApplication::translate("main", "file"));
    parser.addOptions({templates, time, screenshot});
    parser.addPositionalArgument(
            QStringLiteral("files"),
            QApplication::translate("main", "A project (.titles) to open, SVG files to add."),
            QStringLiteral("[files...]"));
    parser.process(application);

    MainWindow window(parser.value(templates));
    window.show();
    const QStringList files = parser.positionalArguments();
    for (const QString &file : files) {
        if (file.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive))
            window.addTemplate(file);
        else
            window.openProject(file);
    }
    window.player()->setTime(parser.value(time).toInt());
    if (parser.isSet(screenshot))
        takeScreenshot(&window, parser.value(screenshot));
    return QApplication::exec();
}
