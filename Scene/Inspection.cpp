// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Inspection_p.h"

#include "Markup_p.h"
#include "NumberScan_p.h"
#include "Picture_p.h"
#include "TimeValue_p.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace {

/// QString::fromUtf8() takes a byte order mark away.
QString decoded(std::string_view text)
{
    const QString result = QString::fromUtf8(text.data(), int(text.size()));
    return text.substr(0, 3) == "\xEF\xBB\xBF" ? QChar(QChar::ByteOrderMark) + result : result;
}

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

qint64 countOf(std::string_view text, char c)
{
    return std::count(text.begin(), text.end(), c);
}

bool isContinuation(char c)
{
    return (uchar(c) & 0xC0) == 0x80;
}

qint64 countCharacters(std::string_view text)
{
    return std::count_if(text.begin(), text.end(), [](char c) { return !isContinuation(c); });
}

bool isBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// A narrow text area may have a line for each character, and a span is laid out on its own.
constexpr int charactersOfLine = 10;

bool isText(ElementKind kind)
{
    return kind == ElementKind::Text || kind == ElementKind::TextArea;
}

bool isAnimation(ElementKind kind)
{
    return kind == ElementKind::Animation || kind == ElementKind::RendererPlayed;
}

std::string_view valueOf(std::string_view name, const std::vector<XmlAttribute> &attributes)
{
    const auto found =
            std::find_if(attributes.begin(), attributes.end(),
                         [name](const XmlAttribute &entry) { return entry.name == name; });
    return found == attributes.end() ? std::string_view() : found->value;
}

/// The renderer keeps begin and end in an int each.
bool fitsRendererTimes(const std::vector<XmlAttribute> &attributes)
{
    const int begin = timeFromText(decoded(valueOf("begin", attributes)));
    const int duration = timeFromText(decoded(valueOf("dur", attributes)));
    const qint64 end = qint64(begin) + duration;
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr int lowest = std::numeric_limits<int>::min();
    return begin < highest && begin > lowest && duration < highest && duration > lowest
            && end < highest && end > lowest;
}

/// Whether the view box has a size.
bool isCanvas(std::string_view viewBox)
{
    static const QRegularExpression separator(QStringLiteral("[\\s,]+"));
    QStringList parts = decoded(viewBox).split(separator);
    parts.removeAll(QString());
    return parts.size() == 4 && parts.at(2).toDouble() > 0.0 && parts.at(3).toDouble() > 0.0;
}

QString excess(const AdmissionLimit &limit)
{
    return QStringLiteral("the %1 exceeds %2").arg(QLatin1String(limit.name)).arg(limit.most);
}

/// The same as the renderer: any character may stand for "#".
std::string_view idIn(std::string_view reference)
{
    const auto second = std::find_if_not(reference.begin() + (reference.empty() ? 0 : 1),
                                         reference.end(), isContinuation);
    return reference.substr(std::size_t(second - reference.begin()));
}

} // namespace

void Inspection::refuse(const QString &refusal)
{
    if (m_refusal.isEmpty())
        m_refusal = refusal;
}

void Inspection::refuseHere(const QString &reason)
{
    refuse(here(reason));
}

QString Inspection::here(const QString &text) const
{
    return QStringLiteral("line %1: %2").arg(m_line).arg(text.simplified());
}

void Inspection::exceed(const AdmissionLimit &limit)
{
    refuseHere(excess(limit));
}

/// Only the first one is told.
void Inspection::leaveOut(const QString &what)
{
    if (m_leftOut.isEmpty())
        m_leftOut = here(what);
}

void Inspection::hold(qint64 amount, const AdmissionLimit &limit)
{
    if (amount > limit.most)
        exceed(limit);
}

void Inspection::holdTemplate(qint64 amount, const AdmissionLimit &limit)
{
    if (m_origin == Origin::Template)
        hold(amount, limit);
}

void Inspection::startElement(std::string_view name, const std::vector<XmlAttribute> &attributes)
{
    const ElementKind kind = kindOfElement(name);
    const int element = m_elements++;
    if (kind == ElementKind::Stop && !m_open.empty())
        hold(++m_open.back().stops, AdmissionLimits::gradientStops);
    m_references.begin(element);
    if (m_texts > 0)
        addCharacters(charactersOfLine);
    if (isText(kind) && m_texts++ == 0)
        m_characters = 0;
    m_textAreas += kind == ElementKind::TextArea ? 1 : 0;
    m_styles += kind == ElementKind::StyleSheet ? 1 : 0;
    if (!m_stylings.empty())
        addStyledName(name);
    m_open.push_back({element, kind, 0, {}});
    m_deepest = std::max(m_deepest, m_open.size());
    m_attributes += qint64(attributes.size());
    holdTemplate(m_attributes, AdmissionLimits::allAttributes);
    hold(m_elements, AdmissionLimits::elements);
    hold(qint64(m_open.size()), AdmissionLimits::nestingDepth);
    holdTemplate(qint64(attributes.size()), AdmissionLimits::attributes);
    inspectAttributes(attributes, m_open.back());
}

void Inspection::endElement()
{
    const ElementKind kind = m_open.back().kind;
    m_texts -= isText(kind) ? 1 : 0;
    m_textAreas -= kind == ElementKind::TextArea ? 1 : 0;
    m_styles -= kind == ElementKind::StyleSheet ? 1 : 0;
    m_references.end(m_open.back().element, m_elements);
    m_open.pop_back();
}

void Inspection::characters(std::string_view text, bool isData)
{
    if (m_open.empty())
        return;
    // Parsing drops white space between tags, so after a save it is that of the save.
    if (m_origin != Origin::Template && !isData && isBlank(text))
        return;
    if (m_texts > 0) {
        const qint64 count = countCharacters(text) * (m_textAreas > 0 ? charactersOfLine : 1);
        m_characters += count;
        holdTemplate(m_characters, AdmissionLimits::textLength);
        addCharacters(count);
    }
    // The renderer takes all characters up to the end of a style element for its own.
    if (m_styles > 0)
        inspectStyleSheet(text);
}

void Inspection::addCharacters(qint64 count)
{
    m_references.addCharacters(count);
    hold(m_references.total().characters, AdmissionLimits::drawnCharacters);
}

void Inspection::processingInstruction(std::string_view target)
{
    if (target != "xml-stylesheet")
        return;
    m_hasStyleInstruction = true;
    leaveOut(QStringLiteral("a style sheet outside the title is left out"));
}

void Inspection::inspectStyleSheet(std::string_view text)
{
    const SelectorScan scan = scanSelectors(text);
    m_styleSheet += qint64(text.size()) - scan.embedded;
    holdTemplate(m_styleSheet, AdmissionLimits::styleSheetSize);
    m_selectors.single += scan.single;
    m_selectors.ancestor += scan.ancestor;
    m_selectors.sibling += scan.sibling;
    for (const SelectorScan::Styling &styling : scan.stylings)
        m_stylings[styling.key] += styling.weight;
    inspectStyle(text);
}

/// The renderer gives an element what stands in the style sheets before it.
void Inspection::addStyled(const std::string &key)
{
    const auto found = m_stylings.find(key);
    if (found != m_stylings.end())
        m_styled = std::min(m_styled + found->second, AdmissionLimits::styling.most + 1);
}

void Inspection::addStyledName(std::string_view name)
{
    const std::string key = keyOfName(name.substr(name.find(':') + 1)); // npos + 1 is 0
    addStyled({});
    if (!key.empty())
        addStyled(key == "stop" ? "animation" : key); // which the renderer takes a stop for
}

void Inspection::addStyledClasses(std::string_view classes)
{
    while (!m_stylings.empty() && !classes.empty()) {
        const std::size_t end = std::min(classes.find(' '), classes.size());
        addStyled('.' + std::string(classes.substr(0, end)));
        classes.remove_prefix(std::min(end + 1, classes.size()));
    }
}

void Inspection::inspectStyle(std::string_view text)
{
    if (contains(text, "dash") || contains(text, "\\"))
        m_hasDashes = true;
    m_escapes += countOf(text, '\\') * qint64(text.size());
    hold(m_escapes, AdmissionLimits::escapes);
    const StyleScan scan = scanStyle(text);
    hold(scan.dashes, AdmissionLimits::dashes);
    if (scan.isTooLarge)
        refuseLargeNumber();
}

void Inspection::inspectAttributes(const std::vector<XmlAttribute> &attributes, const Open &owner)
{
    if (owner.kind == ElementKind::RendererPlayed && !fitsRendererTimes(attributes))
        refuseHere(QStringLiteral("the times of an animation are out of range"));
    const std::string_view animated =
            isAnimation(owner.kind) ? valueOf("attributeName", attributes) : std::string_view();
    for (const XmlAttribute &attribute : attributes) {
        const AttributeRole role = roleOfAttribute(attribute.name);
        if (owner.kind == ElementKind::Picture && role == AttributeRole::Reference)
            inspectPicture(attribute.value, owner.element);
        else
            hold(qint64(attribute.value.size()), AdmissionLimits::attributeLength);
        if (role != AttributeRole::None)
            inspectValue(role, attribute.value, owner, animated);
    }
}

void Inspection::inspectValue(AttributeRole role, std::string_view value, const Open &owner,
                              std::string_view animated)
{
    switch (role) {
    case AttributeRole::Id:
        m_references.addId(value, owner.element);
        if (!m_stylings.empty())
            addStyled('#' + std::string(value));
        break;
    case AttributeRole::Class:
        addStyledClasses(value);
        break;
    case AttributeRole::Reference:
        addReference(owner, value);
        break;
    case AttributeRole::UseReference:
        if (owner.kind == ElementKind::Use)
            addReference(owner, value);
        break;
    case AttributeRole::Style:
        inspectStyle(value);
        break;
    case AttributeRole::Dashes:
        m_hasDashes = true;
        inspectNumbers(value, AdmissionLimits::dashes);
        break;
    case AttributeRole::Path:
        inspectPath(value, owner);
        break;
    case AttributeRole::Length:
        inspectNumbers(value, AdmissionLimits::pathNumbers);
        break;
    case AttributeRole::Extent:
        if (owner.kind == ElementKind::Svg)
            inspectLooseNumbers(value);
        else
            inspectNumbers(value, AdmissionLimits::pathNumbers);
        break;
    case AttributeRole::Window:
        if (owner.element == 0)
            m_hasCanvas = isCanvas(value);
        inspectLooseNumbers(value);
        break;
    case AttributeRole::AnimatedName:
        inspectAnimatedName(value, owner);
        break;
    case AttributeRole::Value:
        if (isAnimation(owner.kind))
            inspectAnimatedValue(animated, value);
        break;
    case AttributeRole::None:
        break;
    }
}

void Inspection::inspectPath(std::string_view value, const Open &owner)
{
    const int count = inspectNumbers(value, AdmissionLimits::pathNumbers);
    if (owner.kind == ElementKind::Glyph)
        m_references.addGlyph(count);
    else
        m_references.addCoordinates(count);
    hold(m_references.total().coordinates, AdmissionLimits::drawnCoordinates);
}

int Inspection::inspectNumbers(std::string_view value, const AdmissionLimit &count)
{
    const NumberScan scan = scanNumbers(value);
    hold(scan.count, count);
    if (scan.isTooLarge)
        refuseLargeNumber();
    return scan.count;
}

/// Numbers that are harmless unless something is dashed.
void Inspection::inspectLooseNumbers(std::string_view value)
{
    if (scanNumbers(value).isTooLarge)
        noteLargeNumber();
}

/// Refused once it is known that something is dashed.
void Inspection::noteLargeNumber()
{
    if (m_lineOfLargeNumber == 0)
        m_lineOfLargeNumber = m_line;
}

void Inspection::refuseLargeNumber()
{
    if (m_origin == Origin::Frame)
        noteLargeNumber();
    else
        exceed(AdmissionLimits::magnitude);
}

/// Each animated attribute is one that the element around the animation may have to take, too.
void Inspection::inspectAnimatedName(std::string_view value, const Open &owner)
{
    if (isAnimation(owner.kind) && m_open.size() >= 2) {
        std::set<std::string> &names = m_open[m_open.size() - 2].animatedNames;
        names.emplace(value);
        hold(qint64(names.size()), AdmissionLimits::attributes);
    }
    m_hasDashes = m_hasDashes || contains(value, "dash") || value == "style";
    m_isCanvasAnimated = m_isCanvasAnimated || value == "viewBox";
}

void Inspection::inspectAnimatedValue(std::string_view animated, std::string_view value)
{
    hold(countOf(value, ';'), AdmissionLimits::keyValues);
    inspectLooseNumbers(value);
    const AttributeRole role = roleOfAttribute(animated);
    const bool isReference =
            role == AttributeRole::Reference || role == AttributeRole::UseReference;
    if (m_open.size() < 2 || (!isReference && role != AttributeRole::Id))
        return;
    const Open &parent = m_open[m_open.size() - 2];
    for (const QString &part : decoded(value).split(QLatin1Char(';'))) {
        const QByteArray keyValue = part.trimmed().toUtf8();
        const std::string_view text(keyValue.constData(), std::size_t(keyValue.size()));
        if (isReference)
            addReference(parent, text);
        else
            m_references.addId(text, parent.element);
    }
}

void Inspection::addReference(const Open &owner, std::string_view reference)
{
    if (owner.kind == ElementKind::Use)
        m_references.addReference(References::Kind::Use, owner.element, idIn(reference), m_line);
    else if (owner.kind == ElementKind::Gradient)
        m_references.addReference(References::Kind::Gradient, owner.element, idIn(reference),
                                  m_line);
}

void Inspection::inspectPicture(std::string_view reference, int element)
{
    const QString text = decoded(reference);
    if (text == QLatin1String(transparentPicture()))
        return;
    const qint64 pixels = pixelsOfPicture(text);
    m_pixels += pixels;
    if (pixels > 0 && m_pixels <= AdmissionLimits::picturePixels.most)
        return;
    m_pixels -= pixels;
    m_foreignPictures.push_back(element);
    if (!text.trimmed().isEmpty())
        leaveOut(QStringLiteral("a picture is left out: ")
                 + (pixels > 0
                            ? excess(AdmissionLimits::picturePixels)
                            : QStringLiteral("it is no PNG or JPEG in the title, or too large")));
}

qint64 Inspection::styleComparisons() const
{
    const qint64 around = m_selectors.ancestor * qint64(m_deepest);
    const qint64 before = m_selectors.sibling * m_elements;
    return m_elements * (m_selectors.single + around + before);
}

void Inspection::finish()
{
    hold(styleComparisons(), AdmissionLimits::styleComparisons);
    hold(m_styled, AdmissionLimits::styling);
    if (const auto limit = m_references.excessOfTotal())
        exceed(*limit);
    if (m_hasDashes && m_lineOfLargeNumber > 0) {
        setLine(m_lineOfLargeNumber);
        exceed(AdmissionLimits::magnitude);
    }
    if (!m_refusal.isEmpty())
        return;
    if (const auto excess = m_references.excess(m_hasCanvas && !m_isCanvasAnimated)) {
        setLine(excess->line);
        exceed(excess->limit);
    }
}
