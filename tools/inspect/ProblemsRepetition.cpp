// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Understood.h"

#include <Scene/AnimatableAttribute.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

// Animations that play more than once, and what they hold then.

namespace {

QString oneForEachCycle()
{
    return QStringLiteral("Write one animation for each cycle, one after the other");
}

QString countOf(const SourceElement &element)
{
    return element.value(QStringLiteral("repeatCount"));
}

// Its cycles add up, which another check is about.
bool accumulates(const SourceElement &element)
{
    return element.value(QStringLiteral("accumulate")) == QLatin1String("sum");
}

bool hasSpace(const QString &count)
{
    return count.trimmed().size() < count.size();
}

// Whether a browser repeats as often as the player of the animation.
bool isReadAlike(const Animation &animation, const QString &count)
{
    if (count.isEmpty() || count == QLatin1String("indefinite"))
        return true;
    if (hasSpace(count))
        return false;
    bool isRead = false;
    if (animation.isPlayedByRenderer())
        return count.toDouble(&isRead) > 0.0 && isRead;
    return count.toInt(&isRead) > 0 && isRead;
}

QString remedyOfCount(const QString &count)
{
    if (hasSpace(count))
        return QStringLiteral("Write it without white space.");
    if (count.toDouble() > 0.0)
        return oneForEachCycle() + QLatin1Char('.');
    if (count.toDouble() == 0.0)
        return QStringLiteral("Leave it out; to hold the first value, write only that as values.");
    return QStringLiteral("Leave it out, or write indefinite or a number above 0.");
}

void findRepeatCounts(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        const QString count = countOf(element);
        if (!animation.isPlayed() || isReadAlike(animation, count))
            continue;
        const QString effect = hasSpace(count)
                ? QStringLiteral("is no number to a browser, because of its white space")
                : animation.repeatCount < 0.0
                ? QStringLiteral("counts as indefinite")
                : QStringLiteral("shows the first value at most, and in a browser one cycle");
        problems.warn("repeat-count", element.placeOf(QStringLiteral("repeatCount")),
                      QStringLiteral("repeatCount \"%1\" %2").arg(shortened(count, 40), effect),
                      remedyOfCount(count));
    }
}

void findRepeatsThatEndEarly(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (!animation.played || !animation.isRepeated() || animation.freezes
            || !isReadAlike(animation, countOf(element)) || accumulates(element))
            continue;
        problems.warn(
                "repeat-without-freeze", element.placeOf(QStringLiteral("repeatCount")),
                QStringLiteral("only the first cycle shows: a repeated animation goes on only "
                               "when it is frozen"),
                animation.activeEnd() ? oneForEachCycle() + QLatin1Char('.')
                                      : QStringLiteral("Add fill=\"freeze\"."));
    }
}

void warnOfReturn(const SourceElement &element, ProblemList &problems)
{
    problems.warn(
            "repeat-ends-at-start", element.placeOf(QStringLiteral("repeatCount")),
            QStringLiteral("after its last cycle the animation holds its first value, not "
                           "its last one"),
            oneForEachCycle()
                    + QStringLiteral(", or add one for the last cycle alone, frozen as well."));
}

// Of the frozen animations of an attribute, the earliest begin of those that end after a time.
class Holders
{
public:
    void add(const Animation &animation) { m_begins.emplace(animation.end, animation.begin); }

    // To be called when all are there.
    void finish()
    {
        int earliest = std::numeric_limits<int>::max();
        for (auto holder = m_begins.rbegin(); holder != m_begins.rend(); ++holder)
            holder->second = earliest = std::min(earliest, holder->second);
    }

    bool takeOver(const Animation &animation) const
    {
        const auto next = m_begins.upper_bound(animation.end);
        return next != m_begins.end() && next->second <= *animation.activeEnd();
    }

private:
    std::multimap<int, int> m_begins; // by end
};

// At the end of a later cycle the first key value shows.
void findAnimationsThatReturn(const Understood &title, ProblemList &problems)
{
    std::map<QString, Holders> holders; // by attribute
    for (const Animation &animation : title.animations()) {
        if (animation.played && animation.freezes)
            holders[animation.played->id()].add(animation);
    }
    for (auto &attribute : holders)
        attribute.second.finish();

    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (!animation.played || animation.repeatCount <= 1.0 || !animation.freezes
            || animation.begin >= animation.end || accumulates(element)
            || holders[animation.played->id()].takeOver(animation))
            continue;
        if (animation.played->valueForTime(animation.begin)
            != animation.played->valueForTime(animation.end))
            warnOfReturn(element, problems);
    }
}

bool isThereAndBack(const SourceElement &element)
{
    const QStringList values = element.value(QStringLiteral("values")).split(QLatin1Char(';'));
    return values.size() > 1 && values.constFirst().simplified() == values.constLast().simplified();
}

// The renderer holds the first value after the last of several whole cycles. A transform further
// down takes over when it does not add to others.
void findTransformsThatReturn(const Understood &title, ProblemList &problems)
{
    std::map<int, int> begins; // of the earliest one further down that holds; by target
    const std::vector<Animation> &animations = title.animations();
    for (auto animation = animations.rbegin(); animation != animations.rend(); ++animation) {
        const SourceElement &element = title.element(animation->element);
        if (animation->kind != Animation::Kind::Transform || !animation->freezes)
            continue;
        const auto later = begins.find(animation->target);
        const double count = animation->repeatCount;
        const bool isTakenOver =
                later != begins.end() && count > 1.0 && later->second <= *animation->activeEnd();
        if (count > 1.0 && count == std::floor(count) && !isThereAndBack(element)
            && !accumulates(element) && !isTakenOver)
            warnOfReturn(element, problems);
        if (element.value(QStringLiteral("additive")) != QLatin1String("sum")) {
            const auto inserted = begins.emplace(animation->target, animation->begin);
            inserted.first->second = std::min(inserted.first->second, animation->begin);
        }
    }
}

} // namespace

const std::vector<Check> &repetitionChecks()
{
    static const std::vector<Check> checks{findRepeatCounts, findRepeatsThatEndEarly,
                                           findAnimationsThatReturn, findTransformsThatReturn};
    return checks;
}
