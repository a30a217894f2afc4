// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "AnimatableAttributeFloat.h"

#include "KeyValues_p.h"

#include <utility>

AnimatableAttributeFloat::AnimatableAttributeFloat(const QDomNode &element, const QDomNode &root,
                                                   QString attributeName, QStringList values)
    : AnimatableAttributeFloat(element, SvgElement(element, root), std::move(attributeName),
                               std::move(values))
{
}

AnimatableAttributeFloat::AnimatableAttributeFloat(const QDomNode &element, const SvgElement &place,
                                                   QString attributeName, QStringList values)
    : AnimatableAttribute(element, place, std::move(attributeName))
{
    for (const QString &value : qAsConst(values))
        m_values.append(value.trimmed().toDouble());
    setValueCount(m_values.size());
}

QString AnimatableAttributeFloat::valueForTime(int time) const
{
    if (m_values.isEmpty())
        return QString();
    const KeyValuePosition position = keyValuesAt(time);
    return interpolatedNumber(m_values.at(position.index), m_values.at(position.nextIndex),
                              position.fraction);
}
