#include "tour/accessibleTree.h"

#include <QAbstractItemView>
#include <QWidget>

#include <algorithm>
#include <array>
#include <functional>

namespace folvane {

namespace {

using Fits = std::function<bool(QAccessibleInterface&)>;

bool isOnScreen(QAccessibleInterface& item)
{
    const auto* widget = qobject_cast<QWidget*>(item.object());
    return !item.state().invisible && (!widget || widget->isVisible());
}

/// Views that make their items when asked; lists of a few widgets are not among them.
bool hasManyItems(const QAccessibleInterface& item)
{
    return qobject_cast<QAbstractItemView*>(item.object());
}

/// The first that is on screen and fits, in the order of the tree.
QAccessibleInterface* find(QAccessibleInterface* item, const Fits& fits)
{
    if (!item || !item->isValid() || !isOnScreen(*item))
        return nullptr;
    if (fits(*item))
        return item;
    if (hasManyItems(*item))
        return nullptr;
    for (int child = 0; child < item->childCount(); ++child) {
        if (QAccessibleInterface* found = find(item->child(child), fits))
            return found;
    }
    return nullptr;
}

bool isControl(QAccessible::Role role)
{
    constexpr std::array controls{QAccessible::PushButton,     QAccessible::ButtonMenu,
                                  QAccessible::ButtonDropDown, QAccessible::CheckBox,
                                  QAccessible::RadioButton,    QAccessible::Link,
                                  QAccessible::ListItem,       QAccessible::PageTab,
                                  QAccessible::MenuItem,       QAccessible::EditableText};
    return std::ranges::find(controls, role) != controls.end();
}

} // namespace

QStringList controlNames(QWidget& below)
{
    QStringList names;
    find(QAccessible::queryAccessibleInterface(&below), [&names](QAccessibleInterface& item) {
        if (isControl(item.role()))
            names.append(item.text(QAccessible::Name));
        return false;
    });
    return names;
}

QAccessibleInterface* findControl(QWidget& below, const QString& name)
{
    return find(QAccessible::queryAccessibleInterface(&below), [&name](QAccessibleInterface& item) {
        return isControl(item.role()) && item.text(QAccessible::Name).remove(u'&') == name;
    });
}

} // namespace folvane
