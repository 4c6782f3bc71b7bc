#pragma once

#include "controls/style/Theme.h"

#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

namespace folvane {

/// The widget as it looks on a transparent ground, at `scale` pixels to the device-independent one.
QImage picture(QWidget& widget, double scale = 1);

/// The colour at a place in device-independent pixels.
QColor colorAt(const QImage& picture, const QPointF& place);

/// `color` at `opacity` on a transparent ground.
inline QColor at(double opacity, const QColor& color)
{
    return theme::faded(color, opacity);
}

/// Equal but for what rounding makes of blended colours.
testing::AssertionResult alike(const QColor& one, const QColor& other, int tolerance = 3);

} // namespace folvane
