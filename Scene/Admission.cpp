// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Admission_p.h"

#include "AdmissionLimits_p.h"
#include "Inspection_p.h"
#include "MarkupScanner_p.h"
#include "Markup_p.h"
#include "PlainXml_p.h"
#include "XmlText_p.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <optional>

// Most titles are plain XML, which is read fast, and need nothing. Whatever is said against any
// other is said by way of a reader that knows all of XML: its bytes are looked at first, for what
// would make reading itself expensive; then it is read once.

namespace {

bool isWhiteSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Entities are all that an internal subset may declare: a default of an attribute multiplies
/// by the elements, and the model of an element nests without limit.
void inspectDocumentTypes(const QByteArray &text, Inspection *inspection)
{
    const DocumentTypeScan scan = scanDocumentTypes(text);
    if (scan.declaresMore)
        inspection->refuseHere(QStringLiteral("the document type declares more than entities"));
    if (!scan.isFinished)
        inspection->refuseHere(QStringLiteral("the document type has no end"));
    inspection->hold(scan.size, AdmissionLimits::documentTypeSize);
    inspection->hold(scan.entities, AdmissionLimits::declaredEntities);
    if (scan.entities > 0)
        inspection->hold(countEntityReferences(text), AdmissionLimits::entityReferences);
}

/// The first limit that the bytes exceed, whatever they say.
std::optional<AdmissionLimit> limitExceededByBytes(const QByteArray &text, Origin origin)
{
    if (origin != Origin::Template)
        return std::nullopt;
    if (text.size() > AdmissionLimits::textSize.most)
        return AdmissionLimits::textSize;
    if (std::count(text.begin(), text.end(), '<') > AdmissionLimits::markup.most)
        return AdmissionLimits::markup;
    return std::nullopt;
}

int lineOfTooManyAttributes(const QByteArray &text, Origin origin)
{
    return origin == Origin::Template ? lineOfTooManyAttributes(text) : 0;
}

/// Whether a reader takes the text for UTF-8, in which markup can be found by its bytes.
bool isReadAsUtf8(const QByteArray &text)
{
    const uchar first = text.isEmpty() ? 0 : uchar(text.front());
    const bool hasOtherMark = first == 0 || first >= 0xFE;
    return !hasOtherMark && withUtf8Declaration(text).constData() == text.constData();
}

void inspectBytes(const QByteArray &text, Inspection *inspection)
{
    if (const auto limit = limitExceededByBytes(text, inspection->origin())) {
        inspection->exceed(*limit);
    } else if (std::all_of(text.begin(), text.end(), isWhiteSpace)) {
        inspection->refuse(QStringLiteral("the document is empty"));
    } else if (!isReadAsUtf8(text)) {
        inspection->refuseHere(QStringLiteral("the text is not UTF-8"));
    } else if (const int line = lineOfTooManyAttributes(text, inspection->origin())) {
        inspection->setLine(line);
        inspection->exceed(AdmissionLimits::attributes);
    } else {
        inspectDocumentTypes(text, inspection);
    }
}

/// The attributes of the element that a reader is at.
class DecodedAttributes
{
public:
    explicit DecodedAttributes(const QXmlStreamAttributes &attributes)
    {
        m_texts.reserve(2 * std::size_t(attributes.size())); // what is referred to must not move
        for (const QXmlStreamAttribute &attribute : attributes)
            m_attributes.push_back({kept(attribute.qualifiedName()), kept(attribute.value())});
    }

    const std::vector<XmlAttribute> &attributes() const { return m_attributes; }

private:
    std::string_view kept(const QStringRef &text)
    {
        m_texts.push_back(text.toUtf8());
        return view(m_texts.back());
    }

    std::vector<QByteArray> m_texts;
    std::vector<XmlAttribute> m_attributes;
};

void inspectToken(const QXmlStreamReader &reader, Inspection *inspection)
{
    switch (reader.tokenType()) {
    case QXmlStreamReader::StartElement:
        inspection->startElement(view(reader.qualifiedName().toUtf8()),
                                 DecodedAttributes(reader.attributes()).attributes());
        break;
    case QXmlStreamReader::EndElement:
        inspection->endElement();
        break;
    case QXmlStreamReader::Characters:
    case QXmlStreamReader::EntityReference:
        inspection->characters(view(reader.text().toUtf8()), reader.isCDATA());
        break;
    case QXmlStreamReader::ProcessingInstruction:
        inspection->processingInstruction(view(reader.processingInstructionTarget().toUtf8()));
        break;
    default:
        break;
    }
}

/// Reads up to the end of the root.
void inspectXml(const QByteArray &text, Inspection *inspection)
{
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    while (inspection->refusal().isEmpty() && !inspection->isAfterRoot() && !reader.atEnd()) {
        reader.readNext();
        inspection->setLine(reader.lineNumber());
        inspectToken(reader, inspection);
        if (reader.hasError())
            inspection->refuseHere(reader.errorString());
    }
}

Inspection inspected(const QByteArray &text, Origin origin)
{
    Inspection inspection(origin);
    inspectBytes(text, &inspection);
    inspectXml(text, &inspection);
    inspection.finish();
    return inspection;
}

} // namespace

bool isPlainAndHarmless(const QByteArray &text, Origin origin)
{
    if (limitExceededByBytes(text, origin))
        return false;
    Inspection inspection(origin);
    PlainXml xml(text, int(AdmissionLimits::attributes.most));
    while (inspection.refusal().isEmpty() && !inspection.mustTakeOut()) {
        switch (xml.next()) {
        case PlainXml::Token::StartElement:
            inspection.startElement(xml.name(), xml.attributes());
            break;
        case PlainXml::Token::EndElement:
            inspection.endElement();
            break;
        case PlainXml::Token::Characters:
            inspection.characters(xml.text());
            break;
        case PlainXml::Token::End:
            inspection.finish();
            return inspection.refusal().isEmpty();
        case PlainXml::Token::NotPlain:
            return false;
        }
    }
    return false;
}

Admission judge(const QByteArray &text, Origin origin)
{
    const Inspection inspection = inspected(text, origin);
    if (!inspection.refusal().isEmpty() || !inspection.mustTakeOut())
        return {text, inspection.refusal(), QString()};
    const QByteArray harmless = withoutForeignReferences(text, inspection.foreignPictures());
    const Inspection again = inspected(harmless, origin);
    if (again.refusal().isEmpty() && again.mustTakeOut())
        return {text, QStringLiteral("references to other files stand where they cannot be found"),
                QString()};
    return {harmless, again.refusal(), inspection.leftOut()};
}

Admission admit(const QByteArray &text, Origin origin)
{
    return isPlainAndHarmless(text, origin) ? Admission{text, QString(), QString()}
                                            : judge(text, origin);
}
