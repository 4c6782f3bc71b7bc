#include "documents/buildPlans.h"

#include "documents/pages/pageLists.h"

namespace folvane {

BuildPlan buildPlan(const StampLibrary& stamps, std::vector<PageItem> pages, std::optional<QString> password)
{
    BuildPlan plan;
    plan.pages = std::move(pages);
    plan.stampFiles = stamps.files();
    plan.password = std::move(password);
    return plan;
}

BuildPlan mergePlan(const StampLibrary& stamps, const std::vector<MergeItem>& rows)
{
    std::vector<PageItem> pages;
    std::set<size_t> starts;
    for (const MergeItem& row : rows) {
        starts.insert(pages.size());
        pages.insert(pages.end(), row.pages.begin(), row.pages.end());
    }
    BuildPlan plan = buildPlan(stamps, duplicates(pages));
    plan.documentStarts = std::move(starts);
    return plan;
}

} // namespace folvane
