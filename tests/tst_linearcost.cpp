// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/SvgDocument.h>

// How often the whole text is read and written, however many elements and animations it has. The
// text is read and written through the document's own device, so the bytes can be counted there.

namespace {

class CountingDocument : public SvgDocument
{
public:
    using SvgDocument::SvgDocument;

    void startCounting()
    {
        m_read = 0;
        m_written = 0;
    }

    qint64 bytesRead() const { return m_read; }
    qint64 bytesWritten() const { return m_written; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 count = SvgDocument::readData(data, maxSize);
        m_read += std::max<qint64>(count, 0);
        return count;
    }

    qint64 writeData(const char *data, qint64 size) override
    {
        m_written += size;
        return SvgDocument::writeData(data, size);
    }

private:
    qint64 m_read = 0;
    qint64 m_written = 0;
};

/// Every tenth of the shapes is animated; after every fifth one is a definition that is used.
QString title(int count, bool isAnimated)
{
    QString content = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                                     " xmlns:xlink=\"http://www.w3.org/1999/xlink\""
                                     " viewBox=\"0 0 96 64\">");
    for (int i = 0; i < count; ++i) {
        const QString animation = isAnimated && i % 10 == 0
                ? QStringLiteral("<animate attributeName=\"x\" from=\"0\" to=\"90\" dur=\"1s\""
                                 " fill=\"freeze\"/>")
                : QString();
        content +=
                QStringLiteral("<rect y=\"%1\" width=\"3\" height=\"2\" fill=\"#c02040\">%2</rect>")
                        .arg(i % 60)
                        .arg(animation);
        if (i % 5 == 0)
            content +=
                    QStringLiteral("<defs><g id=\"d%1\"/></defs><use xlink:href=\"#d%1\"/>").arg(i);
    }
    return content + QStringLiteral("</svg>");
}

} // namespace

class LinearCostTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void passesTheTextOnceEachWayForAFrame_data();
    void passesTheTextOnceEachWayForAFrame();
    void onlyReadsForTheSameFrameAgain_data();
    void onlyReadsForTheSameFrameAgain();
    void onlyReadsForAFrameOfAStillTitle_data();
    void onlyReadsForAFrameOfAStillTitle();
    void writesOnceForAnAdjustment_data();
    void writesOnceForAnAdjustment();

private:
    static void addSizes();
};

void LinearCostTest::addSizes()
{
    QTest::addColumn<int>("count");
    for (const int count : {1, 10, 100, 1000, 10000})
        QTest::addRow("%d shapes", count) << count;
}

void LinearCostTest::passesTheTextOnceEachWayForAFrame_data()
{
    addSizes();
}

void LinearCostTest::passesTheTextOnceEachWayForAFrame()
{
    QFETCH(int, count);
    CountingDocument document(title(count, true));
    renderAt(document, 0);
    for (const int ms : {500, 250, 1, 999, 5000}) {
        document.startCounting();
        renderAt(document, ms);
        QCOMPARE(document.bytesWritten(), document.size());
        QCOMPARE(document.bytesRead(), document.size());
    }
}

void LinearCostTest::onlyReadsForTheSameFrameAgain_data()
{
    addSizes();
}

void LinearCostTest::onlyReadsForTheSameFrameAgain()
{
    QFETCH(int, count);
    CountingDocument document(title(count, true));
    renderAt(document, 5000);
    document.startCounting();
    renderAt(document, 5000);
    renderAt(document, 6000); // frozen: the values are those of before
    QCOMPARE(document.bytesWritten(), qint64(0));
    QCOMPARE(document.bytesRead(), 2 * document.size());
}

void LinearCostTest::onlyReadsForAFrameOfAStillTitle_data()
{
    addSizes();
}

void LinearCostTest::onlyReadsForAFrameOfAStillTitle()
{
    QFETCH(int, count);
    CountingDocument document(title(count, false));
    renderAt(document, 0);
    document.startCounting();
    renderAt(document, 1000);
    QCOMPARE(document.bytesWritten(), qint64(0));
    QCOMPARE(document.bytesRead(), document.size());
}

void LinearCostTest::writesOnceForAnAdjustment_data()
{
    addSizes();
}

void LinearCostTest::writesOnceForAnAdjustment()
{
    QFETCH(int, count);
    CountingDocument document(title(count, true));
    renderAt(document, 500);
    document.startCounting();
    document.prepareAdjustedAttibutes({QStringLiteral("fill"), QStringLiteral("stroke")});
    QCOMPARE(document.bytesWritten(), qint64(0));
    QVERIFY(document.bytesRead() <= document.size());

    document.startCounting();
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#2040c0"));
    QCOMPARE(document.bytesWritten(), document.size());
    QCOMPARE(document.bytesRead(), qint64(0));
}

QTEST_MAIN(LinearCostTest)

#include "tst_linearcost.moc"
