#pragma once

class QObject;

namespace folvane {

/// Lets Return and Enter press the button that has the keyboard, as Space does. Choices, which are checked and not
/// pressed, leave them to the window's default button. Installed once, on the application.
void letReturnPressButtons(QObject& application);

} // namespace folvane
