// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "AdjustableAttribute.h"
#include "Admission_p.h"
#include "AnimatableAttribute.h"
#include "ElementIndex_p.h"
#include "Renderer_p.h"
#include "TreeWalk_p.h"
#include "XmlText_p.h"

#include <QRegularExpression>
#include <QTextStream>

#include <algorithm>

// How a title gets from its text into the tree and back: loading, parsing, saving.

namespace {

bool hasElement(const QString &svgText, const QString &name)
{
    const QRegularExpression element(QStringLiteral("(\\W|^)<%1(\\W|$)").arg(name));
    return element.match(svgText).hasMatch();
}

QByteArray hexDigits(const QByteArray &component)
{
    return QByteArray::number(component.trimmed().toUInt(), 16);
}

} // namespace

SvgDocument::SvgDocument(const QString &svgText) : m_data(withUtf8Declaration(svgText.toUtf8()))
{
    fixColors(m_data);
    m_textSize = m_data.size();
    setBuffer(&m_data);
    QBuffer::open(QIODevice::ReadWrite);

    const std::unique_ptr<RendererDocument> renderer = loadRenderer();
    m_loaded = renderer != nullptr;
    if (m_loaded)
        analyse(*renderer, svgText);
    else if (m_admitted)
        setErrorString(QStringLiteral("not an SVG document"));
    detectUseElements();
    detectConclusionTime();
    fixDefinitionsVisibility();
}

SvgDocument::~SvgDocument() = default;

void SvgDocument::analyse(const RendererDocument &renderer, const QString &svgText)
{
    m_bounds = viewBox();
    m_durationTotal = renderer.animationDuration();
    m_animated = hasElement(svgText, QStringLiteral("animate"));
    if (m_animated) {
        fixConditionalTiming();
        int latestEnd = 0;
        detectAnimatableAttibutes(latestEnd);
        m_durationTotal = std::max(m_durationTotal, latestEnd);
    }
    m_hasClipping = hasElement(svgText, QStringLiteral("clipPath"));
}

bool SvgDocument::isTextKnown() const
{
    return !m_knownText.isNull() && m_knownText.constData() == m_data.constData();
}

bool SvgDocument::isInAgreement(Agreement agreement) const
{
    return isTextKnown() && !m_treeIsShared && m_agreement == agreement;
}

/// Whether the text may be given to parsers. Our own saves may; a text that somebody else has
/// written is judged once. The reason of a refusal is in errorString().
bool SvgDocument::isTextAdmitted()
{
    if (!isTextKnown()) {
        const QString refusal = refusalOf(m_data.left(int(m_textSize)));
        m_admitted = refusal.isEmpty();
        setErrorString(refusal);
        m_knownText = m_data;
        m_agreement = Agreement::None;
    }
    return m_admitted;
}

std::unique_ptr<RendererDocument> SvgDocument::loadRenderer()
{
    if (!isTextAdmitted())
        return nullptr;
    seek(0);
    m_reader.setDevice(this);
    return RendererDocument::load(&m_reader);
}

bool SvgDocument::isLoaded() const
{
    return m_loaded;
}

QRectF SvgDocument::bounds() const
{
    return m_bounds;
}

void SvgDocument::setBounds(QRectF bounds)
{
    m_bounds = bounds;
}

int SvgDocument::animationDurationTotal() const
{
    return m_durationTotal;
}

int SvgDocument::animationConclusionDuration() const
{
    return m_conclusionDuration;
}

bool SvgDocument::hasClipping() const
{
    return m_hasClipping;
}

void SvgDocument::fixColors(QByteArray &data)
{
    static const QByteArray opening("\"rgba(");
    static const QByteArray closing(")\"");
    QByteArray fixed;
    int copied = 0;
    int from = 0;
    while (true) {
        const int start = data.indexOf(opening, from);
        const int end = start < 0 ? -1 : data.indexOf(closing, start + 1);
        if (end < 0)
            break;
        const int innerStart = start + opening.size();
        const QList<QByteArray> parts = data.mid(innerStart, end - innerStart).split(',');
        if (parts.size() != 4)
            break;
        const QByteArray replacement =
                '#' + hexDigits(parts.at(0)) + hexDigits(parts.at(1)) + hexDigits(parts.at(2));
        fixed += data.mid(copied, start + 1 - copied);
        fixed += replacement;
        copied = end + 1;
        // The search goes on at the distance from the start that the closing parenthesis had
        // before the text became shorter, and so skips a value that follows closely.
        from = end + (end - start - replacement.size());
    }
    if (copied > 0)
        data = fixed + data.mid(copied);
}

QRectF SvgDocument::viewBox()
{
    parseTree();
    const QDomElement svg = m_dom.elementsByTagName(QStringLiteral("svg")).item(0).toElement();
    static const QRegularExpression separator(QStringLiteral("[, ]"));
    QStringList parts = svg.attribute(QStringLiteral("viewBox")).split(separator);
    parts.removeAll(QString());
    return QRectF(0.0, 0.0, parts.value(2).toInt(), parts.value(3).toInt());
}

void SvgDocument::getAllNodes(const QDomNode &node, std::vector<QDomNode> &out)
{
    for (TreeWalk walk(node); !walk.atEnd(); walk.next())
        out.push_back(walk.node());
}

QDomNode SvgDocument::documentRoot()
{
    m_treeIsShared = true;
    return m_dom.documentElement();
}

void SvgDocument::saveToBuffer()
{
    writeTree(QDomNode::EncodingFromTextStream);
    m_agreement = Agreement::TextIsSavedTree;
}

void SvgDocument::writeTree(QDomNode::EncodingPolicy policy)
{
    {
        seek(0);
        QTextStream stream(this);
        stream.setCodec("UTF-8");
        m_dom.save(stream, 1, policy);
    }
    m_knownText = m_data;
    m_admitted = !m_dom.documentElement().isNull();
    m_agreement = Agreement::None;
}

/// Fills the tree from the text, unless it is known to be filled from this very text. What a parser
/// makes of broken text is no document.
void SvgDocument::parseTree()
{
    const bool isAdmitted = isTextAdmitted();
    if (isInAgreement(Agreement::TreeIsParsedText))
        return;
    seek(0);
    placesChanged();
    // Text behind the root makes the parser report an error, too, but the tree is complete then.
    if (isAdmitted)
        m_dom.setContent(this);
    else
        m_dom.clear();
    m_treeIsShared = false;
    m_agreement = Agreement::TreeIsParsedText;
}

/// The element at a place that the document knows, or at any other place.
QDomElement SvgDocument::find(const SvgElement &place, const QDomNode &root)
{
    if (m_treeIsShared || root != m_dom.documentElement())
        return place.findNode(root).toElement();
    if (!m_elements)
        m_elements = std::make_unique<ElementIndex>(root, places());
    return m_elements->element(place);
}

/// To be called after every change of the tree that the text does not have yet.
void SvgDocument::treeChanged()
{
    m_agreement = Agreement::None;
}

/// To be called after every change of what places() holds.
void SvgDocument::placesChanged()
{
    m_elements.reset();
}

std::vector<const SvgElement *> SvgDocument::places() const
{
    std::vector<const SvgElement *> result;
    for (const auto &attribute : m_animatableAttributes)
        result.push_back(attribute.get());
    for (const auto &entry : m_adjustableAttributes) {
        for (const auto &attribute : entry.second)
            result.push_back(attribute.get());
    }
    for (const auto &entry : m_useElements) {
        for (const auto &use : entry.second)
            result.push_back(use.get());
    }
    return result;
}

qint64 SvgDocument::size() const
{
    return m_textSize;
}

qint64 SvgDocument::readData(char *data, qint64 maxSize)
{
    return QBuffer::readData(data, std::min(maxSize, m_textSize - pos()));
}

/// Writing at the start begins a new text.
qint64 SvgDocument::writeData(const char *data, qint64 size)
{
    m_knownText.clear();
    const qint64 start = pos();
    const qint64 written = QBuffer::writeData(data, size);
    if (written >= 0)
        m_textSize = start == 0 ? written : std::max(m_textSize, start + written);
    return written;
}
