#pragma once

#include <QAccessible>

class QWidget;

namespace folvane {

// What a screen reader finds on screen from the widget downwards; the items of lists are left out.

/// The control that a person knows by this name, shortcuts and mnemonics aside; null when there is none.
QAccessibleInterface* findControl(QWidget& below, const QString& name);

/// Whether each control, and each part that tells something, has a name.
bool allHaveNames(QWidget& below);

} // namespace folvane
