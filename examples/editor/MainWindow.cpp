// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MainWindow.h"

#include "CanvasScene.h"
#include "CanvasView.h"
#include "ProjectFile.h"
#include "PropertyPanel.h"
#include "TemplateList.h"
#include "Timeline.h"
#include "TimelineBar.h"

#include <Failure.h>
#include <TitleText.h>

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>

namespace {

QString projectSuffix()
{
    return QStringLiteral("titles");
}

} // namespace

MainWindow::MainWindow(const QString &templateFolder, QWidget *parent)
    : QMainWindow(parent), m_editor(&m_canvas), m_player(m_canvas.sceneHelper()),
      m_view(new CanvasView(&m_canvas, this))
{
    setCentralWidget(m_view);
    makeFileMenu();
    makeEditMenu();
    makeTitleMenu();
    const QList<QAction *> playActions = makePlayMenu();
    makeViewMenu();
    makeDocks(templateFolder);
    makeToolBar();
    makeTimeline(playActions);

    connect(m_view, &CanvasView::nudged, &m_editor, &Editor::nudge);
    connect(m_view, &CanvasView::filesDropped, this, [this](const QStringList &paths) {
        for (const QString &path : paths)
            addTemplate(path);
    });
    connect(&m_canvas, &TitleCanvas::selectionChanged, this, &MainWindow::showSelection);
    connect(&m_canvas, &TitleCanvas::titlesChanged, this, &MainWindow::showSelection);
    connect(m_editor.undoStack(), &QUndoStack::cleanChanged, this,
            [this](bool clean) { setWindowModified(!clean); });
    setProjectPath(QString());
    showSelection();
    resize(1280, 800);
    m_view->setFocus();
}

MainWindow::~MainWindow()
{
    m_canvas.disconnect(this);
    m_editor.undoStack()->disconnect(this);
}

Editor *MainWindow::editor()
{
    return &m_editor;
}

CanvasView *MainWindow::view() const
{
    return m_view;
}

Player *MainWindow::player()
{
    return &m_player;
}

QString MainWindow::projectPath() const
{
    return m_projectPath;
}

QAction *MainWindow::makeAction(const QString &name, const QString &text, const QString &tip,
                                const QKeySequence &shortcut, const std::function<void()> &run)
{
    auto *action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    const QString keys = shortcut.toString(QKeySequence::NativeText);
    action->setToolTip(keys.isEmpty() ? tip : tr("%1 (%2)").arg(tip, keys));
    action->setStatusTip(tip);
    connect(action, &QAction::triggered, this, run);
    return action;
}

void MainWindow::makeFileMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&File"));
    menu->addAction(makeAction(QStringLiteral("new"), tr("&New Project"),
                               tr("Begin with an empty canvas"), QKeySequence::New,
                               [this] { offerToSave([this] { newProject(); }); }));
    menu->addAction(makeAction(QStringLiteral("openProject"), tr("&Open Project…"),
                               tr("Go on with a saved project"), QKeySequence::Open,
                               [this] { offerToSave([this] { askForProject(); }); }));
    menu->addAction(makeAction(QStringLiteral("save"), tr("&Save Project"), tr("Save the project"),
                               QKeySequence::Save, [this] { save([] {}); }));
    menu->addAction(makeAction(QStringLiteral("saveAs"), tr("Save Project &As…"),
                               tr("Save the project to another file"),
                               QKeySequence(tr("Ctrl+Shift+S")),
                               [this] { askWhereToSave([] {}); }));
    menu->addSeparator();
    menu->addAction(makeAction(QStringLiteral("openTemplate"), tr("Open &Template…"),
                               tr("Put an SVG file on the canvas"), QKeySequence(tr("Ctrl+T")),
                               [this] { askForTemplate(); }));
    menu->addAction(makeAction(QStringLiteral("export"), tr("&Export Frames…"),
                               tr("Save every frame of the canvas as a PNG file"),
                               QKeySequence(tr("Ctrl+E")), [this] { askWhereToExport(); }));
    menu->addSeparator();
    menu->addAction(makeAction(QStringLiteral("quit"), tr("&Quit"), tr("Close the editor"),
                               QKeySequence::Quit, [this] { close(); }));
}

void MainWindow::makeEditMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Edit"));
    QAction *undo = makeAction(QStringLiteral("undo"), tr("&Undo"), tr("Take the last step back"),
                               QKeySequence::Undo, [this] { m_editor.undo(); });
    QAction *redo =
            makeAction(QStringLiteral("redo"), tr("&Redo"), tr("Do again what was taken back"),
                       QKeySequence::Redo, [this] { m_editor.redo(); });
    const QUndoStack *stack = m_editor.undoStack();
    connect(stack, &QUndoStack::undoTextChanged, undo,
            [undo](const QString &text) { undo->setText(tr("&Undo %1").arg(text)); });
    connect(stack, &QUndoStack::redoTextChanged, redo,
            [redo](const QString &text) { redo->setText(tr("&Redo %1").arg(text)); });
    menu->addActions({undo, redo});
    menu->addSeparator();
    const auto addForSelection = [this, menu](const char *name, const QString &text,
                                              const QString &tip, const QKeySequence &shortcut,
                                              void (Editor::*slot)()) {
        QAction *action = makeAction(QString::fromLatin1(name), text, tip, shortcut,
                                     [this, slot] { (m_editor.*slot)(); });
        menu->addAction(action);
        m_selectionActions.append(action);
    };
    addForSelection("cut", tr("Cu&t"), tr("Move what is selected to the clipboard"),
                    QKeySequence::Cut, &Editor::cutSelected);
    addForSelection("copy", tr("&Copy"), tr("Copy what is selected to the clipboard"),
                    QKeySequence::Copy, &Editor::copySelected);
    menu->addAction(makeAction(QStringLiteral("paste"), tr("&Paste"),
                               tr("Add the titles on the clipboard"), QKeySequence::Paste,
                               [this] { m_editor.paste(); }));
    addForSelection("duplicate", tr("&Duplicate"), tr("Add a copy of what is selected"),
                    QKeySequence(tr("Ctrl+D")), &Editor::duplicateSelected);
    addForSelection("delete", tr("De&lete"), tr("Delete what is selected"), QKeySequence::Delete,
                    &Editor::deleteSelected);
    menu->addSeparator();
    menu->addAction(makeAction(QStringLiteral("selectAll"), tr("Select &All"),
                               tr("Select all titles"), QKeySequence::SelectAll,
                               [this] { m_editor.selectAll(); }));
    menu->addAction(makeAction(QStringLiteral("selectNext"), tr("Select &Next"),
                               tr("Select the next title, from the lowest one to the highest"),
                               QKeySequence(tr("Ctrl+Tab")), [this] { m_editor.selectNext(); }));
}

void MainWindow::makeTitleMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Title"));
    menu->addAction(makeAction(QStringLiteral("addText"), tr("Add Te&xt"),
                               tr("Put a text title on the canvas"),
                               QKeySequence(tr("Ctrl+Shift+T")), [this] { m_editor.addText(); }));
    menu->addSeparator();
    const auto addLevel = [this, menu](const char *name, const QString &text, const QString &tip,
                                       const QString &shortcut, Editor::Level level) {
        QAction *action = makeAction(QString::fromLatin1(name), text, tip, QKeySequence(shortcut),
                                     [this, level] { m_editor.moveTo(level); });
        menu->addAction(action);
        m_selectionActions.append(action);
    };
    addLevel("toFront", tr("Bring to &Front"), tr("Move in front of all other titles"),
             tr("Ctrl+Shift+Up"), Editor::Highest);
    addLevel("raise", tr("&Raise"), tr("Move in front of the next title"), tr("Ctrl+Up"),
             Editor::Higher);
    addLevel("lower", tr("&Lower"), tr("Move behind the next title"), tr("Ctrl+Down"),
             Editor::Lower);
    addLevel("toBack", tr("Send to &Back"), tr("Move behind all other titles"),
             tr("Ctrl+Shift+Down"), Editor::Lowest);
}

QList<QAction *> MainWindow::makePlayMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Play"));
    QAction *toStart =
            makeAction(QStringLiteral("toStart"), tr("To the &Start"), tr("Show the first frame"),
                       QKeySequence(tr("Home")), [this] { m_player.toStart(); });
    QAction *back =
            makeAction(QStringLiteral("stepBack"), tr("Step &Back"), tr("Show the frame before"),
                       QKeySequence(tr(",")), [this] { m_player.stepBack(); });
    QAction *play = makeAction(QStringLiteral("play"), tr("&Play"), tr("Play and pause"),
                               QKeySequence(tr("Space")),
                               [this] { m_player.setPlaying(!m_player.isPlaying()); });
    QAction *forward = makeAction(QStringLiteral("stepForward"), tr("Step &Forward"),
                                  tr("Show the frame after"), QKeySequence(tr(".")),
                                  [this] { m_player.stepForward(); });
    QAction *toEnd =
            makeAction(QStringLiteral("toEnd"), tr("To the &End"), tr("Show the last frame"),
                       QKeySequence(tr("End")), [this] { m_player.toEnd(); });
    toStart->setIcon(style()->standardIcon(QStyle::SP_MediaSkipBackward));
    back->setIcon(style()->standardIcon(QStyle::SP_MediaSeekBackward));
    play->setIcon(style()->standardIcon(QStyle::SP_MediaPlay));
    forward->setIcon(style()->standardIcon(QStyle::SP_MediaSeekForward));
    toEnd->setIcon(style()->standardIcon(QStyle::SP_MediaSkipForward));
    connect(&m_player, &Player::playingChanged, this, [this, play](bool playing) {
        play->setIcon(
                style()->standardIcon(playing ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
        play->setText(playing ? tr("&Pause") : tr("&Play"));
    });
    const QList<QAction *> actions{toStart, back, play, forward, toEnd};
    menu->addActions(actions);
    return actions;
}

void MainWindow::makeViewMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&View"));
    menu->addAction(makeAction(QStringLiteral("zoomIn"), tr("Zoom &In"), tr("Zoom in"),
                               QKeySequence::ZoomIn, [this] { m_view->zoomIn(); }));
    menu->addAction(makeAction(QStringLiteral("zoomOut"), tr("Zoom &Out"), tr("Zoom out"),
                               QKeySequence::ZoomOut, [this] { m_view->zoomOut(); }));
    menu->addAction(makeAction(QStringLiteral("actualSize"), tr("&Actual Size"),
                               tr("A pixel of the canvas for each pixel of the screen"),
                               QKeySequence(tr("Ctrl+1")), [this] { m_view->setZoom(1.0); }));
    menu->addAction(makeAction(QStringLiteral("fit"), tr("&Fit to Window"),
                               tr("Show the whole canvas"), QKeySequence(tr("Ctrl+0")),
                               [this] { m_view->fitToWindow(); }));
}

void MainWindow::makeDocks(const QString &templateFolder)
{
    const auto addDock = [this](const char *name, const QString &title, QWidget *widget,
                                Qt::DockWidgetArea area) {
        auto *dock = new QDockWidget(title, this);
        dock->setObjectName(QString::fromLatin1(name));
        dock->setWidget(widget);
        dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
        addDockWidget(area, dock);
    };
    m_templates = new TemplateList(this);
    m_templates->setFolder(templateFolder);
    m_templates->setMinimumWidth(208);
    addDock("templates", tr("Templates"), m_templates, Qt::LeftDockWidgetArea);
    connect(m_templates, &TemplateList::chosen, this, &MainWindow::addTemplate);

    m_properties = new PropertyPanel(this);
    addDock("properties", tr("Properties"), m_properties, Qt::RightDockWidgetArea);
    connect(m_properties, &PropertyPanel::colorPicked, &m_editor, &Editor::setColor);
    connect(m_properties, &PropertyPanel::speedEdited, &m_editor, &Editor::setSpeed);
    connect(m_properties, &PropertyPanel::textFormatEdited, &m_editor, &Editor::setTextFormat);

    m_zoomLabel = new QLabel(this);
    statusBar()->addPermanentWidget(m_zoomLabel);
    connect(m_view, &CanvasView::zoomChanged, this,
            [this](qreal zoom) { m_zoomLabel->setText(tr("%1 %").arg(qRound(zoom * 100.0))); });
}

void MainWindow::makeToolBar()
{
    QToolBar *bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("tools"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto add = [this, bar](const char *name, const QString &shortText) {
        QAction *action = findChild<QAction *>(QString::fromLatin1(name));
        action->setIconText(shortText);
        bar->addAction(action);
    };
    add("openTemplate", tr("Open…"));
    add("addText", tr("Text"));
    bar->addSeparator();
    add("undo", tr("Undo"));
    add("redo", tr("Redo"));
    bar->addSeparator();
    add("duplicate", tr("Duplicate"));
    add("delete", tr("Delete"));
    add("raise", tr("Raise"));
    add("lower", tr("Lower"));
    bar->addSeparator();
    add("fit", tr("Fit"));
    add("export", tr("Export…"));
}

void MainWindow::makeTimeline(const QList<QAction *> &buttons)
{
    m_timeline = new TimelineBar(buttons, this);
    auto *bar = new QToolBar(tr("Timeline"), this);
    bar->setObjectName(QStringLiteral("timeline"));
    bar->setMovable(false);
    bar->addWidget(m_timeline);
    addToolBar(Qt::BottomToolBarArea, bar);
    connect(m_timeline, &TimelineBar::clipLengthEdited, &m_editor, &Editor::setClipLength);
    connect(m_timeline->timeline(), &Timeline::scrubbed, &m_player, [this](int ms) {
        m_player.setPlaying(false);
        m_player.setTime(ms);
    });
    connect(m_canvas.sceneHelper(), &SceneHelper::sceneTimeChanged, m_timeline,
            &TimelineBar::setTime);
    connect(&m_canvas, &TitleCanvas::clipLengthChanged, m_timeline, &TimelineBar::setClipLength);
    connect(&m_canvas, &TitleCanvas::clipLengthChanged, &m_player, &Player::setClipLength);
    m_timeline->setClipLength(m_canvas.clipLength());
    m_player.setClipLength(m_canvas.clipLength());
}

void MainWindow::showSelection()
{
    QVector<Title> titles;
    for (const TitleId id : m_canvas.selection())
        titles.append(m_canvas.title(id));
    m_properties->showTitles(titles);
    for (QAction *action : qAsConst(m_selectionActions))
        action->setEnabled(!titles.isEmpty());
}

void MainWindow::setProjectPath(const QString &path)
{
    m_projectPath = path;
    const QString name = path.isEmpty() ? tr("Untitled") : QFileInfo(path).fileName();
    setWindowTitle(tr("%1[*] - Title Editor").arg(name));
}

void MainWindow::showFailure(const QString &what, const QString &why)
{
    auto *box = new QMessageBox(QMessageBox::Warning, windowTitle(), what, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(why);
    box->open();
}

bool MainWindow::addTemplate(const QString &path)
{
    QString error;
    try {
        if (m_editor.addSvg(QFileInfo(path).completeBaseName(), readTitleText(path), &error))
            return true;
    } catch (const Failure &failure) {
        error = failure.reason();
    }
    showFailure(tr("%1 can't be shown.").arg(QFileInfo(path).fileName()), error);
    return false;
}

bool MainWindow::openProject(const QString &path)
{
    QString error;
    const auto project = readProject(path, &error);
    if (!project) {
        showFailure(tr("%1 can't be opened.").arg(QFileInfo(path).fileName()), error);
        return false;
    }
    m_player.setPlaying(false);
    m_editor.setProject(*project);
    setProjectPath(path);
    m_view->fitToWindow();
    return true;
}

bool MainWindow::saveProject(const QString &path)
{
    m_canvas.finishEditing();
    QString error;
    if (!writeProject(m_canvas.project(), path, &error)) {
        showFailure(tr("%1 can't be saved.").arg(QFileInfo(path).fileName()), error);
        return false;
    }
    m_editor.undoStack()->setClean();
    setProjectPath(path);
    return true;
}

void MainWindow::newProject()
{
    m_player.setPlaying(false);
    m_editor.setProject(Project());
    setProjectPath(QString());
    m_view->fitToWindow();
}

void MainWindow::openDialog(QFileDialog *dialog, const std::function<void(const QString &)> &chosen)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::fileSelected, this, chosen);
    dialog->open();
}

void MainWindow::askForTemplate()
{
    auto *dialog = new QFileDialog(this, tr("Open Template"), QString(), tr("SVG (*.svg)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    openDialog(dialog, [this](const QString &path) { addTemplate(path); });
}

void MainWindow::askForProject()
{
    auto *dialog = new QFileDialog(this, tr("Open Project"), QString(),
                                   tr("Projects (*.%1)").arg(projectSuffix()));
    dialog->setFileMode(QFileDialog::ExistingFile);
    openDialog(dialog, [this](const QString &path) { openProject(path); });
}

void MainWindow::save(const std::function<void()> &then)
{
    if (m_projectPath.isEmpty())
        askWhereToSave(then);
    else if (saveProject(m_projectPath))
        then();
}

void MainWindow::askWhereToSave(const std::function<void()> &then)
{
    auto *dialog = new QFileDialog(this, tr("Save Project"), QString(),
                                   tr("Projects (*.%1)").arg(projectSuffix()));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(projectSuffix());
    openDialog(dialog, [this, then](const QString &path) {
        if (saveProject(path))
            then();
    });
}

void MainWindow::offerToSave(const std::function<void()> &then)
{
    m_canvas.finishEditing();
    if (m_editor.undoStack()->isClean()) {
        then();
        return;
    }
    auto *box = new QMessageBox(
            QMessageBox::Question, windowTitle(), tr("The project has unsaved changes."),
            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QMessageBox::finished, this, [this, then](int answer) {
        if (answer == QMessageBox::Save)
            save(then);
        else if (answer == QMessageBox::Discard)
            then();
    });
    box->open();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    m_canvas.finishEditing();
    if (m_mayClose || m_editor.undoStack()->isClean()) {
        event->accept();
        return;
    }
    event->ignore();
    offerToSave([this] {
        m_mayClose = true;
        close();
    });
}
