// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleSvgItem.h"

#include "ClipTime_p.h"
#include "FramePens_p.h"
#include "SvgDocument.h"
#include "TimeValue_p.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace {

QPen initialLineParams()
{
    QPen pen(QBrush(QColor(0, 0, 0, 0)), 50.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    pen.setStyle(Qt::DashDotDotLine);
    return pen;
}

/// What an image of an item's own may hold, 256 MB. The template says how large it would be.
constexpr double mostImagePixels = 64.0 * 1024.0 * 1024.0;

/// 1 for a size that cannot be scaled to.
double scaleFactor(double to, double from)
{
    const double factor = to / from;
    return std::isfinite(factor) ? factor : 1.0;
}

} // namespace

TitleSvgItem::TitleSvgItem(const QString &svgText)
    : m_svgText(svgText), m_document(new SvgDocument(svgText)), m_lineParams(initialLineParams())
{
    // The base class would keep a picture of a small item: no second view, and no rendering of the
    // scene, would show a new time, and clip paths would never reach what lies below.
    setCacheMode(NoCache);
    m_document->prepareAdjustedAttibutes({QStringLiteral("fill"), QStringLiteral("stroke")});
    if (m_document->hasClipping())
        m_clippingDocument.reset(m_document->makeClippingDocument());
    m_penStyleDashes = {{Qt::SolidLine, QStringLiteral("1, 0")},
                        {Qt::DotLine, QStringLiteral("1, 3")},
                        {Qt::DashLine, QStringLiteral("10, 10")},
                        {Qt::DashDotLine, QStringLiteral("10, 4, 2, 4")}};
}

TitleSvgItem::~TitleSvgItem() = default;

QRectF TitleSvgItem::boundingRect() const
{
    return m_document->bounds();
}

int TitleSvgItem::type() const
{
    return Type;
}

void TitleSvgItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *widget)
{
    const ClipTiming timing{m_duration, m_document->animationDurationTotal(),
                            m_document->animationConclusionDuration(), m_animationSpeed};
    const int ms = documentTime(timing, m_currentTime);
    if (m_clippingDocument && m_paintOnImage)
        paintByImage(painter, ms);
    else
        paintDirectly(painter, ms);
    if (m_stylingObject)
        drawFrame(painter, boundingRect().adjusted(1.0, 1.0, -1.0, -1.0),
                  framePens(*m_stylingObject, m_highlight, "strokePen"), boundingRect(), widget);
}

void TitleSvgItem::paintDirectly(QPainter *painter, int ms)
{
    painter->save();
    painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    m_document->paint(painter, ms);
    if (m_clippingDocument) {
        painter->setCompositionMode(QPainter::CompositionMode_DestinationOut);
        m_clippingDocument->paint(painter, ms);
    }
    painter->restore();
}

void TitleSvgItem::paintByImage(QPainter *painter, int ms)
{
    if (!prepareImage())
        return;
    m_image->fill(Qt::transparent);
    QPainter imagePainter(m_image.get());
    m_document->paint(&imagePainter, ms);
    imagePainter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    m_clippingDocument->paint(&imagePainter, ms);
    imagePainter.end();
    painter->drawImage(QPointF(0.0, 0.0), *m_image);
}

/// False when there can be no image of the bounds' size, or it would be too large. A size with a
/// fraction never fits the image's.
bool TitleSvgItem::prepareImage()
{
    const QSizeF size = m_document->bounds().size();
    if (size.width() * size.height() > mostImagePixels)
        return false;
    if (!m_image || m_image->width() != size.width() || m_image->height() != size.height())
        m_image.reset(new QImage(saturatedInt(size.width()), saturatedInt(size.height()),
                                 QImage::Format_ARGB32_Premultiplied));
    return !m_image->isNull();
}

void TitleSvgItem::setSize(const QSizeF &size)
{
    prepareGeometryChange();
    const QRectF bounds = m_document->bounds();
    QTransform transform = this->transform();
    transform.scale(scaleFactor(size.width(), bounds.width()),
                    scaleFactor(size.height(), bounds.height()));
    setTransform(transform, false);
    Q_EMIT geometryChanged();
}

int TitleSvgItem::currentTime() const
{
    return m_currentTime;
}

void TitleSvgItem::setCurrentTime(int time)
{
    m_currentTime = time;
}

int TitleSvgItem::duration() const
{
    return m_duration;
}

void TitleSvgItem::setDuration(int duration)
{
    m_duration = duration;
}

double TitleSvgItem::animationSpeed() const
{
    return m_animationSpeed;
}

void TitleSvgItem::setAnimationSpeed(double speed)
{
    m_animationSpeed = speed;
}

int TitleSvgItem::documentDuration() const
{
    return m_document->animationDurationTotal();
}

int TitleSvgItem::documentFullViewTime() const
{
    return saturatedDifference(m_document->animationDurationTotal(),
                               m_document->animationConclusionDuration());
}

bool TitleSvgItem::paintOnImage() const
{
    return m_paintOnImage;
}

void TitleSvgItem::setPaintOnImage(bool onImage)
{
    m_paintOnImage = onImage;
}

QObject *TitleSvgItem::stylingObject() const
{
    return m_stylingObject;
}

void TitleSvgItem::setStylingObject(QObject *object)
{
    m_stylingObject = object;
}

bool TitleSvgItem::highlighted() const
{
    return m_highlight;
}

void TitleSvgItem::setHighlight(bool highlight)
{
    m_highlight = highlight;
}

QPen TitleSvgItem::lineParams() const
{
    return m_lineParams;
}

void TitleSvgItem::setLineParams(QPen pen)
{
    const bool isNewColor = pen.color() != m_lineParams.color();
    const bool isNews = isNewColor || pen.width() != m_lineParams.width()
            || pen.style() != m_lineParams.style();
    if (!isNews)
        return;
    if (isNewColor) {
        const QString name = pen.color().name();
        m_document->adjustAttribute(QStringLiteral("stroke"), name);
        m_document->adjustAttribute(QStringLiteral("fill"), name);
    }
    m_lineParams = pen;
    Q_EMIT documentChanged();
}

QString TitleSvgItem::toSvgText() const
{
    return m_svgText;
}
