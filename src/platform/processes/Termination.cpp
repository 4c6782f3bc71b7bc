#include "platform/processes/Termination.h"

#include <algorithm>
#include <csignal>
#include <thread>

namespace folvane {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

constexpr std::chrono::seconds patience = 5s;

bool isThere(const ProcessEntry& process)
{
    const std::optional<ProcessEntry> now = processEntry(process.id);
    return now && now->start == process.start;
}

/// The process and all beneath it, the process last.
std::vector<ProcessEntry> tree(const ProcessEntry& top)
{
    std::vector<ProcessEntry> all = descendants(top, allProcesses());
    all.push_back(top);
    return all;
}

void signalAll(const std::vector<ProcessEntry>& processes, int signal)
{
    for (const ProcessEntry& process : processes)
        signalProcess(process, signal);
}

} // namespace

Termination::Termination(pid_t tool) : m_killTime(Clock::now() + patience)
{
    if (const std::optional<ProcessEntry> top = processEntry(tool))
        m_targets = tree(*top);
    signalAll(m_targets, SIGTERM);
}

void Termination::kill() const
{
    for (const ProcessEntry& target : m_targets)
        if (isThere(target))
            signalAll(tree(target), SIGKILL);
}

void Termination::complete() const
{
    while (!isOver() && Clock::now() < m_killTime)
        std::this_thread::sleep_for(20ms);
    kill();
}

bool Termination::isOver() const
{
    return std::ranges::none_of(m_targets, isThere);
}

} // namespace folvane
