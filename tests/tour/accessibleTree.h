#pragma once

#include <QAccessible>
#include <QStringList>

#include <functional>

class QWidget;

namespace folvane {

/// What a screen reader finds below the widget: the first that is on screen and fits, in the order of the tree; null
/// when there is none. The items of lists are left out.
QAccessibleInterface* findAccessible(QWidget& below, const std::function<bool(QAccessibleInterface&)>& fits);

/// The control that a person knows by this name; shortcuts and mnemonics do not count.
QAccessibleInterface* findControl(QWidget& below, const QString& name);

/// The names of all controls on screen, for who looks for one in vain.
QStringList controlNames(QWidget& below);

} // namespace folvane
