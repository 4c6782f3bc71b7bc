#pragma once

#include <QAccessible>

namespace folvane {

/// Tells screen readers what the controls are that Qt does not know. Call it once, before any window is made.
void installAccessibility();

/// What screen readers take the widget for. Before anything has asked about it.
void setSpokenRole(QWidget& widget, QAccessible::Role role);

/// Has screen readers say what has come up there, wherever the keyboard is.
void announce(QWidget& widget);

} // namespace folvane
