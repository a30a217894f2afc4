// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Properties.h"
#include "Understood.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <map>
#include <set>

// CSS: what the renderer does not read, and what loses against an attribute.

namespace {

// The renderer prefers an attribute to the element's "style" and to rules.
void findStylesThatLose(const Understood &title, ProblemList &problems)
{
    const StyledValues values(title);
    const int count = int(title.source().elements().size());
    const auto warn = [&](const SourceElement &element, const QString &name) {
        problems.warn("style-loses", element.placeOf(name),
                      QStringLiteral("the attribute %1 is drawn, and in a browser the other value "
                                     "that the style gives")
                              .arg(name),
                      QStringLiteral("Remove one of the two."));
    };
    for (int number = 0; number < count; ++number) {
        const SourceElement &element = title.element(number);
        if (isAnimationElement(element))
            continue;
        std::set<QString> told;
        for (const Property &property : propertiesOf(element)) {
            const SourceAttribute *const attribute = element.attribute(property.name);
            if (property.origin == Property::Origin::Style && attribute
                && attribute->value.trimmed() != property.value
                && told.insert(property.name).second)
                warn(element, property.name);
        }
        const QHash<QString, QString> ruled = values.ofRules(number);
        for (const SourceAttribute &attribute : element.attributes) {
            const QString value = ruled.value(attribute.name);
            if (!value.isEmpty() && value != attribute.value.trimmed()
                && told.insert(attribute.name).second)
                warn(element, attribute.name);
        }
    }
}

// The renderer reads these of one origin at a time: any of an element's own takes the place of all
// that rules give it.
const std::vector<QStringList> &groupsOfProperties()
{
    static const std::vector<QStringList> groups{
            {QStringLiteral("fill"), QStringLiteral("fill-opacity"), QStringLiteral("fill-rule")},
            {QStringLiteral("stroke"), QStringLiteral("stroke-width"),
             QStringLiteral("stroke-opacity"), QStringLiteral("stroke-dasharray"),
             QStringLiteral("stroke-dashoffset"), QStringLiteral("stroke-linecap"),
             QStringLiteral("stroke-linejoin"), QStringLiteral("stroke-miterlimit"),
             QStringLiteral("vector-effect")},
            {QStringLiteral("font-family"), QStringLiteral("font-size"),
             QStringLiteral("font-style"), QStringLiteral("font-weight"),
             QStringLiteral("font-variant"), QStringLiteral("text-anchor")}};
    return groups;
}

// Whether a value is the one that an element has without it.
bool isSameWithout(const StyledValues &values, const SourceElement &element, const QString &name,
                   const QString &value)
{
    static const QHash<QString, QStringList> initial{
            {QStringLiteral("fill"),
             {QStringLiteral("#000"), QStringLiteral("#000000"), QStringLiteral("black")}},
            {QStringLiteral("fill-opacity"), {QStringLiteral("1")}},
            {QStringLiteral("fill-rule"), {QStringLiteral("nonzero")}},
            {QStringLiteral("stroke"), {QStringLiteral("none")}},
            {QStringLiteral("stroke-width"), {QStringLiteral("1"), QStringLiteral("1px")}},
            {QStringLiteral("stroke-opacity"), {QStringLiteral("1")}},
            {QStringLiteral("stroke-dasharray"), {QStringLiteral("none")}},
            {QStringLiteral("stroke-dashoffset"), {QStringLiteral("0")}},
            {QStringLiteral("stroke-linecap"), {QStringLiteral("butt")}},
            {QStringLiteral("stroke-linejoin"), {QStringLiteral("miter")}},
            {QStringLiteral("vector-effect"), {QStringLiteral("none")}},
            {QStringLiteral("font-style"), {QStringLiteral("normal")}},
            {QStringLiteral("font-weight"), {QStringLiteral("normal"), QStringLiteral("400")}},
            {QStringLiteral("font-variant"), {QStringLiteral("normal")}},
            {QStringLiteral("text-anchor"), {QStringLiteral("start")}}};
    if (name == QLatin1String("stroke-miterlimit") || value == QLatin1String("inherit"))
        return true;
    const QString around = values.inherited(element.parent, name);
    return around.isEmpty() ? initial.value(name).contains(value.toLower()) : around == value;
}

// What of a group an element has itself or by an animation, and where.
QHash<QString, Place> ownOfGroup(const Understood &title, int number, const QStringList &group,
                                 const std::multimap<int, const Animation *> &animations)
{
    QHash<QString, Place> own;
    for (const Property &property : propertiesOf(title.element(number))) {
        if (group.contains(property.name) && !property.value.isEmpty())
            own.insert(property.name, property.place);
    }
    const auto [first, last] = animations.equal_range(number);
    for (auto animation = first; animation != last; ++animation) {
        const QString &name = animation->second->attribute;
        if (group.contains(name) && !own.contains(name))
            own.insert(name,
                       title.element(animation->second->element)
                               .placeOf(QStringLiteral("attributeName")));
    }
    return own;
}

void findRulesThatAreLost(const Understood &title, ProblemList &problems)
{
    const StyledValues values(title);
    std::multimap<int, const Animation *> animations; // by the element that they animate
    for (const Animation &animation : title.animations()) {
        if (animation.player == Animation::Player::Document)
            animations.emplace(animation.target, &animation);
    }
    for (int number = 0; number < int(title.source().elements().size()); ++number) {
        const QHash<QString, QString> ruled = values.ofRules(number);
        if (ruled.isEmpty() || isAnimationElement(title.element(number)))
            continue;
        for (const QStringList &group : groupsOfProperties()) {
            const QHash<QString, Place> own = ownOfGroup(title, number, group, animations);
            const auto lost = std::find_if(group.begin(), group.end(), [&](const QString &name) {
                return ruled.contains(name) && !own.contains(name)
                        && !isSameWithout(values, title.element(number), name, ruled.value(name));
            });
            const auto other =
                    std::find_if(group.begin(), group.end(),
                                 [&own](const QString &name) { return own.contains(name); });
            if (lost == group.end() || other == group.end())
                continue;
            problems.warn("style-loses", own.value(*other),
                          QStringLiteral("the %1 of the style sheet is lost, because the element "
                                         "has a %2 of its own")
                                  .arg(*lost, *other),
                          QStringLiteral("Write both as attributes of the element."));
        }
    }
}

// The renderer stops to read a style sheet at what it does not understand.
QString restMayBeLost()
{
    return QStringLiteral(", and the rules after it may be lost");
}

void findUnreadSelectors(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression pointer(QStringLiteral(":(hover|active|focus|visited)\\b"));
    static const QRegularExpression attribute(QStringLiteral("\\[\\s*(?!(id|class)\\b)"));
    for (const SourcePlaces::StyleSheet &sheet : title.source().styleSheets()) {
        for (const StyleRules::Rule &rule : sheet.rules.rules()) {
            for (const QString &selector : rule.selectors) {
                const bool isUnread = selector == QLatin1String("svg")
                        || selector.contains(attribute)
                        || (selector.contains(QLatin1Char(':')) && !selector.contains(pointer));
                if (isUnread)
                    problems.warn("style-sheet", sheet.place,
                                  QStringLiteral("the selector %1 selects nothing%2")
                                          .arg(selector.left(40),
                                               selector.contains(QLatin1Char('(')) ? restMayBeLost()
                                                                                   : QString()),
                                  QStringLiteral("Give the elements a class, and the rule a "
                                                 "selector of that class."));
            }
        }
    }
}

// "@import" is told of as an external reference, "@keyframes" where an animation names it.
void findUnreadAtRules(const Understood &title, ProblemList &problems)
{
    static const QStringList harmless{QStringLiteral("@charset"), QStringLiteral("@import"),
                                      QStringLiteral("@keyframes"),
                                      QStringLiteral("@-webkit-keyframes")};
    for (const SourcePlaces::StyleSheet &sheet : title.source().styleSheets()) {
        for (const QString &name : sheet.rules.atRules()) {
            if (name == QLatin1String("@font-face"))
                problems.warn("style-sheet", sheet.place,
                              QStringLiteral("fonts of a style sheet are not loaded"),
                              QStringLiteral("Install the font on the machine, or convert the text "
                                             "to paths."));
            else if (!harmless.contains(name))
                problems.warn("style-sheet", sheet.place,
                              QStringLiteral("what stands in %1 is ignored").arg(name)
                                      + restMayBeLost(),
                              QStringLiteral("Write the rules without it."));
        }
    }
}

void findCustomProperties(const Understood &title, ProblemList &problems)
{
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        if (property.origin == Property::Origin::Sheet
            && property.name.startsWith(QLatin1String("--")))
            problems.warn("style-sheet", property.place,
                          QStringLiteral("the property %1 is not read").arg(property.name.left(40))
                                  + restMayBeLost(),
                          QStringLiteral("Write the value where it is used."));
    });
}

// A style sheet applies to what stands after it.
void findLateStyleSheets(const Understood &title, ProblemList &problems)
{
    const StyledValues values(title);
    std::set<int> late;
    for (int number = 1; number < int(title.source().elements().size()); ++number) {
        for (const int sheet : values.sheetsFor(number)) {
            if (sheet > number)
                late.insert(sheet);
        }
    }
    for (const int sheet : late)
        problems.warn("style-sheet", title.element(sheet).place,
                      QStringLiteral("the style sheet applies only to what stands after it"),
                      QStringLiteral("Make it the first element of the title."));
}

void findImportantDeclarations(const Understood &title, ProblemList &problems)
{
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        if (property.isImportant && property.origin == Property::Origin::Style)
            problems.warn("style", property.place,
                          QStringLiteral("the declaration of %1 is ignored because of its "
                                         "!important")
                                  .arg(property.name),
                          QStringLiteral("Leave !important out."));
    });
}

void findCalculations(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression calculation(QStringLiteral("\\b(var|calc)\\("));
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        if (property.value.contains(QLatin1Char('(')) && property.value.contains(calculation))
            problems.warn("style", property.place,
                          QStringLiteral("var() and calc() are not worked out, so %1 is ignored")
                                  .arg(property.name),
                          QStringLiteral("Write the value itself."));
    });
}

// Places and sizes are read from attributes only.
void findStyledGeometry(const Understood &title, ProblemList &problems)
{
    static const QStringList names{QStringLiteral("x"),     QStringLiteral("y"),
                                   QStringLiteral("width"), QStringLiteral("cx"),
                                   QStringLiteral("cy"),    QStringLiteral("height"),
                                   QStringLiteral("r"),     QStringLiteral("rx"),
                                   QStringLiteral("ry"),    QStringLiteral("d")};
    lookAtProperties(title, [&](const SourceElement &element, const Property &property) {
        if (property.origin != Property::Origin::Attribute && names.contains(property.name)
            && element.parent != SourceElement::none)
            problems.warn("style", property.place,
                          QStringLiteral("%1 is read from an attribute only, not from a style")
                                  .arg(property.name),
                          QStringLiteral("Write it as an attribute."));
    });
}

// CSS takes lengths and angles with units only, unless they are 0, and commas between numbers.
bool isRefusedByCss(const QString &transform)
{
    static const QRegularExpression function(QStringLiteral("(\\w+)\\s*\\(([^)]*)\\)"));
    static const QRegularExpression needsUnits(QStringLiteral("^(translate|rotate|skew)"));
    static const QRegularExpression withoutComma(QStringLiteral("[0-9.]\\s+[-+0-9.]"));
    auto functions = function.globalMatch(transform);
    while (functions.hasNext()) {
        const QRegularExpressionMatch match = functions.next();
        const QString numbers = match.captured(2);
        if (numbers.contains(withoutComma))
            return true;
        for (const QString &number : numbers.split(QLatin1Char(','))) {
            if (match.captured(1).contains(needsUnits) && number.toDouble() != 0.0)
                return true;
        }
    }
    return false;
}

// The renderer reads a transform as SVG attributes have it.
void findStyledTransforms(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression cssOnly(
            QStringLiteral("[0-9.](px|deg|rad|turn|em|%)|(translate|scale|rotate)(X|Y|Z|3d)\\("
                           "|perspective|matrix3d"));
    lookAtProperties(title, [&](const SourceElement &, const Property &property) {
        if (property.origin == Property::Origin::Attribute
            || property.name != QLatin1String("transform"))
            return;
        const QString remedy = QStringLiteral("Write an attribute such as transform=\"translate(40 "
                                              "20) rotate(30)\".");
        if (property.value.contains(cssOnly))
            problems.warn("style", property.place,
                          QStringLiteral("a transform with units or CSS functions is ignored"),
                          remedy);
        else if (isRefusedByCss(property.value))
            problems.warn("style", property.place,
                          QStringLiteral("a transform in a style needs units and commas; a browser "
                                         "ignores this one"),
                          remedy);
    });
}

// A background belongs to the page that shows a title.
void findBackgrounds(const Understood &title, ProblemList &problems)
{
    lookAtProperties(title, [&](const SourceElement &element, const Property &property) {
        if (property.origin == Property::Origin::Style && element.parent == SourceElement::none
            && property.name.startsWith(QLatin1String("background")))
            problems.warn("not-drawn", property.place,
                          QStringLiteral("%1 of the root is not drawn").arg(property.name),
                          QStringLiteral("Draw a rect of the size of the view box."));
    });
}

} // namespace

const std::vector<Check> &styleChecks()
{
    static const std::vector<Check> checks{
            findStylesThatLose,   findRulesThatAreLost, findUnreadSelectors,
            findUnreadAtRules,    findCustomProperties, findLateStyleSheets,
            findCalculations,     findStyledGeometry,   findImportantDeclarations,
            findStyledTransforms, findBackgrounds};
    return checks;
}
