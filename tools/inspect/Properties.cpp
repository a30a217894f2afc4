// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Properties.h"

#include "Understood.h"

#include <algorithm>

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
