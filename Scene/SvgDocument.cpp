// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "AdjustableAttribute.h"
#include "Admission_p.h"
#include "AnimatableAttribute.h"
#include "ElementIndex_p.h"
#include "Renderer_p.h"
#include "RoundTrip_p.h"
#include "StartTags_p.h"
#include "TreeText_p.h"
#include "TreeWalk_p.h"
#include "XmlText_p.h"

#include <QRegularExpression>
#include <QTextStream>

#include <algorithm>

// How a title gets from its text into the tree and back: loading, parsing, saving.

namespace {

/// Word characters are those of a regular expression's \w: ASCII only.
bool isWordCharacter(QChar c)
{
    return c == QLatin1Char('_') || (c.unicode() < 0x80 && c.isLetterOrNumber());
}

/// Whether the text matches (\W|^)<name(\W|$).
bool hasElement(const QString &svgText, const QString &name)
{
    const QString start = QLatin1Char('<') + name;
    for (int at = svgText.indexOf(start); at >= 0; at = svgText.indexOf(start, at + 1)) {
        const int end = at + start.size();
        if ((at == 0 || !isWordCharacter(svgText.at(at - 1)))
            && (end == svgText.size() || !isWordCharacter(svgText.at(end))))
            return true;
    }
    return false;
}

QDomElement firstSvg(const QDomDocument &tree)
{
    for (TreeWalk walk(tree); !walk.atEnd(); walk.next()) {
        const QDomElement element = walk.node().toElement();
        if (element.tagName() == QLatin1String("svg"))
            return element;
    }
    return QDomElement();
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

    tryRenderer();
    if (m_loaded)
        analyse(svgText);
    detectUseElements();
    detectConclusionTime();
    fixDefinitionsVisibility();
}

SvgDocument::~SvgDocument() = default;

void SvgDocument::tryRenderer()
{
    const std::unique_ptr<RendererDocument> renderer = loadRenderer();
    m_loaded = renderer != nullptr;
    if (m_loaded)
        m_durationTotal = renderer->animationDuration();
    else if (m_admitted)
        setErrorString(QStringLiteral("not an SVG document"));
}

void SvgDocument::analyse(const QString &svgText)
{
    m_bounds = viewBox();
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

/// Whether somebody has changed the bytes without writing to the device. Where the text ended
/// before is of no account then.
bool SvgDocument::isChangedInPlace() const
{
    return !m_knownText.isNull() && !isTextKnown() && m_knownText != m_data;
}

bool SvgDocument::isTreeParsedText() const
{
    return m_treeIsParsedText && isTextKnown() && !m_treeIsShared;
}

bool SvgDocument::isTextSavedTree() const
{
    return m_textIsSavedTree && isTextKnown() && !m_treeIsShared && !hasUnsavedTags();
}

/// To be called when tree and text are no longer known to agree.
void SvgDocument::disagree()
{
    m_treeIsParsedText = false;
    m_textIsSavedTree = false;
}

/// Whether the text may be given to parsers. Our own saves may; a text that somebody else has
/// written is judged once, and loses what refers to other files. The reason of a refusal is in
/// errorString().
bool SvgDocument::isTextAdmitted()
{
    if (!isTextKnown()) {
        m_textSize = SvgDocument::size();
        const QByteArray text = m_data.left(int(m_textSize));
        const Admission admission = admit(text);
        m_admitted = admission.refusal.isEmpty();
        m_leftOut = admission.leftOut;
        setErrorString(m_admitted ? m_leftOut : admission.refusal);
        if (m_admitted && admission.text.constData() != text.constData()) {
            m_data = admission.text;
            m_textSize = m_data.size();
        }
        m_knownText = m_data;
        disagree();
    }
    return m_admitted;
}

std::unique_ptr<RendererDocument> SvgDocument::loadRenderer()
{
    // The renderer would wait without end for a device that cannot be read.
    if (!isReadable() || !isTextAdmitted())
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
    static const QRegularExpression separator(QStringLiteral("[, ]"));
    QStringList parts = firstSvg(m_dom).attribute(QStringLiteral("viewBox")).split(separator);
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
    const bool onlyTagsChanged = isTextKnown() && !m_treeIsShared && hasUnsavedTags();
    if (onlyTagsChanged)
        rewriteTags();
    else
        writeWholeTree();
    m_textIsSavedTree = true;
}

void SvgDocument::writeWholeTree()
{
    const QByteArray text = m_treeIsShared ? QByteArray() : textOfTree(m_dom, int(size()));
    if (text.isNull()) {
        writeTree(QDomNode::EncodingFromTextStream);
        return;
    }
    seek(0);
    write(text);
    treeWritten();
}

void SvgDocument::writeTree(QDomNode::EncodingPolicy policy)
{
    {
        seek(0);
        QTextStream stream(this);
        stream.setCodec("UTF-8");
        m_dom.save(stream, 1, policy);
    }
    treeWritten();
}

void SvgDocument::treeWritten()
{
    m_knownText = m_data;
    m_admitted = !m_dom.documentElement().isNull();
    m_startTags.reset();
    m_shownSteps.clear();
    disagree();
}

/// What writeWholeTree() would write, at the cost of the tags that have changed.
void SvgDocument::rewriteTags()
{
    const auto oldText = QByteArray::fromRawData(m_data.constData(), int(m_textSize));
    const QByteArray &text = m_startTags->rewritten(oldText, m_elements->elements());
    m_knownText.clear(); // or writing would copy the old text first
    seek(0);
    write(text);
    m_knownText = m_data;
}

bool SvgDocument::hasUnsavedTags() const
{
    return m_startTags && m_startTags->hasChanges();
}

/// Fills the tree from the text, unless that would change nothing. What a parser makes of broken
/// text is no document.
void SvgDocument::parseTree()
{
    const bool isAdmitted = isTextAdmitted();
    if (isTreeParsedText())
        return;
    if (isTextSavedTree() && survivesSaving(m_dom)) {
        declareAsSaved(&m_dom);
        m_treeIsParsedText = true;
        return;
    }
    seek(0);
    forgetElements();
    // Text after the root makes the parser report an error, too, but the tree is complete then.
    if (isAdmitted)
        m_dom.setContent(this);
    else
        m_dom.clear();
    m_treeIsParsedText = true;
    m_textIsSavedTree = false;
}

/// Changes an attribute of the element at a place that the document knows, or at any other place.
/// The change tells whether it made a difference.
void SvgDocument::edit(const SvgElement &place, const QDomNode &root, const QString &attributeName,
                       const std::function<bool(const QDomElement &)> &change)
{
    if (m_treeIsShared || root != m_dom.documentElement()) {
        if (change(place.findNode(root).toElement()))
            disagree();
        return;
    }
    const int number = elementIndex().number(place);
    if (number == ElementIndex::none)
        return;
    const QDomElement &element = m_elements->elements()[std::size_t(number)];
    const bool hadAttribute = element.hasAttribute(attributeName);
    if (!change(element))
        return;
    m_shownSteps.clear();
    m_treeIsParsedText = false;
    StartTags *const tags = startTags();
    if (!tags)
        disagree();
    else if (hadAttribute && element.hasAttribute(attributeName))
        tags->noteValueChange(number, attributeName);
    else
        tags->noteChange(number);
}

/// Where the places that the document knows are in the tree. Only for a tree that nobody else can
/// have changed since it was parsed.
const ElementIndex &SvgDocument::elementIndex()
{
    if (!m_elements)
        m_elements = std::make_unique<ElementIndex>(m_dom.documentElement(), places());
    return *m_elements;
}

/// Where the attributes of m_elements stand in the text; null when it is no saved tree. What
/// stands in them does not matter, so the tree may already be ahead of the text.
StartTags *SvgDocument::startTags()
{
    if (!m_textIsSavedTree || !isTextKnown())
        return nullptr;
    if (!m_startTags)
        m_startTags = std::make_unique<StartTags>(
                QByteArray::fromRawData(m_data.constData(), int(m_textSize)),
                m_dom.documentElement(), m_elements->elements());
    return m_startTags.get();
}

/// To be called before every change of what places() holds, and of the tree's structure.
void SvgDocument::forgetElements()
{
    if (hasUnsavedTags())
        disagree();
    m_startTags.reset();
    m_elements.reset();
    m_shownSteps.clear();
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
    return isChangedInPlace() ? m_data.size() : m_textSize;
}

qint64 SvgDocument::readData(char *data, qint64 maxSize)
{
    return QBuffer::readData(data, std::min(maxSize, size() - pos()));
}

/// Writing at the start begins a new text.
qint64 SvgDocument::writeData(const char *data, qint64 size)
{
    m_textSize = this->size();
    m_knownText.clear();
    const qint64 start = pos();
    const qint64 written = QBuffer::writeData(data, size);
    if (written >= 0)
        m_textSize = start == 0 ? written : std::max(m_textSize, start + written);
    return written;
}
