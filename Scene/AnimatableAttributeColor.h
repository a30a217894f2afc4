// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/AnimatableAttribute.h>

#include <QColor>
#include <QList>
#include <QStringList>

/// An animated colour. White space around a key value is ignored; a text that is no colour counts
/// as an invalid QColor, which is black. The value for a time is "#rrggbb": the alpha channel is
/// interpolated too, but an attribute text cannot carry it.
///
/// \ingroup documents
class TITLESCENE_EXPORT AnimatableAttributeColor final : public AnimatableAttribute
{
public:
    /// Animates \a attributeName of \a element, an element below \a root, through \a values, the
    /// texts of the key values in time order.
    AnimatableAttributeColor(const QDomNode &element, const QDomNode &root, QString attributeName,
                             QStringList values);

    /// The same for an element whose place is known already.
    AnimatableAttributeColor(const QDomNode &element, const SvgElement &place,
                             QString attributeName, QStringList values);

    /// The colour at \a time, ms, as "#rrggbb".
    QString valueForTime(int time) const override;

private:
    QList<QColor> m_values;
};
