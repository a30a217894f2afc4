// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "TitleCanvas.h"

#include <QUndoCommand>

/// A title and its place in the order.
struct PlacedTitle
{
    int index;
    TitleId id;
    Title title;
};

/// Adds titles, and selects them.
class AddTitles : public QUndoCommand
{
public:
    /// \a titles have rising indices.
    AddTitles(TitleCanvas *canvas, const QString &what, const QVector<PlacedTitle> &titles);

    void redo() override;
    void undo() override;

private:
    TitleCanvas *m_canvas;
    QVector<PlacedTitle> m_titles;
};

class DeleteTitles : public QUndoCommand
{
public:
    /// \a titles have rising indices.
    DeleteTitles(TitleCanvas *canvas, const QString &what, const QVector<PlacedTitle> &titles);

    void redo() override;
    void undo() override;

private:
    TitleCanvas *m_canvas;
    QVector<PlacedTitle> m_titles;
};

/// Moves, sizes, turns, colours titles, or changes their text or speed.
class ChangeTitles : public QUndoCommand
{
public:
    /// Commands that have the same \a kind, other than -1, and change the same titles one after
    /// the other become one.
    ChangeTitles(TitleCanvas *canvas, const QString &what, const QVector<TitleChange> &changes,
                 int kind = -1);

    void redo() override;
    void undo() override;
    int id() const override;
    bool mergeWith(const QUndoCommand *other) override;

private:
    TitleCanvas *m_canvas;
    QVector<TitleChange> m_changes;
    int m_kind;
};

class ReorderTitles : public QUndoCommand
{
public:
    ReorderTitles(TitleCanvas *canvas, const QString &what, const QVector<TitleId> &after);

    void redo() override;
    void undo() override;

private:
    TitleCanvas *m_canvas;
    QVector<TitleId> m_before;
    QVector<TitleId> m_after;
};

class ChangeClipLength : public QUndoCommand
{
public:
    ChangeClipLength(TitleCanvas *canvas, const QString &what, int after);

    void redo() override;
    void undo() override;

private:
    TitleCanvas *m_canvas;
    int m_before;
    int m_after;
};
