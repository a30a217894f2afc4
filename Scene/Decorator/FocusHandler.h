// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QGraphicsObject>
#include <QPointer>

/// Highlights a decorated item while the item that it watches has the keyboard focus.
///
/// Install it as a scene event filter (QGraphicsItem::installSceneEventFilter()) on the item whose
/// focus it is to follow; both have to be in the same scene. It calls the slot setHighlight(bool),
/// if there is one, of the target's top-level item, normally a decorator. It draws nothing and lets
/// every event pass. The slot may take the items off the scene; the event then ends.
///
/// \ingroup decorators
class TITLESCENE_EXPORT FocusHandler : public QGraphicsObject
{
    Q_OBJECT

public:
    /// Becomes a child item of \a target, and does nothing when that is null.
    explicit FocusHandler(QGraphicsObject *target);
    ~FocusHandler() override;

    /// Draws nothing.
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

    /// Empty.
    QRectF boundingRect() const override;

protected:
    /// Highlights when \a watched gets the focus, and ends that when it loses it. True, and with it
    /// the end of the event, only when the slot took the items off the scene.
    bool sceneEventFilter(QGraphicsItem *watched, QEvent *event) override;

    /// Notices that the items are off the scene.
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    QPointer<QGraphicsObject> m_target;
    bool m_leftScene = false; // since the filter was called
};
