// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/AnimatableAttribute.h>

#include <QList>
#include <QStringList>

#include <vector>

/// An animated text that mixes numbers with anything else, such as "translate(10, 20)".
///
/// Digits, "." and "-" make a number, everything else separates; exponents are not understood. The
/// value for a time is the text of the first key value with every number interpolated and written
/// with three decimals. Key values that do not all have the same number of numbers, or that hold
/// something like "1.2.3", can not be interpolated: the value is then always empty.
///
/// \ingroup documents
class TITLESCENE_EXPORT AnimatableAttributeFloatList final : public AnimatableAttribute
{
public:
    /// Animates \a attributeName of \a element, an element below \a root, through \a values, the
    /// texts of the key values in time order.
    AnimatableAttributeFloatList(const QDomNode &element, const QDomNode &root,
                                 QString attributeName, QStringList values);

    /// The same for an element whose place is known already.
    AnimatableAttributeFloatList(const QDomNode &element, const SvgElement &place,
                                 QString attributeName, QStringList values);

    /// The text at \a time, ms, with its numbers interpolated; empty when that can't be done.
    QString valueForTime(int time) const override;

private:
    QList<std::vector<double>> m_values;
    std::vector<QString> m_separators;
    bool m_startsWithNumber = false;
};
