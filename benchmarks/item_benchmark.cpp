// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include <Scene/SvgDocument.h>
#include <Scene/TitleSvgItem.h>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QPainter>

#include <cstdio>
#include <cstdlib>

// What one frame of a title costs at 1920x1080: drawn by its document alone, and by its item in a
// view. Every iteration draws the next frame of 40 ms, from the start of the title to its closing
// part; so far the times of the document and of the clip are the same.

namespace {

constexpr int frameLength = 40; // ms
const QSize frameSize(1920, 1080);

QString templateText(const char *name)
{
    QFile file(QDir(QStringLiteral(TITLESCENE_TEMPLATES)).filePath(QString::fromLatin1(name)));
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(file.fileName()),
                     qPrintable(file.errorString()));
        std::exit(1);
    }
    return QString::fromUtf8(file.readAll());
}

/// The times of one frame after the other, again and again.
class FrameTimes
{
public:
    explicit FrameTimes(int duration) : m_duration(duration) {}

    int next()
    {
        const int time = m_time;
        m_time = time + frameLength > m_duration ? 0 : time + frameLength;
        return time;
    }

private:
    int m_duration;
    int m_time = 0;
};

void countFrames(benchmark::State &state)
{
    state.counters["frames/s"] =
            benchmark::Counter(double(state.iterations()), benchmark::Counter::kIsRate);
}

void drawDocument(benchmark::State &state, const char *name)
{
    SvgDocument document(templateText(name));
    FrameTimes times(document.animationDurationTotal() - document.animationConclusionDuration());
    QImage frame(frameSize, QImage::Format_ARGB32_Premultiplied);
    for ([[maybe_unused]] const auto _ : state) {
        frame.fill(Qt::transparent);
        QPainter painter(&frame);
        document.paint(&painter, times.next());
    }
    countFrames(state);
}

void drawItemInView(benchmark::State &state, const char *name, bool onImage)
{
    QGraphicsScene scene(QRectF(QPointF(), frameSize));
    auto *item = new TitleSvgItem(templateText(name));
    item->setPaintOnImage(onImage);
    scene.addItem(item);
    QGraphicsView view(&scene);
    view.setFrameShape(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(frameSize);

    FrameTimes times(item->documentFullViewTime());
    QImage frame(frameSize, QImage::Format_ARGB32_Premultiplied);
    for ([[maybe_unused]] const auto _ : state) {
        item->setCurrentTime(times.next());
        item->update();
        view.viewport()->render(&frame);
    }
    countFrames(state);
}

BENCHMARK_CAPTURE(drawDocument, lower_third, "lower-third.svg")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawItemInView, lower_third, "lower-third.svg", false)
        ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawDocument, clip_reveal, "clip-reveal.svg")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawItemInView, clip_reveal_directly, "clip-reveal.svg", false)
        ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawItemInView, clip_reveal_by_image, "clip-reveal.svg", true)
        ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
