// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextStage.h"
#include "WarningFreeTest.h"

#include <QClipboard>
#include <QMimeData>
#include <QSignalSpy>

namespace {

QClipboard &clipboard()
{
    return *QApplication::clipboard();
}

void copy(const QString &text, const QString &html)
{
    auto *data = new QMimeData;
    if (!text.isNull())
        data->setText(text);
    if (!html.isNull())
        data->setHtml(html);
    clipboard().setMimeData(data);
}

QString boldRed()
{
    return QStringLiteral("<b style='color:#ff0000'>bold</b> text");
}

bool isBold(const TextStage &stage, int position)
{
    return stage.formatAt(position).font().weight() == QFont::Bold;
}

/// Whether all characters of a range have a format of this colour and size.
bool looks(const TextStage &stage, int from, int to, const QColor &color, int pointSize)
{
    for (int i = from; i < to; ++i) {
        const QTextCharFormat format = stage.formatAt(i);
        if (format.foreground().color() != color || format.font().pointSize() != pointSize)
            return false;
    }
    return true;
}

QString greenTitle()
{
    return QStringLiteral("<span style='color:#008000;font-size:30pt'>green title</span>");
}

} // namespace

class TitleItemClipboardTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void acceptsRichTextAtFirst();
    void copies();
    void cuts();
    void pastes_data();
    void pastes();
    void pastesRichText();
    void pastesPlainText();
    void plainTextTakesThePlaceOfRichText_data();
    void plainTextTakesThePlaceOfRichText();
    void leavesPlainClipboardsAlone();
    void richTextStaysOnTheClipboard();
    void otherKeysLeaveTheClipboardAlone();

    void overEverythingTakesTheTitlesFormat_data();
    void overEverythingTakesTheTitlesFormat();
    void overEverythingCanBeUndone();
    void overAPartTakesTheFormatBefore();
    void allButOneCharacterIsAPart();
    void overEverythingOfNothing_data();
    void overEverythingOfNothing();
    void intoAnEmptyTitle();
    void reportsOncePerEditing_data();
    void reportsOncePerEditing();
    void displayModePastesNothing();
};

void TitleItemClipboardTest::init()
{
    clipboard().clear();
}

void TitleItemClipboardTest::acceptsRichTextAtFirst()
{
    TitleItem item(QSizeF(100, 50), nullptr);
    QVERIFY(item.acceptRichText());
    item.setAcceptRichText(false);
    QVERIFY(!item.acceptRichText());
    item.setAcceptRichText(true);
    QVERIFY(item.acceptRichText());
}

void TitleItemClipboardTest::copies()
{
    for (const bool rich : {true, false}) {
        TextStage stage(QStringLiteral("one <b>two</b> three"));
        stage.item->setAcceptRichText(rich);
        QVERIFY(stage.show());
        QSignalSpy reports(stage.item, &TitleItem::contentEdited);
        stage.doubleClick(stage.pointAt(5));
        stage.press(QKeySequence::Copy);
        QCOMPARE(clipboard().text(), QStringLiteral("two"));
        QVERIFY(clipboard().mimeData()->hasHtml());
        QCOMPARE(stage.text(), QStringLiteral("one two three"));
        QCOMPARE(stage.selection(), QStringLiteral("two"));
        stage.click(stage.pointBeside());
        QCOMPARE(reports.count(), 0);
    }
}

void TitleItemClipboardTest::cuts()
{
    TextStage stage(QStringLiteral("one <b>two</b> three"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.doubleClick(stage.pointAt(5));
    stage.press(QKeySequence::Cut);
    QCOMPARE(clipboard().text(), QStringLiteral("two"));
    QCOMPARE(stage.text(), QStringLiteral("one  three"));
    QCOMPARE(stage.position(), 4);
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 1);
}

void TitleItemClipboardTest::pastes_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("Latin") << QStringLiteral("word");
    QTest::newRow("lines") << QStringLiteral("one\ntwo\nthree");
    QTest::newRow("Cyrillic") << QString::fromUtf8("слово");
    QTest::newRow("CJK") << QString::fromUtf8("你好");
    QTest::newRow("Arabic") << QString::fromUtf8("مرحبا");
    QTest::newRow("emoji") << QString::fromUtf8("😀👨‍👩‍👧");
    QTest::newRow("markup") << QStringLiteral("<b>a & b</b>");
}

void TitleItemClipboardTest::pastes()
{
    QFETCH(const QString, text);

    for (const bool rich : {true, false}) {
        TextStage stage(QStringLiteral("one <b>two</b> three"));
        stage.item->setAcceptRichText(rich);
        QVERIFY(stage.show());
        copy(text, QString());
        stage.item->setEditable(true, stage.pointAt(6));
        stage.press(QKeySequence::Paste);
        QCOMPARE(stage.text(), QStringLiteral("one tw%1o three").arg(text));
        QCOMPARE(stage.position(), 6 + text.length());
        QVERIFY(isBold(stage, 6));
        stage.press(QKeySequence::Paste);
        QCOMPARE(stage.text(), QStringLiteral("one tw%1%1o three").arg(text));
    }
}

void TitleItemClipboardTest::pastesRichText()
{
    TextStage stage(greenTitle());
    QVERIFY(stage.show());
    copy(QStringLiteral("bold text"), boldRed());
    stage.item->setEditable(true, stage.pointAt(5));
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("greenbold text title"));
    QVERIFY(isBold(stage, 6));
    QCOMPARE(stage.formatAt(6).foreground().color(), QColor(Qt::red));
    QVERIFY(looks(stage, 0, 5, Qt::darkGreen, 30));
    QVERIFY(looks(stage, 14, 20, Qt::darkGreen, 30));
}

void TitleItemClipboardTest::pastesPlainText()
{
    TextStage stage(greenTitle());
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    copy(QStringLiteral("bold text"), boldRed());
    stage.item->setEditable(true, stage.pointAt(5));
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("greenbold text title"));
    QVERIFY(looks(stage, 0, 20, Qt::darkGreen, 30));
    QVERIFY(!isBold(stage, 6));
}

void TitleItemClipboardTest::plainTextTakesThePlaceOfRichText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("pasted");

    QTest::newRow("text and HTML")
            << QStringLiteral("the text") << boldRed() << QStringLiteral("the text");
    QTest::newRow("HTML alone") << QString() << boldRed() << QStringLiteral("bold text");
    QTest::newRow("empty text and HTML")
            << QStringLiteral("") << boldRed() << QStringLiteral("bold text");
    QTest::newRow("HTML of two paragraphs")
            << QString() << QStringLiteral("<p>one</p><p>two</p>") << QStringLiteral("one\ntwo");
    QTest::newRow("HTML with entities")
            << QString() << QStringLiteral("a &lt; b &amp; c") << QStringLiteral("a < b & c");
    QTest::newRow("HTML with a picture")
            << QString() << QStringLiteral("one<img src='x.png'>two") << QStringLiteral("onetwo");
    QTest::newRow("HTML in many scripts")
            << QString() << QString::fromUtf8("<b>Привет</b> 你好 <i>مرحبا</i> 😀")
            << QString::fromUtf8("Привет 你好 مرحبا 😀");
}

void TitleItemClipboardTest::plainTextTakesThePlaceOfRichText()
{
    QFETCH(const QString, text);
    QFETCH(const QString, html);
    QFETCH(const QString, pasted);

    TextStage stage(QStringLiteral("()"));
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    copy(text, html);
    stage.item->setEditable(true, stage.pointAt(1));
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("(%1)").arg(pasted));
    QVERIFY(!isBold(stage, 1));
    QVERIFY(!clipboard().mimeData()->hasHtml());
    QCOMPARE(clipboard().text(), pasted);
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("(%1%1)").arg(pasted));
}

void TitleItemClipboardTest::leavesPlainClipboardsAlone()
{
    TextStage stage(QStringLiteral("()"));
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    auto *data = new QMimeData;
    data->setText(QStringLiteral("text"));
    data->setData(QStringLiteral("application/x-other"), "data");
    clipboard().setMimeData(data);
    stage.item->setEditable(true, stage.pointAt(1));
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("(text)"));
    QCOMPARE(clipboard().mimeData()->data(QStringLiteral("application/x-other")),
             QByteArray("data"));
}

void TitleItemClipboardTest::richTextStaysOnTheClipboard()
{
    TextStage stage(QStringLiteral("()"));
    QVERIFY(stage.show());
    copy(QStringLiteral("bold text"), boldRed());
    stage.item->setEditable(true, stage.pointAt(1));
    stage.press(QKeySequence::Paste);
    QCOMPARE(clipboard().mimeData()->html(), boldRed());
}

void TitleItemClipboardTest::otherKeysLeaveTheClipboardAlone()
{
    TextStage stage(QStringLiteral("one two"));
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    copy(QStringLiteral("bold text"), boldRed());
    stage.item->setEditable(true, stage.pointAt(1));
    stage.type(QStringLiteral("v"));
    stage.press(QKeySequence::SelectAll);
    stage.press(Qt::Key_V, Qt::AltModifier);
    stage.press(Qt::Key_Delete);
    QCOMPARE(clipboard().mimeData()->html(), boldRed());
}

// Over a selection

void TitleItemClipboardTest::overEverythingTakesTheTitlesFormat_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("pasted");

    QTest::newRow("plain text") << QStringLiteral("new") << QString() << QStringLiteral("new");
    QTest::newRow("rich text") << QString() << boldRed() << QStringLiteral("bold text");
    QTest::newRow("lines") << QStringLiteral("one\ntwo") << QString() << QStringLiteral("one\ntwo");
    QTest::newRow("longer than it was")
            << QStringLiteral("a much longer text than the title was") << QString()
            << QStringLiteral("a much longer text than the title was");
    QTest::newRow("many scripts") << QString::fromUtf8("Привет 你好 مرحبا नमस्ते 😀") << QString()
                                  << QString::fromUtf8("Привет 你好 مرحبا नमस्ते 😀");
}

void TitleItemClipboardTest::overEverythingTakesTheTitlesFormat()
{
    QFETCH(const QString, text);
    QFETCH(const QString, html);
    QFETCH(const QString, pasted);

    TextStage stage(QStringLiteral("start <b>middle</b> ") + greenTitle());
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    copy(text, html);
    stage.item->setEditable(true);
    stage.press(QKeySequence::SelectAll);
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), pasted);
    QVERIFY(looks(stage, 0, pasted.length(), Qt::darkGreen, 30));
    QCOMPARE(stage.position(), pasted.length());
    QVERIFY(!stage.item->textCursor().hasSelection());
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 1);
}

void TitleItemClipboardTest::overEverythingCanBeUndone()
{
    TextStage stage(greenTitle());
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.press(QKeySequence::SelectAll);
    copy(QStringLiteral("new"), QString());
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("new"));
    // The text and its format are a step each.
    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.text(), QStringLiteral("new"));
    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.text(), QStringLiteral("green title"));
    QVERIFY(looks(stage, 0, 11, Qt::darkGreen, 30));
    stage.press(QKeySequence::Redo);
    stage.press(QKeySequence::Redo);
    QCOMPARE(stage.text(), QStringLiteral("new"));
    QCOMPARE(stage.position(), 3);
    QVERIFY(looks(stage, 0, 3, Qt::darkGreen, 30));
}

void TitleItemClipboardTest::overAPartTakesTheFormatBefore()
{
    TextStage stage(QStringLiteral("one <b>bold</b> ") + greenTitle());
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    copy(QStringLiteral("new"), boldRed());
    stage.doubleClick(stage.pointAt(6));
    QCOMPARE(stage.selection(), QStringLiteral("bold"));
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("one new green title"));
    QCOMPARE(stage.position(), 7);
    QVERIFY(looks(stage, 0, 7, Qt::black, 12));
    QVERIFY(looks(stage, 8, 19, Qt::darkGreen, 30));
    QVERIFY(!isBold(stage, 4) && !isBold(stage, 6));
}

void TitleItemClipboardTest::allButOneCharacterIsAPart()
{
    TextStage stage(QStringLiteral("onetw<b>o</b>"));
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    copy(QStringLiteral("new"), boldRed());
    stage.doubleClick(stage.pointAt(1));
    stage.press(QKeySequence::MoveToStartOfDocument);
    stage.press(QKeySequence::SelectEndOfDocument);
    stage.press(QKeySequence::SelectPreviousChar);
    QCOMPARE(stage.selection(), QStringLiteral("onetw"));
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("newo"));
    QVERIFY(isBold(stage, 3));
}

void TitleItemClipboardTest::overEverythingOfNothing_data()
{
    QTest::addColumn<bool>("hasOther");

    QTest::newRow("an empty clipboard") << false;
    QTest::newRow("something that is no text") << true;
}

void TitleItemClipboardTest::overEverythingOfNothing()
{
    QFETCH(const bool, hasOther);

    TextStage stage(QStringLiteral("<b>bold</b> ") + greenTitle());
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    if (hasOther) {
        auto *data = new QMimeData;
        data->setData(QStringLiteral("application/x-other"), "data");
        clipboard().setMimeData(data);
    }
    stage.item->setEditable(true);
    stage.press(QKeySequence::SelectAll);
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("bold green title"));
    QVERIFY(isBold(stage, 1));
    QVERIFY(looks(stage, 5, 16, Qt::darkGreen, 30));
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 0);
}

void TitleItemClipboardTest::intoAnEmptyTitle()
{
    TextStage stage(greenTitle());
    stage.item->setAcceptRichText(false);
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.press(QKeySequence::SelectAll);
    stage.press(Qt::Key_Delete);
    copy(QString(), boldRed());
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("bold text"));
    QVERIFY(looks(stage, 0, 9, Qt::darkGreen, 30));
}

void TitleItemClipboardTest::reportsOncePerEditing_data()
{
    QTest::addColumn<bool>("acceptsRichText");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("html");

    for (const bool rich : {true, false}) {
        const char *kind = rich ? "rich" : "plain";
        QTest::addRow("%s, text", kind) << rich << QStringLiteral("new") << QString();
        QTest::addRow("%s, HTML alone", kind) << rich << QString() << boldRed();
        QTest::addRow("%s, both", kind) << rich << QStringLiteral("new") << boldRed();
    }
}

void TitleItemClipboardTest::reportsOncePerEditing()
{
    QFETCH(const bool, acceptsRichText);
    QFETCH(const QString, text);
    QFETCH(const QString, html);

    TextStage stage(manyFonts());
    stage.item->setAcceptRichText(acceptsRichText);
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    copy(text, html);
    for (int editing = 1; editing <= 2; ++editing) {
        stage.item->setEditable(true);
        stage.press(QKeySequence::Paste);
        stage.press(QKeySequence::SelectAll);
        stage.press(QKeySequence::Paste);
        stage.press(QKeySequence::Paste);
        QCOMPARE(reports.count(), editing - 1);
        stage.click(stage.pointBeside());
        QCOMPARE(reports.count(), editing);
    }
}

void TitleItemClipboardTest::displayModePastesNothing()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    copy(QStringLiteral("new"), QString());
    stage.click(stage.pointAt(1));
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("one"));
}

QTEST_MAIN(TitleItemClipboardTest)
#include "tst_titleitem_clipboard.moc"
