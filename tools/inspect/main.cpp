// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Failure.h"
#include "JsonReport.h"
#include "Options.h"
#include "Problems.h"
#include "Process.h"
#include "SafeFile.h"
#include "StandardOutput.h"
#include "TextReport.h"
#include "TimelinePlot.h"
#include "TitleText.h"
#include "Understood.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <algorithm>
#include <cstdio>

namespace {

enum ExitCode { Clean = 0, HasWarnings = 1, Unreadable = 2 };

void printFailure(const QString &message)
{
    std::fputs(QStringLiteral("titlescene-inspect: %1\n").arg(message).toUtf8().constData(),
               stderr);
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

QString textFor(const Understood &title, const std::vector<Problem> &problems, bool isQuiet)
{
    const QString facts = isQuiet ? QString() : factsText(title);
    const bool isSilent = isQuiet && problems.empty();
    return isSilent ? QString() : facts + problemsText(title.name(), problems);
}

// A picture in the place of the title would be the end of the title.
void refusePlotOver(const QString &title, const QString &plot)
{
    const QFileInfo file(title);
    if (!plot.isEmpty() && file.exists()
        && file.canonicalFilePath() == QFileInfo(plot).canonicalFilePath())
        throw Failure(plot, QStringLiteral("this is the title itself"));
}

// What there is to say of a title.
struct Report
{
    QByteArray text; // for standard output
    ExitCode exitCode = Clean;
};

Report inspect(const QString &name, const Options &options)
{
    refusePlotOver(name, options.plot);
    const Understood title(displayName(name), readTitleText(name));
    const std::vector<Problem> problems = problemsOf(title);
    if (!options.plot.isEmpty())
        writeFile(options.plot, timelinePlot(title));
    return {options.json ? jsonReport(title, problems)
                         : textFor(title, problems, options.quiet).toUtf8(),
            exitCodeFor(problems, options.strict)};
}

Report failureReport(const QString &name, const QString &message, bool isJson)
{
    return {isJson ? jsonFailure(displayName(name), message) : QByteArray(), Unreadable};
}

// The worst exit code of all titles. One that can't be read does not keep the others from being
// told of.
ExitCode inspectAll(const Options &options)
{
    ExitCode worst = Clean;
    for (const QString &name : options.titles) {
        Report report;
        try {
            report = inspect(name, options);
        } catch (const Failure &failure) {
            printFailure(failure.message());
            report = failureReport(name, failure.message(), options.json);
        }
        writeToStandardOutput(report.text);
        worst = std::max(worst, report.exitCode);
    }
    return worst;
}

ExitCode run(const Options &options)
{
    switch (options.task) {
    case Options::Task::ShowHelp:
        writeToStandardOutput(Options::helpText().toUtf8());
        break;
    case Options::Task::ShowVersion:
        writeToStandardOutput("titlescene-inspect " TITLESCENE_VERSION "\n");
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
