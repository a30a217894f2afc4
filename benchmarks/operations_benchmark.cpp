// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Measure.h"
#include "Titles.h"

#include <Scene/SvgDocument.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <memory>
#include <vector>

// What each operation of a document costs for each element of its title, from 200 to 100,000
// elements: "ns_per_element", a median. Every operation meets a document that has just been
// constructed and shown at one time.

namespace {

/// Of ten elements one is animated, one is a definition, one uses it, and one is a clip path's.
QString titleWithEverything(int elements)
{
    QString text = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" "
                                  "xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
                                  "viewBox=\"0 0 1920 1080\">");
    for (int i = 0; i < elements; i += 10) {
        text += QStringLiteral("<rect x=\"%1\" width=\"5\" height=\"5\" fill=\"#336699\"><animate "
                               "attributeName=\"x\" from=\"0\" to=\"1900\" dur=\"10s\"/></rect>"
                               "<defs><rect id=\"d%1\" width=\"5\" height=\"5\" "
                               "visibility=\"visible\"/></defs><use xlink:href=\"#d%1\"/>"
                               "<clipPath id=\"c%1\"><rect width=\"9\" height=\"9\"/></clipPath>")
                        .arg(i);
        for (int k = 0; k < 3; ++k)
            text += QStringLiteral("<circle cx=\"%1\" cy=\"9\" r=\"4\" fill=\"#993366\"/>").arg(k);
    }
    return text + QStringLiteral("</svg>");
}

struct Operation
{
    const char *name;
    void (*run)(SvgDocument &document);
};

void paintOnce(SvgDocument &document)
{
    QImage frame(1920, 1080, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&frame);
    document.paint(&painter, 5000);
}

/// What walking a tree of that size costs at least.
void walkByQtAlone(SvgDocument &document)
{
    const QDomNode root = document.documentRoot();
    int nodes = 0;
    for (QDomNode node = root; !node.isNull(); ++nodes) {
        QDomNode next = node.firstChild();
        while (next.isNull() && node != root) {
            next = node.nextSibling();
            if (next.isNull())
                node = node.parentNode();
        }
        node = next;
    }
    benchmark::DoNotOptimize(nodes);
}

const Operation operations[] = {
        {"walkByQtAlone", walkByQtAlone},
        {"applyAnimation", [](SvgDocument &document) { document.applyAnimation(5000); }},
        {"paint", paintOnce},
        {"makeClippingDocument",
         [](SvgDocument &document) {
             const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
         }},
        {"prepareAdjustedAttibutes",
         [](SvgDocument &document) {
             document.prepareAdjustedAttibutes({QStringLiteral("fill"), QStringLiteral("stroke")});
         }},
        {"adjustAttribute",
         [](SvgDocument &document) {
             document.adjustAttribute(QStringLiteral("width"), QStringLiteral("7"));
         }},
        {"fixColors",
         [](SvgDocument &document) {
             QByteArray text = document.data();
             document.fixColors(text);
         }},
        {"viewBox", [](SvgDocument &document) { document.viewBox(); }},
        {"getAllNodes",
         [](SvgDocument &document) {
             std::vector<QDomNode> nodes;
             document.getAllNodes(document.documentRoot(), nodes);
         }},
        {"saveToBuffer", [](SvgDocument &document) { document.saveToBuffer(); }},
        {"fixConditionalTiming", [](SvgDocument &document) { document.fixConditionalTiming(); }},
        {"detectAnimatableAttibutes",
         [](SvgDocument &document) {
             int end = 0;
             document.detectAnimatableAttibutes(end);
         }},
        {"detectUseElements", [](SvgDocument &document) { document.detectUseElements(); }},
        {"detectConclusionTime", [](SvgDocument &document) { document.detectConclusionTime(); }},
        {"fixDefinitionsVisibility",
         [](SvgDocument &document) { document.fixDefinitionsVisibility(); }},
};

void measure(benchmark::State &state, const Operation &operation, int elements)
{
    const QString text = titleWithEverything(elements);
    std::vector<double> times;
    for ([[maybe_unused]] const auto _ : state) {
        SvgDocument document(text);
        document.prepareAdjustedAttibutes({QStringLiteral("width")});
        document.applyAnimation(1000);
        document.applyAnimation(2000);
        times.push_back(seconds([&] { operation.run(document); }));
        state.SetIterationTime(times.back());
    }
    state.counters["ns_per_element"] = median(times) * 1e9 / elements;
}

void measureConstruction(benchmark::State &state, int elements)
{
    const QString text = titleWithEverything(elements);
    std::vector<double> times;
    for ([[maybe_unused]] const auto _ : state) {
        std::unique_ptr<SvgDocument> document;
        times.push_back(seconds([&] { document = std::make_unique<SvgDocument>(text); }));
        state.SetIterationTime(times.back());
    }
    state.counters["ns_per_element"] = median(times) * 1e9 / elements;
}

void addAll()
{
    for (const int elements : {200, 2000, 20000, 100000}) {
        const int iterations = elements < 20000 ? 21 : 5;
        const QString suffix = QStringLiteral("_%1_elements").arg(elements);
        addBenchmark(QStringLiteral("construct") + suffix, iterations,
                     [=](benchmark::State &state) { measureConstruction(state, elements); });
        for (const Operation &operation : operations)
            addBenchmark(QLatin1String(operation.name) + suffix, iterations,
                         [=](benchmark::State &state) { measure(state, operation, elements); });
    }
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return runBenchmarks(argc, argv, addAll);
}
