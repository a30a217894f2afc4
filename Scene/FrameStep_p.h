// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <boost/shared_ptr.hpp>

#include <QString>

class AnimatableAttribute;

/// One attribute that a frame writes.
struct FrameStep
{
    boost::shared_ptr<AnimatableAttribute> animation;
    QString value;
    bool isDefault; ///< the template's own value, not the animation's
};

inline bool operator==(const FrameStep &a, const FrameStep &b)
{
    return a.animation == b.animation && a.isDefault == b.isDefault && a.value == b.value;
}
