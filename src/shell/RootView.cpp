#include "shell/RootView.h"

#include "config.h"
#include "controls/droppedFiles.h"
#include "platform/Workspace.h"
#include "platform/spawn.h"
#include "shell/Alerts.h"
#include "shell/BusyOverlay.h"
#include "shell/Commands.h"
#include "shell/DocumentView.h"
#include "shell/HomeView.h"
#include "shell/SidebarView.h"
#include "shell/ToastView.h"
#include "shell/currentFile.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDialog>
#include <QDropEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QSplitter>
#include <QStackedWidget>

namespace folvane {

RootView::RootView(AppModel& model) : m_model(model)
{
    setMinimumSize(1000, 660);
    resize(1180, 780);
    setAcceptDrops(true);
    m_commands = new Commands(model, menuBar());

    auto* sidebar = new SidebarView(model, this);
    sidebar->setMinimumWidth(220);
    sidebar->setMaximumWidth(300);
    auto* split = new QSplitter(this);
    split->setHandleWidth(1);
    split->setChildrenCollapsible(false);
    split->addWidget(sidebar);
    split->addWidget(makeMainArea());
    split->setStretchFactor(1, 1);
    split->setSizes({240, 940});
    setCentralWidget(split);
    m_busy = new BusyOverlay(this);
    m_alerts = new Alerts(model, this);

    connect(m_commands, &Commands::quitRequested, this, &RootView::requestQuit);
    connect(m_busy, &BusyOverlay::cancelled, this, [this] {
        if (std::optional<BusyState> busy = m_model.busy.value())
            busy->task.request_stop();
    });
    connect(m_toast, &ToastView::revealRequested, this,
            [this](const QUrl& file) { spawn(m_model.services().workspace.reveal(file)); });
    m_watches.keep([this] { showDestination(); }, m_model.destination, m_model.files);
    m_pages->currentWidget()->setFocus();
    m_watches.keep([this] { m_toast->setToast(m_model.toast.value()); }, m_model.toast);
    m_watches.keep([this] { m_busy->setState(m_model.busy.value()); }, m_model.busy);
}

// Whoever awaits a panel of this window gets an answer, and is not left waiting for ever.
RootView::~RootView()
{
    m_watches.clear();
    delete m_alerts;
    for (QDialog* dialog : findChildren<QDialog*>(Qt::FindDirectChildrenOnly))
        dialog->reject();
}

QWidget* RootView::makeMainArea()
{
    m_pages = new QStackedWidget(this);
    m_home = new HomeView(m_model, m_pages);
    m_document = new DocumentView(m_model, m_pages);
    m_pages->addWidget(m_home);
    m_pages->addWidget(m_document);
    m_toast = new ToastView(m_pages);
    return m_pages;
}

void RootView::showDestination()
{
    const OpenFilePtr file = currentFile(m_model);
    const bool changes = m_pages->currentWidget() != (file ? static_cast<QWidget*>(m_document) : m_home);
    m_document->setFile(file);
    if (changes) {
        m_pages->setCurrentWidget(file ? static_cast<QWidget*>(m_document) : m_home);
        m_pages->currentWidget()->setFocus();
    }
    setWindowTitle(file ? file->name : config::appName.toString());
}

void RootView::requestQuit()
{
    const std::optional<QuitQuestion> question = m_model.quitQuestion();
    if (question)
        m_alerts->askToQuit(*question, [] { QCoreApplication::quit(); });
    else
        QCoreApplication::quit();
}

// With changes that would be lost the program stays running without a question. A desktop has no other way back to a
// program without a window, so the window steps aside into the task bar.
void RootView::closeEvent(QCloseEvent* event)
{
    if (m_model.quitsWithLastWindow()) {
        event->accept();
        QCoreApplication::quit();
        return;
    }
    event->ignore();
    showMinimized();
}

void RootView::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void RootView::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    spawn(m_model.open(droppedFiles(event->mimeData())));
}

} // namespace folvane
