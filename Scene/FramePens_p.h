// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QObject>
#include <QPen>
#include <QVariant>

/// The two pens with which a frame is drawn, as the application's styling object gives them. A
/// property that is missing or no pen gives a default pen.
struct FramePens
{
    QPen outer;
    QPen inner;
};

/// \a innerName is the property of the inner pen of a frame that is not selected.
inline FramePens framePens(const QObject &stylingObject, bool selected, const char *innerName)
{
    const auto pen = [&stylingObject](const char *name) {
        return stylingObject.property(name).value<QPen>();
    };
    return {pen(selected ? "decoratorSelectedPen" : "decoratorPen"),
            pen(selected ? "strokeSelectedPen" : innerName)};
}
