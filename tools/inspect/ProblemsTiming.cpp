// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Timeline.h"
#include "Understood.h"

#include <Scene/AnimatableAttribute.h>
#include <Scene/TimeValue_p.h>

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

// When animations play: begins, durations, references between them, repetition, and which of
// several animations of one attribute shows.

namespace {

bool isPlayed(const Animation &animation)
{
    return animation.player != Animation::Player::Nobody;
}

bool isPlayedByRenderer(const Animation &animation)
{
    return animation.player == Animation::Player::Renderer;
}

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
    return isPlayedByRenderer(animation)
            ? QStringLiteral("the animation does not play")
            : QStringLiteral("the animation begins at %1").arg(secondsText(animation.begin));
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
    if (text == QLatin1String("indefinite") || text == QLatin1String("media"))
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
        if (isPlayed(animation) && !animation.trigger.isEmpty())
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

void findUnreadableOffsets(const Understood &title, ProblemList &problems)
{
    for (const Begin &begin : begins(title)) {
        const BeginReference &reference = begin.reference;
        if (!isReference(begin) || isList(begin.text))
            continue;
        const bool hasSign =
                reference.id.contains(QLatin1Char('-')) || reference.id.contains(QLatin1Char('+'));
        const bool isRead = reference.offset.isEmpty() || isTimeText(reference.offset);
        if (hasSign && !reference.offset.isEmpty() && !isRead) {
            const bool isMeant = begin.text.lastIndexOf(QLatin1Char('-')) > reference.id.size()
                    || begin.text.lastIndexOf(QLatin1Char('+')) > reference.id.size();
            if (isMeant)
                problems.warn("sign-in-id", begin.place,
                              QStringLiteral("the first sign in %1 is part of the id, so the "
                                             "offset counts as 0")
                                      .arg(quoted(begin.text)),
                              QStringLiteral("Give ids that others refer to no + or -."));
        } else if (!isRead) {
            problems.warn("unreadable-begin", begin.place,
                          QStringLiteral("the offset %1 can't be read as a time; it counts as 0")
                                  .arg(quoted(reference.offset.trimmed())),
                          problemOfTime(reference.offset.trimmed()).remedy);
        }
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

void findUnreadableDurations(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        if (!isPlayed(animation))
            continue;
        const SourceElement &element = title.element(animation.element);
        const QString duration = element.value(QStringLiteral("dur")).trimmed();
        const Place place = element.placeOf(QStringLiteral("dur"));
        if (duration.isEmpty()) {
            problems.warn("unreadable-duration", place,
                          QStringLiteral("the animation has no duration; ")
                                  + (isPlayedByRenderer(animation)
                                             ? QStringLiteral("it does not play")
                                             : QStringLiteral("at most its last value shows")),
                          QStringLiteral("Give it a dur in seconds."));
        } else if (!isTimeText(duration)) {
            const TimeProblem problem = problemOfTime(duration);
            const QString effect = isPlayedByRenderer(animation)
                    ? QStringLiteral("the animation does not play")
                    : QStringLiteral("it counts as 0");
            problems.warn("unreadable-duration", place,
                          QStringLiteral("the duration %1 %2; %3")
                                  .arg(quoted(duration), problem.reason, effect),
                          problem.remedy);
        } else if (timeFromText(duration) <= 0) {
            problems.warn("unreadable-duration", place,
                          QStringLiteral("the duration %1 is less than a millisecond")
                                  .arg(quoted(duration)),
                          QStringLiteral("Give it a dur in seconds."));
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
        const auto found = known.find(isPlayed(animation) ? referenceInBegin(animation.trigger).id
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
        if (isReference(begin) && isPlayedByRenderer(begin.animation)
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

void findUnplayed(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        if (animation.player == Animation::Player::Nobody
            && title.element(animation.element).name != QLatin1String("animate")
            && !isMarkOnly(title.element(animation.element)))
            problems.warn("not-played", title.element(animation.element).place,
                          QStringLiteral("%1 elements do not play")
                                  .arg(title.element(animation.element).name),
                          title.element(animation.element).name == QLatin1String("set")
                                  ? QStringLiteral("Use an animate element with a word, such as "
                                                   "values=\"visible\", a dur and "
                                                   "fill=\"freeze\".")
                                  : QStringLiteral("Use an animateTransform element, or an animate "
                                                   "element of transform with sampled values."));
    }
}

void findMissingNames(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        if (!animation.attribute.trimmed().isEmpty()
            || element.name == QLatin1String("animateMotion"))
            continue;
        const bool plays = isPlayedByRenderer(animation);
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

// The time at which an animation stops, repetitions included; none when it never does.
std::optional<double> activeEnd(const Animation &animation)
{
    if (animation.repeatCount < 0.0)
        return std::nullopt;
    return animation.begin
            + animation.repeatCount * (double(animation.end) - double(animation.begin));
}

// Whether a value of "end", "min" or "max" leaves an animation as long as it is.
bool changesNoLength(const Animation &animation, const QString &name, const QString &value)
{
    if (value.isEmpty() || value == QLatin1String("indefinite"))
        return value == QLatin1String("indefinite") && name != QLatin1String("min");
    if (!isTimeText(value))
        return false;
    const std::optional<double> end = activeEnd(animation);
    const double time = timeFromText(value);
    if (name == QLatin1String("min"))
        return !end || time <= *end - animation.begin;
    if (name == QLatin1String("max"))
        return end && time >= *end - animation.begin;
    return end && time >= *end;
}

// Whether an attribute that nobody looks at would make no difference in a browser either.
bool isHarmless(const Animation &animation, const SourceElement &element,
                const SourceAttribute &attribute)
{
    const QString value = attribute.value.trimmed();
    if (attribute.name == QLatin1String("keySplines"))
        return element.value(QStringLiteral("calcMode")) != QLatin1String("spline");
    if (attribute.name == QLatin1String("accumulate"))
        return value == QLatin1String("none") || !animation.isRepeated();
    if (attribute.name == QLatin1String("additive"))
        return value == QLatin1String("replace") || isPlayedByRenderer(animation);
    if (attribute.name == QLatin1String("repeatDur"))
        return false;
    return changesNoLength(animation, attribute.name, value);
}

// An attribute of timing that neither the document nor the renderer looks at.
struct IgnoredAttribute
{
    QLatin1String name;
    QString remedy;
};

// "restart" is not among them: an animation with a single begin begins once.
const std::vector<IgnoredAttribute> &ignoredAttributes()
{
    static const QString samples =
            QStringLiteral("Write the motion as values at equal distances in time.");
    static const std::vector<IgnoredAttribute> attributes{
            {QLatin1String("keySplines"), samples},
            {QLatin1String("end"), QStringLiteral("Shorten dur instead.")},
            {QLatin1String("min"), QStringLiteral("Set dur instead.")},
            {QLatin1String("max"), QStringLiteral("Set dur instead.")},
            {QLatin1String("repeatDur"), QStringLiteral("Use repeatCount instead.")},
            {QLatin1String("additive"),
             QStringLiteral("Write values to which the element's own value is added.")},
            {QLatin1String("accumulate"),
             QStringLiteral("Write the values of all cycles into one.")},
    };
    return attributes;
}

// Of `slices` distances of the same length; words have one for each, other values one less.
bool areEvenlySpread(const QString &keyTimes, bool isWords)
{
    constexpr double tolerance = 0.001;
    const QStringList times = keyTimes.split(QLatin1Char(';'));
    const int slices = isWords ? times.size() : std::max(times.size() - 1, 1);
    for (int i = 0; i < times.size(); ++i) {
        if (qAbs(times.at(i).trimmed().toDouble() - double(i) / slices) > tolerance)
            return false;
    }
    return true;
}

void findIgnoredAttributes(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        if (!isPlayed(animation))
            continue;
        const SourceElement &element = title.element(animation.element);
        for (const IgnoredAttribute &ignored : ignoredAttributes()) {
            const SourceAttribute *const given = element.attribute(ignored.name);
            if (given && !isHarmless(animation, element, *given))
                problems.warn("ignored-attribute", given->place,
                              QStringLiteral("%1 is ignored").arg(given->name), ignored.remedy);
        }
        const SourceAttribute *const keyTimes = element.attribute(QStringLiteral("keyTimes"));
        const bool isWords = animation.kind == Animation::Kind::Text;
        if (keyTimes && !areEvenlySpread(keyTimes->value, isWords))
            problems.warn("ignored-attribute", keyTimes->place,
                          QStringLiteral("keyTimes is ignored: values are at equal distances in "
                                         "time"),
                          QStringLiteral("Write more values at equal distances in time."));
    }
}

void findCalcModes(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        const QString mode = element.value(QStringLiteral("calcMode"));
        const Place place = element.placeOf(QStringLiteral("calcMode"));
        const bool isWords = animation.kind == Animation::Kind::Text;
        if (!isPlayed(animation) || mode.isEmpty() || mode == QLatin1String("linear"))
            continue;
        if (mode == QLatin1String("discrete") && !isPlayedByRenderer(animation)) {
            if (!isWords)
                problems.warn("discrete", place,
                              QStringLiteral("values change half-way between two key values, not "
                                             "in equal slices of the duration"),
                              QStringLiteral("Use one animation for each value, one after the "
                                             "other."));
        } else if (!isWords && mode != QLatin1String("spline")) {
            problems.warn("ignored-attribute", place,
                          QStringLiteral("calcMode %1 is ignored").arg(quoted(mode)),
                          QStringLiteral("Write the motion as values at equal distances in time."));
        }
    }
}

void findRepeatCounts(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        if (animation.player != Animation::Player::Document)
            continue;
        const SourceElement &element = title.element(animation.element);
        const QString count = element.value(QStringLiteral("repeatCount"));
        const Place place = element.placeOf(QStringLiteral("repeatCount"));
        if (animation.repeatCount < 0 && count != QLatin1String("indefinite"))
            problems.warn("repeat-count", place,
                          QStringLiteral("repeatCount %1 counts as indefinite").arg(quoted(count)),
                          QStringLiteral("Write a whole number without white space."));
        if (animation.isRepeated() && !animation.freezes)
            problems.warn("repeat-without-freeze", place,
                          QStringLiteral("only the first cycle shows: a repeated animation goes on "
                                         "only when it is frozen"),
                          QStringLiteral("Add fill=\"freeze\"."));
        // At the end of a later cycle the first key value shows.
        if (animation.repeatCount > 1 && animation.freezes && animation.begin < animation.end) {
            const int first = animation.begin;
            const int end = animation.end;
            if (animation.played->valueForTime(first) != animation.played->valueForTime(end))
                problems.warn("repeat-ends-at-start", place,
                              QStringLiteral("after its last cycle the animation holds its first "
                                             "value, not its last one"),
                              QStringLiteral("Let the last value be the first one, or add an "
                                             "animation of the same attribute that ends there."));
        }
    }
}

// The renderer holds the first value after the last of several whole cycles.
void findTransformsThatReturn(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const SourceElement &element = title.element(animation.element);
        const QStringList values = element.value(QStringLiteral("values")).split(QLatin1Char(';'));
        const bool isThereAndBack = values.size() > 1
                && values.constFirst().simplified() == values.constLast().simplified();
        const double count = animation.repeatCount;
        if (animation.kind == Animation::Kind::Transform && animation.freezes && count > 1.0
            && count == std::floor(count) && !isThereAndBack)
            problems.warn("repeat-ends-at-start", element.placeOf(QStringLiteral("repeatCount")),
                          QStringLiteral("after its last cycle the animation holds its first "
                                         "value, not its last one"),
                          QStringLiteral("Add an animation of the same attribute that begins "
                                         "there and holds the last value."));
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
    static const std::vector<Check> checks{findUnreadableBegins,
                                           findReservedBegins,
                                           findUnreadableOffsets,
                                           findTrailingTexts,
                                           findUnreadableDurations,
                                           findUnknownTriggers,
                                           findCycles,
                                           findUnresolvedBegins,
                                           findEndsAfterTheTitle,
                                           findUnplayed,
                                           findMissingNames,
                                           findTargetsElsewhere,
                                           findIgnoredAttributes,
                                           findCalcModes,
                                           findRepeatCounts,
                                           findTransformsThatReturn,
                                           findSharedKeys,
                                           findOtherWinners,
                                           findColorElements,
                                           findLostConclusion};
    return checks;
}
