// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleItem.h>

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QInputMethodEvent>
#include <QPointer>
#include <QTextBlock>
#include <QTextBoundaryFinder>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <QWindow>
#include <QtTest>

#include <functional>

Q_DECLARE_METATYPE(QTextCharFormat)

/*!
 * A text title on a scene in a window of its own, with a hand for the mouse and the keyboard. What
 * they do goes to the window, as the window system would send it.
 *
 *     TextStage stage(QStringLiteral("regular <b>bold</b>"));
 *     QVERIFY(stage.show());
 *     stage.doubleClick(stage.pointAt(3));
 *     stage.type(QStringLiteral("abc"));
 */
class TextStage
{
public:
    explicit TextStage(const QString &html = QString())
    {
        document.setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 12));
        if (!html.isEmpty())
            document.setHtml(html);
        item = new TitleItem(QSizeF(400, 300), &document);
        scene.setSceneRect(0, 0, 500, 400);
        scene.addItem(item);
        view.setScene(&scene);
        view.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        view.resize(520, 420);
    }

    //! False when the window did not become the active one.
    bool show()
    {
        view.show();
        return QTest::qWaitForWindowActive(&view);
    }

    //! The middle of the caret before the character at a position of the document, item
    //! coordinates.
    QPointF pointAt(int position) const
    {
        const QTextBlock block = document.findBlock(position);
        const int inBlock = position - block.position();
        const QTextLine line = block.layout()->lineForTextPosition(inBlock);
        const QPointF origin = document.documentLayout()->blockBoundingRect(block).topLeft();
        return origin + QPointF(line.cursorToX(inBlock), line.y() + line.height() / 2);
    }

    //! A point in item coordinates that no item covers.
    QPointF pointBeside() const { return item->mapFromScene(QPointF(490, 390)); }

    void click(const QPointF &itemPoint, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(window(), Qt::LeftButton, modifiers, windowPoint(itemPoint));
    }

    void rightClick(const QPointF &itemPoint)
    {
        QTest::mouseClick(window(), Qt::RightButton, Qt::NoModifier, windowPoint(itemPoint));
    }

    void doubleClick(const QPointF &itemPoint)
    {
        QTest::mouseDClick(window(), Qt::LeftButton, Qt::NoModifier, windowPoint(itemPoint));
    }

    void moveMouse(const QPointF &itemPoint) { QTest::mouseMove(window(), windowPoint(itemPoint)); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window(), key, modifiers);
    }

    void press(QKeySequence::StandardKey standardKey)
    {
        const int keys = QKeySequence::keyBindings(standardKey).first()[0];
        const auto modifiers = Qt::KeyboardModifiers(keys & int(Qt::KeyboardModifierMask));
        press(Qt::Key(keys & ~int(Qt::KeyboardModifierMask)), modifiers);
    }

    //! One key stroke for each character that the reader sees.
    void type(const QString &text)
    {
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
        for (int from = 0, to = finder.toNextBoundary(); to != -1;
             from = to, to = finder.toNextBoundary())
            QTest::sendKeyEvent(QTest::Click, window(), Qt::Key_unknown, text.mid(from, to - from),
                                Qt::NoModifier);
    }

    //! What an input method shows while it composes.
    void compose(const QString &preedit) { sendInputMethodEvent(preedit, QString()); }

    //! What it puts into the text.
    void commit(const QString &text) { sendInputMethodEvent(QString(), text); }

    QString text() const { return document.toPlainText(); }
    int position() const { return item->textCursor().position(); }
    QString selection() const { return item->textCursor().selectedText(); }

    //! The format of the character after a position.
    QTextCharFormat formatAt(int position) const
    {
        QTextCursor cursor(item->document());
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }

    //! The title itself, one pixel for each unit.
    QImage picture() const
    {
        QImage image(500, 400, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        document.documentLayout()->draw(&painter, QAbstractTextDocumentLayout::PaintContext());
        return image;
    }

    QWindow *window() const { return view.windowHandle(); }

    // The document outlives its item, and the item belongs to the scene.
    QTextDocument document;
    QGraphicsScene scene;
    QGraphicsView view;
    QPointer<TitleItem> item;

private:
    QPoint windowPoint(const QPointF &itemPoint) const
    {
        const QPoint inViewport = view.mapFromScene(item->mapToScene(itemPoint));
        return view.viewport()->mapTo(&view, inViewport);
    }

    void sendInputMethodEvent(const QString &preedit, const QString &commitText)
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commitText);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
    }
};

//! Text in eleven formats, some of which leave a part of the font to the document.
inline QString manyFonts()
{
    return QStringLiteral("<p>plain <b>bold</b> <i>italic</i> <u>underlined</u> <s>struck</s> "
                          "<span style='font-size:30pt'>large</span> "
                          "<span style='font-size:9px'>pixels</span> "
                          "<span style='font-family:DejaVu Serif'>serif</span> "
                          "<span style='font-variant:small-caps'>caps</span></p>"
                          "<p></p><h1>heading</h1>"
                          "<ul><li>one</li><li><b>two</b></li></ul>");
}

//! What somebody does with the stage, as a column of test data.
using Action = std::function<void(TextStage &)>;
Q_DECLARE_METATYPE(Action)

//! The ways out of the edit mode, as the column "end".
inline void addEndings()
{
    QTest::addColumn<Action>("end");

    QTest::newRow("click beside") << Action(
            [](TextStage &stage) { stage.click(stage.pointBeside()); });
    QTest::newRow("click on another title") << Action([](TextStage &stage) {
        auto *other = new TitleItem(QSizeF(100, 50), nullptr);
        other->setPlainText(QStringLiteral("other"));
        other->setPos(300, 300);
        stage.scene.addItem(other);
        stage.click(stage.item->mapFromItem(other, other->boundingRect().center()));
    });
    QTest::newRow("another title is edited") << Action([](TextStage &stage) {
        auto *other = new TitleItem(QSizeF(100, 50), nullptr);
        stage.scene.addItem(other);
        other->setEditable(true);
    });
    QTest::newRow("another window becomes active") << Action([](TextStage &stage) {
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QTRY_VERIFY(!stage.item->isEditable());
    });
    QTest::newRow("the window is closed") << Action([](TextStage &stage) {
        stage.view.close();
        QTRY_VERIFY(!stage.item->isEditable());
    });
    QTest::newRow("Escape") << Action([](TextStage &stage) { stage.press(Qt::Key_Escape); });
    QTest::newRow("setEditable(false)")
            << Action([](TextStage &stage) { stage.item->setEditable(false); });
    QTest::newRow("setEditable(false, point)")
            << Action([](TextStage &stage) { stage.item->setEditable(false, QPointF(20, 10)); });
    QTest::newRow("clearFocus()") << Action([](TextStage &stage) { stage.item->clearFocus(); });
    QTest::newRow("the scene's focus is cleared")
            << Action([](TextStage &stage) { stage.scene.clearFocus(); });
    QTest::newRow("the title is hidden") << Action([](TextStage &stage) { stage.item->hide(); });
    QTest::newRow("the title is disabled")
            << Action([](TextStage &stage) { stage.item->setEnabled(false); });
    QTest::newRow("the title leaves the scene") << Action([](TextStage &stage) {
        stage.scene.removeItem(stage.item);
        stage.scene.addItem(stage.item);
    });
}
