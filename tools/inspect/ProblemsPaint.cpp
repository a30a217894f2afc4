// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <Scene/AnimatableAttribute.h>

#include <QBuffer>
#include <QColor>
#include <QImageReader>
#include <QRectF>
#include <QRegularExpression>

#include <algorithm>
#include <set>

// Colours, lengths, gradients, pictures and opacities that the renderer reads in another way.

namespace {

// What the renderer reads; everything else is black to it. The library's own reading of "rgba()"
// gives another colour, too.
bool isReadColor(const QString &value)
{
    static const QRegularExpression read(
            QStringLiteral("^(none|inherit|currentColor|url\\(.*|#[0-9A-Fa-f]{3}|#[0-9A-Fa-f]{6}"
                           "|rgb\\([^,/]*(,[^,/]*,[^,/]*|[^,/]*)\\))$"));
    if (value.contains(read))
        return true;
    return !value.startsWith(QLatin1Char('#')) && QColor::isValidColor(value);
}

bool isColorProperty(const QString &name)
{
    return name == QLatin1String("fill") || name == QLatin1String("stroke")
            || name == QLatin1String("stop-color") || name == QLatin1String("color");
}

void warnOfColor(ProblemList &problems, const Place &place, const QString &value)
{
    problems.warn("colour", place,
                  QStringLiteral("the colour %1 is drawn in another colour").arg(value.left(40)),
                  QStringLiteral("Write it as #rrggbb, with fill-opacity, stroke-opacity or "
                                 "stop-opacity beside it."));
}

void findForeignColors(const Understood &title, ProblemList &problems)
{
    lookAtProperties(title, [&](const SourceElement &element, const Property &property) {
        const bool isWorkedOut = property.value.contains(QLatin1String("var("));
        if (isColorProperty(property.name) && !isAnimationElement(element)
            && !property.value.isEmpty() && !isWorkedOut && !property.isImportant
            && !isReadColor(property.value))
            warnOfColor(problems, property.place, property.value);
    });
}

// What the renderer is given for a colour that the document animates.
bool isReadAnimatedColor(const QString &value)
{
    static const QRegularExpression digits(QStringLiteral("^#([0-9A-Fa-f]{3}|[0-9A-Fa-f]{6})$"));
    return value.startsWith(QLatin1Char('#')) ? value.contains(digits) : isReadColor(value);
}

// Values that are taken for numbers or words, or for another notation.
void findForeignAnimatedColors(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        if (!isColorProperty(animation.attribute)
            || animation.player != Animation::Player::Document)
            continue;
        for (const KeyText &value : keyTextsOf(title.element(animation.element))) {
            if (value.text.isEmpty() || isReadAnimatedColor(value.text))
                continue;
            if (animation.kind == Animation::Kind::Color && !QColor::isValidColor(value.text))
                continue; // told of as unreadable
            warnOfColor(problems, value.place, value.text);
            break;
        }
    }
}

bool isAnyOf(const std::vector<KeyText> &values, const QStringList &texts)
{
    return std::any_of(values.begin(), values.end(),
                       [&](const KeyText &value) { return texts.contains(value.text); });
}

// Words change in steps, in a browser those that stand for colours do not, and "none" does not
// change at all.
void findAnimatedPaintWords(const Understood &title, ProblemList &problems)
{
    static const QStringList words{QStringLiteral("currentColor"), QStringLiteral("inherit")};
    const QString none = QStringLiteral("none");
    for (const Animation &animation : title.animations()) {
        const std::vector<KeyText> values = keyTextsOf(title.element(animation.element));
        if (!isColorProperty(animation.attribute) || animation.player != Animation::Player::Document
            || animation.kind == Animation::Kind::Color) // told of as unreadable
            continue;
        if (isAnyOf(values, {none}))
            problems.warn("colour", values.front().place,
                          QStringLiteral("none is not among the values that browsers animate, and "
                                         "counts as a word or as black"),
                          QStringLiteral("Write colours only, and animate fill-opacity or "
                                         "stroke-opacity as well, with 0 for none."));
        else if (!animation.isDiscrete && isAnyOf(values, words))
            problems.warn("colour", values.front().place,
                          QStringLiteral("a colour does not go over into currentColor or inherit"),
                          QStringLiteral("Write the colour itself."));
    }
}

// "currentColor" is looked up where it stands, not where it is used.
void findColorsOfUses(const Understood &title, ProblemList &problems)
{
    bool hasCurrentColor = false;
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        hasCurrentColor |= property.value == QLatin1String("currentColor");
    });
    lookAtProperties(title, [&](const SourceElement &element, const Property &property) {
        if (hasCurrentColor && property.name == QLatin1String("color")
            && element.name == QLatin1String("use"))
            problems.warn("colour", property.place,
                          QStringLiteral("the color of a use element does not reach the "
                                         "currentColor of its definition"),
                          QStringLiteral("Leave fill and stroke out in the definition, and give "
                                         "them to the use element."));
    });
}

bool isOpacity(const QString &name)
{
    return name.endsWith(QLatin1String("opacity"));
}

bool isLength(const QString &name)
{
    static const QStringList names{QStringLiteral("x"),
                                   QStringLiteral("y"),
                                   QStringLiteral("width"),
                                   QStringLiteral("height"),
                                   QStringLiteral("cx"),
                                   QStringLiteral("cy"),
                                   QStringLiteral("r"),
                                   QStringLiteral("rx"),
                                   QStringLiteral("ry"),
                                   QStringLiteral("x1"),
                                   QStringLiteral("x2"),
                                   QStringLiteral("y1"),
                                   QStringLiteral("y2"),
                                   QStringLiteral("fx"),
                                   QStringLiteral("fy"),
                                   QStringLiteral("stroke-width"),
                                   QStringLiteral("font-size"),
                                   QStringLiteral("stroke-dasharray"),
                                   QStringLiteral("stroke-dashoffset")};
    return names.contains(name);
}

// Which percentages a gradient takes as such.
bool takesPercentages(const SourceElement &element)
{
    return element.name == QLatin1String("linearGradient")
            && element.value(QStringLiteral("gradientUnits")) != QLatin1String("userSpaceOnUse");
}

// Its lengths mean nothing, because it is not drawn or another check is about it.
bool hasIdleLengths(const SourceElement &element)
{
    static const QRegularExpression names(
            QStringLiteral("^(fe[A-Z].*|filter|mask|pattern|marker|symbol|foreignObject|svg)$"));
    return withoutPrefix(element.name).contains(names) || isAnimationElement(element);
}

QString unitIn(const QString &value)
{
    static const QRegularExpression unit(
            QStringLiteral("[0-9.](%|[a-df-zA-Z][a-zA-Z]*|e[mx])(?![a-zA-Z(])"));
    return unit.match(value).captured(1);
}

struct UnitProblem
{
    QString reason;
    QString remedy;
};

// A percentage that is drawn as what it means, although it is read as another number.
bool isLuckyPercentage(const QString &name, const QString &value)
{
    const QString number = value.endsWith(QLatin1Char('%')) ? value.chopped(1) : QString();
    bool isNumber = false;
    const double percent = number.toDouble(&isNumber);
    const bool isNothing = percent == 0.0
            && (name == QLatin1String("fill-opacity") || name == QLatin1String("stroke-opacity"));
    return isOpacity(name) && isNumber && (percent >= 100.0 || isNothing);
}

UnitProblem problemOfUnit(const QString &name, const QString &unit)
{
    static const QStringList ofInches{QStringLiteral("pt"), QStringLiteral("pc"),
                                      QStringLiteral("mm"), QStringLiteral("cm"),
                                      QStringLiteral("in")};
    const QString pixels = QStringLiteral("Write a number of pixels without a unit.");
    if (isOpacity(name))
        return {QStringLiteral("a percentage of %1 is not read").arg(name),
                QStringLiteral("Write a number from 0 to 1.")};
    if (unit == QLatin1String("%"))
        return {QStringLiteral("a percentage of %1 is not taken of anything").arg(name),
                QStringLiteral("Write a number without a unit.")};
    if (ofInches.contains(unit))
        return {QStringLiteral("%1 is drawn smaller: an inch has 90 pixels, and 96 in a browser")
                        .arg(unit),
                pixels};
    return {QStringLiteral("the unit %1 of %2 is not read").arg(unit, name), pixels};
}

void findUnits(const Understood &title, ProblemList &problems)
{
    lookAtProperties(title, [&](const SourceElement &element, const Property &property) {
        const QString &name = property.name;
        const bool isSizeOfUse = element.name == QLatin1String("use")
                && (name == QLatin1String("width") || name == QLatin1String("height"));
        if ((!isLength(name) && !isOpacity(name)) || hasIdleLengths(element) || isSizeOfUse)
            return;
        const QString unit = unitIn(property.value);
        const bool isPixels =
                unit == QLatin1String("px") && name != QLatin1String("stroke-dasharray");
        const bool isPercentage = unit == QLatin1String("%") && takesPercentages(element);
        if (unit.isEmpty() || isPixels || isPercentage || isLuckyPercentage(name, property.value)
            || property.value.contains(QLatin1String("calc(")))
            return;
        const UnitProblem problem = problemOfUnit(name, unit);
        problems.warn("unit", property.place, problem.reason, problem.remedy);
    });
}

void findAnimatedUnits(const Understood &title, ProblemList &problems)
{
    for (const Animation &animation : title.animations()) {
        const QString &name = animation.attribute;
        if (animation.player != Animation::Player::Document || (!isLength(name) && !isOpacity(name))
            || takesPercentages(title.element(animation.target)))
            continue;
        for (const KeyText &value : keyTextsOf(title.element(animation.element))) {
            const QString unit = unitIn(value.text);
            if (unit.isEmpty() || unit == QLatin1String("px"))
                continue;
            const UnitProblem problem = problemOfUnit(name, unit);
            problems.warn("unit", value.place, problem.reason, problem.remedy);
            break;
        }
    }
}

void findSizesOfWords(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression word(
            QStringLiteral("^((xx?-|)(small|large)|medium|smaller|larger)$"));
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        if (property.name == QLatin1String("font-size") && property.value.contains(word))
            problems.warn("unit", property.place,
                          QStringLiteral("the font-size %1 is not read").arg(property.value),
                          QStringLiteral("Write a number of pixels without a unit."));
    });
}

// In a browser dashes without a length make a solid line.
void findDashesOfNothing(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression zeros(QStringLiteral("^[0., ]*0[0., ]*$"));
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        if (property.name == QLatin1String("stroke-dasharray") && property.value.contains(zeros))
            problems.warn("not-drawn", property.place,
                          QStringLiteral("a line with dashes of no length is not drawn"),
                          QStringLiteral("Leave stroke-dasharray out."));
    });
}

bool isGradient(const SourceElement &element)
{
    return element.name == QLatin1String("linearGradient")
            || element.name == QLatin1String("radialGradient");
}

// Only the stops and the transform of a gradient come with a reference to it.
void findGradientsThatInherit(const Understood &title, ProblemList &problems)
{
    for (const SourceElement &element : title.source().elements()) {
        const std::optional<int> other =
                title.elementWithId(idOfReference(element.value(QStringLiteral("xlink:href"))));
        if (!isGradient(element) || !other || !isGradient(title.element(*other)))
            continue;
        for (const char *name : {"gradientUnits", "spreadMethod", "x1", "y1", "x2", "y2", "cx",
                                 "cy", "r", "fx", "fy"}) {
            const QString attribute = QLatin1String(name);
            if (title.element(*other).attribute(attribute) && !element.attribute(attribute)) {
                problems.warn("gradient", element.placeOf(QStringLiteral("xlink:href")),
                              QStringLiteral("%1 of the other gradient does not come with the "
                                             "reference, only its stops do")
                                      .arg(attribute),
                              QStringLiteral("Write it at this gradient as well."));
                break;
            }
        }
    }
}

// Without them the renderer takes numbers for fractions, and a browser percentages of the picture.
void findGradientsWithoutPlace(const Understood &title, ProblemList &problems)
{
    for (const SourceElement &element : title.source().elements()) {
        if (!isGradient(element)
            || element.value(QStringLiteral("gradientUnits")) != QLatin1String("userSpaceOnUse"))
            continue;
        const QStringList needed = element.name == QLatin1String("linearGradient")
                ? QStringList{QStringLiteral("x2")}
                : QStringList{QStringLiteral("cx"), QStringLiteral("cy"), QStringLiteral("r")};
        for (const QString &name : needed) {
            if (element.attribute(name))
                continue;
            problems.warn("gradient", element.placeOf(QStringLiteral("gradientUnits")),
                          QStringLiteral("the gradient has no %1, which then counts as a fraction "
                                         "of one pixel")
                                  .arg(name),
                          QStringLiteral("Write it in pixels."));
            break;
        }
    }
}

void findFocalCircles(const Understood &title, ProblemList &problems)
{
    for (const SourceElement &element : title.source().elements()) {
        if (isGradient(element) && element.attribute(QStringLiteral("fr")))
            problems.warn("gradient", element.placeOf(QStringLiteral("fr")),
                          QStringLiteral("fr is ignored: the gradient begins at its focal point"),
                          QStringLiteral("Move the offset of the first stop."));
    }
}

QSizeF sizeOfPicture(const QString &reference)
{
    const int comma = reference.indexOf(QLatin1Char(','));
    QByteArray bytes = QByteArray::fromBase64(reference.mid(comma + 1).toLatin1());
    QBuffer buffer(&bytes);
    return QImageReader(&buffer).size();
}

// A picture fills its rectangle, whatever its own shape is.
void findPicturesThatStretch(const Understood &title, ProblemList &problems)
{
    constexpr double tolerance = 0.02;
    const QString href = QStringLiteral("xlink:href");
    for (int number = 0; number < int(title.source().elements().size()); ++number) {
        const SourceElement &element = title.element(number);
        const QString value = element.value(href);
        if (element.name != QLatin1String("image") || !value.startsWith(QLatin1String("data:"))
            || title.treeElement(number).attribute(href) != value)
            continue;
        const double width = element.value(QStringLiteral("width")).toDouble();
        const double height = element.value(QStringLiteral("height")).toDouble();
        const QString fit = element.value(QStringLiteral("preserveAspectRatio")).trimmed();
        const QSizeF size = sizeOfPicture(value);
        if (!element.attribute(QStringLiteral("width"))
            || !element.attribute(QStringLiteral("height")))
            problems.warn("picture", element.place,
                          QStringLiteral("a picture without width and height is not drawn"),
                          QStringLiteral("Write both."));
        else if (width > 0.0 && height > 0.0 && !size.isEmpty() && fit != QLatin1String("none")
                 && qAbs(size.width() * height / (size.height() * width) - 1.0) > tolerance)
            problems.warn("picture", element.place,
                          QStringLiteral("the picture of %1 x %2 pixels is stretched to %3 x %4")
                                  .arg(size.width())
                                  .arg(size.height())
                                  .arg(width)
                                  .arg(height),
                          QStringLiteral("Write a width and height of the picture's own ratio."));
    }
}

bool isShape(const SourceElement &element)
{
    static const QStringList names{QStringLiteral("rect"),    QStringLiteral("circle"),
                                   QStringLiteral("ellipse"), QStringLiteral("path"),
                                   QStringLiteral("polygon"), QStringLiteral("polyline")};
    return names.contains(element.name);
}

bool isGroup(const SourceElement &element)
{
    return element.name == QLatin1String("g") || element.name == QLatin1String("a")
            || element.name == QLatin1String("svg") || element.name == QLatin1String("use");
}

bool isDrawnByItself(const SourceElement &element)
{
    return isShape(element) || element.name == QLatin1String("text")
            || element.name == QLatin1String("image") || element.name == QLatin1String("line")
            || element.name == QLatin1String("use");
}

// How many things each element draws, those that it uses not counted.
std::vector<int> drawnThings(const Understood &title)
{
    const std::vector<SourceElement> &elements = title.source().elements();
    std::vector<int> counts(elements.size(), 0);
    for (std::size_t number = elements.size(); number-- > 1;) {
        counts[number] += isDrawnByItself(elements[number]);
        if (elements[number].name != QLatin1String("defs"))
            counts[std::size_t(elements[number].parent)] += counts[number];
    }
    return counts;
}

bool isTranslucent(const QString &opacity)
{
    bool isNumber = false;
    const double value = opacity.toDouble(&isNumber);
    return isNumber && value > 0.0 && value < 1.0;
}

// Where the opacity of an element is given or animated, unless it never is between 0 and 1.
std::vector<std::pair<int, Place>> translucentElements(const Understood &title,
                                                       const StyledValues &values)
{
    const QString opacity = QStringLiteral("opacity");
    std::vector<std::pair<int, Place>> result;
    for (int number = 0; number < int(title.source().elements().size()); ++number) {
        const SourceElement &element = title.element(number);
        if ((isShape(element) || isGroup(element)) && isTranslucent(values.own(number, opacity)))
            result.emplace_back(number, placeOfProperty(element, opacity));
    }
    for (const Animation &animation : title.animations()) {
        if (animation.player == Animation::Player::Document && animation.attribute == opacity
            && !animation.isDiscrete)
            result.emplace_back(
                    animation.target,
                    title.element(animation.element).placeOf(QStringLiteral("attributeName")));
    }
    return result;
}

bool isPainted(const QString &paint)
{
    return !paint.isEmpty() && paint != QLatin1String("none");
}

// Where things are that nothing moves or outlines, in so far as plain numbers tell.
class Extents
{
public:
    Extents(const Understood &title, const StyledValues &values) : m_title(title), m_values(values)
    {
        static const QStringList still{QStringLiteral("opacity"), QStringLiteral("fill-opacity"),
                                       QStringLiteral("fill"), QStringLiteral("display"),
                                       QStringLiteral("visibility")};
        for (const Animation &animation : title.animations()) {
            if (!still.contains(animation.attribute))
                m_moving.insert(animation.target);
            m_isCertain = m_isCertain && animation.attribute != QLatin1String("font-size")
                    && animation.attribute != QLatin1String("stroke");
        }
    }

    // Whether nothing that a group draws overlaps; false where that is not certain.
    bool areApart(int group) const
    {
        constexpr int most = 64; // elements that are compared with each other
        if (!m_isCertain || m_title.element(group).name == QLatin1String("use"))
            return false;
        const int end = std::min(int(m_title.source().elements().size()), group + most);
        std::vector<QRectF> extents;
        int number = group + 1;
        for (; number < end && m_title.element(number).parent >= group; ++number) {
            const SourceElement &element = m_title.element(number);
            const bool isDrawn = isDrawnByItself(element);
            if (m_moving.count(number) > 0 || (!isDrawn && !drawsNothing(element))
                || !m_values.own(number, QStringLiteral("transform")).isEmpty())
                return false;
            if (!isDrawn)
                continue;
            const QRectF extent = extentOf(number);
            if (extent.isNull()
                || std::any_of(extents.begin(), extents.end(),
                               [&extent](const QRectF &other) { return extent.intersects(other); }))
                return false;
            extents.push_back(extent);
        }
        return number < end || end < group + most;
    }

private:
    static bool drawsNothing(const SourceElement &element)
    {
        static const QStringList names{QStringLiteral("g"), QStringLiteral("a"),
                                       QStringLiteral("title"), QStringLiteral("desc")};
        return names.contains(element.name) || isAnimationElement(element);
    }

    // A null one where it is not known.
    QRectF extentOf(int number) const
    {
        const SourceElement &element = m_title.element(number);
        if (isPainted(m_values.inherited(number, QStringLiteral("stroke"))))
            return {};
        bool areNumbers = true;
        const auto value = [&](const char *name) {
            const QString text = element.value(QLatin1String(name));
            bool isNumber = true;
            const double result = text.isEmpty() ? 0.0 : text.toDouble(&isNumber);
            areNumbers = areNumbers && isNumber;
            return result;
        };
        QRectF result;
        if (element.name == QLatin1String("rect") || element.name == QLatin1String("image")) {
            result = QRectF(value("x"), value("y"), value("width"), value("height"));
        } else if (element.name == QLatin1String("circle")) {
            const double r = value("r");
            result = QRectF(value("cx") - r, value("cy") - r, 2.0 * r, 2.0 * r);
        } else if (element.name == QLatin1String("ellipse")) {
            const double rx = value("rx");
            const double ry = value("ry");
            result = QRectF(value("cx") - rx, value("cy") - ry, 2.0 * rx, 2.0 * ry);
        } else if (element.name == QLatin1String("text")) {
            result = lineOf(number, value("y"));
        }
        return areNumbers ? result : QRectF();
    }

    // How wide a text is, its font tells.
    QRectF lineOf(int number, double y) const
    {
        constexpr double above = 1.2; // of the font's size, with room for accents
        constexpr double below = 0.5;
        constexpr double anywhere = 1e6;
        bool isNumber = false;
        const QString text = m_values.inherited(number, QStringLiteral("font-size"));
        const double size = QString(text).remove(QLatin1String("px")).toDouble(&isNumber);
        return isNumber && size > 0.0
                ? QRectF(-anywhere, y - above * size, 2.0 * anywhere, (above + below) * size)
                : QRectF();
    }

    const Understood &m_title;
    const StyledValues &m_values;
    std::set<int> m_moving;
    bool m_isCertain = true; // nothing that is inherited changes extents
};

// Opacity goes to each shape, and to fill and stroke, by itself.
void findOpacitiesOfSeveral(const Understood &title, ProblemList &problems)
{
    const StyledValues values(title);
    const Extents extents(title, values);
    const std::vector<int> counts = drawnThings(title);
    const auto drawnBy = [&](int number) {
        const QString href = title.element(number).value(QStringLiteral("xlink:href"));
        const std::optional<int> used = title.elementWithId(idOfReference(href));
        return title.element(number).name == QLatin1String("use") && used
                ? counts[std::size_t(*used)]
                : counts[std::size_t(number)];
    };
    const QString remedy = QStringLiteral("Let nothing overlap in it, or cover it with a shape in "
                                          "the colour of the background.");
    for (const auto &[number, place] : translucentElements(title, values)) {
        const SourceElement &element = title.element(number);
        if (isGroup(element) && drawnBy(number) > 1 && !extents.areApart(number))
            problems.note("opacity", place,
                          QStringLiteral("where two shapes of %1 overlap, both are seen: opacity "
                                         "goes to each of them by itself")
                                  .arg(title.label(number)),
                          remedy);
        const QString fill = values.inherited(number, QStringLiteral("fill"));
        if (isShape(element) && (fill.isEmpty() || isPainted(fill))
            && isPainted(values.inherited(number, QStringLiteral("stroke"))))
            problems.warn("opacity", place,
                          QStringLiteral("the fill is seen through the stroke: opacity goes to "
                                         "each of them by itself"),
                          QStringLiteral("Draw the stroke and the fill by two shapes that do not "
                                         "overlap."));
    }
}

} // namespace

const std::vector<Check> &paintChecks()
{
    static const std::vector<Check> checks{findForeignColors,
                                           findForeignAnimatedColors,
                                           findAnimatedPaintWords,
                                           findColorsOfUses,
                                           findUnits,
                                           findAnimatedUnits,
                                           findSizesOfWords,
                                           findDashesOfNothing,
                                           findGradientsThatInherit,
                                           findGradientsWithoutPlace,
                                           findFocalCircles,
                                           findPicturesThatStretch,
                                           findOpacitiesOfSeveral};
    return checks;
}
