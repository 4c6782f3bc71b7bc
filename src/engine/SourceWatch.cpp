#include "engine/SourceWatch.h"

#include "engine/EngineError.h"
#include "pdf/Document.h"

namespace folvane {

SourceWatch::SourceWatch(const std::vector<pdf::PageCopy>& pages)
{
    for (const pdf::PageCopy& page : pages)
        m_failedReads.try_emplace(page.source, page.source->failedReads());
    requireIntact();
}

void SourceWatch::requireIntact() const
{
    for (const auto& [document, failedBefore] : m_failedReads)
        if (!document->isIntact() || document->failedReads() != failedBefore)
            throw EngineError(EngineError::Kind::MissingPage, std::current_exception());
}

} // namespace folvane
