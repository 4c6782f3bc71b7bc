#include "pdf/copying/namedDestinations.h"

#include "pdf/copying/nameTree.h"
#include "pdf/structure/Destinations.h"
#include "pdf/structure/DocumentData.h"

namespace folvane::pdf {

NamedDestinations::NamedDestinations(std::list<SourcePart>& parts)
{
    for (SourcePart& part : parts) {
        const DestinationTable& table = part.source().destinations();
        for (const auto& [from, to] : take(part, table.byString, m_byString))
            part.rules().renameString(from, to);
        for (const auto& [from, to] : take(part, table.byName, m_byName))
            part.rules().renameName(from, to);
    }
}

/// Returns the names that had to be replaced.
std::map<std::string, std::string> NamedDestinations::take(SourcePart& part, const Names& names, Taken& taken)
{
    std::map<std::string, std::string> renamed;
    const auto isTaken = [&](const std::string& name) {
        return taken.entries.count(name) || names.count(name);
    };
    for (const auto& [name, destination] : names) {
        if (part.rules().isGone(destination))
            continue;
        std::string free = name;
        if (taken.entries.count(name)) {
            free = taken.freeNames.next(name, isTaken);
            renamed.emplace(name, free);
        }
        taken.entries.emplace(free, Entry{&part, destination});
    }
    return renamed;
}

void NamedDestinations::write(QPDF& target)
{
    if (!m_byString.entries.empty()) {
        QPDFObjectHandle names = QPDFObjectHandle::newDictionary();
        names.replaceKey("/Dests", nameTree(target, copied(m_byString.entries)));
        target.getRoot().replaceKey("/Names", names);
    }
    if (!m_byName.entries.empty())
        target.getRoot().replaceKey(
            "/Dests", target.makeIndirectObject(QPDFObjectHandle::newDictionary(copied(m_byName.entries))));
}

std::map<std::string, QPDFObjectHandle> NamedDestinations::copied(const Entries& entries)
{
    std::map<std::string, QPDFObjectHandle> copies;
    for (const auto& [name, entry] : entries) {
        QPDFObjectHandle copy =
            entry.part->copier().copy(entry.part->rules().rewrittenDestination(entry.source));
        if (!copy.isNull())
            copies.emplace(name, copy);
    }
    for (const auto& [name, entry] : entries)
        entry.part->copier().drain();
    return copies;
}

} // namespace folvane::pdf
