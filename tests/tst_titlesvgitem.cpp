// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MetaObjectText.h"
#include "TitleTest.h"

#include <Scene/TitleSvgItem.h>

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QPen>
#include <QPointer>
#include <QSignalSpy>
#include <QStyleOptionGraphicsItem>
#include <QTransform>

#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The column that the ruler's bar covers before the title begins.
constexpr int beforeStart = 4200;

const QColor red(Qt::red);
const QColor green(Qt::green);
const QColor blue(Qt::blue);

QString ruler()
{
    return readTestData(QStringLiteral("item-ruler.svg"));
}

QString card()
{
    return readTestData(QStringLiteral("item-card.svg"));
}

QString clipTitle()
{
    return readTestData(QStringLiteral("item-clip.svg"));
}

QString colorTitle()
{
    return readTestData(QStringLiteral("item-colors.svg"));
}

/// A still red title with this view box.
QString svgOfViewBox(const QString &viewBox)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"%1\">"
                          "<rect width=\"50\" height=\"50\" fill=\"#ff0000\"/></svg>")
            .arg(viewBox);
}

QImage blankImage(const QSize &size, const QColor &color)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

/// What a scene with nothing but the item shows of an area, one pixel for each unit.
QImage sceneImage(QGraphicsItem &item, const QRect &area, const QColor &background)
{
    QGraphicsScene scene;
    scene.addItem(&item);
    QImage image = blankImage(area.size(), background);
    QPainter painter(&image);
    scene.render(&painter, QRectF(QPointF(), area.size()), area);
    painter.end();
    scene.removeItem(&item);
    return image;
}

QImage sceneImage(QGraphicsItem &item, const QColor &background = Qt::transparent)
{
    return sceneImage(item, item.boundingRect().toAlignedRect(), background);
}

/// What the item itself draws, one pixel for each unit.
QImage ownImage(TitleSvgItem &item, const QColor &background = Qt::transparent)
{
    QImage image = blankImage(item.boundingRect().size().toSize(), background);
    QPainter painter(&image);
    item.paint(&painter, nullptr);
    return image;
}

/// The first column whose middle shows anything; -1 when there is none.
int firstColumn(const QImage &image)
{
    for (int x = 0; x < image.width(); ++x) {
        if (qAlpha(image.pixel(x, image.height() / 2)) != 0)
            return x;
    }
    return -1;
}

/// The time of the title that the ruler shows, ms.
int shownTime(QGraphicsItem &rulerItem)
{
    return firstColumn(sceneImage(rulerItem));
}

/// The painter's state as far as an item could leave traces in it.
QString painterState(const QPainter &painter)
{
    QString text;
    QDebug(&text) << painter.pen() << painter.brush() << painter.compositionMode()
                  << painter.opacity() << painter.worldTransform() << painter.renderHints()
                  << painter.hasClipping() << painter.clipBoundingRect() << painter.font()
                  << painter.background() << painter.backgroundMode();
    return text;
}

/// An item that claims another place in the scene than its title's.
class ShiftedItem : public TitleSvgItem
{
public:
    using TitleSvgItem::TitleSvgItem;
    QRectF boundingRect() const override { return QRectF(4, 3, 20, 10); }
};

} // namespace

class TitleSvgItemTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void methods_data();
    void methods();
    void methodCount();
    void properties();
    void type();
    void valuesAtFirst();
    void plainValuesAreKept();
    void plainValuesCauseNoRepaint();
    void currentTimeIsAProperty();

    void bounds_data();
    void bounds();
    void drawsNothingWithoutASize_data();
    void drawsNothingWithoutASize();
    void knowsTheTitlesTimes_data();
    void knowsTheTitlesTimes();

    void showsTheTimeOfTheTitle_data();
    void showsTheTimeOfTheTitle();
    void showsAnyTimeInAnyOrder();
    void showsItsTimeWithoutUpdate();
    void showsTheDocumentsPicture_data();
    void showsTheDocumentsPicture();
    void isDrawnWhereTheSceneHasIt();
    void isDrawnInAView();

    void clipPathsErase_data();
    void clipPathsErase();
    void clipPathsEraseOnALargeDevice();
    void clipPathsFollowTheTime_data();
    void clipPathsFollowTheTime();
    void keepsThePainterState_data();
    void keepsThePainterState();
    void obeysTheCompositionModeOnlyByImage_data();
    void obeysTheCompositionModeOnlyByImage();
    void drawsTheImageInTheBoundsResolution();
    void drawsOnAnImageOnlyToClip();

    void sizes_data();
    void sizes();
    void sizesKeepTheItemsTransform();
    void sizesMoveNothing();

    void frame_data();
    void frame();
    void framesWithTheCurrentPens();
    void framesItsBoundingRectangle();
    void framesNothingWithoutAStylingObject();

    void lineParamsAtFirst();
    void lineParams_data();
    void lineParams();
    void lineParamsComparedWithTheLatest();
    void lineParamsAreSetBeforeTheSignal();
    void lineColorInThePicture_data();
    void lineColorInThePicture();
    void lineColorLeavesClipPathsAlone();
    void svgTextStaysAsItWas();
    void listenersMayDeleteTheTitle();
};

// Meta-object and plain values

void TitleSvgItemTest::methods_data()
{
    QTest::addColumn<int>("index");

    const auto row = [](int index, const char *text) { QTest::newRow(text) << index; };
    row(0, "signal void geometryChanged()");
    row(1, "signal void documentChanged()");
    row(2, "slot void setSize(QSizeF size)");
    row(3, "slot void setCurrentTime(int time)");
    row(4, "slot void setHighlight(bool highlight)");
}

void TitleSvgItemTest::methods()
{
    QFETCH(const int, index);
    const QMetaObject &meta = TitleSvgItem::staticMetaObject;
    QCOMPARE(methodText(meta.method(meta.methodOffset() + index)),
             QString::fromLatin1(QTest::currentDataTag()));
}

void TitleSvgItemTest::methodCount()
{
    QCOMPARE(ownMethods(TitleSvgItem::staticMetaObject).size(), 5);
    QCOMPARE(TitleSvgItem::staticMetaObject.superClass(), &QGraphicsSvgItem::staticMetaObject);
}

void TitleSvgItemTest::properties()
{
    QCOMPARE(ownProperties(TitleSvgItem::staticMetaObject),
             QStringList(QStringLiteral("int currentTime: readable, writable, designable, "
                                        "scriptable, stored")));
}

void TitleSvgItemTest::type()
{
    const TitleSvgItem item(card());
    QCOMPARE(item.type(), 65537);
    QCOMPARE(int(TitleSvgItem::Type), 65537);
    const QGraphicsItem *base = &item;
    QCOMPARE(qgraphicsitem_cast<const TitleSvgItem *>(base), &item);
}

void TitleSvgItemTest::valuesAtFirst()
{
    const TitleSvgItem item(card());
    QCOMPARE(item.currentTime(), 0);
    QCOMPARE(item.duration(), 0);
    QCOMPARE(item.animationSpeed(), 1.0);
    QCOMPARE(item.paintOnImage(), false);
    QCOMPARE(item.highlighted(), false);
    QCOMPARE(item.stylingObject(), nullptr);
    QCOMPARE(item.parentItem(), nullptr);
    QCOMPARE(item.cacheMode(), QGraphicsItem::NoCache);
    QCOMPARE(item.transform(), QTransform());
}

void TitleSvgItemTest::plainValuesAreKept()
{
    QObject styling;
    TitleSvgItem item(card());
    item.setCurrentTime(-7);
    item.setDuration(12345);
    item.setAnimationSpeed(0.25);
    item.setPaintOnImage(true);
    item.setHighlight(true);
    item.setStylingObject(&styling);
    QCOMPARE(item.currentTime(), -7);
    QCOMPARE(item.duration(), 12345);
    QCOMPARE(item.animationSpeed(), 0.25);
    QCOMPARE(item.paintOnImage(), true);
    QCOMPARE(item.highlighted(), true);
    QCOMPARE(item.stylingObject(), &styling);
}

void TitleSvgItemTest::plainValuesCauseNoRepaint()
{
    QObject styling;
    QGraphicsScene scene;
    TitleSvgItem item(card());
    scene.addItem(&item);
    QCoreApplication::processEvents();

    QSignalSpy geometryChanges(&item, &TitleSvgItem::geometryChanged);
    QSignalSpy documentChanges(&item, &TitleSvgItem::documentChanged);
    QSignalSpy repaints(&scene, &QGraphicsScene::changed);
    item.setCurrentTime(500);
    item.setDuration(1000);
    item.setAnimationSpeed(2.0);
    item.setPaintOnImage(true);
    item.setStylingObject(&styling);
    item.setHighlight(true);
    QCoreApplication::processEvents();
    QCOMPARE(repaints.count(), 0);
    QCOMPARE(geometryChanges.count(), 0);
    QCOMPARE(documentChanges.count(), 0);

    item.update();
    QCoreApplication::processEvents();
    QCOMPARE(repaints.count(), 1);
}

void TitleSvgItemTest::currentTimeIsAProperty()
{
    TitleSvgItem item(ruler());
    QVERIFY(item.setProperty("currentTime", 1234));
    QCOMPARE(item.currentTime(), 1234);
    QCOMPARE(shownTime(item), 1234);
    item.setCurrentTime(99);
    QCOMPARE(item.property("currentTime"), QVariant(99));
}

// Size

void TitleSvgItemTest::bounds_data()
{
    QTest::addColumn<QString>("viewBox");
    QTest::addColumn<QRectF>("bounds");

    const auto row = [](const char *viewBox, const QRectF &bounds) {
        QTest::newRow(viewBox) << QString::fromLatin1(viewBox) << bounds;
    };
    row("0 0 40 20", QRectF(0, 0, 40, 20));
    row("0,0,40,20", QRectF(0, 0, 40, 20));
    row("5 7 40 20", QRectF(0, 0, 40, 20));
    row("0 0 1 1", QRectF(0, 0, 1, 1));
    row("0 0 40.5 20", QRectF(0, 0, 0, 20));
    row("0 0 0 0", QRectF());
    row("", QRectF());
}

void TitleSvgItemTest::bounds()
{
    QFETCH(const QString, viewBox);
    const TitleSvgItem item(svgOfViewBox(viewBox));
    QTEST(item.boundingRect(), "bounds");
}

void TitleSvgItemTest::drawsNothingWithoutASize_data()
{
    QTest::addColumn<QString>("svgText");
    QTest::addColumn<bool>("onImage");

    const auto row = [](const char *name, const QString &svgText) {
        QTest::addRow("%s, directly", name) << svgText << false;
        QTest::addRow("%s, by an image", name) << svgText << true;
    };
    const QString clip =
            QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"%1\"><clipPath>"
                           "<rect width=\"5\" height=\"5\" fill=\"#000000\"/></clipPath>"
                           "<rect width=\"20\" height=\"20\" fill=\"#ff0000\"/></svg>");
    row("no text", QString());
    row("no SVG", QStringLiteral("words"));
    row("broken SVG", QStringLiteral("<svg viewBox=\"0 0 40 20\"><rect"));
    row("no view box", svgOfViewBox(QString()));
    row("view box with a fraction", svgOfViewBox(QStringLiteral("0 0 40.5 20")));
    row("view box of no size, clipping", clip.arg(QStringLiteral("0 0 0 0")));
    row("view box of no width, clipping", clip.arg(QStringLiteral("0 0 0 20")));
    row("view box of negative size, clipping", clip.arg(QStringLiteral("0 0 -40 -20")));
}

void TitleSvgItemTest::drawsNothingWithoutASize()
{
    QFETCH(const QString, svgText);
    QFETCH(const bool, onImage);

    const auto drawn = [onImage](const QString &text) {
        TitleSvgItem item(text);
        item.setPaintOnImage(onImage);
        QImage image = blankImage(QSize(60, 60), Qt::white);
        QPainter painter(&image);
        painter.translate(30, 30);
        item.paint(&painter, nullptr);
        return image;
    };
    QVERIFY(!isBlank(drawn(card())));
    QVERIFY(isBlank(drawn(svgText)));
}

void TitleSvgItemTest::knowsTheTitlesTimes_data()
{
    QTest::addColumn<QString>("svgText");
    QTest::addColumn<int>("duration");
    QTest::addColumn<int>("fullViewTime");

    QTest::newRow("with a closing part") << ruler() << 4000 << 3000;
    QTest::newRow("without one") << clipTitle() << 2000 << 2000;
    QTest::newRow("still") << card() << 0 << 0;
    QTest::newRow("not loaded") << QString() << 0 << 0;
}

void TitleSvgItemTest::knowsTheTitlesTimes()
{
    QFETCH(const QString, svgText);
    TitleSvgItem item(svgText);
    item.setAnimationSpeed(2.0);
    item.setDuration(12345);
    QTEST(item.documentDuration(), "duration");
    QTEST(item.documentFullViewTime(), "fullViewTime");
}

// Time

void TitleSvgItemTest::showsTheTimeOfTheTitle_data()
{
    QTest::addColumn<double>("speed");
    QTest::addColumn<int>("duration");
    QTest::addColumn<int>("time");
    QTest::addColumn<int>("shown");

    // The ruler is 4 s long, and its closing part 1 s.
    const auto row = [](const char *name, double speed, int duration, int time, int shown) {
        QTest::newRow(name) << speed << duration << time << shown;
    };
    row("long clip: start", 1.0, 10000, 0, 0);
    row("long clip: 2 s", 1.0, 10000, 2000, 2000);
    row("long clip: hold begins", 1.0, 10000, 3000, 3000);
    row("long clip: hold", 1.0, 10000, 5000, 3000);
    row("long clip: hold ends", 1.0, 10000, 9000, 3000);
    row("long clip: closing part", 1.0, 10000, 9500, 3500);
    row("long clip: end", 1.0, 10000, 10000, 4000);
    row("long clip: after the end", 1.0, 10000, 20000, 4000);
    row("long clip: before the start", 1.0, 10000, -1, beforeStart);
    row("short clip: before the hold", 1.0, 3500, 2999, 2999);
    row("short clip: end", 1.0, 3500, 3500, 3000);
    row("short clip: hold ends after the end", 1.0, 3500, 4000, 3000);
    row("short clip: closing part after the end", 1.0, 3500, 4001, 3001);
    row("no clip length: 1 ms", 1.0, 0, 1, 1);
    row("negative clip length", 1.0, -1000, 4001, 3001);
    row("double speed: 1 s", 2.0, 10000, 1000, 2000);
    row("double speed: hold begins", 2.0, 10000, 1500, 3000);
    row("double speed: hold ends", 2.0, 10000, 9500, 3000);
    row("double speed: closing part", 2.0, 10000, 9501, 3002);
    row("double speed: end", 2.0, 10000, 10000, 4000);
    row("half speed: 3001 ms", 0.5, 20000, 3001, 1500);
    row("half speed: end", 0.5, 20000, 20000, 4000);
    row("speed 3: end", 3.0, 10000, 10000, 3999);

    row("speed 0", 0.0, 10000, 5000, 0);
    row("speed NaN", notANumber, 10000, 5000, 0);
    row("infinite speed: hold", infinite, 10000, 5000, 0);
    row("infinite speed: after the clip", infinite, 10000, 10001, 4000);
    row("infinite speed: before the start", infinite, 10000, -1, beforeStart);
    row("infinite speed backwards", -infinite, 10000, -1, 4000);
    row("backwards: hold", -1.0, 10000, 5000, 3000);
    row("backwards: after the clip", -1.0, 10000, 11500, 2500);
    row("largest speed", std::numeric_limits<double>::max(), 10000, 10001, 4000);
    row("latest time", 1.0, 10000, highest, 4000);
    row("earliest time", 1.0, 10000, lowest, beforeStart);
    row("latest time, backwards", -1.0, 10000, highest, beforeStart);
    row("earliest time, backwards", -1.0, 10000, lowest, 4000);
    row("longest clip: end", 1.0, highest, highest, 4000);
    row("longest clip: hold", 1.0, highest, highest - 1000, 3000);
    row("most negative clip", 1.0, lowest, 4001, 3001);
    row("latest time, speed 1e300", 1e300, lowest, highest, 4000);
}

void TitleSvgItemTest::showsTheTimeOfTheTitle()
{
    QFETCH(const double, speed);
    QFETCH(const int, duration);
    QFETCH(const int, time);

    TitleSvgItem item(ruler());
    item.setAnimationSpeed(speed);
    item.setDuration(duration);
    item.setCurrentTime(time);
    QTEST(shownTime(item), "shown");
    QCOMPARE(item.currentTime(), time);
    QCOMPARE(item.duration(), duration);
}

void TitleSvgItemTest::showsAnyTimeInAnyOrder()
{
    TitleSvgItem item(ruler());
    item.setDuration(10000);
    for (const int time : {2000, 0, 9500, 40, 5000, 2000}) {
        TitleSvgItem fresh(ruler());
        fresh.setDuration(10000);
        fresh.setCurrentTime(time);
        item.setCurrentTime(time);
        QCOMPARE(shownTime(item), shownTime(fresh));
    }
}

/// A picture that was kept from an earlier time would come again.
void TitleSvgItemTest::showsItsTimeWithoutUpdate()
{
    QGraphicsScene scene;
    TitleSvgItem item(clipTitle());
    scene.addItem(&item);
    const auto holeInTheScene = [&scene] {
        QImage image = blankImage(QSize(40, 20), Qt::white);
        QPainter painter(&image);
        scene.render(&painter, QRectF(0, 0, 40, 20), QRectF(0, 0, 40, 20));
        painter.end();
        return image.pixelColor(15, 5) != red;
    };
    QVERIFY(!holeInTheScene());
    item.setCurrentTime(1000);
    QVERIFY(holeInTheScene());
    item.setCurrentTime(0);
    QVERIFY(!holeInTheScene());
}

void TitleSvgItemTest::showsTheDocumentsPicture_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("time");
    QTest::addColumn<double>("speed");
    QTest::addColumn<int>("documentTime");

    const auto row = [](const char *name, const char *file, int time, double speed, int expected) {
        QTest::newRow(name) << QString::fromLatin1(file) << time << speed << expected;
    };
    row("lower third", "lower-third.svg", 1100, 1.0, 1100);
    row("opener at double speed", "opener.svg", 1000, 2.0, 2000);
    row("logo", "logo.svg", 1500, 1.0, 1500);
    row("credits", "credits.svg", 8000, 1.0, 8000);
    row("coming up next", "coming-up-next.svg", 3500, 1.0, 3500);
    row("coming up next, latest time", "coming-up-next.svg", highest, 1.0, highest - 1000);
    row("coming up next, earliest time", "coming-up-next.svg", lowest, 1.0, lowest);
    row("coming up next, speed 0", "coming-up-next.svg", 5000, 0.0, 0);
    row("opener, earliest time", "opener.svg", lowest, 1.0, lowest);
}

void TitleSvgItemTest::showsTheDocumentsPicture()
{
    QFETCH(const QString, file);
    QFETCH(const int, time);
    QFETCH(const double, speed);
    QFETCH(const int, documentTime);

    TitleSvgItem item(readTemplate(file));
    item.setCurrentTime(time);
    item.setAnimationSpeed(speed);
    SvgDocument document(readTemplate(file));
    QVERIFY(!item.boundingRect().isEmpty());
    const QImage expected = renderAt(document, documentTime);
    if (isBlank(expected))
        QVERIFY(isBlank(sceneImage(item)));
    else
        COMPARE_PICTURES(sceneImage(item), expected, 0);
}

void TitleSvgItemTest::isDrawnWhereTheSceneHasIt()
{
    TitleSvgItem item(card());
    item.setPos(45, 10);
    item.setRotation(90);
    item.setSize(QSizeF(80, 20));

    SvgDocument document(card());
    QImage expected = blankImage(QSize(50, 60), Qt::white);
    QPainter painter(&expected);
    // Turned first, then made wider.
    painter.setTransform(QTransform(0, 1, -2, 0, 45, 10));
    document.paint(&painter, 0);
    painter.end();
    COMPARE_PICTURES(sceneImage(item, QRect(0, 0, 50, 60), Qt::white), expected, 0);
}

void TitleSvgItemTest::isDrawnInAView()
{
    QGraphicsScene scene(0, 0, 40, 20);
    TitleSvgItem item(clipTitle());
    item.setPaintOnImage(true);
    scene.addItem(&item);
    scene.setBackgroundBrush(green);
    QGraphicsView view(&scene);
    view.setFrameShape(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(40, 20);

    const QImage atStart = view.grab().toImage();
    QCOMPARE(atStart.size(), QSize(40, 20));
    QCOMPARE(atStart.pixelColor(5, 5), green);
    QCOMPARE(atStart.pixelColor(15, 5), red);
    item.setCurrentTime(1000);
    item.update();
    const QImage later = view.grab().toImage();
    QCOMPARE(later.pixelColor(5, 5), red);
    QCOMPARE(later.pixelColor(15, 5), green);
}

// The two ways of painting

void TitleSvgItemTest::clipPathsErase_data()
{
    QTest::addColumn<bool>("onImage");
    QTest::addColumn<QColor>("inTheHole");

    QTest::newRow("directly: what lies below is erased") << false << QColor(Qt::transparent);
    QTest::newRow("by an image: what lies below stays") << true << blue;
}

void TitleSvgItemTest::clipPathsErase()
{
    QFETCH(const bool, onImage);

    TitleSvgItem item(clipTitle());
    item.setPaintOnImage(onImage);
    const QImage inAScene = sceneImage(item, blue);
    QCOMPARE(ownImage(item, blue), inAScene);
    QTEST(inAScene.pixelColor(5, 5), "inTheHole");
    QTEST(inAScene.pixelColor(5, 15), "inTheHole");
    QCOMPARE(inAScene.pixelColor(15, 5), red);
    QCOMPARE(inAScene.pixelColor(15, 15), blue);

    QGraphicsScene scene;
    scene.setBackgroundBrush(green);
    scene.addItem(&item);
    QImage onABrush = blankImage(QSize(40, 20), blue);
    QPainter painter(&onABrush);
    scene.render(&painter, QRectF(0, 0, 40, 20), QRectF(0, 0, 40, 20));
    painter.end();
    scene.removeItem(&item);
    QCOMPARE(onABrush.pixelColor(5, 5), onImage ? green : QColor(Qt::transparent));
    QCOMPARE(onABrush.pixelColor(15, 15), green);
}

void TitleSvgItemTest::clipPathsEraseOnALargeDevice()
{
    TitleSvgItem item(clipTitle());
    item.setSize(QSizeF(1600, 800));
    const QImage image = sceneImage(item, QRect(0, 0, 1600, 800), blue);
    QCOMPARE(image.pixelColor(200, 200), QColor(Qt::transparent));
    QCOMPARE(image.pixelColor(600, 200), red);
    QCOMPARE(image.pixelColor(600, 600), blue);
}

void TitleSvgItemTest::clipPathsFollowTheTime_data()
{
    QTest::addColumn<bool>("onImage");

    QTest::newRow("directly") << false;
    QTest::newRow("by an image") << true;
}

/// Also shows that nothing of an earlier frame is left on the image.
void TitleSvgItemTest::clipPathsFollowTheTime()
{
    QFETCH(const bool, onImage);

    TitleSvgItem item(clipTitle());
    item.setPaintOnImage(onImage);
    for (const int hole : {0, 20, 7, 0, 13}) {
        item.setCurrentTime(hole * 100);
        QImage expected = blankImage(QSize(40, 20), Qt::transparent);
        QPainter painter(&expected);
        painter.fillRect(0, 0, 40, 10, red);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(hole, 0, 10, 20, red);
        painter.end();
        COMPARE_PICTURES(sceneImage(item), expected, 0);
    }
}

void TitleSvgItemTest::keepsThePainterState_data()
{
    QTest::addColumn<QString>("svgText");
    QTest::addColumn<bool>("onImage");

    QTest::newRow("still title") << card() << false;
    QTest::newRow("still title, by an image") << card() << true;
    QTest::newRow("clip paths, directly") << clipTitle() << false;
    QTest::newRow("clip paths, by an image") << clipTitle() << true;
}

void TitleSvgItemTest::keepsThePainterState()
{
    QFETCH(const QString, svgText);
    QFETCH(const bool, onImage);

    QObject styling;
    styling.setProperty("decoratorPen", QPen(green, 3));
    TitleSvgItem item(svgText);
    item.setPaintOnImage(onImage);
    item.setStylingObject(&styling);

    QImage image = blankImage(QSize(100, 100), Qt::white);
    QPainter painter(&image);
    painter.setPen(QPen(blue, 4));
    painter.setBrush(Qt::yellow);
    painter.setOpacity(0.5);
    painter.rotate(30);
    painter.setClipRect(QRectF(1, 2, 30, 40));
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    const QString before = painterState(painter);
    item.paint(&painter, nullptr);
    QCOMPARE(painterState(painter), before);
    QVERIFY(!isBlank(image));
}

void TitleSvgItemTest::obeysTheCompositionModeOnlyByImage_data()
{
    QTest::addColumn<bool>("onImage");
    QTest::addColumn<QColor>("shown");

    QTest::newRow("directly: above what is there") << false << red;
    QTest::newRow("by an image: as the painter says") << true << blue;
}

void TitleSvgItemTest::obeysTheCompositionModeOnlyByImage()
{
    QFETCH(const bool, onImage);

    TitleSvgItem item(clipTitle());
    item.setPaintOnImage(onImage);
    QImage image = blankImage(QSize(40, 20), blue);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    item.paint(&painter, nullptr);
    QCOMPARE(painter.compositionMode(), QPainter::CompositionMode_DestinationOver);
    painter.end();
    QTEST(image.pixelColor(15, 5), "shown");
}

/// A slanted edge shows whether the steps are those of the image or of the device.
void TitleSvgItemTest::drawsTheImageInTheBoundsResolution()
{
    const QString text =
            QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 40 20\">"
                           "<clipPath><rect width=\"1\" height=\"1\" fill=\"#000000\"/></clipPath>"
                           "<path d=\"M 0 0 L 40 0 L 0 20 Z\" fill=\"#ff0000\"/></svg>");
    TitleSvgItem item(text);
    item.setPaintOnImage(true);
    const QImage small = sceneImage(item);
    item.setSize(QSizeF(160, 80));
    const QImage large = sceneImage(item, QRect(0, 0, 160, 80), Qt::transparent);
    COMPARE_PICTURES(large, small.scaled(160, 80), 0);
}

void TitleSvgItemTest::drawsOnAnImageOnlyToClip()
{
    TitleSvgItem item(card());
    item.setSize(QSizeF(100, 70));
    const QImage directly = sceneImage(item, QRect(0, 0, 100, 70), Qt::white);
    item.setPaintOnImage(true);
    COMPARE_PICTURES(sceneImage(item, QRect(0, 0, 100, 70), Qt::white), directly, 0);
}

// Sizes

void TitleSvgItemTest::sizes_data()
{
    QTest::addColumn<QString>("svgText");
    QTest::addColumn<QVector<QSizeF>>("sizes");
    QTest::addColumn<QSizeF>("scale");

    const auto row = [](const char *name, const QVector<QSizeF> &sizes, const QSizeF &scale) {
        QTest::newRow(name) << card() << sizes << scale;
    };
    row("its own size", {{40, 20}}, {1, 1});
    row("its own size twice", {{40, 20}, {40, 20}}, {1, 1});
    row("double size", {{80, 40}}, {2, 2});
    row("double size twice", {{80, 40}, {80, 40}}, {4, 4});
    row("double size three times", {{80, 40}, {80, 40}, {80, 40}}, {8, 8});
    row("double, then half", {{80, 40}, {20, 10}}, {1, 1});
    row("another aspect ratio", {{20, 40}}, {0.5, 2});
    row("fractions", {{10, 2.5}}, {0.25, 0.125});
    row("negative: mirrored", {{-40, 20}}, {-1, 1});
    row("no width", {{0, 20}}, {0, 1});
    row("nothing", {{0, 0}}, {0, 0});
    row("nothing, then its own size: stays nothing", {{0, 0}, {40, 20}}, {0, 0});
    row("default size: both negative", {QSizeF()}, {-0.025, -0.05});
    row("infinite width is left out", {{infinite, 40}}, {1, 2});
    row("infinite height is left out", {{80, -infinite}}, {2, 1});
    row("NaN is left out", {{notANumber, notANumber}}, {1, 1});
    row("double size, then NaN", {{80, 40}, {notANumber, 40}}, {2, 4});
    QTest::newRow("a title of no size keeps its scale")
            << QString() << QVector<QSizeF>{{80, 40}} << QSizeF(1, 1);
    QTest::newRow("a title of no size to nothing")
            << QString() << QVector<QSizeF>{{0, 0}} << QSizeF(1, 1);
}

void TitleSvgItemTest::sizes()
{
    QFETCH(const QString, svgText);
    QFETCH(const QVector<QSizeF>, sizes);
    QFETCH(const QSizeF, scale);

    TitleSvgItem item(svgText);
    const QRectF bounds = item.boundingRect();
    QSignalSpy geometryChanges(&item, &TitleSvgItem::geometryChanged);
    QSignalSpy documentChanges(&item, &TitleSvgItem::documentChanged);
    for (const QSizeF &size : sizes)
        item.setSize(size);
    QCOMPARE(item.transform(), QTransform::fromScale(scale.width(), scale.height()));
    QCOMPARE(item.boundingRect(), bounds);
    QCOMPARE(geometryChanges.count(), sizes.size());
    QCOMPARE(documentChanges.count(), 0);
    const QImage image = sceneImage(item, QRect(-50, -50, 100, 100), Qt::white);
    QCOMPARE(isBlank(image), svgText.isEmpty() || scale.width() == 0.0);
}

void TitleSvgItemTest::sizesKeepTheItemsTransform()
{
    TitleSvgItem item(card());
    const QTransform before = QTransform().translate(7, 8).rotate(30).shear(0.1, 0.2);
    item.setTransform(before);
    QTransform seen;
    connect(&item, &TitleSvgItem::geometryChanged, this, [&] { seen = item.transform(); });

    QVERIFY(QMetaObject::invokeMethod(&item, "setSize", Q_ARG(QSizeF, QSizeF(80, 10))));
    QCOMPARE(item.transform(), QTransform::fromScale(2, 0.5) * before);
    QCOMPARE(seen, item.transform());
}

void TitleSvgItemTest::sizesMoveNothing()
{
    TitleSvgItem item(card());
    item.setPos(100, 200);
    item.setRotation(10);
    item.setScale(3);
    item.setSize(QSizeF(80, 40));
    QCOMPARE(item.pos(), QPointF(100, 200));
    QCOMPARE(item.rotation(), 10.0);
    QCOMPARE(item.scale(), 3.0);
    QCOMPARE(item.mapToScene(0, 0), QPointF(100, 200));
}

// Frame

void TitleSvgItemTest::frame_data()
{
    QTest::addColumn<QVariantMap>("pens");
    QTest::addColumn<bool>("highlighted");
    QTest::addColumn<QPen>("linePen");
    QTest::addColumn<QPen>("framePen");

    const QString decorator = QStringLiteral("decoratorPen");
    const QString decoratorSelected = QStringLiteral("decoratorSelectedPen");
    const QString stroke = QStringLiteral("strokePen");
    const QString strokeSelected = QStringLiteral("strokeSelectedPen");
    const QPen thin(Qt::black, 1);
    const QPen wide(Qt::white, 5);
    const QPen thinSelected(Qt::magenta, 1, Qt::DotLine);
    const QPen wideSelected(Qt::cyan, 7);
    const QPen none(Qt::NoPen);
    const QVariantMap all{{decorator, thin},
                          {stroke, wide},
                          {decoratorSelected, thinSelected},
                          {strokeSelected, wideSelected}};
    const auto without = [&all](const QString &name) {
        QVariantMap pens = all;
        pens.remove(name);
        return pens;
    };
    const auto with = [&all](const QString &name, const QVariant &value) {
        QVariantMap pens = all;
        pens[name] = value;
        return pens;
    };
    const auto row = [](const char *name, const QVariantMap &pens, bool highlighted,
                        const QPen &linePen, const QPen &framePen) {
        QTest::newRow(name) << pens << highlighted << linePen << framePen;
    };

    row("plain", all, false, wide, thin);
    row("highlighted", all, true, wideSelected, thinSelected);
    row("no pens at all", {}, false, QPen(), QPen());
    row("no pens at all, highlighted", {}, true, QPen(), QPen());
    row("decoratorPen is missing", without(decorator), false, wide, QPen());
    row("strokePen is missing", {{decorator, none}}, false, QPen(), none);
    row("decoratorSelectedPen is missing", {{decorator, thin}, {strokeSelected, wideSelected}},
        true, wideSelected, QPen());
    row("strokeSelectedPen is missing", {{stroke, wide}, {decoratorSelected, none}}, true, QPen(),
        none);
    row("a colour is no pen", with(decorator, QColor(Qt::red)), false, wide, QPen());
    row("text is no pen", {{stroke, QStringLiteral("red")}, {decorator, none}}, false, QPen(),
        none);
    row("no lines", {{stroke, none}, {decorator, none}}, false, none, none);
}

namespace {

/// What the item shows, and over it the frame, drawn by hand.
QImage framed(QImage image, const QRectF &frame, const QPen &linePen, const QPen &framePen)
{
    QPainter painter(&image);
    for (const QPen &pen : {linePen, framePen}) {
        painter.setPen(pen);
        painter.drawRect(frame);
    }
    return image;
}

} // namespace

void TitleSvgItemTest::frame()
{
    QFETCH(const QVariantMap, pens);
    QFETCH(const bool, highlighted);
    QFETCH(const QPen, linePen);
    QFETCH(const QPen, framePen);

    QObject styling;
    for (auto pen = pens.begin(); pen != pens.end(); ++pen)
        styling.setProperty(pen.key().toLatin1().constData(), pen.value());
    for (const bool onImage : {false, true}) {
        TitleSvgItem item(clipTitle());
        item.setPaintOnImage(onImage);
        item.setHighlight(highlighted);
        const QImage unframed = sceneImage(item, blue);
        item.setStylingObject(&styling);
        COMPARE_PICTURES(sceneImage(item, blue),
                         framed(unframed, QRectF(1, 1, 38, 18), linePen, framePen), 0);
    }
}

void TitleSvgItemTest::framesWithTheCurrentPens()
{
    QObject styling;
    TitleSvgItem item(card());
    const QImage unframed = sceneImage(item);
    item.setStylingObject(&styling);
    const QRectF frame(1, 1, 38, 18);
    for (const QColor &color : {QColor(Qt::cyan), QColor(Qt::magenta)}) {
        styling.setProperty("decoratorPen", QPen(color));
        COMPARE_PICTURES(sceneImage(item), framed(unframed, frame, QPen(), QPen(color)), 0);
    }
    styling.setProperty("decoratorSelectedPen", QPen(Qt::white));
    QVERIFY(QMetaObject::invokeMethod(&item, "setHighlight", Q_ARG(bool, true)));
    COMPARE_PICTURES(sceneImage(item), framed(unframed, frame, QPen(), QPen(Qt::white)), 0);
    item.setHighlight(false);
    COMPARE_PICTURES(sceneImage(item), framed(unframed, frame, QPen(), QPen(Qt::magenta)), 0);
}

void TitleSvgItemTest::framesItsBoundingRectangle()
{
    QObject styling;
    ShiftedItem item(card());
    const QRect area(0, 0, 40, 20);
    const QImage unframed = sceneImage(item, area, Qt::white);
    item.setStylingObject(&styling);
    COMPARE_PICTURES(sceneImage(item, area, Qt::white),
                     framed(unframed, QRectF(5, 4, 18, 8), QPen(), QPen()), 0);
}

void TitleSvgItemTest::framesNothingWithoutAStylingObject()
{
    TitleSvgItem item(card());
    const QImage unframed = sceneImage(item);
    auto styling = std::make_unique<QObject>();
    item.setStylingObject(styling.get());
    QVERIFY(sceneImage(item) != unframed);
    styling.reset();
    QCOMPARE(item.stylingObject(), nullptr);
    COMPARE_PICTURES(sceneImage(item), unframed, 0);

    QObject other;
    item.setStylingObject(&other);
    QVERIFY(sceneImage(item) != unframed);
    item.setStylingObject(nullptr);
    COMPARE_PICTURES(sceneImage(item), unframed, 0);
}

// Line parameters

void TitleSvgItemTest::lineParamsAtFirst()
{
    const QPen pen = TitleSvgItem(card()).lineParams();
    QCOMPARE(pen.color(), QColor(0, 0, 0, 0));
    QCOMPARE(pen.brush().style(), Qt::SolidPattern);
    QCOMPARE(pen.widthF(), 50.0);
    QCOMPARE(pen.style(), Qt::DashDotDotLine);
    QCOMPARE(pen.capStyle(), Qt::SquareCap);
    QCOMPARE(pen.joinStyle(), Qt::BevelJoin);
}

void TitleSvgItemTest::lineParams_data()
{
    QTest::addColumn<QPen>("pen");
    QTest::addColumn<bool>("isNews");

    const QPen first = TitleSvgItem(card()).lineParams();
    const auto row = [&first](const char *name, bool isNews, auto change) {
        QPen pen = first;
        change(pen);
        QTest::newRow(name) << pen << isNews;
    };
    row("nothing", false, [](QPen &) {});
    row("colour", true, [](QPen &pen) { pen.setColor(Qt::red); });
    row("alpha alone", true, [](QPen &pen) { pen.setColor(QColor(0, 0, 0, 1)); });
    row("width", true, [](QPen &pen) { pen.setWidth(51); });
    row("width that rounds to another", true, [](QPen &pen) { pen.setWidthF(50.6); });
    row("width that rounds to the same", false, [](QPen &pen) { pen.setWidthF(50.4); });
    row("solid", true, [](QPen &pen) { pen.setStyle(Qt::SolidLine); });
    row("dots", true, [](QPen &pen) { pen.setStyle(Qt::DotLine); });
    row("dashes", true, [](QPen &pen) { pen.setStyle(Qt::DashLine); });
    row("dashes and dots", true, [](QPen &pen) { pen.setStyle(Qt::DashDotLine); });
    row("no line", true, [](QPen &pen) { pen.setStyle(Qt::NoPen); });
    row("cap", false, [](QPen &pen) { pen.setCapStyle(Qt::RoundCap); });
    row("join", false, [](QPen &pen) { pen.setJoinStyle(Qt::RoundJoin); });
    row("everything", true, [](QPen &pen) { pen = QPen(Qt::blue, 3, Qt::DotLine); });
}

void TitleSvgItemTest::lineParams()
{
    QFETCH(const QPen, pen);
    QFETCH(const bool, isNews);

    TitleSvgItem item(colorTitle());
    const QPen first = item.lineParams();
    const QImage before = sceneImage(item);
    QSignalSpy documentChanges(&item, &TitleSvgItem::documentChanged);
    QSignalSpy geometryChanges(&item, &TitleSvgItem::geometryChanged);
    item.setLineParams(pen);
    QCOMPARE(documentChanges.count(), isNews ? 1 : 0);
    QCOMPARE(item.lineParams(), isNews ? pen : first);
    if (pen.color() == first.color())
        COMPARE_PICTURES(sceneImage(item), before, 0);

    item.setLineParams(pen);
    QCOMPARE(documentChanges.count(), isNews ? 1 : 0);
    QCOMPARE(geometryChanges.count(), 0);
}

void TitleSvgItemTest::lineParamsComparedWithTheLatest()
{
    TitleSvgItem item(colorTitle());
    const QPen first = item.lineParams();
    const QPen other(Qt::green, 2, Qt::DotLine);
    QSignalSpy documentChanges(&item, &TitleSvgItem::documentChanged);
    item.setLineParams(other);
    item.setLineParams(first);
    item.setLineParams(other);
    QCOMPARE(documentChanges.count(), 3);
    QCOMPARE(item.lineParams(), other);
}

void TitleSvgItemTest::lineParamsAreSetBeforeTheSignal()
{
    TitleSvgItem item(colorTitle());
    QPen seen;
    QColor shown;
    connect(&item, &TitleSvgItem::documentChanged, this, [&] {
        seen = item.lineParams();
        shown = ownImage(item).pixelColor(5, 5);
    });
    const QPen pen(Qt::green, 2);
    item.setLineParams(pen);
    QCOMPARE(seen, pen);
    QCOMPARE(shown, green);
}

void TitleSvgItemTest::lineColorInThePicture_data()
{
    QTest::addColumn<QVector<QPen>>("pens");
    QTest::addColumn<QColor>("color");

    QTest::newRow("another colour")
            << QVector<QPen>{QPen(QColor(0x12, 0x34, 0x56))} << QColor(0x12, 0x34, 0x56);
    QTest::newRow("without its alpha")
            << QVector<QPen>{QPen(QColor(255, 128, 0, 10))} << QColor(255, 128, 0);
    QTest::newRow("black, which differs in alpha alone")
            << QVector<QPen>{QPen(Qt::black, 50, Qt::DashDotDotLine)} << QColor(Qt::black);
    QTest::newRow("a brush's colour")
            << QVector<QPen>{QPen(QBrush(green, Qt::Dense4Pattern), 3)} << green;
    QTest::newRow("the latest of three")
            << QVector<QPen>{QPen(red), QPen(blue), QPen(Qt::cyan)} << QColor(Qt::cyan);
    QTest::newRow("kept when the width changes")
            << QVector<QPen>{QPen(blue), QPen(blue, 7), QPen(blue, 7, Qt::DotLine)} << blue;
}

void TitleSvgItemTest::lineColorInThePicture()
{
    QFETCH(const QVector<QPen>, pens);
    QFETCH(const QColor, color);

    TitleSvgItem item(colorTitle());
    const QImage before = sceneImage(item);
    for (const QPen &pen : pens)
        item.setLineParams(pen);
    QImage expected = before;
    QPainter painter(&expected);
    painter.fillRect(0, 0, 30, 10, color);
    painter.end();
    for (const int time : {0, 500, 2000}) {
        item.setCurrentTime(time);
        COMPARE_PICTURES(sceneImage(item), expected, 0);
    }
    QCOMPARE(before.pixelColor(5, 5), red);
    QCOMPARE(before.pixelColor(15, 5), green);
    QCOMPARE(before.pixelColor(25, 5), blue);
    QCOMPARE(before.pixelColor(35, 5), QColor(Qt::cyan));
    QCOMPARE(before.pixelColor(45, 5), QColor(0x80, 0, 0x80));
    QCOMPARE(before.pixelColor(55, 5), QColor(Qt::transparent));
    QCOMPARE(before.pixelColor(65, 5), QColor(Qt::black));
}

void TitleSvgItemTest::lineColorLeavesClipPathsAlone()
{
    TitleSvgItem item(clipTitle());
    item.setCurrentTime(1000);
    item.setPaintOnImage(true);
    item.setLineParams(QPen(green));
    const QImage image = sceneImage(item, blue);
    QCOMPARE(image.pixelColor(5, 5), green);
    QCOMPARE(image.pixelColor(15, 5), blue);
    QCOMPARE(image.pixelColor(25, 5), green);
}

void TitleSvgItemTest::svgTextStaysAsItWas()
{
    for (const QString &text : {colorTitle(), QStringLiteral("no title"), QString()}) {
        TitleSvgItem item(text);
        item.setLineParams(QPen(Qt::green));
        item.setCurrentTime(500);
        const QImage image = sceneImage(item, QRect(0, 0, 70, 10), Qt::white);
        QCOMPARE(isBlank(image), item.boundingRect().isEmpty());
        QCOMPARE(item.toSvgText(), text);
    }
}

void TitleSvgItemTest::listenersMayDeleteTheTitle()
{
    QGraphicsScene scene;
    for (const bool isGeometry : {true, false}) {
        const QPointer<TitleSvgItem> item = new TitleSvgItem(card());
        scene.addItem(item);
        const auto deleteItem = [item] { delete item; };
        if (isGeometry)
            connect(item, &TitleSvgItem::geometryChanged, this, deleteItem);
        else
            connect(item, &TitleSvgItem::documentChanged, this, deleteItem);
        if (isGeometry)
            item->setSize(QSizeF(10, 10));
        else
            item->setLineParams(QPen(Qt::red));
        QVERIFY(!item);
        QVERIFY(scene.items().isEmpty());
    }
}

QTEST_MAIN(TitleSvgItemTest)
#include "tst_titlesvgitem.moc"
