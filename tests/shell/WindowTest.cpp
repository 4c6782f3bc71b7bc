#include "shell/WindowTest.h"

#include "documents/currentFile.h"
#include "support/await.h"
#include "tour/accessibleTree.h"
#include "tour/sampleFiles.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace folvane {

QUrl WindowTest::makePdf(const QString& name, int pages) const
{
    return makeSample(folder.filePath(name), pages);
}

QUrl WindowTest::makeLocked(const QString& name, const QString& password) const
{
    return folvane::makeLocked(folder.filePath(name), password);
}

OpenFilePtr WindowTest::openPages(int pages, const QString& name)
{
    await(model.open({makePdf(name + QStringLiteral(".pdf"), pages)}));
    QCoreApplication::processEvents(); // layouts show new rows
    return currentFile(model);
}

QPoint WindowTest::pagePoint(int row)
{
    return grid().viewport()->mapToGlobal(grid().visualRect(grid().model()->index(row, 0)).center());
}

QList<int> WindowTest::selected(const OpenFilePtr& file)
{
    QList<int> rows;
    for (int row = 0; row < int(file->pages.value().size()); ++row) {
        if (file->selection.value().contains(file->pages.value()[size_t(row)].id))
            rows.append(row);
    }
    return rows;
}

void WindowTest::press(const QString& name)
{
    QCoreApplication::processEvents(); // layouts show what is new
    QAccessibleInterface* control = findControl(hand.top(), name);
    ASSERT_TRUE(control) << controlNames(hand.top()).join(u'|').toStdString();
    hand.click(control->rect().center());
}

QAbstractButton* WindowTest::button(const QString& name) const
{
    for (auto* one : window.findChildren<QAbstractButton*>())
        if (one->isVisible() && (one->accessibleName() == name || one->text() == name))
            return one;
    return nullptr;
}

QAction* WindowTest::menuEntry(const QString& title) const
{
    for (const QAction* menu : window.menuBar()->actions())
        for (QAction* entry : menu->menu()->actions())
            if (entry->text().section(u'\t', 0, 0).remove(u'&') == title)
                return entry;
    return nullptr;
}

} // namespace folvane
