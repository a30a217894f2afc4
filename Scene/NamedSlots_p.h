// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QMetaObject>
#include <QObject>

/// True when the object has a slot of this normalised signature; false for a null object.
inline bool hasSlot(const QObject *object, const char *signature)
{
    return object && object->metaObject()->indexOfSlot(signature) != -1;
}
