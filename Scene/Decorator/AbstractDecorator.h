// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QGraphicsObject>
#include <QPen>
#include <QPointer>

/// The base of the frames with which a user edits an item on a scene.
///
/// A decorator becomes the parent item of the item that it decorates, its child, and takes over the
/// child's position, transform and rotation: moving the decorator moves the child. The child is
/// deleted with the decorator. When the child is deleted first, an empty frame remains.
///
/// The child leaves its scene for that of the decorator, which is none until the decorator is put
/// on one. It leaves its parent item, too, and counts as placed in the decorator's: without one, a
/// child that stood in a group that is moved or turned stands elsewhere afterwards, at the same
/// position on the scene as it had in the group. To stay in a group, it gets a decorator in that
/// group.
///
/// Any QGraphicsObject can be decorated. The decorator tells it what the user wants by calling
/// these slots by name, as far as the child has them: setEditable(bool,QPointF), setSize(QSizeF),
/// setViewScale(qreal), setHighlight(bool). It follows the child's standard change signals and,
/// where the child has them, geometryChanged() and decorationChanged().
///
/// The child's scale is not taken over, and its rotation and scale are part of its transform as
/// well: fold both into the transform of a rotated or scaled child before decorating it, or they
/// count twice.
///
/// What the user does is reported when the mouse is released, by the frame that the user holds.
/// Selected frames move together, and the others report nothing. When a frame loses the mouse amid
/// a drag (it is hidden, disabled or taken off the scene), what was changed until then stays. A
/// loss reports nothing; a move that was lost comes with the next release on the frame, a size or
/// an angle never. A DragReporter tells of all of this, once for each drag.
///
/// A slot connected to itemMoved(), or to what a subclass reports, may delete the decorator. Where
/// Qt itself may be in the middle of changing the item, as during geometryChanged(),
/// decorationChanged() or the scene's selectionChanged(), only QObject::deleteLater() will do, as
/// for any graphics item.
///
/// A subclass ends its constructor with updateDecoration(), adjustToChild(),
/// setUpChildConnections() and updateDecoration(), in this order.
///
/// \ingroup decorators
class TITLESCENE_EXPORT AbstractDecorator : public QGraphicsObject
{
    Q_OBJECT

public:
    /// Becomes the parent item of \a child, which leaves its scene and can be neither moved nor
    /// selected by itself from now on. Null makes an empty frame. The placement is taken over by
    /// adjustToChild(): that in \a parent, or on the scene when it is null.
    explicit AbstractDecorator(QGraphicsObject *child, QGraphicsItem *parent = nullptr);
    ~AbstractDecorator() override;

    /// The decorated item; null once it is deleted.
    QGraphicsObject *child() const;

    /// The scale of handle items that keeps their size on the screen.
    qreal viewScale() const;

    /// An object of the application's whose dynamic properties hold the pens of the frame:
    /// "decoratorPen" and "strokePen", "decoratorSelectedPen" and "strokeSelectedPen" while
    /// highlighted. Null when there is none. Make the pens cosmetic (QPen::setCosmetic()): others
    /// are scaled with the handles, and where the same object styles the titles, with these.
    QObject *stylingObject() const;

    /// Takes the pens from \a object, which is not owned and may be null, and repaints the frame.
    void setStylingObject(QObject *object);

    /// Around the child and the handles; on a scene, as they were when the child was last moved,
    /// turned or scaled, or at the last updateDecoration().
    QRectF boundingRect() const override;

    /// Draws nothing.
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

Q_SIGNALS:
    /// The user has moved the frame and released the mouse, once for each drag. Also when a drag of
    /// a handle has moved it: before what the subclass reports.
    void itemMoved();

    /// Position, rotation, scale or transform have changed, by whomever. Comes while Qt changes
    /// them: who wants to delete the frame then, uses deleteLater().
    void geometryChanged();

    /// The handles have been placed anew. Comes also while Qt shows or hides the frame, looks at it
    /// for the first time on a scene, or changes its child: who wants to delete the frame or the
    /// child then, uses deleteLater().
    void decorationChanged();

public Q_SLOTS:
    /// Begins or ends the child's edit mode; \a pos is in the decorator's coordinates.
    virtual void setEditable(bool editable, const QPointF &pos);

    /// Sizes the child; \a size is in the decorator's units, which are the scene's only as long as
    /// the decorator is not scaled: a title that was scaled before it was decorated has handed its
    /// scale to the decorator.
    virtual void setSize(const QSizeF &size);

    /// Sets how many scene units a pixel of the view covers, so that handles keep their size on
    /// the screen. To be called again after a zoom and after the decorator was scaled.
    virtual void setViewScale(qreal scale);

    /// Chooses the pens of the frame, repaints it, and tells the child.
    void setHighlight(bool highlight);

    /// Places the handles around the child and emits decorationChanged().
    virtual void updateDecoration() = 0;

protected:
    /// Takes over the child's placement; the child is at the decorator's origin afterwards.
    void adjustToChild();

    /// Calls updateDecoration() whenever the child changes.
    void setUpChildConnections();

    /// Whether the frame has the pens of a selected item.
    bool isHighlighted() const;

    /// The child's bounding rectangle in the decorator's coordinates; empty without a child.
    QRectF childRect() const;

    /// Ends a drag of the frame, and reports it.
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

    /// Begins the child's edit mode, and lets a text that is edited then select a word.
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

    /// Notices moves, and tells of changes of the geometry.
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    void adoptBounds();
    void passToEditedText(const QGraphicsSceneMouseEvent &doubleClick);

    QPointer<QGraphicsObject> m_child;
    QRectF m_bounds; // as the scene knows it
    qreal m_viewScale = 1.0;
    bool m_moved = false;
    QPointer<QObject> m_stylingObject;
    bool m_highlighted = false;
};
