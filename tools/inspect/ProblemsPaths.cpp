// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PathData.h"
#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <QRegularExpression>

#include <algorithm>

// Lines and dashes without a length, of which a browser draws the caps.

namespace {

QVector<double> numbersIn(const QString &text)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,]+"));
    QVector<double> numbers;
    for (QString part : text.split(separators, Qt::SkipEmptyParts))
        numbers += part.remove(QLatin1String("px")).toDouble();
    return numbers;
}

bool isDot(const SourceElement &element)
{
    const auto number = [&element](const char *name) {
        return element.value(QLatin1String(name)).toDouble();
    };
    if (element.name == QLatin1String("path"))
        return PathData(element.value(QStringLiteral("d"))).hasDots;
    if (element.name == QLatin1String("line"))
        return number("x1") == number("x2") && number("y1") == number("y2");
    if (element.name != QLatin1String("polyline") && element.name != QLatin1String("polygon"))
        return false;
    const QVector<double> points = numbersIn(element.value(QStringLiteral("points")));
    for (int i = 2; i + 1 < points.size(); i += 2) {
        if (points.at(i) != points.at(0) || points.at(i + 1) != points.at(1))
            return false;
    }
    // A single point is a line, back to itself, of a polygon only.
    return points.size() >= (element.name == QLatin1String("polygon") ? 2 : 4);
}

// Which dashes have no length, as 0 or 1; an odd count of numbers counts twice.
QVector<bool> dashesWithoutLength(const QString &dashes)
{
    QVector<double> numbers = numbersIn(dashes);
    if (numbers.size() % 2 == 1)
        numbers += numbers;
    QVector<bool> result;
    const bool hasGaps =
            std::any_of(numbers.begin(), numbers.end(), [](double number) { return number > 0.0; });
    for (int i = 0; hasGaps && i < numbers.size(); i += 2)
        result += numbers.at(i) == 0.0;
    return result;
}

bool hasDashWithoutLength(const QString &dashes)
{
    return dashesWithoutLength(dashes).contains(true);
}

// Whether lines of an element have caps that a browser draws at dots.
class Caps
{
public:
    explicit Caps(const Understood &title) : m_values(title) {}

    bool areSeen(int element) const
    {
        const QString cap = m_values.inherited(element, QStringLiteral("stroke-linecap"));
        const QString stroke = m_values.inherited(element, QStringLiteral("stroke"));
        const bool hasCap = cap == QLatin1String("round") || cap == QLatin1String("square");
        return hasCap && !stroke.isEmpty() && stroke != QLatin1String("none");
    }

    QString dashes(int element) const
    {
        return m_values.inherited(element, QStringLiteral("stroke-dasharray"));
    }

private:
    const StyledValues m_values;
};

// Whether an element never shows what it has itself for one of these attributes.
bool isAlwaysAnimated(const Understood &title, int element, const QStringList &attributes)
{
    return std::any_of(title.animations().begin(), title.animations().end(),
                       [&](const Animation &animation) {
                           return animation.target == element
                                   && animation.player == Animation::Player::Document
                                   && attributes.contains(animation.attribute)
                                   && animation.begin <= 0 && animation.freezes;
                       });
}

void findDots(const Understood &title, ProblemList &problems)
{
    static const QStringList places{QStringLiteral("d"),  QStringLiteral("points"),
                                    QStringLiteral("x1"), QStringLiteral("y1"),
                                    QStringLiteral("x2"), QStringLiteral("y2")};
    const Caps caps(title);
    for (int number = 0; number < int(title.source().elements().size()); ++number) {
        const SourceElement &element = title.element(number);
        if (caps.areSeen(number) && isDot(element) && !isAlwaysAnimated(title, number, places))
            problems.warn(
                    "not-drawn", element.place,
                    QStringLiteral("the caps of a line without a length are not drawn"),
                    QStringLiteral(
                            "Give it a length of 0.001, and do not close it: M 10 10 h 0.001."));
    }
}

void findDottedLines(const Understood &title, ProblemList &problems)
{
    const QString name = QStringLiteral("stroke-dasharray");
    const Caps caps(title);
    for (int number = 0; number < int(title.source().elements().size()); ++number) {
        const SourceElement &element = title.element(number);
        static const QStringList lines{QStringLiteral("path"),     QStringLiteral("line"),
                                       QStringLiteral("polyline"), QStringLiteral("polygon"),
                                       QStringLiteral("rect"),     QStringLiteral("circle"),
                                       QStringLiteral("ellipse")};
        if (lines.contains(element.name) && caps.areSeen(number)
            && hasDashWithoutLength(caps.dashes(number))
            && !isAlwaysAnimated(title, number, {name}))
            problems.warn("not-drawn", placeOfProperty(element, name),
                          QStringLiteral("the caps of dashes without a length are not drawn"),
                          QStringLiteral("Write 0.001 for the length of the dash."));
    }
}

// A dash that has no length at one moment only is as good as one that has.
void findDottedLinesOfAnimations(const Understood &title, ProblemList &problems)
{
    const Caps caps(title);
    for (const Animation &animation : title.animations()) {
        if (animation.player != Animation::Player::Document
            || animation.attribute != QLatin1String("stroke-dasharray")
            || !caps.areSeen(animation.target))
            continue;
        const std::vector<KeyText> values = keyTextsOf(title.element(animation.element));
        for (std::size_t i = 0; i < values.size(); ++i) {
            const bool isLast = i + 1 == values.size();
            if (isLast && !animation.freezes)
                break;
            const QVector<bool> dashes = dashesWithoutLength(values[i].text);
            const QVector<bool> next =
                    dashesWithoutLength(isLast ? values[i].text : values[i + 1].text);
            bool areKept = false;
            for (int dash = 0; dash < std::min(dashes.size(), next.size()); ++dash)
                areKept = areKept || (dashes.at(dash) && next.at(dash));
            if (!areKept)
                continue;
            problems.warn("not-drawn", values[i].place,
                          QStringLiteral("the caps of dashes without a length are not drawn"),
                          QStringLiteral("Write 0.001 for the length of the dash."));
            break;
        }
    }
}

} // namespace

const std::vector<Check> &pathChecks()
{
    static const std::vector<Check> checks{findDots, findDottedLines, findDottedLinesOfAnimations};
    return checks;
}
