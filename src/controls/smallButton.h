#pragma once

#include "controls/style/icons.h"

class QToolButton;
class QWidget;

namespace folvane {

/// A borderless square with an icon, in a row or card, for the mouse alone: the row has keys that do the same.
QToolButton* makeSmallButton(Icon icon, int side, int iconSide, QWidget* parent);

} // namespace folvane
