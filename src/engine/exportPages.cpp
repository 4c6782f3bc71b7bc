#include "engine/exportPages.h"

#include "engine/EngineError.h"
#include "engine/SourceWatch.h"
#include "pdf/drawing/PageRasteriser.h"
#include "platform/tasks/Cancelled.h"

namespace folvane {

namespace {

/// From a copy of the page alone.
QImage drawnWithStamps(const PageItem& page, const BuildPlan& plan, PlanBuilder& builder, QSize size,
                       const std::stop_token& stop)
{
    BuildPlan alone;
    alone.pages = {page};
    alone.stampFiles = plan.stampFiles;
    const auto rasteriser = pdf::PageRasteriser::open(builder.build(alone, stop), stop);
    return rasteriser ? rasteriser->draw(0, size, 0, stop) : QImage();
}

} // namespace

QList<QByteArray> exportPages(const BuildPlan& plan, OpenDocuments& documents, PlanBuilder& builder,
                              PageExport pictures, const std::stop_token& stop)
{
    const std::vector<pdf::PageCopy> copies = builder.resolved(plan);
    const SourceWatch sources(copies);
    for (size_t i = 0; i < copies.size(); ++i) {
        throwIfStopped(stop);
        const PageItem& page = plan.pages[i];
        const int index = page.source.index;
        const QSize size = pictures.pixels(copies[i].source->geometry(index)->displaySize(page.turn));
        pictures.makeRoom();
        QImage drawn = page.stamps.empty()
                           ? documents.drawer(page.source.url).draw(index, size, page.turn, stop)
                           : drawnWithStamps(page, plan, builder, size, stop);
        throwIfStopped(stop);
        sources.requireIntact();
        if (drawn.isNull())
            throw EngineError(EngineError::Kind::WriteFailed);
        pictures.add(std::move(drawn));
    }
    return pictures.finished();
}

} // namespace folvane
