// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include <Scene/SvgDocument.h>
#include <Scene/TitleSvgItem.h>

#include <QApplication>
#include <QFile>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>

#include <cstdio>
#include <limits>
#include <memory>

// Does with the title in a file all that an editor does with titles:
//
//     hostile_runner <file>
//
// Exit code 0 when the title was drawn, 1 when it was refused, 2 when it could not be read.

namespace {

const QSize pictureSize(320, 180);

QImage emptyPicture()
{
    QImage picture(pictureSize, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    return picture;
}

void paintAt(SvgDocument &document, int ms)
{
    QImage picture = emptyPicture();
    QPainter painter(&picture);
    document.setBounds(QRectF(QPointF(), pictureSize));
    document.paint(&painter, ms);
}

void play(SvgDocument &document)
{
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr int lowest = std::numeric_limits<int>::min();
    for (const int ms : {0,
                         1,
                         40,
                         500,
                         999,
                         1000,
                         1001,
                         1500,
                         2000,
                         60'000,
                         3'600'000,
                         86'400'000,
                         highest - 1000,
                         highest - 1,
                         highest,
                         -1,
                         -1000,
                         lowest + 1,
                         lowest,
                         500})
        paintAt(document, ms);
}

void adjust(SvgDocument &document)
{
    const QString fill = QStringLiteral("fill");
    const QString reference = QStringLiteral("xlink:href");
    document.prepareAdjustedAttibutes({fill, reference});
    document.adjustAttribute(fill, QStringLiteral("#00ff00"));
    document.adjustAttribute(reference, QStringLiteral("#none"));
    paintAt(document, 700);
}

void clip(SvgDocument &document)
{
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    if (clipping)
        paintAt(*clipping, 500);
}

void paintItem(const QString &text, bool onImage)
{
    QGraphicsScene scene;
    auto *item = new TitleSvgItem(text);
    item->setPaintOnImage(onImage);
    item->setSize(pictureSize);
    item->setDuration(3000);
    scene.addItem(item);
    for (const int ms : {0, 500, 3000}) {
        item->setCurrentTime(ms);
        QImage picture = emptyPicture();
        QPainter painter(&picture);
        scene.render(&painter, QRectF(), QRectF(QPointF(), pictureSize));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QFile file(QCoreApplication::arguments().value(1));
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "usage: hostile_runner <file>\n");
        return 2;
    }
    const QString text = QString::fromUtf8(file.readAll());

    SvgDocument document(text);
    play(document);
    adjust(document);
    clip(document);
    paintItem(text, false);
    paintItem(text, true);
    if (document.isLoaded())
        return 0;
    std::fprintf(stderr, "%s\n", qPrintable(document.errorString()));
    return 1;
}
