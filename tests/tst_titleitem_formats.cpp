// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextStage.h"
#include "TitleTest.h"

#include <QSignalSpy>

namespace {

QTextCharFormat colored(const QColor &color, int pointSize)
{
    QTextCharFormat format;
    format.setForeground(color);
    format.setFontPointSize(pointSize);
    return format;
}

void putCursor(TextStage &stage, int position, int anchor)
{
    QTextCursor cursor(&stage.document);
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    stage.item->setTextCursor(cursor);
}

void putCursor(TextStage &stage, int position)
{
    putCursor(stage, position, position);
}

QTextCharFormat reported(const QSignalSpy &formats)
{
    return formats.isEmpty() ? QTextCharFormat() : formats.last().at(0).value<QTextCharFormat>();
}

} // namespace

class TitleItemFormatsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void currentFormat_data();
    void currentFormat();
    void currentFormatOfTextToCome_data();
    void currentFormatOfTextToCome();
    void reportsFormatsOnTheWay();
    void reportsAFormatOnce();
    void reportsCanBeQueued();
    void reportsNothingOfDisplayedText();
    void reportsAtTheFirstEvent();
    void reportsNothingForFontsWrittenOut();

    void deletingKeepsTheFormat_data();
    void deletingKeepsTheFormat();
    void deletingTwiceKeepsTheFormat();
    void deletingReportsNoFormat();
    void newTitleHasNoFormatToKeep();

    void defaultFontFollows_data();
    void defaultFontFollows();
    void defaultFontFollowsTheCursor();
    void defaultFontStaysWithTheSameFormat();

    void walkingChangesNothing_data();
    void walkingChangesNothing();
    void walkingKeepsTheUndoStack();
    void typesOnAfterOtherFormats();
    void typingKeepsTheLookOfTheRest();
    void selectionSurvivesAnotherDefaultFont();
    void formatsOfTheSelectionCanBeSet();
    void sceneEventsAreAnswered_data();
    void sceneEventsAreAnswered();
};

// The format at the cursor

void TitleItemFormatsTest::currentFormat_data()
{
    QTest::addColumn<int>("anchor");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("weight");

    const auto row = [](const char *name, int anchor, int position, QFont::Weight weight) {
        QTest::newRow(name) << anchor << position << int(weight);
    };
    row("at the start, that of the first character", 0, 0, QFont::Bold);
    row("after a character, that of it", 2, 2, QFont::Bold);
    row("after a change", 3, 3, QFont::Normal);
    row("selection backwards to the start", 6, 0, QFont::Bold);
    row("selection backwards", 6, 1, QFont::Bold);
    row("selection forwards", 1, 6, QFont::Normal);
    row("everything", 0, 6, QFont::Normal);
}

void TitleItemFormatsTest::currentFormat()
{
    QFETCH(const int, anchor);
    QFETCH(const int, position);
    QFETCH(const int, weight);

    TextStage stage(QStringLiteral("<b>ab</b>cdef"));
    putCursor(stage, position, anchor);
    QCOMPARE(stage.item->currentCharFormat().font().weight(), weight);
    QCOMPARE(stage.position(), position);
    QCOMPARE(stage.item->textCursor().anchor(), anchor);
}

void TitleItemFormatsTest::currentFormatOfTextToCome_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("isSeen");

    QTest::newRow("at the start") << 0 << false;
    QTest::newRow("after a character") << 2 << true;
}

/// A format that was set for what is typed next.
void TitleItemFormatsTest::currentFormatOfTextToCome()
{
    QFETCH(const int, position);
    QFETCH(const bool, isSeen);

    TextStage stage(QStringLiteral("abcdef"));
    QTextCursor cursor(&stage.document);
    cursor.setPosition(position);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    cursor.mergeCharFormat(bold);
    stage.item->setTextCursor(cursor);
    QCOMPARE(stage.item->currentCharFormat().font().bold(), isSeen);
    QVERIFY(stage.item->textCursor().charFormat().font().bold());
}

void TitleItemFormatsTest::reportsFormatsOnTheWay()
{
    TextStage stage(QStringLiteral("a<b>b</b><i>c</i><span style='color:#ff0000'>d</span>"));
    QVERIFY(stage.show());
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    stage.item->setEditable(true);

    stage.press(Qt::Key_Right);
    stage.press(Qt::Key_Right);
    QCOMPARE(reported(formats).fontWeight(), int(QFont::Bold));
    stage.press(Qt::Key_Right);
    QVERIFY(reported(formats).font().italic());
    QCOMPARE(reported(formats).font().weight(), int(QFont::Normal));
    stage.press(Qt::Key_Right);
    QCOMPARE(reported(formats).foreground().color(), QColor(Qt::red));
    QVERIFY(!reported(formats).font().italic());
    QCOMPARE(reported(formats), stage.item->currentCharFormat());
    stage.press(Qt::Key_Home);
    QCOMPARE(reported(formats).font(), stage.item->currentCharFormat().font());
    QVERIFY(reported(formats).foreground().color() != QColor(Qt::red));
}

void TitleItemFormatsTest::reportsAFormatOnce()
{
    TextStage stage(QStringLiteral("ab<b>cdef</b>"));
    stage.document.setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 12, QFont::Bold));
    putCursor(stage, 4);
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    stage.item->checkFormatChanges(QEvent::KeyPress);
    QCOMPARE(formats.count(), 1);
    stage.item->checkFormatChanges(QEvent::KeyPress);
    putCursor(stage, 5);
    stage.item->checkFormatChanges(QEvent::MouseMove);
    QCOMPARE(formats.count(), 1);
}

void TitleItemFormatsTest::reportsCanBeQueued()
{
    TextStage stage(QStringLiteral("<b>bold</b>"));
    int weight = 0;
    connect(
            stage.item, &TitleItem::currentCharFormatChanged, this,
            [&weight](const QTextCharFormat &format) { weight = format.fontWeight(); },
            Qt::QueuedConnection);
    putCursor(stage, 2);
    stage.item->checkFormatChanges(QEvent::KeyPress);
    QCOMPARE(weight, 0);
    QCoreApplication::processEvents();
    QCOMPARE(weight, int(QFont::Bold));
}

/// The format of text as an application makes it is the empty one, which counts as known.
void TitleItemFormatsTest::reportsNothingOfDisplayedText()
{
    TextStage stage;
    stage.document.setPlainText(QStringLiteral("plain"));
    QVERIFY(stage.show());
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    stage.moveMouse(stage.pointAt(2));
    stage.click(stage.pointAt(3));
    stage.doubleClick(stage.pointAt(3));
    stage.press(Qt::Key_Right);
    QCOMPARE(formats.count(), 0);
}

void TitleItemFormatsTest::reportsAtTheFirstEvent()
{
    TextStage stage(QStringLiteral("<b>bold</b> text"));
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    QVERIFY(stage.show());
    QCOMPARE(formats.count(), 1);
    QCOMPARE(reported(formats).fontWeight(), int(QFont::Bold));
    putCursor(stage, 7);
    QCOMPARE(formats.count(), 1);
    for (int i = 0; i < 5; ++i)
        stage.moveMouse(stage.pointAt(i));
    QCOMPARE(formats.count(), 2);
    QVERIFY(!reported(formats).font().bold());
}

/// Text that gets its whole font for itself has no other format for that.
void TitleItemFormatsTest::reportsNothingForFontsWrittenOut()
{
    TextStage stage(QStringLiteral("one <b>two</b>"));
    QVERIFY(stage.show());
    stage.item->setEditable(true, stage.pointAt(6));
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    stage.press(Qt::Key_Left);
    stage.press(Qt::Key_Shift);
    QCOMPARE(stage.document.defaultFont().weight(), int(QFont::Bold));
    for (int i = 0; i < 5; ++i)
        stage.moveMouse(stage.pointAt(i));
    QCOMPARE(formats.count(), 1);
}

// Without text

void TitleItemFormatsTest::deletingKeepsTheFormat_data()
{
    QTest::addColumn<Action>("remove");

    const auto row = [](const char *name, const Action &remove) { QTest::newRow(name) << remove; };
    row("delete", [](TextStage &stage) {
        stage.press(QKeySequence::SelectAll);
        stage.press(Qt::Key_Delete);
    });
    row("cut", [](TextStage &stage) {
        stage.press(QKeySequence::SelectAll);
        stage.press(QKeySequence::Cut);
    });
    row("backspaces", [](TextStage &stage) {
        stage.press(Qt::Key_End);
        for (int i = 0; i < 6; ++i)
            stage.press(Qt::Key_Backspace);
    });
    row("an input method that gives up", [](TextStage &stage) {
        stage.press(QKeySequence::SelectAll);
        stage.compose(QStringLiteral("x"));
        stage.compose(QString());
    });
}

void TitleItemFormatsTest::deletingKeepsTheFormat()
{
    QFETCH(const Action, remove);

    for (const bool byInputMethod : {false, true}) {
        TextStage stage;
        QTextCursor(&stage.document).insertText(QStringLiteral("text"), colored(Qt::red, 30));
        QVERIFY(stage.show());
        stage.item->setEditable(true);
        stage.press(Qt::Key_Right);
        remove(stage);
        QCOMPARE(stage.text(), QString());
        if (byInputMethod)
            stage.commit(QStringLiteral("new"));
        else
            stage.type(QStringLiteral("new"));
        QCOMPARE(stage.text(), QStringLiteral("new"));
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(stage.formatAt(i).foreground().color(), QColor(Qt::red));
            QCOMPARE(stage.formatAt(i).font().pointSize(), 30);
        }
    }
}

void TitleItemFormatsTest::deletingTwiceKeepsTheFormat()
{
    TextStage stage(QStringLiteral("<span style='color:#ff0000;font-size:30pt'>first</span> last"));
    QVERIFY(stage.show());
    stage.item->setEditable(true, stage.pointAt(2));
    QCOMPARE(stage.item->currentCharFormat().foreground().color(), QColor(Qt::red));
    for (int round = 0; round < 3; ++round) {
        stage.press(QKeySequence::SelectAll);
        stage.press(Qt::Key_Delete);
        stage.press(Qt::Key_Backspace);
        stage.press(Qt::Key_Left);
        stage.type(QStringLiteral("x"));
        QCOMPARE(stage.text(), QStringLiteral("x"));
        // Selecting everything went to the end, so its format was the last one.
        QCOMPARE(stage.formatAt(0).font().pointSize(), 12);
        QVERIFY(stage.formatAt(0).foreground().color() != QColor(Qt::red));
    }
}

void TitleItemFormatsTest::deletingReportsNoFormat()
{
    TextStage stage(QStringLiteral("<span style='color:#ff0000;font-size:30pt'>text</span>"));
    QVERIFY(stage.show());
    stage.item->setEditable(true, stage.pointAt(2));
    stage.press(QKeySequence::SelectAll);
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    stage.press(Qt::Key_Delete);
    QCOMPARE(stage.text(), QString());
    QCOMPARE(formats.count(), 0);
    QCOMPARE(stage.item->textCursor().charFormat().foreground().color(), QColor(Qt::red));
}

void TitleItemFormatsTest::newTitleHasNoFormatToKeep()
{
    TextStage stage;
    QTextCursor(&stage.document).setBlockCharFormat(colored(Qt::red, 30));
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    stage.item->checkFormatChanges(QEvent::KeyPress);
    QCOMPARE(formats.count(), 0);
    QCOMPARE(stage.item->textCursor().charFormat(), QTextCharFormat());
}

// The default font

void TitleItemFormatsTest::defaultFontFollows_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("follows");

    const auto row = [](const char *name, QEvent::Type type, bool follows) {
        QTest::newRow(name) << int(type) << follows;
    };
    row("below the scene's mouse events", QEvent::Type(154), true);
    row("move", QEvent::GraphicsSceneMouseMove, false);
    row("press", QEvent::GraphicsSceneMousePress, false);
    row("release", QEvent::GraphicsSceneMouseRelease, false);
    row("double click", QEvent::GraphicsSceneMouseDoubleClick, false);
    row("context menu", QEvent::GraphicsSceneContextMenu, true);
    row("hover enter", QEvent::GraphicsSceneHoverEnter, false);
    row("hover move", QEvent::GraphicsSceneHoverMove, false);
    row("hover leave", QEvent::GraphicsSceneHoverLeave, false);
    row("help", QEvent::GraphicsSceneHelp, true);
    row("key press", QEvent::KeyPress, true);
    row("key release", QEvent::KeyRelease, true);
    row("input method", QEvent::InputMethod, true);
    row("focus in", QEvent::FocusIn, true);
    row("none", QEvent::None, true);
}

void TitleItemFormatsTest::defaultFontFollows()
{
    QFETCH(const int, type);
    QFETCH(const bool, follows);

    TextStage stage(QStringLiteral("ab <span style='font-size:30pt'>large</span>"));
    const QFont before = stage.document.defaultFont();
    putCursor(stage, 6);
    const QFont large = stage.item->currentCharFormat().font();
    QCOMPARE(large.pointSize(), 30);
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    stage.item->checkFormatChanges(type);
    QCOMPARE(formats.count(), 1);
    QCOMPARE(stage.document.defaultFont(), follows ? large : before);
}

void TitleItemFormatsTest::defaultFontFollowsTheCursor()
{
    TextStage stage(QStringLiteral("ab <span style='font-size:30pt'>large</span> <b>bold</b>"));
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    for (int i = 1; i <= stage.text().length(); ++i) {
        stage.press(Qt::Key_Right);
        QCOMPARE(stage.document.defaultFont(), stage.item->currentCharFormat().font());
    }
    QCOMPARE(stage.document.defaultFont().weight(), int(QFont::Bold));
    QCOMPARE(stage.document.defaultFont().pointSize(), 12);
}

void TitleItemFormatsTest::defaultFontStaysWithTheSameFormat()
{
    TextStage stage(QStringLiteral("<span style='font-size:30pt'>large</span>"));
    putCursor(stage, 3);
    stage.item->checkFormatChanges(QEvent::GraphicsSceneMousePress);
    const QFont before = stage.document.defaultFont();
    // The format is known by now, so there is nothing to do.
    stage.item->checkFormatChanges(QEvent::KeyPress);
    QCOMPARE(stage.document.defaultFont(), before);
}

// What stays

void TitleItemFormatsTest::walkingChangesNothing_data()
{
    QTest::addColumn<QString>("html");

    QTest::newRow("many fonts") << manyFonts();
    QTest::newRow("fonts in each paragraph")
            << QStringLiteral("<p><b>one</b> two</p><p style='font-size:30pt'>three</p>"
                              "<p></p><p><i>four</i></p>");
    QTest::newRow("sizes relative to the default")
            << QStringLiteral("a<big>big</big><small>small</small><sup>up</sup><sub>down</sub>");
    QTest::newRow("lines of all kinds")
            << QStringLiteral("<u>under</u><s>out</s><span style='text-decoration:overline'>over"
                              "</span><a href='x'>link</a>");
    QTest::newRow("colours and backgrounds")
            << QStringLiteral("a<span style='color:#ff0000;background-color:#00ff00'>b</span>c");
    QTest::newRow("spacing") << QStringLiteral(
            "a<span style='letter-spacing:4px;word-spacing:9px'>b c</span>d");
    QTest::newRow("a table") << QStringLiteral(
            "<table border='1'><tr><th>head</th><td>cell</td></tr></table>");
    QTest::newRow("scripts") << QString::fromUtf8("<b>Жирный</b> 天地 <i>नमस्ते</i> мир");
}

void TitleItemFormatsTest::walkingChangesNothing()
{
    QFETCH(const QString, html);

    TextStage stage(html);
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    const QString text = stage.text();
    const QImage picture = stage.picture();
    const QSizeF size = stage.document.size();
    stage.document.setModified(false);
    stage.item->setEditable(true);
    stage.press(QKeySequence::MoveToStartOfDocument);
    QTextCursor expected(&stage.document);
    while (expected.movePosition(QTextCursor::NextCharacter)) {
        stage.press(Qt::Key_Right);
        QCOMPARE(stage.position(), expected.position());
        COMPARE_PICTURES(stage.picture(), picture, 0);
    }
    while (expected.movePosition(QTextCursor::PreviousCharacter)) {
        stage.press(Qt::Key_Left);
        QCOMPARE(stage.position(), expected.position());
    }
    COMPARE_PICTURES(stage.picture(), picture, 0);
    QCOMPARE(stage.document.size(), size);
    QCOMPARE(stage.text(), text);
    QVERIFY(!stage.document.isModified());
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 0);
}

void TitleItemFormatsTest::walkingKeepsTheUndoStack()
{
    TextStage stage(QStringLiteral("one <b>two</b> <i>three</i>"));
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.press(QKeySequence::MoveToStartOfDocument);
    for (int i = 0; i < 20; ++i)
        stage.press(Qt::Key_Right);
    stage.type(QStringLiteral("!"));
    for (int i = 0; i < 20; ++i)
        stage.press(Qt::Key_Left);
    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.text(), QStringLiteral("one two three"));
}

void TitleItemFormatsTest::typesOnAfterOtherFormats()
{
    TextStage stage(manyFonts());
    QVERIFY(stage.show());
    const QString text = stage.text();
    stage.item->setEditable(true);
    stage.press(QKeySequence::MoveToStartOfDocument);
    QString expected;
    for (const QChar character : text) {
        stage.type(QStringLiteral("123"));
        stage.press(Qt::Key_Right);
        expected += QStringLiteral("123") + character;
        QCOMPARE(stage.position(), expected.length());
    }
    QCOMPARE(stage.text(), expected);
}

void TitleItemFormatsTest::typingKeepsTheLookOfTheRest()
{
    TextStage stage(
            QStringLiteral("regular <b>bold</b> <span style='font-size:30pt'>large</span>"));
    QVERIFY(stage.show());
    stage.item->setEditable(true, stage.pointAt(12));
    stage.type(QStringLiteral("123"));
    QCOMPARE(stage.text(), QStringLiteral("regular bold123 large"));
    QCOMPARE(stage.formatAt(3).font().weight(), int(QFont::Normal));
    for (int i = 8; i < 15; ++i)
        QCOMPARE(stage.formatAt(i).font().weight(), int(QFont::Bold));
    QCOMPARE(stage.formatAt(15).font().weight(), int(QFont::Normal));
    QCOMPARE(stage.formatAt(18).font().pointSize(), 30);
    QCOMPARE(stage.formatAt(18).font().weight(), int(QFont::Normal));
}

void TitleItemFormatsTest::selectionSurvivesAnotherDefaultFont()
{
    TextStage stage(QStringLiteral("regular <b>bold</b> end"));
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    putCursor(stage, 10, 2);
    stage.item->checkFormatChanges(QEvent::KeyPress);
    QCOMPARE(stage.document.defaultFont().weight(), int(QFont::Bold));
    QCOMPARE(stage.selection(), QStringLiteral("gular bo"));
    QCOMPARE(stage.item->textCursor().anchor(), 2);
    QCOMPARE(stage.position(), 10);
}

/// As a format tool bar does.
void TitleItemFormatsTest::formatsOfTheSelectionCanBeSet()
{
    TextStage stage(QStringLiteral("one two three"));
    QVERIFY(stage.show());
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.doubleClick(stage.pointAt(5));
    QCOMPARE(stage.selection(), QStringLiteral("two"));
    QTextCharFormat italic;
    italic.setFontItalic(true);
    stage.item->textCursor().mergeCharFormat(italic);
    stage.press(Qt::Key_Shift);
    QVERIFY(reported(formats).fontItalic());
    QCOMPARE(stage.selection(), QStringLiteral("two"));
    QVERIFY(!stage.formatAt(3).font().italic());
    QVERIFY(stage.formatAt(4).font().italic());
    QVERIFY(!stage.formatAt(7).font().italic());
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 1);
}

void TitleItemFormatsTest::sceneEventsAreAnswered_data()
{
    QTest::addColumn<int>("type");

    for (const QEvent::Type type :
         {QEvent::GrabMouse, QEvent::GraphicsSceneHelp, QEvent::ContextMenu, QEvent::TouchBegin})
        QTest::addRow("type %d", int(type)) << int(type);
}

/// As the base class answers, and only then is the format looked at.
void TitleItemFormatsTest::sceneEventsAreAnswered()
{
    QFETCH(const int, type);

    TextStage stage(QStringLiteral("one <b>two</b>"));
    auto *twin = new QGraphicsTextItem;
    stage.scene.addItem(twin);
    putCursor(stage, 6);
    QSignalSpy formats(stage.item, &TitleItem::currentCharFormatChanged);
    for (const auto flags : {Qt::NoTextInteraction, Qt::TextEditorInteraction}) {
        stage.item->setTextInteractionFlags(flags);
        twin->setTextInteractionFlags(flags);
        QEvent toTwin{QEvent::Type(type)};
        QEvent toItem{QEvent::Type(type)};
        QCOMPARE(stage.scene.sendEvent(stage.item, &toItem), stage.scene.sendEvent(twin, &toTwin));
        QCOMPARE(toItem.isAccepted(), toTwin.isAccepted());
    }
    QVERIFY(formats.count() >= 1);
}

QTEST_MAIN(TitleItemFormatsTest)
#include "tst_titleitem_formats.moc"
