// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextStage.h"
#include "WarningFreeTest.h"

#include <QAction>
#include <QClipboard>
#include <QDialog>
#include <QMimeData>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace {

Action pressing(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [=](TextStage &stage) { stage.press(key, modifiers); };
}

Action pressing(QKeySequence::StandardKey key)
{
    return [=](TextStage &stage) { stage.press(key); };
}

} // namespace

class TitleItemEditingTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void clickSelects();
    void doubleClickBegins();
    void setEditableBegins();
    void setEditableTakesTheFocusAsTheMouseDoes();
    void setEditablePutsTheCursor_data();
    void setEditablePutsTheCursor();
    void setEditableWithoutAPoint();
    void worksOutsideAScene();
    void editModeIsOneSetOfFlags_data();
    void editModeIsOneSetOfFlags();
    void displayModeTakesNoKeys();
    void escapeGoesToTheTextFirst_data();
    void escapeGoesToTheTextFirst();

    void reportsOnceWhenEditingEnds_data();
    void reportsOnceWhenEditingEnds();
    void reportsNothingWithoutAChange_data();
    void reportsNothingWithoutAChange();
    void reportsNothingWhateverWasPressed_data();
    void reportsNothingWhateverWasPressed();
    void reportsEveryKindOfChange_data();
    void reportsEveryKindOfChange();
    void reportsEachEditingOfItsOwn();
    void reportsOnceForManyChanges();
    void reportsADoubleClickedEditing();
    void reportsWhatCodeChanged();
    void forgetsWhatCodeChangedBefore();
};

void TitleItemEditingTest::init()
{
    QApplication::clipboard()->clear();
}

// In and out

void TitleItemEditingTest::clickSelects()
{
    TextStage stage(QStringLiteral("some words"));
    QVERIFY(stage.show());
    QVERIFY(!stage.item->isSelected());
    stage.click(stage.pointAt(4));
    QVERIFY(stage.item->isSelected());
    QVERIFY(!stage.item->isEditable());
    QVERIFY(!stage.item->hasFocus());
    QCOMPARE(stage.position(), 0);
}

void TitleItemEditingTest::doubleClickBegins()
{
    TextStage stage(QStringLiteral("some words here"));
    QVERIFY(stage.show());
    stage.doubleClick(stage.pointAt(7));
    QVERIFY(stage.item->isEditable());
    QVERIFY(stage.item->hasFocus());
    QVERIFY(stage.item->isSelected());
    QCOMPARE(stage.selection(), QStringLiteral("words"));

    stage.click(stage.pointAt(2));
    QVERIFY(stage.item->isEditable());
    QCOMPARE(stage.position(), 2);
    stage.doubleClick(stage.pointAt(13));
    QVERIFY(stage.item->isEditable());
    QCOMPARE(stage.selection(), QStringLiteral("here"));
}

void TitleItemEditingTest::setEditableBegins()
{
    TextStage stage(QStringLiteral("some words"));
    QVERIFY(stage.show());
    stage.item->setEditable(true, stage.pointAt(3));
    QVERIFY(stage.item->isEditable());
    QVERIFY(stage.item->hasFocus());
    QVERIFY(stage.item->isSelected());
    QCOMPARE(stage.item->textInteractionFlags(),
             Qt::TextInteractionFlags(Qt::TextEditorInteraction));

    stage.item->setEditable(false);
    QVERIFY(!stage.item->isEditable());
    QVERIFY(!stage.item->hasFocus());
    QVERIFY(stage.item->isSelected());
    QCOMPARE(stage.item->textInteractionFlags(), Qt::TextInteractionFlags(Qt::NoTextInteraction));
    QCOMPARE(stage.item->flags() & QGraphicsItem::ItemIsFocusable, 0);
}

void TitleItemEditingTest::setEditableTakesTheFocusAsTheMouseDoes()
{
    QVector<Qt::FocusReason> reasons; // outlives the stage, which takes the focus away
    TextStage stage(QStringLiteral("some words"));
    QVERIFY(stage.show());
    connect(&stage.scene, &QGraphicsScene::focusItemChanged, this,
            [&reasons](QGraphicsItem *, QGraphicsItem *, Qt::FocusReason reason) {
                reasons.append(reason);
            });
    stage.item->setEditable(true);
    QCOMPARE(reasons, QVector<Qt::FocusReason>{Qt::MouseFocusReason});
}

void TitleItemEditingTest::setEditablePutsTheCursor_data()
{
    QTest::addColumn<int>("position");

    for (const int position : {0, 1, 5, 9, 10, 14})
        QTest::addRow("%d", position) << position;
}

void TitleItemEditingTest::setEditablePutsTheCursor()
{
    QFETCH(const int, position);

    TextStage stage(QStringLiteral("<p>some words</p><p>two</p>"));
    stage.item->setRotation(20);
    stage.item->setPos(50, 30);
    QVERIFY(stage.show());
    stage.item->setEditable(true, stage.pointAt(position));
    QCOMPARE(stage.position(), position);
    QVERIFY(!stage.item->textCursor().hasSelection());

    stage.item->setEditable(true, stage.pointAt(14 - position));
    QCOMPARE(stage.position(), 14 - position);
}

void TitleItemEditingTest::setEditableWithoutAPoint()
{
    TextStage stage(QStringLiteral("some words"));
    QVERIFY(stage.show());
    QTextCursor cursor = stage.item->textCursor();
    cursor.setPosition(5);
    stage.item->setTextCursor(cursor);
    QVERIFY(QMetaObject::invokeMethod(stage.item, "setEditable", Q_ARG(bool, true)));
    QCOMPARE(stage.position(), 0);
    QVERIFY(QMetaObject::invokeMethod(stage.item, "setEditable", Q_ARG(bool, true),
                                      Q_ARG(QPointF, stage.pointAt(5))));
    QCOMPARE(stage.position(), 5);
    QVERIFY(QMetaObject::invokeMethod(stage.item, "setEditable", Q_ARG(bool, false)));
    QVERIFY(!stage.item->isEditable());
}

void TitleItemEditingTest::worksOutsideAScene()
{
    TitleItem item(QSizeF(100, 50), nullptr);
    QSignalSpy reports(&item, &TitleItem::contentEdited);
    item.setEditable(true);
    QVERIFY(item.isEditable());
    item.textCursor().insertText(QStringLiteral("text"));
    item.setEditable(false);
    QVERIFY(!item.isEditable());
    QCOMPARE(reports.count(), 1);
}

void TitleItemEditingTest::editModeIsOneSetOfFlags_data()
{
    QTest::addColumn<Qt::TextInteractionFlags>("flags");
    QTest::addColumn<bool>("isEditable");

    const auto row = [](const char *name, Qt::TextInteractionFlags flags, bool isEditable) {
        QTest::newRow(name) << flags << isEditable;
    };
    row("none", Qt::NoTextInteraction, false);
    row("mouse", Qt::TextSelectableByMouse, false);
    row("editable alone", Qt::TextEditable, false);
    row("editable by keyboard", Qt::TextEditable | Qt::TextSelectableByKeyboard, false);
    row("browser", Qt::TextBrowserInteraction, false);
    row("editor", Qt::TextEditorInteraction, true);
    row("editor and links", Qt::TextEditorInteraction | Qt::LinksAccessibleByMouse, false);
}

void TitleItemEditingTest::editModeIsOneSetOfFlags()
{
    QFETCH(const Qt::TextInteractionFlags, flags);
    QFETCH(const bool, isEditable);

    TitleItem item(QSizeF(100, 50), nullptr);
    item.setTextInteractionFlags(flags);
    QCOMPARE(item.isEditable(), isEditable);
}

void TitleItemEditingTest::displayModeTakesNoKeys()
{
    TextStage stage(QStringLiteral("some words"));
    QVERIFY(stage.show());
    stage.doubleClick(stage.pointAt(2));
    stage.click(stage.pointBeside());
    stage.type(QStringLiteral("no"));
    stage.press(Qt::Key_Delete);
    stage.press(QKeySequence::SelectAll);
    QCOMPARE(stage.text(), QStringLiteral("some words"));
    QCOMPARE(stage.selection(), QStringLiteral("some"));
}

void TitleItemEditingTest::escapeGoesToTheTextFirst_data()
{
    QTest::addColumn<bool>("isShortcut");

    QTest::newRow("a shortcut of the window") << true;
    QTest::newRow("the key that the view leaves to a dialog") << false;
}

/// While it is edited, and then to whoever else waits for it.
void TitleItemEditingTest::escapeGoesToTheTextFirst()
{
    QFETCH(const bool, isShortcut);

    QDialog dialog;
    TextStage stage(QStringLiteral("some words"));
    (new QVBoxLayout(&dialog))->addWidget(&stage.view);
    QAction action(&dialog);
    if (isShortcut)
        action.setShortcut(Qt::Key_Escape);
    dialog.addAction(&action);
    QSignalSpy triggered(&action, &QAction::triggered);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    {
        const ExpectedWarning sizes(
                QStringLiteral("This plugin does not support propagateSizeHints()"));
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
    }

    stage.item->setEditable(true);
    QTest::keyClick(dialog.windowHandle(), Qt::Key_X);
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    QVERIFY(!stage.item->isEditable());
    QCOMPARE(stage.text(), QStringLiteral("xsome words"));
    QCOMPARE(reports.count(), 1);
    QCOMPARE(triggered.count(), 0);
    QCOMPARE(rejected.count(), 0);

    QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    QCOMPARE(triggered.count(), isShortcut ? 1 : 0);
    QCOMPARE(rejected.count(), isShortcut ? 0 : 1);
    QCOMPARE(reports.count(), 1);
}

// Reports

void TitleItemEditingTest::reportsOnceWhenEditingEnds_data()
{
    addEndings();
}

void TitleItemEditingTest::reportsOnceWhenEditingEnds()
{
    QFETCH(const Action, end);

    TextStage stage(manyFonts());
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    bool wasEditable = true;
    QString reported;
    connect(stage.item, &TitleItem::contentEdited, this, [&] {
        wasEditable = stage.item->isEditable();
        reported = stage.text();
    });
    stage.doubleClick(stage.pointAt(8));
    QCOMPARE(stage.selection(), QStringLiteral("bold"));
    stage.type(QStringLiteral("new"));
    QCOMPARE(reports.count(), 0);

    end(stage);
    QCOMPARE(reports.count(), 1);
    QVERIFY(!wasEditable);
    QVERIFY(reported.startsWith(QLatin1String("plain new italic")));
    QVERIFY(!stage.item->isEditable());
    QVERIFY(!stage.item->hasFocus());

    stage.item->setEditable(false);
    QCOMPARE(reports.count(), 1);
}

void TitleItemEditingTest::reportsNothingWithoutAChange_data()
{
    addEndings();
}

void TitleItemEditingTest::reportsNothingWithoutAChange()
{
    QFETCH(const Action, end);

    for (const bool isOwnFont : {true, false}) {
        TextStage stage(manyFonts());
        if (!isOwnFont)
            stage.document.setDefaultFont(QFont(QStringLiteral("DejaVu Serif"), 23, QFont::Bold));
        QVERIFY(stage.show());
        QSignalSpy reports(stage.item, &TitleItem::contentEdited);
        const QString text = stage.text();
        stage.doubleClick(stage.pointAt(2));
        QVERIFY(stage.item->isEditable());
        for (int i = 0; i < text.length() + 2; ++i)
            stage.press(Qt::Key_Right);
        for (int i = 0; i < text.length() + 2; ++i)
            stage.press(Qt::Key_Left, Qt::ShiftModifier);
        end(stage);
        QVERIFY(!stage.item->isEditable());
        QCOMPARE(stage.text(), text);
        QCOMPARE(reports.count(), 0);
    }
}

void TitleItemEditingTest::reportsNothingWhateverWasPressed_data()
{
    QTest::addColumn<Action>("action");

    const auto row = [](const char *name, const Action &action) { QTest::newRow(name) << action; };
    row("walking", [](TextStage &stage) {
        for (const Qt::Key key :
             {Qt::Key_End, Qt::Key_Left, Qt::Key_Home, Qt::Key_Right, Qt::Key_Down, Qt::Key_Up})
            stage.press(key);
    });
    row("select all", pressing(QKeySequence::SelectAll));
    row("copy", [](TextStage &stage) {
        stage.press(QKeySequence::SelectAll);
        stage.press(QKeySequence::Copy);
    });
    row("cut without a selection", [](TextStage &stage) {
        stage.press(Qt::Key_End);
        stage.press(QKeySequence::Cut);
    });
    row("undo", pressing(QKeySequence::Undo));
    row("redo", pressing(QKeySequence::Redo));
    row("paste of nothing", pressing(QKeySequence::Paste));
    row("paste of something else", [](TextStage &stage) {
        auto *data = new QMimeData;
        data->setData(QStringLiteral("application/x-other"), "data");
        QApplication::clipboard()->setMimeData(data);
        stage.press(QKeySequence::Paste);
    });
    row("backspace at the start", [](TextStage &stage) {
        stage.press(QKeySequence::MoveToStartOfDocument);
        stage.press(Qt::Key_Backspace);
    });
    row("delete at the end", [](TextStage &stage) {
        stage.press(QKeySequence::MoveToEndOfDocument);
        stage.press(Qt::Key_Delete);
    });
    row("escape", pressing(Qt::Key_Escape));
    row("a modifier", pressing(Qt::Key_Shift, Qt::ShiftModifier));
    row("a function key", pressing(Qt::Key_F7));
    row("an input method that says nothing", [](TextStage &stage) { stage.compose({}); });
    row("an input method that gives up", [](TextStage &stage) {
        stage.press(Qt::Key_End);
        stage.compose(QStringLiteral("ni"));
        stage.compose(QString());
    });
    row("the mouse above it", [](TextStage &stage) {
        for (int i = 0; i < 10; ++i)
            stage.moveMouse(stage.pointAt(i));
    });
}

void TitleItemEditingTest::reportsNothingWhateverWasPressed()
{
    QFETCH(const Action, action);

    TextStage stage(manyFonts());
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    const QString text = stage.text();
    stage.doubleClick(stage.pointAt(2));
    action(stage);
    stage.click(stage.pointBeside());
    QVERIFY(!stage.item->isEditable());
    QCOMPARE(stage.text(), text);
    QCOMPARE(reports.count(), 0);
}

void TitleItemEditingTest::reportsEveryKindOfChange_data()
{
    QTest::addColumn<Action>("change");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const Action &change, const char *text) {
        QTest::newRow(name) << change << QString::fromUtf8(text);
    };
    row(
            "a character", [](TextStage &stage) { stage.type(QStringLiteral("x")); }, "onex");
    row("a space", pressing(Qt::Key_Space), "one ");
    row("a tab", pressing(Qt::Key_Tab), "one\t");
    row("a paragraph", pressing(Qt::Key_Return), "one\n");
    row("a line", pressing(Qt::Key_Return, Qt::ShiftModifier), "one\n");
    row("backspace", pressing(Qt::Key_Backspace), "on");
    row("a whole word back", pressing(QKeySequence::DeleteStartOfWord), "");
    row(
            "cut",
            [](TextStage &stage) {
                stage.press(Qt::Key_Left, Qt::ShiftModifier);
                stage.press(QKeySequence::Cut);
            },
            "on");
    row(
            "paste",
            [](TextStage &stage) {
                QApplication::clipboard()->setText(QStringLiteral("x"));
                stage.press(QKeySequence::Paste);
            },
            "onex");
    row(
            "undo of it all",
            [](TextStage &stage) {
                stage.type(QStringLiteral("x"));
                stage.press(QKeySequence::Undo);
            },
            "one");
    row(
            "by an input method", [](TextStage &stage) { stage.commit(QStringLiteral("x")); },
            "onex");
    row(
            "composing over a selection",
            [](TextStage &stage) {
                stage.press(QKeySequence::SelectAll);
                stage.compose(QStringLiteral("ni"));
                stage.compose(QString());
            },
            "");
    row(
            "a format alone",
            [](TextStage &stage) {
                QTextCursor cursor(&stage.document);
                cursor.select(QTextCursor::Document);
                QTextCharFormat bold;
                bold.setFontWeight(QFont::Bold);
                cursor.mergeCharFormat(bold);
            },
            "one");
}

void TitleItemEditingTest::reportsEveryKindOfChange()
{
    QFETCH(const Action, change);
    QFETCH(const QString, text);

    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.item->setEditable(true);
    stage.press(Qt::Key_End);
    change(stage);
    QCOMPARE(stage.text(), text);
    QCOMPARE(reports.count(), 0);
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 1);
}

void TitleItemEditingTest::reportsEachEditingOfItsOwn()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    for (int i = 1; i <= 3; ++i) {
        stage.doubleClick(stage.pointAt(1));
        stage.type(QStringLiteral("word"));
        stage.click(stage.pointBeside());
        QCOMPARE(reports.count(), i);
        stage.doubleClick(stage.pointAt(1));
        stage.click(stage.pointBeside());
        QCOMPARE(reports.count(), i);
    }
}

void TitleItemEditingTest::reportsOnceForManyChanges()
{
    TextStage stage(manyFonts());
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.item->setEditable(true);
    for (int i = 0; i < 20; ++i) {
        stage.press(Qt::Key_Right);
        stage.type(QStringLiteral("x"));
    }
    stage.press(QKeySequence::Undo);
    stage.press(QKeySequence::Redo);
    stage.press(Qt::Key_Backspace);
    stage.commit(QString::fromUtf8("\u4f60"));
    QCOMPARE(reports.count(), 0);
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 1);
}

void TitleItemEditingTest::reportsADoubleClickedEditing()
{
    TextStage stage(QStringLiteral("one two"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.doubleClick(stage.pointAt(1));
    stage.type(QStringLiteral("three"));
    stage.doubleClick(stage.pointAt(7));
    QCOMPARE(stage.selection(), QStringLiteral("two"));
    stage.item->setEditable(true, stage.pointAt(0));
    stage.click(stage.pointBeside());
    QCOMPARE(stage.text(), QStringLiteral("three two"));
    QCOMPARE(reports.count(), 1);
}

void TitleItemEditingTest::reportsWhatCodeChanged()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.document.setPlainText(QStringLiteral("two"));
    QCOMPARE(reports.count(), 0);
    stage.item->setEditable(false);
    QCOMPARE(reports.count(), 1);

    QTextCursor(&stage.document).insertText(QStringLiteral("more"));
    QFocusEvent focusOut(QEvent::FocusOut);
    stage.scene.sendEvent(stage.item, &focusOut);
    QCOMPARE(reports.count(), 2);
    stage.item->setEditable(false);
    QCOMPARE(reports.count(), 2);
}

void TitleItemEditingTest::forgetsWhatCodeChangedBefore()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.document.setPlainText(QStringLiteral("two"));
    stage.doubleClick(stage.pointAt(1));
    stage.click(stage.pointBeside());
    QVERIFY(!stage.item->isEditable());
    QCOMPARE(reports.count(), 0);
}

QTEST_MAIN(TitleItemEditingTest)
#include "tst_titleitem_editing.moc"
