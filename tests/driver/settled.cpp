#include "settled.h"

#include <QCoroFuture>

namespace folvane::driver {

namespace {

/// Follows the one job that an operation starts, which may have ended before the operation returns.
/// The notices are taken at the moment of its end, before another request can meet them.
class JobWatch {
public:
    explicit JobWatch(CallPtr call)
        : m_call(std::move(call)),
          m_before(m_call->model().busy.value()),
          m_notifier(m_call->model().busy.addNotifier([this] { look(); }))
    {
        m_end.start();
    }
    Q_DISABLE_COPY_MOVE(JobWatch)

    bool hasBegun() const { return m_begun; }
    bool wasBusy() const { return m_before.has_value(); }
    QFuture<void> end() const { return m_end.future(); }

private:
    void look()
    {
        const auto now = m_call->model().busy.value();
        if (now && now != m_before && !m_begun)
            begin(*now);
        else if (!now && m_begun && !m_end.future().isFinished())
            finish();
    }
    void begin(const BusyState& job)
    {
        m_begun = true;
        m_call->task = job.task;
        m_written = QObject::connect(&m_call->model(), &AppModel::fileWritten,
                                     [call = m_call](const QUrl& file) { call->noteWritten(file); });
    }
    void finish()
    {
        m_call->stopTime();
        QObject::disconnect(m_written);
        m_call->takeNotices();
        m_end.finish();
    }

    CallPtr m_call;
    std::optional<BusyState> m_before;
    bool m_begun = false;
    mutable QPromise<void> m_end;
    QMetaObject::Connection m_written;
    QPropertyNotifier m_notifier; // last, so that it is the first to go
};

Outcome withoutJob(const Call& call, bool wasBusy)
{
    if (call.answer.error)
        return Outcome::Refused;
    if (call.program().panels.wasCancelled())
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
    const JobWatch job(call);
    call->startTime();
    QCoro::Task<> running = operation();
    co_await running;
    if (!job.hasBegun()) {
        call->stopTime();
        call->takeNotices();
        call->answer.outcome = withoutJob(*call, job.wasBusy());
        co_return;
    }
    const QFuture<void> end = job.end();
    co_await end;
    call->answer.outcome = afterJob(call->answer);
}

QCoro::Task<> pageTurned(OpenFilePtr file, QUuid page, int before)
{
    if (!showsTurn(*file, page, before))
        co_return;
    QPromise<void> turned;
    turned.start();
    const QPropertyNotifier notifier = file->pages.addNotifier([&] {
        if (!showsTurn(*file, page, before))
            turned.finish(); // a second time does nothing
    });
    const QFuture<void> end = turned.future();
    co_await end;
}

QCoro::Task<> engineCaughtUp(PDFEngine* engine)
{
    const PageSource nowhere;
    QCoro::Task<QSizeF> behind = engine->displaySize(nowhere, 0); // the worker does requests in order
    co_await behind;
}

} // namespace folvane::driver
