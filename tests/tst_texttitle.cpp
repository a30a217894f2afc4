// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/TitleItem.h>

#include <TextTitleWindow.h>

#include <QAction>
#include <QApplication>
#include <QColorDialog>
#include <QFontComboBox>
#include <QGraphicsView>
#include <QStatusBar>
#include <QTextCursor>
#include <QTimer>

#include <memory>

// The example of text titles, used as a user would: keys and mouse into its window, and what it
// shows.

class TextTitleTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void showsTwoTitles();
    void doubleClickEdits();
    void escapeEnds();
    void clickBesideEnds();
    void tellsWhatWasEdited();
    void toolBarFollowsTheCursor();
    void boldAndItalicOfTheSelection();
    void familyOfTheSelection();
    void sizeOfTheSelection();
    void colorOfTheSelection();
    void formatOfWhatIsTypedNext();
    void toolBarWithoutATitle();

private:
    QGraphicsView &view() const { return *m_window->findChild<QGraphicsView *>(); }
    QFontComboBox &families() const { return *m_window->findChild<QFontComboBox *>(); }
    QComboBox &sizes() const;
    QAction *action(const QString &text) const;
    QPoint inWindow(const QPointF &scenePoint) const;
    QImage picture(const QRectF &sceneRect) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &text);
    void editHeadline();

    std::unique_ptr<TextTitleWindow> m_window;
    TitleItem *m_headline = nullptr;
    TitleItem *m_line = nullptr;
};

void TextTitleTest::init()
{
    m_window = std::make_unique<TextTitleWindow>();
    m_window->resize(1000, 660);
    {
        const ExpectedWarning ofTheOffscreenPlatform(QStringLiteral("propagateSizeHints"));
        m_window->show();
    }
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QList<QGraphicsItem *> items = view().scene()->items(Qt::AscendingOrder);
    QCOMPARE(items.size(), 2);
    m_headline = qobject_cast<TitleItem *>(items.first()->toGraphicsObject());
    m_line = qobject_cast<TitleItem *>(items.last()->toGraphicsObject());
    QVERIFY(m_headline && m_line);
}

void TextTitleTest::cleanup()
{
    m_window.reset();
}

QComboBox &TextTitleTest::sizes() const
{
    const QList<QComboBox *> boxes = m_window->findChildren<QComboBox *>();
    return *(boxes.first() == &families() ? boxes.last() : boxes.first());
}

QAction *TextTitleTest::action(const QString &text) const
{
    const QList<QAction *> actions = m_window->findChildren<QAction *>();
    for (QAction *candidate : actions) {
        if (candidate->text().remove(QLatin1Char('&')).startsWith(text))
            return candidate;
    }
    return nullptr;
}

QPoint TextTitleTest::inWindow(const QPointF &scenePoint) const
{
    return view().viewport()->mapTo(m_window.get(), view().mapFromScene(scenePoint));
}

/// What the window shows of a part of the scene.
QImage TextTitleTest::picture(const QRectF &sceneRect) const
{
    const QRect rect(inWindow(sceneRect.topLeft()), inWindow(sceneRect.bottomRight()));
    return m_window->grab().toImage().copy(rect);
}

void TextTitleTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_window->windowHandle(), key, modifiers);
}

void TextTitleTest::type(const QString &text)
{
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, m_window->windowHandle(), Qt::Key_unknown, character,
                            Qt::NoModifier);
}

/// Everything in it is selected then.
void TextTitleTest::editHeadline()
{
    QTest::mouseDClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       inWindow(m_headline->mapToScene(60, 40)));
    press(Qt::Key_A, Qt::ControlModifier);
}

void TextTitleTest::showsTwoTitles()
{
    QCOMPARE(m_headline->toPlainText(), QStringLiteral("A Walk by the Sea"));
    QCOMPARE(m_line->toPlainText(), QStringLiteral("Double-click a text to edit it"));
    for (const TitleItem *title : {m_headline, m_line}) {
        QVERIFY(!title->isEditable());
        const QImage shown = picture(title->sceneBoundingRect());
        QVERIFY(!isBlank(shown));
        QCOMPARE(shown.pixelColor(1, 1), view().scene()->backgroundBrush().color());
    }
    QVERIFY(isBlank(picture(QRectF(80, 400, 300, 60))));
}

void TextTitleTest::doubleClickEdits()
{
    const QImage before = picture(m_headline->sceneBoundingRect());
    editHeadline();
    QVERIFY(m_headline->isEditable());
    QCOMPARE(m_headline->textCursor().selectedText(), QStringLiteral("A Walk by the Sea"));
    QVERIFY(picture(m_headline->sceneBoundingRect()) != before);
    type(QStringLiteral("Night"));
    QCOMPARE(m_headline->toPlainText(), QStringLiteral("Night"));
    QCOMPARE(m_headline->currentCharFormat().font().pointSize(), 48);
}

void TextTitleTest::escapeEnds()
{
    editHeadline();
    press(Qt::Key_Escape);
    QVERIFY(!m_headline->isEditable());
    type(QStringLiteral("no"));
    QCOMPARE(m_headline->toPlainText(), QStringLiteral("A Walk by the Sea"));
}

void TextTitleTest::clickBesideEnds()
{
    editHeadline();
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      inWindow(QPointF(900, 500)));
    QVERIFY(!m_headline->isEditable());
}

void TextTitleTest::tellsWhatWasEdited()
{
    const QString hint = m_window->statusBar()->currentMessage();
    editHeadline();
    press(Qt::Key_Escape);
    QCOMPARE(m_window->statusBar()->currentMessage(), hint);
    editHeadline();
    type(QStringLiteral("Night"));
    press(Qt::Key_Escape);
    QCOMPARE(m_window->statusBar()->currentMessage(), QStringLiteral("The text is now: Night"));
}

void TextTitleTest::toolBarFollowsTheCursor()
{
    editHeadline();
    QCOMPARE(sizes().currentText(), QStringLiteral("48"));
    QVERIFY(action(QStringLiteral("Bold"))->isChecked());
    QTest::mouseDClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       inWindow(m_line->mapToScene(30, 20)));
    QVERIFY(m_line->isEditable());
    QCOMPARE(sizes().currentText(), QStringLiteral("24"));
    QVERIFY(!action(QStringLiteral("Bold"))->isChecked());
}

void TextTitleTest::boldAndItalicOfTheSelection()
{
    editHeadline();
    press(Qt::Key_Home);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_B, Qt::ControlModifier);
    press(Qt::Key_I, Qt::ControlModifier);
    QCOMPARE(m_headline->textCursor().selectedText(), QStringLiteral("A"));
    QVERIFY(!m_headline->currentCharFormat().font().bold());
    QVERIFY(m_headline->currentCharFormat().font().italic());
    press(Qt::Key_End);
    QVERIFY(m_headline->currentCharFormat().font().bold());
    QVERIFY(action(QStringLiteral("Bold"))->isChecked());
    QVERIFY(!action(QStringLiteral("Italic"))->isChecked());
}

void TextTitleTest::familyOfTheSelection()
{
    editHeadline();
    const int other = families().currentIndex() == 0 ? 1 : 0;
    families().setFocus();
    QVERIFY(!m_headline->isEditable());
    QTest::keyClick(&families(), other == 0 ? Qt::Key_Home : Qt::Key_Down);
    QVERIFY(m_headline->isEditable());
    QVERIFY(m_headline->hasFocus());
    QCOMPARE(m_headline->currentCharFormat().font().family(), families().itemText(other));
    QCOMPARE(m_headline->textCursor().selectedText(), QStringLiteral("A Walk by the Sea"));
}

void TextTitleTest::sizeOfTheSelection()
{
    const qreal before = m_headline->boundingRect().height();
    editHeadline();
    sizes().setFocus();
    QTest::keyClick(&sizes(), Qt::Key_End);
    QVERIFY(m_headline->isEditable());
    QCOMPARE(m_headline->currentCharFormat().font().pointSize(), 96);
    QVERIFY(m_headline->boundingRect().height() > 1.5 * before);
    type(QStringLiteral("x"));
    QCOMPARE(m_headline->toPlainText(), QStringLiteral("x"));
    press(Qt::Key_Escape);
    QCOMPARE(m_window->statusBar()->currentMessage(), QStringLiteral("The text is now: x"));
}

void TextTitleTest::colorOfTheSelection()
{
    editHeadline();
    QTimer::singleShot(0, this, [] {
        auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        QCOMPARE(dialog->currentColor(), QColor(Qt::white));
        dialog->setCurrentColor(Qt::red);
        dialog->accept();
    });
    {
        const ExpectedWarning ofTheOffscreenPlatform(QStringLiteral("propagateSizeHints"));
        action(QStringLiteral("Colour"))->trigger();
    }
    QCOMPARE(m_headline->currentCharFormat().foreground().color(), QColor(Qt::red));
    press(Qt::Key_End);
    press(Qt::Key_Escape);
    const QImage shown = picture(m_headline->sceneBoundingRect());
    int redPixels = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x)
            redPixels += shown.pixelColor(x, y) == QColor(Qt::red);
    }
    QVERIFY(redPixels > 500);
}

void TextTitleTest::formatOfWhatIsTypedNext()
{
    editHeadline();
    press(Qt::Key_End);
    press(Qt::Key_B, Qt::ControlModifier);
    type(QStringLiteral("!"));
    QCOMPARE(m_headline->toPlainText(), QStringLiteral("A Walk by the Sea!"));
    QVERIFY(!m_headline->currentCharFormat().font().bold());
    press(Qt::Key_Left);
    QVERIFY(m_headline->currentCharFormat().font().bold());
}

void TextTitleTest::toolBarWithoutATitle()
{
    const QImage before = picture(view().sceneRect());
    press(Qt::Key_Escape);
    press(Qt::Key_B, Qt::ControlModifier);
    action(QStringLiteral("Colour"))->trigger();
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    COMPARE_PICTURES(picture(view().sceneRect()), before, 0);
}

QTEST_MAIN(TextTitleTest)
#include "tst_texttitle.moc"
