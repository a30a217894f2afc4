// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextStage.h"
#include "WarningFreeTest.h"

#include <QSignalSpy>

class TitleItemTypingTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void typesScripts_data();
    void typesScripts();
    void composesScripts_data();
    void composesScripts();
    void composedTextIsKept_data();
    void composedTextIsKept();
    void deletesAndTypesAnew();
    void selectsWithTheMouse();
    void undoAndRedo();
};

void TitleItemTypingTest::typesScripts_data()
{
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromUtf8(text);
    };
    row("Latin", "The quick brown fox, 1 + 2 = 3!");
    row("Latin with accents", "Zażółć gęślą jaźń");
    row("combining accents", "e\u0301a\u0308o\u0302");
    row("Greek", "Καλημέρα");
    row("Cyrillic", "Съешь ещё этих булок");
    row("Hebrew", "שלום עולם");
    row("Arabic", "مرحبا بالعالم");
    row("Devanagari", "नमस्ते");
    row("Thai", "สวัสดี");
    row("Hangul", "안녕하세요");
    row("Chinese", "天地玄黄，你好世界");
    row("Japanese", "漢字とかな");
    row("emoji", "😀🎬👍🏽");
}

void TitleItemTypingTest::typesScripts()
{
    QFETCH(const QString, text);

    TextStage stage;
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.item->setEditable(true);
    stage.type(text);
    QCOMPARE(stage.text(), text);
    QCOMPARE(stage.position(), text.length());

    stage.press(Qt::Key_Home);
    stage.type(text);
    QCOMPARE(stage.text(), text + text);
    QCOMPARE(stage.position(), text.length());
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 1);
}

void TitleItemTypingTest::composesScripts_data()
{
    QTest::addColumn<QStringList>("preedits");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const QStringList &preedits, const char *text) {
        QTest::newRow(name) << preedits << QString::fromUtf8(text);
    };
    const auto texts = [](std::initializer_list<const char *> list) {
        QStringList result;
        for (const char *text : list)
            result.append(QString::fromUtf8(text));
        return result;
    };
    row("Chinese", texts({"n", "ni", "ni h", "ni hao"}), "你好");
    row("Japanese", texts({"k", "か", "かn", "かんj", "かんじ", "漢字"}), "漢字");
    row("Korean", texts({"ㅎ", "하", "한"}), "한");
    row("emoji", texts({":smile"}), "😀👨‍👩‍👧");
    row("without a preedit", QStringList(), "直接");
    row("longer than what was shown", texts({"a"}), "a whole sentence");
}

void TitleItemTypingTest::composesScripts()
{
    QFETCH(const QStringList, preedits);
    QFETCH(const QString, text);

    TextStage stage(QStringLiteral("<b>ab</b>cd"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.item->setEditable(true, stage.pointAt(2));
    for (int round = 0; round < 2; ++round) {
        for (const QString &preedit : preedits) {
            stage.compose(preedit);
            QCOMPARE(stage.text().length(), 4 + round * text.length());
            QCOMPARE(stage.item->textCursor().block().layout()->preeditAreaText(), preedit);
        }
        stage.commit(text);
    }
    QCOMPARE(stage.text(), QStringLiteral("ab%1%1cd").arg(text));
    QCOMPARE(stage.position(), 2 + 2 * text.length());
    QCOMPARE(stage.formatAt(2).fontWeight(), int(QFont::Bold));
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 1);
}

void TitleItemTypingTest::composedTextIsKept_data()
{
    addEndings();
}

void TitleItemTypingTest::composedTextIsKept()
{
    QFETCH(const Action, end);

    TextStage stage(QStringLiteral("ab"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.item->setEditable(true, stage.pointAt(1));
    stage.compose(QString::fromUtf8("かんじ"));
    QCOMPARE(stage.text(), QStringLiteral("ab"));
    end(stage);
    QCOMPARE(stage.text(), QString::fromUtf8("aかんじb"));
    QCOMPARE(stage.document.firstBlock().layout()->preeditAreaText(), QString());
    QCOMPARE(reports.count(), 1);
}

void TitleItemTypingTest::deletesAndTypesAnew()
{
    TextStage stage(manyFonts());
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.item->setEditable(true);
    stage.press(QKeySequence::SelectAll);
    stage.press(Qt::Key_Delete);
    QCOMPARE(stage.text(), QString());
    stage.type(QStringLiteral("123"));
    QCOMPARE(stage.text(), QStringLiteral("123"));
    for (int i = 0; i < 5; ++i)
        stage.press(Qt::Key_Backspace);
    QCOMPARE(stage.text(), QString());
    stage.type(QStringLiteral("end"));
    QCOMPARE(stage.text(), QStringLiteral("end"));
    stage.click(stage.pointBeside());
    QCOMPARE(reports.count(), 1);
}

void TitleItemTypingTest::selectsWithTheMouse()
{
    TextStage stage(QStringLiteral("one <b>two</b> three"));
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.click(stage.pointAt(1));
    stage.click(stage.pointAt(6), Qt::ShiftModifier);
    QCOMPARE(stage.selection(), QStringLiteral("ne tw"));
    stage.type(QStringLiteral("-"));
    QCOMPARE(stage.text(), QStringLiteral("o-o three"));
}

void TitleItemTypingTest::undoAndRedo()
{
    TextStage stage(QStringLiteral("one"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.item->setEditable(true);
    stage.press(Qt::Key_End);
    stage.type(QStringLiteral(" two"));
    stage.press(Qt::Key_Return);
    stage.type(QStringLiteral("three"));
    stage.press(QKeySequence::SelectAll);
    stage.press(QKeySequence::Cut);
    QCOMPARE(stage.text(), QString());
    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.text(), QStringLiteral("one two\nthree"));
    for (int i = 0; i < 10; ++i)
        stage.press(QKeySequence::Undo);
    QCOMPARE(stage.text(), QStringLiteral("one"));
    for (int i = 0; i < 10; ++i)
        stage.press(QKeySequence::Redo);
    QCOMPARE(stage.text(), QString());
    stage.press(QKeySequence::Undo);
    stage.click(stage.pointBeside());
    QCOMPARE(stage.text(), QStringLiteral("one two\nthree"));
    QCOMPARE(reports.count(), 1);
}

QTEST_MAIN(TitleItemTypingTest)
#include "tst_titleitem_typing.moc"
