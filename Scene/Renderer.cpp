// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Renderer_p.h"

#include "HeldAnimation_p.h"

#include <QDateTime>
#include <QPainter>
#include <QRectF>
#include <QXmlStreamReader>

#include <private/qsvggraphics_p.h>
#include <private/qsvgstructure_p.h>
#include <private/qsvgstyle_p.h>
#include <private/qsvgtinydocument_p.h>

#include <vector>

namespace {

// An explicit instantiation may name private members. Instantiating stow_private stores a pointer
// to the member that a tag stands for where everybody can read it.

template <typename Tag>
struct stowed
{
    static typename Tag::type value;
};
template <typename Tag>
typename Tag::type stowed<Tag>::value;

template <typename Tag, typename Tag::type member>
struct stow_private
{
    stow_private() noexcept { stowed<Tag>::value = member; }
    static stow_private instance;
};
template <typename Tag, typename Tag::type member>
stow_private<Tag, member> stow_private<Tag, member>::instance;

#if QT_VERSION >= QT_VERSION_CHECK(5, 14, 0)
using Clock = qint64; // milliseconds since the epoch

Clock clockThatStarted(int msAgo)
{
    return QDateTime::currentMSecsSinceEpoch() - msAgo;
}
#else
using Clock = QTime;

Clock clockThatStarted(int msAgo)
{
    QTime now;
    now.start();
    return now.addMSecs(-msAgo);
}
#endif

#define STOW(tag, Class, Type, member) \
    struct tag \
    { \
        using type = Type Class::*; \
    }; \
    template struct stow_private<tag, &Class::member>;

STOW(Tag_m_time, QSvgTinyDocument, Clock, m_time)
STOW(NodeStyle, QSvgNode, QSvgStyle, m_style)
STOW(TextSpans, QSvgText, QVector<QSvgTspan *>, m_tspans)
STOW(TransformFrom, QSvgAnimateTransform, qreal, m_from)
STOW(TransformRunningTime, QSvgAnimateTransform, qreal, m_totalRunningTime)
STOW(TransformRepeatCount, QSvgAnimateTransform, qreal, m_repeatCount)
STOW(TransformFreeze, QSvgAnimateTransform, bool, m_freeze)
STOW(TransformKeyValueCount, QSvgAnimateTransform, int, m_count)
STOW(ColorFrom, QSvgAnimateColor, qreal, m_from)
STOW(ColorRunningTime, QSvgAnimateColor, qreal, m_totalRunningTime)
STOW(ColorRepeatCount, QSvgAnimateColor, qreal, m_repeatCount)
STOW(ColorKeyValues, QSvgAnimateColor, QList<QColor>, m_colors)

#undef STOW

template <typename Tag, typename Object>
auto &memberOf(Object &object)
{
    return object.*stowed<Tag>::value;
}

template <typename From, typename RunningTime, typename RepeatCount, typename Animation>
RendererTiming timingOf(Animation &animation)
{
    return {memberOf<From>(animation), memberOf<RunningTime>(animation),
            memberOf<RepeatCount>(animation)};
}

template <typename From, typename RunningTime, typename RepeatCount, typename Animation>
void setTiming(Animation &animation, const RendererTiming &timing)
{
    memberOf<From>(animation) = timing.from;
    memberOf<RunningTime>(animation) = timing.runningTime;
    memberOf<RepeatCount>(animation) = timing.repeatCount;
}

/// The renderer would read a key value even when there is none.
void hold(QSvgAnimateTransform &animation, int ms)
{
    const auto timing =
            timingOf<TransformFrom, TransformRunningTime, TransformRepeatCount>(animation);
    const auto afterEnd =
            memberOf<TransformFreeze>(animation) ? AfterEnd::ShowsEnd : AfterEnd::ShowsNothing;
    const bool playable = memberOf<TransformKeyValueCount>(animation) > 0;
    setTiming<TransformFrom, TransformRunningTime, TransformRepeatCount>(
            animation, playable ? heldTiming(timing, afterEnd, ms) : neverBegun());
}

/// The renderer goes on showing the end of a colour animation, frozen or not.
void hold(QSvgAnimateColor &animation, int ms)
{
    const auto timing = timingOf<ColorFrom, ColorRunningTime, ColorRepeatCount>(animation);
    const bool playable = !memberOf<ColorKeyValues>(animation).isEmpty();
    setTiming<ColorFrom, ColorRunningTime, ColorRepeatCount>(
            animation, playable ? heldTiming(timing, AfterEnd::ShowsEnd, ms) : neverBegun());
}

void holdAnimations(QSvgNode &node, int ms)
{
    QSvgStyle &style = memberOf<NodeStyle>(node);
    if (style.animateColor)
        hold(*style.animateColor, ms);
    for (QSvgAnimateTransform *animation : qAsConst(style.animateTransforms))
        hold(*animation, ms);
}

void appendChildren(QSvgNode &node, std::vector<QSvgNode *> &out)
{
    switch (node.type()) {
    case QSvgNode::DOC:
    case QSvgNode::G:
    case QSvgNode::DEFS:
    case QSvgNode::SWITCH: {
        const QList<QSvgNode *> children = static_cast<QSvgStructureNode &>(node).renderers();
        out.insert(out.end(), children.begin(), children.end());
        break;
    }
    case QSvgNode::TEXT:
    case QSvgNode::TEXTAREA:
        for (QSvgTspan *span : memberOf<TextSpans>(static_cast<QSvgText &>(node))) {
            if (span) // null stands for a line break
                out.push_back(span);
        }
        break;
    default:
        break;
    }
}

} // namespace

std::unique_ptr<RendererDocument> RendererDocument::load(QXmlStreamReader *reader)
{
    QSvgTinyDocument *document = QSvgTinyDocument::load(reader);
    if (!document)
        return nullptr;
    return std::unique_ptr<RendererDocument>(new RendererDocument(document));
}

RendererDocument::RendererDocument(QSvgTinyDocument *document) : m_document(document) {}

RendererDocument::~RendererDocument() = default;

int RendererDocument::animationDuration() const
{
    return m_document->animationDuration();
}

void RendererDocument::setSize(int width, int height)
{
    m_document->setWidth(width, false);
    m_document->setHeight(height, false);
}

void RendererDocument::holdAt(int ms)
{
    std::vector<QSvgNode *> nodes{m_document.get()};
    while (!nodes.empty()) {
        QSvgNode *node = nodes.back();
        nodes.pop_back();
        holdAnimations(*node, ms);
        if (node->type() == QSvgNode::DOC)
            memberOf<Tag_m_time>(*static_cast<QSvgTinyDocument *>(node)) = clockThatStarted(ms);
        appendChildren(*node, nodes);
    }
}

void RendererDocument::draw(QPainter *painter, const QRectF &bounds)
{
    m_document->draw(painter, bounds);
}
