// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Commands.h"

#include <QTextCharFormat>
#include <QUndoStack>

/// What a user can do to the titles, each of it a command that can be undone.
class Editor : public QObject
{
    Q_OBJECT

public:
    explicit Editor(TitleCanvas *canvas, QObject *parent = nullptr);
    ~Editor() override;

    TitleCanvas *canvas() const;
    QUndoStack *undoStack();

    /// Begins anew, with nothing to undo.
    void setProject(const Project &project);

    /// False, with the reason in \a error, when the text can't be shown; then nothing changes.
    bool addSvg(const QString &name, const QString &svg, QString *error);

    /// Positions in the order, for moveTo().
    enum Level { Lowest, Lower, Higher, Highest };

public Q_SLOTS:
    void addText();
    void deleteSelected();
    void duplicateSelected();
    void cutSelected();
    void copySelected();
    void paste();
    void selectAll();
    void selectNext();
    void nudge(const QPointF &offset);
    void moveTo(Editor::Level level);

    /// The lines of SVG titles, the letters of text titles. An invalid colour gives SVG titles the
    /// colours of their templates.
    void setColor(const QColor &color);
    void setSpeed(double speed);
    void setTextFormat(const QTextCharFormat &format);
    void setClipLength(int ms);

    void undo();
    void redo();

private:
    enum MergeKind { NeverMerge = -1, MergeNudges = 1, MergeSpeeds };

    void push(QUndoCommand *command);
    void add(const QString &what, QVector<Title> titles);
    void deleteSelected(const QString &what);
    QVector<PlacedTitle> selectedTitles() const;
    template <typename Edit>
    void changeSelected(const QString &what, MergeKind kind, Edit edit);

    TitleCanvas *m_canvas;
    QUndoStack m_undoStack;
};
