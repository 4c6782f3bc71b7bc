#include "shell/WindowTest.h"

#include "documents/currentFile.h"
#include "platform/files/writeFile.h"
#include "shell/DocumentView.h"
#include "support/await.h"

#include <QAbstractButton>
#include <QAction>
#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QPdfWriter>

namespace folvane {

void WindowTest::SetUp()
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
}

QUrl WindowTest::makePdf(const QString& name, int pages)
{
    QPdfWriter writer(folder.filePath(name));
    QPainter painter(&writer);
    for (int page = 1; page <= pages; ++page) {
        painter.drawText(500, 500, QString::number(page));
        if (page < pages)
            writer.newPage();
    }
    painter.end();
    return QUrl::fromLocalFile(folder.filePath(name));
}

QUrl WindowTest::makeLocked(const QString& name, const QString& password)
{
    const QUrl plain = makePdf(QStringLiteral("plain ") + name, 1);
    await(model.engine().open(plain));
    BuildPlan plan;
    plan.pages.emplace_back().source = {plain, 0};
    plan.password = password;
    const QByteArray bytes = await(model.engine().build(plan, std::stop_token()));
    const QUrl locked = QUrl::fromLocalFile(folder.filePath(name));
    writeFile(locked, bytes);
    return locked;
}

OpenFilePtr WindowTest::openPages(int pages, const QString& name)
{
    await(model.open({makePdf(name + QStringLiteral(".pdf"), pages)}));
    QCoreApplication::processEvents(); // layouts show new rows
    return currentFile(model);
}

PageGrid& WindowTest::grid()
{
    return window.documentView().grid();
}

QPoint WindowTest::pagePoint(int row)
{
    return grid().visualRect(grid().model()->index(row, 0)).center();
}

void WindowTest::clickPage(int row, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, modifiers, pagePoint(row));
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

QList<QUuid> WindowTest::ids(const OpenFilePtr& file)
{
    QList<QUuid> ids;
    for (const PageItem& page : file->pages.value())
        ids.append(page.id);
    return ids;
}

bool WindowTest::drop(QWidget* target, const QPoint& place, const QMimeData& data)
{
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(place, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    if (!enter.isAccepted())
        return false;
    QDragMoveEvent over(place, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &over);
    QDropEvent drop(place, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &drop);
    return drop.isAccepted();
}

QAction* WindowTest::menuEntry(const QString& title) const
{
    for (const QAction* menu : window.menuBar()->actions()) {
        for (QAction* entry : menu->menu()->actions()) {
            if (entry->text().section(u'\t', 0, 0).remove(u'&') == title)
                return entry;
        }
    }
    return nullptr;
}

void WindowTest::press(const QWidget* where, const QString& name)
{
    for (auto* button : where->findChildren<QAbstractButton*>()) {
        if (button->isVisible() && (button->text() == name || button->accessibleName() == name)) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    ADD_FAILURE() << "no button " << name.toStdString();
}

} // namespace folvane
