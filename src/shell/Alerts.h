#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QObject>
#include <QPointer>

#include <functional>

class QWidget;

namespace folvane {

class Alert;
class PasswordPrompt;

/// Shows the model's questions and messages over the window: the error, the save question, the password prompt.
/// Each comes and goes with its field, and dismissing one answers its field.
class Alerts : public QObject {
    Q_OBJECT

public:
    Alerts(AppModel& model, QWidget* window);
    ~Alerts() override;

    /// Asks before quitting; `quit` runs when the user quits anyway. Nothing while it is asked already.
    void askToQuit(const QuitQuestion& question, std::function<void()> quit);

private:
    void showError();
    void showClosing();
    void showPassword();

    AppModel& m_model;
    QWidget* m_window;
    QPointer<Alert> m_error;
    QPointer<Alert> m_closing;
    QPointer<Alert> m_quit;
    QPointer<PasswordPrompt> m_password;
    Watches m_watches;
};

} // namespace folvane
