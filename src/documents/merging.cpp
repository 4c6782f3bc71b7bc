#include "documents/AppModel.h"
#include "documents/buildPlans.h"
#include "documents/suggestedNames.h"

namespace folvane {

QCoro::Task<> AppModel::addToMerge(QList<QUrl> urls)
{
    const std::stop_token ended = m_end.get_token();
    const Sources::Hold hold = m_sources->hold({urls.begin(), urls.end()});
    for (const QUrl& url : urls) {
        const std::vector<PageItem> pages = co_await load(url, BadPictures::LeaveOut);
        if (ended.stop_requested())
            co_return;
        if (!pages.empty())
            merge.add(url, pages);
    }
}

QCoro::Task<> AppModel::mergeFiles()
{
    if (merge.items.value().size() < 2)
        co_return;
    const std::stop_token ended = m_end.get_token();
    const MergeItem first = merge.items.value().front();
    const QString name = suggestedName(first.name, tr("merged"));
    const std::optional<QUrl> url = co_await chooseSaveURL(name, first.url);
    if (!ended.stop_requested() && url)
        write(mergePlan(stamps, merge.items), *url, tr("Merging…"));
}

} // namespace folvane
