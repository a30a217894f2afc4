// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Measure.h"
#include "Titles.h"

#include <Scene/SvgDocument.h>

#include <QDomDocument>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

#include <algorithm>
#include <memory>

// What a document costs beside the least that the work can cost with Qt alone.
//
// paint       a frame, beside loading its text into the renderer and drawing it, at 1920x1080
// hold        applyAnimation() of a frame like the one before, beside the same
// construct   a document, beside parsing its text into a tree and loading it into the renderer
// adjust      all "fill" attributes of the title, beside saving its tree

namespace {

constexpr int frameLength = 40; // ms
const QSize frameSize(1920, 1080);

QByteArray frameText(const SvgDocument &document)
{
    return document.data().left(int(document.size()));
}

void drawByRenderer(const QByteArray &text, const QRectF &bounds, QImage *frame)
{
    QPainter painter(frame);
    QSvgRenderer renderer(text);
    renderer.render(&painter, bounds);
}

void paintBesideRenderer(benchmark::State &state, const QString &text)
{
    SvgDocument document(text);
    QImage frame(frameSize, QImage::Format_ARGB32_Premultiplied);
    Comparison comparison(state);
    int ms = 0;
    for ([[maybe_unused]] const auto _ : state) {
        comparison.measure(
                [&] {
                    frame.fill(Qt::transparent);
                    QPainter painter(&frame);
                    document.paint(&painter, ms);
                },
                [&] {
                    frame.fill(Qt::transparent);
                    drawByRenderer(frameText(document), document.bounds(), &frame);
                });
        ms = (ms + frameLength) % std::max(1, document.animationDurationTotal());
    }
}

void holdBesideRenderer(benchmark::State &state, const QString &text)
{
    SvgDocument document(text);
    const int ms = document.animationDurationTotal() + frameLength;
    document.applyAnimation(ms);
    const QByteArray textOfFrame = frameText(document);
    QImage frame(frameSize, QImage::Format_ARGB32_Premultiplied);
    Comparison comparison(state);
    for ([[maybe_unused]] const auto _ : state)
        comparison.measure([&] { document.applyAnimation(ms); },
                           [&] { drawByRenderer(textOfFrame, document.bounds(), &frame); });
}

void constructBesideParsing(benchmark::State &state, const QString &text)
{
    Comparison comparison(state);
    for ([[maybe_unused]] const auto _ : state) {
        std::unique_ptr<SvgDocument> document;
        QDomDocument tree;
        std::unique_ptr<QSvgRenderer> renderer;
        comparison.measure([&] { document = std::make_unique<SvgDocument>(text); },
                           [&] {
                               tree.setContent(text);
                               renderer = std::make_unique<QSvgRenderer>(text.toUtf8());
                           },
                           [&] {
                               document.reset();
                               tree.clear();
                               renderer.reset();
                           });
    }
}

void adjustBesideSaving(benchmark::State &state, const QString &text)
{
    const QString name = QStringLiteral("fill");
    SvgDocument document(text);
    document.prepareAdjustedAttibutes({name});
    QDomDocument tree;
    tree.setContent(text);
    Comparison comparison(state);
    bool isRed = false;
    for ([[maybe_unused]] const auto _ : state) {
        isRed = !isRed;
        const QString color = isRed ? QStringLiteral("#cc0000") : QStringLiteral("#00cc00");
        comparison.measure([&] { document.adjustAttribute(name, color); },
                           [&] {
                               QByteArray saved;
                               QTextStream stream(&saved);
                               tree.save(stream, 1);
                           });
    }
}

void add(const char *what, const Title &title,
         void (*function)(benchmark::State &, const QString &))
{
    addBenchmark(QStringLiteral("%1/%2").arg(QLatin1String(what), title.name), title.iterations(),
                 [function, text = title.text](benchmark::State &state) { function(state, text); });
}

void addAll()
{
    std::vector<Title> titles = templates();
    for (const Title &title : generatedTitles())
        titles.push_back(title);
    for (const Title &title : titles)
        add("paint", title, paintBesideRenderer);
    for (const Title &title : titles)
        add("hold", title, holdBesideRenderer);
    for (const int elements : {200, 2000, 20000, 100000})
        titles.push_back(generatedTitle({elements, 0, true}));
    for (const Title &title : titles)
        add("construct", title, constructBesideParsing);
    add("adjust", generatedTitle({20000}), adjustBesideSaving);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return runBenchmarks(argc, argv, addAll);
}
