#include "documents/MergeModel.h"

#include "documents/OpenFile.h"
#include "documents/fileNames.h"
#include "documents/pages/pageLists.h"

#include <algorithm>
#include <numeric>

namespace folvane {

int MergeModel::pageCount() const
{
    const std::vector<MergeItem>& all = items.value();
    return std::accumulate(all.begin(), all.end(), 0, [](int count, const MergeItem& item) {
        return count + static_cast<int>(item.pages.size());
    });
}

void MergeModel::add(const OpenFile& file)
{
    append({.name = file.name, .pages = duplicates(file.pages), .url = file.url});
}

void MergeModel::add(const QUrl& url, std::vector<PageItem> pages)
{
    append({.name = nameWithoutEnding(url), .pages = std::move(pages), .url = url});
}

void MergeModel::append(MergeItem item)
{
    std::vector<MergeItem> all = items;
    all.push_back(std::move(item));
    items = std::move(all);
}

void MergeModel::move(const QSet<int>& from, int to)
{
    const std::vector<MergeItem>& before = items.value();
    std::vector<MergeItem> front;
    std::vector<MergeItem> moved;
    std::vector<MergeItem> behind;
    for (int row = 0; const MergeItem& item : before) {
        (from.contains(row) ? moved : row < to ? front : behind).push_back(item);
        ++row;
    }
    for (const std::vector<MergeItem>& part : {moved, behind})
        front.insert(front.end(), part.begin(), part.end());
    items = std::move(front);
}

void MergeModel::remove(const QUuid& item)
{
    std::vector<MergeItem> all = items;
    std::erase_if(all, [&item](const MergeItem& one) { return one.id == item; });
    items = std::move(all);
}

void MergeModel::clear()
{
    items = std::vector<MergeItem>();
}

} // namespace folvane
