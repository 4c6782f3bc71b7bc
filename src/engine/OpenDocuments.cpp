#include "engine/OpenDocuments.h"

#include "pdf/pictureDocument.h"
#include "platform/files/fileKind.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>

namespace folvane {

namespace {

constexpr size_t drawnAtOnce = 8;

pdf::Opening openingOf(const QUrl& url, const std::shared_ptr<const SourceFile>& file,
                       const std::optional<QString>& password, const std::stop_token& stop = {})
{
    if (fileKind(url) == FileKind::Pdf)
        return pdf::Document::open(file, password, stop);
    std::unique_ptr<pdf::Document> picture =
        pdf::pictureDocument(file, QFileInfo(url.fileName()).suffix().toLower(), stop);
    const auto outcome = picture ? pdf::Opening::Outcome::Opened : pdf::Opening::Outcome::Unreadable;
    return {outcome, std::move(picture)};
}

OpenResult withVersion(OpenResult result, const SourceFile& file)
{
    result.version = file.version();
    return result;
}

} // namespace

void OpenDocuments::Held::take(std::unique_ptr<pdf::Document> parsed, quint64 failedReadsBefore)
{
    drawer.reset(); // it looks into the document that goes
    document = std::move(parsed);
    failedReads = failedReadsBefore;
    if (document)
        drawer.emplace(*document);
}

OpenResult OpenDocuments::open(const QUrl& url, const std::optional<QString>& password,
                               WhenChanged whenChanged, const std::stop_token& stop)
{
    std::shared_ptr<Held> held = m_held.value(url);
    if (held && whenChanged == WhenChanged::OpenAnew && SourceFile::versionOf(url) != held->file->version()) {
        forget(url);
        held = nullptr;
    }
    if (held && held->document) {
        held->drawer->forgetFailures();
        return withVersion(OpenResult::opened(held->document->pageCount()), *held->file);
    }
    if (held)
        return parse(url, held->file, password, stop);
    SourceFile::Opening opening = SourceFile::tryToOpen(url);
    return opening.file ? parse(url, std::move(opening.file), password, stop)
                        : OpenResult::unreadable(opening.error);
}

OpenResult OpenDocuments::parse(const QUrl& url, std::shared_ptr<const SourceFile> file,
                                const std::optional<QString>& password, const std::stop_token& stop)
{
    const quint64 failedBefore = file->failedReads();
    pdf::Opening opening = openingOf(url, file, password, stop);
    const bool wasReadWhole = file->failedReads() == failedBefore;
    if (!wasReadWhole || opening.outcome == pdf::Opening::Outcome::Unreadable) {
        m_held.remove(url);
        return OpenResult::unreadable(wasReadWhole ? 0 : EIO);
    }
    const bool isLocked = opening.outcome == pdf::Opening::Outcome::Locked;
    const int pageCount = isLocked ? 0 : opening.document->pageCount();
    const auto held = std::make_shared<Held>();
    held->file = std::move(file);
    held->password = password;
    held->take(std::move(opening.document), failedBefore);
    m_held.insert(url, held);
    if (isLocked)
        return withVersion(OpenResult::needsPassword(), *held->file);
    return pageCount < 1 ? OpenResult::unreadable() : withVersion(OpenResult::opened(pageCount), *held->file);
}

void OpenDocuments::forget(const QUrl& url)
{
    m_held.remove(url);
    m_drawn.remove(url);
}

pdf::Document* OpenDocuments::find(const QUrl& url)
{
    const std::shared_ptr<Held> held = m_held.value(url);
    if (!held || !held->document)
        return nullptr;
    const quint64 failedReads = held->file->failedReads();
    if (failedReads == held->failedReads)
        return held->document.get();
    pdf::Opening again = openingOf(url, held->file, held->password);
    if (again.outcome != pdf::Opening::Outcome::Opened || held->file->failedReads() != failedReads
        || again.document->pageCount() != held->document->pageCount())
        return nullptr; // the next request tries again
    held->take(std::move(again.document), failedReads);
    return held->document.get();
}

pdf::PageDrawer& OpenDocuments::drawer(const QUrl& url)
{
    noteDrawing(url);
    return *m_held.value(url)->drawer;
}

void OpenDocuments::noteDrawing(const QUrl& url)
{
    if (!m_drawn.empty() && m_drawn.front() == url)
        return;
    m_drawn.remove(url);
    m_drawn.push_front(url);
    if (m_drawn.size() <= drawnAtOnce)
        return;
    const std::shared_ptr<Held> oldest = m_held.value(m_drawn.back());
    if (oldest && oldest->drawer)
        oldest->drawer->release();
    m_drawn.pop_back();
}

} // namespace folvane
