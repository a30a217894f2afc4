// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "AnimatableAttribute.h"

#include "KeyValues_p.h"

#include <utility>

AnimatableAttribute::AnimatableAttribute(const QDomNode &element, const QDomNode &root,
                                         QString attributeName)
    : AdjustableAttribute(element, root, std::move(attributeName))
{
}

AnimatableAttribute::AnimatableAttribute(const QDomNode &element, const SvgElement &place,
                                         QString attributeName)
    : AdjustableAttribute(element, place, std::move(attributeName))
{
}

void AnimatableAttribute::setParams(int begin, int end, int repeatCount, bool freeze,
                                    CalcModes calcMode)
{
    m_begin = begin;
    m_end = end;
    m_repeatCount = repeatCount;
    m_freeze = freeze;
    m_calcMode = calcMode;
}

bool AnimatableAttribute::isApplicable(int time) const
{
    return m_begin <= time && time < m_end;
}

bool AnimatableAttribute::isApplicableFrozen(int time) const
{
    return time >= m_end && m_freeze;
}

int AnimatableAttribute::beginTime() const
{
    return m_begin;
}

int AnimatableAttribute::endTime() const
{
    return m_end;
}

int AnimatableAttribute::repeatCount() const
{
    return m_repeatCount;
}

bool AnimatableAttribute::isFrozen() const
{
    return m_freeze;
}

AnimatableAttribute::CalcModes AnimatableAttribute::calcMode() const
{
    return m_calcMode;
}

int AnimatableAttribute::valueCount() const
{
    return m_valueCount;
}

void AnimatableAttribute::calculateValues(int time, int &index, int &nextIndex,
                                          double &fraction) const
{
    const KeyValuePosition position = keyValuesAt(time);
    index = position.index;
    nextIndex = position.nextIndex;
    fraction = position.fraction;
}

void AnimatableAttribute::apply(const QDomNode &root, int time) const
{
    AdjustableAttribute::apply(root, valueForTime(time));
}

void AnimatableAttribute::setValueCount(int count)
{
    m_valueCount = count;
}

double AnimatableAttribute::progress(int time) const
{
    return cycleProgress(time, m_begin, m_end, m_repeatCount);
}

KeyValuePosition AnimatableAttribute::keyValuesAt(int time) const
{
    return keyValuePosition(progress(time), m_valueCount, m_calcMode == Discrete);
}
