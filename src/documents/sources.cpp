#include "documents/AppModel.h"
#include "documents/pageLists.h"
#include "engine/PDFEngine.h"
#include "platform/spawn.h"

#include <QFileInfo>

#include <algorithm>

// Which source files open work depends on: they stay open in the engine, and nothing is written over them.

namespace folvane {

namespace {

/// The path with all links followed; of a file that does not exist, as far as its folder goes.
QString resolvedPath(const QUrl& url)
{
    const QFileInfo info(url.toLocalFile());
    if (info.exists())
        return info.canonicalFilePath();
    return QFileInfo(info.absolutePath()).canonicalFilePath() + u'/' + info.fileName();
}

} // namespace

QCoro::Task<OpenResult> AppModel::openSource(QUrl url, std::optional<QString> password)
{
    const std::stop_token ended = m_end.get_token();
    const OpenResult result = co_await m_services.engine.open(url, password);
    if (ended.stop_requested() || result.kind != OpenResult::Kind::Opened)
        co_return result;
    KnownSource& known = m_sources[url];
    if (!known.identity)
        known.identity = SourceFile::identityOf(url);
    if (!known.password) // an unlocked source opens with any password: only the first one counts
        known.password = password;
    co_return result;
}

AppModel::SourceHold AppModel::holdSources(const QList<QUrl>& urls)
{
    m_holds.removeIf([](const std::weak_ptr<const QSet<QUrl>>& hold) { return hold.expired(); });
    const auto hold = std::make_shared<const QSet<QUrl>>(urls.begin(), urls.end());
    m_holds.append(hold);
    return hold;
}

std::shared_ptr<const void> AppModel::keepSources(const std::vector<PageItem>& pages)
{
    const QSet<QUrl> urls = sourcesOf(pages);
    SourceHold hold = holdSources(urls.values());
    const std::stop_token ended = m_end.get_token();
    const auto letGo = [this, urls, ended, hold](const void*) mutable {
        hold.reset();
        if (!ended.stop_requested())
            releaseUnused(urls);
    };
    return std::shared_ptr<const void>(hold.get(), letGo);
}

QSet<QUrl> AppModel::sourcesInUse() const
{
    QSet<QUrl> urls;
    for (const OpenFilePtr& file : files.value())
        urls.unite(sourcesOf(file->pages));
    urls.unite(m_mergeSources);
    for (const std::weak_ptr<const QSet<QUrl>>& weak : m_holds)
        if (const SourceHold hold = weak.lock())
            urls.unite(*hold);
    return urls;
}

bool AppModel::isInUse(const QUrl& url) const
{
    const QString path = resolvedPath(url);
    const std::optional<FileIdentity> identity = SourceFile::identityOf(url);
    return std::ranges::any_of(sourcesInUse(), [&](const QUrl& source) {
        if (resolvedPath(source) == path)
            return true;
        const std::optional<FileIdentity> known = m_sources.value(source).identity;
        return identity && (known ? known : SourceFile::identityOf(source)) == identity;
    });
}

// Each request is in the engine's queue before this returns: an opening that comes later finds the source
// gone and opens it anew, and one that came earlier holds it.
void AppModel::releaseUnused(const QSet<QUrl>& sources)
{
    const QSet<QUrl> released = sources - sourcesInUse();
    for (const QUrl& url : released) {
        m_sources.remove(url);
        spawn(m_services.engine.forget(url));
    }
}

} // namespace folvane
