// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/SvgElement.h>

/// One attribute of one element of a title, together with the text that the template gave it.
///
/// The document overwrites such attributes with a user's value (a line colour, say) or with an
/// animation's value for a time, and puts the template's text back. Objects are created with new
/// and held by boost::shared_ptr; they own no node.
///
/// \ingroup documents
class TITLESCENE_EXPORT AdjustableAttribute : public SvgElement
{
public:
    /// Remembers the attribute \a attributeName of \a element, an element below \a root.
    AdjustableAttribute(const QDomNode &element, const QDomNode &root, QString attributeName);

    /// The same for an element whose place is known already.
    AdjustableAttribute(const QDomNode &element, const SvgElement &place, QString attributeName);

    /// Writes \a value into the attribute of the element below \a root.
    void apply(const QDomNode &root, const QString &value) const;

    /// Puts the template's text back: removes the attribute when the template had none, or an
    /// empty one.
    void restoreDefaultValue(const QDomNode &root);

    /// The name of the attribute.
    QString attributeName() const;

    /// The attribute's text at the time of construction; empty when the element had none.
    QString defaultValue() const;

    /// Names the element and the attribute: SvgElement::id() followed by the attribute's name.
    /// Equal for all objects that stand for the same attribute of the same element.
    QString id() const;

    /// The element that carries the attribute.
    const SvgElement &element() const;

private:
    QString m_defaultValue;
    QString m_attributeName;
};
