#include "engine/Engine.h"

#include "engine/EngineError.h"
#include "engine/OpenDocuments.h"
#include "engine/buildAsPictures.h"
#include "engine/pageImages.h"
#include "pdf/Assembly.h"
#include "pdf/ImageCache.h"
#include "platform/Cancelled.h"

#include <algorithm>

namespace folvane {

namespace {

const QSizeF sizeOfAMissingPage(595, 842);

/// Pages of a file that was cut or rewritten in place would come out torn or blank.
void requireIntact(const std::vector<pdf::PageCopy>& pages)
{
    const pdf::Document* checked = nullptr;
    for (const pdf::PageCopy& page : pages) {
        if (page.source == checked)
            continue;
        checked = page.source;
        if (!checked->isIntact())
            throw EngineError(EngineError::Kind::MissingPage);
    }
}

/// The same pages as they are, open to everybody.
BuildPlan flatCopy(BuildPlan plan)
{
    plan.password = std::nullopt;
    plan.quality = std::nullopt;
    return plan;
}

/// A page of an open document.
struct FoundPage {
    pdf::Document* document;
    pdf::PageGeometry geometry;
};

/// The border at which foreign exceptions become the engine's.
template <typename Work> auto withOwnErrors(Work work)
{
    try {
        return work();
    } catch (const Cancelled&) {
        throw;
    } catch (const EngineError&) {
        throw;
    } catch (const std::exception&) {
        throw EngineError(EngineError::Kind::WriteFailed);
    }
}

} // namespace

struct Engine::State {
    OpenDocuments documents;
    /// For the builds of one search, which differ in nothing but their pictures' size. Only one of the two holds much.
    std::shared_ptr<pdf::ImageCache> images = std::make_shared<pdf::ImageCache>();
    std::shared_ptr<DrawnPages> drawnPages;
    BuildPlan drawnPlan;

    std::optional<FoundPage> find(const PageSource& source) const;
    pdf::PageCopy resolved(const PageItem& page, int mergedDocument) const;
    std::vector<pdf::PageCopy> resolved(const BuildPlan& plan) const;
    QByteArray assembled(const BuildPlan& plan, const std::stop_token& stop) const;
    QByteArray built(const BuildPlan& plan, const std::stop_token& stop);
    const std::shared_ptr<DrawnPages>& pagesToDraw(const BuildPlan& plan, const std::stop_token& stop);
    void forgetPictures();
    std::optional<SendableImage> drawn(const PageSource& source, int turn, double longSide,
                                       const std::stop_token& stop);
};

std::optional<FoundPage> Engine::State::find(const PageSource& source) const
{
    pdf::Document* document = documents.find(source.url);
    const std::optional<pdf::PageGeometry> geometry =
        document ? document->geometry(source.index) : std::nullopt;
    if (!geometry)
        return std::nullopt;
    return FoundPage{document, *geometry};
}

pdf::PageCopy Engine::State::resolved(const PageItem& page, int mergedDocument) const
{
    pdf::Document* document = documents.find(page.source.url);
    const std::optional<int> rotation = document ? document->rotation(page.source.index) : std::nullopt;
    if (!rotation)
        throw EngineError(EngineError::Kind::MissingPage);
    return {document, page.source.index, pdf::normalisedAngle(*rotation + page.turn), mergedDocument};
}

std::vector<pdf::PageCopy> Engine::State::resolved(const BuildPlan& plan) const
{
    std::vector<pdf::PageCopy> copies;
    int mergedDocument = 0;
    for (const PageItem& page : plan.pages) {
        if (plan.documentStarts.count(copies.size()))
            ++mergedDocument;
        copies.push_back(resolved(page, mergedDocument));
    }
    return copies;
}

QByteArray Engine::State::assembled(const BuildPlan& plan, const std::stop_token& stop) const
{
    const std::vector<pdf::PageCopy> copies = resolved(plan);
    requireIntact(copies);
    try {
        pdf::Assembly assembly(copies, stop);
        if (plan.quality)
            assembly.recodeImages(*plan.quality, images, stop);
        QByteArray bytes = assembly.written(plan.password.value_or(QString()), stop);
        requireIntact(copies); // the file may have been cut meanwhile
        return bytes;
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception&) {
        requireIntact(copies); // if that is why, it has words of its own
        throw;
    }
}

QByteArray Engine::State::built(const BuildPlan& plan, const std::stop_token& stop)
{
    if (!plan.quality)
        return assembled(plan, stop);
    if (!plan.quality->pagesAsPictures) {
        drawnPages.reset();
        return assembled(plan, stop);
    }
    return buildAsPictures(pagesToDraw(flatCopy(plan), stop), *plan.quality,
                           plan.password.value_or(QString()), stop);
}

const std::shared_ptr<DrawnPages>& Engine::State::pagesToDraw(const BuildPlan& plan,
                                                              const std::stop_token& stop)
{
    if (drawnPages && drawnPlan == plan) {
        requireIntact(resolved(plan));
        return drawnPages;
    }
    forgetPictures();
    drawnPlan = plan;
    drawnPages = std::make_shared<DrawnPages>(assembled(plan, stop));
    return drawnPages;
}

void Engine::State::forgetPictures()
{
    images->clear();
    drawnPages.reset();
}

std::optional<SendableImage> Engine::State::drawn(const PageSource& source, int turn, double longSide,
                                                  const std::stop_token& stop)
{
    const std::optional<FoundPage> page = find(source);
    if (!page || !page->document->isIntact())
        return std::nullopt;
    const QSizeF points = page->geometry.displaySize(turn);
    const double scale = longSide / std::max({points.width(), points.height(), 1.0});
    documents.noteDrawing(source.url);
    QImage image = page->document->draw(source.index, pixelSize(points, scale), turn, stop);
    if (image.isNull())
        return std::nullopt;
    return SendableImage{std::move(image)};
}

Engine::Engine() : m_state(std::make_unique<State>()) {}

Engine::~Engine() = default;

OpenResult Engine::open(const QUrl& url, const std::optional<QString>& password)
{
    try {
        return m_state->documents.open(url, password);
    } catch (const std::exception&) {
        return OpenResult::unreadable(); // out of memory, say: one bad file must not take the others with it
    }
}

void Engine::forget(const QUrl& url)
{
    m_state->documents.forget(url);
    m_state->forgetPictures();
}

void Engine::forgetPictures()
{
    m_state->forgetPictures();
}

QSizeF Engine::displaySize(const PageSource& source, int turn) const
{
    try {
        const std::optional<FoundPage> page = m_state->find(source);
        return page ? page->geometry.displaySize(turn) : sizeOfAMissingPage;
    } catch (const std::exception&) {
        return sizeOfAMissingPage;
    }
}

QByteArray Engine::build(const BuildPlan& plan, std::stop_token stop)
{
    return withOwnErrors([&] { return m_state->built(plan, stop); });
}

std::optional<SendableImage> Engine::image(const PageSource& source, int turn, double longSide,
                                           std::stop_token stop)
{
    try {
        return m_state->drawn(source, turn, longSide, stop);
    } catch (const std::exception&) {
        return std::nullopt; // out of memory, say: a placeholder is shown
    }
}

QList<QByteArray> Engine::pictures(const BuildPlan& plan, double dpi, bool jpeg, std::stop_token stop)
{
    const PictureFormat format = jpeg ? PictureFormat::Jpeg : PictureFormat::Png;
    return withOwnErrors(
        [&] { return pagePictures(m_state->assembled(flatCopy(plan), stop), dpi, format, stop); });
}

} // namespace folvane
