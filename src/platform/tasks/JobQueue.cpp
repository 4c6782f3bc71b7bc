#include "platform/tasks/JobQueue.h"

#include <QAbstractEventDispatcher>
#include <QThread>

#include <mutex>
#include <unordered_set>

namespace folvane {

namespace {

/// Who waits for a job. A coroutine whose thread has no event loop any more waits until the process ends, since what it
/// would go on with has gone; this keeps it from looking lost meanwhile.
class WaitingCoroutines {
public:
    static void add(std::coroutine_handle<> one)
    {
        const std::scoped_lock lock(s_mutex);
        all().insert(one.address());
    }
    static void resume(std::coroutine_handle<> one)
    {
        {
            const std::scoped_lock lock(s_mutex);
            all().erase(one.address());
        }
        one.resume();
    }

private:
    static std::unordered_set<void*>& all()
    {
        static auto& handles = *new std::unordered_set<void*>; // never destroyed: see above
        return handles;
    }

    static inline std::mutex s_mutex;
};

} // namespace

/// A job on its way: whoever claims it first, the thread or a stop, brings it to its end.
class JobQueue::Request {
public:
    Request(std::function<void()> body, std::shared_ptr<const std::atomic<bool>> closing)
        : m_body(std::move(body)), m_closing(std::move(closing)), m_home(QThread::currentThread())
    {
    }

    void begin()
    {
        if (m_claimed.exchange(true))
            return;
        if (!*m_closing)
            m_body();
        finish();
    }

    void cancel(WhenStopped then)
    {
        if (!m_claimed.exchange(true))
            finish();
        else if (then == WhenStopped::Leave)
            leave();
    }

    bool wasLeft() const { return m_wasLeft; }

    /// By the event loop, also when the end has come already: nobody goes on in the middle of asking.
    void resumeAtEnd(std::coroutine_handle<> waiting)
    {
        WaitingCoroutines::add(waiting);
        const std::scoped_lock lock(m_mutex);
        m_waiting = waiting;
        if (m_ended)
            post();
    }

private:
    void finish()
    {
        m_body = nullptr; // what the job captured is gone before anyone hears of its end
        const std::scoped_lock lock(m_mutex);
        end();
    }

    void leave()
    {
        const std::scoped_lock lock(m_mutex);
        m_wasLeft = !m_ended;
        end();
    }

    void end()
    {
        if (!std::exchange(m_ended, true) && m_waiting)
            post();
    }

    // One posted call and nothing else: a future and its watcher cost a third of what drawing a small page does.
    void post()
    {
        if (QObject* loop = QAbstractEventDispatcher::instance(m_home))
            QMetaObject::invokeMethod(
                loop, [waiting = m_waiting] { WaitingCoroutines::resume(waiting); }, Qt::QueuedConnection);
    }

    std::atomic<bool> m_claimed = false;
    std::function<void()> m_body;
    std::shared_ptr<const std::atomic<bool>> m_closing;
    QThread* m_home; ///< the one that asked and is told
    std::mutex m_mutex;
    std::coroutine_handle<> m_waiting;
    bool m_ended = false;
    bool m_wasLeft = false; // the job may still run: nobody looks at what it leaves behind
};

JobQueue::JobQueue(const QString& threadName, int threads, uint stackBytes)
{
    m_pool.setObjectName(threadName);
    m_pool.setMaxThreadCount(threads);
    m_pool.setStackSize(stackBytes);
    m_pool.setExpiryTimeout(-1);
}

JobQueue::~JobQueue()
{
    *m_closing = true;
    m_pool.waitForDone();
}

std::shared_ptr<JobQueue::Request> JobQueue::enqueue(std::function<void()> body)
{
    auto request = std::make_shared<Request>(std::move(body), m_closing);
    m_pool.start([request, name = m_pool.objectName()] {
        if (QThread* thread = QThread::currentThread(); thread->objectName() != name)
            thread->setObjectName(name);
        request->begin();
    });
    return request;
}

void JobQueue::cancel(Request& request, WhenStopped then)
{
    request.cancel(then);
}

bool JobQueue::wasLeft(const Request& request)
{
    return request.wasLeft();
}

void JobQueue::resumeAtEnd(Request& request, std::coroutine_handle<> waiting)
{
    request.resumeAtEnd(waiting);
}

} // namespace folvane
