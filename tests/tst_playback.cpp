// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/AnimatableAttributeColor.h>
#include <Scene/AnimatableAttributeFloat.h>
#include <Scene/AnimatableAttributeFloatList.h>
#include <Scene/AnimatableAttributeText.h>
#include <Scene/SvgDocument.h>

#include <QDomDocument>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QSvgRenderer>

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <vector>

// What a title shows at a time, and that nothing but the time decides it.

namespace {

/// A shape that moves from x = 0 to x = 80 in the first second and stays there.
QString movingRect(const QString &attributes = QString())
{
    return QStringLiteral("<rect id=\"r\" y=\"10\" width=\"20\" height=\"20\" %1><animate"
                          " attributeName=\"x\" from=\"0\" to=\"80\" dur=\"1s\" fill=\"freeze\"/>"
                          "</rect>")
            .arg(attributes);
}

/// The attribute of an element as it is saved for a time; "-" when it has none.
QString attributeAt(SvgDocument &document, int ms, const char *id, const char *name)
{
    document.applyAnimation(ms);
    return elementById(savedTree(document), QLatin1String(id))
            .attribute(QLatin1String(name), QStringLiteral("-"));
}

/// A line for each node below and including a node, in pre-order: how deep it is, its name and
/// value, and its attributes by name.
QStringList linesOf(const QDomNode &node, int depth = 0)
{
    QStringList attributes;
    const QDomNamedNodeMap map = node.attributes();
    for (int i = 0; i < map.count(); ++i)
        attributes.append(map.item(i).nodeName() + QLatin1Char('=') + map.item(i).nodeValue());
    attributes.sort();
    QStringList lines{QString(depth, QLatin1Char(' ')) + node.nodeName() + QLatin1Char(' ')
                      + node.nodeValue() + attributes.join(QLatin1Char(' '))};
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
        lines += linesOf(child, depth + 1);
    return lines;
}

/// Draws over a canvas that is larger than any of the titles here; true when no pixel has changed.
bool leavesCanvasUntouched(SvgDocument &document, int ms)
{
    QImage canvas(120, 80, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(QColor(1, 2, 3, 255));
    const QImage before = canvas.copy();
    QPainter painter(&canvas);
    document.paint(&painter, ms);
    painter.end();
    return canvas == before;
}

/// What the renderer makes of a text that needs no clock.
QImage renderStill(const QByteArray &text, const QRectF &bounds, const QSize &canvas)
{
    QImage picture(canvas, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(text).render(&painter, bounds);
    return picture;
}

/// While there is one, the renderer doesn't complain, of uses that lead in circles, say.
class QuietRenderer
{
public:
    QuietRenderer() { QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false")); }
    ~QuietRenderer() { QLoggingCategory::setFilterRules(QString()); }

private:
    Q_DISABLE_COPY(QuietRenderer)
};

/// Playback in its plainest form: nothing is remembered but the tree.
class PlainPlayback
{
public:
    using Animation = boost::shared_ptr<AnimatableAttribute>;

    /// The defaults are those of the template; the tree is that of the loaded title.
    PlainPlayback(const QString &templateText, const QDomDocument &loadedTree) : m_tree(loadedTree)
    {
        QDomDocument original;
        original.setContent(templateText);
        const QDomNode root = original.documentElement();
        const QDomNodeList animates = original.elementsByTagName(QStringLiteral("animate"));
        for (int i = 0; i < animates.count(); ++i)
            m_animations.push_back(animationOf(animates.at(i).toElement(), root));
        const QDomNodeList uses = original.elementsByTagName(QStringLiteral("use"));
        for (int i = 0; i < uses.count(); ++i) {
            const QString href = uses.at(i).toElement().attribute(QStringLiteral("xlink:href"));
            m_uses[href.mid(1)].push_back(SvgElement(uses.at(i), root));
        }
    }

    const QDomDocument &tree() const { return m_tree; }

    bool hasKeyTwice() const
    {
        for (const Animation &a : m_animations) {
            for (const Animation &b : m_animations) {
                if (a->id() == b->id() && a->location() != b->location())
                    return true;
            }
        }
        return false;
    }

    void apply(int ms)
    {
        std::map<QString, Animation> winnersById;
        for (const Animation &a : m_animations) {
            const bool running = a->isApplicable(ms);
            const bool frozen = a->isApplicableFrozen(ms);
            const auto found = winnersById.find(a->id());
            if (found == winnersById.end()) {
                if (running || frozen)
                    winnersById[a->id()] = a;
            } else if (running) {
                found->second = a;
            } else if (frozen && !found->second->isApplicable(ms)
                       && a->endTime() > found->second->endTime()) {
                found->second = a;
            }
        }
        std::set<Animation> winners;
        for (const auto &entry : winnersById)
            winners.insert(entry.second);

        const QDomNode root = m_tree.documentElement();
        std::map<QString, Animation> toRestore;
        for (const Animation &a : m_animations) {
            bool applied = false;
            if (winners.count(a) > 0) {
                const QString value = a->valueForTime(ms);
                const bool handled = updateDefinition(root, *a, value);
                applied = true;
                if (!handled)
                    a->apply(root, ms);
            }
            const auto found = toRestore.find(a->id());
            if (found == toRestore.end() || found->second)
                toRestore[a->id()] = applied ? Animation() : a;
        }
        for (const auto &entry : toRestore) {
            const Animation &r = entry.second;
            if (r && !updateDefinition(root, *r, r->defaultValue()))
                r->restoreDefaultValue(root);
        }
    }

private:
    template <typename Kind>
    static Animation made(const QDomElement &animate, const QDomNode &root)
    {
        const QStringList values =
                animate.attribute(QStringLiteral("values")).split(QLatin1Char(';'));
        return Animation(new Kind(animate.parentNode(), root,
                                  animate.attribute(QStringLiteral("attributeName")), values));
    }

    static Animation animationOf(const QDomElement &animate, const QDomNode &root)
    {
        const QString name = animate.attribute(QStringLiteral("attributeName"));
        const Animation animation = name == QLatin1String("fill")
                ? made<AnimatableAttributeColor>(animate, root)
                : name == QLatin1String("visibility") ? made<AnimatableAttributeText>(animate, root)
                : name == QLatin1String("transform")
                ? made<AnimatableAttributeFloatList>(animate, root)
                : made<AnimatableAttributeFloat>(animate, root);
        const auto milliseconds = [&animate](const char *attribute) {
            return animate.attribute(QLatin1String(attribute)).remove(QStringLiteral("ms")).toInt();
        };
        const int begin = milliseconds("begin");
        animation->setParams(begin, begin + milliseconds("dur"),
                             animate.attribute(QStringLiteral("repeatCount")).toInt(),
                             animate.attribute(QStringLiteral("fill")) == QLatin1String("freeze"),
                             animate.attribute(QStringLiteral("calcMode"))
                                             == QLatin1String("discrete")
                                     ? AnimatableAttribute::Discrete
                                     : AnimatableAttribute::Linear);
        return animation;
    }

    bool updateDefinition(const QDomNode &root, const AnimatableAttribute &animation,
                          const QString &value) const
    {
        if (!animation.element().isDefinition()
            || animation.attributeName() != QLatin1String("visibility"))
            return false;
        const auto found = m_uses.find(animation.element().svgId());
        if (found == m_uses.end())
            return false;
        for (const SvgElement &use : found->second)
            use.show(root, value.isEmpty() || value == QLatin1String("visible"));
        return true;
    }

    QDomDocument m_tree;
    std::vector<Animation> m_animations;
    std::map<QString, std::vector<SvgElement>> m_uses;
};

/// Small templates by chance: shapes and groups, definitions and uses of them, a few ids, and
/// several animations of the same attributes that overlap.
class RandomTemplate
{
public:
    explicit RandomTemplate(quint32 seed) : m_random(seed) {}

    QString text()
    {
        // Now and then there are the places (1, 1) and (11), which have the same key.
        const bool wide = oneIn(3);
        const int count = wide ? 12 : 2 + m_random.bounded(3);
        QString content;
        for (int i = 0; i < count; ++i)
            content += wide && i == 1 ? group() : element(2);
        return svgTitle(content);
    }

private:
    QString anyOf(const QStringList &texts) { return texts.at(m_random.bounded(texts.size())); }

    bool oneIn(int n) { return m_random.bounded(n) == 0; }

    QString id() { return anyOf({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}); }

    QString visibility()
    {
        return anyOf({QStringLiteral("visible"), QStringLiteral("hidden"), QString()});
    }

    QString group() { return QStringLiteral("<g>%1%2</g>").arg(element(0), element(0)); }

    QString element(int depth)
    {
        const QString tag =
                anyOf({QStringLiteral("rect"), QStringLiteral("rect"), QStringLiteral("g"),
                       QStringLiteral("defs"), QStringLiteral("use")});
        QString attributes;
        if (!oneIn(3))
            attributes += QStringLiteral(" id=\"%1\"").arg(id());
        if (oneIn(5))
            attributes += QStringLiteral(" visibility=\"%1\"").arg(visibility());
        if (tag == QLatin1String("use"))
            attributes += QStringLiteral(" xlink:href=\"#%1\"").arg(id());
        if (tag == QLatin1String("rect"))
            attributes +=
                    QStringLiteral(" x=\"%1\" y=\"%2\" width=\"15\" height=\"10\" fill=\"%3\"")
                            .arg(m_random.bounded(80))
                            .arg(m_random.bounded(40))
                            .arg(anyOf({QStringLiteral("#ff0000"), QStringLiteral("#00ff00"),
                                        QStringLiteral("#0000ff")}));
        QString content;
        for (int i = m_random.bounded(4); i > 0; --i)
            content += animate();
        if (depth > 0 && tag != QLatin1String("rect") && tag != QLatin1String("use")) {
            for (int i = m_random.bounded(4); i > 0; --i)
                content += element(depth - 1);
        }
        return QStringLiteral("<%1%2>%3</%1>").arg(tag, attributes, content);
    }

    QString animate()
    {
        static const std::map<QString, QStringList> valuesByName{
                {QStringLiteral("x"), {QStringLiteral("0;60"), QStringLiteral("5;50;20")}},
                {QStringLiteral("opacity"), {QStringLiteral("0;1"), QStringLiteral("0.5")}},
                {QStringLiteral("fill"), {QStringLiteral("red;blue"), QStringLiteral("#000;#fff")}},
                {QStringLiteral("transform"), {QStringLiteral("translate(0,0);translate(9,30)")}},
                {QStringLiteral("visibility"),
                 {QStringLiteral("hidden;visible"), QStringLiteral("visible;hidden;;hidden")}}};
        auto kind = valuesByName.begin();
        std::advance(kind, m_random.bounded(int(valuesByName.size())));
        return QStringLiteral("<animate attributeName=\"%1\" values=\"%2\" begin=\"%3ms\""
                              " dur=\"%4ms\" repeatCount=\"%5\"%6%7/>")
                .arg(kind->first, anyOf(kind->second))
                .arg(100 * m_random.bounded(-2, 15))
                .arg(100 * m_random.bounded(8))
                .arg(m_random.bounded(4))
                .arg(oneIn(2) ? QStringLiteral(" fill=\"freeze\"") : QString(),
                     oneIn(4) ? QStringLiteral(" calcMode=\"discrete\"") : QString());
    }

    QRandomGenerator m_random;
};

QVector<int> randomTimes(quint32 seed, int count)
{
    QRandomGenerator random(seed);
    QVector<int> times;
    for (int i = 0; i < count; ++i) {
        const int ms = random.bounded(-300, 2600);
        times.append(random.bounded(2) == 0 ? ms / 100 * 100 : ms);
    }
    return times;
}

} // namespace

class PlaybackTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void choosesTheWinner_data();
    void choosesTheWinner();
    void restoresTheTemplatesValue_data();
    void restoresTheTemplatesValue();
    void animatesAttributesAndElementsApart();
    void confusesPlacesWithOneKey();
    void savesTheTreeOfEveryTime();
    void leavesTextWithoutAnimatedAttributesAlone();

    void followsTheRulesToTheLetter();
    void showsEveryTimeInAnyOrder();
    void playsTheTemplatesInAnyOrder_data();
    void playsTheTemplatesInAnyOrder();

    void neverWritesNamesThatAreNone_data();
    void neverWritesNamesThatAreNone();
    void writesUnusualNames_data();
    void writesUnusualNames();
    void takesExtremeTimes_data();
    void takesExtremeTimes();

    void neverEditsTitlesOfTheRenderer();
    void setsTheRenderersClock_data();
    void setsTheRenderersClock();
    void holdsTheRenderersClock();
    void playsBothInStep();

    void drawsIntoItsBounds_data();
    void drawsIntoItsBounds();
    void drawsNothingIntoEmptyBounds_data();
    void drawsNothingIntoEmptyBounds();
    void drawsNothingWithoutAPainter();
    void keepsThePaintersState();
    void drawsNothingOfBrokenText();
    void drawsOverTextWrittenBetweenFrames();
    void playsOverALongerText();

    void savesChangesMadeThroughTheRoot();
    void overwritesChangesOfAnimatedAttributes();
    void looksElementsUpByTheirPlace();
    void skipsElementsThatAreGone();
    void losesUnsavedChangesWhenTheTextIsParsed();
    void savesChangesMadeThroughTheOwnerDocument();
};

void PlaybackTest::choosesTheWinner_data()
{
    QTest::addColumn<QString>("animations"); // in document order: A, B, C
    QTest::addColumn<QString>("frames");

    const auto row = [](const char *name, const QStringList &animations, const char *frames) {
        QString text;
        for (const QString &animation : animations)
            text += QStringLiteral("<animate attributeName=\"a\" %1/>").arg(animation);
        QTest::newRow(name) << text << QString::fromLatin1(frames);
    };
    // One value each: it tells which animation sets the attribute.
    const auto from = [](const char *value, int begin, int dur, const char *more = "") {
        return QStringLiteral("values=\"%1\" begin=\"%2ms\" dur=\"%3ms\" %4")
                .arg(QLatin1String(value))
                .arg(begin)
                .arg(dur)
                .arg(QLatin1String(more));
    };
    const char *const freeze = "fill=\"freeze\"";

    row("one", {from("A", 1000, 1000)}, "999=T 1000=A 1999=A 2000=T 1500=A 0=T -5=T");
    row("one, frozen", {from("A", 1000, 1000, freeze)}, "999=T 1000=A 2000=A 99999=A 999=T");
    row("the last running one in document order",
        {from("A", 0, 3000), from("B", 1000, 1000), from("C", 500, 1000)},
        "0=A 500=C 1000=C 1499=C 1500=B 1999=B 2000=A 3000=T 600=C");
    row("whichever began last", {from("A", 1000, 2000), from("B", 0, 2000)},
        "500=B 1500=B 2500=A 3000=T");
    row("a running one before a frozen one that stands after it",
        {from("A", 2000, 1000), from("B", 0, 2000, freeze)}, "1999=B 2000=A 2500=A 3000=B");
    row("a running one before a frozen one that stands before it",
        {from("A", 0, 2000, freeze), from("B", 2000, 1000)}, "1999=A 2500=B 3000=A");
    row("a running one before a frozen one that ends later than it",
        {from("A", 0, 3000), from("B", 500, 500, freeze), from("C", 0, 2000, freeze)},
        "400=C 700=C 2500=A 3000=C");
    row("the frozen one that ended last, standing after it",
        {from("A", 0, 1000, freeze), from("B", 0, 3000, freeze)}, "4000=B 1500=B 500=B");
    row("the frozen one that ended last, standing before",
        {from("A", 0, 3000, freeze), from("B", 0, 1000, freeze)}, "4000=A 1500=A 500=B");
    row("the first of frozen ones that ended together",
        {from("A", 0, 1000, freeze), from("B", 500, 500, freeze), from("C", 1000, 0, freeze)},
        "400=A 700=B 1000=A 4000=A");
    row("a frozen one before one that is over", {from("A", 0, 1000, freeze), from("B", 0, 3000)},
        "500=B 2000=B 3000=A");
    row("three frozen ones",
        {from("A", 0, 1000, freeze), from("B", 1000, 1000, freeze), from("C", 200, 1000, freeze)},
        "100=A 500=C 1100=C 1200=B 1999=B 9000=B");
    row("none of several", {from("A", 0, 1000), from("B", 500, 1000)}, "1500=T -1=T 9999=T 0=A");
    row("no duration never runs", {from("A", 1000, 0)}, "999=T 1000=T 1001=T");
    row("no duration, frozen", {QStringLiteral("values=\"A;B;C\" begin=\"1s\" fill=\"freeze\"")},
        "999=T 1000=C 5000=C");
    row("negative duration, frozen",
        {QStringLiteral("values=\"A;B;C\" begin=\"1s\" dur=\"-500ms\" fill=\"freeze\"")},
        "499=T 500=C 1000=C 5000=C");
    row("repetitions run once",
        {from("A", 0, 1000, "repeatCount=\"indefinite\""), from("B", 0, 500)},
        "400=B 999=A 1000=T 2500=T");
    row("begins before 0", {from("A", -500, 1000)}, "-501=T -500=A 0=A 499=A 500=T");
}

void PlaybackTest::choosesTheWinner()
{
    QFETCH(QString, animations);
    QFETCH(QString, frames);
    SvgDocument document(
            svgTitle(QStringLiteral("<rect id=\"r\" a=\"T\">%1</rect>").arg(animations)));
    QVERIFY(document.isLoaded());
    QStringList played;
    for (const QString &frame : frames.split(QLatin1Char(' '))) {
        const QString ms = frame.section(QLatin1Char('='), 0, 0);
        played.append(ms + QLatin1Char('=') + attributeAt(document, ms.toInt(), "r", "a"));
    }
    QCOMPARE(played.join(QLatin1Char(' ')), frames);
}

void PlaybackTest::restoresTheTemplatesValue_data()
{
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QString>("restored");
    QTest::newRow("a value") << QStringLiteral("a=\"T\"") << QStringLiteral("T");
    QTest::newRow("a value that needs escapes")
            << QStringLiteral("a=\"&lt;&amp;&quot;&gt;\"") << QStringLiteral("<&\">");
    QTest::newRow("no value: the attribute goes") << QString() << QStringLiteral("-");
    QTest::newRow("an empty value: the attribute goes")
            << QStringLiteral("a=\"\"") << QStringLiteral("-");
}

void PlaybackTest::restoresTheTemplatesValue()
{
    QFETCH(QString, attribute);
    QFETCH(QString, restored);
    SvgDocument document(svgTitle(
            QStringLiteral("<rect id=\"r\" %1><animate attributeName=\"a\" from=\"0\" to=\"8\""
                           " begin=\"1s\" dur=\"1s\"/></rect>")
                    .arg(attribute)));
    for (const int ms : {1500, 0, 1500, 2000, 0, 1500, 5000})
        QCOMPARE(attributeAt(document, ms, "r", "a"),
                 ms == 1500 ? QStringLiteral("4.000") : restored);
}

void PlaybackTest::animatesAttributesAndElementsApart()
{
    const QString animate = QStringLiteral("<animate attributeName=\"%1\" values=\"%2\""
                                           " begin=\"%3ms\" dur=\"1s\"/>");
    SvgDocument document(
            svgTitle(QStringLiteral("<g id=\"g\">%1%2</g><g id=\"h\">%3</g>")
                             .arg(animate.arg(QStringLiteral("a"), QStringLiteral("A")).arg(0),
                                  animate.arg(QStringLiteral("b"), QStringLiteral("B")).arg(500),
                                  animate.arg(QStringLiteral("a"), QStringLiteral("C")).arg(800))));
    const auto at = [&document](int ms) {
        return QStringList{attributeAt(document, ms, "g", "a"), attributeAt(document, ms, "g", "b"),
                           attributeAt(document, ms, "h", "a")}
                .join(QLatin1Char(' '));
    };
    QCOMPARE(at(900), QStringLiteral("A B C"));
    QCOMPARE(at(1200), QStringLiteral("- B C"));
    QCOMPARE(at(100), QStringLiteral("A - -"));
    QCOMPARE(at(1700), QStringLiteral("- - C"));
    QCOMPARE(at(600), QStringLiteral("A B -"));
    QCOMPARE(at(9000), QStringLiteral("- - -"));
}

/// The places (1, 1) and (11) have the same text, so the attributes have the same key and share
/// one winner and one default.
void PlaybackTest::confusesPlacesWithOneKey()
{
    const QString animate = QStringLiteral(
            "<animate attributeName=\"a\" values=\"%1\" begin=\"%2ms\" dur=\"2s\"/>");
    const QString inner = QStringLiteral("<g/><g id=\"inner\" a=\"I\">%1</g>")
                                  .arg(animate.arg(QStringLiteral("A")).arg(0));
    const QString outer = QStringLiteral("<g id=\"outer\" a=\"O\">%1</g>")
                                  .arg(animate.arg(QStringLiteral("B")).arg(1000));
    SvgDocument document(svgTitle(QStringLiteral("<g/><g>%1</g>%2%3")
                                          .arg(inner, QStringLiteral("<g/>").repeated(9), outer)));
    const auto at = [&document](int ms) {
        return attributeAt(document, ms, "inner", "a") + attributeAt(document, ms, "outer", "a");
    };
    QCOMPARE(at(-1), QStringLiteral("IO"));
    QCOMPARE(at(1500), QStringLiteral("IB")); // the later one wins
    QCOMPARE(at(500), QStringLiteral("AB"));  // nothing is restored while one of them is set
    QCOMPARE(at(2500), QStringLiteral("AB"));
    QCOMPARE(at(3000), QStringLiteral("AO")); // the last one's default is restored
}

void PlaybackTest::savesTheTreeOfEveryTime()
{
    SvgDocument document(svgTitle(movingRect() + QStringLiteral("<text>Титры</text>")));
    const QByteArray before = document.data();
    document.applyAnimation(500);
    QVERIFY(document.data() != before);
    QCOMPARE(linesOf(savedTree(document).documentElement()), linesOf(document.documentRoot()));
    QCOMPARE(savedTree(document).elementsByTagName(QStringLiteral("text")).at(0).toElement().text(),
             QStringLiteral("Титры"));
}

void PlaybackTest::leavesTextWithoutAnimatedAttributesAlone()
{
    const QString text =
            svgTitle(QStringLiteral("<rect width=\"9\" height=\"9\"><animate from=\"0\" to=\"9\""
                                    " dur=\"1s\"/></rect>"));
    SvgDocument document(text);
    document.applyAnimation(500);
    QVERIFY(!leavesCanvasUntouched(document, 500));
    QCOMPARE(document.data(), text.toUtf8());
}

void PlaybackTest::followsTheRulesToTheLetter()
{
    const QuietRenderer quiet;
    int changes = 0;
    int keysTwice = 0;
    int pictures = 0;
    for (quint32 seed = 1; seed <= 250; ++seed) {
        const QString text = RandomTemplate(seed).text();
        SvgDocument document(text);
        QVERIFY2(document.isLoaded(), qPrintable(text));
        PlainPlayback plain(text, savedTree(document));
        keysTwice += plain.hasKeyTwice();
        if (seed % 2 == 0)
            document.documentRoot(); // from now on nothing may be remembered from frame to frame
        for (const int ms : randomTimes(seed, 12)) {
            const QStringList before = linesOf(plain.tree().documentElement());
            plain.apply(ms);
            const QStringList expected = linesOf(plain.tree().documentElement());
            changes += expected != before;

            const QImage picture = renderAt(document, ms);
            const QStringList actual = linesOf(savedTree(document).documentElement());
            QVERIFY2(actual == expected,
                     qPrintable(QStringLiteral("%1 at %2 ms:\n%3\n\ninstead of\n%4")
                                        .arg(text)
                                        .arg(ms)
                                        .arg(actual.join(QLatin1Char('\n')),
                                             expected.join(QLatin1Char('\n')))));
            const QImage still =
                    renderStill(plain.tree().toByteArray(), document.bounds(), picture.size());
            QVERIFY2(picture == still, qPrintable(text));
            pictures += !isBlank(still);
        }
    }
    QVERIFY(changes > 1000);
    QVERIFY(pictures > 1000);
    QVERIFY(keysTwice > 20);
}

/// A document that has shown other times shows the same as one that is asked for the first time.
void PlaybackTest::showsEveryTimeInAnyOrder()
{
    const QuietRenderer quiet;
    int different = 0;
    for (quint32 seed = 1001; seed <= 1100; ++seed) {
        const QString text = RandomTemplate(seed).text();
        SvgDocument played(text);
        if (PlainPlayback(text, savedTree(played)).hasKeyTwice())
            continue;
        QVector<int> times = randomTimes(seed, 6);
        std::map<int, QImage> pictures;
        for (const int ms : times) {
            SvgDocument fresh(text);
            pictures[ms] = renderAt(fresh, ms);
            different += pictures[ms] != pictures[times.first()];
        }
        std::sort(times.begin(), times.end());
        for (int order = 0; order < 4; ++order) {
            for (const int ms : qAsConst(times))
                QVERIFY2(renderAt(played, ms) == pictures[ms], qPrintable(text));
            std::rotate(times.begin(), times.begin() + 2, times.end());
            std::reverse(times.begin(), times.end());
        }
    }
    QVERIFY(different > 100);
}

void PlaybackTest::playsTheTemplatesInAnyOrder_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names = QDir(QStringLiteral(TITLESCENE_TEMPLATES))
                                      .entryList({QStringLiteral("*.svg")}, QDir::Files);
    QVERIFY(!names.isEmpty());
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void PlaybackTest::playsTheTemplatesInAnyOrder()
{
    QFETCH(QString, name);
    const QString text = readTemplate(name);
    SvgDocument played(text);
    QVERIFY2(played.isLoaded(), qPrintable(played.errorString()));
    const int total = played.animationDurationTotal();
    QImage previous;
    int different = 0;
    for (const int ms : {total / 2, 0, total, total / 7, total - 1, total + 1000, total / 3, 0}) {
        SvgDocument fresh(text);
        const QImage picture = renderAt(played, ms);
        QVERIFY2(picture == renderAt(fresh, ms), qPrintable(QString::number(ms)));
        different += picture != previous;
        previous = picture;
    }
    QVERIFY(different > 1);
}

void PlaybackTest::neverWritesNamesThatAreNone_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"",        " ",      "x y",   " x",    "x ",     "1x",
                             "-x",      ".x",     "x/",    "x&gt;", "x&lt;y", "a=&quot;1&quot; b",
                             "a='1' b", "&quot;", "&amp;", "x\ty",  "x;y",    "#x",
                             ":",       ":x",     "x:",    "x:y:z", "x:1"})
        QTest::newRow(*name ? name : "empty") << QString::fromLatin1(name);
    QTest::newRow("emoji") << QStringLiteral("\U0001F3AC");
}

void PlaybackTest::neverWritesNamesThatAreNone()
{
    QFETCH(QString, name);
    const QString broken =
            QStringLiteral("<animate attributeName=\"%1\" from=\"0\" to=\"8\" dur=\"2s\"/>")
                    .arg(name);
    SvgDocument document(svgTitle(
            QString(movingRect())
                    .replace(QStringLiteral("</rect>"), broken + QStringLiteral("</rect>"))));
    SvgDocument twin(svgTitle(movingRect()));
    QVERIFY(document.isLoaded());
    QCOMPARE(document.animationDurationTotal(), 2000);
    for (const int ms : {500, 0, 1500, 2000, 999}) {
        COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, ms), 0);
        QCOMPARE(elementById(savedTree(document), QStringLiteral("r")).attributes().count(), 5);
    }
}

void PlaybackTest::writesUnusualNames_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"x1", "_x", "x-y", "x.y", "X", "xlink:title"})
        QTest::newRow(name) << QString::fromLatin1(name);
    QTest::newRow("letters beyond ASCII") << QStringLiteral("Ширина");
}

void PlaybackTest::writesUnusualNames()
{
    QFETCH(QString, name);
    SvgDocument document(
            svgTitle(QString(movingRect())
                             .replace(QStringLiteral("</rect>"),
                                      QStringLiteral("<animate attributeName=\"%1\" from=\"0\" "
                                                     "to=\"8\" dur=\"1s\"/></rect>")
                                              .arg(name))));
    SvgDocument twin(svgTitle(movingRect()));
    COMPARE_PICTURES(renderAt(document, 500), renderAt(twin, 500), 0);
    QCOMPARE(elementById(savedTree(document), QStringLiteral("r")).attribute(name),
             QStringLiteral("4.000"));
    COMPARE_PICTURES(renderAt(document, 1000), renderAt(twin, 1000), 0);
    QVERIFY(!elementById(savedTree(document), QStringLiteral("r")).hasAttribute(name));
}

void PlaybackTest::takesExtremeTimes_data()
{
    QTest::addColumn<QString>("times");
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("value");
    const int highest = std::numeric_limits<int>::max();
    const int lowest = std::numeric_limits<int>::min();
    const QString wide = QStringLiteral("begin=\"-2147483s\" dur=\"2147483s\" fill=\"freeze\"");
    const QString late = QStringLiteral("begin=\"2147483s\" dur=\"2147483s\"");
    QTest::newRow("latest time") << QStringLiteral("dur=\"1s\" fill=\"freeze\"") << highest
                                 << QStringLiteral("8.000");
    QTest::newRow("earliest time")
            << QStringLiteral("dur=\"1s\" fill=\"freeze\"") << lowest << QStringLiteral("-");
    QTest::newRow("long animation, earliest time") << wide << lowest << QStringLiteral("-");
    QTest::newRow("long animation, its begin") << wide << -2147483000 << QStringLiteral("0.000");
    QTest::newRow("long animation, latest time") << wide << highest << QStringLiteral("8.000");
    QTest::newRow("saturated end, the begin") << late << 2147483000 << QStringLiteral("0.000");
    QTest::newRow("saturated end, just before it")
            << late << highest - 1 << QStringLiteral("7.988");
    QTest::newRow("saturated end, at it") << late << highest << QStringLiteral("-");
}

void PlaybackTest::takesExtremeTimes()
{
    QFETCH(QString, times);
    QFETCH(int, ms);
    QFETCH(QString, value);
    SvgDocument document(svgTitle(
            QStringLiteral("<rect id=\"r\"><animate attributeName=\"a\" from=\"0\" to=\"8\""
                           " %1/></rect>")
                    .arg(times)));
    QVERIFY(document.isLoaded());
    QCOMPARE(attributeAt(document, ms, "r", "a"), value);
}

void PlaybackTest::neverEditsTitlesOfTheRenderer()
{
    const QString text = svgTitle(QStringLiteral(
            "<rect width=\"20\" height=\"20\"><animateTransform attributeName=\"transform\""
            " type=\"translate\" from=\"0,0\" to=\"80,0\" dur=\"1s\"/></rect>"));
    SvgDocument document(text);
    QVERIFY(renderAt(document, 0) != renderAt(document, 500));
    QCOMPARE(document.data(), text.toUtf8());
    // What is changed through the root stays out of the text.
    document.documentRoot().firstChildElement().setAttribute(QStringLiteral("fill"),
                                                             QStringLiteral("#ff0000"));
    renderAt(document, 250);
    QCOMPARE(document.data(), text.toUtf8());
}

void PlaybackTest::setsTheRenderersClock_data()
{
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("transform");
    QTest::newRow("before the begin") << -500 << QString();
    QTest::newRow("0") << 0 << QStringLiteral("transform=\"translate(0,0)\"");
    QTest::newRow("a quarter") << 250 << QStringLiteral("transform=\"translate(20,5)\"");
    QTest::newRow("the half") << 500 << QStringLiteral("transform=\"translate(40,10)\"");
    QTest::newRow("three quarters") << 750 << QStringLiteral("transform=\"translate(60,15)\"");
    QTest::newRow("after the end") << 5000 << QStringLiteral("transform=\"translate(80,20)\"");
    QTest::newRow("long after the end")
            << std::numeric_limits<int>::max() << QStringLiteral("transform=\"translate(80,20)\"");
}

void PlaybackTest::setsTheRenderersClock()
{
    QFETCH(int, ms);
    QFETCH(QString, transform);
    const QString rect = QStringLiteral("<rect y=\"10\" width=\"20\" height=\"20\" %1>%2</rect>");
    SvgDocument document(svgTitle(
            rect.arg(QString(),
                     QStringLiteral("<animateTransform attributeName=\"transform\""
                                    " type=\"translate\" from=\"0,0\" to=\"80,20\" dur=\"1s\""
                                    " fill=\"freeze\"/>"))));
    SvgDocument twin(svgTitle(rect.arg(transform, QString())));
    renderAt(document, 333);
    COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, 0), 1);
}

/// Every picture takes a while to draw; the clock must not go on meanwhile.
void PlaybackTest::holdsTheRenderersClock()
{
    QString content;
    for (int i = 0; i < 300; ++i)
        content += QStringLiteral("<rect x=\"%1\" width=\"3\" height=\"3\" fill=\"#%2\">"
                                  "<animateTransform attributeName=\"transform\" type=\"translate\""
                                  " from=\"0,0\" to=\"0,40\" dur=\"20ms\""
                                  " repeatCount=\"indefinite\"/></rect>")
                           .arg(i % 97)
                           .arg(0x100000 + 5000 * i, 6, 16, QLatin1Char('0'));
    SvgDocument document(svgTitle(content));
    const QImage first = renderAt(document, 10);
    for (int i = 0; i < 20; ++i)
        COMPARE_PICTURES(renderAt(document, 10), first, 0);
}

void PlaybackTest::playsBothInStep()
{
    const QString rect =
            QStringLiteral("<rect %1 y=\"10\" width=\"20\" height=\"20\" %2>%3</rect>");
    SvgDocument document(svgTitle(rect.arg(
            QString(), QString(),
            QStringLiteral("<animate attributeName=\"x\" from=\"0\" to=\"40\" dur=\"1s\"/>"
                           "<animateTransform attributeName=\"transform\" type=\"translate\""
                           " from=\"0,0\" to=\"40,0\" dur=\"1s\"/>"))));
    for (const int ms : {500, 250, 0, 750}) {
        const int way = ms * 40 / 1000;
        SvgDocument twin(svgTitle(rect.arg(QStringLiteral("x=\"%1\"").arg(way),
                                           QStringLiteral("transform=\"translate(%1,0)\"").arg(way),
                                           QString())));
        COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, 0), 1);
    }
}

void PlaybackTest::drawsIntoItsBounds_data()
{
    QTest::addColumn<QRectF>("bounds");
    QTest::newRow("as large as the view box") << QRectF(0, 0, 100, 50);
    QTest::newRow("elsewhere") << QRectF(13, 7, 100, 50);
    QTest::newRow("smaller") << QRectF(20, 10, 50, 25);
    QTest::newRow("larger than the canvas") << QRectF(-20, -10, 300, 150);
    QTest::newRow("other proportions") << QRectF(5, 5, 30, 60);
    QTest::newRow("fractions") << QRectF(0.5, 1.25, 60.9, 40.1);
    QTest::newRow("thinner than a pixel") << QRectF(10, 10, 0.6, 40);
}

void PlaybackTest::drawsIntoItsBounds()
{
    QFETCH(QRectF, bounds);
    const QString still =
            svgTitle(QStringLiteral("<rect x=\"5\" y=\"10\" width=\"60\" height=\"30\"/>"
                                    "<circle cx=\"80\" cy=\"20\" r=\"10\" fill=\"red\"/>"));
    SvgDocument document(still);
    document.setBounds(bounds);
    QImage picture(120, 80, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    document.paint(&painter, 0);
    painter.end();
    COMPARE_PICTURES(picture, renderStill(still.toUtf8(), bounds, picture.size()), 0);
}

void PlaybackTest::drawsNothingIntoEmptyBounds_data()
{
    QTest::addColumn<QRectF>("bounds");
    const qreal nan = std::numeric_limits<qreal>::quiet_NaN();
    const qreal infinity = std::numeric_limits<qreal>::infinity();
    QTest::newRow("null") << QRectF();
    QTest::newRow("0x0 elsewhere") << QRectF(10, 10, 0, 0);
    QTest::newRow("no width") << QRectF(0, 0, 0, 50);
    QTest::newRow("no height") << QRectF(0, 0, 100, 0);
    QTest::newRow("negative width") << QRectF(50, 0, -100, 50);
    QTest::newRow("negative height") << QRectF(0, 50, 100, -50);
    QTest::newRow("both negative") << QRectF(100, 50, -100, -50);
    QTest::newRow("no number") << QRectF(0, 0, nan, 50);
    QTest::newRow("a position that is no number") << QRectF(nan, 0, 100, 50);
    QTest::newRow("infinite") << QRectF(0, 0, infinity, infinity);
    QTest::newRow("infinitely far away") << QRectF(0, -infinity, 100, 50);
}

void PlaybackTest::drawsNothingIntoEmptyBounds()
{
    QFETCH(QRectF, bounds);
    SvgDocument still(svgTitle(QStringLiteral("<rect x=\"5\" width=\"60\" height=\"30\"/>")));
    SvgDocument animated(svgTitle(movingRect()));
    for (SvgDocument *document : {&still, &animated}) {
        QVERIFY(!leavesCanvasUntouched(*document, 500));
        document->setBounds(bounds);
        QVERIFY(leavesCanvasUntouched(*document, 500));
        document->setBounds(QRectF(0, 0, 100, 50));
        QVERIFY(!leavesCanvasUntouched(*document, 500));
    }
}

void PlaybackTest::drawsNothingWithoutAPainter()
{
    SvgDocument document(svgTitle(movingRect()));
    document.paint(nullptr, 500);
    QCOMPARE(elementById(savedTree(document), QStringLiteral("r")).attribute(QStringLiteral("x")),
             QStringLiteral("40.000"));
}

void PlaybackTest::keepsThePaintersState()
{
    SvgDocument document(
            svgTitle(movingRect(QStringLiteral("fill=\"red\" opacity=\"0.5\""
                                               " transform=\"rotate(9)\" stroke=\"blue\""))));
    QImage picture(120, 80, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const QTransform transform = QTransform::fromTranslate(3, 4).scale(2, 2);
    painter.setTransform(transform);
    painter.setPen(QPen(Qt::green, 3));
    painter.setBrush(Qt::yellow);
    painter.setOpacity(0.75);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    painter.setClipRect(1, 2, 30, 20);
    const QFont font = painter.font();
    const QPainter::RenderHints hints = painter.renderHints();
    for (const QRectF &bounds : {QRectF(0, 0, 100, 50), QRectF()}) {
        document.setBounds(bounds);
        document.paint(&painter, 500);
        QCOMPARE(painter.transform(), transform);
        QCOMPARE(painter.pen(), QPen(Qt::green, 3));
        QCOMPARE(painter.brush(), QBrush(Qt::yellow));
        QCOMPARE(painter.opacity(), 0.75);
        QCOMPARE(painter.compositionMode(), QPainter::CompositionMode_DestinationOver);
        QCOMPARE(painter.clipBoundingRect(), QRectF(1, 2, 30, 20));
        QCOMPARE(painter.font(), font);
        QCOMPARE(painter.renderHints(), hints);
    }
}

void PlaybackTest::drawsNothingOfBrokenText()
{
    const QString text = svgTitle(QStringLiteral("<rect x=\"5\" width=\"60\" height=\"30\"/>"));
    SvgDocument document(text);
    for (const QByteArray &broken : {QByteArray("<svg"), QByteArray("words"),
                                     QByteArray("<other/>"), text.toUtf8().chopped(3)}) {
        document.seek(0);
        document.write(broken);
        QVERIFY(leavesCanvasUntouched(document, 0));
        document.seek(0);
        document.write(text.toUtf8());
        QVERIFY(!leavesCanvasUntouched(document, 0));
    }
}

/// Frames are made of the tree, and the tree is that of the text when it was last parsed.
void PlaybackTest::drawsOverTextWrittenBetweenFrames()
{
    SvgDocument document(svgTitle(movingRect()));
    SvgDocument twin(svgTitle(movingRect()));
    for (const int ms : {500, 500, 0}) {
        document.seek(0);
        document.write(svgTitle(QStringLiteral("<circle cx=\"50\" cy=\"25\" r=\"20\"/>")).toUtf8());
        COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, ms), 0);
        QVERIFY(savedTree(document).elementsByTagName(QStringLiteral("circle")).isEmpty());
    }
}

/// Numbers of different lengths leave the end of a longer text after a shorter one.
void PlaybackTest::playsOverALongerText()
{
    const QString words = QStringLiteral("Титры 字幕 конец \U0001F3AC");
    for (int gap = 1; gap < 120; gap += 3) {
        SvgDocument document(svgTitle(
                QStringLiteral("<text%1y=\"40\" font-size=\"8\">%2</text><rect id=\"r\" y=\"10\""
                               " width=\"20\" height=\"20\"><animate attributeName=\"x\""
                               " values=\"-9999999;50;5\" dur=\"1s\"/></rect><text>%2</text>")
                        .arg(QString(gap, QLatin1Char(' ')), words)));
        for (const int ms : {0, 500, 750, 2000, 0, 999, 500}) {
            const QImage picture = renderAt(document, ms);
            const QDomDocument tree = savedTree(document);
            QCOMPARE(tree.elementsByTagName(QStringLiteral("text")).at(1).toElement().text(),
                     words);
            COMPARE_PICTURES(picture,
                             renderStill(tree.toByteArray(), document.bounds(), picture.size()), 0);
        }
        QVERIFY(document.size() < document.data().size());
    }
}

void PlaybackTest::savesChangesMadeThroughTheRoot()
{
    SvgDocument document(svgTitle(movingRect() + QStringLiteral("<rect id=\"s\"/>")));
    QDomNode root = document.documentRoot();
    QDomElement s = elementById(root, QStringLiteral("s"));
    // Whether the frame before it was the same one or another.
    for (const int ms : {500, 500, 500, 0, 2000, 2000}) {
        const QString value = s.attribute(QStringLiteral("b")) + QLatin1Char('b');
        s.setAttribute(QStringLiteral("b"), value);
        QCOMPARE(attributeAt(document, ms, "s", "b"), value);
    }
    root.removeChild(s);
    document.applyAnimation(2000);
    QVERIFY(elementById(savedTree(document), QStringLiteral("s")).isNull());
}

void PlaybackTest::overwritesChangesOfAnimatedAttributes()
{
    SvgDocument document(
            svgTitle(QStringLiteral("<rect id=\"r\" a=\"T\"><animate attributeName=\"a\" "
                                    "values=\"A\" dur=\"1s\"/></rect>")));
    QDomElement r = elementById(document.documentRoot(), QStringLiteral("r"));
    for (const int ms : {500, 500, 2000, 2000, 500}) {
        r.setAttribute(QStringLiteral("a"), QStringLiteral("mine"));
        QCOMPARE(attributeAt(document, ms, "r", "a"),
                 ms == 500 ? QStringLiteral("A") : QStringLiteral("T"));
        r.removeAttribute(QStringLiteral("a"));
        QCOMPARE(attributeAt(document, ms, "r", "a"),
                 ms == 500 ? QStringLiteral("A") : QStringLiteral("T"));
    }
}

void PlaybackTest::looksElementsUpByTheirPlace()
{
    SvgDocument document(svgTitle(QStringLiteral(
            "<defs><g id=\"d\"><animate attributeName=\"visibility\" values=\"hidden\" dur=\"1s\"/>"
            "</g></defs><g id=\"p\"/><g id=\"r\" a=\"T\"><animate attributeName=\"a\" values=\"A\""
            " dur=\"1s\"/></g><g id=\"q\"/><use id=\"u\" xlink:href=\"#d\"/>")));
    QCOMPARE(attributeAt(document, 500, "r", "a"), QStringLiteral("A"));
    QCOMPARE(attributeAt(document, 500, "u", "visibility"), QStringLiteral("hidden"));

    QDomNode root = document.documentRoot();
    QDomElement front = elementById(root, QStringLiteral("q")).cloneNode().toElement();
    front.setAttribute(QStringLiteral("id"), QStringLiteral("front"));
    root.insertAfter(front, root.firstChild());
    // What stood at a place has moved on; what stands there now is taken for it.
    QCOMPARE(attributeAt(document, 400, "p", "a"), QStringLiteral("A"));
    QCOMPARE(attributeAt(document, 400, "r", "a"), QStringLiteral("A"));
    QCOMPARE(attributeAt(document, 2000, "p", "a"), QStringLiteral("T"));
    QCOMPARE(attributeAt(document, 2000, "r", "a"), QStringLiteral("A"));
    QCOMPARE(attributeAt(document, 2000, "q", "visibility"), QStringLiteral("visible"));
    QCOMPARE(attributeAt(document, 2000, "u", "visibility"), QStringLiteral("hidden"));

    root.removeChild(front);
    QCOMPARE(attributeAt(document, 2000, "r", "a"), QStringLiteral("T"));
    QCOMPARE(attributeAt(document, 2000, "p", "a"), QStringLiteral("T"));
    QCOMPARE(attributeAt(document, 500, "u", "visibility"), QStringLiteral("hidden"));
}

void PlaybackTest::skipsElementsThatAreGone()
{
    SvgDocument document(svgTitle(QStringLiteral(
            "<g id=\"p\"><animate attributeName=\"a\" values=\"A\" dur=\"1s\"/></g>"
            "<g><g id=\"r\"><animate attributeName=\"a\" values=\"B\" dur=\"1s\"/></g></g>")));
    document.applyAnimation(500);
    QDomNode root = document.documentRoot();
    root.removeChild(root.lastChild());
    QCOMPARE(attributeAt(document, 600, "p", "a"), QStringLiteral("A"));
    QCOMPARE(attributeAt(document, 2000, "p", "a"), QStringLiteral("-"));
    QCOMPARE(savedTree(document).documentElement().childNodes().count(), 1);
    root.removeChild(root.lastChild());
    document.applyAnimation(500);
    QCOMPARE(savedTree(document).documentElement().childNodes().count(), 0);

    // Text in the place of an element is no element.
    root.appendChild(root.ownerDocument().createTextNode(QStringLiteral("words")));
    document.applyAnimation(500);
    QCOMPARE(savedTree(document).documentElement().text().trimmed(), QStringLiteral("words"));
}

void PlaybackTest::losesUnsavedChangesWhenTheTextIsParsed()
{
    SvgDocument document(svgTitle(movingRect()));
    for (int i = 0; i < 2; ++i) {
        const QDomNode root = document.documentRoot();
        QDomElement rect = elementById(root, QStringLiteral("r"));
        rect.setAttribute(QStringLiteral("b"), QStringLiteral("lost"));
        root.firstChild().appendChild(rect.ownerDocument().createElement(QStringLiteral("g")));
        document.viewBox();
        QCOMPARE(attributeAt(document, 500, "r", "b"), QStringLiteral("-"));
        QCOMPARE(attributeAt(document, 500, "r", "x"), QStringLiteral("40.000"));
        // The old nodes belong to no tree of the document any more.
        rect.setAttribute(QStringLiteral("b"), QStringLiteral("late"));
        QCOMPARE(attributeAt(document, 250, "r", "b"), QStringLiteral("-"));
        QCOMPARE(attributeAt(document, 250, "r", "x"), QStringLiteral("20.000"));
    }
}

/// A document node stays that of the current tree, however often the text is parsed.
void PlaybackTest::savesChangesMadeThroughTheOwnerDocument()
{
    SvgDocument document(svgTitle(movingRect()));
    const QDomDocument owner = document.documentRoot().ownerDocument();
    for (const char *value : {"first", "second"}) {
        document.viewBox();
        document.applyAnimation(500);
        elementById(owner.documentElement(), QStringLiteral("r"))
                .setAttribute(QStringLiteral("b"), QLatin1String(value));
        QCOMPARE(attributeAt(document, 500, "r", "b"), QLatin1String(value));
        elementById(owner.documentElement(), QStringLiteral("r"))
                .setAttribute(QStringLiteral("x"), QStringLiteral("mine"));
        QCOMPARE(attributeAt(document, 500, "r", "x"), QStringLiteral("40.000"));
    }
}

QTEST_MAIN(PlaybackTest)

#include "tst_playback.moc"
