// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Commands.h"

namespace {

void insert(TitleCanvas *canvas, const QVector<PlacedTitle> &titles)
{
    QVector<TitleId> ids;
    for (const PlacedTitle &placed : titles) {
        canvas->insert(placed.index, placed.id, placed.title);
        ids.append(placed.id);
    }
    canvas->select(ids);
}

void remove(TitleCanvas *canvas, const QVector<PlacedTitle> &titles)
{
    for (const PlacedTitle &placed : titles)
        canvas->remove(placed.id);
}

} // namespace

AddTitles::AddTitles(TitleCanvas *canvas, const QString &what, const QVector<PlacedTitle> &titles)
    : QUndoCommand(what), m_canvas(canvas), m_titles(titles)
{
}

void AddTitles::redo()
{
    insert(m_canvas, m_titles);
}

void AddTitles::undo()
{
    remove(m_canvas, m_titles);
}

DeleteTitles::DeleteTitles(TitleCanvas *canvas, const QString &what,
                           const QVector<PlacedTitle> &titles)
    : QUndoCommand(what), m_canvas(canvas), m_titles(titles)
{
}

void DeleteTitles::redo()
{
    remove(m_canvas, m_titles);
}

void DeleteTitles::undo()
{
    insert(m_canvas, m_titles);
}

ChangeTitles::ChangeTitles(TitleCanvas *canvas, const QString &what,
                           const QVector<TitleChange> &changes, int kind)
    : QUndoCommand(what), m_canvas(canvas), m_changes(changes), m_kind(kind)
{
}

void ChangeTitles::redo()
{
    for (const TitleChange &change : qAsConst(m_changes))
        m_canvas->change(change.id, change.after);
}

void ChangeTitles::undo()
{
    for (const TitleChange &change : qAsConst(m_changes))
        m_canvas->change(change.id, change.before);
}

int ChangeTitles::id() const
{
    return m_kind;
}

bool ChangeTitles::mergeWith(const QUndoCommand *other)
{
    const auto &next = static_cast<const ChangeTitles &>(*other); // the ids are equal
    const auto isSameTitle = [](const TitleChange &a, const TitleChange &b) {
        return a.id == b.id;
    };
    if (!std::equal(m_changes.begin(), m_changes.end(), next.m_changes.begin(),
                    next.m_changes.end(), isSameTitle))
        return false;
    for (int i = 0; i < m_changes.size(); ++i)
        m_changes[i].after = next.m_changes[i].after;
    return true;
}

ReorderTitles::ReorderTitles(TitleCanvas *canvas, const QString &what,
                             const QVector<TitleId> &after)
    : QUndoCommand(what), m_canvas(canvas), m_before(canvas->order()), m_after(after)
{
}

void ReorderTitles::redo()
{
    m_canvas->setOrder(m_after);
}

void ReorderTitles::undo()
{
    m_canvas->setOrder(m_before);
}

ChangeClipLength::ChangeClipLength(TitleCanvas *canvas, const QString &what, int after)
    : QUndoCommand(what), m_canvas(canvas), m_before(canvas->clipLength()), m_after(after)
{
}

void ChangeClipLength::redo()
{
    m_canvas->setClipLength(m_after);
}

void ChangeClipLength::undo()
{
    m_canvas->setClipLength(m_before);
}
