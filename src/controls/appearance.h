#pragma once

#include "controls/style/focusRing.h"

class QApplication;
class QFont;

namespace folvane {

enum class Weight { Regular, Medium, SemiBold, Bold };

/// Gives the application its own style, light palette, font and icon, so that the desktop's settings change nothing.
void applyAppearance(QApplication& application);

/// The interface font at `pixels` device-independent pixels, also half ones.
QFont interfaceFont(double pixels, Weight weight = Weight::Regular);
/// One whose characters are all equally wide, for addresses.
QFont monospacedFont(double pixels, Weight weight = Weight::Regular);

} // namespace folvane
