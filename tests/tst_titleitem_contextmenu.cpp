// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextStage.h"
#include "WarningFreeTest.h"

#include <QAction>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>

// The menu of a text that is edited, which has the keyboard while it is open.

namespace {

QMenu *openMenu(TextStage &stage, const QPointF &itemPoint)
{
    // The platform of the tests has no window system.
    const ExpectedWarning raise(QStringLiteral("This plugin does not support raise()"));
    const ExpectedWarning grab(
            QStringLiteral("This plugin does not support grabbing the keyboard"));
    stage.rightClick(itemPoint);
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

QAction *actionOf(const QMenu &menu, const char *name)
{
    return menu.findChild<QAction *>(QString::fromLatin1(name));
}

/// "one two three" with the second word selected, and its menu.
class MenuStage : public TextStage
{
public:
    MenuStage() : TextStage(QStringLiteral("one two three")) {}

    void open()
    {
        QVERIFY(show());
        doubleClick(pointAt(5));
        QCOMPARE(selection(), QStringLiteral("two"));
        menu = openMenu(*this, pointAt(5));
        QVERIFY(menu);
    }

    QPointer<QMenu> menu;
};

using Dismissal = std::function<void(QMenu &)>;

} // namespace

Q_DECLARE_METATYPE(Dismissal)

class TitleItemContextMenuTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void displayModeHasNoMenu();
    void editingGoesOnBehindTheMenu();
    void dismissedMenuGivesTheFocusBack_data();
    void dismissedMenuGivesTheFocusBack();
    void actionsWork_data();
    void actionsWork();
    void undoAndRedo();
    void pastesAsTheKeyDoes_data();
    void pastesAsTheKeyDoes();
    void formatIsFollowed();
    void composedTextIsKept();
    void leadsElsewhere_data();
    void leadsElsewhere();
    void menuDoesNothingAfterEditing();
    void somethingIsDeletedBelowTheMenu_data();
    void somethingIsDeletedBelowTheMenu();
    void listenerMayDeleteTheTitle();
};

void TitleItemContextMenuTest::init()
{
    QApplication::clipboard()->clear();
}

void TitleItemContextMenuTest::displayModeHasNoMenu()
{
    TextStage stage(QStringLiteral("one two three"));
    QVERIFY(stage.show());
    stage.rightClick(stage.pointAt(5));
    QVERIFY(!QApplication::activePopupWidget());
}

void TitleItemContextMenuTest::editingGoesOnBehindTheMenu()
{
    MenuStage stage;
    stage.open();
    QVERIFY(stage.item->isEditable());
    QCOMPARE(stage.selection(), QStringLiteral("two"));
    for (const char *name : {"edit-cut", "edit-copy", "edit-delete", "select-all"})
        QVERIFY2(actionOf(*stage.menu, name)->isEnabled(), name);
}

void TitleItemContextMenuTest::dismissedMenuGivesTheFocusBack_data()
{
    QTest::addColumn<Dismissal>("dismiss");

    QTest::newRow("Escape") << Dismissal(
            [](QMenu &menu) { QTest::keyClick(&menu, Qt::Key_Escape); });
    QTest::newRow("close()") << Dismissal([](QMenu &menu) { menu.close(); });
    QTest::newRow("a click beside it") << Dismissal([](QMenu &menu) {
        QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier, QPoint(-20, -20));
    });
}

void TitleItemContextMenuTest::dismissedMenuGivesTheFocusBack()
{
    QFETCH(const Dismissal, dismiss);

    MenuStage stage;
    stage.open();
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    dismiss(*stage.menu);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(stage.item->isEditable());
    QVERIFY(stage.item->hasFocus());
    QCOMPARE(stage.selection(), QStringLiteral("two"));
    stage.type(QStringLiteral("2"));
    QCOMPARE(stage.text(), QStringLiteral("one 2 three"));
    QCOMPARE(reports.count(), 0);
    stage.click(stage.pointBeside());
    QVERIFY(!stage.item->isEditable());
    QCOMPARE(reports.count(), 1);
}

void TitleItemContextMenuTest::actionsWork_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("isClicked");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("clipboard");

    const QString whole = QStringLiteral("one two three");
    const QString copied = QStringLiteral("copied");
    for (const bool isClicked : {true, false}) {
        const char *how = isClicked ? "clicked" : "triggered while it is open";
        const auto row = [&](const char *name, const QString &text, const QString &clipboard) {
            QTest::addRow("%s, %s", name, how)
                    << QByteArray(name) << isClicked << text << clipboard;
        };
        row("edit-cut", QStringLiteral("one  three"), QStringLiteral("two"));
        row("edit-copy", whole, QStringLiteral("two"));
        row("edit-paste", QStringLiteral("one copied three"), copied);
        row("edit-delete", QStringLiteral("one  three"), copied);
        row("select-all", whole, copied);
    }
}

void TitleItemContextMenuTest::actionsWork()
{
    QFETCH(const QByteArray, name);
    QFETCH(const bool, isClicked);
    QFETCH(const QString, text);
    QFETCH(const QString, clipboard);

    QApplication::clipboard()->setText(QStringLiteral("copied"));
    MenuStage stage;
    stage.open();
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    const QString before = stage.text();
    QAction *action = actionOf(*stage.menu, name);
    if (isClicked) {
        QTest::mouseClick(stage.menu, Qt::LeftButton, Qt::NoModifier,
                          stage.menu->actionGeometry(action).center());
    } else {
        action->trigger();
        stage.menu->close();
    }
    QCOMPARE(stage.text(), text);
    QCOMPARE(QApplication::clipboard()->text(), clipboard);
    QVERIFY(stage.item->hasFocus());
    QCOMPARE(stage.selection() == before, name == "select-all");

    QCOMPARE(reports.count(), 0);
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), text == before ? 0 : 1);
}

void TitleItemContextMenuTest::undoAndRedo()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.doubleClick(stage.pointAt(1));
    stage.type(QStringLiteral("x"));
    QCOMPARE(stage.text(), QStringLiteral("x"));
    const auto choose = [&stage](const char *name) {
        QMenu *menu = openMenu(stage, stage.pointAt(1));
        QVERIFY(menu);
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                          menu->actionGeometry(actionOf(*menu, name)).center());
    };
    choose("edit-undo");
    QCOMPARE(stage.text(), QStringLiteral("one"));
    choose("edit-redo");
    QCOMPARE(stage.text(), QStringLiteral("x"));
    stage.item->setEditable(false);
    QCOMPARE(reports.count(), 1);
}

void TitleItemContextMenuTest::pastesAsTheKeyDoes_data()
{
    QTest::addColumn<bool>("isRichTextAccepted");

    QTest::newRow("rich text") << true;
    QTest::newRow("plain text") << false;
}

void TitleItemContextMenuTest::pastesAsTheKeyDoes()
{
    QFETCH(const bool, isRichTextAccepted);

    auto *data = new QMimeData;
    data->setHtml(QStringLiteral("<b>bold</b>"));
    QApplication::clipboard()->setMimeData(data);
    MenuStage stage;
    stage.item->setAcceptRichText(isRichTextAccepted);
    stage.open();
    QTest::mouseClick(stage.menu, Qt::LeftButton, Qt::NoModifier,
                      stage.menu->actionGeometry(actionOf(*stage.menu, "edit-paste")).center());
    QCOMPARE(stage.text(), QStringLiteral("one bold three"));
    QCOMPARE(stage.formatAt(5).fontWeight() == QFont::Bold, isRichTextAccepted);
}

void TitleItemContextMenuTest::formatIsFollowed()
{
    TextStage stage(QStringLiteral("one <b>bold</b> two"));
    QVERIFY(stage.show());
    stage.doubleClick(stage.pointAt(6));
    stage.press(Qt::Key_Delete);
    stage.press(Qt::Key_Home);
    QVERIFY(stage.item->currentCharFormat().fontWeight() != QFont::Bold);
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    QMenu *menu = openMenu(stage, stage.pointAt(6));
    QVERIFY(menu);
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                      menu->actionGeometry(actionOf(*menu, "edit-undo")).center());
    QCOMPARE(stage.item->currentCharFormat().fontWeight(), int(QFont::Bold));
    QCOMPARE(formats.count(), 1);
}

void TitleItemContextMenuTest::composedTextIsKept()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.compose(QStringLiteral("x"));
    QMenu *menu = openMenu(stage, stage.pointAt(1));
    QVERIFY(menu);
    menu->close();
    QVERIFY(stage.item->hasFocus());
    QCOMPARE(stage.text(), QStringLiteral("xone"));
}

void TitleItemContextMenuTest::leadsElsewhere_data()
{
    QTest::addColumn<bool>("isMenuOpen");
    QTest::addColumn<Action>("leave");

    const auto fromAction = [](const char *name, const Action &leave) {
        QTest::addRow("%s, by an action", name) << false << leave;
    };
    const auto row = [fromAction](const char *name, const Action &leave) {
        fromAction(name, leave);
        QTest::addRow("%s, below the menu", name) << true << leave;
    };
    row("another title is edited", [](TextStage &stage) {
        auto *other = new TitleItem(QSizeF(100, 50), nullptr);
        stage.scene.addItem(other);
        other->setEditable(true);
        QVERIFY(other->isEditable());
        QVERIFY(other->hasFocus());
    });
    row("another item gets the focus", [](TextStage &stage) {
        auto *other = new QGraphicsRectItem(300, 300, 20, 20);
        other->setFlag(QGraphicsItem::ItemIsFocusable);
        stage.scene.addItem(other);
        other->setFocus();
        QVERIFY(other->hasFocus());
    });
    row("a field of the window gets the focus", [](TextStage &stage) {
        auto *field = new QLineEdit(&stage.view);
        field->show();
        field->setFocus();
        QVERIFY(field->hasFocus());
    });
    row("the view loses the focus", [](TextStage &stage) { stage.view.clearFocus(); });
    row("another window becomes active", [](TextStage &stage) {
        auto *other = new QWidget(&stage.view, Qt::Window);
        other->show();
        other->activateWindow();
    });
    // While a menu is open, Qt takes no notice of it.
    fromAction("the window is closed", [](TextStage &stage) { stage.view.close(); });
    row("the title is hidden", [](TextStage &stage) { stage.item->hide(); });
    row("the title is disabled", [](TextStage &stage) { stage.item->setEnabled(false); });
    row("setEditable(false)", [](TextStage &stage) { stage.item->setEditable(false); });
    row("another document is shown", [](TextStage &stage) { stage.item->setDocument(nullptr); });
}

/// After a change by the menu.
void TitleItemContextMenuTest::leadsElsewhere()
{
    QFETCH(const bool, isMenuOpen);
    QFETCH(const Action, leave);

    MenuStage stage;
    stage.open();
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    QAction *cut = actionOf(*stage.menu, "edit-cut");
    if (isMenuOpen) {
        cut->trigger();
        leave(stage);
        if (stage.menu)
            stage.menu->close();
    } else {
        connect(cut, &QAction::triggered, &stage.scene, [&] { leave(stage); });
        QTest::mouseClick(stage.menu, Qt::LeftButton, Qt::NoModifier,
                          stage.menu->actionGeometry(cut).center());
    }
    QTRY_VERIFY(!stage.item->isEditable());
    QCOMPARE(reports.count(), 1);
    QCOMPARE(stage.text(), QStringLiteral("one  three"));

    // And that was the end of it.
    stage.item->show();
    stage.item->setEnabled(true);
    stage.scene.setFocusItem(nullptr);
    stage.view.setFocus();
    QVERIFY(!stage.item->isEditable());
    QCOMPARE(reports.count(), 1);
}

/// When code ends editing below the menu.
void TitleItemContextMenuTest::menuDoesNothingAfterEditing()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    stage.doubleClick(stage.pointAt(1));
    stage.type(QStringLiteral("x"));
    QMenu *menu = openMenu(stage, stage.pointAt(1));
    QVERIFY(menu);
    QAction *undo = actionOf(*menu, "edit-undo");
    QVERIFY(undo->isEnabled());
    stage.item->setEditable(false);
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(undo).center());
    QCOMPARE(stage.text(), QStringLiteral("x"));
    menu->close();
    stage.item->setEditable(false);
    QCOMPARE(reports.count(), 0);
}

void TitleItemContextMenuTest::somethingIsDeletedBelowTheMenu_data()
{
    QTest::addColumn<Action>("destroy");

    QTest::newRow("the title") << Action([](TextStage &stage) { delete stage.item; });
    QTest::newRow("all items") << Action([](TextStage &stage) { stage.scene.clear(); });
    QTest::newRow("the title leaves the scene") << Action([](TextStage &stage) {
        const QScopedPointer<QGraphicsItem> removed(stage.item);
        stage.scene.removeItem(stage.item);
    });
}

void TitleItemContextMenuTest::somethingIsDeletedBelowTheMenu()
{
    QFETCH(const Action, destroy);

    MenuStage stage;
    stage.open();
    actionOf(*stage.menu, "edit-cut")->trigger();
    destroy(stage);
    QVERIFY(!stage.item);
    if (stage.menu) {
        if (QAction *paste = actionOf(*stage.menu, "edit-paste"))
            paste->trigger();
        stage.menu->close();
    }
    QCOMPARE(stage.text(), QStringLiteral("one  three"));
    QCOMPARE(stage.document.documentLayout()->paintDevice(), nullptr);
    QCOMPARE(stage.scene.focusItem(), nullptr);
}

void TitleItemContextMenuTest::listenerMayDeleteTheTitle()
{
    MenuStage stage;
    stage.open();
    connect(stage.item, &TitleItem::contentEdited, this, [&stage] { delete stage.item; });
    actionOf(*stage.menu, "edit-cut")->trigger();
    auto *other = new QGraphicsRectItem(300, 300, 20, 20);
    other->setFlag(QGraphicsItem::ItemIsFocusable);
    stage.scene.addItem(other);
    other->setFocus();
    QVERIFY(!stage.item);
    QVERIFY(other->hasFocus());
}

QTEST_MAIN(TitleItemContextMenuTest)
#include "tst_titleitem_contextmenu.moc"
