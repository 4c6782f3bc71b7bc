#include "shell/sidebar/fileListAccessibility.h"

#include "shell/sidebar/FileList.h"
#include "shell/sidebar/FileRow.h"

#include <QAccessibleWidget>

namespace folvane {

namespace {

class Item : public QAccessibleWidget {
public:
    explicit Item(FileRow* row) : QAccessibleWidget(row, QAccessible::ListItem), m_row(row) {}

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = true; // by the arrow keys, if not by Tab
        state.selectable = true;
        state.selected = m_row->isCurrent();
        return state;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& action) override
    {
        if (action == pressAction())
            m_row->click();
        else
            QAccessibleWidget::doAction(action);
    }

private:
    FileRow* m_row;
};

QAccessibleInterface* interfaceFor(const QString&, QObject* object)
{
    if (auto* row = qobject_cast<FileRow*>(object))
        return new Item(row);
    const QObject* viewport = object->parent();
    const auto* list = viewport ? qobject_cast<FileList*>(viewport->parent()) : nullptr;
    if (list && list->widget() == object)
        return new QAccessibleWidget(list->widget(), QAccessible::List);
    return nullptr;
}

} // namespace

void installFileListAccessibility()
{
    [[maybe_unused]] static const bool once = (QAccessible::installFactory(interfaceFor), true);
}

} // namespace folvane
