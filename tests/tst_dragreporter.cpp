// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FramedWorld.h"

#include <Scene/Decorator/DragReporter.h>

#include <QRandomGenerator>
#include <QSignalSpy>

#include <algorithm>

// An application that knows its frames by what is reported of them, beside the frames themselves.

namespace {

/// A frame in a place of its own.
struct Framed
{
    QPointer<CountedChild> child;
    QPointer<AbstractDecorator> frame;

    QPolygonF outline() const { return child->mapToScene(child->boundingRect()); }
};

/// The frames, a user with a mouse, and the application.
class Stage : public SceneOnView
{
public:
    Stage() : mouse(view), reporter(&scene)
    {
        for (const Frame kind : {Frame::Resize, Frame::Rotate, Frame::ResizeWithFewHandles})
            add(kind);
        QObject::connect(&reporter, &DragReporter::framesDragged,
                         [this](const QList<AbstractDecorator *> &changed) {
                             ++reports;
                             for (AbstractDecorator *frame : changed)
                                 m_record[frame] = framed(frame).outline();
                         });
    }

    void add(Frame kind)
    {
        Framed added;
        added.child = new CountedChild;
        added.frame = newFrame(kind, added.child);
        scene.addItem(added.frame);
        added.frame->setPos(-250.0 + 160.0 * frames.size(), -100.0 + 80.0 * frames.size());
        added.frame->updateDecoration();
        frames.append(added);
        m_record[added.frame] = added.outline();
    }

    const Framed &framed(const AbstractDecorator *frame) const
    {
        return *std::find_if(frames.begin(), frames.end(),
                             [frame](const Framed &each) { return each.frame == frame; });
    }

    QGraphicsItem *handleOf(int index) const
    {
        return childHandles(*frames.at(index).frame).last();
    }
    QPointF middleOf(int index) const { return centreOnScene(*frames.at(index).child); }

    /// Whether the application knows each frame as it is.
    bool isRecordTrue() const
    {
        QCoreApplication::processEvents();
        return std::all_of(frames.begin(), frames.end(), [this](const Framed &each) {
            return !each.frame || m_record.value(each.frame) == each.outline();
        });
    }

    ViewMouse mouse;
    DragReporter reporter;
    QVector<Framed> frames;
    int reports = 0;

private:
    QHash<const AbstractDecorator *, QPolygonF> m_record;
};

using FrameAction = std::function<void(AbstractDecorator &)>;

struct Loss
{
    const char *name;
    FrameAction action;
};

/// What takes the mouse from a frame that goes on afterwards.
const QVector<Loss> &losses()
{
    static const QVector<Loss> steps = {
            {"hidden",
             [](AbstractDecorator &frame) {
                 frame.hide();
                 frame.show();
             }},
            {"disabled",
             [](AbstractDecorator &frame) {
                 frame.setEnabled(false);
                 frame.setEnabled(true);
             }},
            {"taken off the scene",
             [](AbstractDecorator &frame) {
                 QGraphicsScene *scene = frame.scene();
                 scene->removeItem(&frame);
                 scene->addItem(&frame);
             }},
            {"let go",
             [](AbstractDecorator &frame) {
                 if (frame.scene()->mouseGrabberItem() == &frame)
                     frame.ungrabMouse();
             }},
    };
    return steps;
}

} // namespace

Q_DECLARE_METATYPE(FrameAction)

class DragReporterTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void methods();
    void reportsOnce();
    void clickIsNoDrag();
    void wayBackIsNoChange();
    void comesAfterTheFramesOwnSignals();
    void secondSelectedFrame();
    void lostMouse_data();
    void lostMouse();
    void lostMouseOfTwo();
    void pressThatMovesTheItem();
    void framesInFrames();
    void nextPressWaitsForTheReport();
    void framesDeletedAmidADrag();
    void framesDeletedBySlots();
    void sceneDeletedFirst();
    void recordIsAlwaysTrue();
};

void DragReporterTest::methods()
{
    QCOMPARE(ownMethods(DragReporter::staticMetaObject),
             QStringList({QStringLiteral(
                     "signal void framesDragged(QList<AbstractDecorator*> frames)")}));
}

void DragReporterTest::reportsOnce()
{
    Stage stage;
    QSignalSpy reports(&stage.reporter, &DragReporter::framesDragged);
    stage.mouse.press(centreOnScene(*stage.handleOf(0)));
    for (int i = 0; i < 3; ++i) {
        stage.mouse.moveBy(QPoint(7, 5));
        QCoreApplication::processEvents();
        QCOMPARE(reports.count(), 0);
    }
    stage.mouse.release();
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(reports.count(), 1);
    QCOMPARE(reports.first().first().value<QList<AbstractDecorator *>>(),
             QList<AbstractDecorator *>({stage.frames.first().frame}));
}

void DragReporterTest::clickIsNoDrag()
{
    Stage stage;
    for (int i = 0; i < stage.frames.size(); ++i) {
        stage.mouse.drag(stage.middleOf(i), QPoint());
        stage.mouse.press(centreOnScene(*stage.handleOf(i)));
        stage.mouse.release();
        stage.mouse.doubleClick(stage.middleOf(i));
    }
    stage.mouse.drag(QPointF(280.0, -280.0), QPoint(5, 5)); // beside all frames
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(stage.reports, 0);
}

void DragReporterTest::wayBackIsNoChange()
{
    Stage stage;
    stage.mouse.press(stage.middleOf(0));
    stage.mouse.moveBy(QPoint(9, 9));
    stage.mouse.moveBy(QPoint(-9, -9));
    stage.mouse.release();
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(stage.reports, 0);
}

void DragReporterTest::comesAfterTheFramesOwnSignals()
{
    Stage stage;
    QStringList told;
    auto *frame = qobject_cast<ResizeDecorator *>(stage.frames.first().frame);
    connect(frame, &AbstractDecorator::itemMoved,
            [&told] { told.append(QStringLiteral("moved")); });
    connect(frame, &ResizeDecorator::itemResized,
            [&told] { told.append(QStringLiteral("resized")); });
    connect(&stage.reporter, &DragReporter::framesDragged,
            [&told] { told.append(QStringLiteral("dragged")); });
    stage.mouse.drag(centreOnScene(*handlesOf(*frame).at(Qt::LeftSection)), QPoint(-9, 0));
    QCoreApplication::processEvents();
    QCOMPARE(told,
             QStringList({QStringLiteral("moved"), QStringLiteral("resized"),
                          QStringLiteral("dragged")}));
}

/// Only the frame that is held tells of itself.
void DragReporterTest::secondSelectedFrame()
{
    Stage stage;
    QSignalSpy first(stage.frames.at(0).frame, &AbstractDecorator::itemMoved);
    QSignalSpy second(stage.frames.at(1).frame, &AbstractDecorator::itemMoved);
    stage.frames.at(0).frame->setSelected(true);
    stage.frames.at(1).frame->setSelected(true);
    const QPolygonF before = stage.frames.at(1).outline();
    stage.mouse.drag(stage.middleOf(0), QPoint(10, 20));
    QCOMPARE(stage.frames.at(1).outline(), before.translated(10.0, 20.0));
    QCOMPARE(first.count(), 1);
    QCOMPARE(second.count(), 0);
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(stage.reports, 1);
}

void DragReporterTest::lostMouse_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<bool>("isHandle");
    QTest::addColumn<FrameAction>("loss");

    for (const int frame : {0, 1, 2}) {
        for (const bool isHandle : {true, false}) {
            for (const Loss &loss : losses())
                QTest::addRow("%d, %s, %s", frame, isHandle ? "handle" : "frame", loss.name)
                        << frame << isHandle << loss.action;
        }
    }
}

/// What was changed until then stays, and none of the frame's own signals tells of it.
void DragReporterTest::lostMouse()
{
    QFETCH(const int, frame);
    QFETCH(const bool, isHandle);
    QFETCH(const FrameAction, loss);

    Stage stage;
    AbstractDecorator *held = stage.frames.at(frame).frame;
    const QPolygonF before = stage.frames.at(frame).outline();
    int told = 0;
    connect(held, &AbstractDecorator::itemMoved, [&told] { ++told; });
    if (auto *resize = qobject_cast<ResizeDecorator *>(held))
        connect(resize, &ResizeDecorator::itemResized, [&told] { ++told; });
    if (auto *rotate = qobject_cast<RotateDecorator *>(held))
        connect(rotate, &RotateDecorator::itemRotated, [&told] { ++told; });
    stage.mouse.press(isHandle ? centreOnScene(*stage.handleOf(frame)) : stage.middleOf(frame));
    stage.mouse.moveBy(QPoint(12, 9));
    QVERIFY(stage.frames.at(frame).outline() != before);
    loss(*held);
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(stage.reports, 1);
    QCOMPARE(told, 0);

    stage.mouse.moveBy(QPoint(12, 9));
    stage.mouse.release();
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(stage.reports, 1);
    QCOMPARE(told, 0);
}

void DragReporterTest::lostMouseOfTwo()
{
    for (const Loss &loss : losses()) {
        Stage stage;
        stage.frames.at(0).frame->setSelected(true);
        stage.frames.at(1).frame->setSelected(true);
        stage.mouse.press(stage.middleOf(0));
        stage.mouse.moveBy(QPoint(12, 9));
        loss.action(*stage.frames.at(0).frame);
        QVERIFY(stage.isRecordTrue());
        QCOMPARE(stage.reports, 1);
    }
}

/// A rotate frame makes the centre of its child the point to turn about.
void DragReporterTest::pressThatMovesTheItem()
{
    Stage stage;
    const Framed &turned = stage.frames.at(1);
    stage.mouse.drag(centreOnScene(*stage.handleOf(1)), QPoint(40, 20));
    turned.child->setRect(QRectF(0.0, 0.0, 60.0, 50.0));
    turned.frame->updateDecoration();
    const QPolygonF before = turned.outline();
    stage.mouse.press(centreOnScene(*stage.handleOf(1)));
    stage.mouse.release();
    QVERIFY(turned.outline() != before);
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(stage.reports, 2);
}

/// The inner frame is tried first, and lets the press pass.
void DragReporterTest::framesInFrames()
{
    SceneOnView stage;
    auto *sizing = new ResizeDecorator(new RecordingChild);
    auto *turning = new RotateDecorator(sizing);
    stage.scene.addItem(turning);
    sizing->updateDecoration();
    DragReporter reporter(&stage.scene);
    QSignalSpy reports(&reporter, &DragReporter::framesDragged);
    ViewMouse mouse(stage.view);
    mouse.press(centreOnScene(*sizing->child()));
    QCoreApplication::processEvents();
    mouse.moveBy(QPoint(6, 6));
    QCoreApplication::processEvents();
    mouse.release();
    QCoreApplication::processEvents();
    QCOMPARE(reports.count(), 1);
    QCOMPARE(reports.first().first().value<QList<AbstractDecorator *>>(),
             QList<AbstractDecorator *>({turning}));

    mouse.drag(centreOnScene(*childHandles(*sizing).first()), QPoint(5, 5));
    QCoreApplication::processEvents();
    QCOMPARE(reports.count(), 2);
    QVERIFY(reports.last().first().value<QList<AbstractDecorator *>>().contains(sizing));
}

void DragReporterTest::nextPressWaitsForTheReport()
{
    Stage stage;
    stage.mouse.drag(stage.middleOf(0), QPoint(10, 10));
    QCOMPARE(stage.reports, 0);
    const QPointF next = stage.view.mapToScene(stage.view.mapFromScene(stage.middleOf(0)));
    sendToScene(stage.scene, QEvent::GraphicsSceneMousePress, next, next);
    QCOMPARE(stage.reports, 1);
    sendToScene(stage.scene, QEvent::GraphicsSceneMouseMove, next + QPointF(5.0, 5.0), next);
    sendToScene(stage.scene, QEvent::GraphicsSceneMouseRelease, next + QPointF(5.0, 5.0), next);
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(stage.reports, 2);
}

/// Those that were dragged along are there.
void DragReporterTest::framesDeletedAmidADrag()
{
    Stage stage;
    stage.frames.at(0).frame->setSelected(true);
    stage.frames.at(1).frame->setSelected(true);
    stage.mouse.press(stage.middleOf(0));
    stage.mouse.moveBy(QPoint(12, 9));
    delete stage.frames.at(0).frame;
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(stage.reports, 1);
    stage.mouse.release();

    stage.mouse.press(stage.middleOf(1));
    stage.mouse.moveBy(QPoint(12, 9));
    delete stage.frames.at(2).frame;
    QVERIFY(!stage.frames.at(2).child);
    stage.mouse.moveBy(QPoint(12, 9));
    stage.mouse.release();
    QVERIFY(stage.isRecordTrue());
    QCOMPARE(stage.reports, 2);
}

void DragReporterTest::framesDeletedBySlots()
{
    Stage stage;
    connect(&stage.reporter, &DragReporter::framesDragged,
            [](const QList<AbstractDecorator *> &frames) { qDeleteAll(frames); });
    stage.frames.at(0).frame->setSelected(true);
    stage.frames.at(1).frame->setSelected(true);
    stage.mouse.drag(stage.middleOf(0), QPoint(10, 10));
    QCoreApplication::processEvents();
    QVERIFY(!stage.frames.at(0).frame);
    QVERIFY(!stage.frames.at(1).frame);
    stage.mouse.press(stage.middleOf(2));
    stage.mouse.moveBy(QPoint(5, 5));
    stage.frames.at(2).frame->hide();
    QCoreApplication::processEvents();
    QVERIFY(!stage.frames.at(2).frame);
}

void DragReporterTest::sceneDeletedFirst()
{
    auto scene = std::make_unique<QGraphicsScene>();
    DragReporter reporter(scene.get());
    QSignalSpy reports(&reporter, &DragReporter::framesDragged);
    const QPointer<AbstractDecorator> frame(newFrame(Frame::Resize, new RecordingChild));
    scene->addItem(frame);
    const QPointF from(50.0, 25.0);
    sendToScene(*scene, QEvent::GraphicsSceneMousePress, from, from);
    QCOMPARE(scene->mouseGrabberItem(), frame.data());
    sendToScene(*scene, QEvent::GraphicsSceneMouseMove, QPointF(60.0, 30.0), from);
    scene.reset();
    QVERIFY(!frame);
    QCoreApplication::processEvents();
    QCOMPARE(reports.count(), 0);
}

/// Any way through presses, moves, lost mice and releases.
void DragReporterTest::recordIsAlwaysTrue()
{
    QRandomGenerator dice(11);
    Stage stage;
    bool isDown = false;
    int checks = 0;
    for (int step = 0; step < 1500; ++step) {
        const int frame = dice.bounded(stage.frames.size());
        if (!isDown) {
            for (const Framed &each : qAsConst(stage.frames))
                each.frame->setSelected(dice.bounded(2));
            for (int i = 0; i < stage.frames.size(); ++i) // or they wander off
                QVERIFY(stage.view.rect().contains(stage.view.mapFromScene(stage.middleOf(i))));
            stage.mouse.press(dice.bounded(2) ? centreOnScene(*stage.handleOf(frame))
                                              : stage.middleOf(frame));
            isDown = true;
            continue;
        }
        switch (dice.bounded(4)) {
        case 0:
            stage.mouse.release();
            isDown = false;
            break;
        case 1:
            losses().at(dice.bounded(losses().size())).action(*stage.frames.at(frame).frame);
            break;
        default:
            // Near the middle of the view.
            stage.mouse.moveTo(QPointF(dice.bounded(-60, 60), dice.bounded(-60, 60)));
            break;
        }
        if (stage.scene.mouseGrabberItem())
            continue;
        QVERIFY2(stage.isRecordTrue(), qPrintable(QString::number(step)));
        ++checks;
    }
    QVERIFY(checks > 300);
    QVERIFY(stage.reports > 100);
}

QTEST_MAIN(DragReporterTest)
#include "tst_dragreporter.moc"
