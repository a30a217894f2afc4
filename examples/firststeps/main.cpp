// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

// The pictures of the API documentation, and the code that it shows beside them.

#include <Scene/Decorator/ResizeDecorator.h>
#include <Scene/Decorator/RotateDecorator.h>
#include <Scene/SceneHelper.h>
#include <Scene/SvgDocument.h>
#include <Scene/TitleItem.h>
#include <Scene/TitleSvgItem.h>
#include <Scene/TransformUtils.h>

#include <QApplication>
#include <QFile>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QPainter>
#include <QTextDocument>

#include <cstdio>

namespace {

constexpr int failed = 1;
constexpr int wronglyCalled = 2;

const QColor paper(0x20, 0x24, 0x2c);

QImage blankPicture(int width, int height)
{
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    picture.fill(paper);
    return picture;
}

//! [document]
/// The title at three times, side by side.
QImage frames(const QString &svgText)
{
    SvgDocument title(svgText);
    if (!title.isLoaded())
        std::fprintf(stderr, "%s\n", qPrintable(title.errorString()));
    const QRectF area(0.0, 0.0, 256.0, 144.0);
    title.setBounds(area);

    const int gap = 8;
    QImage picture = blankPicture(3 * 256 + 2 * gap, 144);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const int ms : {300, 700, 3000}) {
        painter.setClipRect(area); // a title may draw beyond its bounds
        title.paint(&painter, ms);
        painter.translate(area.width() + gap, 0.0);
    }
    return picture;
}
//! [document]

/// The scene, scaled down to a third.
QImage pictureOf(QGraphicsScene &scene)
{
    const QSize size = (scene.sceneRect().size() / 3.0).toSize();
    QImage picture = blankPicture(size.width(), size.height());
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    scene.render(&painter);
    return picture;
}

//! [items]
/// An SVG title at two seconds, and a text above it.
void addTitles(QGraphicsScene *scene, const QString &svgText, QTextDocument *text)
{
    auto *svg = new TitleSvgItem(svgText); // the scene owns the items
    svg->setDuration(10000);               // the length of the clip
    svg->setCurrentTime(2000);
    svg->setLineParams(QPen(QColor(0xff, 0xb0, 0x30))); // the user's colour
    scene->addItem(svg);

    auto *headline = new TitleItem(QSizeF(900.0, 200.0), text);
    headline->setSize(QSizeF(900.0, 200.0));
    headline->setPos(180.0, 200.0);
    scene->addItem(headline);
}
//! [items]

//! [decorators]
/// Frames around an SVG title, to be sized, and a text, to be sized and turned.
void addFramedTitles(QGraphicsScene *scene, const QString &svgText, QTextDocument *text,
                     QObject *styling)
{
    auto *svg = new TitleSvgItem(svgText);
    svg->setDuration(10000);
    svg->setCurrentTime(2000);
    svg->setSize(QSizeF(960.0, 540.0)); // before the frame adopts it
    svg->setPos(100.0, 400.0);
    auto *sizing = new ResizeDecorator(svg);
    scene->addItem(sizing);

    auto *headline = new TitleItem(QSizeF(700.0, 200.0), text);
    headline->setSize(QSizeF(700.0, 200.0));
    headline->setPos(1180.0, 240.0);
    auto *width = new ResizeDecorator(headline);
    width->setAvailableHandles({Qt::LeftSection, Qt::RightSection}); // the height is the text's
    auto *turning = new RotateDecorator(width); // outside, as the size would count its handle
    turning->setRotation(-12.0);
    scene->addItem(turning);

    const qreal unitsPerPixel = 3.0; // of the view, for handles that keep their size on the screen
    for (AbstractDecorator *frame :
         {static_cast<AbstractDecorator *>(sizing), static_cast<AbstractDecorator *>(width),
          static_cast<AbstractDecorator *>(turning)})
        frame->setStylingObject(styling);
    sizing->setViewScale(unitsPerPixel);
    turning->setViewScale(unitsPerPixel); // and the frame inside
    svg->setStylingObject(styling);
    headline->setStylingObject(styling);
}
//! [decorators]

//! [styling]
void setPens(QObject *styling)
{
    QPen outer(QColor(0x4c, 0xc2, 0xff), 1.0);
    QPen inner(QColor(0x10, 0x30, 0x40), 3.0);
    outer.setCosmetic(true); // as wide at every scale and zoom
    inner.setCosmetic(true);
    styling->setProperty("decoratorPen", outer);
    styling->setProperty("strokePen", inner);
    styling->setProperty("strokeColor", inner); // of a text
    styling->setProperty("decoratorSelectedPen", outer);
    styling->setProperty("strokeSelectedPen", inner);
}
//! [styling]

//! [helper]
/// A canvas whose titles follow one time.
void fillCanvas(SceneHelper *canvas, const QString &svgText)
{
    auto *title = new TitleSvgItem(svgText);
    title->setDuration(8000);
    canvas->addItem(title);
    QObject::connect(canvas, &SceneHelper::sceneTimeChanged, title, [title](SceneHelper::Time ms) {
        title->setCurrentTime(int(ms));
        title->update();
    });
}

/// The canvas at a time, as large as it gets in a picture of other proportions.
QImage fitted(SceneHelper *canvas, SceneHelper::Time ms, const QSize &size)
{
    canvas->setSceneTime(ms);
    QImage picture = blankPicture(size.width(), size.height());
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = canvas->scene()->sceneRect();
    painter.setTransform(RescaleTransform(area.size(), size));
    painter.fillRect(area, Qt::black);
    canvas->scene()->render(&painter, area, area);
    return picture;
}
//! [helper]

void setHeadline(QTextDocument *text)
{
    text->setHtml(QStringLiteral("<p style=\"font-family:'DejaVu Sans'; font-size:72pt;"
                                 " color:#f4f4f4\">Every <b>frame</b>,<br>any order</p>"));
}

bool drawPictures(const QString &templates, const QString &folder)
{
    const auto read = [&templates](const QString &name) {
        QFile file(templates + QLatin1Char('/') + name);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };
    const auto save = [&folder](const QImage &picture, const QString &name) {
        const QImage opaque = picture.convertToFormat(QImage::Format_RGB32);
        return opaque.save(folder + QLatin1Char('/') + name);
    };
    const QString opener = read(QStringLiteral("opener.svg"));
    const QString lowerThird = read(QStringLiteral("lower-third.svg"));
    const QRectF canvasArea(0.0, 0.0, 1920.0, 1080.0);

    QTextDocument text;
    setHeadline(&text);
    QGraphicsScene titles(canvasArea);
    addTitles(&titles, lowerThird, &text);

    QObject styling;
    setPens(&styling);
    QTextDocument framedText;
    setHeadline(&framedText);
    QGraphicsScene framed(canvasArea);
    QGraphicsView view(&framed);
    view.scale(1.0 / 3.0, 1.0 / 3.0);
    addFramedTitles(&framed, lowerThird, &framedText, &styling);

    SceneHelper canvas(new QGraphicsScene(canvasArea));
    fillCanvas(&canvas, opener);

    return save(frames(opener), QStringLiteral("documents.png"))
            && save(pictureOf(titles), QStringLiteral("items.png"))
            && save(pictureOf(framed), QStringLiteral("decorators.png"))
            && save(fitted(&canvas, 3000, QSize(480, 360)), QStringLiteral("helpers.png"));
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: titlescene-firststeps TEMPLATES FOLDER\n");
        return wronglyCalled;
    }
    if (drawPictures(arguments.at(1), arguments.at(2)))
        return 0;
    std::fprintf(stderr, "titlescene-firststeps: the pictures can't be written to %s\n",
                 qPrintable(arguments.at(2)));
    return failed;
}
