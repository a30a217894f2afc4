// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "EditorSession.h"

// Drags that end otherwise than with the button, which have to be undone as well.

namespace {

using FrameAction = std::function<void(AbstractDecorator &)>;

} // namespace

Q_DECLARE_METATYPE(FrameAction)

class EditorDragsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void lostMouse_data();
    void lostMouse();
    void lostMouseOfTwo();
};

void EditorDragsTest::lostMouse_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<FrameAction>("loss");

    const auto row = [](const char *name, const char *what, const FrameAction &loss) {
        QTest::addRow("%s, %s", what, name) << QString::fromLatin1(what) << loss;
    };
    for (const char *what : {"Move", "Resize", "Rotate"})
        row("let go", what, [](AbstractDecorator &frame) { frame.ungrabMouse(); });
    // These end the selection, too, and with it a frame that turns.
    for (const char *what : {"Move", "Resize"}) {
        row("disabled", what, [](AbstractDecorator &frame) {
            frame.setEnabled(false);
            frame.setEnabled(true);
        });
        row("hidden", what, [](AbstractDecorator &frame) {
            frame.hide();
            frame.show();
        });
    }
}

void EditorDragsTest::lostMouse()
{
    QFETCH(const QString, what);
    QFETCH(const FrameAction, loss);

    EditorSession session;
    session.addBar();
    const QPointF middle =
            session.canvas().frame(session.id(0))->child()->sceneBoundingRect().center();
    if (what == QLatin1String("Rotate"))
        session.click(middle);
    QCOMPARE(session.canvas().isTurning(session.id(0)), what == QLatin1String("Rotate"));
    const QByteArray before = session.json();
    const int commands = session.undoStack().count();

    const QPointF from = what == QLatin1String("Move") ? middle : session.handles(0).first();
    session.mousePress(from);
    session.mouseMove(from + QPointF(60.0, 40.0));
    loss(*session.canvas().frame(session.id(0)));
    QCoreApplication::processEvents();
    QCOMPARE(session.undoStack().count(), commands + 1);
    QCOMPARE(session.undoStack().undoText(), what);
    QVERIFY(session.json() != before);
    const QByteArray after = session.json();

    session.mouseMove(from + QPointF(90.0, 90.0));
    session.mouseRelease(from + QPointF(90.0, 90.0));
    QCoreApplication::processEvents();
    QCOMPARE(session.undoStack().count(), commands + 1);
    QCOMPARE(session.json(), after);
    session.undoStack().undo();
    QCOMPARE(session.json(), before);
    session.undoStack().redo();
    QCOMPARE(session.json(), after);
}

void EditorDragsTest::lostMouseOfTwo()
{
    EditorSession session;
    session.addBar();
    session.addBar();
    session.press("selectAll");
    QCOMPARE(session.canvas().selection().size(), 2);
    const QByteArray before = session.json();
    const int commands = session.undoStack().count();
    AbstractDecorator *held = session.canvas().frame(session.id(1));
    const QPointF from = held->child()->sceneBoundingRect().center();
    session.mousePress(from);
    session.mouseMove(from + QPointF(60.0, 40.0));
    held->ungrabMouse();
    session.mouseRelease(from + QPointF(60.0, 40.0));
    QCoreApplication::processEvents();
    QCOMPARE(session.undoStack().count(), commands + 1);
    QCOMPARE(session.placement(0).pos, session.placement(1).pos);
    session.undoStack().undo();
    QCOMPARE(session.json(), before);
}

QTEST_MAIN(EditorDragsTest)
#include "tst_editordrags.moc"
