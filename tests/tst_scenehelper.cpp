// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MetaObjectText.h"
#include "WarningFreeTest.h"

#include <Scene/SceneHelper.h>
#include <Scene/TitleItem.h>
#include <Scene/TitleSvgItem.h>

#include <QGraphicsObject>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QSignalSpy>

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <vector>

namespace {

using Time = SceneHelper::Time;

/// An item of no special kind.
class PlainItem : public QGraphicsRectItem
{
public:
    explicit PlainItem(bool *isDeleted = nullptr) : m_isDeleted(isDeleted) {}
    ~PlainItem() override
    {
        if (m_isDeleted)
            *m_isDeleted = true;
    }

private:
    bool *m_isDeleted;
};

class ObjectItem : public QGraphicsObject
{
    Q_OBJECT

public:
    QRectF boundingRect() const override { return {0, 0, 10, 10}; }
    void paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *) override {}
};

/// Wants the view scale, and remembers all that it was told.
class ScaledItem : public ObjectItem
{
    Q_OBJECT

public:
    QVector<qreal> scales;
    std::function<void()> onScale = [] {};

public Q_SLOTS:
    void setViewScale(qreal scale)
    {
        scales.append(scale);
        // A copy, since it may delete this item.
        const std::function<void()> callback = onScale;
        callback();
    }
};

/// Inherits the slot.
class DerivedItem : public ScaledItem
{
    Q_OBJECT
};

class PrivateSlotItem : public ObjectItem
{
    Q_OBJECT

public:
    QVector<qreal> scales;

private Q_SLOTS:
    void setViewScale(qreal scale) { scales.append(scale); }
};

/// qreal is double.
class DoubleSlotItem : public ObjectItem
{
    Q_OBJECT

public:
    QVector<qreal> scales;

public Q_SLOTS:
    void setViewScale(double scale) { scales.append(scale); }
};

class InvokableItem : public ObjectItem
{
    Q_OBJECT

public:
    QVector<qreal> scales;

    Q_INVOKABLE void setViewScale(qreal scale) { scales.append(scale); }
};

class IntSlotItem : public ObjectItem
{
    Q_OBJECT

public:
    QVector<qreal> scales;

public Q_SLOTS:
    void setViewScale(int scale) { scales.append(scale); }
};

/// A place in memory where an item that is no object and, after its end, an object can stand, so
/// that both have the same address as QGraphicsItem.
class SharedPlace
{
public:
    ScaledItem *makeObject() { return new (m_memory) ScaledItem; }

    QGraphicsItem *makePlainItem()
    {
        // Where in an object the QGraphicsItem is.
        ScaledItem *object = makeObject();
        auto *item = reinterpret_cast<std::byte *>(static_cast<QGraphicsItem *>(object));
        object->~ScaledItem();
        return new (item) QGraphicsRectItem;
    }

private:
    alignas(std::max_align_t) std::byte m_memory[sizeof(ScaledItem) + sizeof(QGraphicsRectItem)];
};

void deleteNow(QObject *object)
{
    QCoreApplication::sendPostedEvents(object, QEvent::DeferredDelete);
}

QGraphicsItem *itemOf(const QSignalSpy &spy, int index = 0)
{
    return spy.value(index).value(0).value<QGraphicsItem *>();
}

} // namespace

class SceneHelperTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void methods_data();
    void methods();
    void methodCount();
    void signalsCanBeQueued();
    void slotsCanBeQueued();

    void valuesAtFirst();
    void ownsTheScene();
    void belongsToItsParent();

    void addsItems();
    void addsBeforeItTells();
    void addsTwice();
    void addsNoNullItem();
    void takesItemsFromOtherScenes();
    void addsRemovedItemsAgain();

    void removesItems();
    void removesBeforeItTells();
    void removesOnlyItsOwn();
    void removesChildren();
    void removesItemsThatLeftTheScene();

    void clears();
    void clearsNothing();
    void clearsParentsAndChildren();
    void clearsItemsThatLeftTheScene();

    void deletesLater();
    void deletesLaterOnlyItsOwn();
    void deletesLaterOnce();

    void sceneTimes_data();
    void sceneTimes();
    void backgrounds();
    void stylingObject();

    void viewScales();
    void viewScaleSlots_data();
    void viewScaleSlots();
    void viewScalePassesTitlesOver();
    void viewScaleOfOneItem();
    void viewScaleOfItemsOnOtherScenes();
    void latestViewScaleWins();
    void viewScaleSlotAddsItems();

    void forgetsDeletedObjects();
    void forgetsDeletedPlainItems();
    void forgetsItemsOfAClearedScene();
    void forgetsChildrenOfDeletedItems();
    void forgetsItemsDeletedOnOtherScenes();
    void tellsAnObjectFromAnEarlierPlainItem_data();
    void tellsAnObjectFromAnEarlierPlainItem();
    void leavesConnectionsOfOthersAlone();

    void itemsDeletedInSlotsOfSignals();
    void itemsDeletedInTheirScaleSlot();
    void itemsDeletedInOthersScaleSlots();
    void itemRemovedInItsScaleSlot();
    void itemDeletedWhenHidden();
    void calledWhileAnItemIsDeleted_data();
    void calledWhileAnItemIsDeleted();
    void itemsDeletedWhileTheHelperIs();

    void sceneDeletedFirst();
    void calledWhileTheSceneIsDeleted();

private:
    std::unique_ptr<SceneHelper> m_helper;
    QGraphicsScene *m_scene = nullptr;
    std::unique_ptr<QSignalSpy> m_added;
    std::unique_ptr<QSignalSpy> m_removed;
    std::unique_ptr<QSignalSpy> m_cleared;
};

void SceneHelperTest::init()
{
    m_scene = new QGraphicsScene;
    m_helper = std::make_unique<SceneHelper>(m_scene, nullptr);
    m_added = std::make_unique<QSignalSpy>(m_helper.get(), SIGNAL(itemAdded(QGraphicsItem *)));
    m_removed = std::make_unique<QSignalSpy>(m_helper.get(), SIGNAL(itemRemoved(QGraphicsItem *)));
    m_cleared = std::make_unique<QSignalSpy>(m_helper.get(), SIGNAL(sceneCleared()));
}

void SceneHelperTest::cleanup()
{
    m_helper.reset();
}

// Meta-object

void SceneHelperTest::methods_data()
{
    QTest::addColumn<int>("index");

    const auto row = [](int index, const char *text) { QTest::newRow(text) << index; };
    row(0, "signal void itemAdded(QGraphicsItem* item)");
    row(1, "signal void itemRemoved(QGraphicsItem* item)");
    row(2, "signal void sceneCleared()");
    row(3, "signal void sceneTimeChanged(SceneHelper::Time t)");
    row(4, "signal void sceneBackgroundChanged(QPixmap px)");
    row(5, "slot void addItem(QGraphicsItem* item)");
    row(6, "slot void removeItem(QGraphicsItem* item)");
    row(7, "slot void clear()");
    row(8, "slot void deleteItemLater(QGraphicsObject* item)");
    row(9, "slot void setSceneTime(SceneHelper::Time t)");
    row(10, "slot void setSceneBackground(QPixmap px)");
    row(11, "slot void setViewScale(double s)");
    row(12, "slot void setStylingObject(QObject* o)");
    row(13, "slot QObject* stylingObject()");
}

void SceneHelperTest::methods()
{
    QFETCH(const int, index);
    const QMetaObject &meta = SceneHelper::staticMetaObject;
    QCOMPARE(methodText(meta.method(meta.methodOffset() + index)),
             QString::fromLatin1(QTest::currentDataTag()));
}

void SceneHelperTest::methodCount()
{
    const QMetaObject &meta = SceneHelper::staticMetaObject;
    QCOMPARE(ownMethods(meta).size(), 14);
    QCOMPARE(ownProperties(meta), QStringList());
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.indexOfSlot("setViewScale(qreal)"), meta.methodOffset() + 11);
}

void SceneHelperTest::signalsCanBeQueued()
{
    SceneHelper source(new QGraphicsScene, nullptr);
    const auto queue = [&](const char *signal, const char *slot) {
        return connect(&source, signal, m_helper.get(), slot, Qt::QueuedConnection);
    };
    QVERIFY(queue(SIGNAL(itemRemoved(QGraphicsItem *)), SLOT(addItem(QGraphicsItem *))));
    QVERIFY(queue(SIGNAL(sceneTimeChanged(SceneHelper::Time)),
                  SLOT(setSceneTime(SceneHelper::Time))));
    QVERIFY(queue(SIGNAL(sceneBackgroundChanged(QPixmap)), SLOT(setSceneBackground(QPixmap))));

    auto *item = new PlainItem;
    source.addItem(item);
    source.removeItem(item);
    source.setSceneTime(Time(1) << 40);
    source.setSceneBackground(QPixmap(3, 4));
    QVERIFY(!m_helper->hasItems());
    QCoreApplication::processEvents();
    QCOMPARE(item->scene(), m_scene);
    QCOMPARE(m_helper->sceneTime(), Time(1) << 40);
    QCOMPARE(m_helper->sceneBackground().size(), QSize(3, 4));
}

void SceneHelperTest::slotsCanBeQueued()
{
    SceneHelper &helper = *m_helper;
    auto *first = new ScaledItem;
    auto *second = new PlainItem;
    const auto call = [&helper](const char *slot, auto... arguments) {
        return QMetaObject::invokeMethod(&helper, slot, Qt::QueuedConnection, arguments...);
    };
    QVERIFY(call("addItem", Q_ARG(QGraphicsItem *, first)));
    QVERIFY(call("addItem", Q_ARG(QGraphicsItem *, second)));
    QVERIFY(call("removeItem", Q_ARG(QGraphicsItem *, second)));
    QVERIFY(call("setSceneTime", Q_ARG(SceneHelper::Time, Time(7))));
    QVERIFY(call("setSceneBackground", Q_ARG(QPixmap, QPixmap(3, 4))));
    QVERIFY(call("setViewScale", Q_ARG(qreal, 2.5)));
    QVERIFY(call("setStylingObject", Q_ARG(QObject *, this)));
    QCOMPARE(m_added->count(), 0);
    QCoreApplication::processEvents();

    QCOMPARE(m_added->count(), 2);
    QCOMPARE(m_removed->count(), 1);
    QCOMPARE(itemOf(*m_removed), second);
    QCOMPARE(helper.sceneTime(), Time(7));
    QCOMPARE(helper.sceneBackground().size(), QSize(3, 4));
    QCOMPARE(first->scales, (QVector<qreal>{1.0, 2.5}));
    QObject *styling = nullptr;
    QVERIFY(QMetaObject::invokeMethod(&helper, "stylingObject", Q_RETURN_ARG(QObject *, styling)));
    QCOMPARE(styling, this);

    const QPointer<ScaledItem> guard(first);
    QVERIFY(call("deleteItemLater", Q_ARG(QGraphicsObject *, first)));
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!guard);
    QVERIFY(call("clear"));
    QCoreApplication::processEvents();
    QCOMPARE(m_cleared->count(), 1);
    delete second;
}

// Beginning and end

void SceneHelperTest::valuesAtFirst()
{
    QCOMPARE(m_helper->scene(), m_scene);
    QCOMPARE(m_helper->sceneTime(), Time(0));
    QVERIFY(m_helper->sceneBackground().isNull());
    QVERIFY(!m_helper->hasItems());
    QCOMPARE(m_helper->stylingObject(), nullptr);
    QVERIFY(m_scene->items().isEmpty());
}

void SceneHelperTest::ownsTheScene()
{
    QCOMPARE(m_scene->parent(), m_helper.get());
    const QPointer<QGraphicsScene> scene(m_scene);
    bool isDeleted = false;
    bool isRemovedDeleted = false;
    const QPointer<ObjectItem> object(new ObjectItem);
    auto *removed = new PlainItem(&isRemovedDeleted);
    m_helper->addItem(new PlainItem(&isDeleted));
    m_helper->addItem(object);
    m_helper->addItem(removed);
    m_helper->removeItem(removed);

    m_helper.reset();
    QVERIFY(!scene);
    QVERIFY(!object);
    QVERIFY(isDeleted);
    QVERIFY(!isRemovedDeleted);
    delete removed;
}

void SceneHelperTest::belongsToItsParent()
{
    auto parent = std::make_unique<QObject>();
    const QPointer<SceneHelper> helper(new SceneHelper(new QGraphicsScene, parent.get()));
    QCOMPARE(helper->parent(), parent.get());
    parent.reset();
    QVERIFY(!helper);
}

// Adding

void SceneHelperTest::addsItems()
{
    auto *plain = new PlainItem;
    auto *object = new ObjectItem;
    m_helper->addItem(plain);
    QVERIFY(m_helper->hasItems());
    QCOMPARE(plain->scene(), m_scene);
    QCOMPARE(m_added->count(), 1);
    QCOMPARE(itemOf(*m_added), plain);

    m_helper->addItem(object);
    QCOMPARE(object->scene(), m_scene);
    QCOMPARE(m_added->count(), 2);
    QCOMPARE(itemOf(*m_added, 1), object);
    QCOMPARE(m_scene->items().size(), 2);
    QCOMPARE(m_removed->count(), 0);
    QCOMPARE(m_cleared->count(), 0);
}

void SceneHelperTest::addsBeforeItTells()
{
    auto *item = new ScaledItem;
    QGraphicsScene *sceneSeen = nullptr;
    QVector<qreal> scalesSeen;
    bool hadItems = false;
    connect(m_helper.get(), &SceneHelper::itemAdded, this, [&] {
        sceneSeen = item->scene();
        scalesSeen = item->scales;
        hadItems = m_helper->hasItems();
    });
    m_helper->addItem(item);
    QCOMPARE(sceneSeen, m_scene);
    QCOMPARE(scalesSeen, QVector<qreal>{1.0});
    QVERIFY(hadItems);
}

void SceneHelperTest::addsTwice()
{
    auto *plain = new PlainItem;
    auto *object = new ScaledItem;
    m_helper->addItem(plain);
    m_helper->addItem(plain);
    m_helper->addItem(object);
    m_helper->addItem(object);
    QCOMPARE(m_added->count(), 4);
    QCOMPARE(m_scene->items().size(), 2);
    QCOMPARE(object->scales, (QVector<qreal>{1.0, 1.0}));

    m_helper->removeItem(plain);
    m_helper->removeItem(object);
    QCOMPARE(m_removed->count(), 2);
    QVERIFY(!m_helper->hasItems());
    m_helper->removeItem(object);
    QCOMPARE(m_removed->count(), 2);
    delete plain;
    delete object;
}

void SceneHelperTest::addsNoNullItem()
{
    m_helper->addItem(nullptr);
    QCOMPARE(m_added->count(), 0);
    QVERIFY(!m_helper->hasItems());
}

void SceneHelperTest::takesItemsFromOtherScenes()
{
    QGraphicsScene other;
    auto *item = new ObjectItem;
    other.addItem(item);
    m_helper->addItem(item);
    QCOMPARE(item->scene(), m_scene);
    QVERIFY(other.items().isEmpty());
    QCOMPARE(m_added->count(), 1);
}

void SceneHelperTest::addsRemovedItemsAgain()
{
    auto *item = new ScaledItem;
    for (int round = 1; round <= 3; ++round) {
        m_helper->addItem(item);
        QVERIFY(m_helper->hasItems());
        QCOMPARE(item->scene(), m_scene);
        m_helper->removeItem(item);
        QVERIFY(!m_helper->hasItems());
        QCOMPARE(item->scene(), nullptr);
        QCOMPARE(m_added->count(), round);
        QCOMPARE(m_removed->count(), round);
    }
    m_helper->addItem(item);
    m_helper->setViewScale(4.0);
    QCOMPARE(item->scales, (QVector<qreal>{1.0, 1.0, 1.0, 1.0, 4.0}));
}

// Removing

void SceneHelperTest::removesItems()
{
    PlainItem plain;
    ScaledItem object;
    m_helper->addItem(&plain);
    m_helper->addItem(&object);
    m_helper->removeItem(&plain);
    QCOMPARE(plain.scene(), nullptr);
    QCOMPARE(m_removed->count(), 1);
    QCOMPARE(itemOf(*m_removed), &plain);
    QVERIFY(m_helper->hasItems());

    m_helper->removeItem(&object);
    QCOMPARE(object.scene(), nullptr);
    QCOMPARE(m_removed->count(), 2);
    QCOMPARE(itemOf(*m_removed, 1), &object);
    QVERIFY(!m_helper->hasItems());
    QCOMPARE(m_cleared->count(), 0);

    m_helper->setViewScale(2.0);
    QCOMPARE(object.scales, QVector<qreal>{1.0});
}

void SceneHelperTest::removesBeforeItTells()
{
    PlainItem plain;
    ObjectItem object;
    for (QGraphicsItem *item :
         {static_cast<QGraphicsItem *>(&plain), static_cast<QGraphicsItem *>(&object)}) {
        m_helper->addItem(item);
        QGraphicsScene *sceneSeen = m_scene;
        bool hadItems = true;
        const auto connection = connect(m_helper.get(), &SceneHelper::itemRemoved, this, [&] {
            sceneSeen = item->scene();
            hadItems = m_helper->hasItems();
        });
        m_helper->removeItem(item);
        disconnect(connection);
        QCOMPARE(sceneSeen, nullptr);
        QVERIFY(!hadItems);
    }
}

void SceneHelperTest::removesOnlyItsOwn()
{
    auto *known = new PlainItem;
    auto *stranger = new PlainItem;
    auto *strangeObject = new ObjectItem;
    m_helper->addItem(known);
    m_scene->addItem(stranger);
    m_scene->addItem(strangeObject);
    m_helper->removeItem(stranger);
    m_helper->removeItem(strangeObject);
    m_helper->removeItem(nullptr);
    QCOMPARE(m_removed->count(), 0);
    QCOMPARE(stranger->scene(), m_scene);
    QCOMPARE(strangeObject->scene(), m_scene);
    QCOMPARE(m_scene->items().size(), 3);
    QVERIFY(m_helper->hasItems());
}

void SceneHelperTest::removesChildren()
{
    auto *parent = new ObjectItem;
    m_helper->addItem(parent);
    PlainItem child;
    m_helper->addItem(&child);
    child.setParentItem(parent);
    m_helper->removeItem(&child);
    QCOMPARE(child.scene(), nullptr);
    QCOMPARE(child.parentItem(), nullptr);
    QCOMPARE(itemOf(*m_removed), &child);
    QCOMPARE(parent->scene(), m_scene);
}

void SceneHelperTest::removesItemsThatLeftTheScene()
{
    QGraphicsScene other;
    PlainItem plain;
    ObjectItem object;
    m_helper->addItem(&plain);
    m_helper->addItem(&object);
    m_scene->removeItem(&plain);
    other.addItem(&object);
    m_helper->removeItem(&plain);
    m_helper->removeItem(&object);
    QCOMPARE(m_removed->count(), 2);
    QCOMPARE(object.scene(), &other);
    QVERIFY(!m_helper->hasItems());
    other.removeItem(&object);
}

// Clearing

void SceneHelperTest::clears()
{
    PlainItem plain;
    ScaledItem object;
    auto *stranger = new PlainItem;
    m_helper->addItem(&plain);
    m_helper->addItem(&object);
    m_scene->addItem(stranger);
    bool hadItems = true;
    connect(m_helper.get(), &SceneHelper::sceneCleared, this,
            [&] { hadItems = m_helper->hasItems(); });
    m_helper->clear();
    QCOMPARE(m_cleared->count(), 1);
    QCOMPARE(m_removed->count(), 0);
    QVERIFY(!hadItems);
    QVERIFY(!m_helper->hasItems());
    QCOMPARE(plain.scene(), nullptr);
    QCOMPARE(object.scene(), nullptr);
    QCOMPARE(m_scene->items(), QList<QGraphicsItem *>{stranger});

    m_helper->setViewScale(2.0);
    QCOMPARE(object.scales, QVector<qreal>{1.0});
    m_helper->removeItem(&plain);
    m_helper->removeItem(&object);
    QCOMPARE(m_removed->count(), 0);
}

void SceneHelperTest::clearsNothing()
{
    m_helper->clear();
    m_helper->clear();
    QCOMPARE(m_cleared->count(), 2);
}

/// In whichever order the items come up.
void SceneHelperTest::clearsParentsAndChildren()
{
    for (int round = 0; round < 20; ++round) {
        std::vector<std::unique_ptr<QGraphicsItem>> items;
        for (int i = 0; i < 6; ++i) {
            if ((i + round) % 2 == 0)
                items.push_back(std::make_unique<ObjectItem>());
            else
                items.push_back(std::make_unique<PlainItem>());
            m_helper->addItem(items.back().get());
            if (i > 0)
                items[i]->setParentItem(items[i - 1].get());
        }
        m_helper->clear();
        QVERIFY(m_scene->items().isEmpty());
        QVERIFY(!m_helper->hasItems());
        for (const auto &item : items) {
            QCOMPARE(item->scene(), nullptr);
            item->setParentItem(nullptr);
        }
    }
    QCOMPARE(m_cleared->count(), 20);
}

void SceneHelperTest::clearsItemsThatLeftTheScene()
{
    QGraphicsScene other;
    auto *plain = new PlainItem;
    auto *object = new ObjectItem;
    m_helper->addItem(plain);
    m_helper->addItem(object);
    other.addItem(plain);
    other.addItem(object);
    m_helper->clear();
    QCOMPARE(m_cleared->count(), 1);
    QVERIFY(!m_helper->hasItems());
    QCOMPARE(plain->scene(), &other);
    QCOMPARE(object->scene(), &other);
}

// Deleting later

void SceneHelperTest::deletesLater()
{
    const QPointer<ScaledItem> item(new ScaledItem);
    m_helper->addItem(item);
    bool wasVisible = true;
    bool hadItems = true;
    QGraphicsScene *sceneSeen = nullptr;
    connect(m_helper.get(), &SceneHelper::itemRemoved, this, [&](QGraphicsItem *removed) {
        wasVisible = removed->isVisible();
        hadItems = m_helper->hasItems();
        sceneSeen = removed->scene();
    });
    m_helper->deleteItemLater(item);
    QCOMPARE(m_removed->count(), 1);
    QCOMPARE(itemOf(*m_removed), item.data());
    QVERIFY(!wasVisible);
    QVERIFY(!hadItems);
    QCOMPARE(sceneSeen, m_scene);
    QVERIFY(item);
    QVERIFY(!item->isVisible());

    m_helper->setViewScale(3.0);
    QCOMPARE(item->scales, QVector<qreal>{1.0});
    deleteNow(item);
    QVERIFY(!item);
    QVERIFY(m_scene->items().isEmpty());
    QCOMPARE(m_removed->count(), 1);
}

void SceneHelperTest::deletesLaterOnlyItsOwn()
{
    const QPointer<ObjectItem> stranger(new ObjectItem);
    m_scene->addItem(stranger);
    m_helper->deleteItemLater(stranger);
    m_helper->deleteItemLater(nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_removed->count(), 0);
    QVERIFY(stranger);
    QVERIFY(stranger->isVisible());
}

void SceneHelperTest::deletesLaterOnce()
{
    const QPointer<ObjectItem> item(new ObjectItem);
    m_helper->addItem(item);
    m_helper->deleteItemLater(item);
    m_helper->deleteItemLater(item);
    m_helper->removeItem(item);
    QCOMPARE(m_removed->count(), 1);
    QCOMPARE(item->scene(), m_scene);
    m_helper->clear();
    QCOMPARE(item->scene(), m_scene);
    deleteNow(item);
    QVERIFY(!item);
}

// Time, background, styling object

void SceneHelperTest::sceneTimes_data()
{
    QTest::addColumn<QVector<Time>>("times");
    QTest::addColumn<QVector<Time>>("announced");

    const auto row = [](const char *name, const QVector<Time> &times,
                        const QVector<Time> &announced) {
        QTest::newRow(name) << times << announced;
    };
    const Time latest = std::numeric_limits<Time>::max();
    const Time earliest = std::numeric_limits<Time>::min();
    row("0 at first", {0}, {0});
    row("0 twice", {0, 0}, {0, 0});
    row("5 twice", {5, 5}, {5});
    row("5, 0, 0, 5", {5, 0, 0, 5}, {5, 0, 0, 5});
    row("there and back", {5, 6, 5}, {5, 6, 5});
    row("negative", {-1, -1, -2}, {-1, -2});
    row("beyond an int", {Time(1) << 40, (Time(1) << 40) + 1},
        {Time(1) << 40, (Time(1) << 40) + 1});
    row("limits", {latest, latest, earliest, earliest}, {latest, earliest});
}

void SceneHelperTest::sceneTimes()
{
    QFETCH(const QVector<Time>, times);

    QSignalSpy spy(m_helper.get(), SIGNAL(sceneTimeChanged(SceneHelper::Time)));
    QVector<Time> seen;
    connect(m_helper.get(), &SceneHelper::sceneTimeChanged, this,
            [&] { seen.append(m_helper->sceneTime()); });
    for (const Time time : times) {
        m_helper->setSceneTime(time);
        QCOMPARE(m_helper->sceneTime(), time);
    }
    QVector<Time> announced;
    for (const QList<QVariant> &arguments : qAsConst(spy))
        announced.append(arguments.value(0).value<SceneHelper::Time>());
    QTEST(announced, "announced");
    QTEST(seen, "announced");
}

void SceneHelperTest::backgrounds()
{
    QSignalSpy spy(m_helper.get(), SIGNAL(sceneBackgroundChanged(QPixmap)));
    QPixmap picture(5, 6);
    picture.fill(Qt::red);
    m_helper->setSceneBackground(picture);
    m_helper->setSceneBackground(picture);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).value<QPixmap>().cacheKey(), picture.cacheKey());

    picture.fill(Qt::blue);
    QCOMPARE(m_helper->sceneBackground().toImage().pixelColor(2, 2), QColor(Qt::red));
    m_helper->setSceneBackground(QPixmap());
    QCOMPARE(spy.count(), 3);
    QVERIFY(m_helper->sceneBackground().isNull());
    QVERIFY(spy.at(2).at(0).value<QPixmap>().isNull());
    QCOMPARE(m_scene->backgroundBrush(), QBrush());
}

void SceneHelperTest::stylingObject()
{
    auto styling = std::make_unique<QObject>();
    m_helper->setStylingObject(styling.get());
    QCOMPARE(m_helper->stylingObject(), styling.get());
    QCOMPARE(styling->parent(), nullptr);
    styling.reset();
    QCOMPARE(m_helper->stylingObject(), nullptr);
    m_helper->setStylingObject(this);
    m_helper->setStylingObject(nullptr);
    QCOMPARE(m_helper->stylingObject(), nullptr);
}

// View scale

void SceneHelperTest::viewScales()
{
    auto *first = new ScaledItem;
    m_helper->addItem(first);
    m_helper->addItem(new PlainItem);
    m_helper->addItem(new ObjectItem);
    m_helper->setViewScale(2.0);
    auto *second = new ScaledItem;
    m_helper->addItem(second);
    m_helper->setViewScale(2.0);
    m_helper->setViewScale(0.25);
    QCOMPARE(first->scales, (QVector<qreal>{1.0, 2.0, 2.0, 0.25}));
    QCOMPARE(second->scales, (QVector<qreal>{2.0, 2.0, 0.25}));
}

void SceneHelperTest::viewScaleSlots_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QVector<qreal>>("scales");

    const auto row = [](const char *kind, const QVector<qreal> &scales) {
        QTest::newRow(kind) << QString::fromLatin1(kind) << scales;
    };
    row("public slot", {1.0, 2.5});
    row("inherited slot", {1.0, 2.5});
    row("private slot", {1.0, 2.5});
    row("slot of a double", {1.0, 2.5});
    row("slot of an int", {});
    row("invokable method", {1.0, 2.5});
}

void SceneHelperTest::viewScaleSlots()
{
    QFETCH(const QString, kind);

    const auto scalesToldTo = [this](auto *item) {
        m_helper->addItem(item);
        m_helper->setViewScale(2.5);
        return item->scales;
    };
    QVector<qreal> actual;
    if (kind == QLatin1String("public slot"))
        actual = scalesToldTo(new ScaledItem);
    else if (kind == QLatin1String("inherited slot"))
        actual = scalesToldTo(new DerivedItem);
    else if (kind == QLatin1String("private slot"))
        actual = scalesToldTo(new PrivateSlotItem);
    else if (kind == QLatin1String("slot of a double"))
        actual = scalesToldTo(new DoubleSlotItem);
    else if (kind == QLatin1String("slot of an int"))
        actual = scalesToldTo(new IntSlotItem);
    else
        actual = scalesToldTo(new InvokableItem);
    QTEST(actual, "scales");
    QCOMPARE(m_added->count(), 1);
}

void SceneHelperTest::viewScalePassesTitlesOver()
{
    auto *svgTitle = new TitleSvgItem(QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" "
                                                     "viewBox=\"0 0 10 10\"/>"));
    auto *textTitle = new TitleItem(QSizeF(100, 50), nullptr);
    for (QGraphicsObject *title :
         {static_cast<QGraphicsObject *>(svgTitle), static_cast<QGraphicsObject *>(textTitle)}) {
        QCOMPARE(title->metaObject()->indexOfSlot("setViewScale(qreal)"), -1);
        m_helper->addItem(title);
        m_helper->setViewScale(2);
        QCOMPARE(title->scale(), 1.0);
        QCOMPARE(title->transform(), QTransform());
        QVERIFY(m_helper->scene()->items().contains(title));
    }
}

void SceneHelperTest::viewScaleOfOneItem()
{
    ScaledItem item;
    PlainItem plain;
    m_helper->setItemViewScale(&item, 7.5);
    m_helper->setItemViewScale(&plain, 7.5);
    m_helper->setItemViewScale(nullptr, 7.5);
    QCOMPARE(item.scales, QVector<qreal>{7.5});
    auto *added = new ScaledItem;
    m_helper->addItem(added);
    QCOMPARE(added->scales, QVector<qreal>{1.0});
}

void SceneHelperTest::viewScaleOfItemsOnOtherScenes()
{
    QGraphicsScene other;
    auto *item = new ScaledItem;
    m_helper->addItem(item);
    other.addItem(item);
    QVERIFY(m_helper->hasItems());
    m_helper->setViewScale(2.0);
    QCOMPARE(item->scales, (QVector<qreal>{1.0, 2.0}));

    m_helper->addItem(item);
    QCOMPARE(item->scene(), m_scene);
    QCOMPARE(m_added->count(), 2);
}

/// Also for the items that come up after the one that sets another scale.
void SceneHelperTest::latestViewScaleWins()
{
    QVector<ScaledItem *> items;
    for (int i = 0; i < 10; ++i) {
        items.append(new ScaledItem);
        m_helper->addItem(items.last());
    }
    items.at(4)->onScale = [&] {
        items.at(4)->onScale = [] {};
        m_helper->setViewScale(3.0);
    };
    m_helper->setViewScale(2.0);
    for (const ScaledItem *item : qAsConst(items))
        QCOMPARE(item->scales.last(), 3.0);
}

void SceneHelperTest::viewScaleSlotAddsItems()
{
    auto *item = new ScaledItem;
    m_helper->addItem(item);
    QVector<ScaledItem *> others;
    item->onScale = [&] {
        for (int i = 0; i < 50; ++i) {
            others.append(new ScaledItem);
            m_helper->addItem(others.last());
        }
    };
    m_helper->setViewScale(2.0);
    QCOMPARE(others.size(), 50);
    for (const ScaledItem *other : qAsConst(others))
        QCOMPARE(other->scales, QVector<qreal>{2.0});
}

// Items that others delete

void SceneHelperTest::forgetsDeletedObjects()
{
    auto *item = new ScaledItem;
    auto *other = new ScaledItem;
    m_helper->addItem(item);
    m_helper->addItem(other);
    delete item;
    m_helper->setViewScale(2.0);
    QCOMPARE(other->scales, (QVector<qreal>{1.0, 2.0}));
    QVERIFY(m_helper->hasItems());
    delete other;
    QVERIFY(!m_helper->hasItems());
    m_helper->setViewScale(3.0);
    m_helper->clear();
    QCOMPARE(m_cleared->count(), 1);
    QCOMPARE(m_removed->count(), 0);
}

void SceneHelperTest::forgetsDeletedPlainItems()
{
    auto *item = new PlainItem;
    PlainItem other;
    m_helper->addItem(item);
    m_helper->addItem(&other);
    delete item;
    QVERIFY(m_helper->hasItems());
    m_helper->setViewScale(2.0);
    m_helper->clear();
    QCOMPARE(other.scene(), nullptr);
    QVERIFY(!m_helper->hasItems());

    auto *last = new PlainItem;
    m_helper->addItem(last);
    delete last;
    QVERIFY(!m_helper->hasItems());
    m_helper->setViewScale(3.0);
    m_helper->clear();
    QCOMPARE(m_cleared->count(), 2);
    QCOMPARE(m_removed->count(), 0);
}

void SceneHelperTest::forgetsItemsOfAClearedScene()
{
    m_helper->addItem(new PlainItem);
    m_helper->addItem(new ScaledItem);
    m_scene->clear();
    QVERIFY(!m_helper->hasItems());
    m_helper->setViewScale(2.0);
    m_helper->clear();
    QCOMPARE(m_cleared->count(), 1);
    m_helper->addItem(new ScaledItem);
    QVERIFY(m_helper->hasItems());
}

void SceneHelperTest::forgetsChildrenOfDeletedItems()
{
    auto *parent = new ScaledItem;
    auto *child = new ScaledItem;
    auto *plainChild = new PlainItem;
    for (QGraphicsItem *item :
         {static_cast<QGraphicsItem *>(parent), static_cast<QGraphicsItem *>(child),
          static_cast<QGraphicsItem *>(plainChild)})
        m_helper->addItem(item);
    child->setParentItem(parent);
    plainChild->setParentItem(parent);
    delete parent;
    QVERIFY(!m_helper->hasItems());
    m_helper->setViewScale(2.0);
    m_helper->clear();
    QCOMPARE(m_cleared->count(), 1);
}

void SceneHelperTest::forgetsItemsDeletedOnOtherScenes()
{
    auto other = std::make_unique<QGraphicsScene>();
    auto *plain = new PlainItem;
    auto *object = new ScaledItem;
    m_helper->addItem(plain);
    m_helper->addItem(object);
    other->addItem(plain);
    other->addItem(object);
    other.reset();
    QVERIFY(!m_helper->hasItems());
    m_helper->setViewScale(2.0);
    m_helper->clear();
    QCOMPARE(m_cleared->count(), 1);
}

void SceneHelperTest::tellsAnObjectFromAnEarlierPlainItem_data()
{
    QTest::addColumn<bool>("isAdded");

    QTest::newRow("added") << true;
    QTest::newRow("not added") << false;
}

/// The helper does not hear of the end of the first one.
void SceneHelperTest::tellsAnObjectFromAnEarlierPlainItem()
{
    QFETCH(const bool, isAdded);

    SharedPlace place;
    QGraphicsItem *plain = place.makePlainItem();
    m_helper->addItem(plain);
    plain->~QGraphicsItem();
    ScaledItem *object = place.makeObject();
    QCOMPARE(static_cast<QGraphicsItem *>(object), plain);
    m_added->clear();
    if (isAdded)
        m_helper->addItem(object);
    else
        m_scene->addItem(object);

    m_helper->setViewScale(2.0);
    QCOMPARE(object->scales, isAdded ? (QVector<qreal>{1.0, 2.0}) : QVector<qreal>());
    m_helper->removeItem(object);
    QCOMPARE(m_removed->count(), isAdded ? 1 : 0);
    QCOMPARE(object->scene(), isAdded ? nullptr : m_scene);
    if (isAdded)
        m_helper->addItem(object);
    object->~ScaledItem();
    m_helper->setViewScale(3.0);
    QVERIFY(!m_helper->hasItems());
}

void SceneHelperTest::leavesConnectionsOfOthersAlone()
{
    auto *item = new ScaledItem;
    connect(item, &QObject::destroyed, m_helper.get(), &SceneHelper::clear);
    m_helper->addItem(item);
    m_helper->removeItem(item);
    delete item;
    QCOMPARE(m_cleared->count(), 1);
}

// Items that are deleted in between

void SceneHelperTest::itemsDeletedInSlotsOfSignals()
{
    const auto deleteItem = [](QGraphicsItem *item) { delete item; };
    QMetaObject::Connection connection =
            connect(m_helper.get(), &SceneHelper::itemAdded, this, deleteItem);
    m_helper->addItem(new ScaledItem);
    m_helper->addItem(new PlainItem);
    QCOMPARE(m_added->count(), 2);
    QVERIFY(!m_helper->hasItems());
    m_helper->setViewScale(2.0);
    disconnect(connection);

    connection = connect(m_helper.get(), &SceneHelper::itemRemoved, this, deleteItem);
    bool isDeleted = false;
    auto *plain = new PlainItem(&isDeleted);
    const QPointer<ScaledItem> object(new ScaledItem);
    const QPointer<ScaledItem> later(new ScaledItem);
    m_helper->addItem(plain);
    m_helper->addItem(object);
    m_helper->addItem(later);
    m_helper->removeItem(plain);
    m_helper->removeItem(object);
    m_helper->deleteItemLater(later);
    QVERIFY(isDeleted);
    QVERIFY(!object);
    QVERIFY(!later);
    QCOMPARE(m_removed->count(), 3);
    disconnect(connection);

    const QPointer<ScaledItem> cleared(new ScaledItem);
    m_helper->addItem(cleared);
    connect(m_helper.get(), &SceneHelper::sceneCleared, this, [&cleared] { delete cleared; });
    m_helper->clear();
    QVERIFY(!cleared);
    QCOMPARE(m_cleared->count(), 1);
}

void SceneHelperTest::itemsDeletedInTheirScaleSlot()
{
    const QPointer<ScaledItem> item(new ScaledItem);
    m_helper->addItem(item);
    item->onScale = [&item] { delete item; };
    m_helper->setViewScale(2.0);
    QVERIFY(!item);
    QVERIFY(!m_helper->hasItems());

    const QPointer<ScaledItem> shortLived(new ScaledItem);
    shortLived->onScale = [&shortLived] { delete shortLived; };
    m_added->clear();
    m_helper->addItem(shortLived);
    QVERIFY(!shortLived);
    QCOMPARE(m_added->count(), 0);
    QVERIFY(!m_helper->hasItems());
}

/// Whichever item comes up first deletes all others.
void SceneHelperTest::itemsDeletedInOthersScaleSlots()
{
    QVector<QPointer<ScaledItem>> items;
    for (int i = 0; i < 10; ++i) {
        items.append(new ScaledItem);
        m_helper->addItem(items.last());
    }
    for (int i = 0; i < 10; ++i) {
        items[i]->onScale = [&items, i] {
            for (int other = 0; other < items.size(); ++other) {
                if (other != i)
                    delete items[other];
            }
        };
    }
    m_helper->setViewScale(2.0);
    items.removeAll(nullptr);
    QCOMPARE(items.size(), 1);
    QCOMPARE(items.first()->scales, (QVector<qreal>{1.0, 2.0}));
    QVERIFY(m_helper->hasItems());
}

void SceneHelperTest::itemRemovedInItsScaleSlot()
{
    ScaledItem item;
    item.onScale = [&] { m_helper->removeItem(&item); };
    m_helper->addItem(&item);
    QCOMPARE(item.scene(), nullptr);
    QCOMPARE(m_removed->count(), 1);
    QCOMPARE(m_added->count(), 0);
    QVERIFY(!m_helper->hasItems());
}

void SceneHelperTest::itemDeletedWhenHidden()
{
    const QPointer<ScaledItem> item(new ScaledItem);
    m_helper->addItem(item);
    connect(item, &QGraphicsObject::visibleChanged, this, [&item] { delete item; });
    m_helper->deleteItemLater(item);
    QVERIFY(!item);
    QCOMPARE(m_removed->count(), 0);
    QVERIFY(!m_helper->hasItems());
}

void SceneHelperTest::calledWhileAnItemIsDeleted_data()
{
    QTest::addColumn<bool>("early");
    QTest::addColumn<bool>("byItsChild");

    QTest::newRow("slot connected before the item is added") << true << false;
    QTest::newRow("slot connected after the item is added") << false << false;
    QTest::newRow("when its child is deleted, connected before") << true << true;
    QTest::newRow("when its child is deleted, connected after") << false << true;
}

/// An item that is on its way out is left alone.
void SceneHelperTest::calledWhileAnItemIsDeleted()
{
    QFETCH(const bool, early);
    QFETCH(const bool, byItsChild);

    auto *item = new ScaledItem;
    QGraphicsItem *address = item;
    auto *other = new ScaledItem;
    auto *child = new ScaledItem;
    child->setParentItem(item);
    int calls = 0;
    const auto useHelper = [&] {
        ++calls;
        m_helper->setViewScale(2.0);
        if (!byItsChild) {
            m_helper->removeItem(address);
            m_helper->deleteItemLater(static_cast<QGraphicsObject *>(item));
        }
        m_helper->addItem(other);
        m_helper->clear();
        m_helper->addItem(other);
    };
    const auto connectSlot = [&] {
        connect(byItsChild ? child : item, &QObject::destroyed, this, useHelper);
    };
    if (early)
        connectSlot();
    m_helper->addItem(item);
    if (!early)
        connectSlot();
    delete item;
    QCOMPARE(calls, 1);
    QCOMPARE(m_removed->count(), 0);
    QCOMPARE(m_cleared->count(), 1);
    QCOMPARE(other->scene(), m_scene);
    QCOMPARE(m_scene->items().size(), 1);
    m_helper->removeItem(other);
    QVERIFY(!m_helper->hasItems());
    delete other;
}

void SceneHelperTest::itemsDeletedWhileTheHelperIs()
{
    const QPointer<ScaledItem> item(new ScaledItem);
    m_helper->addItem(item);
    connect(m_helper.get(), &QObject::destroyed, this, [&item] { delete item; });
    m_helper.reset();
    QVERIFY(!item);
}

// The scene goes first

void SceneHelperTest::sceneDeletedFirst()
{
    const QPointer<ScaledItem> object(new ScaledItem);
    m_helper->addItem(object);
    m_helper->addItem(new PlainItem);
    ScaledItem removed;
    m_helper->addItem(&removed);
    m_scene->removeItem(&removed);
    m_added->clear();
    delete m_scene;
    QCOMPARE(m_helper->scene(), nullptr);
    QVERIFY(!object);

    ScaledItem late;
    m_helper->addItem(&late);
    m_helper->addItem(nullptr);
    m_helper->removeItem(&removed);
    m_helper->deleteItemLater(&removed);
    m_helper->clear();
    QCOMPARE(m_added->count(), 0);
    QCOMPARE(m_removed->count(), 0);
    QCOMPARE(m_cleared->count(), 0);
    QVERIFY(removed.isVisible());
    QCOMPARE(late.scales, QVector<qreal>());

    QSignalSpy times(m_helper.get(), SIGNAL(sceneTimeChanged(SceneHelper::Time)));
    QSignalSpy backgrounds(m_helper.get(), SIGNAL(sceneBackgroundChanged(QPixmap)));
    m_helper->setSceneTime(5);
    m_helper->setSceneBackground(QPixmap());
    m_helper->setViewScale(2.0);
    QCOMPARE(times.count(), 1);
    QCOMPARE(backgrounds.count(), 1);
    QCOMPARE(removed.scales, (QVector<qreal>{1.0, 2.0}));
}

void SceneHelperTest::calledWhileTheSceneIsDeleted()
{
    int calls = 0;
    bool hadItems = true;
    QVector<QPointer<ScaledItem>> items;
    for (int i = 0; i < 5; ++i) {
        items.append(new ScaledItem);
        connect(items.last(), &QObject::destroyed, this, [&] {
            ++calls;
            m_helper->setViewScale(2.0);
            m_helper->clear();
            hadItems = m_helper->hasItems();
        });
        m_helper->addItem(items.last());
        m_helper->addItem(new PlainItem);
    }
    delete m_scene;
    QCOMPARE(m_helper->scene(), nullptr);
    // The first one to go takes the others off the scene; they belong to the test again.
    QCOMPARE(calls, 1);
    QVERIFY(!hadItems);
    items.removeAll(nullptr);
    QCOMPARE(items.size(), 4);
    for (const QPointer<ScaledItem> &item : qAsConst(items))
        delete item;
}

QTEST_MAIN(SceneHelperTest)
#include "tst_scenehelper.moc"
