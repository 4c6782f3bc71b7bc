#include "shell/WindowCommands.h"

#include "documents/currentFile.h"

#include <QEvent>
#include <QMenu>
#include <QMenuBar>

namespace folvane {

WindowCommands::WindowCommands(AppModel& model, QWidget* window, QMenuBar* bar)
    : QObject(bar), m_model(model), m_window(window)
{
    fillViewMenu(bar->addMenu(tr("&View")));
    fillWindowMenu(bar->addMenu(tr("&Window")));
    fillHelpMenu(bar->addMenu(tr("&Help")));
    window->installEventFilter(this);
    m_watches.keep([this] { refresh(); }, m_model.files);
}

void WindowCommands::fillViewMenu(QMenu* menu)
{
    m_sidebar = menu->addAction(tr("Hide Sidebar"), this, &WindowCommands::sidebarToggled);
    m_sidebar->setShortcut(Qt::Key_F9);
    m_fullScreen = menu->addAction(tr("Full Screen"), this, &WindowCommands::showFullScreen);
    m_fullScreen->setCheckable(true);
    m_fullScreen->setShortcut(Qt::Key_F11);
}

void WindowCommands::fillWindowMenu(QMenu* menu)
{
    QAction* minimize = menu->addAction(tr("Minimize"), m_window, &QWidget::showMinimized);
    minimize->setShortcut(Qt::CTRL | Qt::Key_M);
    m_maximize = menu->addAction(tr("Maximize"), this, [this] {
        m_window->isMaximized() ? m_window->showNormal() : m_window->showMaximized();
    });
    menu->addSeparator();
    menu->addAction(tr("Home"), this, [this] { m_model.destination = Destination(); });
    QAction* next = menu->addAction(tr("Next File"), this, [this] { showNeighbour(1); });
    QAction* previous = menu->addAction(tr("Previous File"), this, [this] { showNeighbour(-1); });
    next->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_PageDown), QKeySequence(Qt::CTRL | Qt::Key_Tab)});
    previous->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::Key_PageUp), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab)});
    m_neighbours = {next, previous};
}

void WindowCommands::fillHelpMenu(QMenu* menu)
{
    const Destination about(Destination::Place::About);
    menu->addAction(tr("Check for Updates…"), this, [this, about] {
        m_model.destination = about; // where the result shows
        m_model.updates.check();
    });
    menu->addAction(tr("Support the Developer…"), this, [this] { m_model.support = SupportPrompt::Manual; });
    menu->addSeparator();
    menu->addAction(tr("About Folvane"), this, [this, about] { m_model.destination = about; });
}

void WindowCommands::setSidebarShown(bool shown)
{
    m_sidebar->setText(shown ? tr("Hide Sidebar") : tr("Show Sidebar"));
}

// Round the list of files; from another place to its first or last.
void WindowCommands::showNeighbour(qsizetype step)
{
    const QList<OpenFilePtr> files = m_model.files.value();
    if (files.isEmpty())
        return;
    const qsizetype shown = files.indexOf(currentFile(m_model));
    const qsizetype from = shown < 0 && step < 0 ? 0 : shown;
    m_model.destination = Destination::file(files[(from + step + files.size()) % files.size()]->id);
}

void WindowCommands::showFullScreen(bool full)
{
    m_window->setWindowState(m_window->windowState().setFlag(Qt::WindowFullScreen, full));
}

void WindowCommands::refresh()
{
    for (QAction* action : m_neighbours)
        action->setEnabled(!m_model.files.value().isEmpty());
}

bool WindowCommands::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowStateChange) {
        m_fullScreen->setChecked(m_window->isFullScreen());
        m_maximize->setText(m_window->isMaximized() ? tr("Restore") : tr("Maximize"));
    }
    return QObject::eventFilter(watched, event);
}

} // namespace folvane
