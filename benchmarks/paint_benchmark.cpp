// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include <Scene/SvgDocument.h>

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

// What a frame costs beside the least that it can cost: loading the frame's text into the renderer
// and drawing it. Both are measured in turn, frame by frame of 40 ms, at 1920x1080. The time is
// that of paint(); "floor_ms" is the median of the other, "ratio" that of paint() over it.

namespace {

constexpr int frameLength = 40; // ms
const QSize frameSize(1920, 1080);

QString textOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(file.errorString()));
        std::exit(1);
    }
    return QString::fromUtf8(file.readAll());
}

/// A tenth of the elements is animated.
QString generatedTitle(int elements)
{
    QString text = QStringLiteral("<svg viewBox=\"0 0 1920 1080\">");
    for (int i = 0; i < elements; ++i) {
        text += QStringLiteral("<rect x=\"%1\" y=\"%2\" width=\"5\" height=\"5\"")
                        .arg(i % 1900)
                        .arg(i % 1070);
        text += i % 10 == 0 ? QStringLiteral("><animate attributeName=\"x\" from=\"0\" to=\"1900\" "
                                             "dur=\"10s\" fill=\"freeze\"/></rect>")
                            : QStringLiteral("/>");
    }
    return text + QStringLiteral("</svg>");
}

template <typename Work>
double seconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void paintBesideFloor(benchmark::State &state, const QString &text)
{
    SvgDocument document(text);
    QImage frame(frameSize, QImage::Format_ARGB32_Premultiplied);
    std::vector<double> paints;
    std::vector<double> floors;
    int ms = 0;
    for ([[maybe_unused]] const auto _ : state) {
        frame.fill(Qt::transparent);
        paints.push_back(seconds([&] {
            QPainter painter(&frame);
            document.paint(&painter, ms);
        }));
        const QByteArray frameText = document.data().left(int(document.size()));
        frame.fill(Qt::transparent);
        floors.push_back(seconds([&] {
            QPainter painter(&frame);
            QSvgRenderer renderer(frameText);
            renderer.render(&painter, document.bounds());
        }));
        state.SetIterationTime(paints.back());
        ms = (ms + frameLength) % std::max(1, document.animationDurationTotal());
    }
    state.counters["floor_ms"] = median(floors) * 1000.0;
    state.counters["ratio"] = median(paints) / median(floors);
}

void add(const QString &name, const QString &text)
{
    const std::string fullName = "paint/" + name.toStdString();
    benchmark::RegisterBenchmark(fullName.c_str(),
                                 [text](benchmark::State &state) { paintBesideFloor(state, text); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
}

void addAll()
{
    const QDir templates(QStringLiteral(TITLESCENE_TEMPLATES));
    for (const QString &name : templates.entryList({QStringLiteral("*.svg")}))
        add(name, textOf(templates.filePath(name)));
    for (const int elements : {200, 2000, 20000})
        add(QStringLiteral("flat_%1_elements").arg(elements), generatedTitle(elements));
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    addAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
