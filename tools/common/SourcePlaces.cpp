// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SourcePlaces.h"

#include <Scene/MarkupScanner_p.h>

#include <QHash>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

// Finds the lines of a text by offsets into it.
class Lines
{
public:
    explicit Lines(const QString &text)
    {
        for (int i = 0; i < text.size(); ++i) {
            const bool isLineEnd = text.at(i) == QLatin1Char('\n')
                    || (text.at(i) == QLatin1Char('\r')
                        && (i + 1 == text.size() || text.at(i + 1) != QLatin1Char('\n')));
            if (isLineEnd)
                m_starts.push_back(i + 1);
        }
    }

    Place placeOf(int offset) const
    {
        const auto next = std::upper_bound(m_starts.begin(), m_starts.end(), offset);
        return {int(next - m_starts.begin()), offset - *(next - 1) + 1};
    }

private:
    std::vector<int> m_starts{0};
};

// The offsets of the attributes' names in a start tag that begins at `start`.
QHash<QString, int> attributeOffsets(const QString &text, int start, int end)
{
    QHash<QString, int> offsets;
    const QByteArray tag = text.mid(start, end - start).toUtf8();
    MarkupScanner markup(view(tag));
    if (!markup.next())
        return offsets;
    int offset = start;
    int counted = 0;
    for (AttributeScanner attribute(view(tag), markup); attribute.next();) {
        offset += QString::fromUtf8(tag.constData() + counted, attribute.begin() - counted).size();
        counted = attribute.begin();
        const std::string_view name = attribute.name();
        offsets.insert(QString::fromUtf8(name.data(), int(name.size())), offset);
    }
    return offsets;
}

bool isTextElement(const QString &name)
{
    return name == QLatin1String("text") || name == QLatin1String("textArea");
}

} // namespace

const SourceAttribute *SourceElement::attribute(const QString &attributeName) const
{
    const auto found = std::find_if(
            attributes.begin(), attributes.end(),
            [&](const SourceAttribute &candidate) { return candidate.name == attributeName; });
    return found == attributes.end() ? nullptr : &*found;
}

QString SourceElement::value(const QString &attributeName) const
{
    const SourceAttribute *const found = attribute(attributeName);
    return found ? found->value : QString();
}

Place SourceElement::placeOf(const QString &attributeName) const
{
    const SourceAttribute *const found = attribute(attributeName);
    return found ? found->place : place;
}

// One pass over the text.
class SourcePlaces::Reading
{
public:
    Reading(const QString &text, SourcePlaces &result)
        : m_text(text), m_lines(text), m_reader(text), m_result(result)
    {
        m_reader.setNamespaceProcessing(false);
    }

    void run()
    {
        while (!m_isDone && !m_reader.hasError()) {
            const int before = offset();
            read(m_reader.readNext(), before);
        }
    }

private:
    int offset() const { return int(std::min<qint64>(m_reader.characterOffset(), m_text.size())); }

    void read(QXmlStreamReader::TokenType token, int before)
    {
        switch (token) {
        case QXmlStreamReader::StartElement:
            startElement();
            break;
        case QXmlStreamReader::EndElement:
            endElement();
            break;
        case QXmlStreamReader::Characters:
            characters();
            break;
        case QXmlStreamReader::EntityReference:
            m_result.m_undefinedEntities.push_back(
                    {m_reader.name().toString(), placeOfLast(QLatin1Char('&'))});
            break;
        case QXmlStreamReader::DTD:
            m_result.m_documentType = placeOfNext(QLatin1String("<!DOCTYPE"), before);
            break;
        case QXmlStreamReader::ProcessingInstruction:
            if (m_reader.processingInstructionTarget() == QLatin1String("xml-stylesheet"))
                m_result.m_styleInstructions.push_back(
                        placeOfNext(QLatin1String("<?xml-stylesheet"), before));
            break;
        case QXmlStreamReader::EndDocument:
            m_isDone = true;
            break;
        default:
            break;
        }
    }

    Place placeOfLast(QChar c) const
    {
        return m_lines.placeOf(std::max(m_text.lastIndexOf(c, offset() - 1), 0));
    }

    // The reader may have read a character ahead.
    Place placeOfNext(QLatin1String token, int before) const
    {
        return m_lines.placeOf(std::max(m_text.indexOf(token, std::max(before - 1, 0)), 0));
    }

    // A tag holds no other "<", so the last one is its start.
    void startElement()
    {
        const int end = offset();
        const int start = std::max(m_text.lastIndexOf(QLatin1Char('<'), end - 1), 0);
        const QHash<QString, int> offsets = attributeOffsets(m_text, start, end);

        SourceElement element;
        element.name = m_reader.qualifiedName().toString();
        element.place = m_lines.placeOf(start);
        element.parent = m_open.empty() ? SourceElement::none : m_open.back();
        for (const QXmlStreamAttribute &attribute : m_reader.attributes()) {
            const QString name = attribute.qualifiedName().toString();
            element.attributes.push_back({name, attribute.value().toString(),
                                          m_lines.placeOf(offsets.value(name, start))});
        }
        m_open.push_back(int(m_result.m_elements.size()));
        if (isTextElement(element.name) && m_textDepth < 0) {
            m_textDepth = int(m_open.size());
            m_result.m_texts.push_back({m_open.back(), {}});
        }
        if (element.name == QLatin1String("tspan") && m_textDepth >= 0)
            m_result.m_texts.back().pieces.push_back({QString(), m_open.back()});
        if (element.name == QLatin1String("style"))
            m_result.m_styleSheets.push_back(
                    {QString(), element.place, m_open.back(), StyleRules(QString())});
        m_result.m_elements.push_back(std::move(element));
    }

    void endElement()
    {
        if (m_result.m_elements[std::size_t(m_open.back())].name == QLatin1String("style")) {
            StyleSheet &sheet = m_result.m_styleSheets.back();
            sheet.rules = StyleRules(sheet.text);
        }
        if (m_textDepth == int(m_open.size()))
            m_textDepth = -1;
        m_open.pop_back();
        m_isDone = m_open.empty();
    }

    void characters()
    {
        if (m_open.empty())
            return;
        const QStringRef characters = m_reader.text();
        if (m_textDepth >= 0)
            m_result.m_texts.back().pieces.push_back({characters.toString(), m_open.back()});
        if (m_result.m_elements[std::size_t(m_open.back())].name == QLatin1String("style"))
            m_result.m_styleSheets.back().text += characters;
    }

    const QString &m_text;
    const Lines m_lines;
    QXmlStreamReader m_reader;
    SourcePlaces &m_result;
    std::vector<int> m_open; // from the root to the current element
    int m_textDepth = -1;    // the number of open elements in the current text; -1 outside of texts
    bool m_isDone = false;
};

SourcePlaces::SourcePlaces(const QString &text)
{
    Reading(text, *this).run();
}
