#pragma once

#include "pdf/Assembly.h"

#include <map>
#include <vector>

namespace folvane {

/// The files behind pages, from before a job to its end. Pages of a file that was cut or rewritten in place, or could not
/// be read meanwhile, would come out torn or blank.
class SourceWatch {
public:
    explicit SourceWatch(const std::vector<pdf::PageCopy>& pages);

    /// Throws EngineError; where it is called because something failed, that is the cause.
    void requireIntact() const;

private:
    std::map<const pdf::Document*, quint64> m_failedReads;
};

} // namespace folvane
