// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ContactSheet.h"
#include "Failure.h"
#include "FramePainter.h"
#include "FrameSchedule.h"
#include "Options.h"
#include "Output.h"
#include "Process.h"
#include "Reporter.h"
#include "SafeFile.h"
#include "StandardOutput.h"
#include "Title.h"
#include "TitleText.h"
#include "WorkerPool.h"

#include <QDir>
#include <QGuiApplication>

#include <memory>

namespace {

FrameSchedule scheduleFor(const Options &options, const Title &title)
{
    if (options.times)
        return FrameSchedule(*options.times);

    const qint64 lastFrame = options.rate.frameCount(title.duration()) - 1;
    if (!options.frames)
        return FrameSchedule(options.rate, {0, lastFrame});
    if (options.frames->first > lastFrame) {
        throw Failure(title.name(),
                      QStringLiteral("frame %1 is past the last frame, %2")
                              .arg(options.frames->first)
                              .arg(lastFrame));
    }
    return FrameSchedule(options.rate,
                         {options.frames->first, qMin(options.frames->last, lastFrame)});
}

void writeFrames(const FramePainter &painter, const FrameSchedule &schedule, const QString &folder,
                 Reporter &reporter)
{
    const QDir directory(folder);
    for (qint64 i = 0; i < schedule.count(); ++i) {
        writePng(directory.filePath(schedule.fileNameOf(i)), painter.paint(schedule.timeOf(i)));
        reporter.pictureDone();
    }
}

void writeRaw(const FramePainter &painter, const FrameSchedule &schedule, RawOutput &output)
{
    for (qint64 i = 0; i < schedule.count(); ++i)
        output.write(painter.paint(schedule.timeOf(i)));
}

void render(const Options &options, Reporter &reporter)
{
    const auto rawOutput = options.raw ? std::make_unique<RawOutput>() : nullptr;

    const QString text = readTitleText(options.title);
    Title title(displayName(options.title), text, options.color);
    const FrameSchedule schedule = scheduleFor(options, title);
    const QSize canvas = options.size.isValid() ? options.size : title.size();
    const FramePainter painter(title, canvas, options.background);
    const ContactSheet sheet(title, schedule, canvas, options.background);

    const bool hasFrames = !options.outputFolder.isEmpty();
    const bool hasSheet = !options.contactSheet.isEmpty();
    if (!options.raw)
        reporter.begin((hasFrames ? schedule.count() : 0) + (hasSheet ? sheet.pictureCount() : 0));

    if (rawOutput)
        writeRaw(painter, schedule, *rawOutput);
    if (hasFrames) {
        makeFolder(options.outputFolder);
        if (options.jobs > 1)
            WorkerPool(options, text, reporter).render(schedule);
        else
            writeFrames(painter, schedule, options.outputFolder, reporter);
    }
    if (hasSheet)
        writePng(options.contactSheet, sheet.paint(reporter));
}

std::unique_ptr<Reporter> reporterFor(const Options &options)
{
    if (options.worker)
        return std::make_unique<WorkerReporter>();
    return std::make_unique<ConsoleReporter>(options.quiet);
}

int run(const Options &options, int argc, char **argv)
{
    const auto reporter = reporterFor(options);
    QtMessageRoute route(reporter.get());
    const QGuiApplication application(argc, argv);
    route.sendWarnings();
    try {
        switch (options.task) {
        case Options::Task::ShowHelp:
            writeToStandardOutput(Options::helpText().toLocal8Bit());
            break;
        case Options::Task::ShowVersion:
            writeToStandardOutput("titlescene-render " TITLESCENE_VERSION "\n");
            break;
        case Options::Task::Render:
            render(options, *reporter);
            break;
        }
    } catch (const Failure &failure) {
        reporter->failure(failure.message());
        return failure.code();
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    prepareProcess(QStringLiteral("titlescene-render"), QStringLiteral(TITLESCENE_VERSION));
    try {
        return run(Options::fromArguments(argumentList(argc, argv)), argc, argv);
    } catch (const Failure &failure) {
        ConsoleReporter(true).failure(failure.message()
                                      + QStringLiteral(" (see titlescene-render --help)"));
        return failure.code();
    }
}
