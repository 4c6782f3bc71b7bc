#include "verbs.h"

#include <QFile>

#include <QCoroFuture>

namespace folvane::driver {

namespace {

CallPtr job(const Call& call)
{
    const int number = call.request.integer("job");
    const auto found = call.program().jobs.find(number);
    if (found == call.program().jobs.end())
        throw BadRequest(QStringLiteral("there is no job %1").arg(number));
    return found->second;
}

QCoro::Task<> answerAs(CallPtr call, CallPtr job)
{
    const QFuture<void> end = job->ended();
    co_await end;
    call->answer = job->answer;
    call->program().jobs.erase(call->request.integer("job"));
}

/// "VmHWM:     1234 kB" in the process's own report.
qint64 peakBytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        throw BadRequest(QStringLiteral("the system does not tell the peak"));
    for (QByteArray line = status.readLine(); !line.isEmpty(); line = status.readLine())
        if (line.startsWith("VmHWM:"))
            return line.simplified().split(' ').at(1).toLongLong() * 1024;
    throw BadRequest(QStringLiteral("the system does not tell the peak"));
}

} // namespace

QCoro::Task<> waitForJob(CallPtr call)
{
    QCoro::Task<> waiting = answerAs(call, job(*call));
    co_await waiting;
}

QCoro::Task<> cancelJob(CallPtr call)
{
    const CallPtr cancelled = job(*call);
    cancelled->task.request_stop();
    QCoro::Task<> waiting = answerAs(call, cancelled);
    co_await waiting;
}

QCoro::Task<> tellMemory(CallPtr call)
{
    call->answer.fields[QStringLiteral("peak")] = peakBytes();
    co_return;
}

} // namespace folvane::driver
