#include "documents/Sources.h"

#include "engine/PDFEngine.h"
#include "platform/tasks/spawn.h"

#include <QFileInfo>

#include <algorithm>

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

class Sources::Held {
public:
    Held(std::weak_ptr<Sources> sources, QSet<QUrl> urls)
        : m_sources(std::move(sources)), m_urls(std::move(urls))
    {
    }
    ~Held()
    {
        if (const std::shared_ptr<Sources> sources = m_sources.lock())
            sources->letGo(m_urls);
    }
    Q_DISABLE_COPY_MOVE(Held)

private:
    std::weak_ptr<Sources> m_sources;
    QSet<QUrl> m_urls;
};

Sources::Sources(PDFEngine& engine, Thumbnails& thumbnails, Urls ofPages)
    : m_engine(engine), m_thumbnails(thumbnails), m_ofPages(std::move(ofPages))
{
}

Sources::~Sources()
{
    m_end.request_stop();
}

Sources::Hold Sources::hold(const QSet<QUrl>& urls)
{
    m_wereUnused.unite(urls - inUse());
    for (const QUrl& url : urls)
        ++m_holds[url];
    return std::make_shared<const Held>(weak_from_this(), urls);
}

void Sources::letGo(const QSet<QUrl>& urls)
{
    for (const QUrl& url : urls)
        if (--m_holds[url] == 0)
            m_holds.remove(url);
    m_wereUnused.subtract(urls - inUse());
    releaseUnused();
}

QCoro::Task<OpenResult> Sources::open(QUrl url, std::optional<QString> password)
{
    const std::stop_token ended = m_end.get_token();
    const auto whenChanged = m_wereUnused.remove(url) ? WhenChanged::OpenAnew : WhenChanged::KeepHeld;
    const OpenResult result = co_await m_engine.open(url, password, whenChanged, ended);
    if (ended.stop_requested())
        co_return result;
    if (result.version)
        m_thumbnails.keepOnly(url, *result.version);
    if (result.kind != OpenResult::Kind::Opened) {
        m_opened.remove(url); // another file had its place, and was let go of for this one
        co_return result;
    }
    Opened& opened = m_opened[url];
    if (opened.version != result.version)
        opened = {result.version, std::nullopt};
    if (!opened.password) // an unlocked source opens with any password: only the first one counts
        opened.password = password;
    co_return result;
}

QSet<QUrl> Sources::inUse() const
{
    QSet<QUrl> urls = m_ofPages();
    for (auto held = m_holds.keyBegin(); held != m_holds.keyEnd(); ++held)
        urls.insert(*held);
    return urls;
}

bool Sources::isInUse(const QUrl& target) const
{
    const QString path = resolvedPath(target);
    const std::optional<FileIdentity> identity = SourceFile::identityOf(target);
    return std::ranges::any_of(inUse(), [&](const QUrl& source) {
        if (resolvedPath(source) == path)
            return true;
        const std::optional<FileVersion> held = m_opened.value(source).version;
        return identity && (held ? held->file : SourceFile::identityOf(source)) == identity;
    });
}

// Each request is in the engine's queue before this returns: an opening that comes later finds the source
// gone and opens it anew, and one that came earlier holds it.
void Sources::releaseUnused()
{
    const QSet<QUrl> used = inUse();
    for (const QUrl& url : m_opened.keys())
        if (!used.contains(url)) {
            m_opened.remove(url);
            spawn(m_engine.forget(url));
        }
}

} // namespace folvane
