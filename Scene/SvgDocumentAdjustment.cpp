// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "AdjustableAttribute.h"
#include "Admission_p.h"
#include "Agreement_p.h"
#include "AnimatableAttribute.h"
#include "TreeWalk_p.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
#include <utility>

// The attributes whose template values a user may replace.

namespace {

bool isAnimation(const QDomElement &element)
{
    static const std::array<QLatin1String, 4> animations{
            QLatin1String("animate"), QLatin1String("animateMotion"), QLatin1String("animateColor"),
            QLatin1String("animateTransform")};
    return std::find(animations.begin(), animations.end(), element.tagName()) != animations.end();
}

/// False for the values of "fill" and "stroke" that are no colour of the element's own.
bool isOwnColor(const QString &value)
{
    return value != QLatin1String("none") && value != QLatin1String("currentColor")
            && value != QLatin1String("inherit") && !value.startsWith(QLatin1String("url"));
}

bool isFill(const QString &name)
{
    return name == QLatin1String("fill");
}

bool isColor(const QString &name)
{
    return isFill(name) || name == QLatin1String("stroke");
}

bool isAdjustable(const QDomElement &element, const QString &name)
{
    const QDomAttr attribute = QDomElement(element).attributeNode(name);
    if (attribute.isNull() || (isFill(name) && isAnimation(element)))
        return false;
    return !isColor(name) || isOwnColor(attribute.value());
}

boost::shared_ptr<AdjustableAttribute> made(const QDomNode &node, const SvgElement &place,
                                            const QString &name)
{
    return boost::make_shared<AdjustableAttribute>(node, place, name);
}

/// Finds the places of nodes. Nodes asked for in document order are found in one walk; any other
/// one costs a walk of its own.
class PlaceFinder
{
public:
    explicit PlaceFinder(const QDomNode &root) : m_root(root), m_walk(root) {}

    SvgElement place(const QDomNode &node)
    {
        while (!m_walk.atEnd() && m_walk.node() != node)
            m_walk.next();
        return m_walk.atEnd() ? SvgElement(node, m_root) : m_walk.element();
    }

private:
    QDomNode m_root;
    TreeWalk m_walk;
};

} // namespace

/// The same as detectAdjustableAttibute() for each name and all nodes, in one walk.
void SvgDocument::prepareAdjustedAttibutes(const QStringList &names)
{
    m_agreement->parse();
    m_agreement->forgetPlaces();
    std::vector<AdjustableAttributes> attributes(std::size_t(names.size()));
    for (TreeWalk walk(m_dom.documentElement()); !walk.atEnd(); walk.next()) {
        const QDomElement element = walk.node().toElement();
        for (std::size_t i = 0; i < attributes.size(); ++i) {
            if (isAdjustable(element, names.at(int(i))))
                attributes[i].push_back(made(element, walk.element(), names.at(int(i))));
        }
    }
    m_adjustableAttributes.clear();
    for (std::size_t i = 0; i < attributes.size(); ++i)
        m_adjustableAttributes.emplace(names.at(int(i)), std::move(attributes[i]));
}

void SvgDocument::detectAdjustableAttibute(const QString &name, const std::vector<QDomNode> &nodes)
{
    AdjustableAttributes attributes;
    PlaceFinder finder(m_dom.documentElement());
    for (const QDomNode &node : nodes) {
        if (isAdjustable(node.toElement(), name))
            attributes.push_back(made(node, finder.place(node), name));
    }
    m_agreement->forgetPlaces();
    m_adjustableAttributes.insert(std::make_pair(name, attributes));
}

std::vector<boost::shared_ptr<const AdjustableAttribute>>
SvgDocument::adjustableAttributes(const QString &name) const
{
    const auto entry = m_adjustableAttributes.find(name);
    if (entry == m_adjustableAttributes.end())
        return {};
    return {entry->second.begin(), entry->second.end()};
}

void SvgDocument::adjustAttribute(const QString &name, const QString &value)
{
    const auto entry = m_adjustableAttributes.find(name);
    if (entry == m_adjustableAttributes.end() || entry->second.empty())
        return;
    // Numbers and references can make a title that exceeds the limits, colours cannot.
    const QString refusal = isColor(name) ? QString() : refusalOfAdjustment(entry->second, value);
    m_agreement->setError(refusal);
    if (!refusal.isEmpty())
        return;
    const QDomElement root = m_dom.documentElement();
    for (const auto &attribute : entry->second)
        writeValue(*attribute, value, root);
    m_agreement->saveAsDeclared();
}

/// Why the template with this value would not be admitted; empty when it would. What a frame has
/// written is of no account, or the time would decide.
QString SvgDocument::refusalOfAdjustment(const AdjustableAttributes &attributes,
                                         const QString &value)
{
    const QDomElement root = m_dom.documentElement();
    m_agreement->beginTrial();
    for (const auto &entry : m_animationsById) {
        const auto &animation = m_animatableAttributes[entry.second.back()];
        carryOut({animation, animation->defaultValue(), true});
    }
    for (const auto &attribute : attributes)
        writeValue(*attribute, value, root);
    const QByteArray text = m_agreement->textOfTree();
    m_agreement->takeBackEdits();
    // What was longer before than a template may be has become so by saving.
    constexpr qint64 longest = AdmissionLimits::textSize.most;
    if (text.size() > longest && text.size() > m_agreement->textOfTree().size())
        return QStringLiteral("the text becomes longer than %1 bytes").arg(longest);
    const Admission admission = admit(text, Origin::Saved);
    return admission.text.constData() == text.constData()
            ? admission.refusal
            : QStringLiteral("the value refers to another file");
}
