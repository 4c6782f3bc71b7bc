#include "tour/accessibleTree.h"

#include <QAbstractItemView>
#include <QWidget>

#include <algorithm>
#include <array>

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

QAccessibleInterface* find(QAccessibleInterface& item, const Fits& fits)
{
    if (!item.isValid() || !isOnScreen(item))
        return nullptr;
    if (fits(item))
        return &item;
    if (hasManyItems(item))
        return nullptr;
    for (int child = 0; child < item.childCount(); ++child) {
        QAccessibleInterface* below = item.child(child);
        if (QAccessibleInterface* found = below ? find(*below, fits) : nullptr)
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

QAccessibleInterface* findAccessible(QWidget& below, const Fits& fits)
{
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&below);
    return root ? find(*root, fits) : nullptr;
}

QStringList controlNames(QWidget& below)
{
    QStringList names;
    findAccessible(below, [&names](QAccessibleInterface& item) {
        if (isControl(item.role()))
            names.append(item.text(QAccessible::Name));
        return false;
    });
    return names;
}

QAccessibleInterface* findControl(QWidget& below, const QString& name)
{
    return findAccessible(below, [&name](QAccessibleInterface& item) {
        return isControl(item.role()) && item.text(QAccessible::Name).remove(u'&') == name;
    });
}

} // namespace folvane
