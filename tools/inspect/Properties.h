// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "SourcePlaces.h"
#include "StyleSheets.h"

#include <QHash>

#include <functional>
#include <optional>
#include <set>

struct Animation;
class Understood;

// A property with its value, and where it comes from.
struct Property
{
    enum class Origin { Attribute, Style, Sheet };

    QString name;
    QString value; // trimmed
    Place place;
    Origin origin = Origin::Attribute;
    bool isImportant = false;
};

// Those of an element, from attributes of its own and from its "style".
std::vector<Property> propertiesOf(const SourceElement &element);

// Where an element has a property from: the element itself when that is a rule.
Place placeOfProperty(const SourceElement &element, const QString &name);

// All properties of a title: those of elements, and those of style sheets, for which the element is
// the "style" element.
void lookAtProperties(
        const Understood &title,
        const std::function<void(const SourceElement &element, const Property &property)> &look);

// One of the values that an animation element gives.
struct KeyText
{
    QString text; // trimmed
    Place place;  // of the attribute that gives it
};

// Those in "values", or else in "from" and "to", even when there are none.
std::vector<KeyText> keyTextsOf(const SourceElement &animation);

// The first name among the values of an animation, such as a class or a reference, of which the
// document takes digits for numbers, or the whole for a colour.
std::optional<KeyText> nameTakenForNumbers(const Understood &title, const Animation &animation);

// What elements have for a property, as far as simple rules of style sheets tell.
class StyledValues
{
public:
    explicit StyledValues(const Understood &title);

    // From an attribute, the element's "style" or a rule; empty when it has none of its own.
    QString own(int element, const QString &name) const;

    // The same of the nearest one of the element and those around it that has one.
    QString inherited(int element, const QString &name) const;

    // All from rules, by the names of the properties.
    QHash<QString, QString> ofRules(int element) const;

    // The "style" elements with rules that fit, once for each rule.
    std::vector<int> sheetsFor(int element) const;

private:
    struct Candidate
    {
        int order;
        int sheet; // the "style" element
        SimpleSelector selector;
        const StyleRules::Rule *rule;
    };

    std::vector<const Candidate *> rulesFor(int element) const;

    const Understood &m_title;
    QHash<QString, std::vector<Candidate>> m_candidates; // by a class, an id or a type
};

// The animations of numbers and colours that begin where there is nothing else but 0, or black: a
// sum with that, or a way from there, is the same as one without it.
std::set<const Animation *> animationsFromZero(const Understood &title);

// The part of a name after its prefix.
QString withoutPrefix(const QString &name);

bool isAnimationElement(const SourceElement &element);
