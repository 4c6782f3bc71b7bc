#pragma once

#include "platform/tasks/Cancelled.h"

#include <QCoro/QCoroTask>

#include <QThreadPool>

#include <atomic>
#include <concepts>
#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <utility>

namespace folvane {

/// Threads that do jobs for coroutines. SerialWorker and inBackground() are the two ways to use it.
///
/// Jobs start in order of arrival. Each request ends exactly once: with what the job returned, with what it
/// threw, or with Cancelled when it was stopped, or the queue destroyed, before it began.
class JobQueue {
public:
    /// Whether who asked for a running job stays until it has ended. Who leaves gets Cancelled at once, and the job goes on
    /// alone: what it uses must belong to it.
    enum class WhenStopped { Wait, Leave };

    /// stackBytes 0 leaves the system's stack size.
    JobQueue(const QString& threadName, int threads, uint stackBytes);
    /// Waits for the running jobs; those not begun end with Cancelled.
    ~JobQueue();
    Q_DISABLE_COPY_MOVE(JobQueue)

    /// Runs the job on a thread of the queue and resumes the awaiting coroutine on the thread that called
    /// run(), which needs an event loop. What the job threw is thrown again with its own type. A stop ends a
    /// request at once that has not begun; a running job looks at the token itself, unless the caller need not wait for it.
    template <std::invocable F>
    QCoro::Task<std::invoke_result_t<F>> run(F job, std::stop_token stop = {},
                                             WhenStopped then = WhenStopped::Wait);

private:
    class Request;

    std::shared_ptr<Request> enqueue(std::function<void()> body);
    static void cancel(Request& request, WhenStopped then);
    static bool wasLeft(const Request& request);
    static void resumeAtEnd(Request& request, std::coroutine_handle<> waiting);

    /// Awaits the end of a request.
    struct End {
        Request& request;

        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiting) { resumeAtEnd(request, waiting); }
        void await_resume() const noexcept {}
    };

    std::shared_ptr<std::atomic<bool>> m_closing = std::make_shared<std::atomic<bool>>(false);
    QThreadPool m_pool;
};

namespace detail {

/// What a job left behind: nothing when it never ran.
template <typename R>
struct Outcome {
    std::optional<R> value;
    std::exception_ptr error;

    template <typename F>
    void keepResultOf(F& job)
    {
        value.emplace(job());
    }
    R take()
    {
        if (error)
            std::rethrow_exception(std::exchange(error, nullptr));
        if (!value)
            throw Cancelled();
        return std::move(*value);
    }
};

template <>
struct Outcome<void> {
    bool ran = false;
    std::exception_ptr error;

    template <typename F>
    void keepResultOf(F& job)
    {
        job();
        ran = true;
    }
    void take()
    {
        if (error)
            std::rethrow_exception(std::exchange(error, nullptr));
        if (!ran)
            throw Cancelled();
    }
};

} // namespace detail

template <std::invocable F>
QCoro::Task<std::invoke_result_t<F>> JobQueue::run(F job, std::stop_token stop, WhenStopped then)
{
    throwIfStopped(stop);
    const auto outcome = std::make_shared<detail::Outcome<std::invoke_result_t<F>>>();
    const auto shared =
        std::make_shared<F>(std::move(job)); // a std::function copies, and the job may be move-only
    std::shared_ptr<Request> request = enqueue([outcome, shared] {
        try {
            outcome->keepResultOf(*shared);
        } catch (...) {
            outcome->error = std::current_exception();
        }
    });
    const std::stop_callback onStop(stop, [request, then] { cancel(*request, then); });
    co_await End{*request};
    if (wasLeft(*request))
        throw Cancelled();
    co_return outcome->take();
}

} // namespace folvane
