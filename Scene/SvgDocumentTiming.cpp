// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "Agreement_p.h"
#include "AnimatableAttributeColor.h"
#include "AnimatableAttributeFloat.h"
#include "AnimatableAttributeFloatList.h"
#include "AnimatableAttributeText.h"
#include "TimeValue_p.h"
#include "TreeWalk_p.h"

#include <QColor>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <limits>

// What a title does when: begins that depend on other animations, the animations of attributes,
// and the closing part.

namespace {

constexpr int unresolved = -1;

QString trimmedAttribute(const QDomElement &element, const QString &name)
{
    return element.attribute(name).trimmed();
}

/// The elements at and below a node with one of the given names, for each name in document order.
std::vector<std::vector<QDomElement>> elementsByKind(const QDomNode &root,
                                                     const std::vector<QLatin1String> &kinds)
{
    std::vector<std::vector<QDomElement>> elements(kinds.size());
    for (TreeWalk walk(root); !walk.atEnd(); walk.next()) {
        const QDomElement element = walk.node().toElement();
        const QString name = element.tagName();
        for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
            if (name == kinds[kind])
                elements[kind].push_back(element);
        }
    }
    return elements;
}

/// The timing of one animation element.
struct NodeTimeParams
{
    BeginReference reference; ///< no id for a plain begin
    int begin = unresolved;   ///< ms
    int end = unresolved;     ///< ms, one simple duration after the begin
};

NodeTimeParams classified(const QDomElement &element)
{
    NodeTimeParams params;
    const QString begin = trimmedAttribute(element, QStringLiteral("begin"));
    params.reference = referenceInBegin(begin);
    if (params.reference.id.isEmpty()) {
        params.begin = timeFromText(begin);
        params.end = saturatedSum(params.begin,
                                  timeFromText(trimmedAttribute(element, QStringLiteral("dur"))));
    }
    return params;
}

/// The renderer adds begin and duration of what it plays itself without care for int's limits.
int beginWithRoomForDuration(const QDomElement &element, int begin)
{
    if (element.tagName() == QLatin1String("animate"))
        return begin;
    const int duration = timeFromText(trimmedAttribute(element, QStringLiteral("dur")));
    if (duration >= 0)
        return std::min(begin, std::numeric_limits<int>::max() - duration);
    return std::max(begin, std::numeric_limits<int>::min() - duration);
}

/// Resolves the begins that refer to other animations.
class ConditionalTiming
{
public:
    /// Elements of the same id are told apart by their kind first, then by their order.
    explicit ConditionalTiming(const QDomNode &root)
    {
        for (const std::vector<QDomElement> &elements :
             elementsByKind(root,
                            {QLatin1String("animate"), QLatin1String("animateColor"),
                             QLatin1String("animateTransform")})) {
            for (const QDomElement &element : elements)
                add(element);
        }
    }

    /// Rewrites the begins; false when there was nothing to rewrite.
    bool resolve()
    {
        for (const std::size_t number : m_pending)
            resolve(number);
        return !m_pending.empty();
    }

private:
    static constexpr std::size_t unknown = std::numeric_limits<std::size_t>::max();

    struct Animation
    {
        QDomElement element;
        NodeTimeParams params;
        bool isInChain = false; ///< that is being resolved
    };

    /// An animation that waits for the begin of the one that it refers to.
    struct Link
    {
        std::size_t animation;
        std::size_t reference;
    };

    void add(const QDomElement &element)
    {
        const std::size_t number = m_animations.size();
        m_animations.push_back({element, classified(element)});
        if (m_animations.back().params.begin == unresolved)
            m_pending.push_back(number);
        const QString id = element.attribute(QStringLiteral("id"));
        if (!id.isEmpty())
            m_numbers.emplace(id, number);
    }

    /// Follows the references from an animation to a plain begin, then works back along the chain.
    void resolve(std::size_t number)
    {
        std::vector<Link> chain;
        while (number != unknown && m_animations[number].params.begin == unresolved) {
            m_animations[number].isInChain = true;
            const std::size_t reference = referenced(m_animations[number].params.reference.id);
            chain.push_back({number, reference});
            number = reference;
        }
        for (auto link = chain.rbegin(); link != chain.rend(); ++link) {
            Animation &animation = m_animations[link->animation];
            writeBegin(&animation, originOf(animation.params, link->reference));
            animation.isInChain = false;
        }
    }

    /// A reference back into the chain is as good as one to an unknown id.
    std::size_t referenced(const QString &id) const
    {
        const auto found = m_numbers.find(id);
        return found == m_numbers.end() || m_animations[found->second].isInChain ? unknown
                                                                                 : found->second;
    }

    int originOf(const NodeTimeParams &params, std::size_t reference) const
    {
        if (reference == unknown)
            return 0;
        const NodeTimeParams &referred = m_animations[reference].params;
        return params.reference.fromBegin ? referred.begin : referred.end;
    }

    static void writeBegin(Animation *animation, int origin)
    {
        const int begin = beginWithRoomForDuration(
                animation->element, saturatedSum(animation->params.reference.offsetTime(), origin));
        animation->element.setAttribute(QStringLiteral("begin"),
                                        QString::number(begin) + QStringLiteral("ms"));
        animation->params = classified(animation->element);
    }

    std::vector<Animation> m_animations;
    std::vector<std::size_t> m_pending;
    std::map<QString, std::size_t> m_numbers; // of the first animation with an id
};

bool isLetter(QChar c)
{
    if (c.unicode() < 0x80)
        return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
                || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
    return c.isLetter();
}

bool isNumber(const QString &text)
{
    bool ok = false;
    text.toDouble(&ok);
    return ok;
}

/// What an "animate" element says, as text.
struct AnimateTexts
{
    explicit AnimateTexts(const QDomElement &element)
        : attributeName(element.attribute(QStringLiteral("attributeName"))),
          to(element.attribute(QStringLiteral("to"))),
          from(element.attribute(QStringLiteral("from"))),
          values(element.attribute(QStringLiteral("values"))),
          dur(element.attribute(QStringLiteral("dur"))),
          begin(element.attribute(QStringLiteral("begin"))),
          fill(element.attribute(QStringLiteral("fill"))),
          calcMode(element.attribute(QStringLiteral("calcMode"))),
          repeatCount(element.attribute(QStringLiteral("repeatCount")))
    {
    }

    QStringList keyValues() const
    {
        return values.isEmpty() ? QStringList{from, to} : values.split(QLatin1Char(';'));
    }

    /// The key value that tells the kind of all.
    QString sample() const
    {
        if (!values.isEmpty())
            return values.left(values.indexOf(QLatin1Char(';'))).trimmed();
        return (from.isEmpty() ? to : from).trimmed();
    }

    int repetitions() const
    {
        bool ok = false;
        const int count = repeatCount.toInt(&ok);
        if (ok)
            return count;
        return repeatCount.isEmpty() ? 1 : -1;
    }

    QString attributeName;
    QString to;
    QString from;
    QString values;
    QString dur;
    QString begin;
    QString fill;
    QString calcMode;
    QString repeatCount;
};

template <typename Kind>
boost::shared_ptr<AnimatableAttribute> made(const QDomNode &target, const SvgElement &place,
                                            const AnimateTexts &texts)
{
    return boost::make_shared<Kind>(target, place, texts.attributeName, texts.keyValues());
}

boost::shared_ptr<AnimatableAttribute>
madeOfFittingKind(const QDomNode &target, const SvgElement &place, const AnimateTexts &texts)
{
    const QString sample = texts.sample();
    if (QColor::isValidColor(sample))
        return made<AnimatableAttributeColor>(target, place, texts);
    if (isNumber(sample))
        return made<AnimatableAttributeFloat>(target, place, texts);
    if (std::all_of(sample.begin(), sample.end(), isLetter))
        return made<AnimatableAttributeText>(target, place, texts);
    return made<AnimatableAttributeFloatList>(target, place, texts);
}

/// The begin of the first of these animations that is marked as the start of the closing part and
/// begins after 0; 0 when there is none.
int conclusionBegin(const std::vector<QDomElement> &animations)
{
    for (const QDomElement &animation : animations) {
        if (animation.attribute(QStringLiteral("id")) != QLatin1String("CONCLUSION"))
            continue;
        const int begin = timeFromText(animation.attribute(QStringLiteral("begin")));
        if (begin > 0)
            return begin;
    }
    return 0;
}

} // namespace

int SvgDocument::stringToTime(const QString &text) const
{
    return timeFromText(text);
}

void SvgDocument::getBeginEndParams(QString begin, QString dur, int &beginMs, int &endMs) const
{
    beginMs = timeFromText(begin);
    endMs = saturatedSum(timeFromText(dur), beginMs);
}

void SvgDocument::fixConditionalTiming()
{
    m_agreement->parse();
    ConditionalTiming timing(m_dom.documentElement());
    if (!timing.resolve())
        return;
    m_agreement->treeChanged();
    saveToBuffer();
}

void SvgDocument::detectAnimatableAttibutes(int &totalDuration)
{
    totalDuration = 0;
    m_agreement->parse();
    m_agreement->forgetPlaces();
    for (TreeWalk walk(m_dom.documentElement()); !walk.atEnd(); walk.next()) {
        const QDomElement element = walk.node().toElement();
        if (element.tagName() != QLatin1String("animate")
            || !element.hasAttribute(QStringLiteral("attributeName")))
            continue;
        const AnimateTexts texts(element);
        const QDomNode target = element.parentNode();
        const SvgElement place =
                walk.depth() > 0 ? walk.parentElement() : SvgElement(target, walk.node());
        int begin = 0;
        int end = 0;
        getBeginEndParams(texts.begin, texts.dur, begin, end);
        const auto animation = madeOfFittingKind(target, place, texts);
        animation->setParams(begin, end, texts.repetitions(), texts.fill == QLatin1String("freeze"),
                             texts.calcMode == QLatin1String("discrete")
                                     ? AnimatableAttribute::Discrete
                                     : AnimatableAttribute::Linear);
        totalDuration = std::max(totalDuration, end);
        m_animationsById[animation->id()].push_back(m_animatableAttributes.size());
        m_animatableAttributes.push_back(animation);
    }
}

std::vector<boost::shared_ptr<const AnimatableAttribute>> SvgDocument::animations() const
{
    return {m_animatableAttributes.begin(), m_animatableAttributes.end()};
}

void SvgDocument::detectConclusionTime()
{
    m_agreement->parse();
    m_conclusionDuration = 0;
    for (const std::vector<QDomElement> &animations :
         elementsByKind(m_dom.documentElement(),
                        {QLatin1String("animate"), QLatin1String("animateMotion"),
                         QLatin1String("animateColor"), QLatin1String("animateTransform")})) {
        const int begin = conclusionBegin(animations);
        if (begin > 0)
            m_conclusionDuration = saturatedDifference(m_durationTotal, begin);
        if (m_conclusionDuration != 0)
            return;
    }
}
