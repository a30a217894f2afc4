// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Editor.h"

#include "TextFormat.h"
#include "TitleClipboard.h"
#include "TitleFactory.h"

#include <utility>

namespace {

const QPointF copyOffset(40.0, 40.0);

/// The order with the moved titles one place higher or lower; those at the end stay.
QVector<TitleId> stepped(QVector<TitleId> order, const QVector<TitleId> &moved, bool up)
{
    const int last = order.size() - 1;
    for (int i = 1; i <= last; ++i) {
        const int from = up ? last - i : i;
        const int to = up ? from + 1 : from - 1;
        if (moved.contains(order.at(from)) && !moved.contains(order.at(to)))
            std::swap(order[from], order[to]);
    }
    return order;
}

QVector<TitleId> without(const QVector<TitleId> &order, const QVector<TitleId> &moved)
{
    QVector<TitleId> others;
    for (const TitleId id : order) {
        if (!moved.contains(id))
            others.append(id);
    }
    return others;
}

} // namespace

Editor::Editor(TitleCanvas *canvas, QObject *parent) : QObject(parent), m_canvas(canvas)
{
    connect(canvas, &TitleCanvas::edited, this,
            [this](const QString &what, const QVector<TitleChange> &changes) {
                m_undoStack.push(new ChangeTitles(m_canvas, what, changes));
            });
}

Editor::~Editor() = default;

TitleCanvas *Editor::canvas() const
{
    return m_canvas;
}

QUndoStack *Editor::undoStack()
{
    return &m_undoStack;
}

void Editor::setProject(const Project &project)
{
    m_canvas->finishEditing();
    m_canvas->setProject(project);
    m_undoStack.clear();
}

/// What is being typed comes before the command.
void Editor::push(QUndoCommand *command)
{
    m_canvas->finishEditing();
    m_undoStack.push(command);
}

void Editor::undo()
{
    m_canvas->finishEditing();
    m_undoStack.undo();
}

void Editor::redo()
{
    m_canvas->finishEditing();
    m_undoStack.redo();
}

QVector<PlacedTitle> Editor::selectedTitles() const
{
    const QVector<TitleId> order = m_canvas->order();
    QVector<PlacedTitle> titles;
    for (const TitleId id : m_canvas->selection())
        titles.append({order.indexOf(id), id, m_canvas->title(id)});
    return titles;
}

void Editor::add(const QString &what, QVector<Title> titles)
{
    if (titles.isEmpty())
        return;
    int index = m_canvas->order().size();
    QVector<PlacedTitle> placed;
    for (const Title &title : qAsConst(titles))
        placed.append({index++, m_canvas->newId(), title});
    push(new AddTitles(m_canvas, what, placed));
}

bool Editor::addSvg(const QString &name, const QString &svg, QString *error)
{
    const auto title = madeSvgTitle(name, svg, m_canvas->canvasSize(), error);
    if (!title)
        return false;
    add(tr("Add %1").arg(name), {*title});
    return true;
}

void Editor::addText()
{
    add(tr("Add Text"), {madeTextTitle(tr("Title"), m_canvas->canvasSize())});
}

void Editor::deleteSelected()
{
    deleteSelected(tr("Delete"));
}

void Editor::deleteSelected(const QString &what)
{
    m_canvas->finishEditing();
    const QVector<PlacedTitle> titles = selectedTitles();
    if (!titles.isEmpty())
        push(new DeleteTitles(m_canvas, what, titles));
}

void Editor::duplicateSelected()
{
    m_canvas->finishEditing();
    QVector<Title> copies;
    for (PlacedTitle &placed : selectedTitles()) {
        placed.title.placement.pos += copyOffset;
        copies.append(placed.title);
    }
    add(tr("Duplicate"), copies);
}

void Editor::cutSelected()
{
    copySelected();
    deleteSelected(tr("Cut"));
}

void Editor::copySelected()
{
    m_canvas->finishEditing();
    QVector<Title> titles;
    for (const PlacedTitle &placed : selectedTitles())
        titles.append(placed.title);
    if (!titles.isEmpty())
        copyToClipboard(titles);
}

void Editor::paste()
{
    QVector<Title> titles = titlesFromClipboard();
    for (Title &title : titles)
        title.placement.pos += copyOffset;
    add(tr("Paste"), titles);
}

void Editor::selectAll()
{
    m_canvas->select(m_canvas->order());
}

void Editor::selectNext()
{
    const QVector<TitleId> order = m_canvas->order();
    if (order.isEmpty())
        return;
    const QVector<TitleId> selection = m_canvas->selection();
    const int current = selection.isEmpty() ? -1 : order.indexOf(selection.last());
    m_canvas->select({order.at((current + 1) % order.size())});
}

template <typename Edit>
void Editor::changeSelected(const QString &what, MergeKind kind, Edit edit)
{
    m_canvas->finishEditing();
    QVector<TitleChange> changes;
    for (const PlacedTitle &placed : selectedTitles()) {
        Title after = placed.title;
        if (edit(after))
            changes.append({placed.id, placed.title, after});
    }
    if (!changes.isEmpty())
        push(new ChangeTitles(m_canvas, what, changes, kind));
}

void Editor::nudge(const QPointF &offset)
{
    changeSelected(tr("Nudge"), MergeNudges, [&offset](Title &title) {
        title.placement.pos += offset;
        return true;
    });
}

void Editor::moveTo(Level level)
{
    const QVector<TitleId> order = m_canvas->order();
    const QVector<TitleId> moved = m_canvas->selection();
    const QVector<TitleId> others = without(order, moved);
    QVector<TitleId> after;
    switch (level) {
    case Lowest:
        after = moved + others;
        break;
    case Lower:
        after = stepped(order, moved, false);
        break;
    case Higher:
        after = stepped(order, moved, true);
        break;
    case Highest:
        after = others + moved;
        break;
    }
    if (after != order)
        push(new ReorderTitles(m_canvas, tr("Change Order"), after));
}

void Editor::setColor(const QColor &color)
{
    changeSelected(tr("Change Colour"), NeverMerge, [&color](Title &title) {
        if (title.kind == Title::Svg)
            return std::exchange(title.lineColor, color) != color;
        if (!color.isValid())
            return false;
        QTextCharFormat format;
        format.setForeground(color);
        const QString html = withFormat(title.html, format);
        return std::exchange(title.html, html) != html;
    });
}

void Editor::setSpeed(double speed)
{
    changeSelected(tr("Change Speed"), MergeSpeeds, [speed](Title &title) {
        const bool isNew = title.kind == Title::Svg && !qFuzzyCompare(title.speed, speed);
        title.speed = speed;
        return isNew;
    });
}

void Editor::setTextFormat(const QTextCharFormat &format)
{
    changeSelected(tr("Change Font"), NeverMerge, [&format](Title &title) {
        if (title.kind != Title::Text)
            return false;
        const QString html = withFormat(title.html, format);
        return std::exchange(title.html, html) != html;
    });
}

void Editor::setClipLength(int ms)
{
    if (ms != m_canvas->clipLength())
        push(new ChangeClipLength(m_canvas, tr("Change Clip Length"), ms));
}
