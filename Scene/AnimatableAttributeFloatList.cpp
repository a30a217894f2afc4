// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "AnimatableAttributeFloatList.h"

#include "KeyValues_p.h"
#include "NumberList_p.h"

#include <utility>

AnimatableAttributeFloatList::AnimatableAttributeFloatList(const QDomNode &element,
                                                           const QDomNode &root,
                                                           QString attributeName,
                                                           QStringList values)
    : AnimatableAttributeFloatList(element, SvgElement(element, root), std::move(attributeName),
                                   std::move(values))
{
}

AnimatableAttributeFloatList::AnimatableAttributeFloatList(const QDomNode &element,
                                                           const SvgElement &place,
                                                           QString attributeName,
                                                           QStringList values)
    : AnimatableAttribute(element, place, std::move(attributeName))
{
    const QString pattern = values.value(0).trimmed();
    const QChar closing = closingCharacter(pattern);
    m_startsWithNumber = !pattern.isEmpty() && isNumberCharacter(pattern.front());
    m_separators = separatorRuns(pattern + closing);

    bool interpolable = true;
    for (const QString &value : qAsConst(values)) {
        bool allRead = true;
        m_values.append(numberRuns(value.trimmed() + closing, &allRead));
        interpolable &= allRead && m_values.last().size() == m_values.first().size();
    }
    if (!interpolable)
        m_values.clear();
    setValueCount(m_values.size());
}

QString AnimatableAttributeFloatList::valueForTime(int time) const
{
    if (m_values.isEmpty())
        return QString();
    const KeyValuePosition position = keyValuesAt(time);
    const std::vector<double> &from = m_values.at(position.index);
    const std::vector<double> &to = m_values.at(position.nextIndex);
    std::vector<QString> numbers;
    numbers.reserve(to.size());
    for (std::size_t i = 0; i < to.size(); ++i)
        numbers.push_back(interpolatedNumber(from[i], to[i], position.fraction));
    return m_startsWithNumber ? interleaved(numbers, m_separators)
                              : interleaved(m_separators, numbers);
}
