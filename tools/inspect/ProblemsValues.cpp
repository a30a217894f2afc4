// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PathData.h"
#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <Scene/AnimatableAttribute.h>
#include <Scene/NumberList_p.h>

#include <QColor>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <set>

// What animations write: their key values.

namespace {

// The key values of an animation as the author wrote them.
struct KeyValues
{
    const Animation &animation;
    QStringList texts; // trimmed; an empty "from" where there is none
    Place place;
    bool isList; // given by "values"
    bool hasFrom;

    // A ";" after the last value of a list.
    bool endsEmpty() const { return isList && texts.size() > 1 && texts.constLast().isEmpty(); }

    // A ";" before the first value of a list.
    bool beginsEmpty() const
    {
        return isList && texts.size() > 1 && texts.constFirst().isEmpty() && !endsEmpty();
    }
};

std::vector<KeyValues> keyValues(const Understood &title)
{
    std::vector<KeyValues> result;
    for (const Animation &animation : title.animations()) {
        if (animation.player == Animation::Player::Nobody)
            continue;
        const SourceElement &element = title.element(animation.element);
        const QString values = element.value(QStringLiteral("values"));
        const QString from = element.value(QStringLiteral("from"));
        QStringList texts = values.isEmpty()
                ? QStringList{from, element.value(QStringLiteral("to"))}
                : values.split(QLatin1Char(';'));
        for (QString &text : texts)
            text = text.trimmed();
        const char *const place = !values.isEmpty() ? "values" : from.isEmpty() ? "to" : "from";
        result.push_back({animation, texts, element.placeOf(QLatin1String(place)),
                          !values.isEmpty(), !from.isEmpty()});
    }
    return result;
}

bool isDocuments(const KeyValues &values)
{
    return values.animation.player == Animation::Player::Document;
}

// Another check tells of names.
bool isOf(const Understood &title, const KeyValues &values, Animation::Kind kind)
{
    return values.animation.kind == kind && !nameTakenForNumbers(title, values.animation);
}

bool isUnreadable(Animation::Kind kind, const QString &text)
{
    if (kind == Animation::Kind::Color)
        return !QColor::isValidColor(text);
    bool isNumber = true;
    if (kind == Animation::Kind::Number)
        text.toDouble(&isNumber);
    return !isNumber;
}

// Missing values; what they do depends on the player.
void findMissingValues(const Understood &title, ProblemList &problems)
{
    const std::set<const Animation *> fromZero = animationsFromZero(title);
    for (const KeyValues &values : keyValues(title)) {
        if (values.isList || (values.hasFrom && !values.texts.constLast().isEmpty()))
            continue;
        const SourceElement &element = title.element(values.animation.element);
        const bool hasBy = element.attribute(QStringLiteral("by")) != nullptr;
        if (hasBy && !isDocuments(values))
            continue;
        if (hasBy)
            problems.warn("ignored-attribute", element.placeOf(QStringLiteral("by")),
                          QStringLiteral("by is ignored"),
                          QStringLiteral("Write from and to, or values."));
        else if (values.hasFrom || values.texts.constLast().isEmpty())
            problems.warn("missing-value", values.place,
                          QStringLiteral("the animation has no to and no values"),
                          QStringLiteral("Write from and to, or values."));
        else if (fromZero.count(&values.animation) == 0)
            problems.warn(
                    "missing-value", values.place,
                    isDocuments(values)
                            ? QStringLiteral("without a from, the animation does not begin at "
                                             "the element's own value")
                            : QStringLiteral("without a from, the animation does not play"),
                    QStringLiteral("Write the value that it has at that time as from."));
    }
}

void findEmptyFirstValues(const Understood &title, ProblemList &problems)
{
    for (const KeyValues &values : keyValues(title)) {
        if (isDocuments(values) && values.beginsEmpty())
            problems.warn("unreadable-value", values.place,
                          QStringLiteral("before the first ; one more value stands, which is "
                                         "empty and says what kind all of them are"),
                          QStringLiteral("Write no ; before the first value."));
    }
}

void findEmptyLastValues(const Understood &title, ProblemList &problems)
{
    for (const KeyValues &values : keyValues(title)) {
        if (isDocuments(values) && values.endsEmpty())
            problems.warn("unreadable-value", values.place,
                          QStringLiteral("after the last ; one more value follows, which is empty"),
                          QStringLiteral("Write no ; after the last value."));
    }
}

bool hasExponent(const QString &text)
{
    static const QRegularExpression exponent(QStringLiteral("[0-9.][eE][-+]?[0-9]"));
    return text.contains(exponent);
}

void findNumbersThatDiffer(const Understood &title, ProblemList &problems)
{
    for (const KeyValues &values : keyValues(title)) {
        if (!isOf(title, values, Animation::Kind::NumberList) || values.endsEmpty()
            || values.beginsEmpty())
            continue;
        if (values.animation.played->valueCount() == 0)
            problems.warn("numbers-differ", values.place,
                          QStringLiteral("the values do not hold the same number of readable "
                                         "numbers; the attribute is emptied"),
                          QStringLiteral("Write the same number of numbers in each value, with a "
                                         "space or comma between them and no exponents."));
        else if (std::any_of(values.texts.begin(), values.texts.end(), hasExponent))
            problems.warn("exponent", values.place,
                          QStringLiteral("an exponent is taken for a separator, so that 1e3 is "
                                         "two numbers"),
                          QStringLiteral("Write the number out, such as 1000."));
    }
}

// What a text has beside its numbers.
QString wordsIn(const QString &text)
{
    QString result;
    for (const QChar c : text) {
        if (c.isLetter() || c == QLatin1Char('#') || c == QLatin1Char('%'))
            result += c;
    }
    return result;
}

// Whether the numbers of a value mean the same between what stands between those of another one.
bool haveSameWords(const QString &attribute, const QString &a, const QString &b)
{
    if (wordsIn(a) == wordsIn(b))
        return attribute != QLatin1String("d") || PathData(a).commands == PathData(b).commands;
    if (attribute != QLatin1String("d"))
        return false;
    const PathData first(a);
    const PathData second(b);
    return first.isWhole && second.isWhole && first.commands == second.commands;
}

// Only the numbers change; what stands between them is that of the first value.
void findSeparatorsThatDiffer(const Understood &title, ProblemList &problems)
{
    for (const KeyValues &values : keyValues(title)) {
        if (!isOf(title, values, Animation::Kind::NumberList)
            || values.animation.played->valueCount() == 0)
            continue;
        const QString first = values.texts.constFirst();
        const bool differs = values.hasFrom || values.isList;
        if (differs
            && std::any_of(values.texts.begin(), values.texts.end(), [&](const QString &text) {
                   return !haveSameWords(values.animation.attribute, first, text);
               }))
            problems.warn("numbers-differ", values.place,
                          QStringLiteral("the values differ in more than their numbers; what "
                                         "stands between the numbers stays that of the first one"),
                          QStringLiteral("Write the same letters and units in each value."));
    }
}

void findUnreadableValues(const Understood &title, ProblemList &problems)
{
    for (const KeyValues &values : keyValues(title)) {
        if (!isDocuments(values) || values.endsEmpty() || values.beginsEmpty()
            || nameTakenForNumbers(title, values.animation))
            continue;
        for (int i = values.isList || values.hasFrom ? 0 : 1; i < values.texts.size(); ++i) {
            const QString text = values.texts.at(i);
            const bool isMissing = text.isEmpty() && !values.isList;
            if (isMissing || !isUnreadable(values.animation.kind, text))
                continue;
            const bool isColor = values.animation.kind == Animation::Kind::Color;
            problems.warn("unreadable-value", values.place,
                          QStringLiteral("the first value is a %1, and \"%2\" is none; it counts "
                                         "as %3")
                                  .arg(nameOf(values.animation.kind), text.left(40),
                                       isColor ? QStringLiteral("black") : QStringLiteral("0")),
                          QStringLiteral("Write values of one kind only."));
            break;
        }
    }
}

// "transparent" is a colour without alpha, too. Another check tells of eight digits.
void findLostAlpha(const Understood &title, ProblemList &problems)
{
    for (const KeyValues &values : keyValues(title)) {
        if (!isDocuments(values) || !isOf(title, values, Animation::Kind::Color))
            continue;
        const bool hasAlpha =
                std::any_of(values.texts.begin(), values.texts.end(), [](const QString &text) {
                    const QColor color(text);
                    return color.isValid() && color.alpha() < 255
                            && !text.startsWith(QLatin1Char('#'));
                });
        if (hasAlpha)
            problems.warn("alpha-lost", values.place,
                          QStringLiteral("animated colours lose their alpha"),
                          QStringLiteral("Animate fill-opacity, stroke-opacity or opacity as "
                                         "well."));
    }
}

} // namespace

const std::vector<Check> &valueChecks()
{
    static const std::vector<Check> checks{
            findMissingValues,     findEmptyFirstValues,     findEmptyLastValues,
            findNumbersThatDiffer, findSeparatorsThatDiffer, findUnreadableValues,
            findLostAlpha};
    return checks;
}
