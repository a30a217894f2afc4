// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"
#include "TreeTest.h"

#include <Scene/SvgDocument.h>

#include <QLoggingCategory>
#include <QRandomGenerator>

// A frame's text is put together from the text of the frame before. Here it is compared with the
// plain way, on random titles and times: a tree that somebody else may have changed is saved as a
// whole for each frame, and each element is looked up anew.

namespace {

/// What an animation may do to a shape, with values of every kind.
const char *const animations[] = {
        "<animate attributeName='x' from='0' to='90' %1/>",
        "<animate attributeName='fill' values='red;#00f;lime' %1/>",
        "<animate attributeName='opacity' values='0;1;0.5' %1/>",
        "<animate attributeName='points' values='0,0 1,1;20,10 30,40' %1/>",
        "<animate attributeName='visibility' values='hidden;visible' %1/>",
        "<animate attributeName='transform' from='translate(0, 0)' to='translate(30, 5)' %1/>",
        "<animate attributeName='note' values='a;b;c' calcMode='discrete' %1/>",
        "<animate attributeName='id' values='p;q' %1/>",
        "<animate attributeName='x y' values='1;2' %1/>",
        "<animateTransform attributeName='transform' type='rotate' from='0' to='90' %1/>",
};

const char *const shapes[] = {
        "<rect width='20' height='10' fill='#%1' %2>%3</rect>",
        "<rect y='20' width='20' height='10' x='5' opacity='0.8' stroke='rgba(1, 2, 3, 4)' "
        "%2>%3</rect>",
        "<circle cx='50' cy='25' r='9' fill='#%1' note='a &lt; &quot;b&quot; &gt; &amp; x=' "
        "%2>%3</circle>",
        "<polygon points='1,1 9,9 5,20' %2>%3</polygon>",
        "<g %2><rect x='60' width='8' height='8'/>%3</g>",
        "<text y='40' font-size='9' %2>Жизнь 世界 😀 %3</text>",
        "<text y='45' font-size='9' %2><tspan>a</tspan><tspan fill='#%1'>b%3</tspan></text>",
        "<use xlink:href='#d%1' x='30' %2>%3</use>",
        "<defs><rect id='d%1' width='9' height='9' %2>%3</rect></defs>",
        "<defs><g visibility='hidden'><circle id='d%1' r='7'>%3</circle></g></defs>",
        "<!-- <rect x='1'> --><?target <a x='1'> ?>%3",
        "<desc>%3 ]]&gt; &amp;<![CDATA[ <b> ]]></desc>",
};

class RandomTitle
{
public:
    explicit RandomTitle(quint32 seed) : m_random(seed) {}

    QString text()
    {
        QString content;
        const int count = m_random.bounded(1, 12);
        for (int i = 0; i < count; ++i)
            content += shape(3);
        return svgTitle(content).replace(QLatin1Char('\''), QLatin1Char('"'));
    }

    int time() { return m_random.bounded(-200, 4000); }

private:
    template <std::size_t size>
    QString oneOf(const char *const (&texts)[size])
    {
        return QString::fromUtf8(texts[m_random.bounded(int(size))]);
    }

    QString shape(int depth)
    {
        QString content;
        const int count = m_random.bounded(4);
        for (int i = 0; i < count; ++i)
            content += depth > 0 && m_random.bounded(3) == 0 ? shape(depth - 1) : animation();
        const QString visibility = m_random.bounded(6) == 0
                ? QStringLiteral("visibility='%1'")
                          .arg(m_random.bounded(2) ? QStringLiteral("hidden")
                                                   : QStringLiteral("visible"))
                : QString();
        return oneOf(shapes)
                .replace(QLatin1String("%1"), QString::number(m_random.bounded(100, 110)))
                .replace(QLatin1String("%2"), visibility)
                .replace(QLatin1String("%3"), content);
    }

    QString animation()
    {
        QString timing = QStringLiteral("begin='%1ms' dur='%2ms'")
                                 .arg(m_random.bounded(0, 2000))
                                 .arg(m_random.bounded(1, 1500));
        if (m_random.bounded(2))
            timing += QStringLiteral(" fill='freeze'");
        if (m_random.bounded(4) == 0)
            timing += QStringLiteral(" repeatCount='indefinite'");
        return oneOf(animations).replace(QLatin1String("%1"), timing);
    }

    QRandomGenerator m_random;
};

} // namespace

class SavedFramesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void textIsThatOfTheTree();
    void frameIsThatOfThePlainWay();
    void frameAfterAnAdjustment();
    void frameAfterAVisibilityUpdate();
    void frameAfterAnotherParse();
    void sameValuesOfOtherAttributes();
    void emptyValueAfterNoValue();
};

// The random titles refer to definitions that they do not have, and the renderer says so.
void SavedFramesTest::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false"));
}

void SavedFramesTest::textIsThatOfTheTree()
{
    int spliced = 0;
    for (quint32 seed = 0; seed < 300; ++seed) {
        RandomTitle title(seed);
        const QString text = title.text();
        SvgDocument document(text);
        QVERIFY2(document.isLoaded(), qPrintable(text));
        const int frames = int(seed % 5) + 1;
        for (int i = 0; i < frames; ++i)
            document.applyAnimation(title.time());
        if (!text.contains(QLatin1String("<animate ")))
            continue;
        ++spliced;
        const QByteArray ours = savedText(document);
        QVERIFY2(ours == saved(document.documentRoot().ownerDocument()), qPrintable(text));
    }
    QVERIFY(spliced > 200);
}

void SavedFramesTest::frameIsThatOfThePlainWay()
{
    for (quint32 seed = 1000; seed < 1200; ++seed) {
        RandomTitle title(seed);
        const QString text = title.text();
        SvgDocument document(text);
        QVERIFY2(document.isLoaded(), qPrintable(text));
        SvgDocument plain(text);
        for (int i = 0; i < 6; ++i) {
            const int time = title.time();
            const QImage picture = renderAt(document, time);
            plain.documentRoot();
            QVERIFY2(renderAt(plain, time) == picture, qPrintable(text));
            QVERIFY2(contentOf(savedTree(document)) == contentOf(savedTree(plain)),
                     qPrintable(text));
        }
    }
}

// A change from elsewhere stays until a frame writes over it, as if each frame were saved whole.
void SavedFramesTest::frameAfterAnAdjustment()
{
    const QString fill = QStringLiteral("fill");
    for (quint32 seed = 2000; seed < 2100; ++seed) {
        RandomTitle title(seed);
        const QString text = title.text();
        SvgDocument document(text);
        QVERIFY2(document.isLoaded(), qPrintable(text));
        SvgDocument plain(text);
        document.prepareAdjustedAttibutes({fill});
        plain.prepareAdjustedAttibutes({fill});
        const int times[] = {title.time(), title.time()};
        const QString colors[] = {QStringLiteral("#010203"), QStringLiteral("#ffeedd")};
        for (int i = 0; i < 4; ++i) {
            document.applyAnimation(times[i / 2]);
            plain.documentRoot();
            plain.applyAnimation(times[i / 2]);
            document.adjustAttribute(fill, colors[i % 2]);
            plain.adjustAttribute(fill, colors[i % 2]);
            QCOMPARE(contentOf(savedTree(document)), contentOf(savedTree(plain)));
        }
        document.applyAnimation(times[1]);
        plain.applyAnimation(times[1]);
        QVERIFY2(contentOf(savedTree(document)) == contentOf(savedTree(plain)), qPrintable(text));
    }
}

void SavedFramesTest::frameAfterAVisibilityUpdate()
{
    const QString text = svgTitle(QStringLiteral(
            "<defs><rect id=\"d\" width=\"9\" height=\"9\"><animate attributeName=\"visibility\""
            " values=\"visible;hidden\" dur=\"1s\" fill=\"freeze\"/></rect></defs>"
            "<use id=\"u\" xlink:href=\"#d\"/><rect x=\"20\" width=\"9\" height=\"9\"/>"));
    SvgDocument document(text);
    document.applyAnimation(0);
    document.applyAnimation(900);
    const auto visibility = [&document] {
        return elementById(savedTree(document), QStringLiteral("u"))
                .attribute(QStringLiteral("visibility"));
    };
    QCOMPARE(visibility(), QStringLiteral("hidden"));

    document.fixDefinitionsVisibility();
    document.applyAnimation(900);
    QCOMPARE(visibility(), QStringLiteral("hidden"));
    elementById(document.documentRoot(), QStringLiteral("u"))
            .setAttribute(QStringLiteral("visibility"), QStringLiteral("visible"));
    document.saveToBuffer();
    QCOMPARE(visibility(), QStringLiteral("visible"));
    document.applyAnimation(900);
    QCOMPARE(visibility(), QStringLiteral("hidden"));
}

void SavedFramesTest::frameAfterAnotherParse()
{
    for (quint32 seed = 3000; seed < 3100; ++seed) {
        RandomTitle title(seed);
        const QString text = title.text();
        SvgDocument document(text);
        QVERIFY2(document.isLoaded(), qPrintable(text));
        const int time = title.time();
        document.applyAnimation(title.time());
        document.applyAnimation(time);
        const QByteArray before = savedText(document);
        document.viewBox();
        document.applyAnimation(title.time());
        document.applyAnimation(time);
        QDomDocument expected;
        expected.setContent(before);
        QVERIFY2(contentOf(savedTree(document)) == contentOf(expected), qPrintable(text));
    }
}

// What one attribute gives up the other takes on: the values alone do not tell the frames apart.
void SavedFramesTest::sameValuesOfOtherAttributes()
{
    SvgDocument document(svgTitle(QStringLiteral(
            "<rect id=\"a\" x=\"2\"><animate attributeName=\"x\" from=\"1\" to=\"1\" "
            "dur=\"1s\"/></rect>"
            "<rect id=\"b\" x=\"2\"><animate attributeName=\"x\" from=\"1\" to=\"1\" begin=\"1s\""
            " dur=\"1s\"/></rect>")));
    const auto x = [&document](const QString &id) {
        return elementById(savedTree(document), id).attribute(QStringLiteral("x"));
    };
    document.applyAnimation(500);
    QCOMPARE(x(QStringLiteral("a")), QStringLiteral("1.000"));
    QCOMPARE(x(QStringLiteral("b")), QStringLiteral("2"));
    document.applyAnimation(1500);
    QCOMPARE(x(QStringLiteral("a")), QStringLiteral("2"));
    QCOMPARE(x(QStringLiteral("b")), QStringLiteral("1.000"));
}

void SavedFramesTest::emptyValueAfterNoValue()
{
    SvgDocument document(svgTitle(
            QStringLiteral("<rect id=\"a\"><animate attributeName=\"note\" dur=\"1s\"/></rect>")));
    const auto hasNote = [&document] {
        return elementById(savedTree(document), QStringLiteral("a"))
                .hasAttribute(QStringLiteral("note"));
    };
    document.applyAnimation(1500);
    QVERIFY(!hasNote());
    document.applyAnimation(500);
    QVERIFY(hasNote());
    document.applyAnimation(1500);
    QVERIFY(!hasNote());
}

QTEST_MAIN(SavedFramesTest)

#include "tst_savedframes.moc"
