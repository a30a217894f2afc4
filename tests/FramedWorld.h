// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "SceneTest.h"

#include <Scene/Decorator/RotateDecorator.h>
#include <Scene/SceneHelper.h>

#include <QApplication>
#include <QGraphicsRectItem>
#include <QPointer>

// A framed item with all that is around it, any of which may go at any time.

enum class Frame { Resize, ResizeWithFewHandles, Rotate };

Q_DECLARE_METATYPE(Frame)

inline const QVector<Frame> &allFrames()
{
    static const QVector<Frame> frames = {Frame::Resize, Frame::ResizeWithFewHandles,
                                          Frame::Rotate};
    return frames;
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

//! What is still there.
struct Fate
{
    bool decorator = true;
    bool child = true;
    bool scene = true;
};

//! A framed child on a helper's scene. What is left goes with the world.
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
        if (child && !child->scene())
            delete child;
        if (decorator && !decorator->scene())
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

    //! Where frames can go to; outlives all the others.
    QGraphicsScene otherScene;
    QPointer<QGraphicsScene> scene;
    QPointer<SceneHelper> helper;
    QPointer<QGraphicsView> view;
    QPointer<CountedChild> child;
    QPointer<AbstractDecorator> decorator;

private:
    Q_DISABLE_COPY(World)
};

using Action = std::function<void(World &)>;

Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(Fate)

//! Fails the test function when other things are left than should be.
inline void verifyFate(const World &world, const Fate &expected)
{
    QCOMPARE(!world.decorator.isNull(), expected.decorator);
    QCOMPARE(!world.child.isNull(), expected.child);
    QCOMPARE(!world.scene.isNull(), expected.scene);
}

inline bool isOn(const QGraphicsScene *scene, const QGraphicsItem *item)
{
    return scene && item && item->scene() == scene;
}

//! No scene has handles that belong to no frame: it would delete them, as would their decorator.
inline void verifyNoLooseHandles(const QGraphicsScene &scene)
{
    const QList<QGraphicsItem *> items = scene.items();
    for (QGraphicsItem *item : items)
        QVERIFY(!dynamic_cast<ResizeHandleItem *>(item) || item->parentItem());
}

//! Whether the decorator and what it frames agree on each other.
inline void verifyConsistent(World &world)
{
    verifyNoLooseHandles(world.otherScene);
    if (world.scene)
        verifyNoLooseHandles(*world.scene);
    if (!world.decorator)
        return;
    QCOMPARE(world.decorator->child(), world.child.data());
    const QList<QGraphicsItem *> children = world.decorator->childItems();
    QCOMPARE(children.contains(world.child), world.child && world.child->parentItem());
    for (const QGraphicsItem *child : children)
        QCOMPARE(child->scene(), world.decorator->scene());
    if (const auto *resize = qobject_cast<ResizeDecorator *>(world.decorator))
        QVERIFY(childHandles(*resize).size() <= resize->availableHandles().size());
}

//! What anybody may do with what is left.
inline void useWhatIsLeft(World &world)
{
    verifyConsistent(world);
    if (world.helper)
        world.helper->setViewScale(0.5);
    if (world.decorator) {
        world.decorator->setEditable(true, QPointF(1.0, 2.0));
        world.decorator->setSize(QSizeF(50.0, 60.0));
        world.decorator->setViewScale(2.0);
        world.decorator->setHighlight(true);
        world.decorator->setPos(3.0, 4.0);
        world.decorator->updateDecoration();
        QCOMPARE(world.decorator->viewScale(), 2.0);
        QCOMPARE(world.decorator->pos(), QPointF(3.0, 4.0));
    }
    if (world.child && world.decorator)
        QCOMPARE(world.child->scale, 2.0);
    if (world.view)
        QVERIFY(!world.view->grab().isNull());
    verifyConsistent(world);
}

//! Leaves the resize frame with these handles; takes the rotate frame its handle.
inline void setHandles(World &world, const QSet<Qt::WindowFrameSection> &sections)
{
    if (auto *resize = qobject_cast<ResizeDecorator *>(world.decorator))
        resize->setAvailableHandles(sections);
    if (auto *rotate = qobject_cast<RotateDecorator *>(world.decorator))
        rotate->setRotateHandleItem(nullptr);
}

//! Something that leaves all alive.
struct Change
{
    QString name;
    Action action;
};

inline const QVector<Change> &changes()
{
    static const QVector<Change> steps = {
            {QStringLiteral("scene removes"),
             [](World &world) {
                 if (isOn(world.scene, world.decorator))
                     world.scene->removeItem(world.decorator);
             }},
            {QStringLiteral("helper removes"),
             [](World &world) { world.helper->removeItem(world.decorator); }},
            {QStringLiteral("helper adds"),
             [](World &world) { world.helper->addItem(world.decorator); }},
            {QStringLiteral("helper clears"), [](World &world) { world.helper->clear(); }},
            {QStringLiteral("another scene takes the frame"),
             [](World &world) {
                 if (!isOn(&world.otherScene, world.decorator))
                     world.otherScene.addItem(world.decorator);
             }},
            {QStringLiteral("child leaves the frame"),
             [](World &world) { world.child->setParentItem(nullptr); }},
            {QStringLiteral("child comes back"),
             [](World &world) { world.child->setParentItem(world.decorator); }},
            {QStringLiteral("frame into a group"),
             [](World &world) {
                 // On the frame's scene: Qt has no way from an item of one scene to a parent of
                 // another.
                 auto *group = new QGraphicsRectItem;
                 QGraphicsScene *scene = world.decorator->scene();
                 (scene ? scene : world.scene.data())->addItem(group);
                 world.decorator->setParentItem(group);
             }},
            {QStringLiteral("frame out of the group"),
             [](World &world) { world.decorator->setParentItem(nullptr); }},
            {QStringLiteral("no handles"), [](World &world) { setHandles(world, {}); }},
            {QStringLiteral("one handle"),
             [](World &world) { setHandles(world, {Qt::TopSection}); }},
            {QStringLiteral("all handles"),
             [](World &world) {
                 const QVector<Qt::WindowFrameSection> &all = allSections();
                 setHandles(world, QSet<Qt::WindowFrameSection>(all.begin(), all.end()));
             }},
            {QStringLiteral("hidden and shown"),
             [](World &world) {
                 world.decorator->hide();
                 world.decorator->show();
             }},
            {QStringLiteral("no index"),
             [](World &world) { world.scene->setItemIndexMethod(QGraphicsScene::NoIndex); }},
            {QStringLiteral("view shows nothing"),
             [](World &world) { world.view->setScene(nullptr); }},
            {QStringLiteral("another child"),
             [](World &world) {
                 auto *more = new CountedChild;
                 more->setParentItem(world.decorator);
             }},
    };
    return steps;
}
