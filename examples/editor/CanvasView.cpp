// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "CanvasView.h"

#include "CanvasScene.h"
#include "TitleCanvas.h"

#include <Scene/Decorator/GraphicsViewportMouseGuard.h>

#include <QGestureEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr qreal smallestZoom = 0.05;
constexpr qreal largestZoom = 16.0;
constexpr qreal zoomStep = 1.25;
constexpr qreal wheelNotch = 120.0;
constexpr int margin = 24;
constexpr int squareSize = 12;

QPixmap checkerboard()
{
    QPixmap tile(2 * squareSize, 2 * squareSize);
    tile.fill(QColor(0x62, 0x66, 0x6a));
    QPainter painter(&tile);
    const QColor other(0x54, 0x58, 0x5c);
    painter.fillRect(0, 0, squareSize, squareSize, other);
    painter.fillRect(squareSize, squareSize, squareSize, squareSize, other);
    return tile;
}

QStringList svgFiles(const QMimeData *data)
{
    QStringList paths;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        const QString path = url.toLocalFile();
        if (path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive))
            paths.append(path);
    }
    return paths;
}

QPointF directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1.0, 0.0};
    case Qt::Key_Right:
        return {1.0, 0.0};
    case Qt::Key_Up:
        return {0.0, -1.0};
    case Qt::Key_Down:
        return {0.0, 1.0};
    default:
        return {};
    }
}

} // namespace

CanvasView::CanvasView(TitleCanvas *canvas, QWidget *parent)
    : QGraphicsView(canvas->scene(), parent), m_canvas(canvas)
{
    setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    setViewportUpdateMode(FullViewportUpdate);
    setTransformationAnchor(AnchorUnderMouse);
    setFrameShape(NoFrame);
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
    viewport()->grabGesture(Qt::PinchGesture);
    viewport()->installEventFilter(new GraphicsViewportMouseGuard(this));
    connect(canvas, &TitleCanvas::guidesChanged, viewport(), QOverload<>::of(&QWidget::update));
}

CanvasView::~CanvasView() = default;

qreal CanvasView::zoom() const
{
    return transform().m11();
}

void CanvasView::setZoom(qreal zoom)
{
    m_fits = false;
    applyZoom(std::clamp(zoom, smallestZoom, largestZoom));
}

void CanvasView::applyZoom(qreal zoom)
{
    setTransform(QTransform::fromScale(zoom, zoom));
    m_canvas->setViewScale(1.0 / zoom);
    Q_EMIT zoomChanged(zoom);
}

void CanvasView::zoomIn()
{
    setZoom(zoom() * zoomStep);
}

void CanvasView::zoomOut()
{
    setZoom(zoom() / zoomStep);
}

void CanvasView::fitToWindow()
{
    const QRectF canvas = m_canvas->canvasRect();
    const QSize room = viewport()->size() - QSize(2 * margin, 2 * margin);
    const qreal fitting = std::min(room.width() / canvas.width(), room.height() / canvas.height());
    applyZoom(std::clamp(fitting, smallestZoom, largestZoom));
    centerOn(canvas.center());
    m_fits = true;
}

void CanvasView::drawBackground(QPainter *painter, const QRectF &rect)
{
    painter->fillRect(rect, QColor(0x2c, 0x2e, 0x31));
    const QRectF canvas = m_canvas->canvasRect();
    QBrush squares(checkerboard());
    squares.setTransform(QTransform::fromScale(1.0 / zoom(), 1.0 / zoom()));
    painter->fillRect(canvas, squares);
}

void CanvasView::drawForeground(QPainter *painter, const QRectF &)
{
    QPen pen(QColor(0xff, 0x5c, 0x8a), 1.0);
    pen.setCosmetic(true);
    painter->setPen(pen);
    painter->drawLines(m_canvas->guides());
}

void CanvasView::wheelEvent(QWheelEvent *event)
{
    setZoom(zoom() * std::pow(zoomStep, event->angleDelta().y() / wheelNotch));
    event->accept();
}

void CanvasView::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    if (m_fits)
        fitToWindow();
}

void CanvasView::keyPressEvent(QKeyEvent *event)
{
    if (m_canvas->editedText()) {
        if (event->key() == Qt::Key_Escape)
            m_canvas->finishEditing();
        else
            QGraphicsView::keyPressEvent(event);
        return;
    }
    const QPointF direction = directionOf(event->key());
    if (direction.isNull())
        QGraphicsView::keyPressEvent(event);
    else
        Q_EMIT nudged(direction * (event->modifiers().testFlag(Qt::ShiftModifier) ? 10.0 : 1.0));
}

bool CanvasView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Gesture && pinch(static_cast<QGestureEvent *>(event)))
        return true;
    if (event->type() == QEvent::NativeGesture && pinch(static_cast<QNativeGestureEvent *>(event)))
        return true;
    return QGraphicsView::viewportEvent(event);
}

/// On a touch screen.
bool CanvasView::pinch(QGestureEvent *event)
{
    const auto *gesture = static_cast<QPinchGesture *>(event->gesture(Qt::PinchGesture));
    if (!gesture)
        return false;
    if (gesture->changeFlags().testFlag(QPinchGesture::ScaleFactorChanged))
        setZoom(zoom() * gesture->scaleFactor());
    event->accept();
    return true;
}

/// On a touch pad.
bool CanvasView::pinch(QNativeGestureEvent *event)
{
    if (event->gestureType() != Qt::ZoomNativeGesture)
        return false;
    setZoom(zoom() * (1.0 + event->value()));
    event->accept();
    return true;
}

void CanvasView::dragEnterEvent(QDragEnterEvent *event)
{
    if (!svgFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void CanvasView::dragMoveEvent(QDragMoveEvent *event)
{
    if (!svgFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void CanvasView::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    Q_EMIT filesDropped(svgFiles(event->mimeData()));
}
