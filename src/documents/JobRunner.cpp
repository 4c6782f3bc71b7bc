#include "documents/JobRunner.h"

#include "platform/tasks/spawn.h"

#include <QCoreApplication>

namespace folvane {

JobRunner::~JobRunner()
{
    m_end.request_stop();
    if (m_shown.busy.value())
        m_shown.busy.value()->task.request_stop();
}

void JobRunner::run(QString title, Job work)
{
    if (m_shown.busy.value())
        return;
    const std::stop_source task;
    m_shown.busy = BusyState{title, task}; // first: the job may end before it suspends
    spawn(finish(work, task.get_token()));
}

QCoro::Task<> JobRunner::finish(Job work, std::stop_token stop)
{
    const std::stop_token ended = m_end.get_token();
    const QString otherwise =
        QCoreApplication::translate("folvane::JobRunner", "This couldn't be finished. Try again.");
    const std::optional<QString> failure = co_await failureOf(work, stop, otherwise);
    if (ended.stop_requested())
        co_return;
    if (failure)
        m_shown.errorMessage = failure;
    m_shown.busy = std::nullopt;
}

} // namespace folvane
