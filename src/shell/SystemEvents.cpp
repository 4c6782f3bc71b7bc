#include "shell/SystemEvents.h"

#include "controls/sheets/Alert.h"
#include "documents/AppModel.h"
#include "platform/desktop/x11Activation.h"
#include "platform/tasks/spawn.h"
#include "shell/RootView.h"
#include "shell/quitAlert.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>

#include <memory>
#include <utility>

namespace folvane {

SystemEvents::SystemEvents()
{
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &SystemEvents::commitData,
            Qt::DirectConnection);
    connect(qGuiApp, &QGuiApplication::saveStateRequest, this,
            [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); });
    qGuiApp->installEventFilter(this);
}

void SystemEvents::attach(AppModel& model, RootView& window)
{
    m_model = &model;
    m_window = &window;
    open(std::exchange(m_pending, {}));
}

void SystemEvents::open(const QList<QUrl>& files)
{
    if (m_model)
        spawn(m_model->open(files));
    else
        m_pending += files;
}

void SystemEvents::openInFront(const QList<QUrl>& files, const QString& activationToken)
{
    open(files);
    if (!m_window)
        return;
    const QWidget& front = m_window->bringToFront(activationToken);
    activateOnX11(front.winId(), activationToken);
}

bool SystemEvents::allowsLogOut(bool mayAsk)
{
    const std::optional<QuitQuestion> question = m_model ? m_model->quitQuestion() : std::nullopt;
    return !question || (mayAsk && isGivenUp(*question));
}

// The session goes on as soon as the handler of its request returns, so the answer has to be waited for inside it.
bool SystemEvents::isGivenUp(const QuitQuestion& question)
{
    m_window->bringToFront({});
    const std::unique_ptr<Alert> alert(quitAlert(question, m_window));
    return alert->exec() != QDialog::Rejected;
}

// Documents are never stored at the end, so there is nothing to start again with.
void SystemEvents::commitData(QSessionManager& session)
{
    session.setRestartHint(QSessionManager::RestartNever);
    const bool edited = m_model && m_model->quitQuestion();
    const bool mayAsk = edited && session.allowsInteraction();
    if (!allowsLogOut(mayAsk))
        session.cancel();
    else if (mayAsk)
        session.release();
}

// Quitting comes as this event, and so does the end of the session. Qt would close the window first, which stays while
// there are changes; but whoever quits has asked about them already.
bool SystemEvents::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != qGuiApp || event->type() != QEvent::Quit)
        return false;
    QCoreApplication::exit();
    return true;
}

} // namespace folvane
