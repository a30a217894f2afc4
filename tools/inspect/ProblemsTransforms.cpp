// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <vector>

// Transforms that move: "animateTransform" elements, which the renderer plays, and "animate"
// elements in their place.

namespace {

// A key value of an "animateTransform".
class TransformValue
{
public:
    TransformValue() = default;
    explicit TransformValue(const QString &text)
    {
        static const QRegularExpression separator(QStringLiteral("[\\s,]+"));
        for (const QString &number : text.split(separator, Qt::SkipEmptyParts))
            m_numbers.push_back(number.toDouble());
    }

    std::size_t count() const { return m_numbers.size(); }
    double number(std::size_t index) const
    {
        return index < m_numbers.size() ? m_numbers[index] : 0.0;
    }

    friend TransformValue operator+(const TransformValue &a, const TransformValue &b)
    {
        return combined(a, b, 1.0);
    }
    friend TransformValue operator-(const TransformValue &a, const TransformValue &b)
    {
        return combined(a, b, -1.0);
    }

    bool isNear(const TransformValue &other) const
    {
        constexpr double tolerance = 1e-6;
        for (std::size_t i = 0; i < std::max(count(), other.count()); ++i) {
            if (qAbs(number(i) - other.number(i)) > tolerance)
                return false;
        }
        return true;
    }

private:
    static TransformValue combined(const TransformValue &a, const TransformValue &b, double sign)
    {
        TransformValue result;
        for (std::size_t i = 0; i < std::max(a.count(), b.count()); ++i)
            result.m_numbers.push_back(a.number(i) + sign * b.number(i));
        return result;
    }

    std::vector<double> m_numbers;
};

// How an "animateTransform" says what it goes through.
enum class Notation { Values, FromTo, FromBy, Other };

// An "animateTransform" that the renderer plays.
struct Transform
{
    const Animation &animation;
    const SourceElement &element;
    QString type;
    Notation notation = Notation::Other;
    std::vector<TransformValue> values;
    bool endsInSpace = false; // after the last ";", which then counts as one more value
    Place place;              // of the values

    bool isRotation() const { return type == QLatin1String("rotate"); }
    bool isAdded() const
    {
        return element.value(QStringLiteral("additive")) == QLatin1String("sum");
    }
};

Transform transformOf(const Animation &animation, const SourceElement &element)
{
    const QString values = element.value(QStringLiteral("values"));
    const QString from = element.value(QStringLiteral("from"));
    const QString to = element.value(QStringLiteral("to"));
    const QString by = element.value(QStringLiteral("by"));
    Transform result{animation, element, element.value(QStringLiteral("type")), {}, {}, false, {}};
    if (!values.isEmpty()) {
        QStringList texts = values.split(QLatin1Char(';'));
        const bool hasEnd = texts.size() > 1 && texts.constLast().trimmed().isEmpty();
        result.endsInSpace = hasEnd && !texts.constLast().isEmpty();
        if (hasEnd)
            texts.removeLast();
        for (const QString &text : texts)
            result.values.emplace_back(text);
        result.notation = Notation::Values;
        result.place = element.placeOf(QStringLiteral("values"));
    } else if (!from.isEmpty() && !(to.isEmpty() && by.isEmpty())) {
        const TransformValue first(from);
        result.values = {first, to.isEmpty() ? first + TransformValue(by) : TransformValue(to)};
        result.notation = to.isEmpty() ? Notation::FromBy : Notation::FromTo;
        result.place = element.placeOf(QStringLiteral("from"));
    }
    return result;
}

std::vector<Transform> transforms(const Understood &title)
{
    std::vector<Transform> result;
    for (const Animation &animation : title.animations()) {
        if (animation.isPlayedByRenderer() && animation.kind == Animation::Kind::Transform)
            result.push_back(transformOf(animation, title.element(animation.element)));
    }
    return result;
}

QString numberText(double number)
{
    constexpr int digits = 10;
    return QString::number(number, 'g', digits);
}

// An angle about the centre of another rotation.
QString rotationText(double angle, const TransformValue &like)
{
    const bool hasCentre = like.number(1) != 0.0 || like.number(2) != 0.0;
    return hasCentre ? QStringLiteral("%1 %2 %3")
                               .arg(numberText(angle), numberText(like.number(1)),
                                    numberText(like.number(2)))
                     : numberText(angle);
}

// The attributes of a rotation that begins at 0 and turns as far as another one.
QStringList turningFromZero(const Transform &rotation)
{
    const TransformValue &first = rotation.values.front();
    const QString zero = rotationText(0.0, first);
    const double difference = rotation.values.back().number(0) - first.number(0);
    const QString end = rotationText(difference, first);
    if (rotation.notation == Notation::FromBy)
        return {QStringLiteral("from=\"%1\"").arg(zero),
                QStringLiteral("by=\"%1\"").arg(numberText(difference))};
    if (rotation.notation == Notation::Values && rotation.values.size() > 1)
        return {QStringLiteral("values=\"%1;%2\"").arg(zero, end)};
    return {QStringLiteral("from=\"%1\"").arg(zero), QStringLiteral("to=\"%1\"").arg(end)};
}

bool isAlwaysInEffect(const Animation &animation)
{
    return animation.begin <= 0 && (animation.freezes || !animation.activeEnd());
}

bool turnsAboutOneCentre(const Transform &rotation)
{
    const TransformValue &first = rotation.values.front();
    return std::all_of(
            rotation.values.begin(), rotation.values.end(), [&](const TransformValue &value) {
                const TransformValue difference = value - first;
                return difference.isNear(TransformValue(numberText(difference.number(0))));
            });
}

bool isAlone(const Transform &transform, const std::vector<Transform> &all)
{
    return std::count_if(all.begin(), all.end(),
                         [&](const Transform &other) {
                             return other.animation.target == transform.animation.target;
                         })
            == 1;
}

// Whether the first angle can stand in a "transform", and needs no animation.
bool canStandStill(const Transform &rotation, const std::vector<Transform> &all)
{
    return isAlone(rotation, all) && isAlwaysInEffect(rotation.animation);
}

QString remedyOfMovingCentre()
{
    return QStringLiteral("Turn about a centre that stays, and move the element with an "
                          "animateTransform of type translate of a g around it.");
}

// Where the first angle stands without an animation.
QString placeOfFirstAngle(const Transform &rotation)
{
    const TransformValue &first = rotation.values.front();
    const QString start = rotationText(first.number(0), first);
    return rotation.isAdded()
            ? QStringLiteral("rotate(%1) at the end of the element's own transform").arg(start)
            : QStringLiteral("put the element into a g with transform=\"rotate(%1)\"").arg(start);
}

// The animation that turns by the first angle and has ended when the others begin.
QString turnToFirstAngle(const Transform &rotation)
{
    const TransformValue &first = rotation.values.front();
    return QStringLiteral("an animateTransform with type=\"rotate\", from=\"%1\", to=\"%2\", "
                          "%3dur=\"2ms\" and fill=\"freeze\" that ends where")
            .arg(rotationText(0.0, first), rotationText(first.number(0), first),
                 rotation.isAdded() ? QStringLiteral("additive=\"sum\", ") : QString());
}

// What ends a rotation that is made up of frozen ones.
QString remedyOfEnd(const Transform &rotation, const QString &last)
{
    return rotation.animation.activeEnd() && !rotation.animation.freezes
            ? QStringLiteral(" Where %1 ends, let one with fill=\"freeze\" begin that holds the "
                             "element's own place, such as type=\"translate\" and "
                             "values=\"0 0\".")
                      .arg(last)
            : QString();
}

// What turns by the first angle without an animation, or by one that has ended.
QString remedyOfFirstAngle(const Transform &rotation, const std::vector<Transform> &all)
{
    if (!turnsAboutOneCentre(rotation))
        return remedyOfMovingCentre();
    const QStringList attributes = turningFromZero(rotation);
    if (canStandStill(rotation, all))
        return QStringLiteral("Write %1, and %2.")
                .arg(attributes.join(QStringLiteral(" and ")), placeOfFirstAngle(rotation));
    return QStringLiteral("Write %1 and additive=\"sum\", and in front of it %2 this one begins.")
                   .arg(attributes.join(QStringLiteral(", ")), turnToFirstAngle(rotation))
            + remedyOfEnd(rotation, QStringLiteral("this one"));
}

// The renderer turns by the difference to the first angle alone.
void findFirstAngles(const Understood &title, ProblemList &problems)
{
    const std::vector<Transform> all = transforms(title);
    for (const Transform &rotation : all) {
        if (!rotation.isRotation() || rotation.values.empty() || rotation.values.size() > 2
            || rotation.endsInSpace || rotation.values.front().number(0) == 0.0)
            continue;
        const double first = rotation.values.front().number(0);
        const double last = rotation.values.back().number(0);
        problems.warn(
                "first-angle", rotation.place,
                QStringLiteral("a rotation begins at 0 degrees here: this one turns from 0 to "
                               "%1, and not from %2 to %3")
                        .arg(numberText(last - first), numberText(first), numberText(last)),
                remedyOfFirstAngle(rotation, all));
    }
}

bool isEven(const std::vector<TransformValue> &values)
{
    const TransformValue step = values[1] - values[0];
    for (std::size_t i = 2; i < values.size(); ++i) {
        if (!(values[i] - values[i - 1]).isNear(step))
            return false;
    }
    return true;
}

QString eachPair(const Transform &transform)
{
    return QStringLiteral(
                   "rite one animateTransform for each pair of values%1, one after the other")
            .arg(transform.animation.isRepeated() ? QStringLiteral(" in each cycle") : QString());
}

// Frozen rotations that add up, from the first angle on.
QString remedyOfAngles(const Transform &rotation, const std::vector<Transform> &all)
{
    if (!turnsAboutOneCentre(rotation))
        return remedyOfMovingCentre();
    const TransformValue &first = rotation.values.front();
    const double back = first.number(0) - rotation.values.back().number(0);
    const bool isTurned = first.number(0) != 0.0;
    const bool standsStill = isTurned && canStandStill(rotation, all);
    const bool isFirstAdded = rotation.isAdded() || (isTurned && !standsStill);
    QString remedy = QLatin1Char('W') + eachPair(rotation)
            + QStringLiteral(", that turns from 0 to the difference, with fill=\"freeze\" and "
                             "additive=\"sum\"");
    if (!isFirstAdded)
        remedy += QStringLiteral(", the first one without additive");
    if (rotation.animation.isRepeated() && back != 0.0)
        remedy += QStringLiteral(", before each further cycle one like them with from=\"%1\", "
                                 "to=\"%2\" and dur=\"2ms\"")
                          .arg(rotationText(0.0, first), rotationText(back, first));
    if (standsStill)
        remedy += QStringLiteral(", and ") + placeOfFirstAngle(rotation);
    else if (isTurned)
        remedy += QStringLiteral(", and in front of them %1 the first one begins")
                          .arg(turnToFirstAngle(rotation));
    return remedy + QLatin1Char('.') + remedyOfEnd(rotation, QStringLiteral("the last one"));
}

QString remedyOfValues(const Transform &transform, const std::vector<Transform> &all)
{
    if (isEven(transform.values))
        return QStringLiteral("Write the first and the last value only, which comes to the same.");
    if (transform.isRotation())
        return remedyOfAngles(transform, all);
    const QString pairs = eachPair(transform) + QLatin1Char('.');
    return transform.type == QLatin1String("translate")
            ? QStringLiteral("Animate x and y of a use element that shows it, or w") + pairs
            : QLatin1Char('W') + pairs;
}

void findTransformValues(const Understood &title, ProblemList &problems)
{
    const std::vector<Transform> all = transforms(title);
    for (const Transform &transform : all) {
        if (transform.values.size() > 2)
            problems.warn("transform-values", transform.place,
                          QStringLiteral("an animateTransform plays two values at most right, and "
                                         "not %1")
                                  .arg(transform.values.size()),
                          remedyOfValues(transform, all));
        else if (transform.endsInSpace)
            problems.warn("transform-values", transform.place,
                          QStringLiteral("white space after the last ; counts as one more value"),
                          QStringLiteral("Write no white space after the last ; of the values."));
    }
}

// For a height of 0 the renderer takes the width.
void findScales(const Understood &title, ProblemList &problems)
{
    for (const Transform &scale : transforms(title)) {
        if (scale.type != QLatin1String("scale") || scale.values.empty() || scale.values.size() > 2
            || scale.endsInSpace)
            continue;
        const TransformValue &first = scale.values.front();
        const TransformValue &last = scale.values.back();
        const auto isFlat = [](const TransformValue &value) {
            return value.count() > 1 && value.number(1) == 0.0 && value.number(0) != 0.0;
        };
        if ((first.count() > 1) != (last.count() > 1))
            problems.warn(
                    "transform-values", scale.place,
                    QStringLiteral("a scale with one number counts as one with a height of 0, "
                                   "when the other value has two"),
                    QStringLiteral("Write two numbers in each value."));
        else if (isFlat(first) || isFlat(last))
            problems.warn("transform-values", scale.place,
                          QStringLiteral("a scale with a height of 0 is as high as it is wide"),
                          QStringLiteral("Write 0.001 instead of 0."));
    }
}

bool isGradient(const QString &name)
{
    return name == QLatin1String("linearGradient") || name == QLatin1String("radialGradient");
}

QString remedyOfGradient(const QString &name)
{
    return name == QLatin1String("linearGradient")
            ? QStringLiteral("Animate x1, y1, x2 and y2 of the gradient instead.")
            : QStringLiteral("Animate cx, cy, fx, fy and r of the gradient instead.");
}

// The renderer has no element for these, and takes the one around them.
void findTransformsOfOthers(const Understood &title, ProblemList &problems)
{
    for (const Transform &transform : transforms(title)) {
        const QString target = title.element(transform.animation.target).name;
        if (isGradient(target))
            problems.warn("transform-target", transform.element.place,
                          QStringLiteral("the gradient stands still, and what is around it moves"),
                          remedyOfGradient(target));
        else if (target == QLatin1String("pattern"))
            problems.warn("transform-target", transform.element.place,
                          QStringLiteral("the pattern stands still, and what is around it moves"),
                          QStringLiteral("Draw the shapes of the pattern themselves, in a g, and "
                                         "animate that."));
        else if (target == QLatin1String("a"))
            problems.warn("transform-target", transform.element.place,
                          QStringLiteral("an a element stands still, and what is around it moves"),
                          QStringLiteral("Put it into a g inside of the a element instead."));
    }
}

// The renderer does not look at the name.
void findTransformsOfOtherAttributes(const Understood &title, ProblemList &problems)
{
    for (const Transform &transform : transforms(title)) {
        const QString name = transform.animation.attribute.trimmed();
        if (!name.isEmpty() && name != QLatin1String("transform")
            && !name.endsWith(QLatin1String("Transform")))
            problems.warn("rejected", transform.element.placeOf(QStringLiteral("attributeName")),
                          QStringLiteral("an animateTransform of %1 moves the element here, and "
                                         "browsers do not play it")
                                  .arg(shortened(name, 40)),
                          QStringLiteral("Write attributeName=\"transform\", or use an animate "
                                         "element for the other attribute."));
    }
}

// Browsers take a transform from an "animateTransform" only.
void findAnimatedTransforms(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const QString &name = animation.attribute;
        const QString target = title.element(animation.target).name;
        const bool isTransform = name == QLatin1String("transform")
                || name == QLatin1String("gradientTransform")
                || name == QLatin1String("patternTransform");
        if (!animation.played || !isTransform)
            continue;
        problems.warn(
                "rejected",
                title.element(animation.element).placeOf(QStringLiteral("attributeName")),
                QStringLiteral("browsers do not play an animate element of %1").arg(name),
                isGradient(target)
                        ? remedyOfGradient(target)
                        : QStringLiteral("Use an animateTransform element, for several values "
                                         "one for each pair, or animate x and y of a use "
                                         "element that shows it."));
    }
}

} // namespace

const std::vector<Check> &transformChecks()
{
    static const std::vector<Check> checks{findFirstAngles,
                                           findTransformValues,
                                           findScales,
                                           findTransformsOfOthers,
                                           findTransformsOfOtherAttributes,
                                           findAnimatedTransforms};
    return checks;
}
