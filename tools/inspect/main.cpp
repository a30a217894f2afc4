// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Failure.h"
#include "JsonReport.h"
#include "Options.h"
#include "Problems.h"
#include "Process.h"
#include "TextReport.h"
#include "TimelinePlot.h"
#include "TitleText.h"
#include "Understood.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace {

enum ExitCode { Clean = 0, HasWarnings = 1, Unreadable = 2 };

void print(const QString &text, FILE *file)
{
    std::fputs(text.toUtf8().constData(), file);
}

void printFailure(const QString &message)
{
    print(QStringLiteral("titlescene-inspect: %1\n").arg(message), stderr);
}

// What the renderer says of a text is said here with its place; what ends the process is not.
void showFatalMessages(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtFatalMsg)
        printFailure(text);
}

ExitCode exitCodeFor(const std::vector<Problem> &problems, bool isStrict)
{
    const bool hasWarnings = countOf(Problem::Severity::Warning, problems) > 0;
    return hasWarnings || (isStrict && !problems.empty()) ? HasWarnings : Clean;
}

void writeFile(const QString &name, const QByteArray &bytes)
{
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw Failure(name, file.errorString());
}

void printText(const Understood &title, const std::vector<Problem> &problems, bool isQuiet)
{
    if (!isQuiet)
        print(factsText(title), stdout);
    if (!isQuiet || !problems.empty())
        print(problemsText(title.name(), problems), stdout);
}

// A picture in the place of the title would be the end of the title.
void refusePlotOver(const QString &title, const QString &plot)
{
    const QFileInfo file(title);
    if (!plot.isEmpty() && file.exists()
        && file.canonicalFilePath() == QFileInfo(plot).canonicalFilePath())
        throw Failure(plot, QStringLiteral("this is the title itself"));
}

void flushOutput()
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        throw Failure(QStringLiteral("standard output"), qt_error_string(errno));
}

ExitCode inspect(const QString &name, const Options &options)
{
    refusePlotOver(name, options.plot);
    const Understood title(displayName(name), readTitleText(name));
    const std::vector<Problem> problems = problemsOf(title);
    if (!options.plot.isEmpty())
        writeFile(options.plot, timelinePlot(title));
    if (options.json)
        std::fputs(jsonReport(title, problems).constData(), stdout);
    else
        printText(title, problems, options.quiet);
    return exitCodeFor(problems, options.strict);
}

// The worst exit code of all titles. One that can't be read does not keep the others from being
// told of.
ExitCode inspectAll(const Options &options)
{
    ExitCode worst = Clean;
    for (const QString &name : options.titles) {
        try {
            worst = std::max(worst, inspect(name, options));
        } catch (const Failure &failure) {
            printFailure(failure.message());
            if (options.json)
                std::fputs(jsonFailure(displayName(name), failure.message()).constData(), stdout);
            worst = Unreadable;
        }
        flushOutput();
    }
    return worst;
}

ExitCode run(const Options &options)
{
    switch (options.task) {
    case Options::Task::ShowHelp:
        print(Options::helpText(), stdout);
        break;
    case Options::Task::ShowVersion:
        print(QStringLiteral("titlescene-inspect " TITLESCENE_VERSION "\n"), stdout);
        break;
    case Options::Task::Inspect:
        return inspectAll(options);
    }
    return Clean;
}

} // namespace

int main(int argc, char **argv)
{
    prepareProcess(QStringLiteral("titlescene-inspect"), QStringLiteral(TITLESCENE_VERSION));
    qInstallMessageHandler(showFatalMessages);
    const QGuiApplication application(argc, argv);
    try {
        return run(Options::fromArguments(argumentList(argc, argv)));
    } catch (const Failure &failure) {
        const QString hint = failure.code() == Failure::WrongUsage
                ? QStringLiteral(" (see titlescene-inspect --help)")
                : QString();
        printFailure(failure.message() + hint);
        return Unreadable;
    }
}
