#pragma once

#include "platform/tasks/JobQueue.h"

namespace folvane {

/// The queue that every short background job shares. It has a thread for each core, and two at least.
JobQueue& backgroundQueue();

/// Runs short blocking work, such as writing a file, off the interface thread; see JobQueue::run.
/// Jobs may run side by side; writeFile() sees to it that only one file is written at a time.
template <std::invocable F>
QCoro::Task<std::invoke_result_t<F>> inBackground(F job, std::stop_token stop = {})
{
    return backgroundQueue().run(std::move(job), std::move(stop));
}

} // namespace folvane
