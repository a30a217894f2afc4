// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextStage.h"
#include "TextTwins.h"
#include "WarningFreeTest.h"

#include <QClipboard>
#include <QMimeData>
#include <QRandomGenerator>

namespace {

/// Steps that are the same for a seed.
class RandomSteps
{
public:
    RandomSteps(TextTwins &twins, quint32 seed) : m_twins(twins), m_random(seed) {}

    /// Does one more step, and says which.
    QString next()
    {
        if (!m_twins.titleItem->isEditable())
            return enter();
        switch (below(20)) {
        case 0:
        case 1:
        case 2:
        case 3:
            return type();
        case 4:
        case 5:
        case 6:
            return format();
        case 7:
            return formatToCome();
        case 8:
            return replaceFormat();
        case 9:
        case 10:
            return paste();
        case 11:
            return press(chosen({Qt::Key_Backspace, Qt::Key_Delete}));
        case 12:
            return press(Qt::Key_Return, chosen({Qt::NoModifier, Qt::ShiftModifier}));
        case 13:
        case 14:
            return move();
        case 15:
            return select();
        case 16:
            return click();
        case 17:
            return undoOrRedo(QKeySequence::Redo);
        case 18:
            return undoOrRedo(QKeySequence::Undo);
        default:
            return leave();
        }
    }

private:
    int below(int count) { return int(m_random.bounded(quint32(count))); }

    template <typename T>
    T chosen(std::initializer_list<T> values)
    {
        return *(values.begin() + below(int(values.size())));
    }

    int position() { return below(m_twins.title.document.characterCount()); }

    QString enter()
    {
        const int at = position();
        m_twins.edit(true, m_twins.pointAt(at));
        return QStringLiteral("edit at %1").arg(at);
    }

    QString leave()
    {
        m_twins.edit(false);
        return QStringLiteral("leave");
    }

    QString type()
    {
        const QString text = chosen({QStringLiteral("a"), QStringLiteral("bc"),
                                     QStringLiteral("d e"), QString::fromUtf8("ж")});
        m_twins.type(text);
        return QStringLiteral("type ") + text;
    }

    QString press(Qt::Key key, Qt::KeyboardModifier modifier = Qt::NoModifier)
    {
        m_twins.press(key, modifier);
        return QStringLiteral("press %1 %2").arg(int(key), 0, 16).arg(int(modifier), 0, 16);
    }

    QString move()
    {
        return press(chosen({Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home,
                             Qt::Key_End}),
                     chosen({Qt::NoModifier, Qt::ShiftModifier}));
    }

    /// Everything, a word or a part.
    QString select()
    {
        if (below(2) == 0) {
            m_twins.press(QKeySequence::SelectAll);
            return QStringLiteral("select all");
        }
        const int from = position();
        const int to = below(2) == 0 ? from : position();
        m_twins.use([=](QTextCursor &cursor) {
            cursor.setPosition(from);
            if (from == to)
                cursor.select(QTextCursor::WordUnderCursor);
            else
                cursor.setPosition(to, QTextCursor::KeepAnchor);
        });
        return QStringLiteral("select %1 to %2").arg(from).arg(to);
    }

    QString click()
    {
        if (m_twins.title.document.isEmpty())
            return QStringLiteral("nothing to click at");
        const int at = position();
        m_twins.click(at);
        return QStringLiteral("click at %1").arg(at);
    }

    QString undoOrRedo(QKeySequence::StandardKey key)
    {
        const int count = 1 + below(4);
        for (int i = 0; i < count; ++i)
            m_twins.press(key);
        return QStringLiteral("%1 times %2")
                .arg(count)
                .arg(key == QKeySequence::Undo ? QStringLiteral("undo") : QStringLiteral("redo"));
    }

    /// One or two properties.
    QTextCharFormat someFormat()
    {
        QTextCharFormat format;
        for (int i = 0; i <= below(2); ++i) {
            switch (below(6)) {
            case 0:
                format.setFontWeight(chosen({QFont::Bold, QFont::Normal}));
                break;
            case 1:
                format.setFontPointSize(chosen({8, 12, 30}));
                break;
            case 2:
                format.setForeground(QColor(chosen({Qt::red, Qt::blue, Qt::black})));
                break;
            case 3:
                format.setFontItalic(below(2) == 0);
                break;
            case 4:
                format.setFontUnderline(below(2) == 0);
                break;
            default:
                format.setFontFamily(chosen(
                        {QStringLiteral("DejaVu Serif"), QStringLiteral("DejaVu Sans Mono")}));
            }
        }
        return format;
    }

    static QString nameOf(const QTextCharFormat &format)
    {
        QString name;
        const QMap<int, QVariant> properties = format.properties();
        for (auto it = properties.begin(); it != properties.end(); ++it)
            name += QStringLiteral(" %1=%2").arg(it.key(), 0, 16).arg(it.value().toString());
        return name;
    }

    /// As an application's buttons do, with a key that asks for the format after most of them.
    QString format()
    {
        const QTextCharFormat format = someFormat();
        m_twins.use([&format](QTextCursor &cursor) { cursor.mergeCharFormat(format); });
        return QStringLiteral("format") + nameOf(format) + lookedAt();
    }

    QString formatToCome()
    {
        const QTextCharFormat format = someFormat();
        m_twins.use([&format](QTextCursor &cursor) {
            cursor.clearSelection();
            cursor.mergeCharFormat(format);
        });
        return QStringLiteral("format to come") + nameOf(format) + lookedAt();
    }

    QString replaceFormat()
    {
        const QTextCharFormat format = below(3) == 0 ? QTextCharFormat() : someFormat();
        const bool isAll = below(2) == 0;
        m_twins.use([&](QTextCursor &cursor) {
            if (isAll)
                cursor.select(QTextCursor::Document);
            cursor.setCharFormat(format);
        });
        return QStringLiteral("replace format") + nameOf(format) + lookedAt();
    }

    QString lookedAt()
    {
        if (below(4) == 0)
            return QString();
        m_twins.press(Qt::Key_Shift);
        return QStringLiteral(", shift");
    }

    QString paste()
    {
        auto *data = new QMimeData;
        const QString html = chosen(
                {QString(), QStringLiteral("<b>bold</b>"),
                 QStringLiteral("<span style='font-size:20pt'>large</span> rest"),
                 QStringLiteral("<p>one</p><p><i>two</i></p>"),
                 QStringLiteral("<u style='color:#008000'>line</u>"),
                 QStringLiteral("<h2>head</h2>"), QStringLiteral("<big>big</big><sup>up</sup>"),
                 QStringLiteral("<ul><li>item</li></ul>"), QStringLiteral("<code>code</code> text"),
                 QStringLiteral("<span style='font-family:DejaVu Serif;font-size:9pt;"
                                "font-weight:700;font-style:italic'>own</span>")});
        data->setText(QStringLiteral("plain"));
        if (!html.isEmpty())
            data->setHtml(html);
        QApplication::clipboard()->setMimeData(data);
        m_twins.press(QKeySequence::Paste);
        return QStringLiteral("paste ") + html;
    }

    TextTwins &m_twins;
    QRandomGenerator m_random;
};

/// Typed, and formatted after that.
void typeLarge(TextStage &stage)
{
    stage.type(QStringLiteral("Hello"));
    stage.press(QKeySequence::SelectAll);
    QTextCharFormat large;
    large.setFontPointSize(30);
    stage.item->textCursor().mergeCharFormat(large);
    stage.press(Qt::Key_Shift);
}

QString initialText(quint32 seed)
{
    const QStringList texts{
            QString(), QStringLiteral("Hello"), QStringLiteral("one <b>two</b> three"),
            QStringLiteral("<p>small <span style='font-size:30pt'>large</span></p><p></p>"
                           "<p><i>last</i></p>"),
            QStringLiteral("<span style='font-family:DejaVu Serif'>serif <u>lines</u></span>"
                           "<ul><li>item</li><li><b>item</b></li></ul>")};
    return texts.at(int(seed % quint32(texts.size())));
}

} // namespace

class TitleItemUndoTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void besideAPlainItem_data();
    void besideAPlainItem();

    void bringsBackWhatWasShown_data();
    void bringsBackWhatWasShown();
    void formattingOneWordKeepsTheHistory();
    void pastingOverEverythingIsUndone();

    void defaultFontComesBack();
    void defaultFontStaysForTextThatReliesOnIt();
    void pastedTextTakesTheFontOfTheDocument();
    void fontOfTheApplicationCounts_data();
    void fontOfTheApplicationCounts();
    void sameFontIsOneStep();
    void formatToComeStays();
    void formatToComeIsThatOfTheNextCharacter();
    void undoneByCodeAfterTheTitle();
    void twoTitlesOfOneDocument();
};

void TitleItemUndoTest::besideAPlainItem_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");

    // More, for who changes what follows the formats: TITLESCENE_UNDO_SEQUENCES=50000.
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("TITLESCENE_UNDO_SEQUENCES", &isGiven);
    const int count = isGiven ? given : 2000;
    for (int first = 0; first < count; first += 100)
        QTest::addRow("seeds from %d", first) << first << qMin(first + 100, count) - 1;
}

/// Whatever is done, the title shows what a plain item shows, and can undo as much.
void TitleItemUndoTest::besideAPlainItem()
{
    QFETCH(const int, first);
    QFETCH(const int, last);

    for (int seed = first; seed <= last; ++seed) {
        TextTwins twins(initialText(quint32(seed)));
        RandomSteps steps(twins, quint32(seed));
        QStringList done{initialText(quint32(seed))};
        const auto agree = [&twins] {
            return twins.difference().isEmpty() && twins.differenceOfPictures().isEmpty();
        };
        for (int i = 0; i < 30 && twins.difference().isEmpty(); ++i)
            done.append(steps.next());
        bool isSame = agree();
        twins.edit(true);
        while (isSame && twins.title.document.isUndoAvailable()) {
            twins.press(QKeySequence::Undo);
            isSame = twins.difference().isEmpty();
        }
        isSame = isSame && agree();
        while (isSame && twins.title.document.isRedoAvailable()) {
            twins.press(QKeySequence::Redo);
            isSame = twins.difference().isEmpty();
        }
        if (!isSame || !agree()) {
            const QString failure = QStringLiteral("Seed %1: %2 %3 after:\n%4")
                                            .arg(seed)
                                            .arg(twins.difference(), twins.differenceOfPictures(),
                                                 done.join(QLatin1Char('\n')));
            QFAIL(qPrintable(failure));
        }
    }
}

void TitleItemUndoTest::bringsBackWhatWasShown_data()
{
    QTest::addColumn<QTextCharFormat>("format");
    QTest::addColumn<bool>("isTyped");

    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    QTextCharFormat large;
    large.setFontPointSize(30);
    QTextCharFormat serif;
    serif.setFontFamily(QStringLiteral("DejaVu Serif"));
    for (const bool isTyped : {false, true}) {
        const char *origin = isTyped ? "typed" : "given";
        QTest::addRow("bold, %s", origin) << bold << isTyped;
        QTest::addRow("large, %s", origin) << large << isTyped;
        QTest::addRow("serif, %s", origin) << serif << isTyped;
    }
}

void TitleItemUndoTest::bringsBackWhatWasShown()
{
    QFETCH(const QTextCharFormat, format);
    QFETCH(const bool, isTyped);

    const QString text = QStringLiteral("Hello");
    TextStage stage(isTyped ? QString() : text);
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    if (isTyped)
        stage.type(text);
    const QImage before = stage.picture();
    stage.press(QKeySequence::SelectAll);
    stage.item->textCursor().mergeCharFormat(format);
    stage.press(Qt::Key_Shift);
    const QImage after = stage.picture();
    QVERIFY(before != after);

    for (int round = 0; round < 3; ++round) {
        stage.press(QKeySequence::Undo);
        QCOMPARE(stage.text(), text);
        QCOMPARE(stage.picture(), before);
        stage.press(QKeySequence::Redo);
        QCOMPARE(stage.text(), text);
        QCOMPARE(stage.picture(), after);
    }
    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.document.isUndoAvailable(), isTyped);
}

void TitleItemUndoTest::formattingOneWordKeepsTheHistory()
{
    TextStage stage;
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.type(QStringLiteral("one two"));
    const QImage typed = stage.picture();
    stage.press(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(stage.selection(), QStringLiteral("two"));
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    stage.item->textCursor().mergeCharFormat(bold);
    stage.press(Qt::Key_End);
    const QImage formatted = stage.picture();
    QVERIFY(typed != formatted);

    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.picture(), typed);
    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.text(), QString());
    stage.press(QKeySequence::Redo);
    QCOMPARE(stage.picture(), typed);
    stage.press(QKeySequence::Redo);
    QCOMPARE(stage.picture(), formatted);
}

void TitleItemUndoTest::pastingOverEverythingIsUndone()
{
    TextStage stage;
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.type(QStringLiteral("hello"));
    const QImage typed = stage.picture();
    auto *data = new QMimeData;
    data->setHtml(QStringLiteral("<b>pasted</b>"));
    QApplication::clipboard()->setMimeData(data);
    stage.press(QKeySequence::SelectAll);
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.text(), QStringLiteral("pasted"));
    const QImage pasted = stage.picture();

    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.text(), QStringLiteral("hello"));
    QCOMPARE(stage.picture(), typed);
    stage.press(QKeySequence::Redo);
    QCOMPARE(stage.picture(), pasted);
}

// The default font

void TitleItemUndoTest::defaultFontComesBack()
{
    TextStage stage;
    const QFont own = stage.document.defaultFont();
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    typeLarge(stage);
    QCOMPARE(stage.document.defaultFont().pointSize(), 30);
    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.document.defaultFont(), own);
    stage.press(QKeySequence::Redo);
    QCOMPARE(stage.document.defaultFont().pointSize(), 30);
}

void TitleItemUndoTest::defaultFontStaysForTextThatReliesOnIt()
{
    TextStage stage(QStringLiteral("one <b>two</b>"));
    const QFont own = stage.document.defaultFont();
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.type(QStringLiteral("x"));
    const int steps = stage.document.availableUndoSteps();
    stage.press(Qt::Key_End);
    QVERIFY(stage.item->currentCharFormat().font().bold());
    QCOMPARE(stage.document.defaultFont(), own);
    QCOMPARE(stage.document.availableUndoSteps(), steps);

    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.text(), QStringLiteral("one two"));
    stage.press(Qt::Key_Home);
    stage.press(Qt::Key_End);
    QCOMPARE(stage.document.defaultFont(), own);
    QVERIFY(stage.document.isRedoAvailable());
}

void TitleItemUndoTest::pastedTextTakesTheFontOfTheDocument()
{
    TextStage stage(QStringLiteral("<span style='font-size:30pt'>large</span>"));
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.press(Qt::Key_End);
    QCOMPARE(stage.document.defaultFont().pointSize(), 30);
    auto *data = new QMimeData;
    data->setHtml(QStringLiteral("<b>bold</b>"));
    QApplication::clipboard()->setMimeData(data);
    stage.press(QKeySequence::Paste);
    QCOMPARE(stage.formatAt(4).font().pointSize(), 30);
    QCOMPARE(stage.formatAt(5).font().pointSize(), 12);
    QVERIFY(stage.formatAt(5).font().bold());
    QCOMPARE(stage.document.defaultFont().pointSize(), 12);
}

void TitleItemUndoTest::fontOfTheApplicationCounts_data()
{
    QTest::addColumn<QFont>("font");

    QTest::newRow("another one") << QFont(QStringLiteral("DejaVu Serif"), 20);
    QTest::newRow("like the one that follows") << QFont(QStringLiteral("DejaVu Sans"), 30);
}

/// A default font that the application sets while the other one follows is the document's own from
/// then on, as it is in a plain item.
void TitleItemUndoTest::fontOfTheApplicationCounts()
{
    QFETCH(const QFont, font);

    TextStage stage;
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    typeLarge(stage);
    stage.item->setFont(font);
    QCOMPARE(stage.formatAt(0).font().family(), font.family());
    QCOMPARE(stage.formatAt(0).font().pointSize(), 30);
    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.document.defaultFont(), font);
    QCOMPARE(stage.formatAt(0).font().pointSize(), font.pointSize());
    stage.press(QKeySequence::Redo);
    QCOMPARE(stage.formatAt(0).font().family(), font.family());
    QCOMPARE(stage.formatAt(0).font().pointSize(), 30);
}

/// In a plain item, the second character would have a format of its own.
void TitleItemUndoTest::sameFontIsOneStep()
{
    TextStage stage(QStringLiteral("one <b>two</b>"));
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    stage.press(Qt::Key_End);
    stage.press(Qt::Key_Home);
    stage.press(Qt::Key_Right);
    stage.type(QStringLiteral("a"));
    QTextCharFormat regular;
    regular.setFontWeight(QFont::Normal);
    QTextCursor cursor = stage.item->textCursor();
    cursor.mergeCharFormat(regular);
    stage.item->setTextCursor(cursor);
    stage.type(QStringLiteral("b"));
    QCOMPARE(stage.text(), QStringLiteral("oabne two"));
    stage.press(QKeySequence::Undo);
    QCOMPARE(stage.text(), QStringLiteral("one two"));
}

void TitleItemUndoTest::formatToComeStays()
{
    TextStage stage(QStringLiteral("one <b>two</b>"));
    QVERIFY(stage.show());
    stage.item->setEditable(true, stage.pointAt(7));
    QTextCursor cursor = stage.item->textCursor();
    QTextCharFormat italic;
    italic.setFontItalic(true);
    cursor.mergeCharFormat(italic);
    stage.item->setTextCursor(cursor);
    stage.press(Qt::Key_Shift);
    QVERIFY(stage.document.defaultFont().italic());
    stage.type(QStringLiteral("x"));
    QVERIFY(stage.formatAt(7).font().italic());
    QVERIFY(stage.formatAt(7).font().bold());
}

/// Not in the font of the text before, which is the default font by now.
void TitleItemUndoTest::formatToComeIsThatOfTheNextCharacter()
{
    TextStage stage;
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    typeLarge(stage);
    stage.press(Qt::Key_End);
    QCOMPARE(stage.document.defaultFont().pointSize(), 30);
    QTextCursor cursor = stage.item->textCursor();
    QTextCharFormat red;
    red.setForeground(Qt::red);
    cursor.setCharFormat(red);
    stage.item->setTextCursor(cursor);
    stage.press(Qt::Key_Shift);
    QCOMPARE(stage.item->currentCharFormat().font().pointSize(), 12);
    stage.type(QStringLiteral("x"));
    QCOMPARE(stage.formatAt(4).font().pointSize(), 30);
    QCOMPARE(stage.formatAt(5).font().pointSize(), 12);
}

void TitleItemUndoTest::undoneByCodeAfterTheTitle()
{
    TextStage stage;
    const QFont own = stage.document.defaultFont();
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    typeLarge(stage);
    delete stage.item;
    stage.document.undo();
    QCOMPARE(stage.document.defaultFont(), own);
    stage.document.redo();
    stage.document.undo();
    stage.document.undo();
    QCOMPARE(stage.document.toPlainText(), QString());
    QCOMPARE(stage.document.defaultFont(), own);
}

void TitleItemUndoTest::twoTitlesOfOneDocument()
{
    TextStage stage;
    const QFont own = stage.document.defaultFont();
    QVERIFY(stage.show());
    stage.item->setEditable(true);
    typeLarge(stage);
    TitleItem other(QSizeF(100, 50), &stage.document);
    QTextCursor cursor(&stage.document);
    cursor.select(QTextCursor::Document);
    QTextCharFormat italic;
    italic.setFontItalic(true);
    cursor.mergeCharFormat(italic);
    other.setTextCursor(cursor);
    other.checkFormatChanges(QEvent::KeyPress);
    QVERIFY(stage.document.defaultFont().italic());

    stage.document.undo();
    stage.document.undo();
    QCOMPARE(stage.document.defaultFont(), own);
}

QTEST_MAIN(TitleItemUndoTest)
#include "tst_titleitem_undo.moc"
