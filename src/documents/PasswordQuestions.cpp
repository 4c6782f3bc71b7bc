#include "documents/PasswordQuestions.h"

#include "documents/Sources.h"
#include "documents/fileNames.h"
#include "platform/tasks/spawn.h"

#include <utility>

namespace folvane {

PasswordQuestions::PasswordQuestions(QProperty<std::optional<PasswordRequest>>& shown, Sources& sources)
    : m_shown(shown), m_sources(sources)
{
}

PasswordQuestions::~PasswordQuestions()
{
    m_end.request_stop();
    for (Question& question : std::exchange(m_questions, {}))
        question.answer.give(std::nullopt);
}

QCoro::Task<OpenResult> PasswordQuestions::open(QUrl url)
{
    const std::stop_token ended = m_end.get_token();
    std::optional<QString> password;
    OpenResult result = co_await m_sources.open(url);
    while (!ended.stop_requested() && result.kind == OpenResult::Kind::NeedsPassword) {
        password = co_await ask(url, password.has_value());
        if (!password)
            break;
        result = co_await m_sources.open(url, password);
    }
    co_return result;
}

QCoro::Task<std::optional<QString>> PasswordQuestions::ask(QUrl url, bool wasWrong)
{
    const Question question{{.fileName = lastPathComponent(url), .wasWrong = wasWrong}, url, {}};
    m_questions.push_back(question);
    if (m_questions.size() == 1)
        m_shown = question.request;
    const std::optional<QString> password = co_await question.answer;
    co_return password;
}

void PasswordQuestions::answer(std::optional<QString> password)
{
    if (!m_shown.value())
        return;
    m_shown = std::nullopt;
    answerFirst(password);
}

// The next question comes up from the event loop: a prompt that reports its end twice must not answer that
// one, too.
void PasswordQuestions::answerFirst(std::optional<QString> password)
{
    Answer<std::optional<QString>> answer = m_questions.front().answer;
    m_questions.pop_front();
    QMetaObject::invokeMethod(this, [this] { spawn(showNext()); }, Qt::QueuedConnection);
    answer.give(password);
}

// The answer before may have unlocked this file, too; the engine knows once it has dealt with that answer.
QCoro::Task<> PasswordQuestions::showNext()
{
    if (m_questions.empty() || m_shown.value())
        co_return;
    const std::stop_token ended = m_end.get_token();
    const Question next = m_questions.front();
    const OpenResult result = co_await m_sources.open(next.url);
    if (ended.stop_requested() || m_shown.value() || m_questions.empty()
        || m_questions.front().request.id != next.request.id)
        co_return;
    if (result.kind == OpenResult::Kind::NeedsPassword)
        m_shown = next.request;
    else
        answerFirst(QString()); // what is unlocked opens with any password
}

} // namespace folvane
