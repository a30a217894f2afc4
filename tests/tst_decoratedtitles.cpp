// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/FocusHandler.h>
#include <Scene/Decorator/RotateDecorator.h>
#include <Scene/SceneHelper.h>
#include <Scene/TitleItem.h>
#include <Scene/TitleSvgItem.h>

#include <QGraphicsProxyWidget>
#include <QSignalSpy>
#include <QTextDocument>

// Frames around real items: titles, a widget, and an item that knows nothing of frames.

namespace {

const QString svgText = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                                       " viewBox=\"0 0 100 50\"><rect width=\"100\" height=\"50\""
                                       " fill=\"red\"/></svg>");

} // namespace

class DecoratedTitlesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void svgTitleIsResized();
    void svgTitleSizedBeforeIsSizedInItsUnits();
    void svgTitleOfNoWidthKeepsIt();
    void svgTitleIsTurned();
    void textTitleIsResized();
    void textTitleIsEditedByDoubleClick();
    void textTitleMovesTheHandlesWhenItGrows();
    void titlesAreHighlighted();
    void widgetIsFramed();
    void plainItemIsFramed();
    void titleInTwoFrames();
    void helperTellsTheViewScale();
};

void DecoratedTitlesTest::svgTitleIsResized()
{
    SceneOnView stage;
    auto *title = new TitleSvgItem(svgText);
    title->setPos(-50.0, -25.0);
    stage.scene.addItem(title);
    auto *decorator = new ResizeDecorator(title);
    stage.scene.addItem(decorator);
    QCOMPARE(decorator->pos(), QPointF(-50.0, -25.0));
    decorator->updateDecoration();
    const QRectF before = title->mapRectToScene(title->boundingRect());
    QCOMPARE(before, QRectF(-50.0, -25.0, 100.0, 50.0));
    QSignalSpy resized(decorator, &ResizeDecorator::itemResized);

    ViewMouse mouse(stage.view);
    const auto handles = handlesOf(*decorator);
    mouse.drag(centreOnScene(*handles.at(Qt::BottomRightSection)), QPoint(100, 50));
    QCOMPARE(title->mapRectToScene(title->boundingRect()), QRectF(-50.0, -25.0, 200.0, 100.0));
    QCOMPARE(resized.count(), 1);
    // Once more from the new size.
    mouse.drag(centreOnScene(*handles.at(Qt::LeftSection)), QPoint(100, 0));
    QCOMPARE(title->mapRectToScene(title->boundingRect()), QRectF(50.0, -25.0, 100.0, 100.0));
    QCOMPARE(resized.count(), 2);
    QCOMPARE(handles.at(Qt::RightSection)->pos(), QPointF(100.0, 39.5));
}

void DecoratedTitlesTest::svgTitleSizedBeforeIsSizedInItsUnits()
{
    SceneOnView stage;
    auto *title = new TitleSvgItem(svgText);
    title->setSize(QSizeF(200.0, 200.0));
    auto *decorator = new ResizeDecorator(title);
    stage.scene.addItem(decorator);
    QCOMPARE(title->sceneBoundingRect(), QRectF(0.0, 0.0, 200.0, 200.0));
    decorator->setSize(QSizeF(50.0, 50.0));
    QCOMPARE(title->sceneBoundingRect(), QRectF(0.0, 0.0, 100.0, 200.0));
}

void DecoratedTitlesTest::svgTitleOfNoWidthKeepsIt()
{
    SceneOnView stage;
    auto *title = new TitleSvgItem(svgText);
    auto *decorator = new ResizeDecorator(title);
    stage.scene.addItem(decorator);
    decorator->setSize(QSizeF(0.0, 50.0));
    QCOMPARE(title->sceneBoundingRect().width(), 0.0);
    decorator->setSize(QSizeF(100.0, 50.0));
    QCOMPARE(title->sceneBoundingRect().width(), 0.0);
}

void DecoratedTitlesTest::svgTitleIsTurned()
{
    SceneOnView stage;
    auto *title = new TitleSvgItem(svgText);
    auto *decorator = new RotateDecorator(title);
    stage.scene.addItem(decorator);
    QSignalSpy rotated(decorator, &RotateDecorator::itemRotated);
    const QPointF centre = centreOnScene(*title);

    ViewMouse mouse(stage.view);
    mouse.press(centreOnScene(*childHandles(*decorator).first()));
    mouse.moveTo(centre + QPointF(80.0, 0.0));
    mouse.release();
    QCOMPARE(rotated.count(), 1);
    QVERIFY(std::abs(decorator->rotation() - 90.0) < 2.0);
    COMPARE_POINTS(centreOnScene(*title), centre);
}

void DecoratedTitlesTest::textTitleIsResized()
{
    SceneOnView stage;
    auto *title = new TitleItem(QSizeF(100.0, 50.0), nullptr);
    title->document()->setPlainText(QStringLiteral("some words of text"));
    auto *decorator = new ResizeDecorator(title);
    stage.scene.addItem(decorator);
    decorator->updateDecoration();
    const QSizeF before = title->boundingRect().size();
    QSignalSpy resized(decorator, &ResizeDecorator::itemResized);
    ViewMouse mouse(stage.view);
    mouse.drag(centreOnScene(*handlesOf(*decorator).at(Qt::RightSection)), QPoint(60, 0));
    COMPARE_CLOSE(title->boundingRect().width(), before.width() + 60.0);
    QCOMPARE(resized.count(), 1);
}

void DecoratedTitlesTest::textTitleIsEditedByDoubleClick()
{
    SceneOnView stage;
    auto *title = new TitleItem(QSizeF(100.0, 50.0), nullptr);
    title->document()->setPlainText(QStringLiteral("some words"));
    auto *decorator = new ResizeDecorator(title);
    stage.scene.addItem(decorator);
    QApplication::setActiveWindow(&stage.view);
    QSignalSpy edited(title, &TitleItem::contentEdited);

    ViewMouse mouse(stage.view);
    mouse.doubleClick(decorator->mapToScene(QPointF(10.0, 10.0)));
    QVERIFY(title->textInteractionFlags() & Qt::TextEditable);
    decorator->setEditable(false, QPointF());
    QVERIFY(!(title->textInteractionFlags() & Qt::TextEditable));
    QCOMPARE(edited.count(), 0);
}

void DecoratedTitlesTest::textTitleMovesTheHandlesWhenItGrows()
{
    SceneOnView stage;
    auto *title = new TitleItem(QSizeF(100.0, 50.0), nullptr);
    title->document()->setPlainText(QStringLiteral("one"));
    auto *decorator = new ResizeDecorator(title);
    stage.scene.addItem(decorator);
    const auto handles = handlesOf(*decorator);
    const qreal before = handles.at(Qt::BottomSection)->y();
    title->document()->setPlainText(QStringLiteral("one\ntwo\nthree"));
    QTRY_VERIFY(handles.at(Qt::BottomSection)->y() > before);
    QCOMPARE(handles.at(Qt::BottomSection)->y(), title->boundingRect().bottom());
}

void DecoratedTitlesTest::titlesAreHighlighted()
{
    SceneOnView stage;
    QObject styling;
    styling.setProperty("decoratorPen", QPen(Qt::red, 6.0));
    styling.setProperty("strokePen", QPen(Qt::red, 6.0));
    styling.setProperty("decoratorSelectedPen", QPen(Qt::blue, 6.0));
    styling.setProperty("strokeSelectedPen", QPen(Qt::blue, 6.0));
    auto *title = new TitleSvgItem(svgText);
    auto *decorator = new ResizeDecorator(title);
    decorator->setStylingObject(&styling);
    stage.scene.addItem(decorator);
    decorator->installSceneEventFilter(new FocusHandler(title));
    QApplication::setActiveWindow(&stage.view);
    const QPoint handle = stage.view.mapFromScene(
            handlesOf(*decorator).at(Qt::TopLeftSection)->mapToScene(QPointF(10.0, 0.0)));
    const auto color = [&] {
        const QImage picture = stage.view.viewport()->grab().toImage();
        return picture.pixelColor(QPointF(handle * picture.devicePixelRatioF()).toPoint());
    };
    stage.scene.clearFocus();
    color(); // the first paint gives the handles their pens
    QCOMPARE(color(), QColor(Qt::red));
    decorator->setFocus();
    color();
    QCOMPARE(color(), QColor(Qt::blue));
    stage.scene.clearFocus();
    color();
    QCOMPARE(color(), QColor(Qt::red));
}

/// None of a proxy's slots is one of those that are looked for.
void DecoratedTitlesTest::widgetIsFramed()
{
    SceneOnView stage;
    auto *widget = new QWidget;
    widget->resize(100, 50);
    auto *proxy = new QGraphicsProxyWidget;
    proxy->setWidget(widget);
    auto *decorator = new ResizeDecorator(proxy);
    stage.scene.addItem(decorator);
    const auto handles = handlesOf(*decorator);
    QCOMPARE(handles.at(Qt::RightSection)->pos(), QPointF(100.0, 14.5));
    // It tells of its new geometry by geometryChanged().
    proxy->resize(140.0, 50.0);
    QCOMPARE(handles.at(Qt::RightSection)->pos(), QPointF(140.0, 14.5));
    decorator->setEditable(true, QPointF());
    decorator->setHighlight(true);
    decorator->setViewScale(1.0);
    QSignalSpy resized(decorator, &ResizeDecorator::itemResized);
    ViewMouse mouse(stage.view);
    mouse.drag(centreOnScene(*handles.at(Qt::RightSection)), QPoint(10, 0));
    QCOMPARE(resized.count(), 0);
    QCOMPARE(proxy->size(), QSizeF(140.0, 50.0));
}

void DecoratedTitlesTest::plainItemIsFramed()
{
    SceneOnView stage;
    auto *item = new PlainChild;
    item->setPos(-40.0, -10.0);
    auto *decorator = new RotateDecorator(item);
    stage.scene.addItem(decorator);
    QSignalSpy moved(decorator, &RotateDecorator::itemMoved);
    QSignalSpy rotated(decorator, &RotateDecorator::itemRotated);
    ViewMouse mouse(stage.view);
    mouse.drag(centreOnScene(*item), QPoint(5, 5));
    QCOMPARE(item->scenePos(), QPointF(-35.0, -5.0));
    mouse.drag(centreOnScene(*childHandles(*decorator).first()), QPoint(30, 0));
    QCOMPARE(moved.count(), 1);
    QCOMPARE(rotated.count(), 1);
    mouse.doubleClick(centreOnScene(*item));
    QCOMPARE(moved.count(), 1);
}

/// One to size and one to turn it.
void DecoratedTitlesTest::titleInTwoFrames()
{
    SceneOnView stage;
    auto *title = new TitleSvgItem(svgText);
    title->setPos(-50.0, -25.0);
    auto *inner = new ResizeDecorator(title);
    auto *outer = new RotateDecorator(inner);
    stage.scene.addItem(outer);
    outer->setViewScale(1.0);
    QCOMPARE(outer->pos(), QPointF(-50.0, -25.0));
    QCOMPARE(inner->pos(), QPointF());
    ViewMouse mouse(stage.view);
    QSignalSpy resized(inner, &ResizeDecorator::itemResized);
    QSignalSpy rotated(outer, &RotateDecorator::itemRotated);
    mouse.drag(centreOnScene(*handlesOf(*inner).at(Qt::RightSection)), QPoint(20, 0));
    QCOMPARE(title->mapRectToScene(title->boundingRect()), QRectF(-50.0, -25.0, 120.0, 50.0));
    QCOMPARE(resized.count(), 1);
    mouse.drag(centreOnScene(*childHandles(*outer).first()), QPoint(40, 20));
    QCOMPARE(rotated.count(), 1);
    QVERIFY(outer->rotation() > 10.0);
}

void DecoratedTitlesTest::helperTellsTheViewScale()
{
    auto *scene = new QGraphicsScene;
    SceneHelper helper(scene, nullptr);
    auto *decorator = new ResizeDecorator(new TitleSvgItem(svgText));
    helper.setViewScale(2.0);
    helper.addItem(decorator);
    QCOMPARE(decorator->viewScale(), 2.0);
    helper.setViewScale(0.5);
    QCOMPARE(decorator->viewScale(), 0.5);
    for (const ResizeHandleItem *handle : childHandles(*decorator))
        QCOMPARE(handle->scale(), 0.5);
}

QTEST_MAIN(DecoratedTitlesTest)
#include "tst_decoratedtitles.moc"
