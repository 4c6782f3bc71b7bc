#pragma once

#include "platform/processes/processTree.h"

#include <chrono>

namespace folvane {

/// The end of a tool and of all that it started: first they are told, five seconds later they are killed.
class Termination {
public:
    /// Tells them, the deepest first and the tool last. The tree is looked at before: what a dying process leaves behind is
    /// nobody's child any more.
    explicit Termination(pid_t tool);

    std::chrono::steady_clock::time_point killTime() const { return m_killTime; }
    /// Kills those that are still there, with what they started meanwhile.
    void kill() const;
    /// Waits until all have ended or it is time to kill them. Blocks.
    void complete() const;

private:
    bool isOver() const;

    std::vector<ProcessEntry> m_targets;
    std::chrono::steady_clock::time_point m_killTime;
};

} // namespace folvane
