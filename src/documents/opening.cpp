#include "documents/AppModel.h"
#include "documents/fileNames.h"
#include "documents/pages/pageLists.h"
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

/// By name; equal names stay in the order given.
QList<QUrl> sorted(const QList<QUrl>& urls)
{
    std::multimap<QString, QUrl, QCollator> byName(naturalOrder());
    for (const QUrl& url : urls)
        byName.emplace(lastPathComponent(url), url);
    QList<QUrl> result;
    std::ranges::copy(std::views::values(byName), std::back_inserter(result));
    return result;
}

OpenFilePtr pdfAt(const QUrl& url, const QList<OpenFilePtr>& files)
{
    const auto found =
        std::ranges::find_if(files, [&url](const OpenFilePtr& one) { return one->isPDF && one->url == url; });
    return found == files.end() ? nullptr : *found;
}

OpenFilePtr added(AppModel& model, OpenFilePtr file)
{
    model.files = model.files.value() + QList<OpenFilePtr>{file};
    return file;
}

void show(AppModel& model, const OpenFile& file, std::optional<Tool> tool)
{
    model.destination = Destination::file(file.id);
    if (!tool)
        return;
    switch (*tool) {
    case Tool::Sign: model.startSigning(file); break;
    case Tool::Split: model.sheet = FileSheet{FileSheet::Kind::Split, file.id}; break;
    case Tool::Compress: model.sheet = FileSheet{FileSheet::Kind::Compress, file.id}; break;
    }
}

// A file that the system could not read for want of something, or of a whole disk, is not called damaged.
QString failureToOpen(const QUrl& url, FileKind kind, const OpenResult& result)
{
    const QString name = lastPathComponent(url);
    switch (result.systemError) {
    case EMFILE:
    case ENFILE:
    case ENOMEM:
    case EIO: return AppModel::tr("“%1” can't be opened: %2.").arg(name, qt_error_string(result.systemError));
    default: break;
    }
    return (kind == FileKind::Pdf ? AppModel::tr("“%1” can't be opened. It may be damaged or not a PDF.")
                                  : AppModel::tr("“%1” can't be opened."))
        .arg(name);
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
        show(*this, *last, tool);
}

QCoro::Task<OpenFilePtr> AppModel::openPdf(QUrl url)
{
    if (const OpenFilePtr known = pdfAt(url, files))
        co_return known;
    const std::stop_token ended = m_end.get_token();
    const Sources::Hold hold = m_sources->hold({url}); // until the document has it
    const std::vector<PageItem> pages = co_await load(url, BadPictures::Tell);
    if (ended.stop_requested() || pages.empty())
        co_return OpenFilePtr();
    if (const OpenFilePtr known = pdfAt(url, files)) // another opening was quicker
        co_return known;
    const std::optional<QString> password = m_sources->password(url);
    co_return added(*this, std::make_shared<OpenFile>(url, OpenFile::Origin::Pdf, pages, password));
}

QCoro::Task<OpenFilePtr> AppModel::openPictures(QList<QUrl> urls)
{
    const std::stop_token ended = m_end.get_token();
    const Sources::Hold hold = m_sources->hold({urls.begin(), urls.end()});
    const std::vector<PageItem> pages = co_await loadAll(urls, BadPictures::Tell);
    if (ended.stop_requested() || pages.empty())
        co_return OpenFilePtr();
    const QUrl first = pages.front().source.url;
    co_return added(*this, std::make_shared<OpenFile>(first, OpenFile::Origin::Pictures, pages));
}

// A PDF asks for its password, and says why it cannot be read.
QCoro::Task<std::vector<PageItem>> AppModel::load(QUrl url, BadPictures bad)
{
    const FileKind kind = fileKind(url);
    if (kind == FileKind::Other)
        co_return std::vector<PageItem>();
    const std::stop_token ended = m_end.get_token();
    const OpenResult result = co_await m_questions.open(url);
    if (ended.stop_requested() || result.kind == OpenResult::Kind::NeedsPassword)
        co_return std::vector<PageItem>();
    if (result.kind == OpenResult::Kind::Opened && result.pageCount > 0)
        co_return pagesOf(url, result.pageCount);
    if (kind == FileKind::Pdf || bad == BadPictures::Tell)
        errorMessage = failureToOpen(url, kind, result);
    co_return std::vector<PageItem>();
}

QCoro::Task<std::vector<PageItem>> AppModel::loadAll(QList<QUrl> urls, BadPictures bad)
{
    const std::stop_token ended = m_end.get_token();
    std::vector<PageItem> all;
    for (const QUrl& url : urls) {
        const std::vector<PageItem> pages = co_await load(url, bad);
        if (ended.stop_requested())
            break;
        all.insert(all.end(), pages.begin(), pages.end());
    }
    co_return all;
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
