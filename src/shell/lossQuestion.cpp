#include "shell/lossQuestion.h"

#include "controls/sheets/Alert.h"

#include <QCoreApplication>

#include <utility>

namespace folvane {

Alert* lossQuestion(const QString& title, const QString& text, const QString& button, QWidget* window,
                    std::function<void()> goOn)
{
    auto* question = new Alert(title, text, window);
    question->addButton(QCoreApplication::translate("folvane::lossQuestion", "Cancel"), Alert::Role::Cancel);
    question->addButton(button, Alert::Role::Destructive, std::move(goOn));
    return question;
}

} // namespace folvane
