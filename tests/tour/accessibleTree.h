#pragma once

#include <QAccessible>
#include <QStringList>

class QWidget;

namespace folvane {

/// What a screen reader finds below the widget: the control on screen that a person knows by this name, shortcuts and
/// mnemonics aside; null when there is none. The items of lists are left out.
QAccessibleInterface* findControl(QWidget& below, const QString& name);

/// The names of all controls on screen, for who looks for one in vain.
QStringList controlNames(QWidget& below);

} // namespace folvane
