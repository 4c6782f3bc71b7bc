#include "shell/Alerts.h"

#include "controls/sheets/Alert.h"
#include "platform/tasks/spawn.h"
#include "shell/PasswordPrompt.h"
#include "shell/discard.h"
#include "shell/quitAlert.h"

namespace folvane {

Alerts::Alerts(AppModel& model, QWidget* window) : QObject(window), m_model(model), m_window(window)
{
    m_watches.keep([this] { showError(); }, m_model.errorMessage);
    m_watches.keep([this] { showClosing(); }, m_model.closingFile);
    m_watches.keep([this] { showPassword(); }, m_model.passwordRequest);
}

Alerts::~Alerts() = default;

void Alerts::showError()
{
    const std::optional<QString> message = m_model.errorMessage.value();
    if (!message) {
        discard(m_error.data(), this);
        m_error = nullptr;
        return;
    }
    if (m_error) {
        m_error->setText(*message);
        return;
    }
    m_error = new Alert(tr("Something went wrong"), *message, m_window);
    m_error->addButton(tr("OK"), Alert::Role::Default);
    connect(m_error, &QDialog::finished, this, [this] { m_model.errorMessage = std::nullopt; });
    m_error->open();
}

void Alerts::showClosing()
{
    discard(m_closing.data(), this);
    m_closing = nullptr;
    const OpenFilePtr file = m_model.closingFile.value();
    if (!file)
        return;
    m_closing = new Alert(
        tr("Save changes to “%1”?").arg(file->name),
        tr("Your changes will be lost if you close it without saving. The original file stays as it "
           "was."),
        m_window);
    m_closing->addButton(tr("Save As…"), Alert::Role::Default, [this, file] { spawn(m_model.saveAs(file)); });
    m_closing->addButton(tr("Don't Save"), Alert::Role::Destructive, [this, file] { m_model.close(file); });
    m_closing->addButton(tr("Cancel"), Alert::Role::Cancel);
    connect(m_closing, &QDialog::finished, this, [this] { m_model.closingFile = nullptr; });
    m_closing->open();
}

void Alerts::showPassword()
{
    discard(m_password.data(), this);
    m_password = nullptr;
    const std::optional<PasswordRequest> request = m_model.passwordRequest.value();
    if (!request)
        return;
    m_password = new PasswordPrompt(*request, m_window);
    connect(m_password, &PasswordPrompt::answered, this,
            [this](const std::optional<QString>& password) { m_model.answerPassword(password); });
    m_password->open();
}

void Alerts::askToQuit(const QuitQuestion& question, std::function<void()> quit)
{
    if (m_quit)
        return;
    m_quit = quitAlert(question, m_window, std::move(quit));
    m_quit->setAttribute(Qt::WA_DeleteOnClose);
    m_quit->open();
}

} // namespace folvane
