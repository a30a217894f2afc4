// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneTest.h"

#include <Scene/Decorator/RotateDecorator.h>
#include <Scene/TitleItem.h>

#include <QAbstractTextDocumentLayout>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <functional>

// A text title in frames, edited with the mouse.

namespace {

using Framing = std::function<AbstractDecorator *(TitleItem *)>;

AbstractDecorator *inResizeFrame(TitleItem *title)
{
    return new ResizeDecorator(title);
}

/// A framed title of two paragraphs, "one two three" and "four", in a view that is active.
struct FramedText
{
    explicit FramedText(const Framing &framing = inResizeFrame)
    {
        title->document()->setPlainText(QStringLiteral("one two three\nfour"));
        frame = framing(title);
        stage.scene.addItem(frame);
        QApplication::setActiveWindow(&stage.view);
    }

    /// The middle of the caret before a character.
    QPointF pointAt(int position) const
    {
        const QTextBlock block = title->document()->findBlock(position);
        const int inBlock = position - block.position();
        const QTextLine line = block.layout()->lineForTextPosition(inBlock);
        const QPointF origin =
                title->document()->documentLayout()->blockBoundingRect(block).topLeft();
        return title->mapToScene(origin
                                 + QPointF(line.cursorToX(inBlock), line.y() + line.height() / 2));
    }

    QString selection() const { return title->textCursor().selectedText(); }

    SceneOnView stage;
    QPointer<TitleItem> title = new TitleItem(QSizeF(200.0, 100.0), nullptr);
    QPointer<AbstractDecorator> frame;
    ViewMouse mouse{stage.view};
};

} // namespace

Q_DECLARE_METATYPE(Framing)

class FramedTextTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void doubleClickSelectsTheWord_data();
    void doubleClickSelectsTheWord();
    void thirdClickSelectsTheParagraph();
    void nextDoubleClickSelectsAnotherWord();
    void codeSelectsNothing();
    void textBesideTheFrameIsLeftAlone();
    void listenersMayDelete_data();
    void listenersMayDelete();
    void handlesChangeTheWidthOnly_data();
    void handlesChangeTheWidthOnly();
};

void FramedTextTest::doubleClickSelectsTheWord_data()
{
    QTest::addColumn<Framing>("framing");

    QTest::newRow("resize frame") << Framing(inResizeFrame);
    QTest::newRow("rotate frame") << Framing(
            [](TitleItem *title) { return new RotateDecorator(title); });
    QTest::newRow("resize frame in a rotate frame") << Framing(
            [](TitleItem *title) { return new RotateDecorator(new ResizeDecorator(title)); });
    QTest::newRow("turned and scaled") << Framing([](TitleItem *title) {
        auto *frame = new ResizeDecorator(title);
        frame->setTransform(QTransform().rotate(30.0).scale(1.5, 2.0));
        return frame;
    });
}

void FramedTextTest::doubleClickSelectsTheWord()
{
    QFETCH(const Framing, framing);

    FramedText text(framing);
    text.mouse.doubleClick(text.pointAt(5));
    QVERIFY(text.title->isEditable());
    QCOMPARE(text.selection(), QStringLiteral("two"));
    QVERIFY(text.frame->isSelected());

    QTest::keyClick(text.stage.view.viewport(), Qt::Key_2);
    QCOMPARE(text.title->toPlainText(), QStringLiteral("one 2 three\nfour"));
}

void FramedTextTest::thirdClickSelectsTheParagraph()
{
    FramedText text;
    text.mouse.doubleClick(text.pointAt(5));
    text.mouse.press(text.pointAt(5));
    text.mouse.release();
    QCOMPARE(text.selection(), QStringLiteral("one two three\u2029"));
}

void FramedTextTest::nextDoubleClickSelectsAnotherWord()
{
    FramedText text;
    text.mouse.doubleClick(text.pointAt(5));
    text.mouse.doubleClick(text.pointAt(15));
    QCOMPARE(text.selection(), QStringLiteral("four"));
}

void FramedTextTest::codeSelectsNothing()
{
    FramedText text;
    text.frame->setEditable(true, text.frame->mapFromScene(text.pointAt(5)));
    QVERIFY(text.title->isEditable());
    QCOMPARE(text.title->textCursor().position(), 5);
    QCOMPARE(text.selection(), QString());
}

/// Also when it is edited while something else in a frame is double-clicked.
void FramedTextTest::textBesideTheFrameIsLeftAlone()
{
    FramedText text;
    auto *child = new RecordingChild;
    auto *other = new ResizeDecorator(child);
    other->setPos(0.0, 150.0);
    text.stage.scene.addItem(other);
    text.title->setEditable(true, text.title->mapFromScene(text.pointAt(9)));
    other->setFlag(QGraphicsItem::ItemIsFocusable, false);
    child->setFlag(QGraphicsItem::ItemStopsFocusHandling);
    text.mouse.doubleClick(centreOnScene(*child));
    QVERIFY(child->editable);
    QVERIFY(text.title->isEditable());
    QCOMPARE(text.title->textCursor().position(), 9);
    QCOMPARE(text.selection(), QString());
}

void FramedTextTest::listenersMayDelete_data()
{
    QTest::addColumn<bool>("isFrame");

    QTest::newRow("the text") << false;
    QTest::newRow("the frame") << true;
}

void FramedTextTest::listenersMayDelete()
{
    QFETCH(const bool, isFrame);

    FramedText text;
    connect(text.title, &TitleItem::currentCharFormatChanged, this, [&] {
        if (isFrame)
            delete text.frame;
        else
            delete text.title;
    });
    QTextCursor bold(text.title->document());
    bold.setPosition(4);
    bold.setPosition(7, QTextCursor::KeepAnchor);
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    bold.mergeCharFormat(format);
    text.mouse.doubleClick(text.pointAt(5));
    QVERIFY(!text.title);
    QCOMPARE(text.frame.isNull(), isFrame);
}

void FramedTextTest::handlesChangeTheWidthOnly_data()
{
    QTest::addColumn<Qt::WindowFrameSection>("section");
    QTest::addColumn<QPointF>("move");
    QTest::addColumn<qreal>("growth");

    const auto row = [](const char *name, Qt::WindowFrameSection section, const QPointF &move,
                        qreal growth) { QTest::newRow(name) << section << move << growth; };
    row("left", Qt::LeftSection, QPointF(10, 0), -10);
    row("right", Qt::RightSection, QPointF(0, 0), 10);
    row("bottom right", Qt::BottomRightSection, QPointF(0, 0), 10);
    row("bottom", Qt::BottomSection, QPointF(0, 0), 0);
    row("top", Qt::TopSection, QPointF(0, 5), 0);
    row("top right", Qt::TopRightSection, QPointF(0, 5), 10);
}

void FramedTextTest::handlesChangeTheWidthOnly()
{
    QFETCH(const Qt::WindowFrameSection, section);
    QFETCH(const QPointF, move);
    QFETCH(const qreal, growth);

    FramedText text;
    text.frame->setSize(QSizeF(150.0, 100.0));
    auto *frame = qobject_cast<ResizeDecorator *>(text.frame);
    const QRectF before = text.title->boundingRect();
    text.mouse.drag(centreOnScene(*handlesOf(*frame).at(section)), QPoint(10, 5));
    COMPARE_CLOSE(text.title->boundingRect().width(), before.width() + growth);
    QCOMPARE(text.title->boundingRect().height(), before.height());
    COMPARE_POINTS(text.frame->pos(), move);
}

QTEST_MAIN(FramedTextTest)
#include "tst_framedtext.moc"
