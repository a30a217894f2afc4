// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Project.h"

#include <cmath>

namespace {

bool isNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

} // namespace

bool Placement::isSameAs(const Placement &other) const
{
    return isNear(pos.x(), other.pos.x(), 1e-3) && isNear(pos.y(), other.pos.y(), 1e-3)
            && isNear(rotation, other.rotation, 1e-4) && isNear(scaleX, other.scaleX, 1e-6)
            && isNear(scaleY, other.scaleY, 1e-6) && isNear(textWidth, other.textWidth, 1e-3);
}

int Project::frameCount() const
{
    return (clipLength + frameLength - 1) / frameLength;
}
