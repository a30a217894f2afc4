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
    const QList<QGraphicsItem *> items = scene.items();
    return QSet<QGraphicsItem *>(items.begin(), items.end());
}

} // namespace

SceneHelper::SceneHelper(QGraphicsScene *scene, QObject *parent) : QObject(parent), m_scene(scene)
{
    qRegisterMetaType<SceneHelper::Time>("SceneHelper::Time");
    qRegisterMetaType<QGraphicsItem *>();
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
    const bool anyObject = std::any_of(m_items.begin(), m_items.end(),
                                       [](const QGraphicsObject *object) { return object; });
    if (anyObject || m_items.isEmpty() || !m_scene)
        return anyObject;
    const QSet<QGraphicsItem *> onScene = itemsOn(*m_scene);
    return std::any_of(m_items.keyBegin(), m_items.keyEnd(),
                       [&onScene](QGraphicsItem *item) { return onScene.contains(item); });
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
    m_scene->addItem(item);
    QGraphicsObject *object = item->toGraphicsObject();
    if (object && !m_items.contains(item))
        connect(object, &QObject::destroyed, this, [this, item] { m_items.remove(item); });
    m_items.insert(item, object);
    setItemViewScale(item, m_viewScale);
    Q_EMIT itemAdded(item);
}

void SceneHelper::removeItem(QGraphicsItem *item)
{
    if (!m_scene || !m_items.contains(item))
        return;
    if (item->scene() == m_scene)
        m_scene->removeItem(item);
    forget(item);
    Q_EMIT itemRemoved(item);
}

void SceneHelper::clear()
{
    if (!m_scene)
        return;
    const QSet<QGraphicsItem *> onScene = itemsOn(*m_scene);
    const QList<QGraphicsItem *> items = m_items.keys();
    for (QGraphicsItem *item : items) {
        if (onScene.contains(item))
            m_scene->removeItem(item);
        forget(item);
    }
    Q_EMIT sceneCleared();
}

void SceneHelper::deleteItemLater(QGraphicsObject *item)
{
    if (!m_scene || !m_items.contains(item))
        return;
    forget(item);
    item->setVisible(false);
    const QPointer<QGraphicsObject> guard(item);
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
    // A copy, since the slots that are called may add, remove or delete items.
    const QHash<QGraphicsItem *, QGraphicsObject *> items = m_items;
    for (auto entry = items.begin(); entry != items.end(); ++entry) {
        if (entry.value() && m_items.contains(entry.key()))
            setItemViewScale(entry.key(), s);
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

void SceneHelper::forget(QGraphicsItem *item)
{
    if (QGraphicsObject *object = m_items.take(item))
        disconnect(object, &QObject::destroyed, this, nullptr);
}
