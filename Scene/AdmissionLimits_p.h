// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QtGlobal>

/// How much of something a title may hold. The name is what a refusal calls it.
struct AdmissionLimit
{
    const char *name;
    qint64 most;
};

/// Where a text comes from. Saving the tree of an admitted template adds white space, a declaration
/// and quotes, so what no change of values can add to is not counted again. What an animation has
/// written may have large numbers where nothing is dashed, as its key values may.
enum class Origin {
    Template, ///< somebody else has written it
    Saved,    ///< a save of an admitted template, some values of which are others
    Frame,    ///< the same where animations have written them
};

/// All limits for the text of a title. What they guard against is the behaviour of Qt 5.15's
/// parsers and renderer; docs/security.md explains each of them to authors and integrators.
namespace AdmissionLimits {

// A tree takes up to 55 times the memory of its text.
constexpr AdmissionLimit textSize{"text size in bytes", 16LL * 1024 * 1024};

// A bare element takes about 230 bytes of the tree, one with five attributes 2.7 KB.
constexpr AdmissionLimit elements{"number of elements", 200'000};

// Parsing into a tree and saving it recurse by element: about 1.4 KB of stack a level. The deepest
// titles in use have a dozen levels.
constexpr AdmissionLimit nestingDepth{"nesting depth", 256};

// The stream reader compares every attribute of an element with every other.
constexpr AdmissionLimit attributes{"number of attributes of an element", 256};

// Working a value out copies it several times; one of a path of 32,767 curves has 1 MB.
constexpr AdmissionLimit attributeLength{"attribute length", 1024LL * 1024};

// The layout of a text keeps about 100 bytes a character, for every frame anew.
constexpr AdmissionLimit textLength{"text length", 100'000};

// Every attribute, and every pair of a comment or an instruction and a text, takes about 450 bytes
// of the tree, wherever it stands.
constexpr AdmissionLimit allAttributes{"number of all attributes", 1'000'000};
constexpr AdmissionLimit markup{"number of tags, comments and instructions", 600'000};

// Entities: the tree parser's time is quadratic in declarations, and a reference of five bytes can
// stand for 4,096 characters, which is where the stream reader stops.
constexpr AdmissionLimit declaredEntities{"number of declared entities", 256};
constexpr AdmissionLimit entityReferences{"number of entity references", 1'000};
constexpr AdmissionLimit documentTypeSize{"document type size in bytes", 64LL * 1024};

// The renderer follows references by recursion: about 190 bytes of stack a "use", 111 a gradient,
// and it looks through the whole chain at every level.
constexpr AdmissionLimit useDepth{"depth of use references", 32};
constexpr AdmissionLimit gradientDepth{"depth of gradient references", 32};

// What "use" elements multiply is drawn for every frame; four levels of 50 each take 1.7 s.
constexpr AdmissionLimit drawnElements{"number of drawn elements", 400'000};

// Laying out and drawing a character takes 3 us, where it is a line of its own twenty times that.
constexpr AdmissionLimit drawnCharacters{"number of drawn characters", 1'000'000};

// Those of glyphs are drawn for every character.
constexpr AdmissionLimit drawnCoordinates{"number of drawn coordinates", 4'000'000};

// Where references form a ring, the renderer goes round it in every order of the "use" elements in
// it; without a view box it does so again at each of them to find the bounds of the picture.
constexpr AdmissionLimit usesBesideRing{"number of use elements beside a ring of references", 64};
constexpr AdmissionLimit usesBesideRingWithoutCanvas{
        "number of use elements beside a ring of references, without a view box,", 16};

// Adding a stop to a gradient takes time in proportion to the stops that it has.
constexpr AdmissionLimit gradientStops{"number of gradient stops", 4'096};

// The renderer drops what stands after 32,767 points of a path; an arc has 7 numbers.
constexpr AdmissionLimit pathNumbers{"number of coordinates", 7LL * 32'767};

// Dashes are looked through from the start for every dash that is drawn.
constexpr AdmissionLimit dashes{"number of dashes", 1'024};

// Beyond, adding a dash to a place on a path no longer changes the place, and drawing never ends.
constexpr AdmissionLimit magnitude{"magnitude of numbers", 10'000'000};

// Key values are read for every frame anew.
constexpr AdmissionLimit keyValues{"number of key values", 20'000};

// Every selector of a style sheet is tried on every element.
constexpr AdmissionLimit styleSheetSize{"style sheet size", 256LL * 1024};
constexpr AdmissionLimit styleComparisons{"number of elements times selectors", 20'000'000};

// The declarations of a rule are written out and read anew for every element that it matches, and
// its selectors are copied for each of them that does.
constexpr AdmissionLimit styling{"weight of rules times elements", 160'000'000};

// Each escape in a style moves all that follows it.
constexpr AdmissionLimit escapes{"number of escapes times size of styles", 10'000'000'000};

// Pictures stand in the text as base64. A picture of a few kilobytes can unpack to gigabytes:
// Qt 5 knows no limit of its own. So can each packed text in a PNG file, to 8 MB, even before the
// size is known; and each scan of a JPEG file, of a few bytes, goes through all of the picture.
constexpr AdmissionLimit pictureLength{"picture length", 12LL * 1024 * 1024};
constexpr AdmissionLimit packedTexts{"number of packed texts of a picture", 8};
constexpr AdmissionLimit pictureScans{"number of scans of a picture", 100};
constexpr AdmissionLimit picturePixels{"number of pixels of all pictures", 36LL * 1024 * 1024};

} // namespace AdmissionLimits
