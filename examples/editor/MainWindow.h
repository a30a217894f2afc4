// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Editor.h"
#include "Player.h"

#include <QMainWindow>

#include <functional>

class CanvasView;
class PngExport;
class PropertyPanel;
class QFileDialog;
class QLabel;
class TemplateList;
class TimelineBar;

/// The editor's window: what the user sees around the canvas, and everything that has to do with
/// files. Dialogs never block: each goes on with what it is for when the user has answered.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(const QString &templateFolder, QWidget *parent = nullptr);
    ~MainWindow() override;

    Editor *editor();
    CanvasView *view() const;
    Player *player();

    /// The file that the project is saved to; empty as long as there is none.
    QString projectPath() const;

    /// \name Files
    /// What fails is shown to the user and changes nothing.
    /// @{
    bool addTemplate(const QString &path);
    bool openProject(const QString &path);
    bool saveProject(const QString &path);
    void exportFrames(const QString &folder);
    /// @}

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QAction *makeAction(const QString &name, const QString &text, const QString &tip,
                        const QKeySequence &shortcut, const std::function<void()> &run);
    void makeFileMenu();
    void makeEditMenu();
    void makeTitleMenu();
    void makeViewMenu();
    QList<QAction *> makePlayMenu();
    void makeDocks(const QString &templateFolder);
    void makeToolBar();
    void makeTimeline(const QList<QAction *> &buttons);

    void newProject();
    void askForTemplate();
    void askForProject();
    void askWhereToSave(const std::function<void()> &then);
    void askWhereToExport();
    void save(const std::function<void()> &then);
    void offerToSave(const std::function<void()> &then);
    void openDialog(QFileDialog *dialog, const std::function<void(const QString &)> &chosen);
    void showFailure(const QString &what, const QString &why);
    void setProjectPath(const QString &path);
    void followExport(PngExport *exporting);
    void showSelection();

    TitleCanvas m_canvas;
    Editor m_editor;
    Player m_player;
    CanvasView *m_view;
    TemplateList *m_templates = nullptr;
    PropertyPanel *m_properties = nullptr;
    TimelineBar *m_timeline = nullptr;
    QLabel *m_zoomLabel = nullptr;
    QList<QAction *> m_selectionActions; // of use only while something is selected
    QString m_projectPath;
    bool m_mayClose = false;
};
