#include "documents/AppModel.h"

#include "documents/pageLists.h"

#include <algorithm>
#include <utility>

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
    m_toastTimer.request_stop();
    if (busy.value())
        busy.value()->task.request_stop();
    for (PasswordQuestion& question : std::exchange(m_questions, {}))
        question.answer.give(std::nullopt);
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

Sources::Hold AppModel::keepSources(const std::vector<PageItem>& pages)
{
    return m_sources->hold(sourcesOf(pages));
}

} // namespace folvane
