// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ContactSheet.h"
#include "Failure.h"
#include "FramePainter.h"
#include "FrameSchedule.h"
#include "MissingFonts.h"
#include "Options.h"
#include "Output.h"
#include "Process.h"
#include "Reporter.h"
#include "SafeFile.h"
#include "SourcePlaces.h"
#include "StandardOutput.h"
#include "Title.h"
#include "TitleText.h"
#include "WorkerPool.h"

#include <QDir>
#include <QGuiApplication>

#include <memory>
#include <optional>

namespace {

// None when the title has none of the frames, which is right for one of many tasks that share the
// frames of titles of any length.
std::optional<FrameSchedule> scheduleFor(const Options &options, const Title &title,
                                         Reporter &reporter)
{
    if (options.times)
        return FrameSchedule(*options.times);

    const qint64 lastFrame = options.rate.frameCount(title.duration()) - 1;
    if (!options.frames)
        return FrameSchedule(options.rate, {0, lastFrame});
    if (options.frames->first > lastFrame) {
        reporter.note(QStringLiteral("%1: nothing to do, since frame %2 is past the last frame, %3")
                              .arg(title.name())
                              .arg(options.frames->first)
                              .arg(lastFrame));
        return std::nullopt;
    }
    return FrameSchedule(options.rate,
                         {options.frames->first, qMin(options.frames->last, lastFrame)});
}

void warnOfMissingFonts(const QString &titleText, Reporter &reporter)
{
    if (!titleText.contains(QLatin1String("font-family")))
        return; // the elements of a large title take much memory
    for (const MissingFont &font : missingFonts(SourcePlaces(titleText)))
        reporter.warning(font.reason());
}

void writeFrames(const FramePainter &painter, const FrameSchedule &schedule, const QString &folder,
                 Reporter &reporter)
{
    const QDir directory(folder);
    for (qint64 i = 0; i < schedule.count(); ++i) {
        const QImage picture = painter.paint(schedule.timeOf(i));
        reporter.refuseWarnings();
        writePng(directory.filePath(schedule.fileNameOf(i)), picture);
        reporter.pictureDone();
    }
}

void writeRaw(const FramePainter &painter, const FrameSchedule &schedule, RawOutput &output,
              const Reporter &reporter)
{
    for (qint64 i = 0; i < schedule.count(); ++i) {
        const QImage picture = painter.paint(schedule.timeOf(i));
        reporter.refuseWarnings();
        output.write(picture);
    }
}

void writeContactSheet(const ContactSheet &sheet, const QString &path, Reporter &reporter)
{
    const QImage picture = sheet.paint(reporter);
    reporter.refuseWarnings();
    writePng(path, picture);
}

void render(const Options &options, Reporter &reporter)
{
    const auto rawOutput = options.raw ? std::make_unique<RawOutput>() : nullptr;

    const QString text = readTitleText(options.title);
    Title title(displayName(options.title), text, options.color);
    if (!options.worker)
        warnOfMissingFonts(text, reporter);
    reporter.refuseWarnings();
    const std::optional<FrameSchedule> schedule = scheduleFor(options, title, reporter);
    if (!schedule)
        return;

    const QSize canvas = options.size.isValid() ? options.size : title.size();
    const FramePainter painter(title, canvas, options.background);
    const ContactSheet sheet(title, *schedule, canvas, options.background);

    const bool hasFrames = !options.outputFolder.isEmpty();
    const bool hasSheet = !options.contactSheet.isEmpty();
    if (!options.raw)
        reporter.begin((hasFrames ? schedule->count() : 0) + (hasSheet ? sheet.pictureCount() : 0));

    if (rawOutput)
        writeRaw(painter, *schedule, *rawOutput, reporter);
    if (hasFrames) {
        makeFolder(options.outputFolder);
        if (options.jobs > 1)
            WorkerPool(options, text, reporter).render(*schedule);
        else
            writeFrames(painter, *schedule, options.outputFolder, reporter);
    }
    if (hasSheet)
        writeContactSheet(sheet, options.contactSheet, reporter);
}

std::unique_ptr<Reporter> reporterFor(const Options &options)
{
    if (options.worker)
        return std::make_unique<WorkerReporter>(options.strict);
    return std::make_unique<ConsoleReporter>(options.quiet, options.strict);
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
        ConsoleReporter(true, false)
                .failure(failure.message() + QStringLiteral(" (see titlescene-render --help)"));
        return failure.code();
    }
}
