// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/SvgDocument.h>

#include <QDomDocument>
#include <QLoggingCategory>
#include <QRandomGenerator>

#include <algorithm>
#include <map>
#include <vector>

// Begins that refer to other animations.

namespace {

const char *const kinds[] = {"animate", "animateColor", "animateTransform"};

struct Animation
{
    QString id;
    QString begin;
    QString dur;
    QString kind = QStringLiteral("animate");
};

using Animations = QVector<Animation>;

Animation animation(const char *id, const char *begin, const char *dur = "",
                    const char *kind = "animate")
{
    return {QString::fromUtf8(id), QString::fromUtf8(begin), QString::fromUtf8(dur),
            QString::fromUtf8(kind)};
}

QString attribute(const char *name, const QString &value)
{
    return value.isEmpty() ? QString()
                           : QStringLiteral(" %1=\"%2\"").arg(QLatin1String(name), value);
}

QString element(const Animation &animation)
{
    static const std::map<QString, QString> what{
            {QStringLiteral("animate"), QStringLiteral("attributeName=\"x\" to=\"9\"")},
            {QStringLiteral("animateColor"),
             QStringLiteral("attributeName=\"fill\" from=\"red\" to=\"blue\"")},
            {QStringLiteral("animateTransform"),
             QStringLiteral("attributeName=\"transform\" type=\"rotate\" from=\"0\" to=\"9\"")}};
    const auto found = what.find(animation.kind);
    return QStringLiteral("<%1 %2%3%4%5/>")
            .arg(animation.kind, found == what.end() ? QString() : found->second,
                 attribute("id", animation.id), attribute("begin", animation.begin))
            .arg(attribute("dur", animation.dur));
}

QString svg(const QString &content)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 100 50\">"
                          "%1</svg>")
            .arg(content);
}

/// All animations are those of one shape. The empty one is there to make the title animated.
QString svg(const Animations &animations)
{
    QString content;
    for (const Animation &each : animations)
        content += element(each);
    return svg(QStringLiteral("<g><animate/></g><rect>%1</rect>").arg(content));
}

/// The begins of the shape's animations, in document order.
QStringList begins(const QDomDocument &tree)
{
    QStringList result;
    const QDomElement rect = tree.elementsByTagName(QStringLiteral("rect")).at(0).toElement();
    for (QDomElement each = rect.firstChildElement(); !each.isNull();
         each = each.nextSiblingElement())
        result.append(each.attribute(QStringLiteral("begin")));
    return result;
}

/// The rules in their plainest form: resolution by recursion.
class PlainResolution
{
public:
    explicit PlainResolution(const QString &text) : m_document(QString())
    {
        m_tree.setContent(text);
        std::vector<QDomElement> pending;
        for (const char *kind : kinds) {
            const QDomNodeList elements = m_tree.elementsByTagName(QLatin1String(kind));
            for (int i = 0; i < elements.count(); ++i) {
                const QDomElement each = elements.at(i).toElement();
                if (classify(each).begin == -1)
                    pending.push_back(each);
                const QString id = each.attribute(QStringLiteral("id"));
                if (!id.isEmpty())
                    m_elements.insert(std::make_pair(id, each));
            }
        }
        for (const QDomElement &each : pending)
            resolve(each);
    }

    const QDomDocument &tree() const { return m_tree; }

private:
    struct Times
    {
        QString refId;
        bool fromBegin = false;
        int offset = 0;
        int begin = -1;
        int end = -1;
    };

    Times classify(const QDomElement &each) const
    {
        Times times;
        const QString begin = each.attribute(QStringLiteral("begin")).trimmed();
        int i = begin.indexOf(QStringLiteral(".begin"));
        if (i >= 0) {
            times.fromBegin = true;
            times.refId = begin.left(i);
        } else if ((i = begin.indexOf(QStringLiteral(".end"))) >= 0) {
            times.refId = begin.left(i);
        }
        if (times.refId.isEmpty()) {
            times.begin = m_document.stringToTime(begin);
            times.end = times.begin
                    + m_document.stringToTime(each.attribute(QStringLiteral("dur")).trimmed());
            return times;
        }
        if ((i = begin.indexOf(QLatin1Char('+'))) >= 0)
            times.offset = m_document.stringToTime(begin.mid(i + 1));
        else if ((i = begin.indexOf(QLatin1Char('-'))) >= 0)
            times.offset = -m_document.stringToTime(begin.mid(i + 1));
        return times;
    }

    void resolve(QDomElement each)
    {
        const Times times = classify(each);
        if (times.begin != -1)
            return;
        const auto found = m_elements.find(times.refId);
        const QDomElement reference = found == m_elements.end() ? QDomElement() : found->second;
        resolve(reference);
        const Times referenced = classify(reference);
        const int begin = times.offset + (times.fromBegin ? referenced.begin : referenced.end);
        each.setAttribute(QStringLiteral("begin"), QString::number(begin) + QStringLiteral("ms"));
    }

    SvgDocument m_document;
    QDomDocument m_tree;
    std::map<QString, QDomElement> m_elements;
};

QString anyOf(QRandomGenerator &random, const QStringList &texts)
{
    return texts.at(random.bounded(texts.size()));
}

/// Animations whose references lead to ids of a lower rank only, and so to no cycle.
Animations randomAnimations(QRandomGenerator &random)
{
    const QStringList ids{QStringLiteral("a"), QStringLiteral("b-b"), QStringLiteral("c+c"),
                          QStringLiteral("D"), QStringLiteral("e.e"), QStringLiteral("f")};
    const QStringList signs{QString(),
                            QStringLiteral("+"),
                            QStringLiteral("-"),
                            QStringLiteral(" "),
                            QStringLiteral(" + "),
                            QStringLiteral("+-"),
                            QStringLiteral("--"),
                            QStringLiteral("-1s+")};
    const QStringList times{QString(),
                            QStringLiteral("1s"),
                            QStringLiteral("0.5"),
                            QStringLiteral("1ms"),
                            QStringLiteral("-1ms"),
                            QStringLiteral("2ms"),
                            QStringLiteral("soon"),
                            QStringLiteral("-2s"),
                            QStringLiteral(" 250ms ")};
    Animations result;
    const int count = 1 + random.bounded(10);
    for (int i = 0; i < count; ++i) {
        const int rank = random.bounded(ids.size() + 1);
        Animation each{ids.value(rank), anyOf(random, times), anyOf(random, times),
                       QLatin1String(kinds[random.bounded(3)])};
        if (random.bounded(3) > 0) {
            const QString target = rank == 0 || random.bounded(8) == 0
                    ? QStringLiteral("ghost")
                    : ids.at(random.bounded(rank));
            each.begin = target + anyOf(random, {QStringLiteral(".begin"), QStringLiteral(".end")})
                    + anyOf(random, signs) + anyOf(random, times);
        }
        result.append(each);
    }
    return result;
}

} // namespace

Q_DECLARE_METATYPE(Animations)

class ConditionalTimingTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void resolvesBegins_data();
    void resolvesBegins();
    void followsTheRulesToTheLetter();
    void leavesTextWithoutReferencesAlone_data();
    void leavesTextWithoutReferencesAlone();
    void changesNothingButBegins();
    void findsAnimationsAnywhere();
    void resolvesLongChains_data();
    void resolvesLongChains();
    void resolvesALongRing();
    void leavesTheRendererRoomForDurations_data();
    void leavesTheRendererRoomForDurations();
    void startsAnimationsAtTheResolvedTime();

    void savesOverALongerText();
    void parsesTheTextFirst();
    void resolvesTextWrittenLater();
    void isDoneOnce();
    void animatedBeginsComeBackWithTheFrame();
};

/// The renderer complains of begins that refer to other animations.
void ConditionalTimingTest::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false"));
}

void ConditionalTimingTest::resolvesBegins_data()
{
    QTest::addColumn<Animations>("animations");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const Animations &animations, const char *expected) {
        QTest::newRow(name) << animations << QString::fromUtf8(expected);
    };
    const Animation a = animation("a", "1s", "2s");

    row("from the end", {a, animation("b", "a.end")}, "1s|3000ms");
    row("from the begin", {a, animation("b", "a.begin")}, "1s|1000ms");
    row("offset after the end", {a, animation("b", "a.end+0.5s")}, "1s|3500ms");
    row("offset before the end", {a, animation("b", "a.end-1s")}, "1s|2000ms");
    row("offset after the begin", {a, animation("b", "a.begin+250ms")}, "1s|1250ms");
    row("before 0", {a, animation("b", "a.begin-2s")}, "1s|-1000ms");
    row("at 0", {a, animation("b", "a.begin-1s")}, "1s|0ms");
    row("in a chain", {a, animation("b", "a.end"), animation("c", "b.begin+0.5s")},
        "1s|3000ms|3500ms");
    row("in a chain from its last link",
        {animation("c", "b.begin+0.5s"), a, animation("b", "a.end")}, "3500ms|1s|3000ms");
    row("in a chain against the document's order",
        {animation("d", "c.end", "1s"), animation("c", "b.end", "1s"),
         animation("b", "a.end", "1s"), a},
        "5000ms|4000ms|3000ms|1s");
    row("several from one",
        {animation("b", "a.end"), animation("c", "a.end+1s"), animation("", "a.begin"), a},
        "3000ms|4000ms|1000ms|1s");

    row("unknown id", {animation("b", "ghost.end+2s")}, "2000ms");
    row("unknown id without offset", {animation("b", "ghost.begin")}, "0ms");
    row("unknown id, negative offset", {animation("b", "ghost.end-0.25s")}, "-250ms");
    row("ids are case-sensitive", {a, animation("b", "A.end+2s")}, "1s|2000ms");
    row("a space belongs to the id", {a, animation("b", "a .end+2s")}, "1s|2000ms");
    row("an id with a space", {animation("a ", "1s", "2s"), animation("b", "a .end+2s")},
        "1s|5000ms");
    row("an id in another alphabet",
        {animation("\xD1\x8F", "1s", "2s"), animation("b", "\xD1\x8F.end+2s")}, "1s|5000ms");
    row("an element without an id can refer", {a, animation("", "a.end")}, "1s|3000ms");

    row("no duration: the end is the begin", {animation("a", "1s"), animation("b", "a.end")},
        "1s|1000ms");
    row("indefinite duration", {animation("a", "1s", "indefinite"), animation("b", "a.end+1s")},
        "1s|2000ms");
    row("negative duration", {animation("a", "3s", "-2s"), animation("b", "a.end")}, "3s|1000ms");
    row("trimmed times", {animation("a", " 1s ", " 2s\t"), animation("b", "  a.end + 500ms  ")},
        " 1s |3500ms");
    row("no begin", {animation("a", "", "2s"), animation("b", "a.end")}, "|2000ms");
    row("unreadable begin", {animation("a", "click", "2s"), animation("b", "a.end")},
        "click|2000ms");

    row("offset without unit", {a, animation("b", "a.end+2")}, "1s|5000ms");
    row("offset with spaces", {a, animation("b", "a.end  +  2s")}, "1s|5000ms");
    row("unreadable offset", {a, animation("b", "a.end+soon")}, "1s|3000ms");
    row("empty offset", {a, animation("b", "a.end+")}, "1s|3000ms");
    row("offset with a colon", {a, animation("b", "a.end+00:02")}, "1s|3000ms");
    row("offsets are cut off to milliseconds", {a, animation("b", "a.end+0.0019s")}, "1s|3001ms");
    row("no sign, no offset", {a, animation("b", "a.end 2s")}, "1s|3000ms");
    row("text after the reference", {a, animation("b", "a.ending+2s")}, "1s|5000ms");
    row("a plus counts before a minus", {a, animation("b", "a.end-1s+2s")}, "1s|5000ms");
    row("the first plus", {a, animation("b", "a.end+1s+2s")}, "1s|3000ms");
    row("a minus after the plus belongs to the offset", {a, animation("b", "a.end+-1s")},
        "1s|2000ms");
    row("two minuses", {a, animation("b", "a.end--1s")}, "1s|4000ms");
    row("the first sign is the hyphen of the id",
        {animation("my-anim", "1s", "2s"), animation("b", "my-anim.end-1s")}, "1s|3000ms");
    row("a plus counts before the hyphen of the id",
        {animation("my-anim", "1s", "2s"), animation("b", "my-anim.end+1s")}, "1s|4000ms");
    row("the first sign is the plus of the id",
        {animation("my+anim", "1s", "2s"), animation("b", "my+anim.end+1s")}, "1s|3000ms");

    row(".begin counts before .end", {a, animation("b", "a.end.begin+2s")}, "1s|2000ms");
    row("an id that ends in .end",
        {animation("a.end", "1s", "2s"), animation("b", "a.end.begin+2s")}, "1s|3000ms");
    row("several begins: the first reference with a .begin",
        {a, animation("b", "a.begin;ghost.end")}, "1s|1000ms");
    row("several begins: what stands before a .begin is its id",
        {a, animation("b", "a.end;a.begin+2s")}, "1s|2000ms");
    row("a reference without an id is plain", {a, animation("b", ".end+2s")}, "1s|.end+2s");
    row("a reference without an id is plain even when another follows",
        {a, animation("b", ".begin;a.end")}, "1s|.begin;a.end");
    row("the words are case-sensitive", {a, animation("b", "a.End+2s")}, "1s|a.End+2s");
    row("events are plain", {a, animation("b", "a.click+2s")}, "1s|a.click+2s");
    row("indefinite is plain", {a, animation("b", "indefinite")}, "1s|indefinite");

    row("repetitions, ends and fills do not count",
        {animation("a", "1s", "2s\" repeatCount=\"5\" end=\"9s\" fill=\"freeze"),
         animation("b", "a.end")},
        "1s|3000ms");
    row("a begin of -1ms is taken for unresolved", {animation("a", "-1ms", "2s")}, "0ms");
    row("also when it is written in seconds", {animation("a", "-0.001s", "2s")}, "0ms");
    row("also when it is cut off to -1ms", {animation("a", "-1.9ms", "2s")}, "0ms");
    row("a begin of -2ms is plain", {animation("a", "-2ms", "2s")}, "-2ms");
    row("a reference to a begin of -1ms", {animation("a", "-1ms", "2s"), animation("b", "a.end")},
        "0ms|2000ms");
    row("a reference before a begin of -1ms",
        {animation("b", "a.end"), animation("a", "-1ms", "2s")}, "2000ms|0ms");
    row("a begin that resolves to -1ms", {animation("a", "ghost.end-1ms", "2s")}, "-1ms");
    row("a reference to a begin that resolved to -1ms",
        {animation("a", "ghost.end-1ms", "2s"), animation("b", "a.end")}, "0ms|2000ms");
    row("a reference before a begin that resolves to -1ms",
        {animation("b", "a.end"), animation("a", "ghost.end-1ms", "2s")}, "1999ms|0ms");

    row("animateColor can be referred to",
        {animation("a", "1s", "2s", "animateColor"), animation("b", "a.end")}, "1s|3000ms");
    row("animateColor can refer", {a, animation("b", "a.end", "1s", "animateColor")}, "1s|3000ms");
    row("animateTransform can be referred to",
        {animation("a", "1s", "2s", "animateTransform"), animation("b", "a.end")}, "1s|3000ms");
    row("animateTransform can refer", {a, animation("b", "a.end", "1s", "animateTransform")},
        "1s|3000ms");
    row("a chain of all three kinds",
        {animation("c", "b.end", "1s", "animateTransform"), a,
         animation("b", "a.end", "1s", "animateColor")},
        "4000ms|1s|3000ms");
    row("animateMotion can't be referred to",
        {animation("a", "1s", "2s", "animateMotion"), animation("b", "a.end+1s")}, "1s|1000ms");
    row("animateMotion can't refer", {a, animation("b", "a.end", "1s", "animateMotion")},
        "1s|a.end");
    row("set can't be referred to", {animation("a", "1s", "2s", "set"), animation("b", "a.end+1s")},
        "1s|1000ms");
    row("set can't refer", {a, animation("b", "a.end", "1s", "set")}, "1s|a.end");
    row("a shape can't be referred to",
        {animation("a", "1s", "2s", "rect"), animation("b", "a.end+1s")}, "1s|1000ms");

    row("the first of two with one id counts",
        {a, animation("a", "5s", "5s"), animation("b", "a.end")}, "1s|5s|3000ms");
    row("an animate counts before an animateColor",
        {animation("a", "5s", "5s", "animateColor"), a, animation("b", "a.end")}, "5s|1s|3000ms");
    row("an animateColor counts before an animateTransform",
        {animation("a", "5s", "5s", "animateTransform"), animation("a", "1s", "2s", "animateColor"),
         animation("b", "a.end")},
        "5s|1s|3000ms");
    row("both of two with one id are resolved",
        {animation("x", "a.end"), animation("x", "a.end+1s"), a}, "3000ms|4000ms|1s");

    row("a reference to itself", {animation("a", "a.end+1s", "5s")}, "1000ms");
    row("a reference to its own begin", {animation("a", "a.begin", "5s")}, "0ms");
    row("two refer to each other",
        {animation("a", "b.end+1s", "2s"), animation("b", "a.end+3s", "4s")}, "8000ms|3000ms");
    row("three refer to each other in a ring",
        {animation("a", "b.end", "1s"), animation("b", "c.end", "1s"),
         animation("c", "a.end+1s", "1s")},
        "3000ms|2000ms|1000ms");
    row("a chain leads into a ring",
        {animation("d", "c.begin+1s"), animation("c", "a.end+1s", "1s"),
         animation("a", "b.end", "1s"), animation("b", "a.begin+2s", "4s")},
        "9000ms|8000ms|6000ms|2000ms");
    row("a chain leads into a ring that is resolved",
        {animation("a", "b.end", "1s"), animation("b", "a.begin+2s", "4s"),
         animation("c", "a.end+1s", "1s"), animation("d", "c.begin+1s")},
        "6000ms|2000ms|8000ms|9000ms");
    row("a chain leads into the middle of a ring",
        {animation("d", "b.end", "1s"), animation("a", "b.end", "1s"),
         animation("b", "a.begin+2s", "4s")},
        "6000ms|0ms|2000ms");
    row("a chain leads to one that refers to itself",
        {animation("b", "a.end", "1s"), animation("a", "a.end+1s", "5s")}, "6000ms|1000ms");
    row("a ring of different kinds",
        {animation("a", "b.end+1s", "2s", "animateTransform"),
         animation("b", "a.end+3s", "4s", "animateColor")},
        "1000ms|6000ms");

    row("sums saturate", {animation("a", "2147483s", "2147483s"), animation("b", "a.end+2147483s")},
        "2147483s|2147483647ms");
    row("sums saturate below 0",
        {animation("a", "-2147483s", "-2147483s"), animation("b", "a.end-2147483s")},
        "-2147483s|-2147483648ms");
    row("offsets saturate", {animation("b", "ghost.end+1e30s")}, "2147483647ms");
    row("negative offsets saturate", {animation("b", "ghost.end-1e30s")}, "-2147483647ms");
}

void ConditionalTimingTest::resolvesBegins()
{
    QFETCH(Animations, animations);
    QFETCH(QString, expected);
    SvgDocument document(svg(animations));
    QVERIFY(document.isLoaded());
    QCOMPARE(begins(savedTree(document)).join(QLatin1Char('|')), expected);
    QCOMPARE(savedTree(document)
                     .elementsByTagName(QStringLiteral("rect"))
                     .at(0)
                     .childNodes()
                     .count(),
             animations.size());
}

void ConditionalTimingTest::followsTheRulesToTheLetter()
{
    QRandomGenerator random(42);
    int rewritten = 0;
    for (int round = 0; round < 3000; ++round) {
        const QString text = svg(randomAnimations(random));
        SvgDocument document(text);
        QVERIFY2(document.isLoaded(), qPrintable(text));
        const QStringList actual = begins(savedTree(document));
        const QStringList expected = begins(PlainResolution(text).tree());
        QVERIFY2(actual == expected,
                 qPrintable(text + QLatin1Char('\n') + actual.join(QLatin1Char('|'))
                            + QLatin1Char('\n') + expected.join(QLatin1Char('|'))));
        rewritten += document.data() != text.toUtf8();
    }
    QVERIFY(rewritten > 1000);
}

void ConditionalTimingTest::leavesTextWithoutReferencesAlone_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain begins") << svg({animation("a", "1s", "2s"), animation("b", "250ms")});
    QTest::newRow("no begins") << svg({animation("a", "", "2s")});
    QTest::newRow("unreadable begins") << svg(
            {animation("a", "click"), animation("b", "indefinite"), animation("c", "00:00:05"),
             animation("d", ".end"), animation("e", "prev.End")});
    QTest::newRow("references of elements that take no part")
            << svg({animation("a", "1s", "2s"), animation("", "a.end", "", "animateMotion"),
                    animation("", "a.end", "", "set")});
    QTest::newRow("layout of one's own") << QStringLiteral("<?xml version='1.0'?>\n\n")
                    + svg(QStringLiteral("\n   <rect  width='9'\n>\n<animate attributeName = 'x'"
                                         " to='9' dur='1s' ></animate></rect >\n"))
                    + QStringLiteral("\n<!-- the end -->\n");
}

void ConditionalTimingTest::leavesTextWithoutReferencesAlone()
{
    QFETCH(QString, text);
    SvgDocument document(text);
    QVERIFY(document.isLoaded());
    QCOMPARE(document.data(), text.toUtf8());
    document.fixConditionalTiming();
    QCOMPARE(document.data(), text.toUtf8());
}

void ConditionalTimingTest::changesNothingButBegins()
{
    const QString text =
            svg(QStringLiteral("<defs><g id=\"d\"/></defs><!--note--><rect id=\"r\" fill=\"red\">"
                               "<animate id=\"a\" attributeName=\"x\" values=\"1;2\" dur=\"2s\""
                               " begin=\"1s\"/><animate id=\"b\" attributeName=\"y\" to=\"1\""
                               " begin=\"%1\" fill=\"freeze\"/></rect><text x=\"1\">words</text>"));
    SvgDocument document(text.arg(QStringLiteral("a.end")));
    QVERIFY(document.isLoaded());
    QDomDocument expected;
    QVERIFY(expected.setContent(text.arg(QStringLiteral("3000ms"))));

    const auto flat = [](SvgDocument &reader, const QDomDocument &tree) {
        std::vector<QDomNode> nodes;
        reader.getAllNodes(tree.documentElement(), nodes);
        QStringList lines;
        for (const QDomNode &node : nodes) {
            QStringList parts;
            const QDomNamedNodeMap attributes = node.attributes();
            for (int i = 0; i < attributes.count(); ++i)
                parts.append(attributes.item(i).nodeName() + QLatin1Char('=')
                             + attributes.item(i).nodeValue());
            parts.sort();
            lines.append(node.nodeName() + QLatin1Char(' ') + node.nodeValue() + QLatin1Char(' ')
                         + parts.join(QLatin1Char(' ')));
        }
        return lines;
    };
    QCOMPARE(flat(document, savedTree(document)), flat(document, expected));
}

void ConditionalTimingTest::findsAnimationsAnywhere()
{
    SvgDocument document(
            svg(QStringLiteral("<defs><g><animate id=\"a\" attributeName=\"x\" to=\"1\""
                               " begin=\"1s\" dur=\"2s\"/></g></defs>"
                               "<animate id=\"b\" begin=\"a.end\" dur=\"1s\"/>"
                               "<g><g><rect><animate attributeName=\"x\" to=\"1\""
                               " begin=\"b.end\"/></rect></g></g>")));
    QCOMPARE(begins(savedTree(document)), QStringList{QStringLiteral("4000ms")});
}

void ConditionalTimingTest::resolvesLongChains_data()
{
    QTest::addColumn<bool>("fromTheFirst");
    QTest::newRow("each link after the one that it refers to") << true;
    QTest::newRow("each link before the one that it refers to") << false;
}

void ConditionalTimingTest::resolvesLongChains()
{
    QFETCH(bool, fromTheFirst);
    const int length = 10000;
    Animations animations;
    for (int i = 0; i < length; ++i) {
        Animation link = animation("", "5ms", "2ms");
        link.id = QStringLiteral("n%1").arg(i);
        if (i > 0)
            link.begin = QStringLiteral("n%1.end+1ms").arg(i - 1);
        animations.append(link);
    }
    if (!fromTheFirst)
        std::reverse(animations.begin(), animations.end());
    SvgDocument document(svg(animations));
    QVERIFY(document.isLoaded());
    QStringList result = begins(savedTree(document));
    QCOMPARE(result.size(), length);
    if (!fromTheFirst)
        std::reverse(result.begin(), result.end());
    QCOMPARE(result.first(), QStringLiteral("5ms"));
    for (int i = 1; i < length; ++i)
        QCOMPARE(result.at(i), QStringLiteral("%1ms").arg(5 + 3 * i));
    QCOMPARE(document.animationDurationTotal(), 5 + 3 * length - 1);
}

void ConditionalTimingTest::resolvesALongRing()
{
    const int length = 10000;
    Animations animations;
    for (int i = 0; i < length; ++i) {
        Animation link = animation("", "", "2ms");
        link.id = QStringLiteral("n%1").arg(i);
        link.begin = QStringLiteral("n%1.end+1ms").arg((i + 1) % length);
        animations.append(link);
    }
    SvgDocument document(svg(animations));
    const QStringList result = begins(savedTree(document));
    QCOMPARE(result.size(), length);
    QCOMPARE(result.last(), QStringLiteral("1ms"));
    QCOMPARE(result.first(), QStringLiteral("%1ms").arg(1 + 3 * (length - 1)));
}

/// The renderer adds begin and duration without care for int's limits.
void ConditionalTimingTest::leavesTheRendererRoomForDurations_data()
{
    QTest::addColumn<Animations>("animations");
    QTest::addColumn<QString>("begin");
    const Animation late = animation("late", "2147483s", "2147483s");
    const Animation early = animation("early", "-2147483s", "-2147483s");
    QTest::newRow("animateTransform")
            << Animations{animation("b", "late.end+1s", "3s", "animateTransform"), late}
            << QStringLiteral("2147480647ms");
    QTest::newRow("animateColor") << Animations{animation("b", "late.end+1s", "3s", "animateColor"),
                                                late}
                                  << QStringLiteral("2147480647ms");
    QTest::newRow("no duration") << Animations{animation("b", "late.end+1s", "", "animateColor"),
                                               late}
                                 << QStringLiteral("2147483647ms");
    QTest::newRow("negative duration")
            << Animations{animation("b", "early.end-1s", "-3s", "animateTransform"), early}
            << QStringLiteral("-2147480648ms");
    QTest::newRow("the document's own arithmetic saturates, so animate needs no room")
            << Animations{animation("b", "late.end+1s", "3s"), late}
            << QStringLiteral("2147483647ms");
}

void ConditionalTimingTest::leavesTheRendererRoomForDurations()
{
    QFETCH(Animations, animations);
    QFETCH(QString, begin);
    SvgDocument document(svg(animations));
    QVERIFY(document.isLoaded());
    QCOMPARE(begins(savedTree(document)).first(), begin);
}

void ConditionalTimingTest::startsAnimationsAtTheResolvedTime()
{
    SvgDocument document(svg({animation("b", "a.end+500ms", "1s"), animation("a", "1s", "500ms")}));
    QCOMPARE(document.animationDurationTotal(), 3000);
    const auto x = [&document](int ms) {
        document.applyAnimation(ms);
        return savedTree(document)
                .elementsByTagName(QStringLiteral("rect"))
                .at(0)
                .toElement()
                .attribute(QStringLiteral("x"));
    };
    QCOMPARE(x(1999), QString());
    QCOMPARE(x(2000), QStringLiteral("0.000"));
    QCOMPARE(x(2500), QStringLiteral("4.500"));
    QCOMPARE(x(3000), QString());
    QCOMPARE(x(1250), QStringLiteral("4.500"));
}

void ConditionalTimingTest::savesOverALongerText()
{
    const QString words = QStringLiteral("Титры 字幕 \U0001F3AC");
    for (int gap = 60; gap < 200; ++gap) {
        const QString text =
                svg(QStringLiteral("<rect%1id=\"r\"><animate attributeName=\"x\" to=\"1\""
                                   " begin=\"ghost.end+2s\" dur=\"1s\"/></rect><text>%2</text>")
                            .arg(QString(gap, QLatin1Char(' ')), words));
        SvgDocument document(text);
        const QByteArray source = text.toUtf8();
        const int length = int(document.size());
        QVERIFY(document.isLoaded());
        QCOMPARE(document.data().size(), qMax(length, source.size()));
        QCOMPARE(document.data().mid(length), source.mid(length));
        QCOMPARE(begins(savedTree(document)), QStringList{QStringLiteral("2000ms")});
        QCOMPARE(savedTree(document)
                         .elementsByTagName(QStringLiteral("text"))
                         .at(0)
                         .toElement()
                         .text(),
                 words);
        QCOMPARE(document.animationDurationTotal(), 3000);
    }
}

void ConditionalTimingTest::parsesTheTextFirst()
{
    SvgDocument document(svg({animation("a", "1s", "2s"), animation("b", "2s")}));
    const QByteArray before = document.data();
    const auto refer = [&document] {
        document.documentRoot().lastChild().lastChildElement().setAttribute(
                QStringLiteral("begin"), QStringLiteral("a.end"));
    };
    refer();
    document.fixConditionalTiming();
    QCOMPARE(document.data(), before);
    QCOMPARE(document.documentRoot().lastChild().lastChildElement().attribute(
                     QStringLiteral("begin")),
             QStringLiteral("2s"));

    refer();
    document.saveToBuffer();
    document.fixConditionalTiming();
    QCOMPARE(begins(savedTree(document)).join(QLatin1Char('|')), QStringLiteral("1s|3000ms"));
}

void ConditionalTimingTest::resolvesTextWrittenLater()
{
    SvgDocument document(svg({animation("a", "1s", "2s")}));
    document.seek(0);
    document.write(svg({animation("a", "5s", "2s"), animation("b", "a.end")}).toUtf8());
    document.fixConditionalTiming();
    QCOMPARE(begins(savedTree(document)).join(QLatin1Char('|')), QStringLiteral("5s|7000ms"));
}

void ConditionalTimingTest::isDoneOnce()
{
    SvgDocument document(svg({animation("a", "1s", "2s"), animation("b", "a.end")}));
    const QByteArray resolved = document.data();
    document.fixConditionalTiming();
    QCOMPARE(document.data(), resolved);
}

void ConditionalTimingTest::animatedBeginsComeBackWithTheFrame()
{
    SvgDocument document(svg(QStringLiteral(
            "<rect><animate id=\"a\" attributeName=\"x\" to=\"9\" begin=\"1s\" dur=\"2s\"/>"
            "<animate attributeName=\"y\" to=\"9\" dur=\"9s\"><animate attributeName=\"begin\""
            " values=\"; a.end\" dur=\"2s\" fill=\"freeze\"/></animate></rect>")));
    for (int i = 0; i < 2; ++i) {
        document.applyAnimation(2000);
        QCOMPARE(begins(savedTree(document)),
                 QStringList({QStringLiteral("1s"), QStringLiteral("a.end")}));
        document.fixConditionalTiming();
        QCOMPARE(begins(savedTree(document)),
                 QStringList({QStringLiteral("1s"), QStringLiteral("3000ms")}));
    }
}

QTEST_MAIN(ConditionalTimingTest)

#include "tst_conditionaltiming.moc"
