// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PathData.h"
#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <Scene/NumberList_p.h>

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <optional>

// What an animation writes into an attribute: numbers with three decimals, also where a text has
// digits that mean something else.

namespace {

constexpr double steps = 1000.0; // of a number that is written

bool isPlayedHere(const Animation &animation)
{
    return animation.player == Animation::Player::Document;
}

// The flags of an arc are single digits, and not 1.000.
void findAnimatedArcs(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        if (!isPlayedHere(animation) || animation.attribute != QLatin1String("d"))
            continue;
        const std::vector<KeyText> values = keyTextsOf(title.element(animation.element));
        const auto arc = std::find_if(values.begin(), values.end(), [](const KeyText &value) {
            return PathData(value.text).hasArcs;
        });
        if (arc != values.end())
            problems.warn("animated-arc", arc->place,
                          QStringLiteral("a path with arcs is not drawn while its d is animated: "
                                         "the flags of an arc are written as numbers"),
                          QStringLiteral("Write the arcs as curves, in every value: c instead of "
                                         "a."));
    }
}

void findAnimatedNames(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        if (const std::optional<KeyText> name = nameTakenForNumbers(title, animation))
            problems.warn(
                    "animated-name", name->place,
                    QStringLiteral("the name \"%1\" is taken for numbers or a colour, so that "
                                   "the %2 never is one of the values")
                            .arg(name->text.left(40), animation.attribute),
                    QStringLiteral("Draw an element for each value, and animate their "
                                   "display with values such as inline;none."));
    }
}

// The renderer reads whole numbers only.
void findAnimatedWeights(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        if (isPlayedHere(animation) && animation.attribute == QLatin1String("font-weight")
            && animation.kind == Animation::Kind::Number)
            problems.warn("unreadable-value",
                          keyTextsOf(title.element(animation.element)).front().place,
                          QStringLiteral("a font-weight that is animated as a number is not read"),
                          QStringLiteral("Write normal and bold."));
    }
}

QVector<double> numbersIn(const QString &text)
{
    bool isReadable = false;
    const std::vector<double> numbers = numberRuns(text + closingCharacter(text), &isReadable);
    return isReadable ? QVector<double>(numbers.begin(), numbers.end()) : QVector<double>();
}

// How much longer a transform makes things, as far as its own numbers tell.
double scaleOf(const QString &transform)
{
    static const QRegularExpression function(QStringLiteral("(scale|matrix)\\s*\\(([^)]*)\\)"));
    static const QRegularExpression separators(QStringLiteral("[\\s,]+"));
    double scale = 1.0;
    auto matches = function.globalMatch(transform);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        double largest = 0.0;
        for (const QString &number :
             match.captured(2).split(separators, Qt::SkipEmptyParts).mid(0, 4))
            largest = std::max(largest, std::abs(number.toDouble()));
        scale *= largest;
    }
    return scale;
}

// How much longer each element is drawn than its own attributes say.
std::vector<double> scales(const Understood &title)
{
    std::vector<double> result;
    for (const SourceElement &element : title.source().elements()) {
        const double around =
                element.parent == SourceElement::none ? 1.0 : result[std::size_t(element.parent)];
        result.push_back(around * scaleOf(element.value(QStringLiteral("transform"))));
    }
    return result;
}

// How far a number is from the one that is written.
double lost(double number)
{
    return std::abs(number - std::round(number * steps) / steps);
}

// The largest error of a transform, in pixels at the far end of the title.
double lostInTransform(const QString &transform, double size)
{
    static const QRegularExpression function(QStringLiteral("(scale|matrix)\\s*\\(([^)]*)\\)"));
    double largest = 0.0;
    auto matches = function.globalMatch(transform);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const double scale = scaleOf(match.captured());
        for (const double number : numbersIn(match.captured(2)).mid(0, 4))
            largest = std::max(largest, scale > 0.0 ? lost(number) / scale * size : 0.0);
    }
    return largest;
}

// What is drawn large from small numbers, or small from large ones, misses the decimals.
void findLostDecimals(const Understood &title, ProblemList &problems)
{
    constexpr double seen = 2.0; // pixels
    static const QStringList places{QStringLiteral("d"),        QStringLiteral("points"),
                                    QStringLiteral("x"),        QStringLiteral("y"),
                                    QStringLiteral("width"),    QStringLiteral("height"),
                                    QStringLiteral("cx"),       QStringLiteral("cy"),
                                    QStringLiteral("r"),        QStringLiteral("rx"),
                                    QStringLiteral("ry"),       QStringLiteral("x1"),
                                    QStringLiteral("x2"),       QStringLiteral("y1"),
                                    QStringLiteral("y2"),       QStringLiteral("stroke-width"),
                                    QStringLiteral("font-size")};
    const std::vector<double> scaleOfElement = scales(title);
    const double size = std::max(title.size().width(), title.size().height());
    for (const Animation &animation : title.animations()) {
        const bool isTransform = animation.attribute == QLatin1String("transform");
        if (!isPlayedHere(animation) || (!isTransform && !places.contains(animation.attribute)))
            continue;
        for (const KeyText &value : keyTextsOf(title.element(animation.element))) {
            double pixels = isTransform ? lostInTransform(value.text, size) : 0.0;
            if (!isTransform) {
                for (const double number : numbersIn(value.text))
                    pixels = std::max(pixels,
                                      lost(number) * scaleOfElement[std::size_t(animation.target)]);
            }
            if (pixels < seen)
                continue;
            problems.warn("decimals-lost", value.place,
                          QStringLiteral("animated numbers have three decimals: this is %1 pixels "
                                         "beside its place")
                                  .arg(std::lround(pixels)),
                          QStringLiteral("Use larger numbers, and a smaller scale for what is "
                                         "drawn."));
            break;
        }
    }
}

} // namespace

const std::vector<Check> &writtenChecks()
{
    static const std::vector<Check> checks{findAnimatedArcs, findAnimatedNames, findAnimatedWeights,
                                           findLostDecimals};
    return checks;
}
