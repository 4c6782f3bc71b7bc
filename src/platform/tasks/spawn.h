#pragma once

#include <QCoro/QCoroTask>

#include <exception>
#include <functional>

namespace folvane {

/// Starts a task that nobody awaits. Cancelled is dropped; any other exception goes to the reporter.
void spawn(QCoro::Task<> task);

using SpawnReporter = std::function<void(std::exception_ptr)>;

/// Sets who hears of what spawned tasks throw, and returns who did until now. An empty reporter is the
/// default: a warning in the log. For the interface thread, on which tasks are spawned.
SpawnReporter setSpawnReporter(SpawnReporter reporter);

} // namespace folvane
