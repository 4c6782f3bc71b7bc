#include "tools/split/splitting.h"

#include "documents/buildPlans.h"
#include "documents/pages/pageLists.h"
#include "engine/PDFEngine.h"

namespace folvane {

namespace {

std::vector<PageItem> pagesIn(const PageRange& range, const std::vector<PageItem>& pages)
{
    return duplicates({pages.begin() + range.first - 1, pages.begin() + range.last});
}

QCoro::Task<> nothing()
{
    co_return;
}

} // namespace

QCoro::Task<> split(AppModel& model, const OpenFile& file, const SplitChoice& choice)
{
    const std::vector<PageItem> pages = file.pages;
    const auto ranges = choice.ranges(static_cast<int>(pages.size()));
    if (!ranges || ranges->isEmpty())
        return nothing();
    QList<FileName> names;
    QList<BuildPlan> plans;
    for (const PageRange& range : *ranges) {
        names.append({nameWithTail(file.name, u' ' + PageRanges::describe(range)), QStringLiteral("pdf")});
        plans.append(buildPlan(model.stamps, pagesIn(range, pages), file.password));
    }
    PDFEngine& engine = model.engine();
    const auto make = [&engine, plans, kept = model.keepSources(pages)](int index, std::stop_token stop) {
        return engine.build(plans[index], stop);
    };
    return model.writeFiles(names, file.url, AppModel::tr("Split Here"), AppModel::tr("Splitting…"), make);
}

} // namespace folvane
