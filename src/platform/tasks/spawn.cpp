#include "platform/tasks/spawn.h"

#include "platform/tasks/Cancelled.h"

#include <QDebug>

#include <utility>

namespace folvane {

namespace {

void warn(std::exception_ptr error)
{
    try {
        std::rethrow_exception(error);
    } catch (const std::exception& known) {
        qWarning("A task failed: %s", known.what());
    } catch (...) {
        qWarning("A task failed with an unknown error.");
    }
}

SpawnReporter& currentReporter()
{
    static SpawnReporter reporter;
    return reporter;
}

void report(std::exception_ptr error)
{
    const SpawnReporter& reporter = currentReporter();
    reporter ? reporter(error) : warn(error);
}

QCoro::Task<> watch(QCoro::Task<> task)
{
    try {
        co_await task;
    } catch (const Cancelled&) {
    } catch (...) {
        report(std::current_exception());
    }
}

} // namespace

void spawn(QCoro::Task<> task)
{
    watch(std::move(task));
}

SpawnReporter setSpawnReporter(SpawnReporter reporter)
{
    return std::exchange(currentReporter(), std::move(reporter));
}

} // namespace folvane
