#include "documents/AppModel.h"
#include "documents/fileNames.h"
#include "documents/pageLists.h"
#include "platform/files/fileKind.h"
#include "platform/texts/localeTexts.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <map>
#include <ranges>

namespace folvane {

namespace {

QList<QUrl> ofKind(FileKind kind, const QList<QUrl>& urls)
{
    QList<QUrl> matching;
    std::ranges::copy_if(urls, std::back_inserter(matching),
                         [kind](const QUrl& url) { return fileKind(url) == kind; });
    return matching;
}

struct NaturalOrder {
    bool operator()(const QString& a, const QString& b) const { return naturalCompare(a, b) < 0; }
};

/// By name; equal names stay in the order given.
QList<QUrl> sorted(const QList<QUrl>& urls)
{
    std::multimap<QString, QUrl, NaturalOrder> byName;
    for (const QUrl& url : urls)
        byName.emplace(lastPathComponent(url), url);
    QList<QUrl> result;
    std::ranges::copy(std::views::values(byName), std::back_inserter(result));
    return result;
}

} // namespace

QCoro::Task<> AppModel::open(QList<QUrl> urls, std::optional<Tool> tool)
{
    const QList<QUrl> pdfs = ofKind(FileKind::Pdf, urls);
    const QList<QUrl> pictures = sorted(ofKind(FileKind::Picture, urls));
    if (!urls.isEmpty() && pdfs.isEmpty() && pictures.isEmpty())
        errorMessage = tr("Folvane opens PDFs and images.");

    const std::stop_token ended = m_end.get_token();
    OpenFilePtr last;
    for (const QUrl& url : pdfs) {
        const OpenFilePtr opened = co_await openPdf(url);
        if (ended.stop_requested())
            co_return;
        last = opened ? opened : last;
    }
    const OpenFilePtr album = co_await openPictures(pictures);
    if (ended.stop_requested())
        co_return;
    last = album ? album : last;
    if (last && file(last->id)) // it may have been closed while a later one was opening
        show(*last, tool);
}

// A file that the system could not read for want of something, or of a whole disk, is not called damaged.
QString AppModel::failureToOpen(const QUrl& url, const OpenResult& result, const QString& otherwise) const
{
    const QString name = lastPathComponent(url);
    switch (result.systemError) {
    case EMFILE:
    case ENFILE:
    case ENOMEM:
    case EIO: return tr("“%1” can't be opened: %2.").arg(name, qt_error_string(result.systemError));
    default: return otherwise.arg(name);
    }
}

QCoro::Task<OpenFilePtr> AppModel::openPdf(QUrl url)
{
    if (const OpenFilePtr known = openPdfAt(url))
        co_return known;
    const std::stop_token ended = m_end.get_token();
    const Sources::Hold hold = m_sources->hold({url}); // until the document has it
    const std::optional<Loaded> loaded = co_await load(url);
    if (ended.stop_requested() || !loaded)
        co_return OpenFilePtr();
    if (const OpenFilePtr known = openPdfAt(url)) // another opening was quicker
        co_return known;
    co_return add(std::make_shared<OpenFile>(url, OpenFile::Origin::Pdf, pagesOf(url, loaded->pageCount),
                                             loaded->password));
}

QCoro::Task<OpenFilePtr> AppModel::openPictures(QList<QUrl> urls)
{
    const std::stop_token ended = m_end.get_token();
    const Sources::Hold hold = m_sources->hold({urls.begin(), urls.end()});
    std::vector<PageItem> pages;
    for (const QUrl& url : urls) {
        const OpenResult result = co_await m_sources->open(url);
        if (ended.stop_requested())
            co_return OpenFilePtr();
        if (result.kind == OpenResult::Kind::Opened)
            pages.push_back(pagesOf(url, 1).front());
        else
            errorMessage = failureToOpen(url, result, tr("“%1” can't be opened."));
    }
    if (pages.empty())
        co_return OpenFilePtr();
    const QUrl first = pages.front().source.url;
    co_return add(std::make_shared<OpenFile>(first, OpenFile::Origin::Pictures, std::move(pages)));
}

QCoro::Task<std::optional<AppModel::Loaded>> AppModel::load(QUrl url)
{
    const std::stop_token ended = m_end.get_token();
    const Sources::Hold hold = m_sources->hold({url});
    std::optional<QString> password;
    OpenResult result = co_await m_sources->open(url);
    while (!ended.stop_requested() && result.kind == OpenResult::Kind::NeedsPassword) {
        password = co_await askPassword(url, password.has_value());
        if (!password)
            co_return std::nullopt;
        result = co_await m_sources->open(url, password);
    }
    if (ended.stop_requested())
        co_return std::nullopt;
    if (result.kind == OpenResult::Kind::Opened && result.pageCount > 0)
        co_return Loaded{result.pageCount, m_sources->password(url)};
    errorMessage = failureToOpen(url, result, tr("“%1” can't be opened. It may be damaged or not a PDF."));
    co_return std::nullopt;
}

OpenFilePtr AppModel::openPdfAt(const QUrl& url) const
{
    const QList<OpenFilePtr>& all = files.value();
    const auto found =
        std::ranges::find_if(all, [&url](const OpenFilePtr& one) { return one->isPDF && one->url == url; });
    return found == all.end() ? nullptr : *found;
}

OpenFilePtr AppModel::add(OpenFilePtr file)
{
    files = files.value() + QList<OpenFilePtr>{file};
    return file;
}

void AppModel::show(const OpenFile& file, std::optional<Tool> tool)
{
    destination = Destination::file(file.id);
    if (!tool)
        return;
    switch (*tool) {
    case Tool::Sign: signingFileID = file.id; break;
    case Tool::Split: sheet = FileSheet{FileSheet::Kind::Split, file.id}; break;
    case Tool::Compress: sheet = FileSheet{FileSheet::Kind::Compress, file.id}; break;
    }
}

QCoro::Task<QList<QUrl>> AppModel::chooseFiles(bool multiple, QList<ContentType> types)
{
    return m_services.panels.chooseOpen(OpenPanel{multiple, types, tr("Choose PDFs or images")});
}

QCoro::Task<> AppModel::chooseAndOpen()
{
    const std::stop_token ended = m_end.get_token();
    const QList<ContentType> types{ContentType::Pdf, ContentType::Image};
    const QList<QUrl> urls = co_await chooseFiles(true, types);
    if (!ended.stop_requested())
        co_await open(urls);
}

} // namespace folvane
