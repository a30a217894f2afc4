// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/AnimatableAttribute.h>

#include <QList>
#include <QStringList>

/// An animated number. White space around a key value is ignored; a text that is no number counts
/// as 0. The value for a time has three decimals ("0.500").
///
/// \ingroup documents
class TITLESCENE_EXPORT AnimatableAttributeFloat final : public AnimatableAttribute
{
public:
    /// Animates \a attributeName of \a element, an element below \a root, through \a values, the
    /// texts of the key values in time order.
    AnimatableAttributeFloat(const QDomNode &element, const QDomNode &root, QString attributeName,
                             QStringList values);

    /// The same for an element whose place is known already.
    AnimatableAttributeFloat(const QDomNode &element, const SvgElement &place,
                             QString attributeName, QStringList values);

    /// The number at \a time, ms, with three decimals.
    QString valueForTime(int time) const override;

private:
    QList<double> m_values;
};
