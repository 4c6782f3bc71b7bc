#pragma once

#include "platform/tasks/Cancelled.h"

#include <QThreadPool>

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>

namespace folvane {

/// The threads that do the pixel work of all builds, one for each core.
QThreadPool& pixelThreads();

/// Does jobs on all cores and hands their results back in the order of the jobs. For one thread, which may go away
/// while jobs still run: what they use must belong to them.
template <typename Result> class FanOut {
public:
    explicit FanOut(std::stop_token stop) : m_stop(std::move(stop)) {}

    void add(std::function<Result()> job)
    {
        const auto place = std::make_shared<Place>();
        m_places.push_back(place);
        pixelThreads().start([place, job = std::move(job), stop = m_stop] {
            if (!stop.stop_requested())
                place->fill(job);
        });
    }

    size_t waiting() const { return m_places.size(); }
    /// No more jobs than these keep every core busy.
    static size_t enough() { return 3 * static_cast<size_t>(pixelThreads().maxThreadCount()); }

    /// Waits for the oldest job. Throws what it threw, and Cancelled as soon as a stop is asked for.
    Result takeNext()
    {
        const std::shared_ptr<Place> place = m_places.front();
        m_places.pop_front();
        return place->take(m_stop);
    }

private:
    class Place {
    public:
        void fill(const std::function<Result()>& job)
        {
            std::optional<Result> result;
            std::exception_ptr error;
            try {
                result.emplace(job());
            } catch (...) {
                error = std::current_exception();
            }
            const std::lock_guard lock(m_mutex);
            m_result = std::move(result);
            m_error = error;
            m_filled.notify_all();
        }

        Result take(const std::stop_token& stop)
        {
            std::unique_lock lock(m_mutex);
            m_filled.wait(lock, stop, [this] { return m_result || m_error; });
            throwIfStopped(stop);
            if (m_error)
                std::rethrow_exception(m_error);
            return std::move(*m_result);
        }

    private:
        std::mutex m_mutex;
        std::condition_variable_any m_filled;
        std::optional<Result> m_result;
        std::exception_ptr m_error;
    };

    std::stop_token m_stop;
    std::deque<std::shared_ptr<Place>> m_places;
};

} // namespace folvane
