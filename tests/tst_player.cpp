// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <PlayerWindow.h>

#include <QAction>
#include <QApplication>
#include <QGraphicsView>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QSlider>
#include <QToolBar>
#include <QToolButton>

#include <memory>

// The example player, used as a user would: keys and mouse into its window, and what it shows.

namespace {

const QColor red(Qt::red);
const QColor blue(Qt::blue);

/// The title lasts 3 s; the clip has a second more.
constexpr int clipLength = 4000;

/// How often a widget has painted itself on the screen.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget &widget) { widget.installEventFilter(this); }

    int count() const { return m_count; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++m_count;
        return false;
    }

private:
    int m_count = 0;
};

} // namespace

class PlayerTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void showsTheFirstFrame();
    void showsTheWholeTitle();
    void showsNothingBesideTheCanvas();
    void stepsByArrowKeys();
    void stepsStopAtTheEnds();
    void repaintsForEveryStep();
    void sliderLeadsToAnyTime();
    void spacePlaysAndPauses();
    void playButtonPlaysAndPauses();
    void playsToTheEnd();
    void playsFromTheStartAgain();
    void movingTheSliderPauses();
    void steppingPauses();
    void actionsTellTheirShortcuts();
    void menuQuits();
    void playsATitleThatStandsStill();

private:
    void showWindow(const QString &svgText);
    QSlider &slider() const { return *m_window->findChild<QSlider *>(); }
    QString timeText() const
    {
        return m_window->findChild<QToolBar *>()->findChild<QLabel *>()->text();
    }
    QAction *action(const QKeySequence &shortcut) const;
    QPoint inWindow(const QPointF &titlePoint) const;
    QColor shown(const QPointF &titlePoint) const;
    QColor background() const;
    void compareBar(int left) const;

    std::unique_ptr<PlayerWindow> m_window;
};

void PlayerTest::initTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void PlayerTest::init()
{
    showWindow(readTestData(QStringLiteral("item-player.svg")));
}

void PlayerTest::showWindow(const QString &svgText)
{
    m_window = std::make_unique<PlayerWindow>(svgText);
    m_window->resize(500, 400);
    {
        const ExpectedWarning ofTheOffscreenPlatform(QStringLiteral("propagateSizeHints"));
        m_window->show();
    }
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void PlayerTest::cleanup()
{
    m_window.reset();
}

QAction *PlayerTest::action(const QKeySequence &shortcut) const
{
    const QList<QAction *> actions = m_window->findChildren<QAction *>();
    for (QAction *candidate : actions) {
        if (candidate->shortcut() == shortcut)
            return candidate;
    }
    return nullptr;
}

QPoint PlayerTest::inWindow(const QPointF &titlePoint) const
{
    const auto *view = m_window->findChild<QGraphicsView *>();
    return view->viewport()->mapTo(m_window.get(), view->mapFromScene(titlePoint));
}

/// The colour of a point of the title in a picture of the whole window.
QColor PlayerTest::shown(const QPointF &titlePoint) const
{
    return m_window->grab().toImage().pixelColor(inWindow(titlePoint));
}

QColor PlayerTest::background() const
{
    return QColor(m_window->findChild<QGraphicsView *>()->backgroundBrush().color().rgb());
}

/// The bar covers the 20 units from its left edge, and nothing beside them.
void PlayerTest::compareBar(int left) const
{
    QCOMPARE(shown(QPointF(left + 2, 45)), red);
    QCOMPARE(shown(QPointF(left + 18, 45)), red);
    QCOMPARE(shown(QPointF(left + 23, 45)), blue);
    if (left >= 3)
        QCOMPARE(shown(QPointF(left - 3, 45)), blue);
}

void PlayerTest::showsTheFirstFrame()
{
    QVERIFY(!m_window->isPlaying());
    QCOMPARE(slider().minimum(), 0);
    QCOMPARE(slider().maximum(), clipLength);
    QCOMPARE(slider().value(), 0);
    QCOMPARE(timeText(), QStringLiteral("0.00 / 4.00 s"));
    compareBar(0);
}

/// At every size of the window; the hole shows the view's background.
void PlayerTest::showsTheWholeTitle()
{
    for (const QSize &size : {QSize(500, 400), QSize(300, 600), QSize(900, 300)}) {
        m_window->resize(size);
        QCoreApplication::processEvents();
        QCOMPARE(m_window->size(), size);
        QCOMPARE(shown(QPointF(3, 3)), red);
        QCOMPARE(shown(QPointF(117, 3)), blue);
        QCOMPARE(shown(QPointF(117, 87)), blue);
        QCOMPARE(shown(QPointF(123, 87)), background());
        QCOMPARE(shown(QPointF(157, 87)), background());
        const QRect canvas(inWindow(QPointF(0, 0)), inWindow(QPointF(160, 90)));
        QVERIFY(m_window->centralWidget()->geometry().contains(canvas));
        QVERIFY(canvas.width() > 0.8 * m_window->centralWidget()->width()
                || canvas.height() > 0.8 * m_window->centralWidget()->height());
    }
}

/// In the room that a tall window has below the title.
void PlayerTest::showsNothingBesideTheCanvas()
{
    showWindow(QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 160 90\">"
                              "<rect width=\"160\" height=\"120\" fill=\"#ff0000\"/></svg>"));
    m_window->resize(300, 600);
    QCoreApplication::processEvents();
    QVERIFY(m_window->centralWidget()->geometry().contains(inWindow(QPointF(60, 110))));
    QCOMPARE(shown(QPointF(60, 80)), red);
    QCOMPARE(shown(QPointF(60, 110)), background());
}

void PlayerTest::stepsByArrowKeys()
{
    const QImage first = m_window->grab().toImage();
    QTest::keyClick(m_window.get(), Qt::Key_Right);
    QCOMPARE(slider().value(), 40);
    QCOMPARE(timeText(), QStringLiteral("0.04 / 4.00 s"));
    QVERIFY(m_window->grab().toImage() != first);
    for (int frame = 2; frame <= 25; ++frame)
        QTest::keyClick(m_window.get(), Qt::Key_Right);
    QCOMPARE(slider().value(), 1000);
    compareBar(40);

    QTest::keyClick(m_window.get(), Qt::Key_Left);
    QCOMPARE(slider().value(), 960);
    for (int frame = 0; frame < 24; ++frame)
        QTest::keyClick(m_window.get(), Qt::Key_Left);
    QCOMPARE(slider().value(), 0);
    COMPARE_PICTURES(m_window->grab().toImage(), first, 0);
    QVERIFY(!m_window->isPlaying());
}

void PlayerTest::stepsStopAtTheEnds()
{
    QTest::keyClick(m_window.get(), Qt::Key_Left);
    QCOMPARE(slider().value(), 0);
    QTest::keyClick(&slider(), Qt::Key_End);
    QTest::keyClick(m_window.get(), Qt::Key_Right);
    QCOMPARE(slider().value(), clipLength);
}

void PlayerTest::repaintsForEveryStep()
{
    QWidget *viewport = m_window->findChild<QGraphicsView *>()->viewport();
    // What the new window still has to paint comes first.
    QCoreApplication::processEvents();
    const PaintCounter paints(*viewport);
    QCoreApplication::processEvents();
    QCOMPARE(paints.count(), 0);
    for (int step = 1; step <= 3; ++step) {
        QTest::keyClick(m_window.get(), Qt::Key_Right);
        QTRY_COMPARE(paints.count(), step);
    }
}

void PlayerTest::sliderLeadsToAnyTime()
{
    QTest::keyClick(&slider(), Qt::Key_PageUp);
    QCOMPARE(slider().value(), 1000);
    compareBar(40);

    // The title is complete from 2 s to 3 s of the clip, and its closing part ends with the clip.
    slider().setValue(2000);
    compareBar(80);
    slider().setValue(3000);
    QCOMPARE(timeText(), QStringLiteral("3.00 / 4.00 s"));
    compareBar(80);
    QTest::keyClick(&slider(), Qt::Key_End);
    QCOMPARE(slider().value(), clipLength);
    QCOMPARE(shown(QPointF(90, 45)), blue);

    // A click beside the handle leads a page back.
    QTest::mouseClick(&slider(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(slider().width() / 4, slider().height() / 2));
    QCOMPARE(slider().value(), 3000);
    compareBar(80);
}

/// With an hour to play, the end does not come first on a slow machine.
void PlayerTest::spacePlaysAndPauses()
{
    showWindow(QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 160 90\">"
                              "<rect width=\"80\" height=\"90\" fill=\"#ff0000\">"
                              "<animate attributeName=\"x\" dur=\"3600s\""
                              " values=\"0;1000000\"/></rect></svg>"));
    const int hour = 3600 * 1000;
    QCOMPARE(slider().maximum(), hour + 1000);
    QCOMPARE(shown(QPointF(1, 45)), red);
    QTest::keyClick(m_window.get(), Qt::Key_Space);
    QVERIFY(m_window->isPlaying());
    QCOMPARE(action(Qt::Key_Space)->iconText(), QStringLiteral("Pause"));
    QTRY_VERIFY(slider().value() >= 120);

    QTest::keyClick(m_window.get(), Qt::Key_Space);
    QVERIFY(!m_window->isPlaying());
    QCOMPARE(action(Qt::Key_Space)->iconText(), QStringLiteral("Play"));
    const int paused = slider().value();
    QVERIFY(paused < hour);
    QCOMPARE(shown(QPointF(1, 45)), background());

    QTest::keyClick(m_window.get(), Qt::Key_Space);
    QTRY_VERIFY(slider().value() > paused);
}

void PlayerTest::playButtonPlaysAndPauses()
{
    const auto *controls = m_window->findChild<QToolBar *>();
    QWidget *button = controls->widgetForAction(action(Qt::Key_Space));
    QVERIFY(qobject_cast<QToolButton *>(button));
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(m_window->isPlaying());
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!m_window->isPlaying());

    QTest::mouseClick(controls->widgetForAction(action(Qt::Key_Right)), Qt::LeftButton);
    const int time = slider().value();
    QTest::mouseClick(controls->widgetForAction(action(Qt::Key_Left)), Qt::LeftButton);
    QCOMPARE(slider().value(), time - 40);
}

void PlayerTest::playsToTheEnd()
{
    slider().setValue(clipLength - 100);
    QTest::keyClick(m_window.get(), Qt::Key_Space);
    QTRY_VERIFY(!m_window->isPlaying());
    QCOMPARE(slider().value(), clipLength);
    QCOMPARE(action(Qt::Key_Space)->iconText(), QStringLiteral("Play"));
    QCOMPARE(shown(QPointF(90, 45)), blue);
}

void PlayerTest::playsFromTheStartAgain()
{
    slider().setValue(clipLength);
    QTest::keyClick(m_window.get(), Qt::Key_Space);
    QVERIFY(m_window->isPlaying());
    QCOMPARE(slider().value(), 0);
    compareBar(0);
    QTRY_VERIFY(slider().value() > 0);
}

void PlayerTest::movingTheSliderPauses()
{
    QTest::keyClick(m_window.get(), Qt::Key_Space);
    QTest::keyClick(&slider(), Qt::Key_End);
    QVERIFY(!m_window->isPlaying());
    QCOMPARE(slider().value(), clipLength);

    QTest::keyClick(m_window.get(), Qt::Key_Space);
    QVERIFY(m_window->isPlaying());
    QTest::mousePress(&slider(), Qt::LeftButton, Qt::NoModifier, QPoint(5, slider().height() / 2));
    QVERIFY(!m_window->isPlaying());
    QTest::mouseRelease(&slider(), Qt::LeftButton);
}

void PlayerTest::steppingPauses()
{
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right}) {
        m_window->play();
        QTest::keyClick(m_window.get(), key);
        QVERIFY(!m_window->isPlaying());
    }
}

void PlayerTest::actionsTellTheirShortcuts()
{
    const QPair<QKeySequence, QString> expected[] = {
            {Qt::Key_Left, QStringLiteral("Step Back (Left)")},
            {Qt::Key_Space, QStringLiteral("Play (Space)")},
            {Qt::Key_Right, QStringLiteral("Step Forward (Right)")}};
    for (const auto &entry : expected) {
        QVERIFY(action(entry.first));
        QCOMPARE(action(entry.first)->toolTip(), entry.second);
        QVERIFY(!action(entry.first)->icon().isNull());
    }
    m_window->play();
    QCOMPARE(action(Qt::Key_Space)->toolTip(), QStringLiteral("Pause (Space)"));
    QVERIFY(!slider().toolTip().isEmpty());
    QVERIFY(!slider().accessibleName().isEmpty());
}

void PlayerTest::menuQuits()
{
    QTest::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!m_window->isVisible());
}

void PlayerTest::playsATitleThatStandsStill()
{
    showWindow(readTestData(QStringLiteral("item-card.svg")));
    QCOMPARE(slider().maximum(), 1000);
    QCOMPARE(shown(QPointF(5, 5)), red);
    QTest::keyClick(m_window.get(), Qt::Key_Space);
    QTRY_COMPARE(slider().value(), 1000);
    QTRY_VERIFY(!m_window->isPlaying());
    QCOMPARE(shown(QPointF(5, 15)), blue);
}

QTEST_MAIN(PlayerTest)
#include "tst_player.moc"
