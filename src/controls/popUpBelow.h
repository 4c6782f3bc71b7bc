#pragma once

class QMenu;

namespace folvane {

class Button;

/// Opens the menu below the button: from its left edge on or, where it would stand out of the window there, up to its
/// right edge.
void popUpBelow(QMenu& menu, const Button& button);

} // namespace folvane
