// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <QRandomGenerator>

#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <optional>

// Random titles at random times, against the rules of animation in their plainest form: what each
// attribute should be is worked out here from what the title was made of, not from its text.

namespace {

/// The numbers of one key value and how they are written.
struct KeyValue
{
    QString text;
    std::vector<double> numbers; ///< of a colour: red, green, blue
};

enum class Kind { Number, Color, List, Text };

struct Animation
{
    QString id;
    QString attribute;
    Kind kind = Kind::Number;
    std::vector<KeyValue> keyValues;
    QStringList layout; ///< of a list: what stands before, between and after the numbers
    bool isBad = false; ///< a list whose key values do not have the same count of numbers
    bool isDiscrete = false;
    bool isFrozen = false;
    int repeatCount = 1; ///< -1 without end

    QString beginText;
    int plainBegin = 0;
    int base = -1; ///< the animation that the begin refers to; -1 for a plain begin
    bool fromBegin = false;
    int offset = 0;
    QString durText;
    int dur = 0;

    QString markup;
};

struct Shape
{
    QString element;
    std::map<QString, QString> attributes;
    std::vector<int> animations; ///< by number
};

struct Title
{
    std::vector<Shape> shapes;
    std::vector<Animation> animations; ///< in document order
};

// The rules.

int beginOf(const Title &title, const Animation &animation)
{
    if (animation.base < 0)
        return animation.plainBegin == -1 ? 0 : animation.plainBegin;
    const Animation &base = title.animations[std::size_t(animation.base)];
    return beginOf(title, base) + (animation.fromBegin ? 0 : base.dur) + animation.offset;
}

/// How far a time is in the cycle; at the end of the first it is 1, at the end of later ones 0.
double progressOf(const Animation &animation, int sinceBegin)
{
    double progress = double(sinceBegin) / double(animation.dur);
    if (animation.repeatCount >= 0)
        progress = std::min(progress, double(animation.repeatCount));
    return progress > 1.0 ? progress - std::floor(progress) : progress;
}

QString written(const Animation &animation, const std::vector<double> &numbers)
{
    if (animation.kind == Kind::Color)
        return QStringLiteral("#%1%2%3")
                .arg(int(numbers[0]), 2, 16, QLatin1Char('0'))
                .arg(int(numbers[1]), 2, 16, QLatin1Char('0'))
                .arg(int(numbers[2]), 2, 16, QLatin1Char('0'));
    QString text;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        text += animation.layout.value(int(i)) + QString::number(numbers[i], 'f', 3);
    return text + animation.layout.value(int(numbers.size()));
}

/// Between two neighbours of n key values, which are equally far apart.
QString interpolated(const Animation &animation, double progress)
{
    const double place = double(animation.keyValues.size() - 1) * progress;
    const auto &from = animation.keyValues[std::size_t(std::floor(place))].numbers;
    const auto &to = animation.keyValues[std::size_t(std::ceil(place))].numbers;
    double part = place - std::floor(place);
    if (animation.isDiscrete)
        part = part > 0.5 ? 1.0 : 0.0;
    std::vector<double> numbers;
    for (std::size_t i = 0; i < from.size(); ++i)
        numbers.push_back(from[i] + (to[i] - from[i]) * part);
    return written(animation, numbers);
}

QString valueAt(const Title &title, const Animation &animation, int ms)
{
    if (animation.isBad)
        return QString();
    const double progress =
            animation.dur > 0 ? progressOf(animation, ms - beginOf(title, animation)) : 1.0;
    if (animation.kind != Kind::Text)
        return interpolated(animation, progress);
    const std::size_t count = animation.keyValues.size();
    const auto slice = std::size_t(std::floor(double(count) * progress));
    return animation.keyValues[std::min(slice, count - 1)].text;
}

/// The last running one in the document; without any, of those that stay the one that ended last,
/// the first in the document when several did.
const Animation *winnerAt(const Title &title, const Shape &shape, const QString &attribute, int ms)
{
    const Animation *running = nullptr;
    const Animation *staying = nullptr;
    const auto endOf = [&title](const Animation &a) { return beginOf(title, a) + a.dur; };
    for (const int number : shape.animations) {
        const Animation &animation = title.animations[std::size_t(number)];
        if (animation.attribute != attribute)
            continue;
        const int end = endOf(animation);
        if (beginOf(title, animation) <= ms && ms < end)
            running = &animation;
        if (animation.isFrozen && ms >= end && (!staying || end > endOf(*staying)))
            staying = &animation;
    }
    return running ? running : staying;
}

std::map<QString, QString> attributesAt(const Title &title, const Shape &shape, int ms)
{
    std::map<QString, QString> attributes = shape.attributes;
    for (const int number : shape.animations) {
        const QString &name = title.animations[std::size_t(number)].attribute;
        if (const Animation *winner = winnerAt(title, shape, name, ms))
            attributes[name] = valueAt(title, *winner, ms);
    }
    return attributes;
}

int durationOf(const Title &title)
{
    int duration = 0;
    for (const Animation &animation : title.animations)
        duration = std::max(duration, beginOf(title, animation) + animation.dur);
    return duration;
}

// The texts.

QString attributesText(const std::map<QString, QString> &attributes)
{
    QString text;
    for (const auto &attribute : attributes)
        text += QStringLiteral(" %1=\"%2\"").arg(attribute.first, attribute.second);
    return text;
}

QString animatedText(const Title &title)
{
    QString content;
    for (const Shape &shape : title.shapes) {
        content += QLatin1Char('<') + shape.element + attributesText(shape.attributes)
                + QLatin1Char('>');
        for (const int number : shape.animations)
            content += title.animations[std::size_t(number)].markup;
        content += QStringLiteral("</%1>").arg(shape.element);
    }
    return svgTitle(content);
}

QString stillText(const Title &title, int ms)
{
    QString content;
    for (const Shape &shape : title.shapes)
        content += QLatin1Char('<') + shape.element + attributesText(attributesAt(title, shape, ms))
                + QStringLiteral("/>");
    return svgTitle(content);
}

// What titles are made of.

class TitleMaker
{
public:
    explicit TitleMaker(quint32 seed) : m_random(seed) {}

    /// At most nine shapes with at most nine animations each: places are told apart by digits.
    Title title()
    {
        Title title;
        const int shapes = 1 + below(6);
        for (int i = 0; i < shapes; ++i)
            addShape(title);
        addReferences(title);
        for (Animation &animation : title.animations)
            animation.markup = markup(animation);
        return title;
    }

    /// Where something begins, ends or changes, mostly.
    int time(const Title &title)
    {
        if (title.animations.empty() || below(5) == 0)
            return below(6000) - 1000;
        const Animation &animation =
                title.animations[std::size_t(below(int(title.animations.size())))];
        const int eighths = below(40) - 4;
        return beginOf(title, animation) + animation.dur * eighths / 8 + below(3) - 1;
    }

private:
    int below(int count) { return int(m_random.bounded(quint32(count))); }
    bool chance(int one) { return below(one) == 0; }

    QString oneOf(const QStringList &texts) { return texts.at(below(texts.size())); }

    void addShape(Title &title)
    {
        Shape shape;
        const bool isRect = !chance(3);
        shape.element = isRect ? QStringLiteral("rect") : QStringLiteral("polygon");
        shape.attributes[QStringLiteral("id")] = QStringLiteral("s%1").arg(title.shapes.size());
        shape.attributes[QStringLiteral("fill")] =
                oneOf({QStringLiteral("#c03020"), QStringLiteral("teal")});
        if (isRect) {
            shape.attributes[QStringLiteral("width")] = QString::number(10 + below(40));
            shape.attributes[QStringLiteral("height")] = QString::number(10 + below(30));
        } else {
            shape.attributes[QStringLiteral("points")] = QStringLiteral("5,5 60,10 30,45");
        }
        if (chance(2))
            shape.attributes[QStringLiteral("opacity")] = QStringLiteral("0.75");
        const int animations = below(7);
        for (int i = 0; i < animations; ++i) {
            shape.animations.push_back(int(title.animations.size()));
            title.animations.push_back(animation(isRect, int(title.animations.size())));
        }
        title.shapes.push_back(shape);
    }

    Animation animation(bool isRect, int number)
    {
        Animation animation;
        animation.id = (chance(5) ? QStringLiteral("a-%1") : QStringLiteral("a%1")).arg(number);
        switch (below(5)) {
        case 0:
            animation.kind = Kind::Color;
            animation.attribute = oneOf({QStringLiteral("fill"), QStringLiteral("stroke")});
            break;
        case 1:
            animation.kind = Kind::List;
            animation.attribute = isRect ? QStringLiteral("transform") : QStringLiteral("points");
            break;
        case 2:
            animation.kind = Kind::Text;
            animation.attribute = oneOf({QStringLiteral("visibility"), QStringLiteral("note")});
            break;
        default:
            animation.attribute = oneOf(
                    {QStringLiteral("x"), QStringLiteral("width"), QStringLiteral("opacity")});
        }
        const int values = 1 + below(5);
        for (int i = 0; i < values; ++i)
            animation.keyValues.push_back(keyValue(animation));
        setTiming(animation);
        return animation;
    }

    void setTiming(Animation &animation)
    {
        animation.isDiscrete = chance(3);
        animation.isFrozen = !chance(3);
        if (chance(3))
            animation.repeatCount = below(5) - 1;
        animation.beginText = timeText(chance(12) ? -1 : below(3000) - 500, &animation.plainBegin);
        if (!chance(8))
            animation.durText = timeText(chance(10) ? -200 : 8 * below(200), &animation.dur);
    }

    /// The product of a number and a thousand is cut off, which can be a little less than the
    /// number was meant to be.
    QString timeText(int ms, int *read)
    {
        *read = ms;
        if (chance(2))
            return QStringLiteral("%1ms").arg(ms);
        const QString seconds = QString::number(ms / 1000.0, 'f', 3);
        *read = int(1000.0 * seconds.toDouble());
        return chance(2) ? seconds : QStringLiteral(" %1s ").arg(seconds);
    }

    KeyValue keyValue(Animation &animation)
    {
        switch (animation.kind) {
        case Kind::Color:
            return color();
        case Kind::List:
            return list(animation);
        case Kind::Text:
            if (animation.attribute == QLatin1String("note"))
                return {oneOf({QStringLiteral("eins"), QStringLiteral("zwei"),
                               QStringLiteral("жизнь")}),
                        {}};
            return {chance(3) ? QStringLiteral("hidden") : QStringLiteral("visible"), {}};
        case Kind::Number:
            break;
        }
        const bool isOpacity = animation.attribute == QLatin1String("opacity");
        const double number = isOpacity ? 0.0625 * below(17) : 0.5 * below(100);
        return {QString::number(number), {number}};
    }

    KeyValue color()
    {
        const std::array<double, 3> rgb{double(below(256)), double(below(256)), double(below(256))};
        const std::vector<double> numbers(rgb.begin(), rgb.end());
        switch (below(6)) {
        case 0:
            return {QStringLiteral("orange"), {255.0, 165.0, 0.0}};
        case 1:
            return {QStringLiteral("#4a0"), {0x44, 0xaa, 0x00}};
        case 2: // the alpha is lost
            return {QStringLiteral("#80") + hexadecimal(numbers), numbers};
        default:
            return {QLatin1Char('#') + hexadecimal(numbers), numbers};
        }
    }

    static QString hexadecimal(const std::vector<double> &rgb)
    {
        QString text;
        for (const double channel : rgb)
            text += QStringLiteral("%1").arg(int(channel), 2, 16, QLatin1Char('0'));
        return text;
    }

    /// The first key value's layout is that of all pictures.
    KeyValue list(Animation &animation)
    {
        const bool isTransform = animation.attribute == QLatin1String("transform");
        const QString comma =
                oneOf({QStringLiteral(","), QStringLiteral(" "), QStringLiteral(", ")});
        QStringList layout = isTransform
                ? QStringList{QStringLiteral("translate("), comma, QStringLiteral(")")}
                : QStringList{QString(), comma,    QStringLiteral(" "), comma, QStringLiteral(" "),
                              comma,     QString()};
        if (chance(25))
            layout.removeAt(1);
        KeyValue value;
        for (int i = 0; i + 1 < layout.size(); ++i) {
            value.numbers.push_back(0.25 * below(240) - (isTransform ? 20.0 : 0.0));
            value.text += layout.at(i) + QString::number(value.numbers.back());
        }
        value.text += layout.last();
        if (animation.layout.isEmpty())
            animation.layout = layout;
        animation.isBad = animation.isBad || animation.layout.size() != layout.size();
        return value;
    }

    /// Begins that refer to others, in chains without rings: each to one of a lower rank.
    void addReferences(Title &title)
    {
        std::vector<int> ranked;
        for (std::size_t i = 0; i < title.animations.size(); ++i)
            ranked.insert(ranked.begin() + below(int(i) + 1), int(i));
        for (std::size_t rank = 1; rank < ranked.size(); ++rank) {
            if (chance(2))
                refer(title.animations[std::size_t(ranked[rank])], title,
                      ranked[std::size_t(below(int(rank)))]);
        }
    }

    void refer(Animation &animation, const Title &title, int base)
    {
        const QString id = title.animations[std::size_t(base)].id;
        animation.base = base;
        animation.fromBegin = chance(2);
        animation.beginText =
                id + (animation.fromBegin ? QStringLiteral(".begin") : QStringLiteral(".end"));
        if (chance(2))
            return;
        const bool isMinus = chance(2);
        int offset = 0;
        animation.beginText +=
                (isMinus ? QLatin1Char('-') : QLatin1Char('+')) + timeText(below(900), &offset);
        // The first sign counts, and that of the id does so without being an offset.
        animation.offset = !isMinus ? offset : id.contains(QLatin1Char('-')) ? 0 : -offset;
    }

    QString markup(const Animation &animation)
    {
        QString text = QStringLiteral("<animate id=\"%1\" attributeName=\"%2\" begin=\"%3\"")
                               .arg(animation.id, animation.attribute, animation.beginText);
        if (!animation.durText.isEmpty())
            text += QStringLiteral(" dur=\"%1\"").arg(animation.durText);
        if (animation.isDiscrete)
            text += QStringLiteral(" calcMode=\"discrete\"");
        if (animation.isFrozen)
            text += QStringLiteral(" fill=\"freeze\"");
        if (animation.repeatCount != 1)
            text += QStringLiteral(" repeatCount=\"%1\"").arg(repeatText(animation.repeatCount));
        return text + keyValuesText(animation) + QStringLiteral("/>");
    }

    QString repeatText(int count)
    {
        return count >= 0 ? QString::number(count)
                          : oneOf({QStringLiteral("indefinite"), QStringLiteral("2.5")});
    }

    QString keyValuesText(const Animation &animation)
    {
        QStringList texts;
        for (const KeyValue &value : animation.keyValues)
            texts += value.text;
        if (texts.size() == 2 && chance(2))
            return QStringLiteral(" from=\"%1\" to=\"%2\"").arg(texts.at(0), texts.at(1));
        return QStringLiteral(" values=\"%1\"")
                .arg(texts.join(oneOf({QStringLiteral(";"), QStringLiteral(" ; ")})));
    }

    QRandomGenerator m_random;
};

} // namespace

class DifferentialTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void attributes();
    void pictures();
    void durations();
};

void DifferentialTest::attributes()
{
    int differentFromTheTemplate = 0;
    for (quint32 seed = 0; seed < 1500; ++seed) {
        TitleMaker maker(seed);
        const Title title = maker.title();
        const QString text = animatedText(title);
        SvgDocument document(text);
        QVERIFY2(document.isLoaded(), qPrintable(text));
        for (int i = 0; i < 5; ++i) {
            const int ms = maker.time(title);
            document.applyAnimation(ms);
            const QDomDocument tree = savedTree(document);
            for (const Shape &shape : title.shapes) {
                const std::map<QString, QString> expected = attributesAt(title, shape, ms);
                differentFromTheTemplate += expected != shape.attributes;
                const QDomElement element =
                        elementById(tree, shape.attributes.at(QStringLiteral("id")));
                std::map<QString, QString> actual;
                const QDomNamedNodeMap map = element.attributes();
                for (int k = 0; k < map.length(); ++k)
                    actual[map.item(k).nodeName()] = map.item(k).nodeValue();
                if (actual != expected) {
                    const QString difference =
                            QStringLiteral("seed %1 at %2 ms:%3 instead of%4 in %5")
                                    .arg(seed)
                                    .arg(ms)
                                    .arg(attributesText(actual), attributesText(expected), text);
                    QFAIL(qPrintable(difference));
                }
            }
        }
    }
    QVERIFY(differentFromTheTemplate > 5000);
}

void DifferentialTest::pictures()
{
    int drawn = 0;
    for (quint32 seed = 10'000; seed < 10'300; ++seed) {
        TitleMaker maker(seed);
        const Title title = maker.title();
        SvgDocument document(animatedText(title));
        for (int i = 0; i < 3; ++i) {
            const int ms = maker.time(title);
            SvgDocument still(stillText(title, ms));
            const QImage expected = renderAt(still, 0);
            const QImage picture = renderAt(document, ms);
            if (isBlank(expected)) {
                QCOMPARE(picture, expected);
                continue;
            }
            ++drawn;
            COMPARE_PICTURES(picture, expected, 0);
        }
    }
    QVERIFY(drawn > 600);
}

void DifferentialTest::durations()
{
    for (quint32 seed = 20'000; seed < 20'500; ++seed) {
        const Title title = TitleMaker(seed).title();
        const SvgDocument document(animatedText(title));
        QCOMPARE(document.animationDurationTotal(), durationOf(title));
    }
}

QTEST_MAIN(DifferentialTest)

#include "tst_differential.moc"
