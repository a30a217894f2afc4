// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "AdjustableAttribute.h"
#include "Agreement_p.h"
#include "AnimatableAttribute.h"
#include "Renderer_p.h"
#include "TreeWalk_p.h"
#include "XmlText_p.h"

#include <QRegularExpression>

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
    setBuffer(&m_data);
    m_agreement = std::make_unique<Agreement>(this, &m_dom, [this] { return places(); });
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
    else if (m_agreement->isAdmitted())
        m_agreement->setError(QStringLiteral("not an SVG document"));
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

std::unique_ptr<RendererDocument> SvgDocument::loadRenderer()
{
    // The renderer would wait without end for a device that cannot be read.
    if (!isReadable() || !m_agreement->isAdmitted())
        return nullptr;
    seek(0);
    m_reader.setDevice(this);
    return RendererDocument::load(&m_reader);
}

bool SvgDocument::isLoaded() const
{
    return m_loaded;
}

QString SvgDocument::errorString() const
{
    return m_agreement->error();
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
    m_agreement->parse();
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
    m_agreement->handOut();
    return m_dom.documentElement();
}

void SvgDocument::saveToBuffer()
{
    m_agreement->save();
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
    return m_agreement->textSize();
}

qint64 SvgDocument::readData(char *data, qint64 maxSize)
{
    m_agreement->settle();
    return QBuffer::readData(data, std::min(maxSize, size() - pos()));
}

qint64 SvgDocument::writeData(const char *data, qint64 size)
{
    const qint64 start = pos();
    m_agreement->beginWriting();
    const qint64 written = QBuffer::writeData(data, size);
    m_agreement->endWriting(start, written);
    return written;
}
