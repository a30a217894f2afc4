// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MetaObjectText.h"
#include "TitleTest.h"

#include <Scene/GraphicsEffectClip.h>
#include <Scene/TitleSvgItem.h>

#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPainterPath>
#include <QTransform>

#include <functional>

namespace {

const QColor red(Qt::red);
const QColor green(Qt::green);
const QColor blue(Qt::blue);
const QColor white(Qt::white);
const QColor nothing(Qt::transparent);

constexpr int sceneSize = 60;

/// Lets a test look at the painter just before the effect draws, and just after.
class WatchedClip : public GraphicsEffectClip
{
public:
    using GraphicsEffectClip::GraphicsEffectClip;

    std::function<void(QPainter &)> before = [](QPainter &) {};
    std::function<void(QPainter &)> after = [](QPainter &) {};

protected:
    void draw(QPainter *painter) override
    {
        before(*painter);
        GraphicsEffectClip::draw(painter);
        after(*painter);
    }
};

/// A rectangle without an outline.
QGraphicsRectItem *makeRect(const QRectF &rect, const QColor &color,
                            QGraphicsItem *parent = nullptr)
{
    auto *item = new QGraphicsRectItem(rect, parent);
    item->setPen(Qt::NoPen);
    item->setBrush(color);
    return item;
}

/// What the scene shows between (0, 0) and (60, 60), one pixel for each unit.
QImage sceneImage(QGraphicsScene &scene, const QTransform &view = QTransform())
{
    const QRect area(0, 0, sceneSize, sceneSize);
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(white);
    QPainter painter(&image);
    painter.setTransform(view);
    scene.render(&painter, area, area);
    return image;
}

/// A white picture with filled shapes on it.
QImage drawing(const QVector<QPair<QPainterPath, QColor>> &shapes)
{
    QImage image(sceneSize, sceneSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(white);
    QPainter painter(&image);
    for (const auto &shape : shapes)
        painter.fillPath(shape.first, shape.second);
    return image;
}

QPainterPath rectPath(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

QImage drawing(const QRectF &rect, const QColor &color)
{
    return drawing({{rectPath(rect), color}});
}

/// The device's pixels that the painter's clip lets through.
QImage clipMask(QPainter &painter)
{
    QImage mask(sceneSize, sceneSize, QImage::Format_ARGB32_Premultiplied);
    mask.fill(nothing);
    QPainter maskPainter(&mask);
    maskPainter.setTransform(painter.worldTransform());
    if (painter.hasClipping())
        maskPainter.setClipPath(painter.clipPath());
    maskPainter.resetTransform();
    maskPainter.fillRect(mask.rect(), red);
    return mask;
}

} // namespace

Q_DECLARE_METATYPE(QPainterPath)

class GraphicsEffectClipTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void metaObject();
    void keepsItsRectangle_data();
    void keepsItsRectangle();
    void belongsToItsParent();
    void cutsWhatTheItemDraws_data();
    void cutsWhatTheItemDraws();
    void newRectangleWaitsForARepaint_data();
    void newRectangleWaitsForARepaint();
    void replacesTheClipOfAParent();
    void cutsInTheItemsCoordinates_data();
    void cutsInTheItemsCoordinates();
    void cutsChildrenToo();
    void cutsATitle();
    void leavesNoClipBehind();
    void leavesClippingOffButEmpty();
    void givesTheClipBack_data();
    void givesTheClipBack();
    void givesTheClipBackBehindMovedChildren();
    void siblingsKeepTheClip_data();
    void siblingsKeepTheClip();
    void keepsTheTransform();
};

void GraphicsEffectClipTest::metaObject()
{
    const QMetaObject &meta = GraphicsEffectClip::staticMetaObject;
    QCOMPARE(meta.superClass(), &QGraphicsEffect::staticMetaObject);
    QCOMPARE(ownMethods(meta), QStringList());
    QCOMPARE(ownProperties(meta),
             QStringList(QStringLiteral("QRectF clipRect: readable, writable, designable, "
                                        "scriptable, stored")));
}

void GraphicsEffectClipTest::keepsItsRectangle_data()
{
    QTest::addColumn<QRectF>("rect");

    QTest::newRow("plain") << QRectF(1, 2, 30, 40);
    QTest::newRow("fractions") << QRectF(0.25, -0.5, 1.125, 1e-9);
    QTest::newRow("empty") << QRectF();
    QTest::newRow("negative size") << QRectF(5, 5, -10, -20);
}

void GraphicsEffectClipTest::keepsItsRectangle()
{
    QFETCH(const QRectF, rect);

    const GraphicsEffectClip fresh(rect, nullptr);
    QVERIFY(fresh.clipRect() == rect);

    GraphicsEffectClip effect(QRectF(7, 7, 7, 7), nullptr);
    effect.setClipRect(rect);
    QVERIFY(effect.clipRect() == rect);
    QVERIFY(effect.property("clipRect").toRectF() == rect);

    effect.setClipRect(QRectF(7, 7, 7, 7));
    QVERIFY(effect.setProperty("clipRect", rect));
    QVERIFY(effect.clipRect() == rect);
}

void GraphicsEffectClipTest::belongsToItsParent()
{
    QObject parent;
    const GraphicsEffectClip effect(QRectF(0, 0, 1, 1), &parent);
    QCOMPARE(effect.parent(), &parent);
    QVERIFY(effect.isEnabled());
}

// What is drawn

void GraphicsEffectClipTest::cutsWhatTheItemDraws_data()
{
    QTest::addColumn<QRectF>("clip");
    QTest::addColumn<QRectF>("shown");

    QTest::newRow("inside") << QRectF(10, 15, 5, 5) << QRectF(10, 15, 5, 5);
    QTest::newRow("across an edge") << QRectF(0, 0, 20, 20) << QRectF(5, 5, 15, 15);
    QTest::newRow("all around") << QRectF(0, 0, 60, 60) << QRectF(5, 5, 50, 50);
    QTest::newRow("beside") << QRectF(56, 0, 4, 60) << QRectF();
    QTest::newRow("empty") << QRectF() << QRectF();
    QTest::newRow("no height") << QRectF(0, 30, 60, 0) << QRectF();
}

void GraphicsEffectClipTest::cutsWhatTheItemDraws()
{
    QFETCH(const QRectF, clip);
    QFETCH(const QRectF, shown);

    QGraphicsScene scene;
    QGraphicsRectItem *item = makeRect(QRectF(5, 5, 50, 50), red);
    scene.addItem(item);
    auto *effect = new GraphicsEffectClip(clip, nullptr);
    item->setGraphicsEffect(effect);
    if (shown.isEmpty())
        QVERIFY(isBlank(sceneImage(scene)));
    else
        COMPARE_PICTURES(sceneImage(scene), drawing(shown, red), 0);

    effect->setEnabled(false);
    COMPARE_PICTURES(sceneImage(scene), drawing(QRectF(5, 5, 50, 50), red), 0);
}

void GraphicsEffectClipTest::newRectangleWaitsForARepaint_data()
{
    QTest::addColumn<bool>("byProperty");

    QTest::newRow("setClipRect()") << false;
    QTest::newRow("setProperty()") << true;
}

void GraphicsEffectClipTest::newRectangleWaitsForARepaint()
{
    QFETCH(const bool, byProperty);

    QGraphicsScene scene;
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 60, 60), red);
    scene.addItem(item);
    auto *effect = new GraphicsEffectClip(QRectF(0, 0, 10, 10), nullptr);
    item->setGraphicsEffect(effect);
    COMPARE_PICTURES(sceneImage(scene), drawing(QRectF(0, 0, 10, 10), red), 0);
    QCoreApplication::processEvents();

    QSignalSpy repaints(&scene, &QGraphicsScene::changed);
    const QRectF other(20, 30, 5, 6);
    if (byProperty)
        QVERIFY(effect->setProperty("clipRect", other));
    else
        effect->setClipRect(other);
    QCoreApplication::processEvents();
    QCOMPARE(repaints.count(), 0);
    COMPARE_PICTURES(sceneImage(scene), drawing(other, red), 0);
}

/// The item draws inside its own rectangle, outside of its parent's clip too.
void GraphicsEffectClipTest::replacesTheClipOfAParent()
{
    QGraphicsScene scene;
    QGraphicsRectItem *parent = makeRect(QRectF(0, 0, 30, 60), nothing);
    parent->setFlag(QGraphicsItem::ItemClipsChildrenToShape);
    scene.addItem(parent);
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 60, 60), red, parent);
    COMPARE_PICTURES(sceneImage(scene), drawing(QRectF(0, 0, 30, 60), red), 0);
    item->setGraphicsEffect(new GraphicsEffectClip(QRectF(20, 10, 30, 20), nullptr));
    COMPARE_PICTURES(sceneImage(scene), drawing(QRectF(20, 10, 30, 20), red), 0);
}

void GraphicsEffectClipTest::cutsInTheItemsCoordinates_data()
{
    QTest::addColumn<QTransform>("itemTransform");
    QTest::addColumn<QTransform>("viewTransform");

    const QTransform plain;
    QTest::newRow("moved") << QTransform::fromTranslate(20, 10) << plain;
    QTest::newRow("scaled") << QTransform::fromScale(2, 0.5) << plain;
    QTest::newRow("turned by a right angle") << QTransform().translate(50, 5).rotate(90) << plain;
    QTest::newRow("turned") << QTransform().translate(30, 10).rotate(30) << plain;
    QTest::newRow("sheared") << QTransform().shear(0.5, 0.25) << plain;
    QTest::newRow("a turned painter") << plain << QTransform().translate(30, 5).rotate(40);
    QTest::newRow("a turned item on a turned painter")
            << QTransform().translate(20, 10).rotate(30)
            << QTransform().translate(30, 5).rotate(-70).scale(0.5, 0.5);
}

void GraphicsEffectClipTest::cutsInTheItemsCoordinates()
{
    QFETCH(const QTransform, itemTransform);
    QFETCH(const QTransform, viewTransform);

    QGraphicsScene scene;
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 40, 40), red);
    item->setTransform(itemTransform);
    scene.addItem(item);
    const QRectF clip(5, 8, 20, 12);
    item->setGraphicsEffect(new GraphicsEffectClip(clip, nullptr));
    const QPainterPath shape = (itemTransform * viewTransform).map(rectPath(clip));
    COMPARE_PICTURES(sceneImage(scene, viewTransform), drawing({{shape, red}}), 0);
}

void GraphicsEffectClipTest::cutsChildrenToo()
{
    QGraphicsScene scene;
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 60, 10), red);
    scene.addItem(item);
    makeRect(QRectF(0, 0, 60, 10), green, item)->setPos(10, 10);
    item->setGraphicsEffect(new GraphicsEffectClip(QRectF(0, 5, 30, 10), nullptr));
    COMPARE_PICTURES(sceneImage(scene),
                     drawing({{rectPath(QRectF(0, 5, 30, 5)), red},
                              {rectPath(QRectF(10, 10, 20, 5)), green}}),
                     0);
}

void GraphicsEffectClipTest::cutsATitle()
{
    QGraphicsScene scene;
    auto *title = new TitleSvgItem(readTestData(QStringLiteral("item-card.svg")));
    title->setPos(10, 20);
    scene.addItem(title);
    title->setGraphicsEffect(new GraphicsEffectClip(QRectF(10, 5, 20, 5), nullptr));
    COMPARE_PICTURES(sceneImage(scene),
                     drawing({{rectPath(QRectF(20, 25, 10, 5)), red},
                              {rectPath(QRectF(30, 25, 10, 5)), green}}),
                     0);
}

// What is left behind

void GraphicsEffectClipTest::leavesNoClipBehind()
{
    QGraphicsScene scene;
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 40, 40), red);
    scene.addItem(item);
    auto *effect = new WatchedClip(QRectF(5, 5, 10, 10), nullptr);
    item->setGraphicsEffect(effect);
    int draws = 0;
    // A scene that is rendered has a clip of its own.
    effect->before = [](QPainter &painter) { painter.setClipping(false); };
    effect->after = [&draws](QPainter &painter) {
        ++draws;
        QVERIFY(!painter.hasClipping());
        painter.fillRect(QRectF(30, 0, 10, 10), blue);
    };
    COMPARE_PICTURES(sceneImage(scene),
                     drawing({{rectPath(QRectF(5, 5, 10, 10)), red},
                              {rectPath(QRectF(30, 0, 10, 10)), blue}}),
                     0);
    QCOMPARE(draws, 1);
}

/// A painter that is told to clip again afterwards lets nothing through.
void GraphicsEffectClipTest::leavesClippingOffButEmpty()
{
    QGraphicsScene scene;
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 40, 40), red);
    scene.addItem(item);
    auto *effect = new WatchedClip(QRectF(5, 5, 10, 10), nullptr);
    item->setGraphicsEffect(effect);
    effect->before = [](QPainter &painter) { painter.setClipping(false); };
    effect->after = [](QPainter &painter) {
        painter.setClipping(true);
        painter.fillRect(QRectF(0, 0, 60, 60), blue);
        painter.setClipping(false);
    };
    COMPARE_PICTURES(sceneImage(scene), drawing(QRectF(5, 5, 10, 10), red), 0);
}

void GraphicsEffectClipTest::givesTheClipBack_data()
{
    QTest::addColumn<QPainterPath>("clip");
    QTest::addColumn<QTransform>("itemTransform");
    QTest::addColumn<QRectF>("effectRect");

    QPainterPath circle;
    circle.addEllipse(QRectF(5, 5, 30, 30));
    QPainterPath twoRects;
    twoRects.addRect(0, 0, 10, 30);
    twoRects.addRect(20, 10, 10, 40);
    const QRectF rect(10, 10, 15, 15);
    const QTransform turned = QTransform().translate(30, 0).rotate(30);

    QTest::newRow("rectangle") << rectPath(QRectF(3, 4, 20, 30)) << QTransform() << rect;
    QTest::newRow("circle") << circle << QTransform() << rect;
    QTest::newRow("two rectangles") << twoRects << QTransform() << rect;
    QTest::newRow("empty effect") << circle << QTransform() << QRectF();
    QTest::newRow("effect beside the item") << circle << QTransform() << QRectF(50, 50, 5, 5);
    QTest::newRow("moved item") << circle << QTransform::fromTranslate(7, 9) << rect;
    QTest::newRow("scaled item") << circle << QTransform::fromScale(2, 0.5) << rect;
    QTest::newRow("turned item") << circle << turned << rect;
    QTest::newRow("empty clip") << rectPath(QRectF()) << QTransform() << rect;
}

void GraphicsEffectClipTest::givesTheClipBack()
{
    QFETCH(const QPainterPath, clip);
    QFETCH(const QTransform, itemTransform);
    QFETCH(const QRectF, effectRect);

    QGraphicsScene scene;
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 40, 40), red);
    item->setTransform(itemTransform);
    scene.addItem(item);
    auto *effect = new WatchedClip(effectRect, nullptr);
    item->setGraphicsEffect(effect);

    int draws = 0;
    QPainterPath pathBefore;
    QImage maskBefore;
    effect->before = [&](QPainter &painter) {
        painter.setClipPath(itemTransform.inverted().map(clip));
        QVERIFY(painter.hasClipping());
        pathBefore = painter.clipPath();
        maskBefore = clipMask(painter);
    };
    effect->after = [&](QPainter &painter) {
        ++draws;
        QVERIFY(painter.hasClipping());
        QCOMPARE(painter.clipPath(), pathBefore);
        QCOMPARE(clipMask(painter), maskBefore);
    };
    const QImage image = sceneImage(scene);
    QCOMPARE(draws, 1);
    const QRectF shown = effectRect & item->rect();
    if (shown.isEmpty())
        QVERIFY(isBlank(image));
    else
        COMPARE_PICTURES(image, drawing({{itemTransform.map(rectPath(shown)), red}}), 0);
}

/// A clip path is given in the coordinates of the item, which its children leave for their own.
void GraphicsEffectClipTest::givesTheClipBackBehindMovedChildren()
{
    QGraphicsScene scene;
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 40, 40), red);
    scene.addItem(item);
    QGraphicsRectItem *child = makeRect(QRectF(0, 0, 5, 5), green, item);
    child->setPos(13, 17);
    child->setRotation(25);
    auto *effect = new WatchedClip(QRectF(10, 10, 15, 15), nullptr);
    item->setGraphicsEffect(effect);
    int draws = 0;
    const QPainterPath clip = rectPath(QRectF(3, 4, 20, 30));
    effect->before = [&clip](QPainter &painter) { painter.setClipPath(clip); };
    effect->after = [&](QPainter &painter) {
        ++draws;
        QCOMPARE(painter.clipPath(), clip);
    };
    QVERIFY(!isBlank(sceneImage(scene)));
    QCOMPARE(draws, 1);
}

void GraphicsEffectClipTest::siblingsKeepTheClip_data()
{
    QTest::addColumn<QTransform>("itemTransform");
    QTest::addColumn<QTransform>("childTransform");

    const QTransform plain;
    QTest::newRow("plain") << plain << plain;
    QTest::newRow("moved item") << QTransform::fromTranslate(10, 5) << plain;
    QTest::newRow("turned item") << QTransform().rotate(30) << plain;
    QTest::newRow("moved child") << plain << QTransform::fromTranslate(20, 3);
    QTest::newRow("turned child") << plain << QTransform().rotate(-20);
    QTest::newRow("item of no size") << QTransform::fromScale(0, 0) << plain;
    QTest::newRow("item of no width") << QTransform::fromScale(0, 1) << plain;
    QTest::newRow("child of no size") << plain << QTransform::fromScale(0, 0);
}

/// What is drawn after the item is cut by their common parent as it was before.
void GraphicsEffectClipTest::siblingsKeepTheClip()
{
    QFETCH(const QTransform, itemTransform);
    QFETCH(const QTransform, childTransform);

    QGraphicsScene scene;
    QGraphicsRectItem *parent = makeRect(QRectF(0, 0, 30, 60), nothing);
    parent->setFlag(QGraphicsItem::ItemClipsChildrenToShape);
    scene.addItem(parent);
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 20, 10), red, parent);
    item->setTransform(itemTransform);
    item->setGraphicsEffect(new GraphicsEffectClip(QRectF(0, 0, 50, 50), nullptr));
    makeRect(QRectF(0, 0, 10, 10), green, item)->setTransform(childTransform);
    makeRect(QRectF(0, 40, 60, 20), blue, parent);

    const QRect lowerPart(0, 40, 60, 20);
    COMPARE_PICTURES(sceneImage(scene).copy(lowerPart),
                     drawing(QRectF(0, 40, 30, 20), blue).copy(lowerPart), 0);
}

void GraphicsEffectClipTest::keepsTheTransform()
{
    QGraphicsScene scene;
    QGraphicsRectItem *item = makeRect(QRectF(0, 0, 40, 40), red);
    item->setTransform(QTransform().translate(20, 5).rotate(30));
    scene.addItem(item);
    makeRect(QRectF(0, 0, 5, 5), green, item)->setPos(13, 17);
    auto *effect = new WatchedClip(QRectF(10, 10, 15, 15), nullptr);
    item->setGraphicsEffect(effect);
    int draws = 0;
    effect->after = [&](QPainter &painter) {
        ++draws;
        QCOMPARE(painter.worldTransform(), item->transform());
    };
    QVERIFY(!isBlank(sceneImage(scene)));
    QCOMPARE(draws, 1);
}

QTEST_MAIN(GraphicsEffectClipTest)
#include "tst_graphicseffectclip.moc"
