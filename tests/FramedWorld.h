// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "SceneTest.h"

#include <Scene/Decorator/RotateDecorator.h>
#include <Scene/SceneHelper.h>

#include <QApplication>
#include <QPointer>

enum class Frame { Resize, ResizeWithFewHandles, Rotate };

inline QVector<Frame> allFrames()
{
    return {Frame::Resize, Frame::ResizeWithFewHandles, Frame::Rotate};
}

inline QString nameOf(Frame frame)
{
    switch (frame) {
    case Frame::Resize:
        return QStringLiteral("resize");
    case Frame::ResizeWithFewHandles:
        return QStringLiteral("resize with two handles");
    case Frame::Rotate:
        break;
    }
    return QStringLiteral("rotate");
}

//! A child that is counted while it lives.
class CountedChild : public RecordingChild
{
public:
    CountedChild() { ++count(); }
    ~CountedChild() override { --count(); }

    static int &count()
    {
        static int children = 0;
        return children;
    }
};

inline AbstractDecorator *newFrame(Frame frame, QGraphicsObject *child)
{
    if (frame == Frame::Rotate)
        return new RotateDecorator(child);
    auto *decorator = new ResizeDecorator(child);
    if (frame == Frame::ResizeWithFewHandles)
        decorator->setAvailableHandles({Qt::LeftSection, Qt::TopSection});
    return decorator;
}

//! A framed child on a helper's scene, all of which may be gone at any time. What is left goes with
//! it.
class World
{
public:
    explicit World(Frame frame)
        : scene(new QGraphicsScene(-500.0, -500.0, 1000.0, 1000.0)),
          helper(new SceneHelper(scene, nullptr)), view(new QGraphicsView(scene)),
          child(new CountedChild), decorator(newFrame(frame, child))
    {
        view->resize(400, 400);
        helper->addItem(decorator);
        decorator->updateDecoration();
    }

    ~World()
    {
        delete view;
        if (decorator && !decorator->scene() && !decorator->parentItem())
            delete decorator;
        delete helper;
        delete scene;
        if (child)
            delete child;
        if (decorator)
            delete decorator;
    }

    void showView()
    {
        view->show();
        if (!QTest::qWaitForWindowExposed(view))
            QTest::qFail("The view does not appear", __FILE__, __LINE__);
        view->centerOn(50.0, 25.0);
        QApplication::setActiveWindow(view);
    }

    QGraphicsItem *firstHandle() const
    {
        const QVector<ResizeHandleItem *> handles =
                decorator ? childHandles(*decorator) : QVector<ResizeHandleItem *>();
        return handles.isEmpty() ? nullptr : handles.first();
    }

    QPointer<QGraphicsScene> scene;
    QPointer<SceneHelper> helper;
    QPointer<QGraphicsView> view;
    QPointer<CountedChild> child;
    QPointer<AbstractDecorator> decorator;

private:
    Q_DISABLE_COPY(World)
};

Q_DECLARE_METATYPE(Frame)
