// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <QRegularExpression>

#include <algorithm>

// Texts: the places, spaces and paints of their runs.

namespace {

bool isText(const SourceElement &element)
{
    return element.name == QLatin1String("text");
}

bool isSpan(const SourceElement &element)
{
    return element.name == QLatin1String("tspan");
}

QString oneTextForEach()
{
    return QStringLiteral("Use a text element of its own.");
}

bool isNothing(const QString &length)
{
    static const QRegularExpression nothing(QStringLiteral("^[-+]?0*\\.?0*[a-z%]*$"));
    return length.contains(nothing);
}

// A first run that stands where its text stands is right by chance.
bool isInPlace(const Understood &title, int number, const SourceAttribute &attribute)
{
    const SourceElement &span = title.element(number);
    return span.parent == number - 1
            && title.element(span.parent).value(attribute.name).trimmed()
            == attribute.value.trimmed();
}

// The renderer sets the runs of a text one after the other.
void findMovedSpans(const Understood &title, ProblemList &problems)
{
    for (int number = 0; number < int(title.source().elements().size()); ++number) {
        const SourceElement &span = title.element(number);
        if (!isSpan(span))
            continue;
        for (const char *name : {"x", "y", "dx", "dy", "rotate"}) {
            const SourceAttribute *const attribute = span.attribute(QLatin1String(name));
            if (!attribute || isInPlace(title, number, *attribute)
                || (attribute->name.startsWith(QLatin1Char('d')) && isNothing(attribute->value)))
                continue;
            problems.warn("text-place", attribute->place,
                          QStringLiteral("%1 of a tspan is ignored: it follows the text before it")
                                  .arg(attribute->name),
                          oneTextForEach());
            break;
        }
    }
}

void findMovedLetters(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression list(QStringLiteral("\\S[\\s,]+\\S"));
    for (const SourceElement &text : title.source().elements()) {
        if (!isText(text))
            continue;
        for (const char *name : {"x", "y", "dx", "dy", "rotate"}) {
            const SourceAttribute *const attribute = text.attribute(QLatin1String(name));
            if (!attribute)
                continue;
            const bool isPlain = attribute->name.size() == 1;
            if (isPlain && attribute->value.trimmed().contains(list))
                problems.warn("text-place", attribute->place,
                              QStringLiteral("letters have no places of their own: a list for %1 "
                                             "is not read")
                                      .arg(attribute->name),
                              QStringLiteral("Use a text element for each letter."));
            else if (!isPlain && !isNothing(attribute->value.trimmed()))
                problems.warn("text-place", attribute->place,
                              QStringLiteral("%1 of a text is ignored").arg(attribute->name),
                              QStringLiteral("Change x and y, or write a transform."));
        }
    }
}

bool isIgnoredOfSpans(const QString &name)
{
    return name == QLatin1String("visibility") || name == QLatin1String("display")
            || name == QLatin1String("fill-opacity") || name == QLatin1String("stroke-opacity")
            || name == QLatin1String("transform");
}

void findSpansShownAnyway(const Understood &title, ProblemList &problems)
{
    static const QStringList shown{QStringLiteral("inline"), QStringLiteral("visible"),
                                   QStringLiteral("1"), QStringLiteral("inherit")};
    const auto warn = [&](const Place &place, const QString &name) {
        problems.warn("text-run", place, QStringLiteral("%1 of a tspan is ignored").arg(name),
                      oneTextForEach());
    };
    for (const SourceElement &span : title.source().elements()) {
        if (!isSpan(span))
            continue;
        for (const Property &property : propertiesOf(span)) {
            if (isIgnoredOfSpans(property.name) && !shown.contains(property.value))
                warn(property.place, property.name);
        }
    }
    for (const Animation &animation : title.animations()) {
        const bool isOfSpan = isSpan(title.element(animation.target));
        const bool isPlace = animation.attribute == QLatin1String("x")
                || animation.attribute == QLatin1String("y");
        if (isOfSpan && (isPlace || isIgnoredOfSpans(animation.attribute)))
            warn(title.element(animation.element).placeOf(QStringLiteral("attributeName")),
                 animation.attribute);
    }
}

void findNestedSpans(const Understood &title, ProblemList &problems)
{
    for (const SourceElement &span : title.source().elements()) {
        const bool isNested = isSpan(span) && isSpan(title.element(span.parent));
        const bool hasLooks = std::any_of(
                span.attributes.begin(), span.attributes.end(), [](const SourceAttribute &a) {
                    return a.name != QLatin1String("id") && !a.name.contains(QLatin1Char(':'));
                });
        if (isNested && hasLooks)
            problems.warn("text-run", span.place,
                          QStringLiteral("a tspan inside a tspan looks like the outer one"),
                          QStringLiteral("Put it beside the other one."));
    }
}

bool isVisiblePaint(const QString &paint)
{
    return !paint.isEmpty() && paint != QLatin1String("none")
            && paint != QLatin1String("transparent");
}

double pixelsOf(QString size)
{
    return size.remove(QLatin1String("px")).toDouble();
}

// The renderer scales a text from a font-size of 100, its outline included.
void findOutlines(const Understood &title, ProblemList &problems)
{
    constexpr double plainSize = 100.0;
    const QString stroke = QStringLiteral("stroke");
    const StyledValues values(title);
    for (int number = 0; number < int(title.source().elements().size()); ++number) {
        const SourceElement &element = title.element(number);
        const bool isOutlinedText =
                isText(element) && isVisiblePaint(values.inherited(number, stroke));
        const bool isOutlinedSpan = isSpan(element) && isVisiblePaint(values.own(number, stroke));
        if (!isOutlinedText && !isOutlinedSpan)
            continue;
        const QString fill = values.inherited(number, QStringLiteral("fill"));
        if (isOutlinedText && fill == QLatin1String("none"))
            problems.warn("text-outline", element.place,
                          QStringLiteral("letters that have a stroke and no fill are filled with "
                                         "the stroke"),
                          QStringLiteral("Convert the text to paths."));
        else if (pixelsOf(values.inherited(number, QStringLiteral("font-size"))) != plainSize)
            problems.warn("text-outline", element.place,
                          QStringLiteral("the stroke of a text is drawn in hundredths of its "
                                         "font-size, not in pixels"),
                          QStringLiteral("Convert the text to paths, or write stroke-width * 100 / "
                                         "font-size."));
    }
}

// A space that does not break counts as any other.
void findWideSpaces(const Understood &title, ProblemList &problems)
{
    for (const SourceText &text : title.source().texts()) {
        bool isPreserved = false;
        for (int number = text.element; number != SourceElement::none && !isPreserved;
             number = title.element(number).parent)
            isPreserved = title.element(number).value(QStringLiteral("xml:space"))
                    == QLatin1String("preserve");
        if (text.hasWideSpaces && !isPreserved)
            problems.warn("text-spacing", title.element(text.element).place,
                          QStringLiteral("several spaces count as one, also those that do not "
                                         "break"),
                          QStringLiteral("Add xml:space=\"preserve\"."));
    }
}

} // namespace

const std::vector<Check> &textChecks()
{
    static const std::vector<Check> checks{findMovedSpans,  findMovedLetters, findSpansShownAnyway,
                                           findNestedSpans, findOutlines,     findWideSpaces};
    return checks;
}
