// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MetaObjectText.h"
#include "TextStage.h"
#include "TitleTest.h"

#include <QPen>
#include <QSignalSpy>
#include <QStyleOptionGraphicsItem>
#include <QTemporaryDir>
#include <QVariantMap>

#include <memory>

namespace {

const QRect area(0, 0, 500, 400);

/// The whole scene with nothing but the item, one pixel for each unit.
QImage sceneImage(TextStage &stage)
{
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    stage.scene.render(&painter, area, area);
    return image;
}

/// The image, and over it the frame, drawn by hand.
QImage framed(QImage image, const QRectF &frame, const QPen &inner, const QPen &outer)
{
    QPainter painter(&image);
    for (const QPen &pen : {inner, outer}) {
        painter.setPen(pen);
        painter.drawRect(frame);
    }
    return image;
}

const QImage &layoutImage(const TitleItem &item)
{
    return *static_cast<const QImage *>(item.document()->documentLayout()->paintDevice());
}

} // namespace

class TitleItemTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void methods_data();
    void methods();
    void methodCount();
    void valuesAtFirst();
    void belongsToItsParent();
    void staysInDisplayModeAtFirst();

    void readsNoFile();

    void layoutImage_data();
    void layoutImage();
    void layoutImageKeepsItsSize();
    void sizeSetsTheTextWidth_data();
    void sizeSetsTheTextWidth();
    void sizeIsASlot();
    void tellsANewGeometry();
    void tellsANewGeometryWhileTyping();

    void showsTheText();
    void frame_data();
    void frame();
    void framesWithTheCurrentPens();
    void framesNothingWithoutAStylingObject();
    void framesInEditModeToo();
    void highlightingRepaints();
    void keepsThePainterState();
};

// Meta-object and plain values

void TitleItemTest::methods_data()
{
    QTest::addColumn<int>("index");

    const auto row = [](int index, const char *text) { QTest::newRow(text) << index; };
    row(0, "signal void contentEdited()");
    row(1, "signal void currentCharFormatChanged(QTextCharFormat)");
    row(2, "signal void geometryChanged()");
    row(3, "slot void setSize(QSizeF size)");
    row(4, "slot void setEditable(bool editable, QPointF)");
    row(5, "slot void setEditable(bool editable)");
    row(6, "slot void setHighlight(bool value)");
    row(7, "slot void checkFormatChanges(int type)");
}

void TitleItemTest::methods()
{
    QFETCH(const int, index);
    const QMetaObject &meta = TitleItem::staticMetaObject;
    QCOMPARE(methodText(meta.method(meta.methodOffset() + index)),
             QString::fromLatin1(QTest::currentDataTag()));
}

void TitleItemTest::methodCount()
{
    const QMetaObject &meta = TitleItem::staticMetaObject;
    QCOMPARE(ownMethods(meta).size(), 8);
    QCOMPARE(ownProperties(meta), QStringList());
    QCOMPARE(meta.superClass(), &QGraphicsTextItem::staticMetaObject);
}

void TitleItemTest::valuesAtFirst()
{
    const TitleItem item(QSizeF(100, 50), nullptr);
    QVERIFY(item.acceptRichText());
    QCOMPARE(item.stylingObject(), nullptr);
    QVERIFY(!item.isEditable());
    QCOMPARE(item.currentCharFormat(), QTextCharFormat());
    QCOMPARE(item.parentItem(), nullptr);
    QCOMPARE(item.toPlainText(), QString());
}

void TitleItemTest::belongsToItsParent()
{
    QTextDocument document;
    auto *parent = new QGraphicsRectItem;
    const QPointer<TitleItem> item = new TitleItem(QSizeF(100, 50), &document, parent);
    QCOMPARE(item->parentItem(), parent);
    QCOMPARE(item->document(), &document);
    delete parent;
    QVERIFY(!item);
}

/// Leaving the edit mode, with which every title begins, takes the focus flag away again.
void TitleItemTest::staysInDisplayModeAtFirst()
{
    QTextDocument document(QStringLiteral("text"));
    const TitleItem item(QSizeF(100, 50), &document);
    QCOMPARE(item.flags() & (QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable),
             QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
    QCOMPARE(item.flags() & QGraphicsItem::ItemIsFocusable, 0);
    QCOMPARE(item.textInteractionFlags(), Qt::TextInteractionFlags(Qt::NoTextInteraction));
}

// Layout

void TitleItemTest::layoutImage_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSize>("pixels");

    const auto row = [](const char *name, const QSizeF &size, const QSize &pixels) {
        QTest::newRow(name) << size << pixels;
    };
    row("whole numbers", QSizeF(300, 100), QSize(300, 100));
    row("fractions are dropped", QSizeF(300.9, 100.999), QSize(300, 100));
    row("empty", QSizeF(0, 0), QSize(1, 1));
    row("of no height", QSizeF(300, 0.9), QSize(1, 1));
    row("negative", QSizeF(-300, -100), QSize(1, 1));
    row("not a number", QSizeF(qQNaN(), 100), QSize(1, 1));
    row("endless", QSizeF(qInf(), qInf()), QSize(1, 1));
}

void TitleItemTest::layoutImage()
{
    QFETCH(const QSizeF, size);
    QFETCH(const QSize, pixels);

    QTextDocument document(QStringLiteral("text"));
    const TitleItem item(size, &document);
    const QPaintDevice *device = document.documentLayout()->paintDevice();
    QVERIFY(device);
    QCOMPARE(device->devType(), int(QInternal::Image));
    const QImage &image = ::layoutImage(item);
    QCOMPARE(image.size(), pixels);
    QCOMPARE(image.format(), QImage::Format_ARGB32);
    QCOMPARE(image.dotsPerMeterX(), 3780);
    QCOMPARE(image.dotsPerMeterY(), 3780);
    QCOMPARE(image.logicalDpiX(), 96);
    QCOMPARE(image.logicalDpiY(), 96);
}

void TitleItemTest::layoutImageKeepsItsSize()
{
    QTextDocument document;
    TitleItem item(QSizeF(300, 100), &document);
    item.setSize(QSizeF(50, 40));
    QCOMPARE(::layoutImage(item).size(), QSize(300, 100));
}

void TitleItemTest::sizeSetsTheTextWidth_data()
{
    QTest::addColumn<QSizeF>("size");

    QTest::newRow("wide") << QSizeF(300, 100);
    QTest::newRow("narrow") << QSizeF(40, 100);
    QTest::newRow("of no height") << QSizeF(300, 0);
    QTest::newRow("of negative height") << QSizeF(300, -7);
    QTest::newRow("a fraction") << QSizeF(99.5, 10.5);
}

void TitleItemTest::sizeSetsTheTextWidth()
{
    QFETCH(const QSizeF, size);

    QTextDocument document(QStringLiteral("some words in lines"));
    TitleItem item(QSizeF(400, 300), &document);
    item.setSize(size);
    QCOMPARE(item.textWidth(), size.width());
    QCOMPARE(document.textWidth(), size.width());

    QTextDocument twin(QStringLiteral("some words in lines"));
    QImage device(1, 1, QImage::Format_ARGB32);
    device.setDotsPerMeterX(3780);
    device.setDotsPerMeterY(3780);
    twin.documentLayout()->setPaintDevice(&device);
    twin.setTextWidth(size.width());
    QCOMPARE(item.boundingRect(), QRectF(QPointF(), twin.size()));
}

void TitleItemTest::sizeIsASlot()
{
    TitleItem item(QSizeF(400, 300), nullptr);
    QVERIFY(QMetaObject::invokeMethod(&item, "setSize", Q_ARG(QSizeF, QSizeF(123, 45))));
    QCOMPARE(item.textWidth(), 123.0);
}

void TitleItemTest::tellsANewGeometry()
{
    QTextDocument document(QStringLiteral("some words in lines"));
    TitleItem item(QSizeF(400, 300), &document);
    item.setSize(QSizeF(300, 100));
    QSignalSpy geometries(&item, &TitleItem::geometryChanged);
    QRectF told;
    connect(&item, &TitleItem::geometryChanged, this, [&] { told = item.boundingRect(); });
    item.setSize(QSizeF(300, 200));
    QCOMPARE(geometries.count(), 0);
    item.setSize(QSizeF(40, 200));
    QVERIFY(geometries.count() >= 1);
    QCOMPARE(told, item.boundingRect());

    geometries.clear();
    QTextCursor(&document).insertText(QStringLiteral("one more line\n"));
    QVERIFY(geometries.count() >= 1);
    QCOMPARE(told, item.boundingRect());
}

void TitleItemTest::tellsANewGeometryWhileTyping()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    QSignalSpy geometries(stage.item, &TitleItem::geometryChanged);
    const qreal height = stage.item->boundingRect().height();
    stage.press(Qt::Key_Return);
    QCOMPARE(geometries.count(), 1);
    QVERIFY(stage.item->boundingRect().height() > height);
}

// Painting

/// In an item's own document. A picture that the application adds is shown.
void TitleItemTest::readsNoFile()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("canary.png"));
    QImage picture(50, 50, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(path));

    QGraphicsScene scene;
    TitleItem item(QSizeF(400, 300), nullptr);
    scene.addItem(&item);
    const auto showsBlue = [&](const QString &name) {
        item.setHtml(QStringLiteral("<img src=\"%1\" width=\"90\" height=\"90\"/>").arg(name));
        QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        scene.render(&painter, area, area);
        return image.pixelColor(50, 50) == QColor(Qt::blue);
    };
    QVERIFY(!showsBlue(path));
    QVERIFY(!showsBlue(QStringLiteral("file://") + path));
    item.document()->addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("a")), picture);
    QVERIFY(showsBlue(QStringLiteral("a")));
}

void TitleItemTest::showsTheText()
{
    TextStage stage(manyFonts());
    COMPARE_PICTURES(sceneImage(stage), stage.picture(), 0);
}

void TitleItemTest::frame_data()
{
    QTest::addColumn<QVariantMap>("pens");
    QTest::addColumn<bool>("highlighted");
    QTest::addColumn<QPen>("inner");
    QTest::addColumn<QPen>("outer");

    const QString decorator = QStringLiteral("decoratorPen");
    const QString decoratorSelected = QStringLiteral("decoratorSelectedPen");
    const QString stroke = QStringLiteral("strokeColor");
    const QString strokeSelected = QStringLiteral("strokeSelectedPen");
    const QPen thin(Qt::black, 1);
    const QPen wide(Qt::yellow, 5);
    const QPen thinSelected(Qt::magenta, 1, Qt::DotLine);
    const QPen wideSelected(Qt::cyan, 7);
    const QVariantMap all{{decorator, thin},
                          {stroke, wide},
                          {decoratorSelected, thinSelected},
                          {strokeSelected, wideSelected},
                          {QStringLiteral("strokePen"), QPen(Qt::red, 9)}};
    const auto row = [](const char *name, const QVariantMap &pens, bool highlighted,
                        const QPen &inner, const QPen &outer) {
        QTest::newRow(name) << pens << highlighted << inner << outer;
    };

    row("plain", all, false, wide, thin);
    row("highlighted", all, true, wideSelected, thinSelected);
    row("no pens at all", {}, false, QPen(), QPen());
    row("no pens at all, highlighted", {}, true, QPen(), QPen());
    row("inner pen alone", {{stroke, wide}}, false, wide, QPen());
    row("outer pen alone", {{decorator, wide}}, false, QPen(), wide);
    row("selected pens do not stand in",
        {{decoratorSelected, wideSelected}, {strokeSelected, wideSelected}}, false, QPen(), QPen());
    row("plain pens do not stand in", {{decorator, wide}, {stroke, wide}}, true, QPen(), QPen());
    row("a colour is no pen", {{stroke, QColor(Qt::red)}, {decorator, QPen(Qt::NoPen)}}, false,
        QPen(), QPen(Qt::NoPen));
    row("strokePen is not looked at", {{QStringLiteral("strokePen"), wide}}, false, QPen(), QPen());
}

void TitleItemTest::frame()
{
    QFETCH(const QVariantMap, pens);
    QFETCH(const bool, highlighted);
    QFETCH(const QPen, inner);
    QFETCH(const QPen, outer);

    QObject styling;
    for (auto pen = pens.begin(); pen != pens.end(); ++pen)
        styling.setProperty(pen.key().toLatin1().constData(), pen.value());
    TextStage stage(QStringLiteral("some words"));
    stage.item->setPos(20, 10);
    stage.item->setHighlight(highlighted);
    const QImage unframed = sceneImage(stage);
    stage.item->setStylingObject(&styling);
    COMPARE_PICTURES(sceneImage(stage),
                     framed(unframed, stage.item->sceneBoundingRect(), inner, outer), 0);
}

void TitleItemTest::framesWithTheCurrentPens()
{
    QObject styling;
    TextStage stage(QStringLiteral("some words"));
    const QImage unframed = sceneImage(stage);
    const QRectF rect = stage.item->boundingRect();
    stage.item->setStylingObject(&styling);
    QCOMPARE(stage.item->stylingObject(), &styling);
    for (const QColor &color : {QColor(Qt::cyan), QColor(Qt::magenta)}) {
        styling.setProperty("decoratorPen", QPen(color));
        COMPARE_PICTURES(sceneImage(stage), framed(unframed, rect, QPen(), QPen(color)), 0);
    }
    styling.setProperty("decoratorSelectedPen", QPen(Qt::red));
    QVERIFY(QMetaObject::invokeMethod(stage.item, "setHighlight", Q_ARG(bool, true)));
    COMPARE_PICTURES(sceneImage(stage), framed(unframed, rect, QPen(), QPen(Qt::red)), 0);
    stage.item->setHighlight(false);
    COMPARE_PICTURES(sceneImage(stage), framed(unframed, rect, QPen(), QPen(Qt::magenta)), 0);
}

void TitleItemTest::framesNothingWithoutAStylingObject()
{
    TextStage stage(QStringLiteral("some words"));
    const QImage unframed = sceneImage(stage);
    stage.item->setHighlight(true);
    COMPARE_PICTURES(sceneImage(stage), unframed, 0);

    auto styling = std::make_unique<QObject>();
    stage.item->setStylingObject(styling.get());
    QVERIFY(sceneImage(stage) != unframed);
    styling.reset();
    QCOMPARE(stage.item->stylingObject(), nullptr);
    COMPARE_PICTURES(sceneImage(stage), unframed, 0);

    QObject other;
    stage.item->setStylingObject(&other);
    QVERIFY(sceneImage(stage) != unframed);
    stage.item->setStylingObject(nullptr);
    COMPARE_PICTURES(sceneImage(stage), unframed, 0);
}

void TitleItemTest::framesInEditModeToo()
{
    QObject styling;
    styling.setProperty("decoratorPen", QPen(Qt::red));
    styling.setProperty("strokeColor", QPen(Qt::red));
    TextStage stage(QStringLiteral("some words"));
    stage.item->setPos(20, 10);
    stage.item->setStylingObject(&styling);
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    const QRect frame = stage.item->sceneBoundingRect().toRect();
    const QImage image = sceneImage(stage);
    QCOMPARE(image.pixelColor(frame.left(), frame.center().y()), QColor(Qt::red));
    QCOMPARE(image.pixelColor(frame.center().x(), frame.top()), QColor(Qt::red));
}

void TitleItemTest::highlightingRepaints()
{
    QObject styling;
    styling.setProperty("decoratorPen", QPen(Qt::red));
    styling.setProperty("decoratorSelectedPen", QPen(Qt::blue));
    TextStage stage(QStringLiteral("some words"));
    stage.item->setPos(20, 10);
    QVERIFY(stage.show());
    QCoreApplication::processEvents();
    QSignalSpy repaints(&stage.scene, &QGraphicsScene::changed);
    const auto isRepainted = [&] {
        repaints.clear();
        return QTest::qWaitFor([&] { return repaints.count() > 0; });
    };
    stage.item->setStylingObject(&styling);
    QVERIFY(isRepainted());
    stage.item->setHighlight(true);
    QVERIFY(isRepainted());
    stage.item->setHighlight(false);
    QVERIFY(isRepainted());
}

void TitleItemTest::keepsThePainterState()
{
    QObject styling;
    styling.setProperty("decoratorPen", QPen(Qt::red, 3));
    TextStage stage(QStringLiteral("some words"));
    stage.item->setStylingObject(&styling);
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::green, 2));
    painter.setBrush(Qt::NoBrush);
    QStyleOptionGraphicsItem option;
    option.exposedRect = stage.item->boundingRect();
    stage.item->paint(&painter, &option, nullptr);
    QCOMPARE(painter.pen(), QPen(Qt::green, 2));
    QCOMPARE(painter.brush(), QBrush(Qt::NoBrush));
    QCOMPARE(painter.worldTransform(), QTransform());
}

QTEST_MAIN(TitleItemTest)
#include "tst_titleitem.moc"
