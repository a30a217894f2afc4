// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "AnimatableAttributeText.h"

#include "KeyValues_p.h"

#include <utility>

AnimatableAttributeText::AnimatableAttributeText(const QDomNode &element, const QDomNode &root,
                                                 QString attributeName, QStringList values)
    : AnimatableAttributeText(element, SvgElement(element, root), std::move(attributeName),
                              std::move(values))
{
}

AnimatableAttributeText::AnimatableAttributeText(const QDomNode &element, const SvgElement &place,
                                                 QString attributeName, QStringList values)
    : AnimatableAttribute(element, place, std::move(attributeName))
{
    for (const QString &value : qAsConst(values))
        m_values.append(value.trimmed());
    setValueCount(m_values.size());
}

QString AnimatableAttributeText::valueForTime(int time) const
{
    return m_values.value(keyValueSlice(progress(time), m_values.size()));
}
