#include "engine/OpenDocuments.h"

#include "pdf/pictureDocument.h"
#include "platform/fileKind.h"

#include <QFileInfo>

#include <algorithm>

namespace folvane {

namespace {

constexpr size_t drawnAtOnce = 8;

} // namespace

OpenResult OpenDocuments::open(const QUrl& url, const std::optional<QString>& password)
{
    const std::shared_ptr<Held> held = m_held.value(url);
    if (held && held->document)
        return OpenResult::opened(held->document->pageCount());
    std::shared_ptr<const SourceFile> file = held ? held->file : SourceFile::open(url);
    if (!file)
        return OpenResult::unreadable();
    return fileKind(url) == FileKind::Pdf ? openPdf(url, std::move(file), password)
                                          : openPicture(url, std::move(file));
}

OpenResult OpenDocuments::openPdf(const QUrl& url, std::shared_ptr<const SourceFile> file,
                                  const std::optional<QString>& password)
{
    pdf::Opening opening = pdf::Document::open(file, password);
    switch (opening.outcome) {
    case pdf::Opening::Outcome::Unreadable: m_held.remove(url); return OpenResult::unreadable();
    case pdf::Opening::Outcome::Locked:
        m_held.insert(url, std::make_shared<Held>(Held{std::move(file), nullptr}));
        return OpenResult::needsPassword();
    case pdf::Opening::Outcome::Opened: break;
    }
    const int pageCount = opening.document->pageCount();
    m_held.insert(url, std::make_shared<Held>(Held{std::move(file), std::move(opening.document)}));
    return pageCount < 1 ? OpenResult::unreadable() : OpenResult::opened(pageCount);
}

OpenResult OpenDocuments::openPicture(const QUrl& url, std::shared_ptr<const SourceFile> file)
{
    std::unique_ptr<pdf::Document> document =
        pdf::pictureDocument(file, QFileInfo(url.fileName()).suffix().toLower());
    if (!document)
        return OpenResult::unreadable();
    m_held.insert(url, std::make_shared<Held>(Held{std::move(file), std::move(document)}));
    return OpenResult::opened(1);
}

void OpenDocuments::forget(const QUrl& url)
{
    m_held.remove(url);
    m_drawn.remove(url);
}

pdf::Document* OpenDocuments::find(const QUrl& url) const
{
    const auto held = m_held.constFind(url);
    return held == m_held.cend() ? nullptr : (*held)->document.get();
}

void OpenDocuments::noteDrawing(const QUrl& url)
{
    if (!m_drawn.empty() && m_drawn.front() == url)
        return;
    m_drawn.remove(url);
    m_drawn.push_front(url);
    if (m_drawn.size() <= drawnAtOnce)
        return;
    if (pdf::Document* oldest = find(m_drawn.back()))
        oldest->releaseDrawing();
    m_drawn.pop_back();
}

} // namespace folvane
