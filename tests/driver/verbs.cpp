#include "verbs.h"

#include <QCoroFuture>

#include <QPromise>

namespace folvane::driver {

namespace {

/// Follows the one job that an operation starts, which may have ended before the operation returns.
/// The notices are taken at the moment of its end, before another request can meet them.
class JobWatch : public QObject {
public:
    explicit JobWatch(CallPtr call)
        : m_call(std::move(call)),
          m_before(m_call->model().busy.value()),
          m_notifier(m_call->model().busy.addNotifier([this] { look(); }))
    {
        m_end.start();
        connect(&m_call->model(), &AppModel::fileWritten, this, [this](const QUrl& file) {
            if (m_begun && !end().isFinished())
                m_call->noteWritten(file);
        });
    }

    bool hasBegun() const { return m_begun; }
    bool wasBusy() const { return m_before.has_value(); }
    QFuture<void> end() const { return m_end.future(); }

private:
    void look()
    {
        const auto now = m_call->model().busy.value();
        if (now && now != m_before && !m_begun) {
            m_begun = true;
            m_call->task = now->task;
        } else if (!now && m_begun && !end().isFinished()) {
            m_call->stopTime();
            m_call->takeNotices();
            m_end.finish();
        }
    }

    CallPtr m_call;
    std::optional<BusyState> m_before;
    bool m_begun = false;
    QPromise<void> m_end;
    QPropertyNotifier m_notifier; // last, so that it is the first to go
};

Outcome withoutJob(const Call& call, bool wasBusy)
{
    if (!call.reply.error.isNull())
        return Outcome::Refused;
    const ScriptedPanels& panels = call.program.panels;
    if (panels.saveAnswers.isEmpty() || panels.folderAnswers.isEmpty()) // the last answer was Cancel
        return Outcome::Cancelled;
    return wasBusy ? Outcome::Dropped : Outcome::Done;
}

// A job that was stopped shows neither an error nor a toast.
Outcome afterJob(const Reply& reply)
{
    if (!reply.error.isNull())
        return Outcome::Failed;
    return reply.toast.isNull() ? Outcome::Cancelled : Outcome::Done;
}

QCoro::Task<> carryOutJob(CallPtr call, Verb work)
{
    const JobWatch job(call);
    QCoro::Task<> running = work(call);
    co_await running;
    if (job.hasBegun()) {
        const QFuture<void> end = job.end();
        co_await end;
    } else {
        call->takeNotices();
    }
    if (!call->reply.outcome)
        call->reply.outcome = job.hasBegun() ? afterJob(call->reply) : withoutJob(*call, job.wasBusy());
}

QCoro::Task<> waitForJob(CallPtr call)
{
    const int number = call->request.get<int>("job");
    if (!call->program.jobs.contains(number))
        throw BadRequest(QStringLiteral("there is no such job"));
    const CallPtr job = call->program.jobs.at(number);
    if (call->request.get<QString>("do") == QLatin1String("cancel"))
        job->task.request_stop();
    co_await job->ended;
    call->stopTime();
    call->reply = job->reply;
    call->program.jobs.erase(number);
}

QCoro::Task<> carryOutAtOnce(CallPtr call, void (*work)(Call&))
{
    work(*call);
    co_return;
}

Verbs allVerbs()
{
    Verbs all{{"wait", waitForJob}, {"cancel", waitForJob}};
    for (const auto part :
         {documentVerbs, savingVerbs, compressVerbs, mergeVerbs, stampVerbs, codeVerbs, tellingVerbs})
        all.merge(part());
    return all;
}

} // namespace

Verb job(const Verb& work)
{
    return [work](const CallPtr& call) { return carryOutJob(call, work); };
}

Verb atOnce(void (*work)(Call&))
{
    return [work](const CallPtr& call) { return carryOutAtOnce(call, work); };
}

Verb verbNamed(const QString& name)
{
    static const Verbs verbs = allVerbs();
    const auto found = verbs.find(name);
    return found == verbs.end() ? Verb() : found->second;
}

} // namespace folvane::driver
