#include "shell/WindowTest.h"

#include "documents/currentFile.h"
#include "support/await.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace folvane {

OpenFilePtr WindowTest::openPages(int pages, const QString& name)
{
    await(model.open({makePdf(name + ".pdf", pages)}));
    QCoreApplication::processEvents(); // layouts show new rows
    return currentFile(model);
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
