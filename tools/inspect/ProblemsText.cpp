// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Properties.h"
#include "TextSpacing.h"
#include "Understood.h"

#include <QRegularExpression>

#include <algorithm>
#include <map>
#include <set>

// Texts: the places, spaces and paints of their runs.

namespace {

bool isText(const SourceElement &element)
{
    return element.name == QLatin1String("text");
}

bool isSpan(const SourceElement &element)
{
    return element.name == QLatin1String("tspan");
}

QString oneTextForEach()
{
    return QStringLiteral("Write the letters straight into a text element of its own, with its own "
                          "x, y and style.");
}

bool isNothing(const QString &length)
{
    static const QRegularExpression nothing(QStringLiteral("^[-+]?0*\\.?0*[a-z%]*$"));
    return length.contains(nothing);
}

bool isSameLength(const QString &a, const QString &b)
{
    if (a.trimmed() == b.trimmed())
        return true;
    bool areNumbers[2] = {true, true};
    const double first = a.isEmpty() ? 0.0 : a.toDouble(&areNumbers[0]);
    const double second = b.isEmpty() ? 0.0 : b.toDouble(&areNumbers[1]);
    return areNumbers[0] && areNumbers[1] && qFuzzyCompare(1.0 + first, 1.0 + second);
}

bool isBlank(const QString &letters)
{
    return letters.trimmed().isEmpty();
}

// The tspan elements that have letters, and whether those are the first ones of their text.
std::map<int, bool> spansWithLetters(const Understood &title, const TextSpacing &spacing)
{
    std::map<int, bool> spans;
    for (const SourceText &text : title.source().texts()) {
        bool isFirst = true;
        for (const SourceText::Piece &piece : text.pieces) {
            if (isBlank(piece.letters) || spacing.ownerOf(piece, text) == SourceElement::none)
                continue;
            for (int number = piece.element; number != text.element;
                 number = title.element(number).parent)
                spans.emplace(number, isFirst);
            isFirst = false;
        }
    }
    return spans;
}

// The renderer sets the runs of a text one after the other. A first run that stands where its text
// stands is right by chance.
void findMovedSpans(const Understood &title, ProblemList &problems)
{
    for (const auto &[number, isFirst] : spansWithLetters(title, TextSpacing(title))) {
        const SourceElement &span = title.element(number);
        if (!isSpan(span))
            continue;
        for (const char *name : {"x", "y", "dx", "dy", "rotate"}) {
            const SourceAttribute *const attribute = span.attribute(QLatin1String(name));
            if (!attribute)
                continue;
            const bool isShift = attribute->name.size() > 1;
            const bool isInPlace = isShift ? isNothing(attribute->value.trimmed())
                                           : isFirst
                            && isSameLength(attribute->value,
                                            title.element(span.parent).value(attribute->name));
            if (isInPlace)
                continue;
            problems.warn("text-place", attribute->place,
                          QStringLiteral("%1 of a tspan is ignored: it follows the text before it")
                                  .arg(attribute->name),
                          oneTextForEach());
            break;
        }
    }
}

void findMovedLetters(const Understood &title, ProblemList &problems)
{
    static const QRegularExpression list(QStringLiteral("\\S[\\s,]+\\S"));
    for (const SourceElement &text : title.source().elements()) {
        if (!isText(text))
            continue;
        for (const char *name : {"x", "y", "dx", "dy", "rotate"}) {
            const SourceAttribute *const attribute = text.attribute(QLatin1String(name));
            if (!attribute)
                continue;
            const bool isPlain = attribute->name.size() == 1;
            if (isPlain && attribute->value.trimmed().contains(list))
                problems.warn("text-place", attribute->place,
                              QStringLiteral("letters have no places of their own: a list for %1 "
                                             "is not read")
                                      .arg(attribute->name),
                              QStringLiteral("Use a text element for each letter."));
            else if (!isPlain && !isNothing(attribute->value.trimmed()))
                problems.warn("text-place", attribute->place,
                              QStringLiteral("%1 of a text is ignored").arg(attribute->name),
                              QStringLiteral("Change x and y, or write a transform."));
        }
    }
}

bool isIgnoredOfSpans(const QString &name)
{
    return name == QLatin1String("visibility") || name == QLatin1String("display")
            || name == QLatin1String("opacity") || name == QLatin1String("fill-opacity")
            || name == QLatin1String("stroke-opacity") || name == QLatin1String("transform");
}

void findSpansShownAnyway(const Understood &title, ProblemList &problems)
{
    static const QStringList shown{QStringLiteral("inline"), QStringLiteral("visible"),
                                   QStringLiteral("1"), QStringLiteral("inherit")};
    const auto warn = [&](const Place &place, const QString &name) {
        problems.warn("text-run", place, QStringLiteral("%1 of a tspan is ignored").arg(name),
                      oneTextForEach());
    };
    for (const SourceElement &span : title.source().elements()) {
        if (!isSpan(span))
            continue;
        for (const Property &property : propertiesOf(span)) {
            if (isIgnoredOfSpans(property.name) && !shown.contains(property.value))
                warn(property.place, property.name);
        }
    }
    for (const Animation &animation : title.animations()) {
        const bool isOfSpan = isSpan(title.element(animation.target));
        const bool isPlace = animation.attribute == QLatin1String("x")
                || animation.attribute == QLatin1String("y");
        if (isOfSpan && (isPlace || isIgnoredOfSpans(animation.attribute)))
            warn(title.element(animation.element).placeOf(QStringLiteral("attributeName")),
                 animation.attribute);
    }
}

// A browser takes the anchor of the first letters, the renderer that of the text.
void findAnchorsOfSpans(const Understood &title, ProblemList &problems)
{
    const QString anchor = QStringLiteral("text-anchor");
    const StyledValues values(title);
    for (const auto &[number, isFirst] : spansWithLetters(title, TextSpacing(title))) {
        const QString own = isSpan(title.element(number)) ? values.own(number, anchor) : QString();
        const QString around = values.inherited(title.element(number).parent, anchor);
        const QString drawn = around.isEmpty() ? QStringLiteral("start") : around;
        if (isFirst && !own.isEmpty() && own != QLatin1String("inherit") && own != drawn)
            problems.warn("text-run", placeOfProperty(title.element(number), anchor),
                          QStringLiteral("text-anchor of a tspan is ignored"),
                          QStringLiteral("Write it at the text element."));
    }
}

// What else than an id and a link an element has.
bool hasLooks(const SourceElement &element)
{
    return std::any_of(element.attributes.begin(), element.attributes.end(),
                       [](const SourceAttribute &attribute) {
                           static const QStringList others{QStringLiteral("id"),
                                                           QStringLiteral("href"),
                                                           QStringLiteral("target")};
                           return !others.contains(attribute.name)
                                   && !attribute.name.contains(QLatin1Char(':'));
                       });
}

// Only the tspan children of a text have a style of their own.
void findNestedSpans(const Understood &title, ProblemList &problems)
{
    for (const SourceElement &element : title.source().elements()) {
        if (element.parent == SourceElement::none || !hasLooks(element))
            continue;
        const SourceElement &parent = title.element(element.parent);
        const bool isLink =
                element.name == QLatin1String("a") && (isText(parent) || isSpan(parent));
        if (isSpan(element) && isSpan(parent))
            problems.warn("text-run", element.place,
                          QStringLiteral("a tspan inside a tspan looks like the outer one"),
                          QStringLiteral("Put it beside the other one."));
        else if (isLink)
            problems.warn("text-run", element.place,
                          QStringLiteral("a link inside a text looks like the text around it"),
                          QStringLiteral("Use a tspan without a link."));
    }
}

bool isVisiblePaint(const QString &paint)
{
    return !paint.isEmpty() && paint != QLatin1String("none")
            && paint != QLatin1String("transparent");
}

double pixelsOf(QString size)
{
    return size.remove(QLatin1String("px")).toDouble();
}

// The renderer scales a text from a font-size of 100, its outline included.
void findOutlines(const Understood &title, ProblemList &problems)
{
    constexpr double plainSize = 100.0;
    const QString stroke = QStringLiteral("stroke");
    const StyledValues values(title);
    for (int number = 0; number < int(title.source().elements().size()); ++number) {
        const SourceElement &element = title.element(number);
        const bool isOutlinedText =
                isText(element) && isVisiblePaint(values.inherited(number, stroke));
        const bool isOutlinedSpan = isSpan(element) && isVisiblePaint(values.own(number, stroke));
        if (!isOutlinedText && !isOutlinedSpan)
            continue;
        const QString fill = values.inherited(number, QStringLiteral("fill"));
        if (isOutlinedText && fill == QLatin1String("none"))
            problems.warn("text-outline", element.place,
                          QStringLiteral("letters that have a stroke and no fill are filled with "
                                         "the stroke"),
                          QStringLiteral("Convert the text to paths."));
        else if (pixelsOf(values.inherited(number, QStringLiteral("font-size"))) != plainSize)
            problems.warn("text-outline", element.place,
                          QStringLiteral("the stroke of a text is drawn in hundredths of its "
                                         "font-size, not in pixels"),
                          QStringLiteral("Convert the text to paths, or give it a font-size of 100 "
                                         "and scale it by a transform."));
    }
}

// The element that a person has to look at for a difference between two lines.
Place placeOfDifference(const Understood &title, const SourceText &text, const TextSpacing &spacing,
                        const TextLine &wanted, const TextLine &drawn)
{
    const SourceElement &element = title.element(text.element);
    if (spacing.isPreserved(text.element))
        return element.placeOf(QStringLiteral("xml:space"));
    const auto differs = std::mismatch(wanted.letters.begin(), wanted.letters.end(),
                                       drawn.letters.begin(), drawn.letters.end());
    const auto letter =
            std::find_if(differs.first, wanted.letters.end(), [](QChar c) { return !c.isSpace(); });
    if (letter == wanted.letters.end())
        return element.place;
    return title.element(wanted.owners[std::size_t(letter - wanted.letters.begin())]).place;
}

bool hasWideSpaces(const QString &letters)
{
    return std::adjacent_find(letters.begin(), letters.end(),
                              [](QChar a, QChar b) { return a.isSpace() && b.isSpace(); })
            != letters.end()
            || std::any_of(letters.begin(), letters.end(),
                           [](QChar c) { return c.isSpace() && c != QLatin1Char(' '); });
}

QString change(const TextLine &from, const TextLine &to)
{
    constexpr int longest = 60;
    return QStringLiteral("\"%1\" becomes \"%2\"")
            .arg(from.letters.left(longest), to.letters.left(longest));
}

// Whether only spaces are added at the end, where the anchor counts them.
bool isLongerAtEnd(const TextLine &wanted, const TextLine &drawn)
{
    return drawn.letters.size() > wanted.letters.size()
            && drawn.withoutSpacesAtEnd() == wanted.withoutSpacesAtEnd();
}

QString remedyOfEnd()
{
    return QStringLiteral("Write the last letters straight into the text element, after each "
                          "tspan and animation in it.");
}

// Where the spaces of a still title are others than in a browser.
void warnOfSpaces(ProblemList &problems, const Place &place, const TextLine &wanted,
                  const TextLine &drawn)
{
    const bool isShorterAtEnd = wanted.letters.endsWith(QLatin1Char(' '))
            && wanted.withoutSpacesAtEnd() == drawn.letters;
    if (isLongerAtEnd(wanted, drawn))
        problems.warn("text-spacing", place,
                      QStringLiteral("white space at the end counts for text-anchor: ")
                              + change(wanted, drawn),
                      remedyOfEnd());
    else if (hasWideSpaces(wanted.letters) || isShorterAtEnd)
        problems.warn("text-spacing", place,
                      QStringLiteral("several spaces count as one, also those that do not break, "
                                     "and wide ones as plain ones: ")
                              + change(wanted, drawn),
                      QStringLiteral("Add xml:space=\"preserve\" to the text element, and write "
                                     "the letters straight into it, without tspan elements."));
    else
        problems.warn("text-spacing", place,
                      QStringLiteral("spaces at the ends of a tspan are not drawn: ")
                              + change(wanted, drawn),
                      QStringLiteral("Write the spaces outside of the tspan."));
}

// Saving puts white space between elements that touch, and around those inside of a text. A saved
// text with undefined entities can't be read.
void findSpacesThatDiffer(const Understood &title, ProblemList &problems)
{
    const bool canBeSaved = title.source().undefinedEntities().empty();
    const std::vector<SourceText> &texts = title.source().texts();
    const std::vector<SourceText> &savedTexts = title.savedTexts();
    const TextSpacing spacing(title);
    for (std::size_t i = 0; i < texts.size() && i < savedTexts.size(); ++i) {
        const TextLine wanted = spacing.inBrowser(texts[i]);
        const TextLine drawn = spacing.byRenderer(texts[i]);
        const TextLine saved = canBeSaved ? spacing.byRenderer(savedTexts[i]) : drawn;
        const auto place = [&](const TextLine &other) {
            return placeOfDifference(title, texts[i], spacing, wanted, other);
        };
        const QString remedy = spacing.isPreserved(texts[i].element)
                ? QStringLiteral("Write each line straight into a text element of its own, without "
                                 "a tspan, with xml:space=\"default\" and the tspan's x, y and "
                                 "style.")
                : isLongerAtEnd(wanted, saved)
                ? remedyOfEnd()
                : QStringLiteral("Put a single run into each text, or let spaces separate the "
                                 "runs.");
        const TextLine &shown = title.isDrawnAsSaved() ? saved : drawn;
        if (shown.letters != wanted.letters && drawn.letters != wanted.letters)
            warnOfSpaces(problems, place(shown), wanted, shown);
        else if (shown.letters != wanted.letters)
            problems.warn("text-spacing", place(saved),
                          QStringLiteral("saving, as for every animated frame, adds spaces to this "
                                         "text: ")
                                  + change(wanted, saved),
                          remedy);
        else if (saved.letters != wanted.letters)
            problems.note("text-spacing", place(saved),
                          QStringLiteral("saving, as for a user's colours, adds spaces to this "
                                         "text: ")
                                  + change(wanted, saved),
                          remedy);
    }
}

// The renderer takes the letters of what describes a text for letters of the text.
void findDrawnDescriptions(const Understood &title, ProblemList &problems)
{
    const TextSpacing spacing(title);
    std::set<int> told;
    for (const SourceText &text : title.source().texts()) {
        for (const SourceText::Piece &piece : text.pieces) {
            if (!isBlank(piece.letters) && spacing.ownerOf(piece, text) != SourceElement::none
                && !spacing.isDrawnInBrowser(piece, text) && told.insert(piece.element).second)
                problems.warn("text-run", title.element(piece.element).place,
                              QStringLiteral("the letters of %1 are drawn, because it stands in a "
                                             "text")
                                      .arg(title.label(piece.element)),
                              QStringLiteral("Write it in a g element around the text."));
        }
    }
}

} // namespace

const std::vector<Check> &textChecks()
{
    static const std::vector<Check> checks{
            findMovedSpans,  findMovedLetters, findSpansShownAnyway, findAnchorsOfSpans,
            findNestedSpans, findOutlines,     findSpacesThatDiffer, findDrawnDescriptions};
    return checks;
}
