// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "EditorSession.h"
#include "TitleTest.h"

#include <Compositor.h>
#include <PngExport.h>
#include <Timeline.h>

#include <Scene/TitleItem.h>
#include <Scene/TitleSvgItem.h>

#include <QDoubleSpinBox>
#include <QMimeData>
#include <QPinchGesture>
#include <QProgressDialog>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolButton>
#include <QWheelEvent>

#include <cmath>

namespace {

const QPointF canvasCentre(960.0, 540.0);

QImage exportedFrame(const QTemporaryDir &folder, int frame)
{
    return QImage(folder.filePath(PngExport::fileName(frame)))
            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

qreal direction(const QPointF &from, const QPointF &to)
{
    return qRadiansToDegrees(std::atan2(to.y() - from.y(), to.x() - from.x()));
}

} // namespace

class EditorTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void wholeSession();
    void aTitleComesFittedIntoTheCanvas();
    void shiftKeepsTheAspect();
    void aTurnedTitleKeepsItsOppositeCorner();
    void aTitleNeverShrinksToNothing();
    void aSecondClickSwitchesFrames();
    void onlyTheSelectedTitleHasHandles();
    void aDragMovesAllThatIsSelected();
    void movingSnaps_data();
    void movingSnaps();
    void arrowKeysNudge_data();
    void arrowKeysNudge();
    void nudgesBecomeOneStep();
    void keysTypedIntoATextStayThere();
    void deletesAndBringsBack();
    void duplicates();
    void copiesAndPastes();
    void order_data();
    void order();
    void theTemplatesColoursComeBack();
    void fontControlsChangeTheText();
    void speed();
    void clipLength();
    void stepsAndPlays();
    void zoom();
    void pinchOnATouchPad();
    void pinchOnATouchScreen();
    void handlesKeepTheirSizeOnTheScreen();
    void dropsFiles();
    void brokenFilesChangeNothing_data();
    void brokenFilesChangeNothing();
    void compositionIsWhatTheTitlesPaint_data();
    void compositionIsWhatTheTitlesPaint();
    void aTitleIsCutToItsBounds();
    void exportCanBeCancelled();
    void exportIsCancelledByItsDialog();
    void exportThatFailsSaysSo();
    void closingOffersToSave();
};

void EditorTest::wholeSession()
{
    QTemporaryDir folder;
    EditorSession session;

    session.addBar();
    QCOMPARE(session.canvas().order().size(), 1);

    session.drag(canvasCentre, QPointF(200.0, 100.0));
    QCOMPARE(session.placement(0).pos, QPointF(200.0, 160.0));

    const QPointF corner(200.0 + 1920.0, 160.0 + 960.0);
    session.drag(session.handleNear(0, corner), QPointF(-960.0, -480.0));
    QCOMPARE(session.placement(0).scaleX, 4.8);
    QCOMPARE(session.placement(0).scaleY, 4.8);
    QCOMPARE(session.placement(0).pos, QPointF(200.0, 160.0));

    const QPointF centre(200.0 + 480.0, 160.0 + 240.0);
    session.click(centre);
    const QPointF handle = session.handles(0).first();
    const QPointF target = centre + QPointF(300.0, -100.0);
    session.drag(handle, target - handle);
    const qreal angle = direction(centre, target) - direction(centre, handle);
    QVERIFY2(
            std::abs(session.placement(0).rotation - angle) < 0.3,
            qPrintable(QStringLiteral("%1, not %2").arg(session.placement(0).rotation).arg(angle)));
    const QPointF centreNow = session.canvas()
                                      .frame(session.id(0))
                                      ->mapToScene(session.canvas()
                                                           .frame(session.id(0))
                                                           ->child()
                                                           ->mapToParent(100.0, 50.0));
    QVERIFY(QLineF(centre, centreNow).length() < 1e-6);

    session.press("addText");
    session.doubleClick(canvasCentre);
    QVERIFY(session.canvas().editedText());
    session.key(Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(session.view().viewport(), QStringLiteral("Hello"));
    session.key(Qt::Key_Escape);
    QCOMPARE(session.title(1).name, QStringLiteral("Hello"));

    session.click(centre);
    QCOMPARE(session.canvas().selection(), QVector<TitleId>{session.id(0)});
    QTest::mouseClick(session.find<QToolButton>("swatch#1e88e5"), Qt::LeftButton);
    QCOMPARE(session.title(0).lineColor, QColor(0x1e, 0x88, 0xe5));

    const QStringList steps{QStringLiteral("Add bar"),      QStringLiteral("Move"),
                            QStringLiteral("Resize"),       QStringLiteral("Rotate"),
                            QStringLiteral("Add Text"),     QStringLiteral("Edit Text"),
                            QStringLiteral("Change Colour")};
    QStringList done;
    for (int i = 0; i < session.undoStack().count(); ++i)
        done.append(session.undoStack().text(i));
    QCOMPARE(done, steps);

    const QByteArray complete = session.json();
    for (int i = 0; i < steps.size(); ++i)
        session.press("undo");
    QCOMPARE(session.json(), toJson(Project()));
    QVERIFY(!session.undoStack().canUndo());
    for (int i = 0; i < steps.size(); ++i)
        session.press("redo");
    QCOMPARE(session.json(), complete);
    QVERIFY(!session.undoStack().canRedo());

    auto *timeline = session.window.findChild<Timeline *>();
    QTest::mouseClick(timeline, Qt::LeftButton, Qt::NoModifier,
                      QPoint(timeline->positionOf(200), 20));
    QCOMPARE(session.canvas().sceneHelper()->sceneTime(), 200);
    QTest::mousePress(timeline, Qt::LeftButton, Qt::NoModifier,
                      QPoint(timeline->positionOf(2000), 20));
    QMouseEvent scrub(QEvent::MouseMove, QPoint(timeline->positionOf(4000), 20), Qt::NoButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(timeline, &scrub);
    QCOMPARE(session.canvas().sceneHelper()->sceneTime(), 4000);
    QTest::mouseRelease(timeline, Qt::LeftButton);

    auto *clip = session.find<QDoubleSpinBox>("clipLength");
    clip->setFocus();
    clip->selectAll();
    QTest::keyClicks(clip, QStringLiteral("0.12"));
    QTest::keyClick(clip, Qt::Key_Return);
    QCOMPARE(session.canvas().clipLength(), 120);
    QCOMPARE(session.canvas().sceneHelper()->sceneTime(), 80);

    const QString path = folder.filePath(QStringLiteral("first.titles"));
    session.press("save");
    session.answerFileDialog(path);
    QVERIFY(QFile::exists(path));
    QVERIFY(!session.window.isWindowModified());
    const QByteArray saved = session.json();

    session.press("delete");
    QVERIFY(session.window.isWindowModified());
    session.undoStack().undo();
    QVERIFY(!session.window.isWindowModified());

    session.press("openProject");
    session.answerFileDialog(path);
    QCOMPARE(session.window.projectPath(), path);
    QCOMPARE(session.json(), saved);
    QCOMPARE(session.undoStack().count(), 0);

    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("frames")));
    session.press("export");
    session.answerFileDialog(folder.filePath(QStringLiteral("frames")));
    QTRY_COMPARE(session.window.statusBar()->currentMessage(),
                 QStringLiteral("3 frame(s) exported"));
    QStringList expectedFiles;
    for (int frame = 0; frame < 3; ++frame)
        expectedFiles.append(PngExport::fileName(frame));
    const QDir frames(folder.filePath(QStringLiteral("frames")));
    QCOMPARE(frames.entryList(QDir::Files, QDir::Name), expectedFiles);

    QString error;
    const auto project = readProject(path, &error);
    QVERIFY2(project, qPrintable(error));
    Compositor compositor(*project);
    QImage before;
    for (int frame = 0; frame < 3; ++frame) {
        const QImage exported(frames.filePath(PngExport::fileName(frame)));
        COMPARE_PICTURES(exported.convertToFormat(QImage::Format_ARGB32_Premultiplied),
                         compositor.frame(frame * 40), 2);
        QVERIFY(exported != before);
        before = exported;
    }
}

void EditorTest::aTitleComesFittedIntoTheCanvas()
{
    EditorSession session;
    session.addBar();
    QCOMPARE(session.placement(0).pos, QPointF(0.0, 60.0));
    QCOMPARE(session.placement(0).scaleX, 9.6);
    QCOMPARE(session.placement(0).scaleY, 9.6);
    QCOMPARE(session.canvas().selection(), session.canvas().order());
}

void EditorTest::shiftKeepsTheAspect()
{
    EditorSession session;
    session.addBar();
    session.drag(session.handleNear(0, QPointF(1920.0, 1020.0)), QPointF(-960.0, -40.0),
                 Qt::ShiftModifier);
    QCOMPARE(session.placement(0).scaleX, 4.8);
    QCOMPARE(session.placement(0).scaleY, 4.8);
    QCOMPARE(session.placement(0).pos, QPointF(0.0, 60.0));

    session.drag(session.handleNear(0, QPointF(0.0, 60.0)), QPointF(480.0, 400.0),
                 Qt::ShiftModifier);
    QCOMPARE(session.placement(0).scaleX, 2.4);
    QCOMPARE(session.placement(0).scaleY, 2.4);
    QCOMPARE(session.placement(0).pos, QPointF(480.0, 300.0));

    session.drag(session.handleNear(0, QPointF(960.0, 540.0)), QPointF(-100.0, -40.0));
    QVERIFY(session.placement(0).scaleX != session.placement(0).scaleY);
}

void EditorTest::aTurnedTitleKeepsItsOppositeCorner()
{
    EditorSession session;
    session.addBar();
    Project project = session.canvas().project();
    project.titles[0].placement = {QPointF(800.0, 200.0), 30.0, 3.0, 3.0, 0.0};
    session.window.editor()->setProject(project);
    session.canvas().select(session.canvas().order());
    AbstractDecorator *frame = session.canvas().frame(session.id(0));
    QCOMPARE(frame->rotation(), 30.0);

    const QPointF opposite = frame->mapToScene(600.0, 300.0);
    session.drag(session.handleNear(0, QPointF(800.0, 200.0)), QPointF(100.0, 120.0));
    QVERIFY(session.placement(0).scaleX < 2.9);
    const QSizeF size(200.0 * session.placement(0).scaleX, 100.0 * session.placement(0).scaleY);
    const QPointF oppositeNow = frame->mapToScene(size.width(), size.height());
    QVERIFY(QLineF(opposite, oppositeNow).length() < 1e-6);
    QCOMPARE(session.placement(0).rotation, 30.0);
}

void EditorTest::aTitleNeverShrinksToNothing()
{
    EditorSession session;
    session.addBar();
    session.drag(session.handleNear(0, QPointF(1920.0, 1020.0)), QPointF(-2000.0, -1100.0));
    QCOMPARE(session.placement(0).scaleX, 0.1);
    QCOMPARE(session.placement(0).scaleY, 0.2);
}

void EditorTest::aSecondClickSwitchesFrames()
{
    EditorSession session;
    session.addBar();
    const TitleId id = session.id(0);
    QCOMPARE(session.handles(0).size(), 8);
    QVERIFY(!session.canvas().isTurning(id));
    session.click(canvasCentre);
    QVERIFY(session.canvas().isTurning(id));
    QCOMPARE(session.handles(0).size(), 1);
    session.click(canvasCentre);
    QVERIFY(!session.canvas().isTurning(id));
    session.click(canvasCentre);
    session.click(QPointF(-200.0, 540.0)); // beside the title
    QVERIFY(session.canvas().selection().isEmpty());
    QVERIFY(!session.canvas().isTurning(id));
    QCOMPARE(session.undoStack().count(), 1);
}

void EditorTest::onlyTheSelectedTitleHasHandles()
{
    EditorSession session;
    session.addBar();
    session.press("addText");
    QCOMPARE(session.handles(0).size(), 0);
    QCOMPARE(session.handles(1).size(), 2);
    session.press("selectNext");
    QCOMPARE(session.handles(0).size(), 8);
    QCOMPARE(session.handles(1).size(), 0);
}

void EditorTest::aDragMovesAllThatIsSelected()
{
    EditorSession session;
    session.addBar();
    session.press("addText");
    session.press("selectAll");
    const Placement bar = session.placement(0);
    const Placement text = session.placement(1);
    session.drag(canvasCentre, QPointF(120.0, 200.0));
    QCOMPARE(session.placement(0).pos, bar.pos + QPointF(120.0, 200.0));
    QCOMPARE(session.placement(1).pos, text.pos + QPointF(120.0, 200.0));
    QCOMPARE(session.undoStack().count(), 3);
    session.press("undo");
    QVERIFY(session.placement(0).isSameAs(bar));
    QVERIFY(session.placement(1).isSameAs(text));
}

void EditorTest::movingSnaps_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("by");
    QTest::addColumn<QPointF>("expected");
    QTest::addColumn<bool>("ctrl");
    // The title is 400 x 200, the reach is 8 pixels, which are 16 units.
    QTest::newRow("left edge") << QPointF(100, 300) << QPointF(-90, 0) << QPointF(0, 300) << false;
    QTest::newRow("right edge") << QPointF(1400, 300) << QPointF(110, 0) << QPointF(1520, 300)
                                << false;
    QTest::newRow("top") << QPointF(300, 100) << QPointF(0, -108) << QPointF(300, 0) << false;
    QTest::newRow("bottom") << QPointF(300, 700) << QPointF(0, 190) << QPointF(300, 880) << false;
    QTest::newRow("centre") << QPointF(500, 200) << QPointF(250, 230) << QPointF(760, 440) << false;
    QTest::newRow("just within reach")
            << QPointF(100, 300) << QPointF(-84, 0) << QPointF(0, 300) << false;
    QTest::newRow("just out of reach")
            << QPointF(100, 300) << QPointF(-82, 0) << QPointF(18, 300) << false;
    QTest::newRow("Ctrl") << QPointF(100, 300) << QPointF(-90, 0) << QPointF(10, 300) << true;
}

void EditorTest::movingSnaps()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, by);
    QFETCH(QPointF, expected);
    QFETCH(bool, ctrl);
    EditorSession session;
    session.addBar();
    Project project = session.canvas().project();
    project.titles[0].placement = {from, 0.0, 2.0, 2.0, 0.0};
    session.window.editor()->setProject(project);

    const Qt::KeyboardModifiers modifiers = ctrl ? Qt::ControlModifier : Qt::NoModifier;
    const QPointF start = from + QPointF(200.0, 100.0);
    session.mousePress(start);
    session.mouseMove(start + by / 2.0, modifiers);
    session.mouseMove(start + by, modifiers);
    QCOMPARE(session.canvas().guides().isEmpty(), expected == from + by);
    session.mouseRelease(start + by, modifiers);
    QCOMPARE(session.placement(0).pos, expected);
    QVERIFY(session.canvas().guides().isEmpty());
    QCOMPARE(session.undoStack().count(), 1);
}

void EditorTest::arrowKeysNudge_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<QPointF>("by");
    QTest::newRow("left") << int(Qt::Key_Left) << false << QPointF(-1, 0);
    QTest::newRow("right") << int(Qt::Key_Right) << false << QPointF(1, 0);
    QTest::newRow("up") << int(Qt::Key_Up) << false << QPointF(0, -1);
    QTest::newRow("down") << int(Qt::Key_Down) << false << QPointF(0, 1);
    QTest::newRow("Shift+left") << int(Qt::Key_Left) << true << QPointF(-10, 0);
    QTest::newRow("Shift+down") << int(Qt::Key_Down) << true << QPointF(0, 10);
}

void EditorTest::arrowKeysNudge()
{
    QFETCH(int, key);
    QFETCH(bool, shift);
    QFETCH(QPointF, by);
    EditorSession session;
    session.addBar();
    const QPointF before = session.placement(0).pos;
    session.key(key, shift ? Qt::ShiftModifier : Qt::NoModifier);
    QCOMPARE(session.placement(0).pos, before + by);
    QCOMPARE(session.canvas().frame(session.id(0))->mapToScene(QPointF()), before + by);
}

void EditorTest::nudgesBecomeOneStep()
{
    EditorSession session;
    session.addBar();
    const QPointF before = session.placement(0).pos;
    for (int i = 0; i < 5; ++i)
        session.key(Qt::Key_Right);
    QCOMPARE(session.placement(0).pos, before + QPointF(5.0, 0.0));
    QCOMPARE(session.undoStack().count(), 2);
    session.press("undo");
    QCOMPARE(session.placement(0).pos, before);
}

void EditorTest::keysTypedIntoATextStayThere()
{
    EditorSession session;
    session.press("addText");
    session.doubleClick(canvasCentre);
    session.key(Qt::Key_End);
    QTest::keyClicks(session.view().viewport(), QStringLiteral("s, a b."));
    session.key(Qt::Key_Left);
    session.key(Qt::Key_Delete);
    QVERIFY(!session.window.player()->isPlaying());
    QCOMPARE(session.canvas().order().size(), 1);
    session.click(QPointF(200.0, 100.0)); // ends it like Escape
    QVERIFY(!session.canvas().editedText());
    QCOMPARE(session.title(0).name, QStringLiteral("Titles, a b"));
    QCOMPARE(session.undoStack().count(), 2);
    session.press("undo");
    QCOMPARE(session.canvas().textItem(session.id(0))->toPlainText(), QStringLiteral("Title"));
}

void EditorTest::deletesAndBringsBack()
{
    EditorSession session;
    session.addBar();
    session.press("addText");
    const QByteArray before = session.json();
    session.press("selectNext");
    session.key(Qt::Key_Delete);
    QCOMPARE(session.canvas().order().size(), 1);
    QCOMPARE(session.title(0).kind, Title::Text);
    session.press("undo");
    QCOMPARE(session.json(), before);
    QCOMPARE(session.canvas().selection(), QVector<TitleId>{session.id(0)});
    session.press("redo");
    QCOMPARE(session.canvas().order().size(), 1);
}

void EditorTest::duplicates()
{
    EditorSession session;
    session.addBar();
    session.press("duplicate");
    QCOMPARE(session.canvas().order().size(), 2);
    QCOMPARE(session.placement(1).pos, session.placement(0).pos + QPointF(40.0, 40.0));
    QCOMPARE(session.title(1).svg, session.title(0).svg);
    QCOMPARE(session.canvas().selection(), QVector<TitleId>{session.id(1)});
}

void EditorTest::copiesAndPastes()
{
    EditorSession session;
    session.addBar();
    session.press("addText");
    session.press("selectAll");
    session.press("cut");
    QCOMPARE(session.canvas().order().size(), 0);
    session.press("paste");
    QCOMPARE(session.canvas().order().size(), 2);
    QCOMPARE(session.placement(0).pos, QPointF(40.0, 100.0));
    QCOMPARE(session.title(1).kind, Title::Text);
    session.press("copy");
    session.press("paste");
    QCOMPARE(session.canvas().order().size(), 4);
    QCOMPARE(session.placement(2).pos, QPointF(80.0, 140.0));
}

void EditorTest::order_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QVector<int>>("expected");
    QTest::newRow("to front") << QStringLiteral("toFront") << 0 << QVector<int>{1, 2, 0};
    QTest::newRow("to back") << QStringLiteral("toBack") << 2 << QVector<int>{2, 0, 1};
    QTest::newRow("raise") << QStringLiteral("raise") << 0 << QVector<int>{1, 0, 2};
    QTest::newRow("lower") << QStringLiteral("lower") << 2 << QVector<int>{0, 2, 1};
    QTest::newRow("raise the highest") << QStringLiteral("raise") << 2 << QVector<int>{0, 1, 2};
}

void EditorTest::order()
{
    QFETCH(QString, action);
    QFETCH(int, selected);
    QFETCH(QVector<int>, expected);
    EditorSession session;
    session.addBar();
    session.addBar();
    session.press("addText");
    const QVector<TitleId> before = session.canvas().order();
    session.canvas().select({before.at(selected)});
    session.press(qPrintable(action));
    QVector<TitleId> wanted;
    for (const int index : expected)
        wanted.append(before.at(index));
    QCOMPARE(session.canvas().order(), wanted);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(session.canvas().frame(wanted.at(i))->zValue(), qreal(i));
    if (wanted != before)
        session.press("undo");
    QCOMPARE(session.canvas().order(), before);
    QCOMPARE(session.canvas().frame(before.at(0))->zValue(), 0.0);
}

void EditorTest::theTemplatesColoursComeBack()
{
    EditorSession session;
    session.addBar();
    const auto pixel = [&session] {
        return QColor(Compositor(session.canvas().project()).frame(0).pixel(100, 400));
    };
    const auto shown = [&session] {
        const auto *frame = session.canvas().frame(session.id(0));
        return dynamic_cast<const TitleSvgItem *>(frame->child())->lineParams().color();
    };
    QCOMPARE(pixel(), QColor(255, 0, 0));
    QTest::mouseClick(session.find<QToolButton>("swatch#43a047"), Qt::LeftButton);
    QCOMPARE(pixel(), QColor(0x43, 0xa0, 0x47));
    QCOMPARE(shown(), QColor(0x43, 0xa0, 0x47));
    QTest::mouseClick(session.find<QAbstractButton>("templateColors"), Qt::LeftButton);
    QCOMPARE(pixel(), QColor(255, 0, 0));
    QCOMPARE(shown().alpha(), 0);
    session.press("undo");
    QCOMPARE(shown(), QColor(0x43, 0xa0, 0x47));
    session.press("undo");
    QCOMPARE(shown().alpha(), 0);
    QCOMPARE(session.handles(0).size(), 8);
}

void EditorTest::fontControlsChangeTheText()
{
    EditorSession session;
    session.press("addText");
    const auto format = [&session] {
        QTextCursor cursor(session.canvas().textItem(session.id(0))->document());
        cursor.movePosition(QTextCursor::NextCharacter);
        return cursor.charFormat();
    };
    auto *size = session.find<QSpinBox>("fontSize");
    QCOMPARE(size->value(), 72);
    size->setFocus();
    size->selectAll();
    QTest::keyClicks(size, QStringLiteral("40"));
    QTest::keyClick(size, Qt::Key_Return);
    QCOMPARE(format().fontPointSize(), 40.0);
    QTest::mouseClick(session.find<QToolButton>("italic"), Qt::LeftButton);
    QVERIFY(format().fontItalic());
    QTest::mouseClick(session.find<QToolButton>("bold"), Qt::LeftButton);
    QCOMPARE(format().fontWeight(), int(QFont::Normal));
    QTest::mouseClick(session.find<QToolButton>("swatch#e53935"), Qt::LeftButton);
    QCOMPARE(format().foreground().color(), QColor(0xe5, 0x39, 0x35));
    QCOMPARE(session.undoStack().count(), 5);
    for (int i = 0; i < 4; ++i)
        session.press("undo");
    QCOMPARE(format().fontPointSize(), 72.0);
    QCOMPARE(format().foreground().color(), QColor(Qt::white));
}

void EditorTest::speed()
{
    EditorSession session;
    session.addBar();
    auto *speed = session.find<QDoubleSpinBox>("speed");
    QTest::keyClick(speed, Qt::Key_Up);
    QTest::keyClick(speed, Qt::Key_Up);
    QCOMPARE(session.title(0).speed, 1.2);
    QCOMPARE(dynamic_cast<const TitleSvgItem *>(session.canvas().frame(session.id(0))->child())
                     ->animationSpeed(),
             1.2);
    session.press("undo");
    QCOMPARE(session.title(0).speed, 1.0);
    QCOMPARE(speed->value(), 1.0);
}

void EditorTest::clipLength()
{
    EditorSession session;
    session.addBar();
    auto *clip = session.find<QDoubleSpinBox>("clipLength");
    QCOMPARE(clip->value(), 8.0);
    clip->selectAll();
    QTest::keyClicks(clip, QStringLiteral("5"));
    QTest::keyClick(clip, Qt::Key_Return);
    const auto duration = [&session] {
        return dynamic_cast<const TitleSvgItem *>(session.canvas().frame(session.id(0))->child())
                ->duration();
    };
    QCOMPARE(duration(), 5000);
    session.press("undo");
    QCOMPARE(duration(), 8000);
    QCOMPARE(clip->value(), 8.0);
}

void EditorTest::stepsAndPlays()
{
    EditorSession session;
    session.addBar();
    SceneHelper &helper = *session.canvas().sceneHelper();
    const auto shownTime = [&session] {
        return dynamic_cast<const TitleSvgItem *>(session.canvas().frame(session.id(0))->child())
                ->currentTime();
    };
    session.key(Qt::Key_Period);
    session.key(Qt::Key_Period);
    QCOMPARE(helper.sceneTime(), 80);
    QCOMPARE(shownTime(), 80);
    session.key(Qt::Key_Comma);
    QCOMPARE(helper.sceneTime(), 40);
    session.key(Qt::Key_End);
    QCOMPARE(helper.sceneTime(), 7960);
    session.key(Qt::Key_Period);
    QCOMPARE(helper.sceneTime(), 7960);
    session.key(Qt::Key_Home);
    QCOMPARE(helper.sceneTime(), 0);
    session.key(Qt::Key_Comma);
    QCOMPARE(helper.sceneTime(), 0);

    session.key(Qt::Key_Space);
    QVERIFY(session.window.player()->isPlaying());
    QTRY_VERIFY(helper.sceneTime() > 0);
    session.key(Qt::Key_Space);
    QVERIFY(!session.window.player()->isPlaying());
    QCOMPARE(shownTime(), int(helper.sceneTime()));

    session.window.player()->setTime(7900);
    session.key(Qt::Key_Space);
    QTRY_VERIFY(!session.window.player()->isPlaying());
    QCOMPARE(helper.sceneTime(), 7960);
}

void EditorTest::zoom()
{
    EditorSession session;
    const auto wheel = [&session](int delta) {
        const QPointF pos(300.0, 200.0);
        QWheelEvent event(pos, session.view().viewport()->mapToGlobal(pos.toPoint()), QPoint(),
                          QPoint(0, delta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(session.view().viewport(), &event);
    };
    wheel(120);
    QCOMPARE(session.view().zoom(), 0.625);
    wheel(-240);
    QCOMPARE(session.view().zoom(), 0.4);
    session.press("actualSize");
    QCOMPARE(session.view().zoom(), 1.0);
    session.press("fit");
    const QRect shown = session.view().viewport()->rect();
    const QRect canvas = session.view().mapFromScene(session.canvas().canvasRect()).boundingRect();
    QVERIFY(shown.contains(canvas));
    QVERIFY(canvas.width() > shown.width() - 60 || canvas.height() > shown.height() - 60);
}

void EditorTest::pinchOnATouchPad()
{
    EditorSession session;
    QNativeGestureEvent event(Qt::ZoomNativeGesture, nullptr, QPointF(300.0, 200.0),
                              QPointF(300.0, 200.0), QPointF(300.0, 200.0), 0.5, 0, 0);
    QApplication::sendEvent(session.view().viewport(), &event);
    QCOMPARE(session.view().zoom(), 0.75);
}

void EditorTest::pinchOnATouchScreen()
{
    EditorSession session;
    QPinchGesture gesture;
    gesture.setScaleFactor(2.0);
    gesture.setChangeFlags(QPinchGesture::ScaleFactorChanged);
    QGestureEvent event({&gesture});
    event.setWidget(session.view().viewport());
    QApplication::sendEvent(session.view().viewport(), &event);
    QCOMPARE(session.view().zoom(), 1.0);
    gesture.setChangeFlags(QPinchGesture::CenterPointChanged);
    QApplication::sendEvent(session.view().viewport(), &event);
    QCOMPARE(session.view().zoom(), 1.0);
}

void EditorTest::handlesKeepTheirSizeOnTheScreen()
{
    EditorSession session;
    session.addBar();
    const auto sizeOfHandles = [&session] {
        QVector<int> widths;
        for (QGraphicsItem *item : session.canvas().frame(session.id(0))->childItems()) {
            if (const auto *handle = dynamic_cast<const ResizeHandleItem *>(item)) {
                const QPolygonF onScene = handle->mapToScene(handle->rect());
                widths.append(session.view().mapFromScene(onScene).boundingRect().width());
            }
        }
        return widths;
    };
    for (const qreal zoom : {0.25, 0.5, 1.0, 3.0}) {
        session.view().setZoom(zoom);
        const QVector<int> widths = sizeOfHandles();
        QCOMPARE(widths.size(), 8);
        for (const int width : widths)
            QVERIFY2(std::abs(width - 20) <= 2, qPrintable(QString::number(width)));
    }
}

void EditorTest::dropsFiles()
{
    EditorSession session;
    const QString path = QStringLiteral(TITLESCENE_TEST_DATA "/editor-templates/bar.svg");
    const auto drop = [&session](const QString &file) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(session.view().viewport(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event(QPointF(100.0, 100.0), Qt::CopyAction, &data, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(session.view().viewport(), &event);
        return event.isAccepted();
    };
    QVERIFY(drop(path));
    QCOMPARE(session.canvas().order().size(), 1);
    QVERIFY(!drop(QStringLiteral("/somewhere/picture.png")));
    QCOMPARE(session.canvas().order().size(), 1);
}

void EditorTest::brokenFilesChangeNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("svg: not well-formed")
            << QStringLiteral("a.svg") << QByteArray("<svg viewBox=\"0 0 9 9\"><rect></svg>");
    QTest::newRow("svg: empty") << QStringLiteral("a.svg") << QByteArray();
    QTest::newRow("svg: no size") << QStringLiteral(
            "a.svg") << QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\"><rect/></svg>");
    QTest::newRow("svg: a picture") << QStringLiteral("a.svg") << QByteArray("\x89PNG\r\n\x1a\n");
    QTest::newRow("project: empty") << QStringLiteral("a.titles") << QByteArray();
    QTest::newRow("project: cut off")
            << QStringLiteral("a.titles") << QByteArray("{\"format\": \"titlescene-pro");
    QTest::newRow("project: other JSON") << QStringLiteral("a.titles") << QByteArray("[1, 2]");
    QTest::newRow("project: a broken title")
            << QStringLiteral("a.titles")
            << QByteArray("{\"format\": \"titlescene-project\", \"version\": 1, \"width\": 10,"
                          "\"height\": 10, \"clipLength\": 400, \"titles\": [{\"kind\": \"svg\","
                          "\"name\": \"x\", \"x\": 0, \"y\": 0, \"rotation\": 0, \"scaleX\": 1,"
                          "\"scaleY\": 1, \"speed\": 1, \"svg\": \"<svg\"}]}");
}

void EditorTest::brokenFilesChangeNothing()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QTemporaryDir folder;
    const QString path = folder.filePath(name);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
    file.close();

    EditorSession session;
    session.addBar();
    session.key(Qt::Key_Right);
    QVERIFY(session.window.saveProject(folder.filePath(QStringLiteral("mine.titles"))));
    const QByteArray before = session.json();
    const bool isTemplate = name.endsWith(QLatin1String(".svg"));
    session.press(isTemplate ? "openTemplate" : "openProject");
    session.answerFileDialog(path);
    QVERIFY(session.closeMessage().startsWith(name));
    QCOMPARE(session.json(), before);
    QCOMPARE(session.undoStack().count(), 2);
    QCOMPARE(session.window.projectPath(), folder.filePath(QStringLiteral("mine.titles")));
    QVERIFY(!session.window.isWindowModified());
}

void EditorTest::compositionIsWhatTheTitlesPaint_data()
{
    QTest::addColumn<double>("rotation");
    QTest::addColumn<int>("tolerance");
    QTest::newRow("straight") << 0.0 << 2;
    QTest::newRow("turned") << 30.0 << 40; // a few pixels along the slanting edges
}

void EditorTest::compositionIsWhatTheTitlesPaint()
{
    QFETCH(double, rotation);
    QFETCH(int, tolerance);
    EditorSession session;
    session.addBar();
    Project project = session.canvas().project();
    project.titles[0].placement = {QPointF(500.0, 300.0), rotation, 3.0, 2.0, 0.0};

    QImage expected(project.canvas, QImage::Format_ARGB32_Premultiplied);
    expected.fill(Qt::transparent);
    SvgDocument document(project.titles[0].svg);
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(500.0, 300.0);
    painter.rotate(rotation);
    painter.scale(3.0, 2.0);
    painter.setClipRect(QRectF(0.0, 0.0, 200.0, 100.0));
    document.paint(&painter, 200);
    painter.end();
    COMPARE_PICTURES(Compositor(project).frame(200), expected, tolerance);
}

void EditorTest::aTitleIsCutToItsBounds()
{
    EditorSession session;
    session.addBar();
    Project project = session.canvas().project();
    project.titles[0].placement = {QPointF(500.0, 300.0), 0.0, 2.0, 2.0, 0.0};
    const QImage frame = Compositor(project).frame(0);
    // The white bar goes on beyond both sides of the view box.
    QCOMPARE(frame.pixelColor(700, 470), QColor(Qt::white));
    QCOMPARE(frame.pixelColor(490, 470).alpha(), 0);
    QCOMPARE(frame.pixelColor(910, 470).alpha(), 0);
}

void EditorTest::exportCanBeCancelled()
{
    QTemporaryDir folder;
    Project project;
    PngExport exporting(project, folder.path());
    QCOMPARE(exporting.frameCount(), 200);
    QSignalSpy finished(&exporting, &PngExport::finished);
    QSignalSpy cancelled(&exporting, &PngExport::cancelled);
    QSignalSpy progress(&exporting, &PngExport::progress);
    connect(&exporting, &PngExport::progress, &exporting, [&exporting](int written) {
        if (written == 2)
            exporting.cancel();
    });
    exporting.start();
    QTRY_COMPARE(cancelled.count(), 1);
    exporting.cancel();
    QCoreApplication::processEvents();
    QCOMPARE(cancelled.count(), 1);
    QCOMPARE(progress.count(), 2);
    QCOMPARE(finished.count(), 0);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
    QCOMPARE(exportedFrame(folder, 0).size(), project.canvas);
}

void EditorTest::exportIsCancelledByItsDialog()
{
    QTemporaryDir folder;
    EditorSession session;
    session.addBar();
    session.window.exportFrames(folder.path());
    auto *dialog = session.window.findChild<QProgressDialog *>();
    QVERIFY(dialog);
    QTRY_VERIFY(dialog->value() >= 1);
    QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
    QCOMPARE(session.window.statusBar()->currentMessage(), QStringLiteral("Export cancelled"));
    const int written = QDir(folder.path()).entryList(QDir::Files).size();
    QVERIFY(written >= 1 && written < 200);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), written);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(session.window.findChildren<QProgressDialog *>().isEmpty());
}

void EditorTest::exportThatFailsSaysSo()
{
    EditorSession session;
    session.addBar();
    session.window.exportFrames(QStringLiteral("/proc/no-such-folder"));
    QTRY_COMPARE(session.window.statusBar()->currentMessage(), QStringLiteral("Export failed"));
    QVERIFY(session.closeMessage().contains(PngExport::fileName(0)));
}

void EditorTest::closingOffersToSave()
{
    EditorSession session;
    session.addBar();
    session.window.close();
    auto *box = session.window.findChild<QMessageBox *>();
    QVERIFY(box);
    QVERIFY(session.window.isVisible());
    QTest::mouseClick(box->button(QMessageBox::Cancel), Qt::LeftButton);
    QVERIFY(session.window.isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    session.window.close();
    box = session.window.findChild<QMessageBox *>();
    QTest::mouseClick(box->button(QMessageBox::Discard), Qt::LeftButton);
    QVERIFY(!session.window.isVisible());
}

QTEST_MAIN(EditorTest)

#include "tst_editor.moc"
