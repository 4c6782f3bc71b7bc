#pragma once

#include "platform/tasks/JobQueue.h"

namespace folvane {

/// One thread that does requests one at a time, in order of arrival. What a worker owns needs no lock as long
/// as only its requests touch it. The thread lives as long as the worker, on a stack of 256 MB: deeply nested
/// documents recurse.
class SerialWorker {
public:
    explicit SerialWorker(const QString& threadName) : m_queue(threadName, 1, 256u << 20) {}

    /// See JobQueue::run.
    template <std::invocable F>
    QCoro::Task<std::invoke_result_t<F>> run(F job, std::stop_token stop = {},
                                             JobQueue::WhenStopped then = JobQueue::WhenStopped::Wait)
    {
        return m_queue.run(std::move(job), std::move(stop), then);
    }

private:
    JobQueue m_queue;
};

} // namespace folvane
