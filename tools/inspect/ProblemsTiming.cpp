// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Timeline.h"
#include "Understood.h"

#include <Scene/AnimatableAttribute.h>
#include <Scene/TimeValue_p.h>

#include <QStringList>

#include <algorithm>
#include <map>
#include <optional>

// When animations play: begins, durations, references between them, and which of several animations
// of one attribute shows.

namespace {

bool isList(const QString &text)
{
    return text.contains(QLatin1Char(';'));
}

QString quoted(const QString &text)
{
    constexpr int longest = 40;
    return text.size() > longest ? QStringLiteral("\"%1...\"").arg(text.left(longest))
                                 : QStringLiteral("\"%1\"").arg(text);
}

// What comes of a begin that can't be read.
QString beginInstead(const Animation &animation)
{
    return animation.isPlayedByRenderer()
            ? QStringLiteral("the animation does not play")
            : QStringLiteral("the animation begins at %1").arg(secondsText(animation.begin));
}

bool isWithoutEnd(const QString &time)
{
    return time == QLatin1String("indefinite") || time == QLatin1String("media");
}

// Why a text is no time, and what to write instead.
struct TimeProblem
{
    QString reason;
    QString remedy;
};

TimeProblem problemOfTime(const QString &text)
{
    if (isList(text))
        return {QStringLiteral("is a list of times"),
                QStringLiteral("Give each begin an animation of its own.")};
    if (text.contains(QLatin1Char(':')))
        return {QStringLiteral("is a clock value with colons"),
                QStringLiteral("Write it in seconds, such as 65s for 00:01:05.")};
    if (isWithoutEnd(text))
        return {QStringLiteral("is no time on the title's timeline"),
                QStringLiteral("Write a time in seconds.")};
    if (text.endsWith(QLatin1String("min")) || text.endsWith(QLatin1Char('h')))
        return {QStringLiteral("has a unit other than s or ms"),
                QStringLiteral("Write it in seconds, such as 300s for 5min.")};
    if (text.contains(QLatin1Char('.')) || (!text.isEmpty() && text.at(0).isLetter()))
        return {QStringLiteral("is an event, and nobody clicks on a title"),
                QStringLiteral("Write a time, or refer to another animation's .begin or .end.")};
    return {QStringLiteral("can't be read as a time"),
            QStringLiteral("Write a number of seconds, such as 1.5s, or of milliseconds, such as "
                           "1500ms.")};
}

struct Begin
{
    const Animation &animation;
    QString text; // as the author wrote it, trimmed
    Place place;
    BeginReference reference;
};

bool isReference(const Begin &begin)
{
    return !begin.reference.id.isEmpty();
}

std::vector<Begin> begins(const Understood &title)
{
    std::vector<Begin> result;
    for (const Animation &animation : title.animations()) {
        if (animation.isPlayed() && !animation.trigger.isEmpty())
            result.push_back({animation, animation.trigger,
                              title.element(animation.element).placeOf(QStringLiteral("begin")),
                              referenceInBegin(animation.trigger)});
    }
    return result;
}

void findUnreadableBegins(const Understood &title, ProblemList &problems)
{
    for (const Begin &begin : begins(title)) {
        if (!isList(begin.text) && (isReference(begin) || isTimeText(begin.text)))
            continue;
        const TimeProblem problem = problemOfTime(begin.text);
        problems.warn(
                "unreadable-begin", begin.place,
                QStringLiteral("the begin %1 %2; %3")
                        .arg(quoted(begin.text), problem.reason, beginInstead(begin.animation)),
                problem.remedy);
    }
}

// A plain begin of -1 ms means unresolved to the library.
void findReservedBegins(const Understood &title, ProblemList &problems)
{
    for (const Begin &begin : begins(title)) {
        if (!isReference(begin) && timeFromText(begin.text) == -1)
            problems.warn("unreadable-begin", begin.place,
                          QStringLiteral("a begin of exactly -1 ms counts as 0"),
                          QStringLiteral("Write 0s, or -2ms."));
    }
}

// Whether the id in a begin is cut in two by browsers, which take a sign in it for that of an
// offset, and a full stop for that of the event.
bool isCutByBrowsers(const BeginReference &reference, const QString &begin)
{
    const auto has = [](const QString &text, char c) { return text.contains(QLatin1Char(c)); };
    return has(reference.id, '+') || has(reference.id, '.')
            || (has(reference.id, '-') && !has(begin, '+'));
}

void findIdsThatAreCut(const Understood &title, ProblemList &problems)
{
    for (const Begin &begin : begins(title)) {
        const BeginReference &reference = begin.reference;
        if (!isReference(begin) || isList(begin.text) || !isCutByBrowsers(reference, begin.text))
            continue;
        const QString rest = begin.text.mid(reference.id.size());
        const bool isOffsetLost = !isTimeText(reference.offset)
                && (rest.contains(QLatin1Char('-')) || rest.contains(QLatin1Char('+')));
        problems.warn(
                "sign-in-id", begin.place,
                QStringLiteral("browsers do not play the animation, because they cut the id %1 "
                               "at its sign or full stop%2")
                        .arg(quoted(reference.id),
                             isOffsetLost ? QStringLiteral(", and the offset counts as 0")
                                          : QString()),
                QStringLiteral("Give ids that others refer to no + or -, and no full stop."));
    }
}

void findUnreadableOffsets(const Understood &title, ProblemList &problems)
{
    for (const Begin &begin : begins(title)) {
        const BeginReference &reference = begin.reference;
        if (isReference(begin) && !isList(begin.text) && !reference.offset.isEmpty()
            && !isTimeText(reference.offset) && !isCutByBrowsers(reference, begin.text))
            problems.warn("unreadable-begin", begin.place,
                          QStringLiteral("the offset %1 can't be read as a time; it counts as 0")
                                  .arg(quoted(reference.offset.trimmed())),
                          problemOfTime(reference.offset.trimmed()).remedy);
    }
}

// What follows the reference without being an offset.
void findTrailingTexts(const Understood &title, ProblemList &problems)
{
    for (const Begin &begin : begins(title)) {
        if (!isReference(begin) || isList(begin.text))
            continue;
        const QString event =
                begin.reference.fromBegin ? QStringLiteral(".begin") : QStringLiteral(".end");
        const QString rest = begin.text.mid(begin.reference.id.size() + event.size()).trimmed();
        if (!rest.isEmpty() && !rest.startsWith(QLatin1Char('+'))
            && !rest.startsWith(QLatin1Char('-')))
            problems.warn("unreadable-begin", begin.place,
                          QStringLiteral("%1 after %2 is no offset")
                                  .arg(quoted(rest), begin.reference.id + event),
                          QStringLiteral("Write + or - and a time, such as +0.5s, or nothing."));
    }
}

QString remedyWithoutDuration()
{
    return QStringLiteral("Give it a dur in seconds; to hold the first value, as a browser does "
                          "without one, write only that as values, with fill=\"freeze\".");
}

void findUnreadableDurations(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        if (!animation.isPlayed())
            continue;
        const SourceElement &element = title.element(animation.element);
        const QString duration = element.value(QStringLiteral("dur")).trimmed();
        const Place place = element.placeOf(QStringLiteral("dur"));
        if (duration.isEmpty()) {
            problems.warn("unreadable-duration", place,
                          QStringLiteral("the animation has no duration; ")
                                  + (animation.isPlayedByRenderer()
                                             ? QStringLiteral("it does not play")
                                             : QStringLiteral("at most its last value shows")),
                          remedyWithoutDuration());
        } else if (!isTimeText(duration)) {
            const TimeProblem problem = problemOfTime(duration);
            const QString effect = animation.isPlayedByRenderer()
                    ? QStringLiteral("the animation does not play")
                    : QStringLiteral("it counts as 0");
            problems.warn("unreadable-duration", place,
                          QStringLiteral("the duration %1 %2; %3")
                                  .arg(quoted(duration), problem.reason, effect),
                          isWithoutEnd(duration) ? remedyWithoutDuration() : problem.remedy);
        } else if (timeFromText(duration) <= 0) {
            problems.warn("unreadable-duration", place,
                          QStringLiteral("the duration %1 is less than a millisecond")
                                  .arg(quoted(duration)),
                          remedyWithoutDuration());
        }
    }
}

// The animations that begins can refer to, by their ids: of several, those of attributes first.
std::map<QString, int> referableAnimations(const Understood &title)
{
    std::map<QString, int> numbers;
    for (const char *name : {"animate", "animateColor", "animateTransform"}) {
        for (int number = 0; number < int(title.animations().size()); ++number) {
            const SourceElement &element =
                    title.element(title.animations()[std::size_t(number)].element);
            const QString id = element.value(QStringLiteral("id"));
            if (!id.isEmpty() && element.name == QLatin1String(name))
                numbers.emplace(id, number);
        }
    }
    return numbers;
}

void findUnknownTriggers(const Understood &title, ProblemList &problems)
{
    const std::map<QString, int> known = referableAnimations(title);
    for (const Begin &begin : begins(title)) {
        const QString id = begin.reference.id;
        if (!isReference(begin) || isList(begin.text) || known.count(id) > 0)
            continue;
        const std::optional<int> other = title.elementWithId(id);
        const QString what = other
                ? QStringLiteral("a %1 element, whose times nothing can refer to")
                          .arg(title.element(*other).name)
                : QStringLiteral("nothing in the title");
        problems.warn("unknown-id", begin.place,
                      QStringLiteral("the begin refers to %1, which is %2; it counts as time 0")
                              .arg(quoted(id), what),
                      QStringLiteral("Give the id to an animate, animateColor or "
                                     "animateTransform element, or write a time."));
    }
}

// Each cycle once, at the first begin of the text that is part of it.
void findCycles(const Understood &title, ProblemList &problems)
{
    const std::map<QString, int> known = referableAnimations(title);
    const std::vector<Animation> &animations = title.animations();
    const auto next = [&](int number) {
        const Animation &animation = animations[std::size_t(number)];
        const auto found = known.find(animation.isPlayed() ? referenceInBegin(animation.trigger).id
                                                           : QString());
        return found == known.end() ? -1 : found->second;
    };
    std::vector<int> walkOf(animations.size(), -1); // the walk that has come by
    for (int start = 0; start < int(animations.size()); ++start) {
        int number = start;
        while (number >= 0 && walkOf[std::size_t(number)] < 0) {
            walkOf[std::size_t(number)] = start;
            number = next(number);
        }
        if (number < 0 || walkOf[std::size_t(number)] != start)
            continue;
        QStringList ring;
        int first = number;
        int member = number;
        do {
            ring += title.element(animations[std::size_t(member)].element)
                            .value(QStringLiteral("id"));
            member = next(member);
            first = std::min(first, member);
        } while (member != number);
        ring += ring.constFirst();
        const SourceElement &element = title.element(animations[std::size_t(first)].element);
        problems.warn("cycle", element.placeOf(QStringLiteral("begin")),
                      QStringLiteral("the begins refer to each other in a cycle: %1; one of them "
                                     "counts as time 0")
                              .arg(ring.join(QStringLiteral(" -> "))),
                      QStringLiteral("Give one of them a plain time."));
    }
}

// The number of a time in seconds.
QString secondsNumber(double ms)
{
    constexpr int digits = 10;
    return QString::number(ms / 1000.0, 'g', digits);
}

// How long an animation goes on in a browser, ms; none when it never ends.
std::optional<double> lengthInBrowser(const Animation &animation, const SourceElement &element)
{
    const QString count = element.value(QStringLiteral("repeatCount"));
    if (count == QLatin1String("indefinite"))
        return std::nullopt;
    const double cycles = count.toDouble() > 0.0 ? count.toDouble() : 1.0;
    const double length = cycles * (double(animation.end) - double(animation.begin));
    const QString shortest = element.value(QStringLiteral("min"));
    return std::max(length, double(timeFromText(shortest)));
}

// The end of an animation is here that of its first cycle.
void findRepeatedEnds(const Understood &title, ProblemList &problems)
{
    const std::map<QString, int> known = referableAnimations(title);
    for (const Begin &begin : begins(title)) {
        const BeginReference &reference = begin.reference;
        const auto found = known.find(reference.id);
        if (!isReference(begin) || isList(begin.text) || reference.fromBegin
            || found == known.end())
            continue;
        const Animation &other = title.animations()[std::size_t(found->second)];
        const std::optional<double> length = lengthInBrowser(other, title.element(other.element));
        if (length && *length == double(other.end) - double(other.begin))
            continue;
        const bool isCut = isCutByBrowsers(reference, begin.text);
        const double offset = length.value_or(0.0) + reference.offsetTime();
        problems.warn(
                "repeated-end", begin.place,
                length ? QStringLiteral("the end of %1 counts as that of its first cycle")
                                 .arg(quoted(reference.id))
                       : QStringLiteral("the end of %1, which never comes in a browser, counts "
                                        "as that of its first cycle")
                                 .arg(quoted(reference.id)),
                !length || isCut
                        ? QStringLiteral("Write a plain time.")
                        : QStringLiteral("Write %1.begin%2%3s.")
                                  .arg(reference.id, offset < 0.0 ? QString() : QStringLiteral("+"),
                                       secondsNumber(offset)));
    }
}

// Begins are resolved in titles with an "animate" element only.
void findUnresolvedBegins(const Understood &title, ProblemList &problems)
{
    for (const Begin &begin : begins(title)) {
        const QString resolved =
                title.treeElement(begin.animation.element).attribute(QStringLiteral("begin"));
        if (isReference(begin) && !isTimeText(resolved))
            problems.warn("unresolved-begin", begin.place,
                          QStringLiteral("references are followed in titles with an animate "
                                         "element only; %1")
                                  .arg(beginInstead(begin.animation)),
                          QStringLiteral("Write a plain time."));
    }
}

// The length of the title is taken before begins are resolved.
void findEndsAfterTheTitle(const Understood &title, ProblemList &problems)
{
    for (const Begin &begin : begins(title)) {
        if (isReference(begin) && begin.animation.isPlayedByRenderer()
            && begin.animation.end > title.duration())
            problems.warn("beyond-end", begin.place,
                          QStringLiteral("the animation ends after the title, whose length does "
                                         "not count it"),
                          QStringLiteral("Write its begin as a plain time, or let an animate "
                                         "element end last."));
    }
}

// An "animateMotion" that moves nothing, but begins the closing part.
bool isMarkOnly(const SourceElement &element)
{
    const auto has = [&](const char *name) { return element.attribute(QLatin1String(name)); };
    return element.value(QStringLiteral("id")) == QLatin1String("CONCLUSION")
            && element.name == QLatin1String("animateMotion") && !has("path") && !has("values")
            && !has("from") && !has("to") && !has("by");
}

QString remedyOfSet(const SourceElement &element)
{
    const bool ends = isTimeText(element.value(QStringLiteral("dur")))
            && element.value(QStringLiteral("fill")) != QLatin1String("freeze");
    return QStringLiteral("Use an animate element with this one value as values, and with a dur%1.")
            .arg(ends ? QString() : QStringLiteral(" and fill=\"freeze\""));
}

QString remedyOfMotion()
{
    return QStringLiteral("Animate x and y of a use element that shows the element, with places on "
                          "the way at equal distances in time.");
}

void findUnplayed(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (animation.isPlayed() || isMarkOnly(element))
            continue;
        if (element.name != QLatin1String("animate"))
            problems.warn("not-played", element.place,
                          QStringLiteral("%1 elements do not play").arg(element.name),
                          element.name == QLatin1String("set") ? remedyOfSet(element)
                                                               : remedyOfMotion());
        else if (element.attribute(QStringLiteral("attributeName")))
            problems.warn("not-played", element.place,
                          QStringLiteral("the animation is not noticed, because a letter or digit "
                                         "stands right in front of it, and so of every other "
                                         "animate element"),
                          QStringLiteral("Move it in front of the text."));
    }
}

void findMissingNames(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (!animation.attribute.trimmed().isEmpty()
            || element.name == QLatin1String("animateMotion"))
            continue;
        const bool plays = animation.isPlayedByRenderer();
        problems.warn("no-attribute-name", element.placeOf(QStringLiteral("attributeName")),
                      QStringLiteral("the animation has no attributeName, and %1")
                              .arg(plays ? QStringLiteral("a browser does not play it")
                                         : QStringLiteral("does not play")),
                      QStringLiteral("Name the attribute that it animates."));
    }
}

// The animated element is always the parent.
void findTargetsElsewhere(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        for (const char *name : {"xlink:href", "href"}) {
            const SourceAttribute *const target = element.attribute(QLatin1String(name));
            if (target && title.elementWithId(idOfReference(target->value)) != animation.target)
                problems.warn("target-elsewhere", target->place,
                              QStringLiteral("the animation plays on its parent element, not on %1")
                                      .arg(quoted(target->value)),
                              QStringLiteral("Move it into the element that it animates."));
        }
    }
}

// Different places in the tree can be written as the same text, and the library goes by the text.
void findSharedKeys(const Understood &title, ProblemList &problems)
{
    std::map<QString, const Animation *> firsts;
    std::map<std::pair<QString, std::vector<int>>, bool> isTold;
    for (const Animation &animation : title.animations()) {
        if (!animation.played)
            continue;
        const auto inserted = firsts.emplace(animation.played->id(), &animation);
        const Animation &first = *inserted.first->second;
        if (inserted.second || first.target == animation.target)
            continue;
        if (!isTold.emplace(std::make_pair(animation.played->id(), animation.played->location()),
                            true)
                     .second)
            continue;
        problems.warn("shared-key", title.element(animation.element).place,
                      QStringLiteral("the library takes the attribute %1 of %2 for that of %3 "
                                     "(line %4), because their places in the tree are written "
                                     "alike; of two animations at the same time one is lost")
                              .arg(animation.attribute, title.label(animation.target),
                                   title.label(first.target))
                              .arg(title.element(first.target).place.line),
                      QStringLiteral("Put a g element around one of the two elements."));
    }
}

// Stretches of time, of which those that overlap count as one.
class Stretches
{
public:
    bool hasInside(int time) const
    {
        auto next = m_ends.lower_bound(time);
        return next != m_ends.begin() && (--next)->second > time;
    }

    void add(int begin, int end)
    {
        auto next = m_ends.upper_bound(begin);
        if (next != m_ends.begin() && std::prev(next)->second > begin) {
            --next;
            begin = next->first;
        }
        while (next != m_ends.end() && next->first < end) {
            end = std::max(end, next->second);
            next = m_ends.erase(next);
        }
        m_ends[begin] = end;
    }

private:
    std::map<int, int> m_ends; // by begin
};

// Of running animations of one attribute, the last one in the document shows here, and in a browser
// the one that began last.
void findOtherWinners(const Understood &title, ProblemList &problems)
{
    std::map<QString, Stretches> laterOnes; // by attribute
    const std::vector<Animation> &animations = title.animations();
    for (auto animation = animations.rbegin(); animation != animations.rend(); ++animation) {
        if (!animation->played || animation->begin >= animation->end)
            continue;
        Stretches &later = laterOnes[animation->played->id()];
        if (later.hasInside(animation->begin))
            problems.warn("order", title.element(animation->element).place,
                          QStringLiteral("the animation begins while one of the same attribute "
                                         "runs that stands further down, which goes on showing; in "
                                         "a browser this one takes over"),
                          QStringLiteral("Put it after the other one."));
        later.add(animation->begin, animation->end);
    }
}

// Browsers have given the element up. The renderer shows its end for ever, and before its begin it
// takes the colour of later elements away.
void findColorElements(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (element.name != QLatin1String("animateColor"))
            continue;
        const QString remedy = QStringLiteral("Use an animate element instead.");
        if (animation.begin > 0)
            problems.warn("late-animate-color", element.placeOf(QStringLiteral("begin")),
                          QStringLiteral("before an animateColor begins, elements after it lose "
                                         "their fill"),
                          remedy);
        else
            problems.warn("animate-color", element.place,
                          QStringLiteral("an animateColor goes on showing its last colour; "
                                         "browsers do not play it at all"),
                          remedy);
    }
}

void findLostConclusion(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (element.value(QStringLiteral("id")) == QLatin1String("CONCLUSION")
            && title.conclusionDuration() <= 0)
            problems.warn("no-conclusion", element.placeOf(QStringLiteral("id")),
                          QStringLiteral("the animation marks no closing part: it has to begin "
                                         "after 0 and before the title ends"),
                          QStringLiteral("Change its begin, or give it another id."));
    }
}

} // namespace

const std::vector<Check> &timingChecks()
{
    static const std::vector<Check> checks{findUnreadableBegins,  findReservedBegins,
                                           findIdsThatAreCut,     findUnreadableOffsets,
                                           findTrailingTexts,     findUnreadableDurations,
                                           findUnknownTriggers,   findCycles,
                                           findRepeatedEnds,      findUnresolvedBegins,
                                           findEndsAfterTheTitle, findUnplayed,
                                           findMissingNames,      findTargetsElsewhere,
                                           findSharedKeys,        findOtherWinners,
                                           findColorElements,     findLostConclusion};
    return checks;
}
