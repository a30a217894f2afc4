// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/TitleSvgItem.h>

#include <QSet>

#include <memory>
#include <vector>

// What docs/authoring.md says, tried on the templates that it links: tests/data/authoring/.

namespace {

/// The size of a template's canvas.
struct SizeRow
{
    const char *file;
    int width;
    int height;
};

/// The length of a template and that of its closing part, ms.
struct LengthRow
{
    const char *file;
    int total;
    int conclusion;
};

/// An attribute of the element with an id at a time, ms; null when it has none.
struct AttributeRow
{
    const char *file;
    const char *id;
    const char *attribute;
    int ms;
    const char *value;
};

/// The colour of a pixel at a time, ms: "#aarrggbb".
struct PixelRow
{
    const char *file;
    int ms;
    int x;
    int y;
    const char *color;
};

/// What the pictures of two templates at a time, ms, have to do with one another.
struct PictureRow
{
    const char *file;
    const char *other;
    bool areSame;
};

/// What Qt's renderer says of a template, and how often: when it is loaded, and then drawn as well.
struct WarningRow
{
    const char *file;
    const char *text;
    int whenLoaded;
    int whenDrawn;
};

const std::vector<SizeRow> sizeRows{
        {"root-viewbox.svg", 160, 90},      {"root-commas.svg", 160, 90},
        {"root-lines.svg", 0, 0},           {"root-fraction.svg", 0, 90},
        {"root-without-viewbox.svg", 0, 0}, {"root-origin.svg", 160, 90},
        {"root-prefix.svg", 0, 0},          {"root-beyond.svg", 160, 90},
        {"root-stretched.svg", 160, 90},
};

const std::vector<LengthRow> lengthRows{
        {"times-units.svg", 6000, 0},
        {"times-unreadable.svg", 4000, 0},
        {"times-negative.svg", 3000, 0},
        {"times-without-dur.svg", 1000, 0},
        {"times-end.svg", 4000, 0},
        {"syncbase.svg", 7500, 0},
        {"syncbase-chain.svg", 7000, 0},
        {"syncbase-ring.svg", 4000, 0},
        {"syncbase-repeat.svg", 5000, 0},
        {"animate-number.svg", 4000, 0},
        {"animate-repeat.svg", 4000, 0},
        {"set.svg", 0, 0},
        {"animate-motion.svg", 0, 0},
        {"animate-transform.svg", 5000, 0},
        {"animate-transform-syncbase.svg", 1000, 0},
        {"animate-transform-alone.svg", 0, 0},
        {"animate-after-letters.svg", 0, 0},
        {"animate-color-element.svg", 4000, 0},
        {"conclusion.svg", 5000, 1000},
        {"conclusion-syncbase.svg", 5000, 1000},
        {"conclusion-at-start.svg", 1000, 0},
        {"conclusion-lower-case.svg", 2000, 0},
        {"conclusion-motion.svg", 5000, 1000},
};

const std::vector<AttributeRow> attributeRows{
        {"times-units.svg", "a", "x", 1999, "1"},
        {"times-units.svg", "b", "x", 1999, "1"},
        {"times-units.svg", "c", "x", 1999, "1"},
        {"times-units.svg", "a", "x", 3000, "20.000"},
        {"times-units.svg", "b", "x", 3000, "20.000"},
        {"times-units.svg", "c", "x", 3000, "20.000"},
        {"times-units.svg", "d", "x", 3000, "20.000"},
        {"times-unreadable.svg", "a", "x", 1000, "20.000"},
        {"times-unreadable.svg", "b", "x", 1000, "20.000"},
        {"times-unreadable.svg", "c", "x", 1000, "20.000"},
        {"times-unreadable.svg", "d", "x", 1000, "20.000"},
        {"times-truncated.svg", "a", "x", 1003, "1"},
        {"times-truncated.svg", "a", "x", 1004, "10.000"},
        {"times-negative.svg", "a", "x", 0, "20.000"},
        {"times-without-dur.svg", "a", "x", 1000, "1"},
        {"times-without-dur.svg", "a", "x", 3000, "1"},
        {"times-without-dur.svg", "b", "x", 1000, "50.000"},
        {"times-list.svg", "a", "x", 0, "10.000"},
        {"times-list.svg", "a", "x", 3000, "40.000"},
        {"times-list.svg", "a", "x", 4000, "1"},
        {"times-event.svg", "a", "x", 1000, "20.000"},
        {"times-end.svg", "a", "x", 3000, "40.000"},
        {"times-end.svg", "a", "x", 4000, "1"},
        {"syncbase.svg", "b", "x", 999, "1"},
        {"syncbase.svg", "b", "x", 1000, "10.000"},
        {"syncbase.svg", "c", "x", 2999, "1"},
        {"syncbase.svg", "c", "x", 3000, "10.000"},
        {"syncbase.svg", "d", "x", 3499, "1"},
        {"syncbase.svg", "d", "x", 3500, "10.000"},
        {"syncbase.svg", "e", "x", 2499, "1"},
        {"syncbase.svg", "e", "x", 2500, "10.000"},
        {"syncbase-chain.svg", "c", "x", 2999, "1"},
        {"syncbase-chain.svg", "c", "x", 3000, "10.000"},
        {"syncbase-dash.svg", "b", "x", 3000, "10.000"},
        {"syncbase-dash.svg", "b", "x", 2999, "1"},
        {"syncbase-dash.svg", "c", "x", 1999, "1"},
        {"syncbase-dash.svg", "c", "x", 2000, "10.000"},
        {"syncbase-unknown.svg", "a", "x", 999, "1"},
        {"syncbase-unknown.svg", "a", "x", 1000, "10.000"},
        {"syncbase-repeat.svg", "b", "x", 999, "1"},
        {"syncbase-repeat.svg", "b", "x", 1000, "10.000"},
        {"syncbase-set.svg", "b", "x", 0, "10.000"},
        {"animate-number.svg", "a", "x", 0, "10.000"},
        {"animate-number.svg", "a", "x", 1000, "20.000"},
        {"animate-number.svg", "a", "x", 3999, "49.990"},
        {"animate-number.svg", "a", "x", 4000, "1"},
        {"animate-values.svg", "a", "x", 1000, "5.000"},
        {"animate-values.svg", "a", "x", 2000, "10.000"},
        {"animate-values.svg", "a", "x", 3000, "25.000"},
        {"animate-keytimes.svg", "a", "x", 2000, "10.000"},
        {"animate-keytimes.svg", "a", "x", 3000, "25.000"},
        {"animate-paced.svg", "a", "x", 2000, "10.000"},
        {"animate-to.svg", "a", "x", 0, "0.000"},
        {"animate-to.svg", "a", "x", 2000, "25.000"},
        {"animate-by.svg", "a", "x", 0, "10.000"},
        {"animate-by.svg", "a", "x", 2000, "5.000"},
        {"animate-additive.svg", "a", "x", 0, "10.000"},
        {"animate-units.svg", "a", "x", 1000, "20.000px"},
        {"animate-color.svg", "a", "fill", 0, "#000000"},
        {"animate-color.svg", "a", "fill", 2000, "#7f0000"},
        {"animate-color.svg", "a", "fill", 4000, "blue"},
        {"animate-alpha.svg", "a", "fill", 2000, "#ff0000"},
        {"animate-alpha.svg", "a", "fill", 4000, "#ff0000"},
        {"animate-words.svg", "a", "visibility", 999, "visible"},
        {"animate-words.svg", "a", "visibility", 1000, "hidden"},
        {"animate-words.svg", "a", "visibility", 1999, "hidden"},
        {"animate-words.svg", "a", "visibility", 2000, "visible"},
        {"animate-list.svg", "a", "transform", 2000, "translate(40.000 20.000)"},
        {"animate-list.svg", "b", "points", 2000, "0.000,20.000 10.000,20.000 10.000,45.000"},
        {"animate-list.svg", "c", "d", 2000, "M20.000 60.000 L30.000 60.000 L30.000 70.000 Z"},
        {"animate-list-lengths.svg", "a", "points", 1000, ""},
        {"animate-exponent.svg", "a", "transform", 2000, "scale(1.500e1.000)"},
        {"animate-exponent.svg", "b", "x", 2000, "15.000"},
        {"animate-discrete.svg", "a", "x", 1000, "10.000"},
        {"animate-discrete.svg", "a", "x", 1001, "20.000"},
        {"animate-discrete.svg", "a", "x", 3000, "20.000"},
        {"animate-discrete.svg", "a", "x", 3001, "30.000"},
        {"animate-freeze.svg", "a", "x", 4000, "50.000"},
        {"animate-freeze.svg", "a", "x", 9000, "50.000"},
        {"animate-freeze.svg", "b", "x", 4000, "1"},
        {"animate-repeat.svg", "a", "x", 2000, "30.000"},
        {"animate-repeat.svg", "a", "x", 4000, "1"},
        {"animate-repeat.svg", "a", "x", 6000, "1"},
        {"animate-repeat.svg", "b", "x", 4000, "50.000"},
        {"animate-repeat.svg", "b", "x", 6000, "30.000"},
        {"animate-repeat.svg", "b", "x", 12000, "10.000"},
        {"animate-repeat.svg", "b", "x", 14000, "10.000"},
        {"animate-repeat.svg", "c", "x", 102000, "30.000"},
        {"animate-repeat-zero.svg", "a", "x", 2000, "10.000"},
        {"animate-repeat-zero.svg", "a", "x", 4000, "1"},
        {"animate-order.svg", "a", "x", 2000, "30.000"},
        {"animate-order.svg", "a", "x", 4500, "100.000"},
        {"animate-frozen.svg", "a", "x", 1500, "10.000"},
        {"animate-frozen.svg", "a", "x", 4000, "20.000"},
        {"animate-frozen.svg", "a", "x", 5000, "30.000"},
        {"animate-frozen.svg", "a", "x", 6000, "20.000"},
        {"animate-parent.svg", "other", "x", 2000, "1"},
        {"animate-parent.svg", "a", "x", 2000, "30.000"},
        {"animate-style.svg", "a", "fill", 1000, "#0000ff"},
        {"animate-gradient.svg", "a", "stop-color", 1000, "#0000ff"},
        {"set.svg", "a", "fill", 1000, "red"},
        {"animate-kind.svg", "a", "x", 2000, "0.000"},
        {"animate-list-text.svg", "a", "transform", 2000, "translate(40.000 20.000)"},
        {"animate-trailing.svg", "a", "x", 2000, "20.000"},
        {"animate-trailing.svg", "a", "x", 3000, "10.000"},
        {"use-href-visibility.svg", "one", "visibility", 0, "hidden"},
        {"use-href-visibility.svg", "two", "visibility", 0, nullptr},
        {"use-visibility.svg", "one", "visibility", 0, "hidden"},
        {"use-visibility.svg", "two", "visibility", 0, "hidden"},
        {"use-visibility-animated.svg", "one", "visibility", 500, "hidden"},
        {"use-visibility-animated.svg", "two", "visibility", 1500, "visible"},
        {"use-visibility-ancestor.svg", "one", "visibility", 0, nullptr},
        {"rgba.svg", "a", "fill", 0, "#ff00"},
        {"animate-arc.svg", "a", "d", 1000,
         "M20.000 60.000a40.000 40.000 0.000 0.000 1.000 80.000 0.000z"},
        {"animate-name.svg", "a", "class", 1000, "a1.250"},
        {"animate-decimals.svg", "a", "x", 0, "0.000"},
};

/// The same, after the user has chosen #00ff00.
const std::vector<AttributeRow> recoloredRows{
        {"recolor.svg", "a", "fill", 0, "#00ff00"},
        {"recolor.svg", "a", "stroke", 0, "#00ff00"},
        {"recolor.svg", "b", "style", 0, "fill:red"},
        {"recolor.svg", "c", "fill", 0, "url(#paint)"},
        {"recolor.svg", "c", "stroke", 0, "none"},
        {"recolor.svg", "d", "fill", 0, "currentColor"},
        {"recolor.svg", "d", "stroke", 0, "inherit"},
        {"recolor.svg", "e", "fill", 0, nullptr},
        {"recolor-animated.svg", "a", "fill", 0, "red"},
        {"recolor-animated.svg", "a", "fill", 1500, "#0000ff"},
        {"recolor-animated.svg", "a", "fill", 3000, "red"},
        {"recolor-freeze.svg", "hold", "fill", 2000, "freeze"},
        {"recolor-freeze.svg", "a", "fill", 2000, "#00ff00"},
};

const std::vector<PixelRow> pixelRows{
        {"root-viewbox.svg", 0, 159, 89, "#ffff0000"},
        {"root-commas.svg", 0, 159, 89, "#ffff0000"},
        {"root-lines.svg", 0, 5, 5, "#00000000"},
        {"root-fraction.svg", 0, 5, 5, "#00000000"},
        {"root-without-viewbox.svg", 0, 5, 5, "#00000000"},
        {"root-origin.svg", 0, 5, 5, "#ffff0000"},
        {"root-origin.svg", 0, 25, 15, "#00000000"},
        {"root-prefix.svg", 0, 5, 5, "#00000000"},
        {"root-nested.svg", 0, 60, 45, "#ff0000ff"},
        {"root-nested.svg", 0, 100, 45, "#ff0000ff"},
        {"root-beyond.svg", 0, 170, 100, "#ffff0000"},
        {"animate-color.svg", 2000, 5, 5, "#ff7f0000"},
        {"animate-color.svg", 4000, 5, 5, "#ff0000ff"},
        {"animate-words.svg", 999, 5, 5, "#ffff0000"},
        {"animate-words.svg", 1000, 5, 5, "#00000000"},
        {"animate-words.svg", 2000, 5, 5, "#ffff0000"},
        {"animate-list.svg", 2000, 45, 25, "#ffff0000"},
        {"animate-list.svg", 2000, 29, 62, "#ff000000"},
        {"animate-style.svg", 1000, 5, 5, "#ff0000ff"},
        {"animate-style.svg", 5000, 5, 5, "#ffff0000"},
        {"animate-gradient.svg", 1000, 80, 45, "#ff0000ff"},
        {"animate-gradient.svg", 5000, 80, 45, "#ffff0000"},
        {"set.svg", 1000, 5, 5, "#ffff0000"},
        {"animate-motion.svg", 2000, 5, 5, "#ffff0000"},
        {"animate-motion.svg", 2000, 45, 25, "#00000000"},
        {"animate-transform.svg", 999, 5, 5, "#ffff0000"},
        {"animate-transform.svg", 3000, 45, 25, "#ffff0000"},
        {"animate-transform.svg", 3000, 5, 5, "#00000000"},
        {"animate-transform.svg", 5001, 5, 5, "#ffff0000"},
        {"animate-transform-freeze.svg", 9000, 85, 45, "#ffff0000"},
        {"animate-transform-repeat.svg", 402000, 45, 25, "#ffff0000"},
        {"animate-transform-syncbase.svg", 3000, 45, 25, "#ffff0000"},
        {"animate-transform-syncbase.svg", 500, 5, 5, "#ffff0000"},
        {"animate-transform-values.svg", 2000, 85, 5, "#00000000"},
        {"animate-transform-values.svg", 3000, 85, 25, "#00000000"},
        {"animate-transform-two.svg", 2000, 45, 25, "#ffff0000"},
        {"animate-transform-chain.svg", 1000, 45, 5, "#ffff0000"},
        {"animate-transform-chain.svg", 2000, 85, 5, "#ffff0000"},
        {"animate-transform-chain.svg", 3000, 85, 25, "#ffff0000"},
        {"animate-places.svg", 1000, 45, 5, "#ffff0000"},
        {"animate-places.svg", 3000, 85, 25, "#ffff0000"},
        {"animate-rotate.svg", 0, 35, 5, "#ffff0000"},
        {"animate-rotate.svg", 0, 20, 25, "#00000000"},
        {"animate-rotate.svg", 4000, 20, 25, "#ffff0000"},
        {"animate-rotate-group.svg", 0, 20, 25, "#ffff0000"},
        {"animate-rotate-group.svg", 4000, 20, 25, "#00000000"},
        {"animate-rotate-later.svg", 500, 5, 35, "#00000000"},
        {"animate-rotate-later.svg", 1000, 5, 35, "#ffff0000"},
        {"animate-rotate-later.svg", 5000, 25, 20, "#ffff0000"},
        {"animate-scale.svg", 0, 40, 35, "#ffff0000"},
        {"animate-scale.svg", 1000, 40, 35, "#00000000"},
        {"animate-gradient-transform.svg", 2000, 45, 5, "#ffff0000"},
        {"animate-gradient-transform.svg", 2000, 5, 5, "#00000000"},
        {"animate-color-element.svg", 4000, 5, 5, "#ffff0000"},
        {"animate-color-element.svg", 9000, 5, 5, "#ffff0000"},
        {"animate-color-before.svg", 500, 40, 45, "#ffff0000"},
        {"animate-color-before.svg", 500, 120, 20, "#00000000"},
        {"animate-color-before.svg", 500, 120, 70, "#ff00ff00"},
        {"animate-color-before.svg", 1500, 40, 45, "#ff0000ff"},
        {"use-href.svg", 0, 25, 5, "#ffff0000"},
        {"use-href.svg", 0, 65, 5, "#ffff0000"},
        {"use-visibility-animated.svg", 500, 25, 5, "#00000000"},
        {"use-visibility-animated.svg", 1500, 25, 5, "#ffff0000"},
        {"use-visibility-animated.svg", 1500, 65, 5, "#ffff0000"},
        {"use-animated.svg", 2000, 25, 25, "#ffff0000"},
        {"use-animated.svg", 2000, 65, 25, "#ffff0000"},
        {"rgba.svg", 0, 25, 5, "#7fff0000"},
        {"clip-erases.svg", 0, 20, 45, "#ffff0000"},
        {"clip-erases.svg", 0, 60, 45, "#00000000"},
        {"clip-erases.svg", 0, 100, 45, "#ffff0000"},
        {"clip-reveal.svg", 0, 20, 45, "#00000000"},
        {"clip-reveal.svg", 2000, 20, 45, "#ffff0000"},
        {"clip-reveal.svg", 2000, 120, 45, "#00000000"},
        {"clip-reveal.svg", 4000, 120, 45, "#ffff0000"},
        {"clip-reference.svg", 0, 20, 45, "#00000000"},
        {"clip-reference.svg", 0, 100, 45, "#ffff0000"},
        {"clip-gradient.svg", 0, 60, 45, "#ffff0000"},
        {"draw-style-sheet.svg", 0, 5, 5, "#ffff0000"},
        {"draw-gradient.svg", 0, 80, 45, "#ffff0000"},
        {"draw-opacity.svg", 0, 20, 45, "#7fff0000"},
        {"draw-opacity.svg", 0, 60, 45, "#bfff0000"},
        {"draw-mask.svg", 0, 120, 45, "#ffff0000"},
        {"draw-filter.svg", 0, 40, 45, "#ffff0000"},
        {"draw-filter.svg", 0, 120, 45, "#00000000"},
        {"draw-pattern.svg", 0, 80, 45, "#00000000"},
        {"draw-marker.svg", 0, 105, 50, "#00000000"},
        {"draw-style.svg", 0, 5, 5, "#ffff0000"},
        {"draw-script.svg", 0, 5, 5, "#ffff0000"},
        {"draw-foreign.svg", 0, 40, 45, "#ffff0000"},
        {"draw-foreign.svg", 0, 120, 45, "#ffff0000"},
        {"draw-image.svg", 0, 40, 45, "#00000000"},
        {"draw-image.svg", 0, 120, 45, "#ffff0000"},
        {"draw-erase.svg", 0, 20, 45, "#ffff0000"},
        {"draw-erase.svg", 0, 60, 45, "#00000000"},
        {"draw-entity.svg", 0, 5, 5, "#ffff0000"},
        {"draw-display.svg", 500, 5, 5, "#ffff0000"},
        {"draw-display.svg", 1500, 5, 5, "#00000000"},
        {"draw-percent.svg", 0, 49, 45, "#ffff0000"},
        {"draw-percent.svg", 0, 51, 45, "#00000000"},
        {"draw-percent.svg", 0, 130, 45, "#ffff0000"},
        {"draw-inches.svg", 0, 89, 20, "#ffff0000"},
        {"draw-inches.svg", 0, 91, 20, "#00000000"},
        {"draw-inches.svg", 0, 0, 70, "#00000000"},
        {"draw-opacity-stroke.svg", 0, 15, 45, "#7fff0000"},
        {"draw-opacity-stroke.svg", 0, 25, 45, "#bfff0000"},
        {"draw-opacity-stroke.svg", 0, 70, 45, "#7fff0000"},
        {"draw-gradient-link.svg", 0, 5, 45, "#ff0000ff"},
        {"draw-style-place.svg", 0, 40, 45, "#ffff0000"},
        {"draw-style-place.svg", 0, 120, 45, "#00000000"},
        {"draw-style-late.svg", 0, 40, 45, "#ff000000"},
        {"draw-style-late.svg", 0, 120, 45, "#ffff0000"},
        {"draw-selector.svg", 0, 40, 45, "#ff000000"},
        {"draw-selector.svg", 0, 120, 45, "#ffff0000"},
        {"draw-selector-end.svg", 0, 40, 45, "#ffff0000"},
        {"draw-selector-end.svg", 0, 120, 45, "#ff000000"},
        {"draw-image-ratio.svg", 0, 5, 20, "#ffff0000"},
        {"draw-image-ratio.svg", 0, 155, 20, "#ffff0000"},
        {"draw-unknown.svg", 0, 40, 45, "#ffff0000"},
        {"draw-condition.svg", 0, 40, 45, "#ffff0000"},
        {"text-outline.svg", 0, 19, 45, "#ffff0000"},
        {"draw-path.svg", 0, 20, 20, "#ffff0000"},
        {"draw-path.svg", 0, 55, 20, "#ffff0000"},
        {"draw-path.svg", 0, 100, 20, "#ffff0000"},
        {"draw-path.svg", 0, 130, 20, "#ffff0000"},
        {"draw-path.svg", 0, 80, 60, "#ffff0000"},
        {"draw-path.svg", 0, 80, 80, "#ffff0000"},
        {"animate-arc.svg", 1000, 60, 45, "#00000000"},
        {"animate-paint-words.svg", 1500, 40, 45, "#ffff0000"},
        {"animate-paint-words.svg", 2500, 40, 45, "#ff0000ff"},
        {"animate-paint-words.svg", 4000, 120, 45, "#ff000000"},
        {"draw-dots.svg", 0, 40, 20, "#00000000"},
        {"draw-style-rule.svg", 0, 40, 45, "#7f000000"},
        {"draw-style-rule.svg", 0, 120, 45, "#7fff0000"},
        {"draw-dots.svg", 0, 120, 20, "#ffff0000"},
        {"draw-dots.svg", 0, 80, 60, "#00000000"},
        {"draw-style-transform.svg", 0, 40, 45, "#00000000"},
        {"draw-style-transform.svg", 0, 120, 45, "#ffff0000"},
};

const char *const filesThatShowNothing[] = {"text-path.svg"};

const std::vector<PictureRow> pictureRows{
        {"text-family-list.svg", "text-family-unknown.svg", true},
        {"text-family-list.svg", "text-family.svg", false},
        {"text-family-quoted.svg", "text-family.svg", true},
        {"text-family-rule.svg", "text-family-unknown.svg", true},
        {"text-family-rule-quoted.svg", "text-family.svg", true},
        {"text-spans.svg", "text-apart.svg", true},
        {"text-span-after.svg", "text.svg", true},
        {"text-span-moved.svg", "text.svg", true},
        {"text-span-hidden.svg", "text.svg", true},
        {"text-nbsp.svg", "text-space.svg", true},
        {"text-trailing.svg", "text.svg", true},
        {"text-end-trailing.svg", "text-end.svg", true},
        {"text-space.svg", "text-apart.svg", true},
        {"text-lines.svg", "text-apart.svg", true},
        {"text-preserve.svg", "text-apart.svg", false},
        {"text-length.svg", "text.svg", true},
        {"text-bold.svg", "text.svg", false},
        {"animate-weight.svg", "text.svg", true},
        {"text-kept-spaces.svg", "text.svg", false},
        {"text-kept-spaces-still.svg", "text.svg", true},
        {"text-span-space.svg", "text.svg", true},
        {"text-span-anchor.svg", "text.svg", true},
        {"text-title.svg", "text.svg", true},
};

const std::vector<WarningRow> warningRows{
        {"animate-transform-syncbase.svg", "Problem parsing animateTransform", 1, 1},
        {"animate-transform-alone.svg", "Problem parsing animateTransform", 1, 2},
        {"animate-arc.svg", "Invalid path data", 0, 1},
        {"clip-gradient.svg", "Could not resolve property: #paint", 1, 2},
        {"draw-pattern.svg", "Could not resolve property: #dots", 1, 2},
};

QString readExample(const char *file)
{
    return readTestData(QStringLiteral("authoring/") + QString::fromUtf8(file));
}

QString attributeOf(const SvgDocument &document, const AttributeRow &row)
{
    const QDomElement element = elementById(savedTree(document), QString::fromUtf8(row.id));
    QTest::qVerify(!element.isNull(), "the element exists", row.id, __FILE__, __LINE__);
    return element.attribute(QString::fromUtf8(row.attribute), QString());
}

/// The title as an application shows it, its clip paths included, with a margin of 40 pixels to
/// the right and below.
QImage shown(const QString &text, int ms)
{
    SvgDocument document(text);
    QImage picture(document.bounds().size().toSize() + QSize(40, 40),
                   QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    document.paint(&painter, ms);
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    if (clipping) {
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        clipping->paint(&painter, ms);
    }
    return picture;
}

/// Announces what the renderer is going to say of a template.
std::vector<std::unique_ptr<ExpectedWarning>> announcedWarnings(const char *file, bool isDrawn)
{
    std::vector<std::unique_ptr<ExpectedWarning>> announced;
    for (const WarningRow &row : warningRows) {
        const int count = isDrawn ? row.whenDrawn : row.whenLoaded;
        for (int i = 0; qstrcmp(row.file, file) == 0 && i < count; ++i)
            announced.push_back(std::make_unique<ExpectedWarning>(QString::fromUtf8(row.text)));
    }
    return announced;
}

/// A row of QtTest for each of a table, under the name of its file.
template <typename Row>
void addRows(const std::vector<Row> &rows)
{
    QTest::addColumn<int>("number");
    for (std::size_t i = 0; i < rows.size(); ++i)
        QTest::addRow("%s %d", rows[i].file, int(i)) << int(i);
}

template <typename Row>
const Row &currentRow(const std::vector<Row> &rows)
{
    return rows.at(std::size_t(*static_cast<int *>(QTest::qData("number", qMetaTypeId<int>()))));
}

QStringList templateNames()
{
    return QDir(QStringLiteral(TITLESCENE_TEST_DATA "/authoring"))
            .entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
}

QStringList sorted(const QSet<QString> &names)
{
    QStringList list = names.values();
    list.sort();
    return list;
}

/// The names that the first group of a pattern matches, as names of templates.
QStringList namesIn(const QString &text, const QString &pattern)
{
    QSet<QString> names;
    auto all = QRegularExpression(pattern, QRegularExpression::MultilineOption).globalMatch(text);
    while (all.hasNext())
        names.insert(all.next().captured(1) + QStringLiteral(".svg"));
    return sorted(names);
}

template <typename Row>
void addFiles(const std::vector<Row> &rows, QSet<QString> *files)
{
    for (const Row &row : rows)
        files->insert(QString::fromUtf8(row.file));
}

} // namespace

class AuthoringTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void sizes_data() { addRows(sizeRows); }
    void sizes();
    void lengths_data() { addRows(lengthRows); }
    void lengths();
    void attributes_data() { addRows(attributeRows); }
    void attributes();
    void recolored_data() { addRows(recoloredRows); }
    void recolored();
    void pixels_data() { addRows(pixelRows); }
    void pixels();
    void pictures_data() { addRows(pictureRows); }
    void pictures();
    void showsNothing();
    void closingPartEndsWithTheClip();

    void everyTemplateIsTried();
    void everyTemplateIsNamed();
};

void AuthoringTest::sizes()
{
    const SizeRow &row = currentRow(sizeRows);
    QCOMPARE(SvgDocument(readExample(row.file)).bounds(), QRectF(0, 0, row.width, row.height));
}

void AuthoringTest::lengths()
{
    const LengthRow &row = currentRow(lengthRows);
    const auto announced = announcedWarnings(row.file, false);
    const SvgDocument document(readExample(row.file));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    QCOMPARE(document.animationDurationTotal(), row.total);
    QCOMPARE(document.animationConclusionDuration(), row.conclusion);
}

void AuthoringTest::attributes()
{
    const AttributeRow &row = currentRow(attributeRows);
    SvgDocument document(readExample(row.file));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    document.applyAnimation(row.ms);
    QCOMPARE(attributeOf(document, row), QString::fromUtf8(row.value));
}

void AuthoringTest::recolored()
{
    const AttributeRow &row = currentRow(recoloredRows);
    const QStringList names{QStringLiteral("fill"), QStringLiteral("stroke")};
    SvgDocument document(readExample(row.file));
    document.prepareAdjustedAttibutes(names);
    for (const QString &name : names)
        document.adjustAttribute(name, QStringLiteral("#00ff00"));
    document.applyAnimation(row.ms);
    QCOMPARE(attributeOf(document, row), QString::fromUtf8(row.value));
}

void AuthoringTest::pixels()
{
    const PixelRow &row = currentRow(pixelRows);
    const auto announced = announcedWarnings(row.file, true);
    const QColor color = shown(readExample(row.file), row.ms).pixelColor(row.x, row.y);
    QCOMPARE(color.name(QColor::HexArgb), QString::fromUtf8(row.color));
}

/// Once the title plays: a template that does not is drawn from its own text.
void AuthoringTest::pictures()
{
    const PictureRow &row = currentRow(pictureRows);
    const QImage picture = shown(readExample(row.file), 1500);
    const QImage other = shown(readExample(row.other), 1500);
    QVERIFY(!isBlank(picture));
    QVERIFY(!isBlank(other));
    QCOMPARE(picture == other, row.areSame);
}

void AuthoringTest::showsNothing()
{
    for (const char *file : filesThatShowNothing)
        QVERIFY2(isBlank(shown(readExample(file), 0)), file);
}

/// The title of five seconds on a clip of ten: its closing part begins one second before the end.
void AuthoringTest::closingPartEndsWithTheClip()
{
    const QString text = readExample("conclusion.svg");
    TitleSvgItem item(text);
    item.setDuration(10000);
    const auto atClipTime = [&item](int ms) {
        QImage picture(200, 130, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        item.setCurrentTime(ms);
        item.paint(&painter, nullptr);
        return picture;
    };
    COMPARE_PICTURES(atClipTime(1000), shown(text, 1000), 0);
    COMPARE_PICTURES(atClipTime(9000), shown(text, 4000), 0);
    COMPARE_PICTURES(atClipTime(9500), shown(text, 4500), 0);
    QVERIFY(atClipTime(1000) != atClipTime(9000));
    QVERIFY(atClipTime(9000) != atClipTime(9500));
}

void AuthoringTest::everyTemplateIsTried()
{
    QSet<QString> tried;
    addFiles(sizeRows, &tried);
    addFiles(lengthRows, &tried);
    addFiles(attributeRows, &tried);
    addFiles(recoloredRows, &tried);
    addFiles(pixelRows, &tried);
    addFiles(pictureRows, &tried);
    for (const PictureRow &row : pictureRows)
        tried.insert(QString::fromUtf8(row.other));
    for (const char *file : filesThatShowNothing)
        tried.insert(QString::fromUtf8(file));
    QCOMPARE(sorted(tried), templateNames());
}

void AuthoringTest::everyTemplateIsNamed()
{
    static const QRegularExpression sample(
            QStringLiteral("^```.*?^```$"),
            QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    const QString text = readText(QStringLiteral(TITLESCENE_AUTHORING)).remove(sample);
    const QString link = QStringLiteral("^\\[([\\w-]+)\\]: \\.\\./tests/data/authoring/\\1\\.svg$");
    QCOMPARE(namesIn(text, link), templateNames());
    const QString statement = QStringLiteral("\\[([\\w-]+)\\](?![:(])");
    QCOMPARE(namesIn(text, statement), templateNames());
}

QTEST_MAIN(AuthoringTest)
#include "tst_authoring.moc"
