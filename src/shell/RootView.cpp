#include "shell/RootView.h"

#include "config.h"
#include "controls/dragging/FileDrops.h"
#include "controls/sheets/Veil.h"
#include "documents/currentFile.h"
#include "platform/desktop/Preferences.h"
#include "platform/desktop/Workspace.h"
#include "platform/tasks/spawn.h"
#include "shell/Alerts.h"
#include "shell/BusyOverlay.h"
#include "shell/Commands.h"
#include "shell/DocumentView.h"
#include "shell/FileSheets.h"
#include "shell/ToastView.h"
#include "shell/WindowCommands.h"
#include "shell/about/AboutView.h"
#include "shell/home/HomeView.h"
#include "shell/pageGrid/PageGrid.h"
#include "shell/sidebar/SidebarView.h"
#include "tools/codes/CodesView.h"
#include "tools/merge/MergeView.h"
#include "tools/sign/SignView.h"
#include "tools/stamps/StampsView.h"
#include "tools/support/SupportSheets.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDialog>
#include <QMenuBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QWindow>

namespace folvane {

namespace {

const QString geometryKey = QStringLiteral("window.geometry");

} // namespace

RootView::RootView(AppModel& model) : m_model(model)
{
    const auto* drops = new FileDrops(*this);
    connect(drops, &FileDrops::dropped, this,
            [this](const QList<QUrl>& files) { spawn(m_model.open(files)); });
    m_commands = new Commands(model, menuBar());
    m_windowCommands = new WindowCommands(model, this, menuBar());

    m_sidebar = new SidebarView(model, this);
    m_sidebar->setMinimumWidth(220);
    m_sidebar->setMaximumWidth(300);
    auto* split = new QSplitter(this);
    split->setHandleWidth(1);
    split->setChildrenCollapsible(false);
    split->addWidget(m_sidebar);
    split->addWidget(makeMainArea());
    split->setStretchFactor(1, 1);
    split->setSizes({240, 940});
    split->setMinimumSize(1000, 660);
    setCentralWidget(split);
    resize(1180, 780);
    restoreGeometry(m_model.services().preferences.value(geometryKey).toByteArray());
    setWindowState(windowState() & ~Qt::WindowFullScreen); // that was for then
    m_busy = new BusyOverlay(this);
    new Veil(this);
    m_sheets = new FileSheets(model, this);
    m_alerts = new Alerts(model, this);
    m_support = new SupportSheets(model, this);

    connectCommands();
    connect(m_busy, &BusyOverlay::cancelled, this, [this] {
        if (std::optional<BusyState> busy = m_model.busy.value())
            busy->task.request_stop();
    });
    connect(m_busy, &BusyOverlay::keyboardFreed, this, &RootView::takeFocus);
    connect(m_sidebar, &SidebarView::chosen, this, &RootView::takeFocus);
    connect(m_toast, &ToastView::revealRequested, this,
            [this](const QUrl& file) { spawn(m_model.services().workspace.reveal(file)); });
    m_watches.keep([this] { showDestination(); }, m_model.destination, m_model.files, m_model.signingFileID);
    takeFocus();
    m_watches.keep([this] { showToast(); }, m_model.toast);
    m_watches.keep([this] { m_busy->setState(m_model.busy.value()); }, m_model.busy);
    m_watches.keep([this] { followClosed(); }, m_model.errorMessage, m_model.busy);
}

void RootView::connectCommands()
{
    connect(m_commands, &Commands::closeWindowRequested, this, &QWidget::close);
    connect(m_commands, &Commands::quitRequested, this, &RootView::requestQuit);
    connect(m_commands, &Commands::pagesMoveRequested, &m_document->grid(), &PageGrid::movePages);
    connect(m_windowCommands, &WindowCommands::sidebarToggled, this,
            [this] { setSidebarShown(m_sidebar->isHidden()); });
}

// Whoever awaits a panel of this window gets an answer, and is not left waiting for ever.
RootView::~RootView()
{
    m_watches.clear();
    m_model.services().preferences.setValue(geometryKey, saveGeometry());
    delete m_sheets;
    delete m_alerts;
    delete m_support;
    for (QDialog* dialog : findChildren<QDialog*>(Qt::FindDirectChildrenOnly))
        dialog->reject();
}

QWidget* RootView::makeMainArea()
{
    auto* area = new QWidget(this);
    m_pages = new QStackedWidget(area);
    auto* whole = new QVBoxLayout(area);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_pages);
    m_home = new HomeView(m_model, m_pages);
    m_document = new DocumentView(m_model, m_pages);
    m_pages->addWidget(m_home);
    m_pages->addWidget(m_document);
    m_merge = new MergeView(m_model, m_pages);
    m_pages->addWidget(m_merge);
    m_sign = new SignView(m_model, m_pages);
    m_pages->addWidget(m_sign);
    m_stamps = new StampsView(m_model, m_pages);
    m_pages->addWidget(m_stamps);
    m_codes = new CodesView(m_model, m_pages);
    m_pages->addWidget(m_codes);
    m_about = new AboutView(m_model, m_pages);
    m_pages->addWidget(m_about);
    m_toast = new ToastView(area);
    return area;
}

QWidget* RootView::viewOf(const OpenFilePtr& file) const
{
    if (file && m_model.signingFileID.value() == file->id)
        return m_sign;
    if (file)
        return m_document;
    const std::optional<Destination> destination = m_model.destination.value();
    if (destination && destination->is(Destination::Place::Merge))
        return m_merge;
    if (destination && destination->is(Destination::Place::Stamps))
        return m_stamps;
    if (destination && destination->is(Destination::Place::Codes))
        return m_codes;
    if (destination && destination->is(Destination::Place::About))
        return m_about;
    return m_home;
}

void RootView::showDestination()
{
    const OpenFilePtr file = currentFile(m_model);
    QWidget* view = viewOf(file);
    const bool changes = m_pages->currentWidget() != view || m_document->file() != file;
    m_document->setFile(file);
    m_sign->setFile(view == m_sign ? file : nullptr);
    m_pages->setCurrentWidget(view);
    m_toast->standOn(view == m_document ? m_document->footer()
                     : view == m_merge  ? m_merge->footer()
                                        : nullptr);
    if (changes)
        takeFocus();
    setWindowTitle(file ? file->name : config::appName.toString());
}

// A toast that goes takes nobody's keyboard with it.
void RootView::showToast()
{
    const std::optional<Toast> toast = m_model.toast.value();
    if (!toast && focusWidget() && m_toast->isAncestorOf(focusWidget()))
        takeFocus();
    m_toast->setToast(toast);
}

void RootView::takeFocus()
{
    if (m_model.busy.value())
        return; // the overlay has the keyboard until the job has ended
    if (m_pages->currentWidget() == m_document)
        m_document->takeFocus();
    else if (m_pages->currentWidget() == m_sign)
        m_sign->takeFocus();
    else if (m_pages->currentWidget() == m_merge)
        m_merge->takeFocus();
    else if (m_pages->currentWidget() == m_stamps)
        m_stamps->takeFocus();
    else if (m_pages->currentWidget() == m_codes)
        m_codes->takeFocus();
    else if (m_pages->currentWidget() == m_about)
        m_about->takeFocus();
    else
        m_home->takeFocus();
}

void RootView::requestQuit()
{
    const std::optional<QuitQuestion> question = m_model.quitQuestion();
    if (question)
        m_alerts->askToQuit(*question, [] { QCoreApplication::exit(); });
    else
        QCoreApplication::exit();
}

void RootView::setSidebarShown(bool shown)
{
    m_sidebar->setVisible(shown);
    m_windowCommands->setSidebarShown(shown);
}

// The environment is where the window system's plugin looks for the token, which it takes out again.
QWidget& RootView::bringToFront(const QString& activationToken)
{
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    QWidget* asking = QApplication::activeModalWidget();
    QWidget& front = asking && asking->isVisible() ? *asking : *this;
    front.raise();
    front.activateWindow();
    return front;
}

void RootView::showEvent(QShowEvent* event)
{
    m_isClosed = false;
    QMainWindow::showEvent(event);
}

void RootView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::WindowStateChange && !isMinimized())
        m_isClosed = false;
    QMainWindow::changeEvent(event);
}

// With changes or a job that would be lost the program stays running without a question, and starting it again brings the window
// back. Where nothing could bring it back, it steps aside into the task bar instead.
void RootView::closeEvent(QCloseEvent* event)
{
    if (mayEnd()) {
        event->accept();
        QCoreApplication::exit();
        return;
    }
    event->ignore();
    m_canComeBack ? hide() : showMinimized();
    m_isClosed = true;
}

bool RootView::mayEnd() const
{
    return m_model.quitsWithLastWindow() && !m_model.busy.value();
}

void RootView::followClosed()
{
    if (!m_isClosed)
        return;
    if (m_model.errorMessage.value())
        bringToFront({});
    else if (mayEnd())
        QCoreApplication::exit();
}

} // namespace folvane
