// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "Admission_p.h"
#include "Agreement_p.h"
#include "AnimatableAttribute.h"
#include "FrameStep_p.h"
#include "MarkupRoles_p.h"
#include "NumberScan_p.h"
#include "Picture_p.h"
#include "Renderer_p.h"
#include "TimeValue_p.h"
#include "TreeEdit_p.h"

#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

// How a title gets to a time: for each animated attribute one animation wins or the template's own
// value comes back, the tree is saved, and the renderer draws the saved text.

namespace {

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

/// Whether the renderer would look for the value in a file. The template's own were admitted.
bool isForeignReference(const QDomElement &element, const AdjustableAttribute &attribute,
                        const QString &value)
{
    return attribute.attributeName() == QLatin1String("xlink:href")
            && element.tagName().section(QLatin1Char(':'), -1) == QLatin1String("image")
            && value != attribute.defaultValue() && pixelsOfPicture(value) == 0;
}

constexpr int fewNumbers = 6; // those of a matrix

NumberScan numbersIn(const QString &value)
{
    const QByteArray text = value.toUtf8();
    return scanNumbers(std::string_view(text.constData(), std::size_t(text.size())));
}

/// Whether a value can exceed limits although the key values and the template's own do not: one
/// that lies between two key values may be another reference, or a path with other numbers.
bool mayExceedLimits(const AdjustableAttribute &attribute, const QString &value)
{
    const QByteArray name = attribute.attributeName().toUtf8();
    switch (roleOfAttribute(std::string_view(name.constData(), std::size_t(name.size())))) {
    case AttributeRole::None:
        return false;
    case AttributeRole::Id:
    case AttributeRole::Class:
    case AttributeRole::Reference:
    case AttributeRole::UseReference:
    case AttributeRole::Style:
        return true;
    default:
        break;
    }
    const NumberScan numbers = numbersIn(value);
    return numbers.isTooLarge
            || (numbers.count > fewNumbers
                && numbers.count > numbersIn(attribute.defaultValue()).count);
}

/// Only a frame that is admitted as it stands is drawn.
QString refusalOfFrame(const QByteArray &data, qint64 textSize)
{
    const auto text = QByteArray::fromRawData(data.constData(), int(textSize));
    const Admission admission = admit(text, Origin::Frame);
    return admission.text.constData() == text.constData()
            ? admission.refusal
            : QStringLiteral("an animation refers to another file");
}

bool isDrawable(const QRectF &bounds)
{
    return std::isfinite(bounds.x()) && std::isfinite(bounds.y()) && std::isfinite(bounds.width())
            && std::isfinite(bounds.height()) && !bounds.isEmpty();
}

} // namespace

void SvgDocument::paint(QPainter *painter, int ms)
{
    // Without its fonts, the renderer would end the process.
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        qWarning("SvgDocument::paint: there is no QGuiApplication");
        return;
    }
    if (m_animated)
        applyAnimation(ms);
    // Given an empty rectangle, the renderer would fill the whole device.
    if (!painter || !isDrawable(m_bounds))
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
    std::vector<FrameStep> steps = stepsAt(ms);
    if (steps.empty() || m_agreement->isShowing(steps))
        return;
    const bool isInDoubt = std::any_of(steps.begin(), steps.end(), [](const FrameStep &step) {
        return mayExceedLimits(*step.animation, step.value);
    });
    if (isInDoubt)
        m_agreement->beginDoubt();
    const std::vector<bool> needed = neededSteps(steps);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (needed[i])
            carryOut(steps[i]);
    }
    if (m_agreement->isSaved() || m_agreement->save())
        m_agreement->show(std::move(steps), isInDoubt ? refusalOfFrame(m_data, size()) : QString());
}

/// What has to be written at this time: the winners' values in document order, since two
/// definitions with one id show and hide the same elements, then the defaults of attributes without
/// a winner.
std::vector<FrameStep> SvgDocument::stepsAt(int ms) const
{
    std::vector<bool> winners(m_animatableAttributes.size(), false);
    std::vector<FrameStep> defaults;
    for (const auto &entry : m_animationsById) {
        if (const std::optional<std::size_t> winner = winnerAt(ms, entry.second)) {
            winners[*winner] = true;
        } else {
            const auto &animation = m_animatableAttributes[entry.second.back()];
            defaults.push_back({animation, animation->defaultValue(), true});
        }
    }
    std::vector<FrameStep> steps;
    steps.reserve(m_animationsById.size());
    for (std::size_t number = 0; number < winners.size(); ++number) {
        const auto &animation = m_animatableAttributes[number];
        if (winners[number])
            steps.push_back({animation, animation->valueForTime(ms), false});
    }
    std::move(defaults.begin(), defaults.end(), std::back_inserter(steps));
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

/// The one of an attribute's animations that sets it at this time, if any does.
std::optional<std::size_t> SvgDocument::winnerAt(int ms, const AttributeNumbers &numbers) const
{
    std::optional<std::size_t> winner;
    for (const std::size_t number : numbers) {
        const AnimatableAttribute &animation = *m_animatableAttributes[number];
        if (isInEffect(animation, ms)
            && (!winner || displaces(animation, *m_animatableAttributes[*winner], ms)))
            winner = number;
    }
    return winner;
}

void SvgDocument::writeValue(const AdjustableAttribute &attribute, const QString &value,
                             const QDomNode &root)
{
    m_agreement->edit(attribute.element(), root, attribute.attributeName(),
                      [&](const QDomElement &element) {
                          return !isForeignReference(element, attribute, value)
                                  && writeAttribute(element, attribute.attributeName(), value);
                      });
}

void SvgDocument::restoreDefault(const AdjustableAttribute &attribute, const QDomNode &root)
{
    const QString value = attribute.defaultValue();
    if (!value.isEmpty()) {
        writeValue(attribute, value, root);
        return;
    }
    m_agreement->edit(attribute.element(), root, attribute.attributeName(),
                      [&](const QDomElement &element) {
                          return eraseAttribute(element, attribute.attributeName());
                      });
}
