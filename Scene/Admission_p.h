// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "AdmissionLimits_p.h"

#include <QByteArray>
#include <QString>

/// What becomes of a title's text before any other parser sees it.
struct Admission
{
    QByteArray text; ///< what may be parsed; the given bytes unless something had to be taken out
    QString refusal; ///< empty, or one line that says why nothing may be parsed
    QString leftOut; ///< empty, or one line that says what has been taken out first, and why
};

/// Decides whether a title's text may be given to the tree parser and to the renderer: one pass
/// over the text that uses no recursion and builds no tree.
///
/// Refused are texts that are not well-formed up to the end of the root element, that exceed one of
/// AdmissionLimits, and animations that the renderer plays itself whose times do not fit into its
/// arithmetic. Taken out is what would make the renderer read something outside the text, and
/// pictures that it should not unpack: the title plays without them. No file is opened.
Admission admit(const QByteArray &text, Origin origin = Origin::Template);

/// Whether judge() would have nothing against a text, told at a small part of its cost. False says
/// nothing.
bool isPlainAndHarmless(const QByteArray &text, Origin origin = Origin::Template);

/// The same as admit(), the long way.
Admission judge(const QByteArray &text, Origin origin = Origin::Template);
