#pragma once

class QMenu;
class QWidget;

namespace folvane {

/// Opens the menu below the button: from its left edge on or, where it would stand out of the window there, up to its
/// right edge.
void popUpBelow(QMenu& menu, const QWidget& button);

} // namespace folvane
