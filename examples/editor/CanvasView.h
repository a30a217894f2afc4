// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QGraphicsView>
#include <QStringList>

class QGestureEvent;
class QNativeGestureEvent;
class TitleCanvas;

/// Shows the canvas. The wheel and a pinch zoom, arrow keys nudge, SVG files can be dropped.
class CanvasView : public QGraphicsView
{
    Q_OBJECT

public:
    explicit CanvasView(TitleCanvas *canvas, QWidget *parent = nullptr);
    ~CanvasView() override;

    /// Pixels for each unit of the canvas.
    qreal zoom() const;

public Q_SLOTS:
    void setZoom(qreal zoom);
    void zoomIn();
    void zoomOut();

    /// Shows the whole canvas, also after the window has changed its size, until the next zoom.
    void fitToWindow();

Q_SIGNALS:
    void zoomChanged(qreal zoom);
    void nudged(const QPointF &offset);
    void filesDropped(const QStringList &paths);

protected:
    void drawBackground(QPainter *painter, const QRectF &rect) override;
    void drawForeground(QPainter *painter, const QRectF &rect) override;
    void wheelEvent(QWheelEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void applyZoom(qreal zoom);
    bool pinch(QGestureEvent *event);
    bool pinch(QNativeGestureEvent *event);

    TitleCanvas *m_canvas;
    bool m_fits = true;
};
