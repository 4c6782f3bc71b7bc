#include "engine/PlanBuilder.h"

#include "engine/EngineError.h"
#include "engine/SourceWatch.h"
#include "platform/tasks/Cancelled.h"

#include <QHash>

namespace folvane {

namespace {

pdf::PageCopy pageCopy(pdf::Document* document, const PageItem& page, int mergedDocument)
{
    const std::optional<int> rotation = document ? document->rotation(page.source.index) : std::nullopt;
    if (!rotation)
        throw EngineError(EngineError::Kind::MissingPage);
    return {document, page.source.index, pdf::normalisedAngle(*rotation + page.turn), mergedDocument,
            page.stamps};
}

} // namespace

// Each document is looked up once: the next look may replace one of which a read failed just now.
std::vector<pdf::PageCopy> PlanBuilder::resolved(const BuildPlan& plan)
{
    QHash<QUrl, pdf::Document*> known;
    std::vector<pdf::PageCopy> copies;
    int mergedDocument = 0;
    for (const PageItem& page : plan.pages) {
        const PageSource& source = page.source;
        if (!known.contains(source.url))
            known.insert(source.url, m_documents.find(source.url));
        if (plan.documentStarts.count(copies.size()))
            ++mergedDocument;
        copies.push_back(pageCopy(known.value(source.url), page, mergedDocument));
    }
    return copies;
}

QByteArray PlanBuilder::build(const BuildPlan& plan, const std::stop_token& stop)
{
    const std::vector<pdf::PageCopy> copies = resolved(plan);
    const SourceWatch sources(copies);
    try {
        pdf::Assembly assembly(copies, stop);
        if (plan.quality)
            assembly.recodeImages(*plan.quality, m_images, stop);
        assembly.stamp(plan.stampFiles, plan.quality, m_stamps, stop);
        QByteArray bytes = assembly.written(plan.password.value_or(QString()), stop);
        sources.requireIntact();
        return bytes;
    } catch (const Cancelled&) {
        throw;
    } catch (...) {
        sources.requireIntact(); // if that is why, it has words of its own
        throw;
    }
}

} // namespace folvane
