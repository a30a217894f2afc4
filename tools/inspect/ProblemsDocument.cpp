// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

// The document as a whole: its size, its structure, and what saving does to it.

namespace {

bool isSvg(const SourceElement &element)
{
    return withoutPrefix(element.name) == QLatin1String("svg");
}

const SourceElement &rootOf(const Understood &title)
{
    return title.source().elements().front();
}

QString reasonForNoSize(const SourceElement &root, const QString &viewBox)
{
    static const QRegularExpression otherWhiteSpace(QStringLiteral("[\\n\\r\\t]"));
    if (root.name != QLatin1String("svg"))
        return QStringLiteral("a root with a prefix (%1) has no view box").arg(root.name);
    if (!root.attribute(QStringLiteral("viewBox")))
        return QStringLiteral("the root has no viewBox");
    if (viewBox.contains(otherWhiteSpace))
        return QStringLiteral("a line break or tab separates no numbers of the viewBox");
    if (viewBox.contains(QLatin1Char('.')))
        return QStringLiteral("a fraction in the viewBox counts as 0");
    return QStringLiteral("the viewBox is not four whole numbers with a width and a height");
}

void findMissingSize(const Understood &title, ProblemList &problems)
{
    if (!title.size().isEmpty())
        return;
    const SourceElement &root = rootOf(title);
    const QString viewBox = title.treeElement(0).attribute(QStringLiteral("viewBox"));
    problems.warn("view-box", root.placeOf(QStringLiteral("viewBox")),
                  reasonForNoSize(root, viewBox)
                          + QStringLiteral("; the title has no size and is not drawn"),
                  QStringLiteral("Write <svg viewBox=\"0 0 1920 1080\"> with whole numbers on one "
                                 "line and no prefix."));
}

// A title has the shape of its view box.
void findStretchedRoots(const Understood &title, ProblemList &problems)
{
    constexpr double tolerance = 0.02;
    const SourceElement &root = rootOf(title);
    const QString name = QStringLiteral("preserveAspectRatio");
    const auto pixels = [&root](const char *length) {
        return root.value(QLatin1String(length)).remove(QLatin1String("px")).toDouble();
    };
    const double width = pixels("width");
    const double height = pixels("height");
    const QSizeF size = title.size();
    if (root.value(name).trimmed() == QLatin1String("none") && width > 0.0 && height > 0.0
        && !size.isEmpty()
        && qAbs(size.width() * height / (size.height() * width) - 1.0) > tolerance)
        problems.warn("stretched", root.placeOf(name),
                      QStringLiteral("the title keeps the ratio of its viewBox, and a browser "
                                     "stretches it to %1 x %2")
                              .arg(width)
                              .arg(height),
                      QStringLiteral("Write a viewBox of the width and height, and a g element "
                                     "with a scale around everything."));
}

// Drawing ends at the first end tag.
void findNestedRoots(const Understood &title, ProblemList &problems)
{
    const std::vector<SourceElement> &elements = title.source().elements();
    for (std::size_t number = 1; number < elements.size(); ++number) {
        if (isSvg(elements[number]))
            problems.warn("nested-svg", elements[number].place,
                          QStringLiteral("drawing ends at the end tag of a nested svg"),
                          QStringLiteral("Use a g element with a transform."));
    }
}

// The renderer draws them, but the document plays nothing in them.
void findPrefixes(const Understood &title, ProblemList &problems)
{
    static const QSet<QString> names{QStringLiteral("animate"),
                                     QStringLiteral("animateColor"),
                                     QStringLiteral("animateTransform"),
                                     QStringLiteral("clipPath"),
                                     QStringLiteral("defs"),
                                     QStringLiteral("use")};
    for (const SourceElement &element : title.source().elements()) {
        const int colon = element.name.indexOf(QLatin1Char(':'));
        if (colon >= 0 && names.contains(element.name.mid(colon + 1)))
            problems.warn(
                    "prefix", element.place,
                    QStringLiteral("%1 is not recognised because of its prefix").arg(element.name),
                    QStringLiteral("Make SVG the default namespace and leave the prefix "
                                   "out."));
    }
}

// Other programs take a text without it for some other XML.
void findMissingNamespaces(const Understood &title, ProblemList &problems)
{
    const SourceElement &root = rootOf(title);
    const bool hasPrefix = root.name.contains(QLatin1Char(':'));
    if (!hasPrefix
        && root.value(QStringLiteral("xmlns")) != QLatin1String("http://www.w3.org/2000/svg"))
        problems.note("namespace", root.placeOf(QStringLiteral("xmlns")),
                      QStringLiteral("the root is not in the namespace of SVG; a browser draws "
                                     "nothing"),
                      QStringLiteral("Write <svg xmlns=\"http://www.w3.org/2000/svg\" ...>."));
    bool isDeclared = false;
    for (const SourceElement &element : title.source().elements()) {
        isDeclared |= element.attribute(QStringLiteral("xmlns:xlink")) != nullptr;
        const SourceAttribute *const href = element.attribute(QStringLiteral("xlink:href"));
        if (!href || isDeclared)
            continue;
        problems.note("namespace", href->place,
                      QStringLiteral("the prefix xlink is not declared; a browser refuses the "
                                     "title"),
                      QStringLiteral("Write <svg xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
                                     "...>."));
        return;
    }
}

// A browser draws nothing of an element that it does not know, the renderer what stands in it.
void findUnknownElements(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression known(QStringLiteral(
            "^(svg|g|defs|symbol|use|a|switch|view|title|desc|metadata|style|script|image"
            "|foreignObject|path|rect|circle|ellipse|line|polyline|polygon|text|tspan|textPath|tref"
            "|linearGradient|radialGradient|stop|solidColor|pattern|clipPath|mask|marker|filter"
            "|fe[A-Z]\\w*|set|animate\\w*|mpath|discard|cursor|hatch|hatchpath|mesh\\w*|font\\w*"
            "|font-face.*|glyph\\w*|missing-glyph|altGlyph\\w*|[hv]kern|color-profile|textArea"
            "|tbreak|audio|video|iframe|canvas|prefetch|handler|listener|animation|flow\\w*)$"));
    const std::vector<SourceElement> &elements = title.source().elements();
    std::vector<bool> isForeign(elements.size(), false); // inside another document's content
    for (std::size_t number = 1; number < elements.size(); ++number) {
        const SourceElement &element = elements[number];
        const auto parent = std::size_t(element.parent);
        isForeign[number] = isForeign[parent] || elements[parent].name == QLatin1String("metadata")
                || elements[parent].name == QLatin1String("foreignObject")
                || element.name.contains(QLatin1Char(':'));
        if (isForeign[number] || element.name.contains(known))
            continue;
        isForeign[number] = true;
        problems.warn("unknown-element", element.place,
                      QStringLiteral("there is no SVG element %1; shapes in it are drawn, and in a "
                                     "browser they are not")
                              .arg(title.label(int(number))),
                      QStringLiteral("Correct its name, in capital and small letters, or use a g "
                                     "element."));
    }
}

// What a test of features stands for.
void findConditions(const Understood &title, ProblemList &problems)
{
    for (const SourceElement &element : title.source().elements()) {
        if (element.parent == SourceElement::none)
            continue;
        const bool isChoice = title.element(element.parent).name == QLatin1String("switch");
        const SourceAttribute *const features =
                element.attribute(QStringLiteral("requiredFeatures"));
        if (isChoice && features)
            problems.warn("condition", features->place,
                          QStringLiteral("requiredFeatures never holds, so the switch passes the "
                                         "element over"),
                          QStringLiteral("Leave requiredFeatures out."));
        for (const char *name : {"requiredExtensions", "systemLanguage"}) {
            const SourceAttribute *const condition = element.attribute(QLatin1String(name));
            if (condition && !isChoice)
                problems.warn("condition", condition->place,
                              QStringLiteral("%1 counts in a switch only; the element is always "
                                             "drawn")
                                      .arg(condition->name),
                              QStringLiteral("Put a switch element around it."));
        }
    }
}

void findEventHandlers(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression handler(QStringLiteral("^on[a-z]+$"));
    for (const SourceElement &element : title.source().elements()) {
        for (const SourceAttribute &attribute : element.attributes) {
            if (attribute.name.startsWith(QLatin1String("on")) && attribute.name.contains(handler))
                problems.warn("not-drawn", attribute.place,
                              QStringLiteral("scripts do not run, that in %1 included")
                                      .arg(attribute.name),
                              QStringLiteral("Use animate elements."));
        }
    }
}

void findRepeatedIds(const Understood &title, ProblemList &problems)
{
    const std::vector<SourceElement> &elements = title.source().elements();
    for (int number = 0; number < int(elements.size()); ++number) {
        const SourceElement &element = elements[std::size_t(number)];
        const QString id = element.value(QStringLiteral("id"));
        if (!id.isEmpty() && title.elementWithId(id) != number)
            problems.note(
                    "repeated-id", element.placeOf(QStringLiteral("id")),
                    QStringLiteral("the id \"%1\" is that of an earlier element, too").arg(id),
                    QStringLiteral("Give each element an id of its own."));
    }
}

void findUndefinedEntities(const Understood &title, ProblemList &problems)
{
    for (const SourcePlaces::Entity &entity : title.source().undefinedEntities())
        problems.warn("undefined-entity", entity.place,
                      QStringLiteral("the title does not define the entity %1; nothing is drawn "
                                     "once the title has been saved, as for every animated frame")
                              .arg(entity.name),
                      QStringLiteral("Write the character itself."));
}

void findDocumentType(const Understood &title, ProblemList &problems)
{
    if (const std::optional<Place> place = title.source().documentType())
        problems.note("document-type", *place, QStringLiteral("saving drops the document type"),
                      QStringLiteral("Remove it; write characters instead of entities."));
}

} // namespace

const std::vector<Check> &documentChecks()
{
    static const std::vector<Check> checks{
            findMissingSize, findStretchedRoots,    findMissingNamespaces, findNestedRoots,
            findPrefixes,    findUnknownElements,   findConditions,        findEventHandlers,
            findRepeatedIds, findUndefinedEntities, findDocumentType};
    return checks;
}
