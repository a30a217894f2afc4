// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/AnimatableAttribute.h>

#include <QList>
#include <QStringList>

/// An animated text. The value for a time is one of the key values, each of which holds for an
/// equal slice of the duration; the calculation mode is ignored. White space around a key value is
/// left out.
///
/// \ingroup documents
class TITLESCENE_EXPORT AnimatableAttributeText final : public AnimatableAttribute
{
public:
    /// Animates \a attributeName of \a element, an element below \a root, through \a values, the
    /// texts of the key values in time order.
    AnimatableAttributeText(const QDomNode &element, const QDomNode &root, QString attributeName,
                            QStringList values);

    /// The same for an element whose place is known already.
    AnimatableAttributeText(const QDomNode &element, const SvgElement &place, QString attributeName,
                            QStringList values);

    /// The key value of the slice of the duration that \a time, ms, is in.
    QString valueForTime(int time) const override;

private:
    QList<QString> m_values;
};
