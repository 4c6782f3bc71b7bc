#pragma once

#include "controls/style/Theme.h"

#include <QMargins>
#include <QRectF>

class QPainter;

namespace folvane {

/// The blurred shape of a rounded rectangle, drawn below it. Lengths are device-independent pixels.
struct Shadow {
    QColor color;  ///< with its opacity
    double radius; ///< of the blur: twice the standard deviation
    double offset; ///< downward

    bool operator==(const Shadow&) const = default;

    /// What a widget has to leave free around the shape for all of the shadow that can be seen.
    QMargins margins() const;
    /// Draws the shadow of the continuous rounded rectangle `shape`, below the shape too. It is blurred once per
    /// shadow, corner and scale of the screen, kept, and stretched where it is straight.
    void draw(QPainter& painter, const QRectF& shape, double cornerRadius) const;
};

/// The shadows that more than one control casts.
namespace shadows {

inline const Shadow sheet{theme::faded(theme::black, 0.18), 24, 8};
inline const Shadow popup{theme::faded(theme::black, 0.16), 8, 2};

} // namespace shadows

/// A `theme::surface` rounded rectangle with continuous corners, over its shadow.
void drawCard(QPainter& painter, const QRectF& frame, double cornerRadius, const Shadow& shadow);

} // namespace folvane
