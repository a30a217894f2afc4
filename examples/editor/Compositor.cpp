// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Compositor.h"

#include "TitleFactory.h"

#include <Scene/TitleSvgItem.h>

#include <QGraphicsObject>
#include <QPainter>

namespace {

QTransform toTransform(const Placement &placement)
{
    QTransform transform = QTransform::fromTranslate(placement.pos.x(), placement.pos.y());
    transform.rotate(placement.rotation);
    transform.scale(placement.scaleX, placement.scaleY);
    return transform;
}

} // namespace

Compositor::Compositor(const Project &project) : m_canvas(project.canvas)
{
    m_scene.setSceneRect(QRectF(QPointF(), QSizeF(m_canvas)));
    for (const Title &title : project.titles) {
        QGraphicsObject *item = madeItem(title, project.clipLength).release();
        item->setTransform(toTransform(title.placement));
        item->setZValue(m_items.size());
        m_scene.addItem(item);
        m_items.push_back(item);
    }
}

Compositor::~Compositor() = default;

QImage Compositor::frame(int ms)
{
    return frame(ms, m_canvas);
}

QImage Compositor::frame(int ms, const QSize &size)
{
    for (QGraphicsObject *item : m_items)
        setClipTime(item, ms);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    m_scene.render(&painter, QRectF(image.rect()), m_scene.sceneRect());
    return image;
}

QImage thumbnail(const QString &svg, const QSize &size)
{
    QString error;
    Project project;
    const auto title = madeSvgTitle(QString(), svg, project.canvas, &error);
    if (!title)
        return QImage();
    project.titles.append(*title);
    const int fullView = TitleSvgItem(svg).documentFullViewTime();
    return Compositor(project).frame(fullView, size);
}
