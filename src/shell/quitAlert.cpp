#include "shell/quitAlert.h"

#include "documents/AppModel.h"
#include "shell/Alerts.h"
#include "shell/lossQuestion.h"

namespace folvane {

Alert* quitAlert(const QuitQuestion& question, QWidget* window, std::function<void()> quit)
{
    return lossQuestion(question.title, question.text, Alerts::tr("Quit Anyway"), window, std::move(quit));
}

} // namespace folvane
