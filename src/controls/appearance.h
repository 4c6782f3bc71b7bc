#pragma once

class QApplication;
class QFont;
class QWidget;

namespace folvane {

enum class Weight { Regular, Medium, SemiBold, Bold };

/// Gives the application its own style, light palette and font, so that the desktop's settings change nothing.
void applyAppearance(QApplication& application);

/// The interface font at `pixels` device-independent pixels.
QFont interfaceFont(double pixels, Weight weight = Weight::Regular);

/// The widget has the focus and its user works with the keyboard, so that it is worth marking.
bool showsFocus(const QWidget& widget);

} // namespace folvane
