// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneHelper.h"

#include "NamedSlots_p.h"

#include <QGraphicsObject>
#include <QGraphicsScene>

#include <algorithm>

namespace {

QSet<QGraphicsItem *> itemsOn(const QGraphicsScene &scene)
{
    QSet<QGraphicsItem *> result;
    const QList<QGraphicsItem *> items = scene.items();
    for (QGraphicsItem *item : items)
        result.insert(item);
    return result;
}

} // namespace

SceneHelper::SceneHelper(QGraphicsScene *scene, QObject *parent) : QObject(parent), m_scene(scene)
{
    qRegisterMetaType<SceneHelper::Time>("SceneHelper::Time");
    qRegisterMetaType<QGraphicsItem *>();
    qRegisterMetaType<QGraphicsObject *>();
    if (m_scene)
        m_scene->setParent(this);
}

SceneHelper::~SceneHelper() = default;

QGraphicsScene *SceneHelper::scene()
{
    return m_scene;
}

bool SceneHelper::hasItems() const
{
    const bool anyObject = std::any_of(m_objects.begin(), m_objects.end(),
                                       [](const QGraphicsObject *object) { return object; });
    if (anyObject || m_plainItems.isEmpty() || !m_scene)
        return anyObject;
    return itemsOn(*m_scene).intersects(m_plainItems);
}

SceneHelper::Time SceneHelper::sceneTime() const
{
    return m_sceneTime;
}

QPixmap SceneHelper::sceneBackground() const
{
    return m_background;
}

void SceneHelper::setItemViewScale(QGraphicsItem *item, double scale)
{
    QGraphicsObject *object = item ? item->toGraphicsObject() : nullptr;
    if (hasSlot(object, "setViewScale(qreal)"))
        QMetaObject::invokeMethod(object, "setViewScale", Qt::AutoConnection, Q_ARG(qreal, scale));
}

void SceneHelper::addItem(QGraphicsItem *item)
{
    if (!m_scene || !item)
        return;
    if (item->scene() != m_scene)
        m_scene->addItem(item);
    remember(item);
    setItemViewScale(item, m_viewScale);
    if (isAdded(item))
        Q_EMIT itemAdded(item);
}

void SceneHelper::removeItem(QGraphicsItem *item)
{
    if (!m_scene || !isAdded(item))
        return;
    takeOffScene(item);
    forget(item);
    Q_EMIT itemRemoved(item);
}

void SceneHelper::clear()
{
    if (!m_scene)
        return;
    const QHash<QGraphicsItem *, QPointer<QGraphicsObject>> objects = m_objects;
    for (const QPointer<QGraphicsObject> &object : objects) {
        if (object && isAdded(object)) {
            takeOffScene(object);
            forget(object);
        }
    }
    const QSet<QGraphicsItem *> plainItemsOnScene = itemsOn(*m_scene).intersect(m_plainItems);
    for (QGraphicsItem *item : plainItemsOnScene)
        takeOffScene(item);
    m_plainItems.clear();
    Q_EMIT sceneCleared();
}

void SceneHelper::deleteItemLater(QGraphicsObject *item)
{
    if (!m_scene || !isAdded(item))
        return;
    forget(item);
    const QPointer<QGraphicsObject> guard(item);
    item->setVisible(false);
    if (guard)
        Q_EMIT itemRemoved(item);
    if (guard)
        guard->deleteLater();
}

void SceneHelper::setSceneTime(SceneHelper::Time t)
{
    const bool isNews = t == 0 || t != m_sceneTime;
    m_sceneTime = t;
    if (isNews)
        Q_EMIT sceneTimeChanged(t);
}

void SceneHelper::setSceneBackground(QPixmap px)
{
    m_background = px;
    Q_EMIT sceneBackgroundChanged(m_background);
}

void SceneHelper::setViewScale(qreal s)
{
    m_viewScale = s;
    // A copy, since the slots that are called may add, remove or delete items. They may also set
    // another scale, which holds for the items still to come.
    const QHash<QGraphicsItem *, QPointer<QGraphicsObject>> objects = m_objects;
    for (const QPointer<QGraphicsObject> &object : objects) {
        if (object && isAdded(object))
            setItemViewScale(object, m_viewScale);
    }
}

void SceneHelper::setStylingObject(QObject *o)
{
    m_stylingObject = o;
}

QObject *SceneHelper::stylingObject()
{
    return m_stylingObject;
}

/// An object that is being deleted does not count; nothing of it but its address is looked at.
bool SceneHelper::isAdded(QGraphicsItem *item) const
{
    const auto object = m_objects.constFind(item);
    if (object != m_objects.constEnd())
        return !object->isNull();
    return m_plainItems.contains(item) && !item->toGraphicsObject();
}

void SceneHelper::remember(QGraphicsItem *item)
{
    forget(item); // or what was at its address before it
    if (QGraphicsObject *object = item->toGraphicsObject()) {
        m_objects.insert(item, object);
        connect(object, &QObject::destroyed, &m_watch, [this, item] { m_objects.remove(item); });
    } else {
        m_plainItems.insert(item);
    }
}

void SceneHelper::forget(QGraphicsItem *item)
{
    m_plainItems.remove(item);
    if (QGraphicsObject *object = m_objects.take(item))
        disconnect(object, &QObject::destroyed, &m_watch, nullptr);
}

void SceneHelper::takeOffScene(QGraphicsItem *item)
{
    if (item->scene() == m_scene)
        m_scene->removeItem(item);
}
