#pragma once

class QObject;

namespace folvane {

/// Lets Shift+F10 bring up the context menu of what has the keyboard, as the Menu key does, which many keyboards lack.
/// Installed once, on the application.
void letShiftF10OpenMenus(QObject& application);

} // namespace folvane
