#pragma once

#include <QAccessible>

class QWidget;

namespace folvane {

// What a screen reader finds on screen from the widget downwards; the items of lists are left out.

/// The control that a person knows by this name, shortcuts and mnemonics aside; null when there is none.
QAccessibleInterface* findControl(QWidget& below, const QString& name);

/// A control, or a part that tells something, without a name; null when all have one.
QAccessibleInterface* findUnnamed(QWidget& below);

} // namespace folvane
