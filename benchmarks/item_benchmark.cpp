// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Measure.h"
#include "Titles.h"

#include <Scene/SvgDocument.h>
#include <Scene/TitleSvgItem.h>

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QPainter>

#include <memory>

// What a title costs as an item of a scene, beside its document alone.
//
// view             a frame, drawn by a view of 1920x1080
// view_by_image    the same with the clip paths cut out on an image of the item's own
// construct_item   an item, beside its document and, if it clips, the companion of its clip paths

namespace {

constexpr int frameLength = 40; // ms
const QSize frameSize(1920, 1080);

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

/// A view that shows one item, from the start of its title to the closing part; so far the times of
/// the document and of the clip are the same.
void drawInView(benchmark::State &state, const QString &text, bool onImage)
{
    QGraphicsScene scene(QRectF(QPointF(), frameSize));
    auto *item = new TitleSvgItem(text);
    item->setPaintOnImage(onImage);
    scene.addItem(item);
    QGraphicsView view(&scene);
    view.setFrameShape(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(frameSize);

    SvgDocument document(text);
    FrameTimes times(item->documentFullViewTime());
    QImage frame(frameSize, QImage::Format_ARGB32_Premultiplied);
    Comparison comparison(state);
    for ([[maybe_unused]] const auto _ : state) {
        const int time = times.next();
        comparison.measure(
                [&] {
                    item->setCurrentTime(time);
                    item->update();
                    view.viewport()->render(&frame);
                },
                [&] {
                    frame.fill(Qt::transparent);
                    QPainter painter(&frame);
                    document.paint(&painter, time);
                });
    }
}

void constructItem(benchmark::State &state, const QString &text)
{
    Comparison comparison(state);
    for ([[maybe_unused]] const auto _ : state) {
        std::unique_ptr<TitleSvgItem> item;
        std::unique_ptr<SvgDocument> document;
        boost::shared_ptr<SvgDocument> clippingDocument;
        comparison.measure([&] { item = std::make_unique<TitleSvgItem>(text); },
                           [&] {
                               document = std::make_unique<SvgDocument>(text);
                               if (document->hasClipping())
                                   clippingDocument.reset(document->makeClippingDocument());
                           },
                           [&] {
                               item.reset();
                               document.reset();
                               clippingDocument.reset();
                           });
    }
}

void addAll()
{
    for (const Title &title : templates())
        addBenchmark(
                QStringLiteral("view/") + title.name, 0,
                [text = title.text](benchmark::State &state) { drawInView(state, text, false); });
    addBenchmark(QStringLiteral("view_by_image/clip-reveal.svg"), 0, [](benchmark::State &state) {
        drawInView(state, templateText(QStringLiteral("clip-reveal.svg")), true);
    });
    std::vector<Title> titles = templates();
    for (const int elements : {200, 2000, 20000})
        titles.push_back(generatedTitle({elements}));
    for (const Title &title : titles)
        addBenchmark(QStringLiteral("construct_item/") + title.name, title.iterations(),
                     [text = title.text](benchmark::State &state) { constructItem(state, text); });
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return runBenchmarks(argc, argv, addAll);
}
