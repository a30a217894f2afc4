// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Snapping.h"

#include <cmath>

namespace {

struct Pair
{
    double moving;
    double fixed;
    double distance() const { return std::abs(fixed - moving); }
};

std::optional<Pair> nearest(std::initializer_list<Pair> pairs, double reach)
{
    std::optional<Pair> best;
    for (const Pair &pair : pairs) {
        if (pair.distance() <= reach && (!best || pair.distance() < best->distance()))
            best = pair;
    }
    return best;
}

} // namespace

Snap snapToCanvas(const QRectF &moving, const QRectF &canvas, double reach)
{
    Snap snap;
    if (const auto x = nearest({{moving.center().x(), canvas.center().x()},
                                {moving.left(), canvas.left()},
                                {moving.right(), canvas.right()}},
                               reach)) {
        snap.offset.setX(x->fixed - x->moving);
        snap.vertical = x->fixed;
    }
    if (const auto y = nearest({{moving.center().y(), canvas.center().y()},
                                {moving.top(), canvas.top()},
                                {moving.bottom(), canvas.bottom()}},
                               reach)) {
        snap.offset.setY(y->fixed - y->moving);
        snap.horizontal = y->fixed;
    }
    return snap;
}
