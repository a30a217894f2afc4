// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/Decorator/AbstractDecorator.h>

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QTransform>
#include <QVector>

class QGraphicsScene;

/// Tells an application of all that a drag has done to the frames on a scene, for an undo stack
/// that misses nothing.
///
/// The signals of a frame (AbstractDecorator::itemMoved(), ResizeDecorator::itemResized(),
/// RotateDecorator::itemRotated()) come from the frame that the user holds and when the mouse is
/// released. They are silent about other selected frames that move with it, about a drag that ends
/// since the frame loses the mouse (it is hidden, disabled or taken off the scene), and about an
/// item that a mere press on the handle of a RotateDecorator moves, as it makes its centre the one
/// to turn about. A drag of a left or upper handle is told twice. A reporter tells each drag once.
///
/// \ingroup decorators
class TITLESCENE_EXPORT DragReporter : public QObject
{
    Q_OBJECT

public:
    /// Follows the mouse on \a scene, which is not owned and must not be null.
    explicit DragReporter(QGraphicsScene *scene, QObject *parent = nullptr);
    ~DragReporter() override;

    /// Sees the events of the scene and its frames; lets all of them pass.
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// A drag has ended, and \a frames have another place or turn than before it, or children of
    /// another size or place. The frames that are gone by then are left out; the signal does not
    /// come when there are no others.
    ///
    /// It comes when control returns to the event loop, or with the next press, and so after the
    /// frames' own signals. A slot may delete the frames.
    void framesDragged(const QList<AbstractDecorator *> &frames);

private:
    struct Shape
    {
        QTransform frame; // to its parent
        QTransform child; // to the frame
        QRectF childBounds;
    };
    struct Before
    {
        QPointer<AbstractDecorator> frame;
        Shape shape;
    };

    static Shape shapeOf(const AbstractDecorator &frame);
    static bool isSame(const Shape &a, const Shape &b);
    void beginDrag();
    void endDragOf(QObject *frame);
    void report();

    QPointer<QGraphicsScene> m_scene;
    QVector<Before> m_before;
    const QObject *m_holder = nullptr; // the frame that has the mouse
};
