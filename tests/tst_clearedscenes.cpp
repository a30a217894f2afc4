// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FramedWorld.h"

#include <QRandomGenerator>

#include <algorithm>
#include <vector>

// In which order a helper takes its items off the scene shows in who is whose parent item
// afterwards.

namespace {

class ObjectItem : public PlainChild
{
public:
    explicit ObjectItem(QVector<int> *told = nullptr, int number = 0)
        : m_told(told), m_number(number)
    {
    }

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override
    {
        if (change == ItemSceneHasChanged && m_told && !scene())
            m_told->append(m_number);
        return PlainChild::itemChange(change, value);
    }

private:
    QVector<int> *m_told;
    int m_number;
};

using Items = std::vector<std::unique_ptr<QGraphicsItem>>;

/// Objects and others.
Items makeItems(int count)
{
    Items items;
    for (int i = 0; i < count; ++i) {
        if (i % 3 == 0)
            items.push_back(std::make_unique<QGraphicsRectItem>());
        else
            items.push_back(std::make_unique<ObjectItem>());
    }
    return items;
}

/// The places of the parents; -1 without one.
QVector<int> parentsOf(const Items &items)
{
    QVector<int> parents;
    for (const auto &item : items) {
        const auto isParent = [&item](const auto &other) {
            return other.get() == item->parentItem();
        };
        const auto parent = std::find_if(items.begin(), items.end(), isParent);
        parents.append(parent == items.end() ? -1 : int(parent - items.begin()));
    }
    return parents;
}

/// Or those that go with their parent would be deleted twice.
void separate(const Items &items)
{
    for (const auto &item : items)
        item->setParentItem(nullptr);
}

} // namespace

class ClearedScenesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void frameAddedLast();
    void frameAddedFirst();
    void inTheOrderOfAdding();
    void inTheOrderOfTheLastAdding();
    void asOneByOne();
    void viewScalesInTheOrderOfAdding();
    void plainItemsDeletedMeanwhile();
};

/// Wherever in memory the two are.
void ClearedScenesTest::frameAddedLast()
{
    std::vector<std::unique_ptr<ObjectItem>> space;
    for (int round = 0; round < 40; ++round) {
        SceneHelper helper(new QGraphicsScene, nullptr);
        auto child = std::make_unique<PlainChild>();
        helper.addItem(child.get());
        ResizeDecorator frame(child.get());
        helper.addItem(&frame);
        helper.clear();
        QCOMPARE(child->parentItem(), nullptr);
        QCOMPARE(child->scene(), nullptr);
        QCOMPARE(frame.scene(), nullptr);
        space.push_back(std::make_unique<ObjectItem>());
    }
}

void ClearedScenesTest::frameAddedFirst()
{
    std::vector<std::unique_ptr<ObjectItem>> space;
    for (int round = 0; round < 40; ++round) {
        SceneHelper helper(new QGraphicsScene, nullptr);
        auto *child = new PlainChild;
        ResizeDecorator frame(child);
        helper.addItem(&frame);
        helper.addItem(child);
        helper.clear();
        QCOMPARE(child->parentItem(), &frame);
        QCOMPARE(child->scene(), nullptr);
        QCOMPARE(frame.scene(), nullptr);
        space.push_back(std::make_unique<ObjectItem>());
    }
}

void ClearedScenesTest::inTheOrderOfAdding()
{
    SceneHelper helper(new QGraphicsScene, nullptr);
    QVector<int> told;
    std::vector<std::unique_ptr<ObjectItem>> items;
    QVector<int> expected;
    for (int i = 0; i < 50; ++i) {
        items.push_back(std::make_unique<ObjectItem>(&told, i));
        helper.addItem(items.back().get());
        expected.append(i);
    }
    helper.clear();
    QCOMPARE(told, expected);
}

void ClearedScenesTest::inTheOrderOfTheLastAdding()
{
    QVector<int> told;
    ObjectItem first(&told, 1);
    ObjectItem second(&told, 2);
    ObjectItem third(&told, 3);
    SceneHelper helper(new QGraphicsScene, nullptr);
    helper.addItem(&first);
    helper.addItem(&second);
    helper.addItem(&third);
    helper.addItem(&first);
    helper.removeItem(&second);
    helper.addItem(&second);
    told.clear();
    helper.clear();
    QCOMPARE(told, QVector<int>({3, 1, 2}));
}

/// Families of any shape, which are taken off the scene one by one in a second scene.
void ClearedScenesTest::asOneByOne()
{
    constexpr int count = 12;
    QRandomGenerator dice(7);
    for (int round = 0; round < 40; ++round) {
        SceneHelper helper(new QGraphicsScene, nullptr);
        QGraphicsScene plain;
        const Items items = makeItems(count);
        const Items twins = makeItems(count);
        std::vector<int> order(count);
        for (int i = 0; i < count; ++i)
            order[i] = i;
        std::shuffle(order.begin(), order.end(), dice);
        for (const int i : order) {
            helper.addItem(items[i].get());
            plain.addItem(twins[i].get());
        }
        for (int i = 1; i < count; ++i) {
            const int parent = dice.bounded(-1, i);
            items[i]->setParentItem(parent < 0 ? nullptr : items[parent].get());
            twins[i]->setParentItem(parent < 0 ? nullptr : twins[parent].get());
        }
        helper.clear();
        for (const int i : order) {
            if (twins[i]->scene())
                plain.removeItem(twins[i].get());
        }
        const QVector<int> parents = parentsOf(items);
        const QVector<int> parentsOfTwins = parentsOf(twins);
        separate(items);
        separate(twins);
        QCOMPARE(parents, parentsOfTwins);
        QVERIFY(helper.scene()->items().isEmpty());
        QVERIFY(!helper.hasItems());
    }
}

void ClearedScenesTest::viewScalesInTheOrderOfAdding()
{
    SceneHelper helper(new QGraphicsScene, nullptr);
    std::vector<std::unique_ptr<RecordingChild>> items;
    QVector<int> told;
    QVector<int> expected;
    for (int i = 0; i < 50; ++i) {
        items.push_back(std::make_unique<RecordingChild>());
        helper.addItem(items.back().get());
        items.back()->whenCalled = [&told, i] { told.append(i); };
        expected.append(i);
    }
    helper.setViewScale(2.0);
    QCOMPARE(told, expected);
}

/// An item that leaves the scene may take others with it for good.
void ClearedScenesTest::plainItemsDeletedMeanwhile()
{
    SceneHelper helper(new QGraphicsScene, nullptr);
    auto *before = new QGraphicsRectItem;
    auto *after = new QGraphicsRectItem;
    PlainChild child;
    PlainChild parent;
    for (QGraphicsItem *item :
         {static_cast<QGraphicsItem *>(before), static_cast<QGraphicsItem *>(&child),
          static_cast<QGraphicsItem *>(&parent), static_cast<QGraphicsItem *>(after)})
        helper.addItem(item);
    child.setParentItem(&parent);
    connect(&child, &QGraphicsObject::parentChanged, this, [&after] {
        delete after;
        after = nullptr;
    });
    helper.clear();
    QCOMPARE(after, nullptr);
    QCOMPARE(child.parentItem(), nullptr);
    QVERIFY(helper.scene()->items().isEmpty());
    QVERIFY(!helper.hasItems());
    delete before;
}

QTEST_MAIN(ClearedScenesTest)
#include "tst_clearedscenes.moc"
