// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Admission_p.h"

#include "AdmissionLimits_p.h"
#include "Markup_p.h"
#include "NumberScan_p.h"
#include "Picture_p.h"
#include "References_p.h"
#include "TimeValue_p.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <limits>

// The bytes are looked at first, for what would make reading itself expensive; then the text is
// read once. Names of elements count without their prefix and names of attributes with it, as they
// do for the renderer.

namespace {

QString atLine(qint64 line, const QString &reason)
{
    return QStringLiteral("line %1: %2").arg(line).arg(reason.simplified());
}

bool isWhiteSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

QString exceeded(const AdmissionLimit &limit, qint64 line)
{
    return atLine(
            line,
            QStringLiteral("the %1 exceeds %2").arg(QLatin1String(limit.name)).arg(limit.most));
}

/// What an attribute's value is to the limits.
enum class Role {
    None,
    AnimatedName,
    Id,
    Reference,
    Style,
    Dashes,
    Length,
    Path,
    Extent, ///< a length, but a window on a canvas when it belongs to the svg element
    Window,
    Value ///< of an animation
};

struct NamedRole
{
    QLatin1String name;
    Role role;
};

/// In the order of their lengths.
const std::array<NamedRole, 43> roles{{
        {QLatin1String("d"), Role::Path},
        {QLatin1String("r"), Role::Length},
        {QLatin1String("x"), Role::Extent},
        {QLatin1String("y"), Role::Extent},
        {QLatin1String("by"), Role::Value},
        {QLatin1String("cx"), Role::Length},
        {QLatin1String("cy"), Role::Length},
        {QLatin1String("dx"), Role::Length},
        {QLatin1String("dy"), Role::Length},
        {QLatin1String("fx"), Role::Length},
        {QLatin1String("fy"), Role::Length},
        {QLatin1String("id"), Role::Id},
        {QLatin1String("rx"), Role::Length},
        {QLatin1String("ry"), Role::Length},
        {QLatin1String("to"), Role::Value},
        {QLatin1String("x1"), Role::Length},
        {QLatin1String("x2"), Role::Length},
        {QLatin1String("y1"), Role::Length},
        {QLatin1String("y2"), Role::Length},
        {QLatin1String("from"), Role::Value},
        {QLatin1String("path"), Role::Path},
        {QLatin1String("style"), Role::Style},
        {QLatin1String("width"), Role::Extent},
        {QLatin1String("ascent"), Role::Length},
        {QLatin1String("height"), Role::Extent},
        {QLatin1String("offset"), Role::Length},
        {QLatin1String("points"), Role::Path},
        {QLatin1String("values"), Role::Value},
        {QLatin1String("xml:id"), Role::Id},
        {QLatin1String("descent"), Role::Length},
        {QLatin1String("viewBox"), Role::Window},
        {QLatin1String("font-size"), Role::Length},
        {QLatin1String("transform"), Role::Length},
        {QLatin1String("xlink:href"), Role::Reference},
        {QLatin1String("horiz-adv-x"), Role::Length},
        {QLatin1String("stroke-width"), Role::Length},
        {QLatin1String("units-per-em"), Role::Length},
        {QLatin1String("attributeName"), Role::AnimatedName},
        {QLatin1String("stroke-dasharray"), Role::Dashes},
        {QLatin1String("gradientTransform"), Role::Length},
        {QLatin1String("stroke-dashoffset"), Role::Length},
        {QLatin1String("stroke-miterlimit"), Role::Length},
        {QLatin1String("underline-thickness"), Role::Length},
}};

constexpr int longestName = 19;

/// For each length of a name, where in the roles the names of at least that length begin.
std::array<std::size_t, longestName + 2> rolesByLength()
{
    std::array<std::size_t, longestName + 2> result{};
    for (std::size_t length = 0; length < result.size(); ++length) {
        const auto first =
                std::find_if(roles.begin(), roles.end(), [length](const NamedRole &entry) {
                    return entry.name.size() >= int(length);
                });
        result[length] = std::size_t(first - roles.begin());
    }
    return result;
}

bool isSame(const QLatin1String &a, const QStringRef &b)
{
    return a.size() == b.size() && std::equal(b.begin(), b.end(), a.data(), [](QChar c, char d) {
               return c.unicode() == uchar(d);
           });
}

Role roleOf(const QStringRef &name)
{
    static const auto byLength = rolesByLength();
    if (name.size() > longestName)
        return Role::None;
    const std::size_t end = byLength[std::size_t(name.size()) + 1];
    for (std::size_t i = byLength[std::size_t(name.size())]; i < end; ++i) {
        if (isSame(roles[i].name, name))
            return roles[i].role;
    }
    return Role::None;
}

/// The kinds of elements that limits know.
enum class Kind { Other, Svg, Use, Gradient, Stop, Picture, Text, StyleSheet, Animation, Played };

Kind kindOf(const QStringRef &qualifiedName)
{
    const QStringRef name = qualifiedName.mid(qualifiedName.indexOf(QLatin1Char(':')) + 1);
    static const std::array<std::pair<QLatin1String, Kind>, 14> kinds{{
            {QLatin1String("svg"), Kind::Svg},
            {QLatin1String("use"), Kind::Use},
            {QLatin1String("linearGradient"), Kind::Gradient},
            {QLatin1String("radialGradient"), Kind::Gradient},
            {QLatin1String("stop"), Kind::Stop},
            {QLatin1String("image"), Kind::Picture},
            {QLatin1String("text"), Kind::Text},
            {QLatin1String("textArea"), Kind::Text},
            {QLatin1String("style"), Kind::StyleSheet},
            {QLatin1String("animate"), Kind::Animation},
            {QLatin1String("set"), Kind::Animation},
            {QLatin1String("animateMotion"), Kind::Animation},
            {QLatin1String("animateTransform"), Kind::Played},
            {QLatin1String("animateColor"), Kind::Played},
    }};
    for (const auto &kind : kinds) {
        if (isSame(kind.first, name))
            return kind.second;
    }
    return Kind::Other;
}

bool isAnimation(Kind kind)
{
    return kind == Kind::Animation || kind == Kind::Played;
}

/// The renderer keeps begin and end in an int each.
bool fitsRendererTimes(const QXmlStreamAttributes &attributes)
{
    const int begin = timeFromText(attributes.value(QLatin1String("begin")).toString());
    const int duration = timeFromText(attributes.value(QLatin1String("dur")).toString());
    const qint64 end = qint64(begin) + duration;
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr int lowest = std::numeric_limits<int>::min();
    return begin < highest && begin > lowest && duration < highest && duration > lowest
            && end < highest && end > lowest;
}

/// Whether the view box has a size.
bool isCanvas(const QStringRef &viewBox)
{
    static const QRegularExpression separator(QStringLiteral("[\\s,]+"));
    QStringList parts = viewBox.toString().split(separator);
    parts.removeAll(QString());
    return parts.size() == 4 && parts.at(2).toDouble() > 0.0 && parts.at(3).toDouble() > 0.0;
}

/// The same as the renderer: any character may stand for "#".
QString idIn(const QStringRef &reference)
{
    return reference.mid(1).toString();
}

/// One pass over a text.
class Inspection
{
public:
    explicit Inspection(const QByteArray &text) : m_text(text), m_reader(text)
    {
        m_reader.setNamespaceProcessing(false);
    }

    /// Reads up to the end of the root; afterwards refusal() is known.
    void run()
    {
        inspectBytes();
        while (m_refusal.isEmpty() && !m_isDone) {
            inspectToken(m_reader.readNext());
            if (m_reader.hasError())
                refuse(atLine(m_reader.lineNumber(), m_reader.errorString()));
        }
        if (m_refusal.isEmpty())
            inspectWhole();
    }

    const QString &refusal() const { return m_refusal; }
    bool mustTakeOut() const { return m_hasStyleInstruction || !m_foreignPictures.empty(); }
    const std::vector<int> &foreignPictures() const { return m_foreignPictures; }

private:
    struct Open
    {
        int element;
        Kind kind;
        int stops;
    };

    void refuse(const QString &refusal)
    {
        if (m_refusal.isEmpty())
            m_refusal = refusal;
    }

    void hold(qint64 amount, const AdmissionLimit &limit)
    {
        if (amount > limit.most)
            refuse(exceeded(limit, m_reader.lineNumber()));
    }

    void inspectBytes()
    {
        if (m_text.size() > AdmissionLimits::textSize.most) {
            refuse(exceeded(AdmissionLimits::textSize, 1));
        } else if (std::all_of(m_text.begin(), m_text.end(), isWhiteSpace)) {
            refuse(QStringLiteral("the document is empty"));
        } else if (const int line = lineOfTooManyAttributes(m_text)) {
            refuse(exceeded(AdmissionLimits::attributes, line));
        } else {
            inspectDocumentType(internalSubset(m_text));
        }
    }

    /// Entities are all that an internal subset may declare: a default of an attribute multiplies
    /// by the elements, and the model of an element nests without limit.
    void inspectDocumentType(const QByteArray &subset)
    {
        if (subset.isEmpty())
            return;
        if (subset.contains("<!ELEMENT") || subset.contains("<!ATTLIST") || subset.contains('%'))
            refuse(atLine(1, QStringLiteral("the document type declares more than entities")));
        hold(subset.size(), AdmissionLimits::documentTypeSize);
        hold(subset.count("<!ENTITY"), AdmissionLimits::declaredEntities);
        hold(m_text.count('&') - m_text.count("&#"), AdmissionLimits::entityReferences);
    }

    void inspectToken(QXmlStreamReader::TokenType token)
    {
        switch (token) {
        case QXmlStreamReader::StartElement:
            startElement();
            break;
        case QXmlStreamReader::EndElement:
            endElement();
            break;
        case QXmlStreamReader::Characters:
        case QXmlStreamReader::EntityReference:
            characters();
            break;
        case QXmlStreamReader::ProcessingInstruction:
            if (m_reader.processingInstructionTarget() == QLatin1String("xml-stylesheet"))
                m_hasStyleInstruction = true;
            break;
        case QXmlStreamReader::EndDocument:
            m_isDone = true;
            break;
        default:
            break;
        }
    }

    void startElement()
    {
        const Kind kind = kindOf(m_reader.name());
        const int element = m_elements++;
        if (kind == Kind::Stop && !m_open.empty())
            hold(++m_open.back().stops, AdmissionLimits::gradientStops);
        if (kind == Kind::Text && m_texts++ == 0)
            m_characters = 0;
        m_references.begin(element);
        m_open.push_back({element, kind, 0});
        hold(m_elements, AdmissionLimits::elements);
        hold(qint64(m_open.size()), AdmissionLimits::nestingDepth);
        inspectAttributes(m_reader.attributes(), kind, element);
    }

    void endElement()
    {
        if (m_open.back().kind == Kind::Text)
            --m_texts;
        m_references.end(m_open.back().element, m_elements);
        m_open.pop_back();
        m_isDone = m_open.empty();
    }

    void characters()
    {
        if (m_open.empty())
            return;
        const QStringRef text = m_reader.text();
        if (m_texts > 0) {
            m_characters += text.size();
            hold(m_characters, AdmissionLimits::textLength);
        }
        if (m_open.back().kind == Kind::StyleSheet)
            inspectStyleSheet(text);
    }

    void inspectStyleSheet(const QStringRef &text)
    {
        m_styleSheet += text.size();
        hold(m_styleSheet, AdmissionLimits::styleSheetSize);
        m_selectors += text.count(QLatin1Char('{')) + text.count(QLatin1Char(','));
        inspectStyle(text);
    }

    void inspectStyle(const QStringRef &text)
    {
        if (text.contains(QLatin1String("dash")) || text.contains(QLatin1Char('\\')))
            m_hasDashes = true;
        if (hasTooLargeStyle(text))
            refuse(exceeded(AdmissionLimits::magnitude, m_reader.lineNumber()));
    }

    void inspectAttributes(const QXmlStreamAttributes &attributes, Kind kind, int element)
    {
        hold(attributes.size(), AdmissionLimits::attributes);
        if (kind == Kind::Played && !fitsRendererTimes(attributes))
            refuse(atLine(m_reader.lineNumber(),
                          QStringLiteral("the times of an animation are out of range")));
        const QStringRef animated =
                isAnimation(kind) ? attributes.value(QLatin1String("attributeName")) : QStringRef();
        for (const QXmlStreamAttribute &attribute : attributes) {
            const Role role = roleOf(attribute.qualifiedName());
            const QStringRef value = attribute.value();
            if (kind == Kind::Picture && role == Role::Reference)
                inspectPicture(value, element);
            else
                hold(value.size(), AdmissionLimits::attributeLength);
            if (role != Role::None)
                inspectValue(role, value, kind, element, animated);
        }
    }

    void inspectValue(Role role, const QStringRef &value, Kind kind, int element,
                      const QStringRef &animated)
    {
        switch (role) {
        case Role::Id:
            m_references.addId(value.toString(), element);
            break;
        case Role::Reference:
            addReference(kind, element, value);
            break;
        case Role::Style:
            inspectStyle(value);
            break;
        case Role::Dashes:
            m_hasDashes = true;
            inspectNumbers(value, AdmissionLimits::dashes);
            break;
        case Role::Path:
        case Role::Length:
            inspectNumbers(value, AdmissionLimits::pathNumbers);
            break;
        case Role::Extent:
            if (kind == Kind::Svg)
                inspectLooseNumbers(value);
            else
                inspectNumbers(value, AdmissionLimits::pathNumbers);
            break;
        case Role::Window:
            if (element == 0)
                m_hasCanvas = isCanvas(value);
            inspectLooseNumbers(value);
            break;
        case Role::AnimatedName:
            if (value.contains(QLatin1String("dash")) || value == QLatin1String("style"))
                m_hasDashes = true;
            m_isCanvasAnimated = m_isCanvasAnimated || value == QLatin1String("viewBox");
            break;
        case Role::Value:
            if (isAnimation(kind))
                inspectAnimatedValue(animated, value);
            break;
        case Role::None:
            break;
        }
    }

    void inspectNumbers(const QStringRef &value, const AdmissionLimit &count)
    {
        const NumberScan scan = scanNumbers(value);
        hold(scan.count, count);
        if (scan.isTooLarge)
            refuse(exceeded(AdmissionLimits::magnitude, m_reader.lineNumber()));
    }

    /// Numbers that are harmless unless something is dashed.
    void inspectLooseNumbers(const QStringRef &value)
    {
        if (m_lineOfLargeNumber == 0 && scanNumbers(value).isTooLarge)
            m_lineOfLargeNumber = m_reader.lineNumber();
    }

    void inspectAnimatedValue(const QStringRef &animated, const QStringRef &value)
    {
        hold(value.count(QLatin1Char(';')), AdmissionLimits::keyValues);
        inspectLooseNumbers(value);
        const int depth = int(m_open.size());
        if (depth < 2
            || (animated != QLatin1String("xlink:href") && animated != QLatin1String("id")))
            return;
        const Open &parent = m_open[std::size_t(depth - 2)];
        for (const QStringRef &part : value.split(QLatin1Char(';'))) {
            if (animated == QLatin1String("id"))
                m_references.addId(part.trimmed().toString(), parent.element);
            else
                addReference(parent.kind, parent.element, part.trimmed());
        }
    }

    void addReference(Kind kind, int element, const QStringRef &reference)
    {
        if (kind == Kind::Use)
            m_references.addReference(References::Kind::Use, element, idIn(reference),
                                      m_reader.lineNumber());
        else if (kind == Kind::Gradient)
            m_references.addReference(References::Kind::Gradient, element, idIn(reference),
                                      m_reader.lineNumber());
    }

    void inspectPicture(const QStringRef &reference, int element)
    {
        if (reference == QLatin1String(transparentPicture()))
            return;
        const qint64 pixels = pixelsOfPicture(reference.toString());
        m_pixels += pixels;
        if (pixels > 0 && m_pixels <= AdmissionLimits::picturePixels.most)
            return;
        m_pixels -= pixels;
        m_foreignPictures.push_back(element);
    }

    void inspectWhole()
    {
        hold(m_selectors * m_elements, AdmissionLimits::styleComparisons);
        if (m_hasDashes && m_lineOfLargeNumber > 0)
            refuse(exceeded(AdmissionLimits::magnitude, m_lineOfLargeNumber));
        if (m_refusal.isEmpty()) {
            if (const auto excess = m_references.excess(m_hasCanvas && !m_isCanvasAnimated))
                refuse(exceeded(excess->limit, excess->line));
        }
    }

    const QByteArray m_text;
    QXmlStreamReader m_reader;
    QString m_refusal;
    bool m_isDone = false;

    std::vector<Open> m_open; // from the root to the current element
    int m_elements = 0;
    int m_texts = 0; // open ones
    qint64 m_characters = 0;
    qint64 m_styleSheet = 0;
    qint64 m_selectors = 0;
    bool m_hasDashes = false;
    qint64 m_lineOfLargeNumber = 0;
    bool m_hasCanvas = false;
    bool m_isCanvasAnimated = false;
    References m_references;

    bool m_hasStyleInstruction = false;
    std::vector<int> m_foreignPictures; // by number of the element
    qint64 m_pixels = 0;
};

} // namespace

Admission admit(const QByteArray &text)
{
    Inspection inspection(text);
    inspection.run();
    if (!inspection.refusal().isEmpty() || !inspection.mustTakeOut())
        return {text, inspection.refusal()};
    const QByteArray harmless = withoutForeignReferences(text, inspection.foreignPictures());
    Inspection again(harmless);
    again.run();
    if (again.refusal().isEmpty() && again.mustTakeOut())
        return {text, QStringLiteral("references to other files stand where they cannot be found")};
    return {harmless, again.refusal()};
}
