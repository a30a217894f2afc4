// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "AnimatableAttributeColor.h"

#include "KeyValues_p.h"

#include <utility>

namespace {

int between(int from, int to, double fraction)
{
    return int(double(to - from) * fraction + from);
}

} // namespace

AnimatableAttributeColor::AnimatableAttributeColor(const QDomNode &element, const QDomNode &root,
                                                   QString attributeName, QStringList values)
    : AnimatableAttributeColor(element, SvgElement(element, root), std::move(attributeName),
                               std::move(values))
{
}

AnimatableAttributeColor::AnimatableAttributeColor(const QDomNode &element, const SvgElement &place,
                                                   QString attributeName, QStringList values)
    : AnimatableAttribute(element, place, std::move(attributeName))
{
    for (const QString &value : qAsConst(values)) {
        QColor color;
        color.setNamedColor(value.trimmed());
        m_values.append(color);
    }
    setValueCount(m_values.size());
}

QString AnimatableAttributeColor::valueForTime(int time) const
{
    if (m_values.isEmpty())
        return QString();
    const KeyValuePosition position = keyValuesAt(time);
    const QColor &from = m_values.at(position.index);
    const QColor &to = m_values.at(position.nextIndex);
    const int alpha = between(from.alpha(), to.alpha(), position.fraction);
    const int red = between(from.red(), to.red(), position.fraction);
    const int green = between(from.green(), to.green(), position.fraction);
    const int blue = between(from.blue(), to.blue(), position.fraction);
    return QColor(red, green, blue, alpha).name();
}
