// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QPointer>
#include <QVector>

class QGraphicsItem;
class QGraphicsObject;
class QGraphicsScene;

/// Keeps a graphics scene, the items that the application has put on it, and what all of them
/// follow: the scene time, the view scale, a background picture and a styling object.
///
/// The helper owns its scene, and the scene owns the items while they are on it. Items that others
/// delete are forgotten. Every change is announced by a signal.
///
/// An item that wants to know the view scale has a slot setViewScale(qreal); it is called by name.
///
/// \ingroup helpers
class TITLESCENE_EXPORT SceneHelper : public QObject
{
    Q_OBJECT

public:
    /// A time in the unit of the application's timeline; title items take it as milliseconds.
    using Time = qint64;

    /// Takes \a scene, which must not be null, as a child.
    explicit SceneHelper(QGraphicsScene *scene, QObject *parent = nullptr);
    ~SceneHelper() override;

    /// The scene; null when somebody has deleted it. A helper without its scene takes no items.
    QGraphicsScene *scene();

    /// True when items were added and not removed again. An item that is no QGraphicsObject counts
    /// while it is on the scene.
    bool hasItems() const;

    /// The time that was set last; at first 0.
    Time sceneTime() const;

    /// The picture that was set last; at first a null one.
    QPixmap sceneBackground() const;

    /// Hands \a scale to the item's slot setViewScale(qreal), if it is a QGraphicsObject that has
    /// one.
    void setItemViewScale(QGraphicsItem *item, double scale);

Q_SIGNALS:
    /// \a item is on the scene and knows the view scale.
    void itemAdded(QGraphicsItem *item);

    /// \a item is off the scene, or hidden and about to be deleted.
    void itemRemoved(QGraphicsItem *item);

    /// All items are off the scene.
    void sceneCleared();

    /// \a t is the scene's time now. Items are not told: the application hands the time to them.
    void sceneTimeChanged(SceneHelper::Time t);

    /// \a px is the picture to draw behind the items.
    void sceneBackgroundChanged(QPixmap px);

public Q_SLOTS:
    /// Puts \a item on the scene and tells it the view scale. Emits itemAdded(), also for an item
    /// that was added before. A null item is ignored.
    void addItem(QGraphicsItem *item);

    /// Takes \a item off the scene, and gives it back to the caller. Emits itemRemoved(). An item
    /// that was not added here is ignored.
    void removeItem(QGraphicsItem *item);

    /// Takes all added items off the scene, in the order in which they were added last; none is
    /// deleted. Emits sceneCleared() and no itemRemoved().
    ///
    /// The caller owns them again, each with the items below it. Where an item and its parent item
    /// were both added, the order tells what becomes of them: an item that was added before its
    /// parent, such as a title that was put into a frame later, comes out of it and is the
    /// caller's by itself. One that was added after its parent stays in it and is deleted with it.
    void clear();

    /// Hides \a item, emits itemRemoved(), and deletes it when control returns to the event loop.
    /// An item that was not added here is ignored.
    void deleteItemLater(QGraphicsObject *item);

    /// Emits sceneTimeChanged() when the time changes, and always for time 0.
    void setSceneTime(SceneHelper::Time t);

    /// Always emits sceneBackgroundChanged(). The helper draws no background itself.
    void setSceneBackground(QPixmap px);

    /// How many scene units a pixel of the view covers, or what else the items take it for. Handed
    /// to all items, and to those added later.
    void setViewScale(qreal s);

    /// An object of the application's whose dynamic properties say how items look. Not owned;
    /// null once it is deleted.
    void setStylingObject(QObject *o);

    /// The styling object; null when there is none.
    QObject *stylingObject();

private:
    struct Added
    {
        QPointer<QGraphicsObject> object; // null for an item that is none
        bool isObject;
        quint64 turn; // that of an earlier one is less
    };

    bool isAdded(QGraphicsItem *item) const;
    QVector<QGraphicsItem *> inOrder() const;
    void remember(QGraphicsItem *item);
    void forget(QGraphicsItem *item);
    void takeOffScene(QGraphicsItem *item);

    Time m_sceneTime = 0;
    qreal m_viewScale = 1.0;
    QPointer<QGraphicsScene> m_scene;
    // One that is no object can be deleted unnoticed, so its pointer is used only while the scene
    // lists it, or when the caller brings it.
    QHash<QGraphicsItem *, Added> m_added;
    quint64 m_turns = 0;
    QPointer<QObject> m_stylingObject;
    QPixmap m_background;
    // Receives the destruction of objects. The last member, since it must go before the others.
    QObject m_watch;
};
