// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "AbstractDecorator.h"

#include "../NamedSlots_p.h"
#include "../TransformUtils.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsTextItem>

#include <algorithm>
#include <cmath>

AbstractDecorator::AbstractDecorator(QGraphicsObject *child, QGraphicsItem *parent)
    : QGraphicsObject(parent), m_child(child)
{
    if (m_child)
        m_child->setParentItem(this);
    setFlags(ItemIsMovable | ItemIsFocusable | ItemSendsGeometryChanges
             | ItemSendsScenePositionChanges);
    setHandlesChildEvents(false);
    if (m_child) {
        m_child->setFlag(ItemIsMovable, false);
        m_child->setFlag(ItemIsSelectable, false);
        connect(m_child, &QObject::destroyed, this, &AbstractDecorator::adoptBounds);
        for (const auto placeChanged :
             {&QGraphicsObject::xChanged, &QGraphicsObject::yChanged,
              &QGraphicsObject::rotationChanged, &QGraphicsObject::scaleChanged,
              &QGraphicsObject::parentChanged})
            connect(m_child, placeChanged, this, &AbstractDecorator::adoptBounds);
    }
    setFlag(ItemIsSelectable);
    connect(this, &AbstractDecorator::decorationChanged, this, &AbstractDecorator::adoptBounds);
}

/// The child is deleted last, when this is no decorator any more that could follow its signals.
AbstractDecorator::~AbstractDecorator()
{
    if (m_child)
        disconnect(m_child, nullptr, this, nullptr);
}

QGraphicsObject *AbstractDecorator::child() const
{
    return m_child;
}

qreal AbstractDecorator::viewScale() const
{
    return m_viewScale;
}

QObject *AbstractDecorator::stylingObject() const
{
    return m_stylingObject;
}

void AbstractDecorator::setStylingObject(QObject *object)
{
    m_stylingObject = object;
    update();
}

bool AbstractDecorator::isHighlighted() const
{
    return m_highlighted;
}

QRectF AbstractDecorator::childRect() const
{
    return m_child ? m_child->mapRectToParent(m_child->boundingRect()) : QRectF();
}

/// A scene looks for an item where it was told that the item is. So what it is told only changes
/// with an announcement, while the child may shrink before anybody knows.
QRectF AbstractDecorator::boundingRect() const
{
    return scene() ? m_bounds : childrenBoundingRect();
}

void AbstractDecorator::adoptBounds()
{
    const QRectF bounds = childrenBoundingRect();
    if (bounds == m_bounds)
        return;
    prepareGeometryChange();
    m_bounds = bounds;
}

void AbstractDecorator::paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *) {}

void AbstractDecorator::setEditable(bool editable, const QPointF &pos)
{
    if (hasSlot(m_child, "setEditable(bool,QPointF)"))
        QMetaObject::invokeMethod(m_child, "setEditable", Q_ARG(bool, editable),
                                  Q_ARG(QPointF, m_child->mapFromParent(pos)));
}

void AbstractDecorator::setSize(const QSizeF &size)
{
    const QPointer<AbstractDecorator> guard(this);
    if (hasSlot(m_child, "setSize(QSizeF)")) {
        const QRectF rect =
                m_child->mapRectFromParent(QRectF(0.0, 0.0, size.width(), size.height()));
        QMetaObject::invokeMethod(m_child, "setSize", Q_ARG(QSizeF, rect.size()));
    }
    if (guard)
        updateDecoration();
}

void AbstractDecorator::setViewScale(qreal scale)
{
    const QPointer<AbstractDecorator> guard(this);
    if (hasSlot(m_child, "setViewScale(qreal)"))
        QMetaObject::invokeMethod(m_child, "setViewScale", Q_ARG(qreal, scale));
    if (!guard)
        return;
    const QSizeF ownScale = ExtractScale(sceneTransform(), transformOriginPoint());
    const qreal handleScale = scale * std::min(1.0 / ownScale.width(), 1.0 / ownScale.height());
    if (std::isfinite(handleScale))
        m_viewScale = handleScale;
    updateDecoration();
}

void AbstractDecorator::setHighlight(bool highlight)
{
    m_highlighted = highlight;
    update();
    if (hasSlot(m_child, "setHighlight(bool)"))
        QMetaObject::invokeMethod(m_child, "setHighlight", Q_ARG(bool, highlight));
}

void AbstractDecorator::setUpChildConnections()
{
    if (!m_child)
        return;
    const auto follow = [this](const char *signal) {
        connect(m_child, signal, this, SLOT(updateDecoration()));
    };
    follow(SIGNAL(enabledChanged()));
    follow(SIGNAL(opacityChanged()));
    follow(SIGNAL(rotationChanged()));
    follow(SIGNAL(scaleChanged()));
    follow(SIGNAL(visibleChanged()));
    follow(SIGNAL(xChanged()));
    follow(SIGNAL(yChanged()));
    follow(SIGNAL(zChanged()));
    if (m_child->metaObject()->indexOfSignal("decorationChanged()") != -1)
        follow(SIGNAL(decorationChanged()));
    if (m_child->metaObject()->indexOfSignal("geometryChanged()") != -1)
        follow(SIGNAL(geometryChanged()));
}

void AbstractDecorator::adjustToChild()
{
    if (!m_child)
        return;
    QGraphicsItem *const frame = parentItem();
    const QPointF origin = m_child->mapToParent(m_child->transformOriginPoint());
    const QPointF position =
            frame ? m_child->mapToItem(frame, QPointF(0.0, 0.0)) : m_child->scenePos();
    QTransform placement = frame ? m_child->itemTransform(frame) : m_child->sceneTransform();
    if (!position.isNull())
        placement *= QTransform::fromTranslate(-position.x(), -position.y());
    const qreal angle = m_child->rotation();

    setTransformOriginPoint(origin);
    setTransform(placement);
    setPos(position);
    setRotation(angle);

    m_child->setTransform(QTransform());
    m_child->setPos(0.0, 0.0);
    m_child->setRotation(0.0);
}

void AbstractDecorator::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    QGraphicsObject::mouseReleaseEvent(event);
    if (!m_moved)
        return;
    m_moved = false;
    Q_EMIT itemMoved();
}

void AbstractDecorator::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    const QPointer<AbstractDecorator> guard(this);
    setEditable(true, event->pos());
    if (guard)
        passToEditedText(*event);
    if (guard)
        QGraphicsObject::mouseDoubleClickEvent(event);
}

/// A text that is edited now selects the word itself, when it gets the double click.
void AbstractDecorator::passToEditedText(const QGraphicsSceneMouseEvent &doubleClick)
{
    QGraphicsItem *focused = scene() ? scene()->focusItem() : nullptr;
    if (!focused || !isAncestorOf(focused)
        || !qobject_cast<QGraphicsTextItem *>(focused->toGraphicsObject()))
        return;
    QGraphicsSceneMouseEvent event(doubleClick.type());
    event.setWidget(doubleClick.widget());
    event.setPos(focused->mapFromItem(this, doubleClick.pos()));
    event.setScenePos(doubleClick.scenePos());
    event.setScreenPos(doubleClick.screenPos());
    event.setButton(doubleClick.button());
    event.setButtons(doubleClick.buttons());
    event.setModifiers(doubleClick.modifiers());
    scene()->sendEvent(focused, &event);
}

QVariant AbstractDecorator::itemChange(GraphicsItemChange change, const QVariant &value)
{
    QVariant result = QGraphicsObject::itemChange(change, value);
    switch (change) {
    case ItemTransformHasChanged:
    case ItemScenePositionHasChanged:
    case ItemRotationHasChanged:
    case ItemScaleHasChanged:
        Q_EMIT geometryChanged();
        break;
    case ItemSceneHasChanged:
        if (scene())
            adoptBounds();
        break;
    case ItemPositionChange:
        if ((flags() & ItemIsMovable) && scene() && scene()->mouseGrabberItem() == this)
            m_moved = true;
        break;
    case ItemVisibleChange:
        updateDecoration();
        break;
    default:
        break;
    }
    return result;
}
