#include "documents/AppModel.h"

#include <algorithm>

namespace folvane {

namespace {

constexpr double signatureWidth = 0.34, stampWidth = 0.24; // of the page's
constexpr QPointF firstCenter(0.5, 0.62);
constexpr double step = 0.04; // from each to the next, until they start over
constexpr size_t steps = 5;

StampPlacement newPlacement(const StampRecord& record, size_t before)
{
    const double offset = step * double(before % steps);
    StampPlacement placement;
    placement.stampID = record.id;
    placement.center = firstCenter + QPointF(offset, offset);
    placement.width = isSignature(record.pixelWidth, record.pixelHeight) ? signatureWidth : stampWidth;
    return placement;
}

/// Lets `change` have the page with that id, and marks the document as edited if it says so.
template <typename Change> void changePage(OpenFile& file, const QUuid& id, Change change)
{
    std::vector<PageItem> pages = file.pages;
    const auto page = std::ranges::find(pages, id, &PageItem::id);
    if (page == pages.end() || !change(*page))
        return;
    file.pages = std::move(pages);
    file.isEdited = true;
}

void takeOff(OpenFile& file, const QUuid& stamp)
{
    std::vector<PageItem> pages = file.pages;
    size_t removed = 0;
    for (PageItem& page : pages)
        removed +=
            std::erase_if(page.stamps, [&](const StampPlacement& one) { return one.stampID == stamp; });
    if (removed == 0)
        return;
    file.pages = std::move(pages);
    file.isEdited = true;
}

} // namespace

void AppModel::startSigning(const OpenFile& file, std::optional<QUuid> page)
{
    signingStartPage = page;
    signingFileID = file.id;
}

std::optional<StampPlacement> AppModel::place(const StampRecord& record, OpenFilePtr file, const QUuid& page)
{
    std::optional<StampPlacement> placed;
    changePage(*file, page, [&](PageItem& item) {
        placed = item.stamps.emplace_back(newPlacement(record, item.stamps.size()));
        return true;
    });
    return placed;
}

void AppModel::update(const StampPlacement& placement, OpenFilePtr file, const QUuid& page)
{
    changePage(*file, page, [&](PageItem& item) {
        const auto found = std::ranges::find(item.stamps, placement.id, &StampPlacement::id);
        if (found != item.stamps.end())
            *found = placement;
        return found != item.stamps.end();
    });
}

void AppModel::remove(const QUuid& placement, OpenFilePtr file, const QUuid& page)
{
    changePage(*file, page, [&](PageItem& item) {
        std::erase_if(item.stamps, [&](const StampPlacement& one) { return one.id == placement; });
        return true;
    });
}

void AppModel::addToAllPages(const StampPlacement& placement, OpenFilePtr file, const QUuid& page)
{
    std::vector<PageItem> pages = file->pages;
    for (PageItem& item : pages)
        if (item.id != page)
            item.stamps.emplace_back(placement).id = QUuid::createUuid();
    const size_t count = pages.size();
    file->pages = std::move(pages);
    file->isEdited = true;
    showToast(tr("Added to all %1 pages").arg(count));
}

void AppModel::deleteStamp(QUuid stamp)
{
    for (const OpenFilePtr& file : files.value())
        takeOff(*file, stamp);
    stamps.remove(stamp);
}

} // namespace folvane
