// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QString>

/// Decides whether a title's text may be given to the tree parser and to the renderer: one pass
/// over the text that uses no recursion and keeps nothing. Returns an empty string for a text that
/// may, otherwise one line that says why not.
///
/// Refused are texts that are not well-formed up to the end of the root element, elements nested
/// deeper than both parsers can bear, and animations that the renderer plays itself whose times do
/// not fit into its arithmetic.
QString refusalOf(const QByteArray &text);
