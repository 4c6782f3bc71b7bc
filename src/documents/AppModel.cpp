#include "documents/AppModel.h"

#include "documents/pages/pageLists.h"

#include <algorithm>

namespace folvane {

AppModel::AppModel(Services services, QObject* parent)
    : QObject(parent),
      m_services(services),
      m_thumbnails(services.engine),
      m_sources(std::make_shared<Sources>(services.engine, m_thumbnails, [this] { return sourcesOfPages(); }))
{
    m_onMerge = merge.items.addNotifier([this] { followMerge(); });
}

AppModel::~AppModel()
{
    m_end.request_stop();
    codes.stop();
}

OpenFilePtr AppModel::file(const QUuid& id) const
{
    const QList<OpenFilePtr>& all = files.value();
    const auto found = std::ranges::find_if(all, [&id](const OpenFilePtr& one) { return one->id == id; });
    return found == all.end() ? nullptr : *found;
}

QSet<QUrl> AppModel::sourcesOfPages() const
{
    QSet<QUrl> urls = m_mergeSources;
    for (const OpenFilePtr& file : files.value())
        urls.unite(sourcesOf(file->pages));
    return urls;
}

// The sources of rows that left the list are let go of, unless a document needs them.
void AppModel::followMerge()
{
    m_mergeSources.clear();
    for (const MergeItem& item : merge.items.value())
        m_mergeSources.unite(sourcesOf(item.pages));
    m_sources->releaseUnused();
}

Sources::Hold AppModel::keepSources(const std::vector<PageItem>& pages)
{
    return m_sources->hold(sourcesOf(pages));
}

} // namespace folvane
