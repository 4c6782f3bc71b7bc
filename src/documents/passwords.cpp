#include "documents/AppModel.h"

// Questions about locked files: one is up at a time, the others wait in order of arrival.

namespace folvane {

QCoro::Task<std::optional<QString>> AppModel::askPassword(QString name, bool wasWrong)
{
    PasswordQuestion question;
    question.request.fileName = name;
    question.request.wasWrong = wasWrong;
    m_questions.push_back(question);
    if (m_questions.size() == 1)
        showNextQuestion();
    const std::optional<QString> password = co_await question.answer;
    co_return password;
}

// The next question comes up from the event loop: a prompt that reports its end twice must not answer that
// one, too.
void AppModel::answerPassword(std::optional<QString> password)
{
    if (!passwordRequest.value())
        return;
    passwordRequest = std::nullopt;
    Answer<std::optional<QString>> answer = m_questions.front().answer;
    m_questions.pop_front();
    QMetaObject::invokeMethod(this, &AppModel::showNextQuestion, Qt::QueuedConnection);
    answer.give(password);
}

void AppModel::showNextQuestion()
{
    if (!m_questions.empty() && !passwordRequest.value())
        passwordRequest = m_questions.front().request;
}

} // namespace folvane
