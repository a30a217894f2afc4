// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextStage.h"
#include "WarningFreeTest.h"

#include <QImage>
#include <QSignalSpy>

#include <algorithm>
#include <random>

// Which document an item shows, whose it is, and who goes first.

namespace {

QString textOf(const TitleItem &item)
{
    return item.document()->toPlainText();
}

/// The picture that the lines of a document are measured on; null when it is the screen.
const QImage *layoutImageOf(const QTextDocument &document)
{
    return dynamic_cast<const QImage *>(document.documentLayout()->paintDevice());
}

bool isMeasuredByAnItem(const QTextDocument &document)
{
    const QImage *image = layoutImageOf(document);
    return image && image->dotsPerMeterY() == 3780;
}

/// Items and documents that are made, handed round and deleted by chance, beside a plain account of
/// which item shows which document.
class Walk
{
public:
    explicit Walk(unsigned seed) : m_random(seed) {}
    ~Walk()
    {
        while (!m_items.isEmpty() || !m_documents.isEmpty()) {
            if (m_documents.isEmpty() || (!m_items.isEmpty() && chance(2) == 0))
                deleteItem();
            else
                deleteDocument();
        }
    }

    void step()
    {
        switch (chance(10)) {
        case 0:
            return makeItem();
        case 1:
            return makeDocument();
        case 2:
            return deleteItem();
        case 3:
            return deleteDocument();
        case 4:
            return replaceLayout();
        case 5:
            return beginEditing();
        case 6:
            return handOverOwnDocument();
        default:
            return setDocument();
        }
    }

    /// What is wrong, or nothing.
    QString fault()
    {
        for (const Shown &shown : qAsConst(m_items)) {
            const QTextDocument *document = shown.item->document();
            if (textOf(*shown.item) != shown.text)
                return QStringLiteral("an item shows \"%1\" and not \"%2\"")
                        .arg(textOf(*shown.item), shown.text);
            if (!isMeasuredByAnItem(*document))
                return QStringLiteral("\"%1\" is measured on the screen").arg(shown.text);
            const QString followed = faultOfFollowing(shown);
            if (!followed.isEmpty())
                return followed;
        }
        for (const QTextDocument *document : qAsConst(m_documents)) {
            const bool isShown =
                    std::any_of(m_items.cbegin(), m_items.cend(), [document](const Shown &shown) {
                        return shown.item->document() == document;
                    });
            if (!isShown && document->documentLayout()->paintDevice())
                return QStringLiteral("a document that nobody shows is measured by an item");
        }
        return QString();
    }

private:
    struct Shown
    {
        TitleItem *item;
        QString text; // of a document that was given, or nothing
    };

    int chance(int outOf) { return int(m_random() % unsigned(outOf)); }

    template <typename T>
    int anyIndex(const QVector<T> &from)
    {
        return chance(from.size());
    }

    /// Told of a change exactly once, also when others show the same document.
    static QString faultOfFollowing(const Shown &shown)
    {
        QSignalSpy grown(shown.item, &TitleItem::geometryChanged);
        const qreal width = shown.item->textWidth();
        shown.item->setTextWidth(width == 77 ? 78 : 77);
        if (grown.count() != 1)
            return QStringLiteral("%1 reports of a new size").arg(grown.count());
        return QString();
    }

    QTextDocument *anyDocument()
    {
        const int index = chance(m_documents.size() + 1);
        return index < m_documents.size() ? m_documents.at(index) : nullptr;
    }

    static QString givenText(const QTextDocument *document)
    {
        return document ? document->toPlainText() : QString();
    }

    void makeItem()
    {
        QTextDocument *document = anyDocument();
        m_items.append({new TitleItem(QSizeF(100, 50), document), givenText(document)});
    }

    void makeDocument()
    {
        m_documents.append(new QTextDocument(QStringLiteral("text %1").arg(++m_count)));
    }

    void deleteItem()
    {
        if (m_items.isEmpty())
            return;
        const TitleItem *item = m_items.takeAt(anyIndex(m_items)).item;
        delete item;
    }

    void deleteDocument()
    {
        if (m_documents.isEmpty())
            return;
        const QTextDocument *document = m_documents.takeAt(anyIndex(m_documents));
        for (Shown &shown : m_items) {
            if (shown.item->document() == document)
                shown.text.clear();
        }
        delete document;
    }

    void replaceLayout()
    {
        if (!m_documents.isEmpty())
            m_documents.at(anyIndex(m_documents))->setDocumentLayout(nullptr);
    }

    void beginEditing()
    {
        if (!m_items.isEmpty())
            m_items.at(anyIndex(m_items)).item->setEditable(true);
    }

    void setDocument()
    {
        if (m_items.isEmpty())
            return;
        Shown &shown = m_items[anyIndex(m_items)];
        QTextDocument *document = anyDocument();
        shown.item->setDocument(document);
        shown.text = givenText(document);
    }

    void handOverOwnDocument()
    {
        if (m_items.isEmpty())
            return;
        const Shown &from = m_items.at(anyIndex(m_items));
        Shown &to = m_items[anyIndex(m_items)];
        to.item->setDocument(from.item->document());
        to.text = from.text;
    }

    std::mt19937 m_random;
    QVector<Shown> m_items;
    QVector<QTextDocument *> m_documents;
    int m_count = 0;
};

/// What is done with the document that comes when a change of the one that goes is reported.
using Listener = std::function<void(TextStage &, QTextDocument *)>;

} // namespace

Q_DECLARE_METATYPE(Listener)

class TitleItemDocumentsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void replacedDocumentMayGo();
    void documentsGoInEveryOrder_data();
    void documentsGoInEveryOrder();
    void ownDocumentGoesWithItsItem_data();
    void ownDocumentGoesWithItsItem();
    void twoItemsOnOneDocument_data();
    void twoItemsOnOneDocument();
    void shownDocumentIsFollowed();
    void replacedDocumentIsNotFollowed();
    void tellsOfTheSizeOfAnotherDocument();
    void sameDocumentChangesNothing();
    void replacedWhileEdited();
    void listenerOfAReplacementMay_data();
    void listenerOfAReplacementMay();
    void anotherLayout();
    void checkBoxUnderTheMouseGoes_data();
    void checkBoxUnderTheMouseGoes();
    void everyOrder_data();
    void everyOrder();
};

void TitleItemDocumentsTest::replacedDocumentMayGo()
{
    auto *first = new QTextDocument(QStringLiteral("first"));
    QTextDocument second(QStringLiteral("second"));
    TitleItem item(QSizeF(100, 50), first);
    item.setDocument(&second);
    QCOMPARE(first->documentLayout()->paintDevice(), nullptr);
    QVERIFY(isMeasuredByAnItem(second));
    delete first;
    QCOMPARE(item.document(), &second);
    QCOMPARE(textOf(item), QStringLiteral("second"));
}

void TitleItemDocumentsTest::documentsGoInEveryOrder_data()
{
    QTest::addColumn<QString>("order");

    for (const char *order :
         {"1 2 item", "1 item 2", "2 1 item", "2 item 1", "item 1 2", "item 2 1"})
        QTest::newRow(order) << QString::fromLatin1(order);
}

void TitleItemDocumentsTest::documentsGoInEveryOrder()
{
    QFETCH(const QString, order);

    auto *first = new QTextDocument(QStringLiteral("first"));
    auto *second = new QTextDocument(QStringLiteral("second"));
    auto *item = new TitleItem(QSizeF(100, 50), first);
    item->setDocument(second);
    QString text = QStringLiteral("second");
    for (const QString &gone : order.split(QLatin1Char(' '))) {
        if (gone == QLatin1String("item")) {
            delete std::exchange(item, nullptr);
        } else if (gone == QLatin1String("1")) {
            delete first;
        } else {
            delete std::exchange(second, nullptr);
            text.clear();
        }
        if (item) {
            QCOMPARE(textOf(*item), text);
            QVERIFY(isMeasuredByAnItem(*item->document()));
        } else if (second) {
            QCOMPARE(second->documentLayout()->paintDevice(), nullptr);
        }
    }
}

void TitleItemDocumentsTest::ownDocumentGoesWithItsItem_data()
{
    QTest::addColumn<bool>("isReplaced");

    QTest::newRow("the item is deleted") << false;
    QTest::newRow("the item shows another") << true;
}

/// Also when another item shows it.
void TitleItemDocumentsTest::ownDocumentGoesWithItsItem()
{
    QFETCH(const bool, isReplaced);

    auto *owner = new TitleItem(QSizeF(100, 50), nullptr);
    const QPointer<QTextDocument> own(owner->document());
    own->setPlainText(QStringLiteral("text"));
    TitleItem other(QSizeF(100, 50), own);
    QCOMPARE(textOf(other), QStringLiteral("text"));
    if (isReplaced)
        owner->setDocument(nullptr);
    else
        delete std::exchange(owner, nullptr);
    QVERIFY(!own);
    QCOMPARE(textOf(other), QString());
    other.document()->setPlainText(QStringLiteral("another"));
    QVERIFY(isMeasuredByAnItem(*other.document()));
    if (owner)
        QVERIFY(owner->document() != other.document());
    delete owner;
}

void TitleItemDocumentsTest::twoItemsOnOneDocument_data()
{
    QTest::addColumn<bool>("isFirstToGo");
    QTest::addColumn<bool>("isDeleted");

    QTest::newRow("the first is deleted") << true << true;
    QTest::newRow("the second is deleted") << false << true;
    QTest::newRow("the first shows another") << true << false;
    QTest::newRow("the second shows another") << false << false;
}

/// The lines are as long as before when one of them goes, and the screen's when both are gone.
void TitleItemDocumentsTest::twoItemsOnOneDocument()
{
    QFETCH(const bool, isFirstToGo);
    QFETCH(const bool, isDeleted);

    QTextDocument document(QStringLiteral("text"));
    auto *first = new TitleItem(QSizeF(100, 50), &document);
    auto *second = new TitleItem(QSizeF(70, 40), &document);
    QCOMPARE(layoutImageOf(document)->width(), 70);
    TitleItem *goes = isFirstToGo ? first : second;
    TitleItem *stays = isFirstToGo ? second : first;
    if (isDeleted)
        delete std::exchange(goes, nullptr);
    else
        goes->setDocument(nullptr);
    QVERIFY(isMeasuredByAnItem(document));
    QCOMPARE(layoutImageOf(document)->width(), isFirstToGo ? 70 : 100);
    QCOMPARE(textOf(*stays), QStringLiteral("text"));
    document.setPlainText(QStringLiteral("longer text"));
    QCOMPARE(stays->boundingRect().size(), document.size());

    delete stays;
    QCOMPARE(document.documentLayout()->paintDevice(), nullptr);
    delete goes;
}

void TitleItemDocumentsTest::shownDocumentIsFollowed()
{
    QTextDocument document;
    TitleItem item(QSizeF(100, 50), nullptr);
    item.setDocument(&document);
    QSignalSpy reports(&item, &TitleItem::contentEdited);
    QSignalSpy grown(&item, &TitleItem::geometryChanged);
    item.setEditable(false);
    QCOMPARE(reports.count(), 0);
    document.setPlainText(QStringLiteral("text"));
    QCOMPARE(grown.count(), 1);
    item.setEditable(false);
    QCOMPARE(reports.count(), 1);
}

void TitleItemDocumentsTest::replacedDocumentIsNotFollowed()
{
    QTextDocument document;
    TitleItem item(QSizeF(100, 50), &document);
    item.setDocument(nullptr);
    QSignalSpy reports(&item, &TitleItem::contentEdited);
    QSignalSpy grown(&item, &TitleItem::geometryChanged);
    document.setPlainText(QStringLiteral("text"));
    item.setEditable(false);
    QCOMPARE(grown.count(), 0);
    QCOMPARE(reports.count(), 0);
}

void TitleItemDocumentsTest::tellsOfTheSizeOfAnotherDocument()
{
    QTextDocument small(QStringLiteral("a"));
    QTextDocument large(QStringLiteral("a longer text"));
    TitleItem item(QSizeF(100, 50), &small);
    QSignalSpy grown(&item, &TitleItem::geometryChanged);
    item.setDocument(&large);
    QCOMPARE(grown.count(), 1);
    QCOMPARE(item.boundingRect().size(), large.size());
    auto *another = new QTextDocument(QStringLiteral("a longer text"));
    item.setDocument(another);
    QCOMPARE(grown.count(), 1);
    delete another;
    QCOMPARE(grown.count(), 2);
}

void TitleItemDocumentsTest::sameDocumentChangesNothing()
{
    TextStage stage(QStringLiteral("one two"));
    QVERIFY(stage.show());
    QSignalSpy reports(stage.item, &TitleItem::contentEdited);
    stage.doubleClick(stage.pointAt(5));
    stage.item->setDocument(&stage.document);
    QVERIFY(stage.item->isEditable());
    QCOMPARE(stage.selection(), QStringLiteral("two"));
    stage.type(QStringLiteral("x"));
    QCOMPARE(stage.text(), QStringLiteral("one x"));
    stage.item->setEditable(false);
    QCOMPARE(reports.count(), 1);
}

/// The change is reported while the item still shows what was changed.
void TitleItemDocumentsTest::replacedWhileEdited()
{
    TextStage stage(QStringLiteral("one two"));
    QVERIFY(stage.show());
    QTextDocument other(QStringLiteral("other"));
    QStringList reported;
    connect(stage.item, &TitleItem::contentEdited, this,
            [&] { reported.append(textOf(*stage.item)); });
    stage.doubleClick(stage.pointAt(5));
    stage.type(QStringLiteral("x"));
    stage.compose(QStringLiteral("y"));
    stage.item->setDocument(&other);
    QCOMPARE(reported, QStringList{QStringLiteral("one xy")});
    QCOMPARE(stage.text(), QStringLiteral("one xy"));
    QVERIFY(!stage.item->isEditable());
    QCOMPARE(textOf(*stage.item), QStringLiteral("other"));

    stage.item->setEditable(true);
    stage.press(Qt::Key_End);
    stage.type(QStringLiteral("z"));
    stage.item->setEditable(false);
    QCOMPARE(reported.value(1), QStringLiteral("otherz"));
    QCOMPARE(stage.text(), QStringLiteral("one xy"));
    stage.item->setDocument(nullptr);
}

void TitleItemDocumentsTest::listenerOfAReplacementMay_data()
{
    QTest::addColumn<Listener>("listener");
    QTest::addColumn<QString>("text"); // null: there is no item any more

    QTest::newRow("delete the item")
            << Listener([](TextStage &stage, QTextDocument *) { delete stage.item; }) << QString();
    QTest::newRow("clear the document that goes")
            << Listener([](TextStage &stage, QTextDocument *) { stage.document.clear(); })
            << QStringLiteral("next");
    QTest::newRow("delete the document that comes")
            << Listener([](TextStage &, QTextDocument *next) { delete next; })
            << QStringLiteral("");
    QTest::newRow("set the document itself") << Listener([](TextStage &stage, QTextDocument *next) {
        stage.item->setDocument(next);
    }) << QStringLiteral("next");
}

void TitleItemDocumentsTest::listenerOfAReplacementMay()
{
    QFETCH(const Listener, listener);
    QFETCH(const QString, text);

    TextStage stage(QStringLiteral("one two"));
    QVERIFY(stage.show());
    const QPointer<QTextDocument> next(new QTextDocument(QStringLiteral("next")));
    connect(stage.item, &TitleItem::contentEdited, this, [&] { listener(stage, next); });
    stage.doubleClick(stage.pointAt(5));
    stage.type(QStringLiteral("x"));
    stage.item->setDocument(next);
    QCOMPARE(stage.item.isNull(), text.isNull());
    if (stage.item) {
        QCOMPARE(textOf(*stage.item), text);
        QVERIFY(isMeasuredByAnItem(*stage.item->document()));
    }
    QCOMPARE(stage.document.documentLayout()->paintDevice(), nullptr);
    delete next;
}

void TitleItemDocumentsTest::anotherLayout()
{
    QTextDocument document(QStringLiteral("some words that break into lines"));
    TitleItem item(QSizeF(100, 50), &document);
    QSignalSpy grown(&item, &TitleItem::geometryChanged);
    document.setDocumentLayout(nullptr); // which makes a new one
    QVERIFY(isMeasuredByAnItem(document));
    QCOMPARE(item.boundingRect().size(), document.size());
    grown.clear();
    item.setSize(QSizeF(50, 100));
    QCOMPARE(grown.count(), 1);
    QCOMPARE(item.boundingRect().size(), document.size());
}

void TitleItemDocumentsTest::checkBoxUnderTheMouseGoes_data()
{
    QTest::addColumn<bool>("isEdited");

    QTest::newRow("in display mode") << false;
    QTest::newRow("in edit mode") << true;
}

/// The base class remembers the block of a check box below the mouse.
void TitleItemDocumentsTest::checkBoxUnderTheMouseGoes()
{
    QFETCH(const bool, isEdited);

    auto *document = new QTextDocument;
    document->setHtml(QStringLiteral("<ul><li>one</li></ul>"));
    QTextBlockFormat format = document->begin().blockFormat();
    format.setMarker(QTextBlockFormat::MarkerType::Unchecked);
    QTextCursor(document).setBlockFormat(format);
    TextStage stage(QStringLiteral("two"));
    QVERIFY(stage.show());
    stage.item->setDocument(document);
    stage.item->setEditable(true);
    const QTextBlock block = document->begin();
    const QPointF text = document->documentLayout()->blockBoundingRect(block).topLeft();
    stage.click(text + QPointF(35, 8));
    QCOMPARE(block.blockFormat().marker(), QTextBlockFormat::MarkerType::Checked);
    if (!isEdited)
        stage.item->setEditable(false);
    delete document;
    stage.item->setEditable(true);
    stage.moveMouse(QPointF(4, 10));
    stage.type(QStringLiteral("x"));
    QCOMPARE(textOf(*stage.item), QStringLiteral("x"));
}

void TitleItemDocumentsTest::everyOrder_data()
{
    QTest::addColumn<unsigned>("seed");

    for (unsigned seed = 1; seed <= 40; ++seed)
        QTest::addRow("%u", seed) << seed;
}

void TitleItemDocumentsTest::everyOrder()
{
    QFETCH(const unsigned, seed);

    Walk walk(seed);
    for (int step = 0; step < 200; ++step) {
        walk.step();
        QCOMPARE(walk.fault(), QString());
    }
}

QTEST_MAIN(TitleItemDocumentsTest)
#include "tst_titleitem_documents.moc"
