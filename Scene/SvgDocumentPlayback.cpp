// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "AnimatableAttribute.h"
#include "Renderer_p.h"
#include "TimeValue_p.h"
#include "TreeEdit_p.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

// How a title gets to a time: for each animated attribute one animation wins or the template's own
// value comes back, the tree is saved, and the renderer draws the saved text.

namespace {

using Animations = std::vector<boost::shared_ptr<AnimatableAttribute>>;

bool isInEffect(const AnimatableAttribute &animation, int ms)
{
    return animation.isApplicable(ms) || animation.isApplicableFrozen(ms);
}

/// Whether an animation in effect displaces one that stands before it in the document: a running
/// one always, a frozen one only another frozen one that ended earlier.
bool displaces(const AnimatableAttribute &animation, const AnimatableAttribute &earlier, int ms)
{
    if (animation.isApplicable(ms))
        return true;
    return !earlier.isApplicable(ms) && animation.endTime() > earlier.endTime();
}

bool isDrawable(const QRectF &bounds)
{
    return std::isfinite(bounds.x()) && std::isfinite(bounds.y()) && std::isfinite(bounds.width())
            && std::isfinite(bounds.height()) && !bounds.isEmpty();
}

} // namespace

void SvgDocument::paint(QPainter *painter, int ms)
{
    if (m_animated)
        applyAnimation(ms);
    // Given an empty rectangle, the renderer would fill the whole device.
    if (!m_loaded || !painter || !isDrawable(m_bounds))
        return;
    const std::unique_ptr<RendererDocument> document = loadRenderer();
    if (!document)
        return;
    document->setSize(saturatedInt(m_bounds.width()), saturatedInt(m_bounds.height()));
    document->holdAt(ms);
    document->draw(painter, m_bounds);
}

void SvgDocument::applyAnimation(int ms)
{
    const std::vector<FrameStep> steps = stepsAt(ms);
    const std::vector<bool> needed = neededSteps(steps);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (needed[i])
            carryOut(steps[i]);
    }
    if (!steps.empty() && !isInAgreement(Agreement::TextIsSavedTree))
        saveToBuffer();
}

/// What has to be written at this time: the winners' values in document order, since two
/// definitions with one id show and hide the same elements, then the defaults of attributes without
/// a winner.
std::vector<SvgDocument::FrameStep> SvgDocument::stepsAt(int ms) const
{
    const std::vector<bool> winners = winnersAt(ms);
    std::vector<FrameStep> steps;
    for (std::size_t number = 0; number < winners.size(); ++number) {
        const auto &animation = m_animatableAttributes[number];
        if (winners[number])
            steps.push_back({animation, animation->valueForTime(ms), false});
    }
    for (const auto &entry : m_animationsById) {
        const AttributeNumbers &numbers = entry.second;
        const bool hasWinner = std::any_of(numbers.begin(), numbers.end(),
                                           [&winners](std::size_t n) { return winners[n]; });
        const auto &animation = m_animatableAttributes[numbers.back()];
        if (!hasWinner)
            steps.push_back({animation, animation->defaultValue(), true});
    }
    return steps;
}

/// All but those that show or hide what a later step shows or hides as well.
std::vector<bool> SvgDocument::neededSteps(const std::vector<FrameStep> &steps) const
{
    std::vector<bool> needed(steps.size(), true);
    std::map<QString, std::size_t> latest;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const AnimatableAttribute &animation = *steps[i].animation;
        if (!showsUsesOf(animation))
            continue;
        const auto inserted = latest.emplace(animation.svgId(), i);
        if (!inserted.second)
            needed[std::exchange(inserted.first->second, i)] = false;
    }
    return needed;
}

void SvgDocument::carryOut(const FrameStep &step)
{
    const QDomElement root = m_dom.documentElement();
    if (updateDefinitionVisibility(root, step.animation, step.value))
        return;
    if (step.isDefault)
        restoreDefault(*step.animation, root);
    else
        writeValue(*step.animation, step.value, root);
}

/// For each animation, by its index, whether it sets its attribute at this time.
std::vector<bool> SvgDocument::winnersAt(int ms) const
{
    std::vector<bool> winners(m_animatableAttributes.size(), false);
    for (const auto &entry : m_animationsById) {
        const AnimatableAttribute *winner = nullptr;
        std::size_t winnerNumber = 0;
        for (const std::size_t number : entry.second) {
            const AnimatableAttribute &animation = *m_animatableAttributes[number];
            if (isInEffect(animation, ms) && (!winner || displaces(animation, *winner, ms))) {
                winner = &animation;
                winnerNumber = number;
            }
        }
        if (winner)
            winners[winnerNumber] = true;
    }
    return winners;
}

void SvgDocument::writeValue(const AdjustableAttribute &attribute, const QString &value,
                             const QDomNode &root)
{
    if (writeAttribute(find(attribute.element(), root), attribute.attributeName(), value))
        treeChanged();
}

void SvgDocument::restoreDefault(const AdjustableAttribute &attribute, const QDomNode &root)
{
    const QString value = attribute.defaultValue();
    if (!value.isEmpty())
        writeValue(attribute, value, root);
    else if (eraseAttribute(find(attribute.element(), root), attribute.attributeName()))
        treeChanged();
}
