// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"
#include "TitleTest.h"

#include <Scene/Decorator/RotateDecorator.h>
#include <Scene/TitleItem.h>
#include <Scene/TitleSvgItem.h>

#include <QGraphicsRectItem>
#include <QScreen>
#include <QWindow>

// Wide frame pens in views. A view repaints the bounds of what has moved and a little around them,
// so whatever is drawn beyond that stays on the screen.

namespace {

/// Everything that draws with the pens of a frame.
enum class Kind { Svg, Text, Sized, Turned, Handle };

using Change = std::function<void(QGraphicsItem &)>;

void setPens(QObject &styling, qreal width, bool isCosmetic)
{
    const auto pen = [&](const QColor &color, qreal ownWidth) {
        QPen made(color, ownWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
        made.setCosmetic(isCosmetic);
        return made;
    };
    for (const char *name : {"decoratorPen", "decoratorSelectedPen"})
        styling.setProperty(name, pen(Qt::blue, width / 2.0));
    for (const char *name : {"strokePen", "strokeSelectedPen", "strokeColor"})
        styling.setProperty(name, pen(Qt::red, width));
}

/// What moves, with its pens.
QGraphicsItem *newItem(Kind kind, QObject *styling)
{
    auto svg = std::make_unique<TitleSvgItem>(
            svgTitle(QStringLiteral("<rect width='100' height='50' fill='#0a0'/>")));
    svg->setStylingObject(styling);
    switch (kind) {
    case Kind::Svg:
        return svg.release();
    case Kind::Text: {
        auto *text = new TitleItem(QSizeF(100.0, 50.0), nullptr);
        text->setPlainText(QStringLiteral("some words"));
        text->setStylingObject(styling);
        return text;
    }
    case Kind::Sized: {
        auto *decorator = new ResizeDecorator(svg.release());
        decorator->setStylingObject(styling);
        return decorator;
    }
    case Kind::Turned: {
        auto *decorator = new RotateDecorator(svg.release());
        decorator->setStylingObject(styling);
        return decorator;
    }
    case Kind::Handle:
        break;
    }
    auto *handle = new ResizeHandleItem(QRectF(0.0, 0.0, 60.0, 40.0));
    handle->installPen(styling->property("decoratorPen").value<QPen>());
    handle->installInnerPen(styling->property("strokePen").value<QPen>());
    return handle;
}

/// Shows the origin of the scene near the upper left corner, all that the platform without a screen
/// keeps of a window at twice the resolution.
void zoom(QGraphicsView &view, qreal factor)
{
    view.setTransform(QTransform::fromScale(factor, factor));
    view.centerOn(QPointF(200.0, 200.0) / factor);
}

/// What stands on the screen, whether or not it should.
QImage shown(const QGraphicsView &view)
{
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    const QPixmap window = view.windowHandle()->screen()->grabWindow(view.winId());
    return window.toImage().convertToFormat(QImage::Format_RGB32);
}

/// The same with everything painted anew.
QImage repainted(QGraphicsView &view)
{
    view.viewport()->update();
    return shown(view);
}

} // namespace

Q_DECLARE_METATYPE(Kind)
Q_DECLARE_METATYPE(Change)

class FramePensTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void leavesNoPixels_data();
    void leavesNoPixels();
    void staysWholeBelowOthers_data() { leavesNoPixels_data(); }
    void staysWholeBelowOthers();
    void drawsTheWholePenElsewhere();
};

void FramePensTest::leavesNoPixels_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<qreal>("width");
    QTest::addColumn<bool>("isCosmetic");

    const QVector<QPair<const char *, Kind>> kinds = {{"SVG title", Kind::Svg},
                                                      {"text title", Kind::Text},
                                                      {"resize frame", Kind::Sized},
                                                      {"rotate frame", Kind::Turned},
                                                      {"handle", Kind::Handle}};
    for (const auto &kind : kinds) {
        for (const int width : {1, 3, 6, 30}) {
            for (const bool isCosmetic : {true, false}) {
                QTest::addRow("%s, %d %s", kind.first, width, isCosmetic ? "cosmetic" : "units")
                        << kind.second << qreal(width) << isCosmetic;
            }
        }
    }
}

void FramePensTest::leavesNoPixels()
{
    QFETCH(const Kind, kind);
    QFETCH(const qreal, width);
    QFETCH(const bool, isCosmetic);

    QObject styling;
    setPens(styling, width, isCosmetic);
    const Change changes[] = {
            [](QGraphicsItem &item) { item.setPos(33.3, 21.7); },
            [](QGraphicsItem &item) { item.setRotation(30.0); },
            [](QGraphicsItem &item) { item.setScale(0.5); },
            [](QGraphicsItem &item) { item.hide(); },
    };
    SceneOnView stage;
    const QImage empty = repainted(stage.view);
    for (const qreal factor : {0.4, 1.0, 2.5}) {
        zoom(stage.view, factor);
        for (const bool isAdjusted : {true, false}) {
            stage.view.setOptimizationFlag(QGraphicsView::DontAdjustForAntialiasing, !isAdjusted);
            for (const bool isSmooth : {true, false}) {
                stage.view.setRenderHint(QPainter::Antialiasing, isSmooth);
                const std::unique_ptr<QGraphicsItem> item(newItem(kind, &styling));
                stage.scene.addItem(item.get());
                QVERIFY(repainted(stage.view) != empty);
                for (const Change &change : changes) {
                    change(*item);
                    const QImage seen = shown(stage.view);
                    QCOMPARE(seen, repainted(stage.view));
                }
                QCOMPARE(shown(stage.view), empty);
            }
        }
    }
}

/// Where something else is taken away, what is drawn below it comes back.
void FramePensTest::staysWholeBelowOthers()
{
    QFETCH(const Kind, kind);
    QFETCH(const qreal, width);
    QFETCH(const bool, isCosmetic);

    QObject styling;
    setPens(styling, width, isCosmetic);
    SceneOnView stage;
    zoom(stage.view, 1.0);
    QGraphicsItem *item = newItem(kind, &styling);
    stage.scene.addItem(item);
    const QImage before = repainted(stage.view);
    auto *cover = stage.scene.addRect(QRectF(-3.0, -3.0, 6.0, 6.0), Qt::NoPen, Qt::black);
    cover->setZValue(1.0);
    const QRectF around = item->sceneBoundingRect().adjusted(-9.0, -9.0, 9.0, 9.0);
    for (qreal x = around.left(); x < around.right(); x += 3.0) {
        for (const qreal y : {around.top(), around.top() + 6.0, around.bottom() - 6.0}) {
            cover->setPos(x, y);
            QCoreApplication::processEvents();
        }
    }
    QVERIFY(shown(stage.view) != before);
    cover->hide();
    QCOMPARE(shown(stage.view), before);
}

/// On pictures nothing is repainted in parts.
void FramePensTest::drawsTheWholePenElsewhere()
{
    QObject styling;
    setPens(styling, 30.0, false);
    const std::unique_ptr<QGraphicsItem> item(newItem(Kind::Handle, &styling));
    QImage picture(100, 100, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.translate(20.0, 20.0);
    item->paint(&painter, nullptr, nullptr);
    painter.end();
    QCOMPARE(picture.pixelColor(6, 40), QColor(Qt::red));
    QCOMPARE(picture.pixelColor(3, 40), QColor(Qt::white));
}

QTEST_MAIN(FramePensTest)
#include "tst_framepens.moc"
