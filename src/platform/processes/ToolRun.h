#pragma once

#include "platform/processes/CapturedStream.h"
#include "platform/processes/ChildProcess.h"
#include "platform/processes/StopEvent.h"
#include "platform/processes/Termination.h"

namespace folvane {

/// One run of a tool, on a thread that it blocks. What the tool says is taken in all the while.
class ToolRun {
public:
    /// Starts it. Throws ProcessRunner::Failure.
    ToolRun(const ProcessRunner::Command& command, std::stop_token stop);

    ProcessRunner::Output toEnd();
    /// After the end of a tool that was told to end: what it started may not have heard.
    const std::optional<Termination>& unfinishedTermination() const { return m_termination; }

private:
    using Clock = std::chrono::steady_clock;

    struct Pipe {
        Pipe();

        OwnedDescriptor readEnd, writeEnd;
    };

    ToolRun(const ProcessRunner::Command& command, std::stop_token stop, Pipe output, Pipe errors);

    void waitForTool();
    void waitForTool(Clock::time_point until);
    void drainStreams();
    void listen(Clock::time_point until);

    std::stop_token m_stop;
    StopEvent m_stopEvent;
    CapturedStream m_output, m_errors;
    ChildProcess m_tool;
    Clock::time_point m_deadline;
    bool m_timedOut = false;
    std::optional<Termination> m_termination;
};

} // namespace folvane
