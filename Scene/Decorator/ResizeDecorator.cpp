// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ResizeDecorator.h"

#include "../FramePens_p.h"
#include "ResizeGeometry_p.h"
#include "ResizeHandleItem.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QMetaType>

#include <cmath>

// Not in the header: an application may declare it, too.
Q_DECLARE_METATYPE(QSet<Qt::WindowFrameSection>)

namespace {

constexpr qreal handleSize = 20.0;
constexpr qreal handleZValue = 1000.0;

/// The offsets in the decorator's units that have the given sizes on the screen. Without a view
/// both are the same.
HandleOffsets handleOffsets(const QGraphicsItem &decorator, qreal size)
{
    const QGraphicsScene *scene = decorator.scene();
    if (!scene || scene->views().isEmpty())
        return {QPointF(size / 2.0, size / 2.0), size};
    const QTransform toDecorator =
            decorator.deviceTransform(scene->views().first()->viewportTransform()).inverted();
    const QSizeF half = toDecorator.mapRect(QRectF(0.0, 0.0, size / 2.0, size / 2.0)).size();
    return {QPointF(half.width(), half.height()),
            toDecorator.mapRect(QRectF(0.0, 0.0, size, 1.0)).width()};
}

bool isFinite(const QPointF &point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

} // namespace

class ResizeDecorator::Handle : public ResizeHandleItem
{
public:
    Handle(ResizeDecorator &decorator, Qt::WindowFrameSection section)
        : ResizeHandleItem(QRectF(0.0, 0.0, handleSize, handleSize)), m_decorator(decorator),
          m_section(section)
    {
    }
    ~Handle() override { m_decorator.m_handles.erase(m_section); }

private:
    ResizeDecorator &m_decorator;
    Qt::WindowFrameSection m_section;
};

ResizeDecorator::ResizeDecorator(QGraphicsObject *child, QGraphicsItem *parent,
                                 bool keepAspectRatio)
    : AbstractDecorator(child, parent), m_keepAspectRatio(keepAspectRatio)
{
    qRegisterMetaType<QSet<Qt::WindowFrameSection>>();
    for (const Qt::WindowFrameSection section :
         {Qt::TopLeftSection, Qt::TopRightSection, Qt::BottomLeftSection, Qt::BottomRightSection,
          Qt::TopSection, Qt::BottomSection, Qt::LeftSection, Qt::RightSection})
        createHandle(section);
    ResizeDecorator::updateDecoration();
    adjustToChild();
    setUpChildConnections();
    ResizeDecorator::updateDecoration();
}

ResizeDecorator::~ResizeDecorator()
{
    while (!m_handles.empty())
        delete m_handles.begin()->second;
}

void ResizeDecorator::createHandle(Qt::WindowFrameSection section)
{
    m_handles[section] = new Handle(*this, section);
    m_availableHandles.insert(section);
}

QSet<Qt::WindowFrameSection> ResizeDecorator::availableHandles() const
{
    return m_availableHandles;
}

void ResizeDecorator::setAvailableHandles(QSet<Qt::WindowFrameSection> handles)
{
    m_availableHandles = handles;
    updateDecoration();
}

QPen ResizeDecorator::currentPen() const
{
    const QObject *styling = stylingObject();
    return styling ? framePens(*styling, isHighlighted(), "strokePen").outer : QPen();
}

void ResizeDecorator::updateDecoration()
{
    if (m_handles.empty())
        return;
    prepareGeometryChange();
    for (const auto &entry : m_handles)
        entry.second->setScale(viewScale());
    const HandleOffsets offsets = handleOffsets(*this, currentPen().width() + handleSize);
    const QRectF frame = childRect();
    for (const auto &entry : m_handles)
        entry.second->setPos(handlePosition(entry.first, frame, offsets));
    for (const auto &entry : m_handles) {
        if (m_availableHandles.contains(entry.first))
            attach(entry.second);
        else
            detach(entry.second);
        entry.second->setZValue(handleZValue);
    }
    Q_EMIT decorationChanged();
}

void ResizeDecorator::attach(QGraphicsItem *handle)
{
    handle->setParentItem(this);
    handle->show();
}

/// Out of the scene as well: it would delete a handle that belongs to nobody there.
void ResizeDecorator::detach(QGraphicsItem *handle)
{
    handle->setParentItem(nullptr);
    if (QGraphicsScene *scene = handle->scene())
        scene->removeItem(handle);
    handle->hide();
}

Qt::WindowFrameSection ResizeDecorator::sectionUnderMouse() const
{
    for (const auto &entry : m_handles) {
        if (m_availableHandles.contains(entry.first) && entry.second->isUnderMouse())
            return entry.first;
    }
    return Qt::NoSection;
}

void ResizeDecorator::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    const Qt::WindowFrameSection section = sectionUnderMouse();
    if (section == Qt::NoSection) {
        AbstractDecorator::mousePressEvent(event);
        return;
    }
    m_activeSection = section;
    event->accept();
}

void ResizeDecorator::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    if (sectionUnderMouse() == Qt::NoSection)
        AbstractDecorator::mouseDoubleClickEvent(event);
    else
        mousePressEvent(event);
}

void ResizeDecorator::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (m_activeSection == Qt::NoSection) {
        AbstractDecorator::mouseMoveEvent(event);
        return;
    }
    const ResizedFrame resized = resizedFrame(m_activeSection, childRect(),
                                              event->pos() - event->lastPos(), m_keepAspectRatio);
    if (isFinite(resized.move))
        setPos(pos() + resized.move);
    // Not boundingRect(), which may not know yet how the child was before.
    const QRectF before = childrenBoundingRect();
    const QPointer<ResizeDecorator> guard(this);
    setSize(resized.size);
    event->accept();
    if (guard && childrenBoundingRect() != before)
        m_resized = true;
}

void ResizeDecorator::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    const bool wasResized = m_activeSection != Qt::NoSection && m_resized;
    m_activeSection = Qt::NoSection;
    m_resized = false;
    const QPointer<ResizeDecorator> guard(this);
    AbstractDecorator::mouseReleaseEvent(event);
    if (guard && wasResized)
        Q_EMIT itemResized();
}

/// A drag that loses the mouse, since the item is hidden, say, ends without a release.
bool ResizeDecorator::sceneEvent(QEvent *event)
{
    if (event->type() == QEvent::UngrabMouse) {
        m_activeSection = Qt::NoSection;
        m_resized = false;
    }
    return AbstractDecorator::sceneEvent(event);
}

void ResizeDecorator::paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *)
{
    const QObject *styling = stylingObject();
    if (!styling)
        return;
    const FramePens pens = framePens(*styling, isHighlighted(), "strokePen");
    for (const auto &entry : m_handles) {
        entry.second->installPen(pens.outer);
        entry.second->installInnerPen(pens.inner);
    }
}
