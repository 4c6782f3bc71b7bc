#include "platform/processes/ToolRun.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace folvane {

using namespace std::chrono_literals;

namespace {

/// How long a tool that was killed may take to go. One that hangs in the system, on a disk that does not answer, is then left
/// to it.
constexpr std::chrono::seconds lastPatience = 5s;

/// How long streams are heard after the tool's end: what it left in the background may hold them open.
constexpr std::chrono::seconds drainTime = 2s;

int millisecondsUntil(std::chrono::steady_clock::time_point time)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - std::chrono::steady_clock::now());
    return int(std::clamp<std::chrono::milliseconds>(left, 0ms, 1h).count());
}

} // namespace

ToolRun::Pipe::Pipe()
{
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw ProcessRunner::Failure(qt_error_string(errno));
    readEnd = OwnedDescriptor(ends[0]);
    writeEnd = OwnedDescriptor(ends[1]);
}

ToolRun::ToolRun(const ProcessRunner::Command& command, std::stop_token stop)
    : ToolRun(command, std::move(stop), Pipe(), Pipe())
{
}

ToolRun::ToolRun(const ProcessRunner::Command& command, std::stop_token stop, Pipe output, Pipe errors)
    : m_stop(stop),
      m_stopEvent(std::move(stop)),
      m_output(std::move(output.readEnd)),
      m_errors(std::move(errors.readEnd)),
      m_tool(command, output.writeEnd, errors.writeEnd),
      m_deadline(Clock::now() + command.timeout)
{
}

ProcessRunner::Output ToolRun::toEnd()
{
    waitForTool();
    drainStreams();
    return {m_tool.exitCode().value_or(SIGKILL), m_output.text(), m_errors.text(), m_timedOut};
}

void ToolRun::waitForTool()
{
    while (!m_tool.hasEnded() && !m_stop.stop_requested() && Clock::now() < m_deadline)
        listen(m_deadline);
    if (m_tool.hasEnded())
        return;
    m_timedOut = Clock::now() >= m_deadline;
    m_termination.emplace(m_tool.id());
    waitForTool(m_termination->killTime());
    if (m_tool.hasEnded())
        return;
    m_termination->kill();
    m_termination.reset();
    waitForTool(Clock::now() + lastPatience);
}

void ToolRun::waitForTool(Clock::time_point until)
{
    while (!m_tool.hasEnded() && Clock::now() < until)
        listen(until);
}

void ToolRun::drainStreams()
{
    const Clock::time_point until = Clock::now() + drainTime;
    while ((m_output.isOpen() || m_errors.isOpen()) && Clock::now() < until)
        listen(until);
}

/// Until something happens, which is dealt with when it is on the streams.
void ToolRun::listen(Clock::time_point until)
{
    const auto readable = [](int descriptor) { return pollfd{descriptor, POLLIN, 0}; };
    std::array events{readable(m_output.descriptor()), readable(m_errors.descriptor()),
                      readable(m_tool.descriptor()), readable(m_stopEvent.descriptor())};
    ::poll(events.data(), events.size(), millisecondsUntil(until));
    if (events[0].revents)
        m_output.read();
    if (events[1].revents)
        m_errors.read();
    if (events[3].revents)
        m_stopEvent.clear();
}

} // namespace folvane
