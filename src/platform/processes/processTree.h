#pragma once

#include "platform/files/OwnedDescriptor.h"

#include <QtGlobal>

#include <optional>
#include <vector>

#include <sys/types.h>

namespace folvane {

/// A process as /proc tells of it. Its number may be given to another one after its end; number and start together may not.
struct ProcessEntry {
    pid_t id = 0;
    pid_t parent = 0;
    quint64 start = 0; ///< in ticks since the system started

    bool operator==(const ProcessEntry&) const = default;
};

/// Holds the process that has this number now: readable once it has ended. None, with errno set, when that fails.
OwnedDescriptor holdProcess(pid_t id);

/// Nothing when no such process is there.
std::optional<ProcessEntry> processEntry(pid_t id);

/// All that run now, in order of their numbers.
std::vector<ProcessEntry> allProcesses();

/// What the process and its children started, depth first: each child comes after its own children.
std::vector<ProcessEntry> descendants(const ProcessEntry& ancestor, std::vector<ProcessEntry> all);

/// Signals this very process, never another one that got its number meanwhile. Nothing when it has gone.
void signalProcess(const ProcessEntry& process, int signal);

} // namespace folvane
