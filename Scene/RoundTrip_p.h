// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QDomDocument>

/// \file
/// What becomes of a tree that is saved and parsed again. Saving puts white space between nodes,
/// and parsing drops text that is nothing but white space.

/// Whether parsing the text that a save gives leads to the same nodes, in the same places and with
/// the same values. False when in doubt.
bool survivesSaving(const QDomDocument &tree);

/// Gives a tree that survives saving the XML declaration that it would have after it.
void declareAsSaved(QDomDocument *tree);
