#include "documents/AppModel.h"
#include "documents/fileNames.h"
#include "platform/tasks/spawn.h"

// Questions about locked files: one is up at a time, the others wait in order of arrival.

namespace folvane {

QCoro::Task<std::optional<QString>> AppModel::askPassword(QUrl url, bool wasWrong)
{
    PasswordQuestion question;
    question.request.fileName = lastPathComponent(url);
    question.request.wasWrong = wasWrong;
    question.url = url;
    m_questions.push_back(question);
    if (m_questions.size() == 1)
        passwordRequest = question.request;
    const std::optional<QString> password = co_await question.answer;
    co_return password;
}

void AppModel::answerPassword(std::optional<QString> password)
{
    if (!passwordRequest.value())
        return;
    passwordRequest = std::nullopt;
    answerFirstQuestion(password);
}

// The next question comes up from the event loop: a prompt that reports its end twice must not answer that
// one, too.
void AppModel::answerFirstQuestion(std::optional<QString> password)
{
    Answer<std::optional<QString>> answer = m_questions.front().answer;
    m_questions.pop_front();
    QMetaObject::invokeMethod(this, [this] { spawn(showNextQuestion()); }, Qt::QueuedConnection);
    answer.give(password);
}

// The answer before may have unlocked this file, too; the engine knows once it has dealt with that answer.
QCoro::Task<> AppModel::showNextQuestion()
{
    if (m_questions.empty() || passwordRequest.value())
        co_return;
    const std::stop_token ended = m_end.get_token();
    const PasswordQuestion next = m_questions.front();
    const OpenResult result = co_await m_sources->open(next.url);
    if (ended.stop_requested() || passwordRequest.value() || m_questions.empty()
        || m_questions.front().request.id != next.request.id)
        co_return;
    if (result.kind == OpenResult::Kind::NeedsPassword)
        passwordRequest = next.request;
    else
        answerFirstQuestion(QString()); // what is unlocked opens with any password
}

} // namespace folvane
