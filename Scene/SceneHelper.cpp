// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SceneHelper.h"

#include "NamedSlots_p.h"

#include <QGraphicsObject>
#include <QGraphicsScene>
#include <QSet>

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
    const auto isLivingObject = [](const Added &added) { return !added.object.isNull(); };
    if (std::any_of(m_added.begin(), m_added.end(), isLivingObject))
        return true;
    const QSet<QGraphicsItem *> onScene = m_scene ? itemsOn(*m_scene) : QSet<QGraphicsItem *>();
    for (auto it = m_added.begin(); it != m_added.end(); ++it) {
        if (!it->isObject && onScene.contains(it.key()))
            return true;
    }
    return false;
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
    QSet<QGraphicsItem *> onScene; // asked again after each object, which may take others with it
    const QVector<QGraphicsItem *> items = inOrder();
    for (QGraphicsItem *item : items) {
        const auto added = m_added.constFind(item);
        if (added == m_added.constEnd())
            continue;
        if (added->isObject) {
            onScene.clear();
            if (added->object)
                takeOffScene(item);
        } else {
            if (onScene.isEmpty() && m_scene)
                onScene = itemsOn(*m_scene);
            if (onScene.contains(item))
                takeOffScene(item);
        }
        forget(item);
    }
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
    const QVector<QGraphicsItem *> items = inOrder();
    for (QGraphicsItem *item : items) {
        if (QGraphicsObject *object = m_added.value(item).object)
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
    const auto added = m_added.constFind(item);
    if (added == m_added.constEnd())
        return false;
    return added->isObject ? !added->object.isNull() : !item->toGraphicsObject();
}

/// Some may be gone.
QVector<QGraphicsItem *> SceneHelper::inOrder() const
{
    QVector<QGraphicsItem *> items;
    items.reserve(m_added.size());
    for (auto it = m_added.begin(); it != m_added.end(); ++it)
        items.append(it.key());
    std::sort(items.begin(), items.end(), [this](QGraphicsItem *a, QGraphicsItem *b) {
        return m_added.constFind(a)->turn < m_added.constFind(b)->turn;
    });
    return items;
}

void SceneHelper::remember(QGraphicsItem *item)
{
    forget(item); // or what was at its address before it
    QGraphicsObject *object = item->toGraphicsObject();
    m_added.insert(item, {object, object != nullptr, ++m_turns});
    if (object)
        connect(object, &QObject::destroyed, &m_watch, [this, item] { m_added.remove(item); });
}

void SceneHelper::forget(QGraphicsItem *item)
{
    if (QGraphicsObject *object = m_added.take(item).object)
        disconnect(object, &QObject::destroyed, &m_watch, nullptr);
}

void SceneHelper::takeOffScene(QGraphicsItem *item)
{
    if (item->scene() == m_scene)
        m_scene->removeItem(item);
}
