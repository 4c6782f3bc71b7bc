#include "documents/AppModel.h"
#include "documents/pageLists.h"
#include "documents/suggestedNames.h"
#include "platform/files/fileKind.h"

namespace folvane {

QCoro::Task<> AppModel::addToMerge(QList<QUrl> urls)
{
    const std::stop_token ended = m_end.get_token();
    const Sources::Hold hold = m_sources->hold({urls.begin(), urls.end()});
    for (const QUrl& url : urls) {
        const int pageCount = co_await pagesToMerge(url);
        if (ended.stop_requested())
            co_return;
        if (pageCount > 0)
            merge.add(url, pageCount);
    }
}

// A PDF says why it cannot be read, or asks for its password; whatever else cannot be merged is left out.
QCoro::Task<int> AppModel::pagesToMerge(QUrl url)
{
    switch (fileKind(url)) {
    case FileKind::Pdf: {
        const std::optional<Loaded> loaded = co_await load(url);
        co_return loaded ? loaded->pageCount : 0;
    }
    case FileKind::Picture: {
        const OpenResult result = co_await m_sources->open(url);
        co_return result.kind == OpenResult::Kind::Opened ? 1 : 0;
    }
    case FileKind::Other: break;
    }
    co_return 0;
}

QCoro::Task<> AppModel::mergeFiles()
{
    if (merge.items.value().size() < 2)
        co_return;
    const std::stop_token ended = m_end.get_token();
    const MergeItem first = merge.items.value().front();
    const QString name = suggestedName(first.name, tr("merged"));
    const std::optional<QUrl> url = co_await chooseSaveURL(name, first.url);
    if (ended.stop_requested() || !url)
        co_return;
    BuildPlan plan;
    for (const MergeItem& item : merge.items.value()) {
        plan.documentStarts.insert(plan.pages.size());
        for (const PageItem& page : item.pages)
            plan.pages.push_back(page.duplicated());
    }
    write(plan, *url, tr("Merging…"), [] {});
}

// The sources of rows that left the list are let go of, unless a document needs them.
void AppModel::followMerge()
{
    QSet<QUrl> now;
    for (const MergeItem& item : merge.items.value())
        now.unite(sourcesOf(item.pages));
    const QSet<QUrl> before = std::exchange(m_mergeSources, now);
    m_sources->releaseUnused(before - now);
}

} // namespace folvane
