#include "settled.h"

namespace folvane::driver {

namespace {

/// Ends at the first change of the property after which `settled` holds.
template <typename Property, typename Predicate>
class Change {
public:
    Change(Property& property, Predicate settled)
        : m_settled(std::move(settled)), m_notifier(property.addNotifier([this] { look(); }))
    {
        m_end.start();
    }
    Q_DISABLE_COPY_MOVE(Change)

    QFuture<void> end() { return m_end.future(); }

private:
    void look()
    {
        if (!m_end.future().isFinished() && m_settled())
            m_end.finish();
    }

    Predicate m_settled;
    QPromise<void> m_end;
    QPropertyNotifier m_notifier; // last, so that it is the first to go
};

std::optional<std::stop_source> runningTask(const AppModel& model)
{
    const auto busy = model.busy.value();
    return busy ? std::optional(busy->task) : std::nullopt;
}

// The notices are taken at the moment the job ends, before another request can meet them.
QCoro::Task<> jobEnded(CallPtr call)
{
    const auto hasEnded = [call] {
        if (call->model().busy.value())
            return false;
        call->stopTime();
        call->takeNotices();
        return true;
    };
    Change change(call->model().busy, hasEnded);
    const QFuture<void> end = change.end();
    co_await end;
}

Outcome withoutJob(const Call& call, bool wasBusy)
{
    if (call.answer.error)
        return Outcome::Refused;
    if (call.program().panels.saveWasCancelled())
        return Outcome::Cancelled;
    return wasBusy ? Outcome::Dropped : Outcome::Done;
}

// A job that was stopped shows neither an error nor a toast.
Outcome afterJob(const Answer& answer)
{
    if (answer.error)
        return Outcome::Failed;
    return answer.toast ? Outcome::Done : Outcome::Cancelled;
}

bool showsTurn(const OpenFile& file, const QUuid& id, int turn)
{
    for (const PageItem& page : file.pages.value())
        if (page.id == id)
            return page.turn == turn;
    return false;
}

} // namespace

QCoro::Task<> carryOutJob(CallPtr call, std::function<QCoro::Task<>()> operation)
{
    const auto before = runningTask(call->model());
    call->startTime();
    QCoro::Task<> running = operation();
    co_await running;
    const auto now = runningTask(call->model());
    if (!now || now == before) {
        call->stopTime();
        call->takeNotices();
        call->answer.outcome = withoutJob(*call, before.has_value());
        co_return;
    }
    call->task = *now;
    QCoro::Task<> end = jobEnded(call);
    co_await end;
    call->answer.outcome = afterJob(call->answer);
}

QCoro::Task<> pageTurned(OpenFilePtr file, QUuid page, int before)
{
    if (!showsTurn(*file, page, before))
        co_return;
    Change change(file->pages, [file, page, before] { return !showsTurn(*file, page, before); });
    const QFuture<void> end = change.end();
    co_await end;
}

QCoro::Task<> engineCaughtUp(PDFEngine* engine)
{
    const PageSource nowhere;
    QCoro::Task<QSizeF> behind = engine->displaySize(nowhere, 0); // the worker does requests in order
    co_await behind;
}

} // namespace folvane::driver
