#include "tour/accessibleTree.h"

#include <QAbstractItemView>
#include <QWidget>

#include <functional>

namespace folvane {

namespace {

using Fits = std::function<bool(QAccessibleInterface&)>;

bool isOnScreen(QAccessibleInterface& item)
{
    const auto* widget = qobject_cast<QWidget*>(item.object());
    return !item.state().invisible && (!widget || widget->isVisible());
}

/// The first that is on screen and fits, in the order of the tree.
QAccessibleInterface* find(QAccessibleInterface* item, const Fits& fits)
{
    if (!item || !item->isValid() || !isOnScreen(*item))
        return nullptr;
    if (fits(*item))
        return item;
    if (qobject_cast<QAbstractItemView*>(item->object()))
        return nullptr; // it makes its items when asked
    for (int child = 0; child < item->childCount(); ++child) {
        if (QAccessibleInterface* found = find(item->child(child), fits))
            return found;
    }
    return nullptr;
}

bool isControl(QAccessibleInterface& item)
{
    return item.actionInterface() && !item.actionInterface()->actionNames().isEmpty();
}

bool tells(QAccessible::Role role)
{
    return role == QAccessible::StaticText || role == QAccessible::Heading || role == QAccessible::List
           || role == QAccessible::Dialog || role == QAccessible::Window;
}

/// Entries of menus have a key marked in their name, and some a shortcut behind it.
bool isCalled(QAccessibleInterface& item, const QString& name)
{
    const QString text = item.text(QAccessible::Name);
    return text == name || QString(text).remove(u'&').section(u'\t', 0, 0) == name;
}

} // namespace

QAccessibleInterface* findControl(QWidget& below, const QString& name)
{
    return find(QAccessible::queryAccessibleInterface(&below),
                [&name](QAccessibleInterface& item) { return isControl(item) && isCalled(item, name); });
}

bool allHaveNames(QWidget& below)
{
    return !find(QAccessible::queryAccessibleInterface(&below), [](QAccessibleInterface& item) {
        return (isControl(item) || tells(item.role())) && item.text(QAccessible::Name).isEmpty();
    });
}

} // namespace folvane
