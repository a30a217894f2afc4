// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "AdjustableAttribute.h"

#include <utility>

AdjustableAttribute::AdjustableAttribute(const QDomNode &element, const QDomNode &root,
                                         QString attributeName)
    : AdjustableAttribute(element, SvgElement(element, root), std::move(attributeName))
{
}

AdjustableAttribute::AdjustableAttribute(const QDomNode &element, const SvgElement &place,
                                         QString attributeName)
    : SvgElement(place), m_defaultValue(element.toElement().attribute(attributeName)),
      m_attributeName(std::move(attributeName))
{
}

void AdjustableAttribute::apply(const QDomNode &root, const QString &value) const
{
    setAttribute(root, m_attributeName, value);
}

void AdjustableAttribute::restoreDefaultValue(const QDomNode &root)
{
    if (m_defaultValue.isEmpty())
        removeAttribute(root, m_attributeName);
    else
        setAttribute(root, m_attributeName, m_defaultValue);
}

QString AdjustableAttribute::attributeName() const
{
    return m_attributeName;
}

QString AdjustableAttribute::defaultValue() const
{
    return m_defaultValue;
}

QString AdjustableAttribute::id() const
{
    return SvgElement::id() + m_attributeName;
}

const SvgElement &AdjustableAttribute::element() const
{
    return *this;
}
