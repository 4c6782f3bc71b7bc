#pragma once

#include "platform/files/OwnedDescriptor.h"
#include "platform/processes/ProcessRunner.h"

#include <optional>

#include <sys/types.h>

namespace folvane {

/// A running tool, whose end is waited for by poll().
class ChildProcess {
public:
    /// Starts it with what it says going to the two descriptors, and none other of ours. Throws ProcessRunner::Failure.
    ChildProcess(const ProcessRunner::Command& command, const OwnedDescriptor& output,
                 const OwnedDescriptor& errors);

    pid_t id() const { return m_id; }
    /// Readable once it has ended; -1 after hasEnded() told so.
    int descriptor() const { return m_held.number(); }
    /// Lets its number go when it has.
    bool hasEnded();
    /// Its status, or the number of the signal that ended it; none before its end.
    std::optional<int> exitCode() const { return m_exitCode; }

private:
    pid_t m_id;
    OwnedDescriptor m_held;
    std::optional<int> m_exitCode;
};

} // namespace folvane
