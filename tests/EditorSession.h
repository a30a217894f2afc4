// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "WarningFreeTest.h"

#include <CanvasView.h>
#include <MainWindow.h>
#include <ProjectFile.h>

#include <Scene/Decorator/AbstractDecorator.h>
#include <Scene/Decorator/ResizeHandleItem.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QMouseEvent>

//! The platform without a screen says what it can't do (raise windows, grab the mouse) each time it
//! is asked to. That is no fault of the editor's: such messages are dropped as long as this lives.
class PlatformWithoutScreen
{
public:
    PlatformWithoutScreen() { previous() = qInstallMessageHandler(handle); }
    ~PlatformWithoutScreen() { qInstallMessageHandler(previous()); }

private:
    Q_DISABLE_COPY(PlatformWithoutScreen)

    static QtMessageHandler &previous()
    {
        static QtMessageHandler handler = nullptr;
        return handler;
    }

    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (!message.startsWith(QLatin1String("This plugin does not support ")))
            previous()(type, context, message);
    }
};

//! An editor's window that a user sits at: two units of the canvas are one pixel.
class EditorSession
{
public:
    EditorSession() : window(QStringLiteral(TITLESCENE_TEST_DATA "/editor-templates"))
    {
        window.resize(1900, 1100);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        view().setZoom(0.5);
        view().centerOn(960.0, 540.0);
    }

    CanvasView &view() { return *window.view(); }
    TitleCanvas &canvas() { return *window.editor()->canvas(); }
    QUndoStack &undoStack() { return *window.editor()->undoStack(); }
    QByteArray json() { return toJson(canvas().project()); }
    TitleId id(int index) { return canvas().order().at(index); }
    Title title(int index) { return canvas().title(id(index)); }
    Placement placement(int index) { return title(index).placement; }

    template <typename Widget>
    Widget *find(const char *name)
    {
        return window.findChild<Widget *>(QString::fromLatin1(name));
    }

    //! Adds the test template by a double click on the list.
    void addBar()
    {
        auto *list = window.findChild<QListWidget *>();
        const QPoint place = list->visualItemRect(list->item(0)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }

    //! The keys of an action's shortcut.
    void press(const char *action)
    {
        const QKeySequence keys = find<QAction>(action)->shortcut();
        QVERIFY2(!keys.isEmpty(), action);
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        view().setFocus();
        QTest::keySequence(&window, keys);
    }

    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(view().viewport(), Qt::Key(key), modifiers);
    }

    void send(QEvent::Type type, const QPointF &scenePos, Qt::MouseButton button,
              Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
    {
        const QPoint pos = view().mapFromScene(scenePos);
        QMouseEvent event(type, pos, view().viewport()->mapToGlobal(pos), button, buttons,
                          modifiers);
        QApplication::sendEvent(view().viewport(), &event);
    }

    void mousePress(const QPointF &scenePos, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        // A frame asks where the cursor is to know which handle is meant.
        QCursor::setPos(view().viewport()->mapToGlobal(view().mapFromScene(scenePos)));
        QCoreApplication::processEvents();
        send(QEvent::MouseButtonPress, scenePos, Qt::LeftButton, Qt::LeftButton, modifiers);
    }

    void mouseMove(const QPointF &scenePos, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        send(QEvent::MouseMove, scenePos, Qt::NoButton, Qt::LeftButton, modifiers);
    }

    void mouseRelease(const QPointF &scenePos, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        send(QEvent::MouseButtonRelease, scenePos, Qt::LeftButton, Qt::NoButton, modifiers);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void click(const QPointF &scenePos)
    {
        mousePress(scenePos);
        mouseRelease(scenePos);
    }

    void doubleClick(const QPointF &scenePos)
    {
        click(scenePos);
        send(QEvent::MouseButtonDblClick, scenePos, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        mouseRelease(scenePos);
    }

    //! Over two places on the way.
    void drag(const QPointF &from, const QPointF &by,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mousePress(from, modifiers);
        mouseMove(from + by / 4.0, modifiers);
        mouseMove(from + by / 2.0, modifiers);
        mouseMove(from + by, modifiers);
        mouseRelease(from + by, modifiers);
    }

    //! The centres of the handles that a title shows, on the scene.
    QVector<QPointF> handles(int index)
    {
        QVector<QPointF> centres;
        for (const QGraphicsItem *item : canvas().frame(id(index))->childItems()) {
            if (const auto *handle = dynamic_cast<const ResizeHandleItem *>(item))
                centres.append(handle->mapToScene(handle->rect().center()));
        }
        return centres;
    }

    //! The handle that is nearest to a place.
    QPointF handleNear(int index, const QPointF &scenePos)
    {
        QPointF best(1e9, 1e9);
        for (const QPointF &centre : handles(index)) {
            if (QLineF(centre, scenePos).length() < QLineF(best, scenePos).length())
                best = centre;
        }
        return best;
    }

    //! Answers the file dialog that is open.
    void answerFileDialog(const QString &path)
    {
        auto *dialog = window.findChild<QFileDialog *>();
        QVERIFY(dialog);
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name->selectAll();
        QTest::keyClicks(name, path);
        const auto buttons = dialog->findChild<QDialogButtonBox *>()->buttons();
        for (QAbstractButton *button : buttons) {
            if (dialog->findChild<QDialogButtonBox *>()->buttonRole(button)
                == QDialogButtonBox::AcceptRole)
                QTest::mouseClick(button, Qt::LeftButton);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    //! The text of the message that is shown, which is then closed.
    QString closeMessage()
    {
        auto *box = window.findChild<QMessageBox *>();
        if (!box)
            return QString();
        const QString text = box->text() + QLatin1Char(' ') + box->informativeText();
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return text;
    }

private:
    const PlatformWithoutScreen m_platform;

public:
    MainWindow window;
};
