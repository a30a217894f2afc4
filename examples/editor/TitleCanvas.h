// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Project.h"

#include <Scene/Decorator/DragReporter.h>
#include <Scene/SceneHelper.h>

#include <QLineF>
#include <QObject>
#include <QVector>

class AbstractDecorator;
class CanvasScene;
class QGraphicsObject;
class TitleItem;

/// A title of a canvas keeps its number through undo and redo.
using TitleId = int;

/// What one action of the user makes of a title.
struct TitleChange
{
    TitleId id;
    Title before;
    Title after;
};

/// The titles on the scene, each in a frame of its own.
///
/// Every title is inside a decorator all the time; only a selected one shows handles. Its state is
/// the Title that was set last. What the user does with the mouse or types shows at once, and is
/// then reported by edited() for somebody to make a command of it and set it as the new state.
class TitleCanvas : public QObject
{
    Q_OBJECT

public:
    explicit TitleCanvas(QObject *parent = nullptr);
    ~TitleCanvas() override;

    SceneHelper *sceneHelper();
    CanvasScene *scene() const;

    Project project() const;
    void setProject(const Project &project);
    QSize canvasSize() const;
    QRectF canvasRect() const;

    TitleId newId();
    QVector<TitleId> order() const; ///< the lowest one first
    void setOrder(const QVector<TitleId> &order);
    Title title(TitleId id) const;
    void insert(int index, TitleId id, const Title &title);
    void remove(TitleId id);
    void change(TitleId id, const Title &title);

    int clipLength() const;
    void setClipLength(int ms);

    QVector<TitleId> selection() const; ///< in order()
    void select(const QVector<TitleId> &ids);

    /// The frame around a title. Another one when the user switches between sizing and turning.
    AbstractDecorator *frame(TitleId id) const;
    bool isTurning(TitleId id) const;

    /// The text title that is being edited; null when there is none.
    TitleItem *editedText() const;
    TitleItem *textItem(TitleId id) const;

    /// Reports what was typed so far.
    void finishEditing();

    /// To be called after every zoom of the view: handles keep their size on the screen.
    void setViewScale(qreal scale);

    /// Lines to which the titles that are being moved have snapped.
    QVector<QLineF> guides() const;

Q_SIGNALS:
    void edited(const QString &what, const QVector<TitleChange> &changes);
    void selectionChanged();
    void titlesChanged();
    void clipLengthChanged(int ms);
    void guidesChanged();

private:
    struct Entry
    {
        TitleId id;
        Title title;
        QGraphicsObject *item;
        AbstractDecorator *frame;
    };

    Entry *find(TitleId id);
    const Entry *find(TitleId id) const;
    Entry *entryOf(const QGraphicsItem *frame);

    void makeItem(Entry &entry);
    void decorate(Entry &entry, bool turning);
    void place(Entry &entry);
    void dress(Entry &entry);
    void dressAll();
    void stack();
    Placement placement(const Entry &entry) const;
    void setClipTime(SceneHelper::Time time);

    void snap(Qt::KeyboardModifiers modifiers);
    bool isMoving(const Entry &entry) const;
    void setGuides(const QVector<QLineF> &guides);
    void reportDrag();
    void switchFrame(AbstractDecorator *frame);
    void reportText(TitleId id);

    QObject m_styling;    // holds the frames' pens; lives longer than the scene
    CanvasScene *m_scene; // the helper's
    SceneHelper m_helper;
    DragReporter m_dragReporter;
    QSize m_size;
    int m_clipLength;
    QVector<Entry> m_entries;
    TitleId m_lastId = 0;
    qreal m_viewScale = 1.0;
    QVector<QLineF> m_guides;
    bool m_dressing = false;
};
