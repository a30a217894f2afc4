// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextStage.h"
#include "WarningFreeTest.h"

#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <QSignalSpy>

class TitleItemLifetimeTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void listenersMayDeleteTheTitle_data();
    void listenersMayDeleteTheTitle();
    void reportListenersMayDeleteTheTitleLater_data();
    void reportListenersMayDeleteTheTitleLater();
    void eventsAreKeptFromTheDeletedTitle_data();
    void eventsAreKeptFromTheDeletedTitle();
    void geometryListenersMayDeleteTheTitle_data();
    void geometryListenersMayDeleteTheTitle();
    void stylingObjectGoesFirst();
    void deletedWhileEdited();

    void makesADocumentOfItsOwn();
    void documentOutlivesTheTitle();
    void anotherTitleTakesTheDocument();
    void documentGoesFirst_data();
    void documentGoesFirst();
};

void TitleItemLifetimeTest::listenersMayDeleteTheTitle_data()
{
    QTest::addColumn<bool>("isReport");
    QTest::addColumn<Action>("action");

    const bool report = true;
    const bool format = false;
    const auto row = [](const char *name, bool isReport, const Action &action) {
        QTest::newRow(name) << isReport << action;
    };
    const auto putCursorIntoBold = [](TextStage &stage) {
        QTextCursor cursor(&stage.document);
        cursor.setPosition(7);
        stage.item->setTextCursor(cursor);
    };
    row("report: click beside", report, [](TextStage &stage) {
        stage.doubleClick(stage.pointAt(6));
        stage.type(QStringLiteral("x"));
        stage.click(stage.pointBeside());
    });
    row("report: setEditable(false)", report, [](TextStage &stage) {
        stage.doubleClick(stage.pointAt(6));
        stage.type(QStringLiteral("x"));
        stage.item->setEditable(false);
    });
    row("report: setEditable(false) while composing", report, [](TextStage &stage) {
        stage.doubleClick(stage.pointAt(6));
        stage.compose(QStringLiteral("x"));
        stage.item->setEditable(false);
    });
    row("report: setEditable(false) in display mode", report, [](TextStage &stage) {
        stage.document.setPlainText(QStringLiteral("x"));
        stage.item->setEditable(false);
    });
    row("report: clearFocus()", report, [](TextStage &stage) {
        stage.doubleClick(stage.pointAt(6));
        stage.type(QStringLiteral("x"));
        stage.item->clearFocus();
    });
    row("report: another title is edited", report, [](TextStage &stage) {
        stage.doubleClick(stage.pointAt(6));
        stage.type(QStringLiteral("x"));
        auto *other = new TitleItem(QSizeF(100, 50), nullptr);
        stage.scene.addItem(other);
        other->setEditable(true);
        QVERIFY(other->hasFocus());
    });
    row("format: double click", format,
        [](TextStage &stage) { stage.doubleClick(stage.pointAt(6)); });
    row("format: the mouse above it", format, [=](TextStage &stage) {
        putCursorIntoBold(stage);
        stage.moveMouse(stage.pointAt(2));
    });
    row("format: setEditable(true)", format, [=](TextStage &stage) {
        putCursorIntoBold(stage);
        stage.item->setEditable(true, stage.pointAt(2));
    });
    row("format: an arrow key", format, [](TextStage &stage) {
        stage.item->setEditable(true);
        for (int i = 0; i < 9 && stage.item; ++i)
            stage.press(Qt::Key_Right);
    });
    row("format: a key that is not taken", format, [=](TextStage &stage) {
        stage.item->setParentItem(stage.scene.addRect(0, 0, 10, 10));
        stage.item->setEditable(true);
        putCursorIntoBold(stage);
        stage.press(Qt::Key_F7);
    });
    row("format: an input method", format, [=](TextStage &stage) {
        stage.item->setEditable(true);
        putCursorIntoBold(stage);
        stage.commit(QStringLiteral("x"));
    });
    row("format: checkFormatChanges()", format, [=](TextStage &stage) {
        putCursorIntoBold(stage);
        stage.item->checkFormatChanges(QEvent::KeyPress);
    });
}

void TitleItemLifetimeTest::listenersMayDeleteTheTitle()
{
    QFETCH(const bool, isReport);
    QFETCH(const Action, action);

    TextStage stage(QStringLiteral("one <b>bold</b> two"));
    QVERIFY(stage.show());
    TitleItem *item = stage.item;
    if (isReport)
        connect(item, &TitleItem::contentEdited, this, [item] { delete item; });
    else
        connect(item, &TitleItem::currentCharFormatChanged, this, [item] { delete item; });
    action(stage);
    QVERIFY(!stage.item);
    QVERIFY(!stage.scene.items().contains(item));
    QCOMPARE(stage.document.documentLayout()->paintDevice(), nullptr);
}

/// Also where Qt goes on with the item, as while it hides it; see contentEdited().
void TitleItemLifetimeTest::reportListenersMayDeleteTheTitleLater_data()
{
    QTest::addColumn<Action>("action");

    QTest::newRow("hidden") << Action([](TextStage &stage) { stage.item->hide(); });
    QTest::newRow("disabled") << Action([](TextStage &stage) { stage.item->setEnabled(false); });
    QTest::newRow("off the scene")
            << Action([](TextStage &stage) { stage.scene.removeItem(stage.item); });
    QTest::newRow("hidden with its parent") << Action([](TextStage &stage) {
        QGraphicsItem *parent = stage.scene.addRect(0, 0, 10, 10);
        stage.item->setParentItem(parent);
        parent->hide();
    });
}

void TitleItemLifetimeTest::reportListenersMayDeleteTheTitleLater()
{
    QFETCH(const Action, action);

    TextStage stage(QStringLiteral("one <b>bold</b> two"));
    QVERIFY(stage.show());
    connect(stage.item, &TitleItem::contentEdited, stage.item, &QObject::deleteLater);
    stage.doubleClick(stage.pointAt(6));
    stage.type(QStringLiteral("x"));
    action(stage);
    QTRY_VERIFY(!stage.item);
}

void TitleItemLifetimeTest::eventsAreKeptFromTheDeletedTitle_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isAccepted");

    QTest::newRow("key press") << int(QEvent::KeyPress) << true;
    QTest::newRow("key release") << int(QEvent::KeyRelease) << true;
    QTest::newRow("shortcut") << int(QEvent::ShortcutOverride) << true;
    QTest::newRow("drag") << int(QEvent::GraphicsSceneDragEnter) << false;
}

/// The scene would ask it for its parent when it ignored a key, and send it the drop.
void TitleItemLifetimeTest::eventsAreKeptFromTheDeletedTitle()
{
    QFETCH(const int, type);
    QFETCH(const bool, isAccepted);

    TextStage stage(QStringLiteral("one <b>bold</b> two"));
    QVERIFY(stage.show());
    TitleItem *item = stage.item;
    connect(item, &TitleItem::currentCharFormatChanged, this, [item] { delete item; });
    stage.item->setEditable(true);
    QTextCursor cursor(&stage.document);
    cursor.setPosition(7);
    stage.item->setTextCursor(cursor);

    QKeyEvent key(QEvent::Type(type), Qt::Key_F7, Qt::NoModifier);
    QMimeData data;
    data.setText(QStringLiteral("dragged"));
    QGraphicsSceneDragDropEvent drag(QEvent::GraphicsSceneDragEnter);
    drag.setMimeData(&data);
    QEvent &event = isAccepted ? static_cast<QEvent &>(key) : drag;
    event.setAccepted(!isAccepted);
    stage.scene.sendEvent(item, &event);
    QVERIFY(!stage.item);
    QCOMPARE(event.isAccepted(), isAccepted);
}

/// While the text changes, by deleteLater(); see geometryChanged().
void TitleItemLifetimeTest::geometryListenersMayDeleteTheTitle_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("isLater");

    QTest::newRow("setSize()") << Action([](TextStage &stage) {
        stage.item->setSize(QSizeF(20, 100));
    }) << false;
    QTest::newRow("a new text width")
            << Action([](TextStage &stage) { stage.document.setTextWidth(20); }) << false;
    QTest::newRow("a change of the document")
            << Action([](TextStage &stage) { stage.document.setPlainText(QStringLiteral("a\nb")); })
            << true;
    QTest::newRow("typing") << Action([](TextStage &stage) {
        stage.item->setEditable(true);
        stage.press(Qt::Key_Return);
    }) << true;
}

void TitleItemLifetimeTest::geometryListenersMayDeleteTheTitle()
{
    QFETCH(const Action, action);
    QFETCH(const bool, isLater);

    TextStage stage(QStringLiteral("one <b>bold</b> two"));
    QVERIFY(stage.show());
    TitleItem *item = stage.item;
    if (isLater)
        connect(item, &TitleItem::geometryChanged, item, &QObject::deleteLater);
    else
        connect(item, &TitleItem::geometryChanged, this, [item] { delete item; });
    action(stage);
    QTRY_VERIFY(!stage.item);
    QVERIFY(!stage.scene.items().contains(item));
    QCOMPARE(stage.document.documentLayout()->paintDevice(), nullptr);
}

void TitleItemLifetimeTest::stylingObjectGoesFirst()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    auto *styling = new QObject;
    stage.item->setStylingObject(styling);
    stage.view.grab();
    delete styling;
    QCOMPARE(stage.item->stylingObject(), nullptr);
    stage.item->setHighlight(true);
    stage.view.grab();
    stage.item->setEditable(true);
    stage.type(QStringLiteral("x"));
    QCOMPARE(stage.text(), QStringLiteral("xone"));
}

void TitleItemLifetimeTest::deletedWhileEdited()
{
    TextStage stage(QStringLiteral("one <b>bold</b> two"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.doubleClick(stage.pointAt(6));
    stage.type(QStringLiteral("x"));
    delete stage.item;
    QCOMPARE(reports.count(), 0);
    QCOMPARE(stage.scene.focusItem(), nullptr);
    QCOMPARE(stage.text(), QStringLiteral("one x two"));
}

void TitleItemLifetimeTest::makesADocumentOfItsOwn()
{
    TitleItem item(QSizeF(100, 50), nullptr);
    QVERIFY(item.document());
    QVERIFY(item.document()->isEmpty());
    QVERIFY(item.document()->documentLayout()->paintDevice());
    QSignalSpy reports(&item, &TitleItem::contentEdited);
    item.document()->setPlainText(QStringLiteral("text"));
    item.setEditable(false);
    QCOMPARE(reports.count(), 1);
}

void TitleItemLifetimeTest::documentOutlivesTheTitle()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("text"));
    auto *item = new TitleItem(QSizeF(100, 50), &document);
    QCOMPARE(item->document(), &document);
    QVERIFY(document.documentLayout()->paintDevice());
    delete item;
    QCOMPARE(document.documentLayout()->paintDevice(), nullptr);
    QCOMPARE(document.toPlainText(), QStringLiteral("text"));
    document.setPlainText(QStringLiteral("longer text"));
    document.setTextWidth(30);
    QVERIFY(document.size().height() > 30);

    // It can be shown again.
    TitleItem next(QSizeF(100, 50), &document);
    QCOMPARE(next.toPlainText(), QStringLiteral("longer text"));
    QVERIFY(document.documentLayout()->paintDevice());
}

void TitleItemLifetimeTest::anotherTitleTakesTheDocument()
{
    QTextDocument document;
    auto *first = new TitleItem(QSizeF(100, 50), &document);
    TitleItem second(QSizeF(70, 40), &document);
    const QPaintDevice *device = document.documentLayout()->paintDevice();
    QCOMPARE(device->width(), 70);
    delete first;
    QCOMPARE(document.documentLayout()->paintDevice(), device);
}

void TitleItemLifetimeTest::documentGoesFirst_data()
{
    QTest::addColumn<bool>("isEdited");

    QTest::newRow("in display mode") << false;
    QTest::newRow("in edit mode") << true;
}

void TitleItemLifetimeTest::documentGoesFirst()
{
    QFETCH(const bool, isEdited);

    QGraphicsScene scene;
    QGraphicsView view(&scene);
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    auto *document = new QTextDocument(QStringLiteral("one <b>two</b>"));
    auto *item = new TitleItem(QSizeF(100, 50), document);
    scene.addItem(item);
    item->setEditable(isEdited);
    QTest::keyClick(view.windowHandle(), Qt::Key_X);
    view.grab();

    delete document;
    QCOMPARE(item->toPlainText(), QString());
    QCOMPARE(item->isEditable(), isEdited);
    QVERIFY(item->document()->documentLayout()->paintDevice());
    view.grab();
    QTest::keyClick(view.windowHandle(), Qt::Key_Y);
    QCOMPARE(item->toPlainText(), isEdited ? QStringLiteral("y") : QString());
}

QTEST_MAIN(TitleItemLifetimeTest)
#include "tst_titleitem_lifetime.moc"
