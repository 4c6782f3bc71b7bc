#include "documents/buildPlans.h"

#include "documents/pageLists.h"

namespace folvane {

BuildPlan buildPlan(std::vector<PageItem> pages, std::optional<QString> password)
{
    BuildPlan plan;
    plan.pages = std::move(pages);
    plan.password = std::move(password);
    return plan;
}

BuildPlan mergePlan(const std::vector<MergeItem>& rows)
{
    std::vector<PageItem> pages;
    std::set<size_t> starts;
    for (const MergeItem& row : rows) {
        starts.insert(pages.size());
        pages.insert(pages.end(), row.pages.begin(), row.pages.end());
    }
    BuildPlan plan = buildPlan(duplicates(pages));
    plan.documentStarts = std::move(starts);
    return plan;
}

} // namespace folvane
