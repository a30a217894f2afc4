// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MarkupRoles_p.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

using NamedRole = std::pair<std::string_view, AttributeRole>;

/// In the order of their lengths.
constexpr std::array<NamedRole, 45> roles{{
        {"d", AttributeRole::Path},
        {"r", AttributeRole::Length},
        {"x", AttributeRole::Extent},
        {"y", AttributeRole::Extent},
        {"by", AttributeRole::Value},
        {"cx", AttributeRole::Length},
        {"cy", AttributeRole::Length},
        {"dx", AttributeRole::Length},
        {"dy", AttributeRole::Length},
        {"fx", AttributeRole::Length},
        {"fy", AttributeRole::Length},
        {"id", AttributeRole::Id},
        {"rx", AttributeRole::Length},
        {"ry", AttributeRole::Length},
        {"to", AttributeRole::Value},
        {"x1", AttributeRole::Length},
        {"x2", AttributeRole::Length},
        {"y1", AttributeRole::Length},
        {"y2", AttributeRole::Length},
        {"from", AttributeRole::Value},
        {"href", AttributeRole::UseReference},
        {"path", AttributeRole::Path},
        {"class", AttributeRole::Class},
        {"style", AttributeRole::Style},
        {"width", AttributeRole::Extent},
        {"ascent", AttributeRole::Length},
        {"height", AttributeRole::Extent},
        {"offset", AttributeRole::Length},
        {"points", AttributeRole::Path},
        {"values", AttributeRole::Value},
        {"xml:id", AttributeRole::Id},
        {"descent", AttributeRole::Length},
        {"viewBox", AttributeRole::Window},
        {"font-size", AttributeRole::Length},
        {"transform", AttributeRole::Length},
        {"xlink:href", AttributeRole::Reference},
        {"horiz-adv-x", AttributeRole::Length},
        {"stroke-width", AttributeRole::Length},
        {"units-per-em", AttributeRole::Length},
        {"attributeName", AttributeRole::AnimatedName},
        {"stroke-dasharray", AttributeRole::Dashes},
        {"gradientTransform", AttributeRole::Length},
        {"stroke-dashoffset", AttributeRole::Length},
        {"stroke-miterlimit", AttributeRole::Length},
        {"underline-thickness", AttributeRole::Length},
}};

constexpr std::size_t longestName = 19;

constexpr bool areInOrder()
{
    for (std::size_t i = 1; i < roles.size(); ++i) {
        if (roles[i].first.size() < roles[i - 1].first.size())
            return false;
    }
    return roles.back().first.size() == longestName;
}
static_assert(areInOrder(), "an attribute out of its place would have no role");

/// For each length of a name, where in the roles the names of at least that length begin.
constexpr std::array<std::size_t, longestName + 2> rolesByLength()
{
    std::array<std::size_t, longestName + 2> result{};
    for (std::size_t length = 0; length < result.size(); ++length) {
        while (result[length] < roles.size() && roles[result[length]].first.size() < length)
            ++result[length];
    }
    return result;
}

constexpr std::array<std::size_t, longestName + 2> firstRoles = rolesByLength();

constexpr std::array<std::pair<std::string_view, ElementKind>, 16> kinds{{
        {"svg", ElementKind::Svg},
        {"use", ElementKind::Use},
        {"linearGradient", ElementKind::Gradient},
        {"radialGradient", ElementKind::Gradient},
        {"stop", ElementKind::Stop},
        {"image", ElementKind::Picture},
        {"text", ElementKind::Text},
        {"textArea", ElementKind::TextArea},
        {"glyph", ElementKind::Glyph},
        {"missing-glyph", ElementKind::Glyph},
        {"style", ElementKind::StyleSheet},
        {"animate", ElementKind::Animation},
        {"set", ElementKind::Animation},
        {"animateMotion", ElementKind::Animation},
        {"animateTransform", ElementKind::RendererPlayed},
        {"animateColor", ElementKind::RendererPlayed},
}};

} // namespace

AttributeRole roleOfAttribute(std::string_view name)
{
    if (name.size() > longestName)
        return AttributeRole::None;
    const std::size_t end = firstRoles[name.size() + 1];
    for (std::size_t i = firstRoles[name.size()]; i < end; ++i) {
        if (roles[i].first == name)
            return roles[i].second;
    }
    return AttributeRole::None;
}

ElementKind kindOfElement(std::string_view name)
{
    name.remove_prefix(name.find(':') + 1); // npos + 1 is 0
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [name](const auto &kind) { return kind.first == name; });
    return found == kinds.end() ? ElementKind::Other : found->second;
}
