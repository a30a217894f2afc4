// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <map>
#include <set>
#include <utility>

// What the picture will not show, or shows otherwise.

namespace {

struct Unsupported
{
    const char *name;
    const char *reason;
    const char *remedy;
};

const std::vector<Unsupported> &unsupportedElements()
{
    static const std::vector<Unsupported> elements{
            {"mask", "masks do not mask; what stands in one outside of defs is drawn",
             "Cover what should not be seen, or draw only the rest."},
            {"filter", "filters are not drawn", "Draw shadows and glows as shapes with gradients."},
            {"pattern", "patterns are not drawn; what stands in one outside of defs is drawn",
             "Repeat the shapes by use elements."},
            {"marker", "markers are not drawn; what stands in one outside of defs is drawn",
             "Draw the shapes where the markers would be."},
            {"symbol", "symbols can't be used; what stands in one outside of defs is drawn",
             "Use a g element inside defs."},
            {"foreignObject", "foreign content is not drawn, and its shapes are drawn as usual",
             "Use SVG elements."},
            {"script", "scripts do not run", "Use animate elements."},
            {"textPath", "text on a path is not drawn", "Use a text for each letter."},
            {"view", "views are ignored", "Set the viewBox of the root."},
            {"flowRoot", "flowed text is not drawn, and the shape of its region is",
             "Use a text element for each line."},
            {"discard", "discard elements remove nothing", "Animate display or opacity."},
    };
    return elements;
}

const std::vector<Unsupported> &unsupportedProperties()
{
    static const std::vector<Unsupported> properties{
            {"clip-path",
             "nothing is clipped by clip-path: the shapes in clip paths erase the whole title",
             "Remove it and the clipPath, and draw only what should be seen, or cover the rest."},
            {"mask", "masks do not mask", "Cover what should not be seen, or draw only the rest."},
            {"filter", "filters are not drawn", "Draw shadows and glows as shapes with gradients."},
            {"marker", "markers are not drawn", "Draw the shapes where the markers would be."},
            {"marker-start", "markers are not drawn",
             "Draw the shapes where the markers would be."},
            {"marker-mid", "markers are not drawn", "Draw the shapes where the markers would be."},
            {"marker-end", "markers are not drawn", "Draw the shapes where the markers would be."},
            {"mix-blend-mode", "blend modes are not drawn", "Choose colours that need none."},
            {"transform-origin", "transform-origin is ignored",
             "Write the origin into the transform, such as rotate(45 10 10)."},
            {"paint-order", "paint-order is ignored", "Draw stroke and fill by two elements."},
            {"letter-spacing", "letter-spacing is ignored", "Use a text for each letter."},
            {"word-spacing", "word-spacing is ignored", "Use a text for each word."},
            {"textLength", "textLength is ignored", "Choose a fitting font-size."},
            {"text-decoration", "text-decoration is not drawn", "Draw the line as a shape."},
            {"baseline-shift", "baseline-shift is ignored", "Use a text of its own."},
            {"dominant-baseline", "dominant-baseline is ignored", "Change y instead."},
            {"writing-mode", "writing-mode is ignored", "Use a text for each letter."},
            {"text-transform", "text-transform is ignored", "Write the letters as they should be."},
            {"font-variant", "font-variant is ignored", "Write capitals in a smaller font-size."},
            {"font-stretch", "font-stretch is ignored", "Name a narrow or wide font family."},
            {"font", "the short form of fonts is ignored",
             "Write font-family, font-size, font-weight and font-style."},
            {"direction", "direction is ignored", "Change x and text-anchor instead."},
            {"shape-inside", "text does not flow, and is drawn on one line",
             "Use a text element for each line."},
            {"inline-size", "text does not flow, and is drawn on one line",
             "Use a text element for each line."},
            {"pathLength", "pathLength is ignored: dashes count in pixels",
             "Write the dashes in pixels."},
            {"offset-path", "motion paths do not play", "Use animateTransform elements."},
            {"animation", "CSS animations do not play", "Use animate elements."},
            {"animation-name", "CSS animations do not play", "Use animate elements."},
            {"transition", "CSS transitions do not play", "Use animate elements."},
    };
    return properties;
}

const Unsupported *unsupported(const std::vector<Unsupported> &known, const QString &name)
{
    const auto found = std::find_if(known.begin(), known.end(), [&](const Unsupported &entry) {
        return name == QLatin1String(entry.name);
    });
    return found == known.end() ? nullptr : &*found;
}

// In a "switch" no browser shows what needs an extension either.
bool isPassedOver(const SourceElement &element)
{
    return !element.value(QStringLiteral("requiredExtensions")).isEmpty();
}

void findUnsupportedElements(const Understood &title, ProblemList &problems)
{
    for (const SourceElement &element : title.source().elements()) {
        const Unsupported *const found =
                unsupported(unsupportedElements(), withoutPrefix(element.name));
        if (found && !isPassedOver(element))
            problems.warn("not-drawn", element.place, QString::fromLatin1(found->reason),
                          QString::fromLatin1(found->remedy));
    }
}

// A value with which a property makes no difference.
bool isHarmless(const QString &value)
{
    static const QRegularExpression harmless(
            QStringLiteral("^(|none( .*)?|normal|auto|initial|baseline|alphabetic|ltr|lr|lr-tb"
                           "|horizontal-tb|[-+]?0(\\.0*)?(px|em|pt|%|s)?( 0(px|%|s)?)*)$"));
    return value.contains(harmless);
}

void findUnsupportedProperties(const Understood &title, ProblemList &problems)
{
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        const Unsupported *const found = unsupported(unsupportedProperties(), property.name);
        if (found && !isHarmless(property.value))
            problems.warn("not-drawn", property.place, QString::fromLatin1(found->reason),
                          QString::fromLatin1(found->remedy));
    });
    for (const Animation &animation : title.animations()) {
        if (const Unsupported *const found =
                    unsupported(unsupportedProperties(), animation.attribute))
            problems.warn("not-drawn",
                          title.element(animation.element).placeOf(QStringLiteral("attributeName")),
                          QString::fromLatin1(found->reason), QString::fromLatin1(found->remedy));
    }
}

// The clip path around each element; none is there for most.
std::vector<int> clipPathsAround(const Understood &title)
{
    std::vector<int> result;
    for (const SourceElement &element : title.source().elements()) {
        const int parent = element.parent;
        const bool isInside = parent != SourceElement::none
                && title.element(parent).name != QLatin1String("clipPath");
        result.push_back(isInside ? result[std::size_t(parent)] : parent);
    }
    return result;
}

// The clip paths with shapes, and whether some of them move.
std::map<int, bool> clipPathsThatErase(const Understood &title)
{
    static const QStringList shapes{QStringLiteral("rect"),     QStringLiteral("circle"),
                                    QStringLiteral("ellipse"),  QStringLiteral("line"),
                                    QStringLiteral("polygon"),  QStringLiteral("path"),
                                    QStringLiteral("polyline"), QStringLiteral("text"),
                                    QStringLiteral("image"),    QStringLiteral("use")};
    const std::vector<int> around = clipPathsAround(title);
    std::map<int, bool> result;
    for (std::size_t number = 0; number < around.size(); ++number) {
        if (around[number] != SourceElement::none
            && shapes.contains(title.element(int(number)).name))
            result.emplace(around[number], false);
    }
    for (const Animation &animation : title.animations()) {
        const auto found = result.find(around[std::size_t(animation.element)]);
        if (found != result.end() && animation.isPlayed())
            found->second = true;
    }
    return result;
}

// Those that are referred to are told of where that is. One with animations can't be meant for
// browsers, and nothing else uncovers a title bit by bit.
void findHoles(const Understood &title, ProblemList &problems)
{
    QSet<QString> used;
    lookAtProperties(title, [&used](const SourceElement &, const Property &property) {
        for (const QString &id : idsOfUrls(property.value))
            used.insert(id);
    });
    for (const auto &[number, moves] : clipPathsThatErase(title)) {
        const SourceElement &element = title.element(number);
        if (!moves && !used.contains(element.value(QStringLiteral("id"))))
            problems.warn("hole", element.place,
                          QStringLiteral("the shapes in a clipPath erase the title, and a browser "
                                         "ignores one that nothing refers to"),
                          QStringLiteral("Delete it; draw what should have a hole as one path with "
                                         "fill-rule=\"evenodd\"."));
    }
}

// It is drawn on whatever is below the title.
void findCompositions(const Understood &title, ProblemList &problems)
{
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        if (property.name == QLatin1String("comp-op")
            && property.value != QLatin1String("src-over"))
            problems.warn("comp-op", property.place,
                          QStringLiteral("comp-op also changes what lies below the title, and a "
                                         "browser ignores it"),
                          QStringLiteral("Choose colours and opacities that need none."));
    });
}

// A list is taken for the name of one family.
void findFontLists(const Understood &title, ProblemList &problems)
{
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        if (property.name == QLatin1String("font-family")
            && property.value.contains(QLatin1Char(',')))
            problems.warn("font-list", property.place,
                          QStringLiteral("a list of font families is taken for the name of one"),
                          QStringLiteral("Name one family that the machine has."));
    });
}

bool isLink(const SourceElement &element)
{
    return withoutPrefix(element.name) == QLatin1String("a");
}

bool isReferenceName(const QString &name)
{
    return name == QLatin1String("href") || name == QLatin1String("xlink:href");
}

void findExternalReferences(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression foreignUrl(
            QStringLiteral("url\\(\\s*[\"']?\\s*(?!#|[\"']|data:)[^)\\s]"));
    const QString remedy =
            QStringLiteral("Put what it refers to into the title; pictures as base64 PNG or JPEG.");
    for (const SourceElement &element : title.source().elements()) {
        for (const SourceAttribute &attribute : element.attributes) {
            const QString value = attribute.value.trimmed();
            const bool isForeign = isReferenceName(attribute.name) && !isLink(element)
                    && !value.isEmpty() && !value.startsWith(QLatin1Char('#'))
                    && !value.startsWith(QLatin1String("data:"));
            const bool isForeignUrl =
                    value.contains(QLatin1String("url(")) && value.contains(foreignUrl);
            if (isForeign || isForeignUrl)
                problems.warn(
                        "external", attribute.place,
                        QStringLiteral("nothing outside the title is read: %1 refers to \"%2\"")
                                .arg(attribute.name, value.left(60)),
                        remedy);
        }
    }
    for (const Place &place : title.source().styleInstructions())
        problems.warn("external", place,
                      QStringLiteral("nothing outside the title is read: the style sheet is left "
                                     "out"),
                      QStringLiteral("Put its rules into style attributes."));
    for (const SourcePlaces::StyleSheet &sheet : title.source().styleSheets()) {
        if (sheet.text.contains(foreignUrl) || sheet.text.contains(QLatin1String("@import")))
            problems.warn("external", sheet.place,
                          QStringLiteral("nothing outside the title is read, and the style sheet "
                                         "refers to something"),
                          remedy);
    }
}

// An embedded picture that the library has taken out.
void findLostPictures(const Understood &title, ProblemList &problems)
{
    const QString href = QStringLiteral("xlink:href");
    const std::vector<SourceElement> &elements = title.source().elements();
    for (int number = 0; number < int(elements.size()); ++number) {
        const SourceElement &element = elements[std::size_t(number)];
        const QString value = element.value(href);
        if (withoutPrefix(element.name) == QLatin1String("image")
            && value.trimmed().startsWith(QLatin1String("data:"))
            && title.treeElement(number).attribute(href) != value)
            problems.warn("picture", element.placeOf(href),
                          QStringLiteral("the picture is left out: it is no PNG or JPEG, or too "
                                         "large"),
                          QStringLiteral("Embed a PNG or JPEG file as base64."));
    }
}

void findUnknownReferences(const Understood &title, ProblemList &problems)
{
    const auto check = [&](const SourceAttribute &attribute, const QString &id) {
        if (!title.elementWithId(id))
            problems.warn("unknown-id", attribute.place,
                          QStringLiteral("%1 refers to \"%2\", which is nothing in the title")
                                  .arg(attribute.name, id),
                          QStringLiteral("Give the id to an element, or correct the reference."));
    };
    for (const SourceElement &element : title.source().elements()) {
        for (const SourceAttribute &attribute : element.attributes) {
            for (const QString &id : idsOfUrls(attribute.value))
                check(attribute, id);
            const QString id = idOfReference(attribute.value);
            if (isReferenceName(attribute.name) && !id.isEmpty() && !isLink(element)
                && !isAnimationElement(element))
                check(attribute, id);
        }
    }
}

// The library and the renderer know the older name only, with its usual prefix.
void findPlainReferences(const Understood &title, ProblemList &problems)
{
    for (const SourceElement &element : title.source().elements()) {
        if (isLink(element) || isAnimationElement(element)
            || element.attribute(QStringLiteral("xlink:href")))
            continue;
        for (const SourceAttribute &attribute : element.attributes) {
            if (withoutPrefix(attribute.name) == QLatin1String("href"))
                problems.warn("plain-href", attribute.place,
                              QStringLiteral("%1 without the prefix xlink is ignored")
                                      .arg(attribute.name),
                              QStringLiteral("Write xlink:href."));
        }
    }
}

// Unless another check has said why.
void findLeftOut(const Understood &title, ProblemList &problems)
{
    for (const int number : title.leftOut()) {
        const SourceElement &element = title.element(number);
        if (!problems.isAbout(element))
            problems.warn("left-out", element.place,
                          QStringLiteral("the renderer can't read this %1 element and leaves it "
                                         "out")
                                  .arg(element.name),
                          QStringLiteral("Look for a missing attribute or a value that is not as "
                                         "SVG Tiny 1.2 has it."));
    }
}

// An animation takes back what a user has chosen.
void findAnimatedColors(const Understood &title, ProblemList &problems)
{
    std::set<std::pair<int, QString>> adjustable;
    for (const AdjustableColor &color : title.adjustableColors())
        adjustable.emplace(color.element, color.attribute);
    for (const Animation &animation : title.animations()) {
        if (animation.player == Animation::Player::Document
            && adjustable.count({animation.target, animation.attribute}) > 0)
            problems.note("adjusted-and-animated", title.element(animation.element).place,
                          QStringLiteral("a user's colour for this %1 is lost in the next frame, "
                                         "which shows the template's colours again")
                                  .arg(animation.attribute),
                          QStringLiteral("Move the colour into style, or animate the opacity of "
                                         "two elements of fixed colours."));
    }
}

void findIdleDefinitions(const Understood &title, ProblemList &problems)
{
    for (const Definition &definition : title.definitions()) {
        const int parent = title.element(definition.element).parent;
        const QString &name = title.element(definition.element).name;
        if (definition.users.empty() && title.element(parent).name == QLatin1String("defs")
            && name != QLatin1String("clipPath") && name != QLatin1String("style"))
            problems.note("idle-definition", title.element(definition.element).place,
                          QStringLiteral("nothing uses the definition %1")
                                  .arg(title.label(definition.element)),
                          QStringLiteral("Remove it."));
    }
}

} // namespace

const std::vector<Check> &drawingChecks()
{
    static const std::vector<Check> checks{findUnsupportedElements,
                                           findUnsupportedProperties,
                                           findHoles,
                                           findCompositions,
                                           findFontLists,
                                           findExternalReferences,

                                           findLostPictures,
                                           findUnknownReferences,
                                           findPlainReferences,
                                           findAnimatedColors,
                                           findLeftOut,
                                           findIdleDefinitions};
    return checks;
}
