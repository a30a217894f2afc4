// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Properties.h"

#include "Understood.h"

#include <QColor>
#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <map>
#include <utility>
#include <vector>

std::vector<Property> propertiesOf(const SourceElement &element)
{
    std::vector<Property> properties;
    for (const SourceAttribute &attribute : element.attributes) {
        if (attribute.name != QLatin1String("style")) {
            properties.push_back({attribute.name, attribute.value.trimmed(), attribute.place,
                                  Property::Origin::Attribute, false});
            continue;
        }
        for (const StyleDeclaration &declaration : declarationsIn(attribute.value))
            properties.push_back({declaration.name, declaration.value, attribute.place,
                                  Property::Origin::Style, declaration.isImportant});
    }
    return properties;
}

Place placeOfProperty(const SourceElement &element, const QString &name)
{
    for (const Property &property : propertiesOf(element)) {
        if (property.name == name)
            return property.place;
    }
    return element.place;
}

void lookAtProperties(
        const Understood &title,
        const std::function<void(const SourceElement &element, const Property &property)> &look)
{
    for (const SourceElement &element : title.source().elements()) {
        for (const Property &property : propertiesOf(element))
            look(element, property);
    }
    for (const SourcePlaces::StyleSheet &sheet : title.source().styleSheets()) {
        for (const StyleRules::Rule &rule : sheet.rules.rules()) {
            for (const StyleDeclaration &declaration : rule.declarations)
                look(title.element(sheet.element),
                     {declaration.name, declaration.value, sheet.place, Property::Origin::Sheet,
                      declaration.isImportant});
        }
    }
}

std::vector<KeyText> keyTextsOf(const SourceElement &animation)
{
    const QString values = QStringLiteral("values");
    std::vector<KeyText> texts;
    if (animation.value(values).isEmpty()) {
        for (const char *name : {"from", "to"})
            texts.push_back({animation.value(QLatin1String(name)).trimmed(),
                             animation.placeOf(QLatin1String(name))});
        return texts;
    }
    for (const QString &text : animation.value(values).split(QLatin1Char(';')))
        texts.push_back({text.trimmed(), animation.placeOf(values)});
    return texts;
}

namespace {

// The part of a selector by which its rules are looked up.
QString keyOf(const SimpleSelector &selector)
{
    if (!selector.id.isEmpty())
        return QLatin1Char('#') + selector.id;
    return selector.classes.isEmpty() ? selector.type
                                      : QLatin1Char('.') + selector.classes.constFirst();
}

} // namespace

std::optional<KeyText> nameTakenForNumbers(const Understood &title, const Animation &animation)
{
    static const QStringList attributes{QStringLiteral("href"), QStringLiteral("class"),
                                        QStringLiteral("id"), QStringLiteral("font-family")};
    if (animation.player != Animation::Player::Document || animation.kind == Animation::Kind::Text)
        return std::nullopt;
    for (const KeyText &value : keyTextsOf(title.element(animation.element))) {
        if (attributes.contains(withoutPrefix(animation.attribute))
            || value.text.startsWith(QLatin1String("url(")))
            return value;
    }
    return std::nullopt;
}

StyledValues::StyledValues(const Understood &title) : m_title(title)
{
    int order = 0;
    for (const SourcePlaces::StyleSheet &sheet : title.source().styleSheets()) {
        for (const StyleRules::Rule &rule : sheet.rules.rules()) {
            for (const QString &text : rule.selectors) {
                if (const std::optional<SimpleSelector> selector = simpleSelector(text))
                    m_candidates[keyOf(*selector)].push_back(
                            {order++, sheet.element, *selector, &rule});
            }
        }
    }
}

std::vector<const StyledValues::Candidate *> StyledValues::rulesFor(int number) const
{
    if (m_candidates.isEmpty())
        return {};
    const SourceElement &element = m_title.element(number);
    const QStringList classes = classesOf(element);
    QStringList keys{QString(), element.name,
                     QLatin1Char('#') + element.value(QStringLiteral("id"))};
    for (const QString &name : classes)
        keys += QLatin1Char('.') + name;
    std::vector<const Candidate *> rules;
    for (const QString &key : keys) {
        const auto found = m_candidates.find(key);
        if (found == m_candidates.end())
            continue;
        for (const Candidate &candidate : *found) {
            if (candidate.selector.fits(element, classes))
                rules.push_back(&candidate);
        }
    }
    std::sort(rules.begin(), rules.end(),
              [](const Candidate *a, const Candidate *b) { return a->order < b->order; });
    return rules;
}

std::vector<int> StyledValues::sheetsFor(int element) const
{
    std::vector<int> sheets;
    for (const Candidate *const candidate : rulesFor(element))
        sheets.push_back(candidate->sheet);
    return sheets;
}

QHash<QString, QString> StyledValues::ofRules(int element) const
{
    QHash<QString, QString> values;
    for (const Candidate *const candidate : rulesFor(element)) {
        for (const StyleDeclaration &declaration : candidate->rule->declarations)
            values.insert(declaration.name, declaration.value);
    }
    return values;
}

QString StyledValues::own(int number, const QString &name) const
{
    const SourceElement &element = m_title.element(number);
    if (element.attribute(name))
        return element.value(name).trimmed();
    for (const Property &property : propertiesOf(element)) {
        if (property.name == name)
            return property.value;
    }
    return ofRules(number).value(name);
}

QString StyledValues::inherited(int number, const QString &name) const
{
    for (; number != SourceElement::none; number = m_title.element(number).parent) {
        const QString value = own(number, name);
        if (!value.isEmpty() && value != QLatin1String("inherit"))
            return value;
    }
    return QString();
}

QString withoutPrefix(const QString &name)
{
    return name.section(QLatin1Char(':'), -1);
}

bool isAnimationElement(const SourceElement &element)
{
    const QString name = withoutPrefix(element.name);
    return name.startsWith(QLatin1String("animate")) || name == QLatin1String("set");
}

namespace {

bool isBlack(const StyledValues &styles, int element, const QString &name)
{
    static const QStringList blackByDefault{QStringLiteral("fill"), QStringLiteral("stop-color")};
    const QString value = name == QLatin1String("stop-color") ? styles.own(element, name)
                                                              : styles.inherited(element, name);
    return value.isEmpty() ? blackByDefault.contains(name) : QColor(value) == QColor(Qt::black);
}

bool isZero(const Understood &title, const StyledValues &styles, int element, const QString &name)
{
    static const QRegularExpression zero(QStringLiteral("^[-+]?(0+\\.?0*|\\.0+)(px)?$"));
    static const QStringList zeroByDefault{
            QStringLiteral("x"),  QStringLiteral("y"),  QStringLiteral("width"),
            QStringLiteral("cx"), QStringLiteral("cy"), QStringLiteral("height"),
            QStringLiteral("x1"), QStringLiteral("y1"), QStringLiteral("r"),
            QStringLiteral("dx"), QStringLiteral("dy"), QStringLiteral("stroke-dashoffset"),
            QStringLiteral("x2"), QStringLiteral("y2"), QStringLiteral("offset")};
    static const QStringList otherGradients{QStringLiteral("x2"), QStringLiteral("y2")};
    const QString value = name == QLatin1String("stroke-dashoffset")
            ? styles.inherited(element, name)
            : styles.own(element, name);
    const QString &type = title.element(element).name;
    const bool isOther = type == QLatin1String("radialGradient")
            || (type == QLatin1String("linearGradient") && otherGradients.contains(name));
    return value.isEmpty() ? zeroByDefault.contains(name) && !isOther : value.contains(zero);
}

bool isInherited(const Animation &animation)
{
    return animation.kind == Animation::Kind::Color
            || animation.attribute == QLatin1String("stroke-dashoffset");
}

// Those of one attribute that show nothing of another one's values while they play.
std::vector<const Animation *> undisturbed(std::vector<const Animation *> animations)
{
    const double never = std::numeric_limits<double>::infinity();
    const auto end = [never](const Animation *animation) {
        return animation->isPlayed() ? animation->activeEnd().value_or(never) : never;
    };
    std::sort(animations.begin(), animations.end(),
              [](const Animation *a, const Animation *b) { return a->begin < b->begin; });
    std::vector<const Animation *> result;
    double busyUntil = -never;
    for (std::size_t i = 0; i < animations.size(); ++i) {
        const Animation *const animation = animations[i];
        const double next = i + 1 < animations.size() ? animations[i + 1]->begin : never;
        if (busyUntil <= animation->begin && end(animation) <= next)
            result.push_back(animation);
        busyUntil = std::max(busyUntil, animation->freezes ? never : end(animation));
    }
    return result;
}

} // namespace

std::set<const Animation *> animationsFromZero(const Understood &title)
{
    using Target = std::pair<int, QString>; // an element and an attribute
    const StyledValues styles(title);
    std::map<Target, std::vector<const Animation *>> all;
    for (const Animation &animation : title.animations())
        all[{animation.target, animation.attribute}].push_back(&animation);

    const auto isAnimatedAround = [&](const Animation &animation) {
        int element = title.element(animation.target).parent;
        while (element != SourceElement::none && all.count({element, animation.attribute}) == 0)
            element = title.element(element).parent;
        return element != SourceElement::none;
    };
    const auto isFromZero = [&](const Animation &animation) {
        if (isInherited(animation) && isAnimatedAround(animation))
            return false;
        if (animation.kind == Animation::Kind::Number)
            return isZero(title, styles, animation.target, animation.attribute);
        return animation.kind == Animation::Kind::Color
                && isBlack(styles, animation.target, animation.attribute);
    };
    std::set<const Animation *> result;
    for (const auto &[target, animations] : all) {
        for (const Animation *animation : undisturbed(animations)) {
            if (isFromZero(*animation))
                result.insert(animation);
        }
    }
    return result;
}
