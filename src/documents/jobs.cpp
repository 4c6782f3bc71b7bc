#include "documents/AppModel.h"
#include "engine/EngineError.h"
#include "platform/files/writeFile.h"
#include "platform/tasks/Cancelled.h"
#include "platform/tasks/spawn.h"

// The one job that runs behind the busy overlay.

namespace folvane {

namespace {

/// What the user is told; nothing of a cancelled job.
std::optional<QString> sentenceOf(std::exception_ptr error)
{
    try {
        std::rethrow_exception(error);
    } catch (const Cancelled&) {
        return std::nullopt;
    } catch (const EngineError& known) {
        return known.text();
    } catch (const WriteError& known) {
        return known.text();
    } catch (...) {
        return AppModel::tr("This couldn't be finished. Try again.");
    }
}

} // namespace

void AppModel::run(QString title, Job work)
{
    if (busy.value())
        return;
    const std::stop_source task;
    busy = BusyState{title, task}; // first: the job may end before it suspends
    spawn(finish(work, task.get_token()));
}

QCoro::Task<> AppModel::finish(Job work, std::stop_token stop)
{
    const std::stop_token ended = m_end.get_token();
    std::optional<QString> failure;
    try {
        co_await work(stop);
    } catch (...) {
        failure = sentenceOf(std::current_exception());
    }
    if (ended.stop_requested())
        co_return;
    if (failure)
        errorMessage = failure;
    busy = std::nullopt;
}

} // namespace folvane
