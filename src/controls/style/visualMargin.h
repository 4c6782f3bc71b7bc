#pragma once

#include <QMargins>

class QWidget;

namespace folvane {

/// Between the edge of a widget and the edge of what it seems to be, where a shadow or a focus ring is drawn.
/// Layouts place such a widget by what it seems to be: spacings and alignments count from the visible edge, and
/// the margin lies over the spacing. The margins of the outermost layout must be at least as wide.
/// Has an effect on push buttons and frames.
void setVisualMargin(QWidget& widget, const QMargins& margin);
QMargins visualMargin(const QWidget& widget);

} // namespace folvane
