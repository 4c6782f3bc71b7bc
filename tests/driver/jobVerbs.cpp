#include "verbs.h"

#include <QCoroFuture>

namespace folvane::driver {

namespace {

QCoro::Task<> waitForJob(CallPtr call)
{
    const auto found = call->program.jobs.find(call->request.get<int>("job"));
    if (found == call->program.jobs.end())
        throw BadRequest(QStringLiteral("there is no such job"));
    const CallPtr job = found->second;
    if (call->request.get<QString>("do") == QLatin1String("cancel"))
        job->task.request_stop();
    const QFuture<void> end = job->ended();
    co_await end;
    call->stopTime();
    call->answer = job->answer;
    call->program.jobs.erase(call->request.get<int>("job"));
}

} // namespace

Verbs jobVerbs()
{
    return {{"wait", waitForJob}, {"cancel", waitForJob}};
}

} // namespace folvane::driver
