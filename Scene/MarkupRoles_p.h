// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <string_view>

/// What an attribute's value is to the limits.
enum class AttributeRole {
    None,
    AnimatedName,
    Id,
    Class,
    Reference,
    UseReference, ///< one that the renderer follows from "use" elements only
    Style,
    Dashes,
    Length,
    Path,
    Extent, ///< a length, but a window on a canvas when it belongs to the svg element
    Window,
    Value ///< of an animation
};

/// By the name as written, with its prefix, as the renderer does.
AttributeRole roleOfAttribute(std::string_view name);

/// The kinds of elements that limits know.
enum class ElementKind {
    Other,
    Svg,
    Use,
    Gradient,
    Stop,
    Picture,
    Text,
    TextArea,
    Glyph,
    StyleSheet,
    Animation,
    RendererPlayed ///< an animation whose times the renderer keeps itself
};

/// By the name without its prefix, as the renderer does.
ElementKind kindOfElement(std::string_view name);
