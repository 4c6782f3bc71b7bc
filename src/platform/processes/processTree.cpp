#include "platform/processes/processTree.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

extern "C" { // the header forgets it
#include <sys/pidfd.h>
}

namespace folvane {

namespace {

/// The numbers of a line in /proc/ID/stat from the fourth on. The name before them may hold spaces and brackets itself.
std::istringstream afterState(const std::string& line)
{
    const size_t name = line.rfind(')');
    std::istringstream fields(name == std::string::npos ? std::string() : line.substr(name + 1));
    std::string state;
    fields >> state;
    return fields;
}

std::optional<pid_t> processNumber(const std::string& name)
{
    pid_t id = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), id);
    return error == std::errc() && end == name.data() + name.size() ? std::optional(id) : std::nullopt;
}

/// A child that is older than its parent is another one's: the parent's number has been given anew.
bool isChild(const ProcessEntry& one, const ProcessEntry& parent)
{
    return one.parent == parent.id && one.start >= parent.start;
}

} // namespace

OwnedDescriptor holdProcess(pid_t id)
{
    return OwnedDescriptor(::pidfd_open(id, 0));
}

std::optional<ProcessEntry> processEntry(pid_t id)
{
    constexpr int fieldsBetween = 17; // between the parent and the start
    std::ifstream file("/proc/" + std::to_string(id) + "/stat");
    std::istringstream fields = afterState({std::istreambuf_iterator<char>(file), {}});
    ProcessEntry entry{id};
    fields >> entry.parent;
    std::string skipped;
    for (int i = 0; i < fieldsBetween; ++i)
        fields >> skipped;
    return fields >> entry.start ? std::optional(entry) : std::nullopt;
}

std::vector<ProcessEntry> allProcesses()
{
    std::vector<ProcessEntry> found;
    std::error_code unreadable;
    for (std::filesystem::directory_iterator entry("/proc", unreadable), end; entry != end;
         entry.increment(unreadable))
        if (const std::optional<pid_t> id = processNumber(entry->path().filename()))
            if (const std::optional<ProcessEntry> process = processEntry(*id))
                found.push_back(*process);
    std::ranges::sort(found, {}, &ProcessEntry::id);
    return found;
}

std::vector<ProcessEntry> descendants(const ProcessEntry& ancestor, std::vector<ProcessEntry> all)
{
    std::vector<ProcessEntry> parents{ancestor}, found;
    while (!parents.empty()) {
        const ProcessEntry parent = parents.back();
        parents.pop_back();
        found.push_back(parent);
        const auto isItsChild = [&](const ProcessEntry& one) { return isChild(one, parent); };
        std::ranges::copy_if(all, std::back_inserter(parents), isItsChild);
        std::erase_if(all, isItsChild); // each is found once, whatever they say of each other
    }
    std::ranges::reverse(found);
    found.pop_back(); // the ancestor
    return found;
}

// Once a descriptor holds the process, its number stays its own as long as it is listed: only then is the start looked at.
void signalProcess(const ProcessEntry& process, int signal)
{
    const OwnedDescriptor held = holdProcess(process.id);
    if (!held)
        return;
    const std::optional<ProcessEntry> now = processEntry(process.id);
    if (now && now->start == process.start)
        ::pidfd_send_signal(held.number(), signal, nullptr, 0);
}

} // namespace folvane
