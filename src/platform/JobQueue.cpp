#include "platform/JobQueue.h"

#include <QPromise>
#include <QThread>

namespace folvane {

/// A job on its way: whoever claims it first, the thread or a stop, brings it to its end.
class JobQueue::Request {
public:
    Request(std::function<void()> body, std::shared_ptr<const std::atomic<bool>> closing)
        : m_body(std::move(body)), m_closing(std::move(closing))
    {
        m_end.start();
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

    QFuture<void> end() { return m_end.future(); }

private:
    void finish()
    {
        m_body = nullptr; // what the job captured is gone before anyone hears of its end
        m_end.finish();
    }

    std::atomic<bool> m_claimed = false;
    std::function<void()> m_body;
    std::shared_ptr<const std::atomic<bool>> m_closing;
    QPromise<void> m_end;
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

QFuture<void> JobQueue::ended(Request& request)
{
    return request.end();
}

} // namespace folvane
