// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <Scene/TimeValue_p.h>

#include <QStringList>

#include <algorithm>
#include <optional>
#include <set>
#include <vector>

// How animations go from value to value: their pace, and attributes that would change it.

namespace {

QString modeOf(const SourceElement &element)
{
    return element.value(QStringLiteral("calcMode"));
}

bool isWords(const Animation &animation)
{
    return animation.kind == Animation::Kind::Text;
}

// The items of a list, of which the last one may have a ";" after it.
QStringList itemsOf(const QString &text)
{
    QStringList items = text.split(QLatin1Char(';'));
    if (items.size() > 1 && items.constLast().trimmed().isEmpty())
        items.removeLast();
    return items;
}

int valueCountOf(const SourceElement &element)
{
    constexpr int fromAndTo = 2;
    const QString values = element.value(QStringLiteral("values"));
    return values.isEmpty() ? fromAndTo : itemsOf(values).size();
}

// What takes the place of a motion at another pace.
QString remedyOfPace(const Animation &animation)
{
    return animation.isPlayedByRenderer()
            ? QStringLiteral(
                    "Write one animateTransform for each piece of the motion, one after the "
                    "other.")
            : QStringLiteral("Write the motion as values at equal distances in time.");
}

// Whether a value of "end" or "max" leaves an animation as long as it is.
bool changesNoLength(const Animation &animation, const QString &name, const QString &value)
{
    if (value == QLatin1String("indefinite"))
        return true;
    if (!isTimeText(value))
        return false;
    const std::optional<double> end = animation.activeEnd();
    const double begin = name == QLatin1String("max") ? animation.begin : 0.0;
    return end && timeFromText(value) >= *end - begin;
}

// Whether an attribute that nobody looks at would make no difference in a browser either.
bool isHarmless(const Animation &animation, const SourceElement &element,
                const SourceAttribute &attribute)
{
    const QString value = attribute.value.trimmed();
    if (attribute.name == QLatin1String("keySplines"))
        return modeOf(element) != QLatin1String("spline");
    if (attribute.name == QLatin1String("accumulate"))
        return value == QLatin1String("none") || !animation.isRepeated();
    if (attribute.name == QLatin1String("additive"))
        return value == QLatin1String("replace") || animation.isPlayedByRenderer()
                || animation.kind == Animation::Kind::Text;
    if (attribute.name == QLatin1String("repeatDur"))
        return false;
    return changesNoLength(animation, attribute.name, value);
}

QString remedyOfIgnored(const Animation &animation, const QString &name)
{
    if (name == QLatin1String("keySplines"))
        return remedyOfPace(animation);
    if (name == QLatin1String("additive"))
        return QStringLiteral("Write values to which the element's own value is added.");
    if (name == QLatin1String("accumulate"))
        return QStringLiteral("Write the values of all cycles into one.");
    if (name == QLatin1String("repeatDur"))
        return QStringLiteral("Write one animation for each cycle, one after the other, or "
                              "repeatCount=\"indefinite\" with fill=\"freeze\".");
    return animation.isRepeated()
            ? QStringLiteral(
                    "Write one animation for each cycle, one after the other, the last one "
                    "with the dur and the last value of that time.")
            : QStringLiteral("Let dur and the last value be those at that time.");
}

// "restart" is not among them, because an animation with a single begin begins once, and "min",
// because a frozen animation shows nothing else for longer, and another one nothing.
void findIgnoredAttributes(const Understood &title, ProblemList &problems)
{
    const std::set<const Animation *> fromZero = animationsFromZero(title);
    for (const Animation &animation : title.animations()) {
        if (!animation.isPlayed())
            continue;
        const SourceElement &element = title.element(animation.element);
        for (const char *name :
             {"keySplines", "end", "max", "repeatDur", "additive", "accumulate"}) {
            const SourceAttribute *const given = element.attribute(QLatin1String(name));
            const bool addsNothing =
                    qstrcmp(name, "additive") == 0 && fromZero.count(&animation) > 0;
            if (given && !addsNothing && !isHarmless(animation, element, *given))
                problems.warn("ignored-attribute", given->place,
                              QStringLiteral("%1 is ignored").arg(given->name),
                              remedyOfIgnored(animation, given->name));
        }
    }
}

// Of `slices` distances of the same length; words have one for each, other values one less.
bool areEvenlySpread(const QStringList &times, bool isWords)
{
    constexpr double tolerance = 0.001;
    const int slices = isWords ? times.size() : std::max(times.size() - 1, 1);
    for (int i = 0; i < times.size(); ++i) {
        if (qAbs(times.at(i).toDouble() - double(i) / slices) > tolerance)
            return false;
    }
    return true;
}

// Whether they begin at 0, never go back, and have one for each value.
bool areAccepted(const QStringList &times, int valueCount)
{
    double last = 0.0;
    for (int i = 0; i < times.size(); ++i) {
        bool isNumber = false;
        const double time = times.at(i).toDouble(&isNumber);
        if (!isNumber || time < last || time > 1.0 || (i == 0 && time != 0.0))
            return false;
        last = time;
    }
    return times.size() == valueCount;
}

void findKeyTimes(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        const SourceAttribute *const given = element.attribute(QStringLiteral("keyTimes"));
        if (!animation.isPlayed() || !given || modeOf(element) == QLatin1String("paced"))
            continue;
        const QStringList times = itemsOf(given->value);
        const bool endsAtOne = times.constLast().toDouble() == 1.0;
        const bool needsOne = modeOf(element) != QLatin1String("discrete") && !endsAtOne;
        if (!areAccepted(times, valueCountOf(element)) || (needsOne && !isWords(animation)))
            problems.warn(
                    "rejected", given->place,
                    QStringLiteral("browsers do not play an animation with these keyTimes"),
                    QStringLiteral("Leave keyTimes out, or write a time for each value, from 0 "
                                   "to 1."));
        else if (needsOne)
            problems.warn("rejected", given->place,
                          QStringLiteral("browsers do not play an animation whose keyTimes end "
                                         "before 1, unless it is discrete"),
                          QStringLiteral("Write calcMode=\"discrete\" as well."));
        else if (!areEvenlySpread(times, isWords(animation)))
            problems.warn(
                    "ignored-attribute", given->place,
                    QStringLiteral("keyTimes is ignored: values are at equal distances in "
                                   "time"),
                    animation.isPlayedByRenderer()
                            ? remedyOfPace(animation)
                            : QStringLiteral("Write more values at equal distances in time."));
    }
}

void findDiscreteValues(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (!animation.isPlayed() || isWords(animation) || valueCountOf(element) < 2
            || modeOf(element) != QLatin1String("discrete"))
            continue;
        const Place place = element.placeOf(QStringLiteral("calcMode"));
        const QString remedy =
                QStringLiteral("Use one animation for each value, one after the other.");
        if (animation.isPlayedByRenderer())
            problems.warn("ignored-attribute", place,
                          QStringLiteral("calcMode \"discrete\" is ignored"), remedy);
        else
            problems.warn("discrete", place,
                          QStringLiteral("values change half-way between two key values, not in "
                                         "equal slices of the duration"),
                          remedy);
    }
}

// Two values are at an even pace anyway, and the renderer plays no more of a transform.
void findPacedValues(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (animation.played && !isWords(animation) && valueCountOf(element) > 2
            && modeOf(element) == QLatin1String("paced"))
            problems.warn("ignored-attribute", element.placeOf(QStringLiteral("calcMode")),
                          QStringLiteral("calcMode \"paced\" is ignored"), remedyOfPace(animation));
    }
}

void findMissingSplines(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (animation.isPlayed() && modeOf(element) == QLatin1String("spline")
            && element.value(QStringLiteral("keySplines")).isEmpty())
            problems.warn("rejected", element.placeOf(QStringLiteral("calcMode")),
                          QStringLiteral("browsers do not play an animation with "
                                         "calcMode=\"spline\" and no keySplines"),
                          QStringLiteral("Leave calcMode=\"spline\" out."));
    }
}

} // namespace

const std::vector<Check> &progressChecks()
{
    static const std::vector<Check> checks{findIgnoredAttributes, findKeyTimes, findDiscreteValues,
                                           findPacedValues, findMissingSplines};
    return checks;
}
