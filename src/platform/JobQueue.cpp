#include "platform/JobQueue.h"

#include <QAbstractEventDispatcher>
#include <QThread>

#include <mutex>

namespace folvane {

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

    void cancel()
    {
        if (!m_claimed.exchange(true))
            finish();
    }

    /// False when there is nothing to wait for any more.
    bool resumeAtEnd(std::coroutine_handle<> waiting)
    {
        const std::scoped_lock lock(m_mutex);
        if (!m_ended)
            m_waiting = waiting;
        return !m_ended;
    }

private:
    // One posted call and nothing else: a future and its watcher cost a third of what drawing a small page does.
    void finish()
    {
        m_body = nullptr; // what the job captured is gone before anyone hears of its end
        const std::scoped_lock lock(m_mutex);
        m_ended = true;
        if (!m_waiting)
            return;
        if (QObject* loop = QAbstractEventDispatcher::instance(m_home))
            QMetaObject::invokeMethod(
                loop, [waiting = m_waiting] { waiting.resume(); }, Qt::QueuedConnection);
    }

    std::atomic<bool> m_claimed = false;
    std::function<void()> m_body;
    std::shared_ptr<const std::atomic<bool>> m_closing;
    QThread* m_home; ///< the one that asked and is told
    std::mutex m_mutex;
    std::coroutine_handle<> m_waiting;
    bool m_ended = false;
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

void JobQueue::cancel(Request& request)
{
    request.cancel();
}

bool JobQueue::resumeAtEnd(Request& request, std::coroutine_handle<> waiting)
{
    return request.resumeAtEnd(waiting);
}

} // namespace folvane
