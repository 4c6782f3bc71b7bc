#include "engine/Engine.h"

#include "engine/EngineError.h"
#include "engine/OpenDocuments.h"
#include "engine/PageExport.h"
#include "engine/buildAsPictures.h"
#include "engine/pixelSize.h"
#include "pdf/Assembly.h"
#include "pdf/drawing/DrawingBudget.h"
#include "pdf/drawing/PageRasteriser.h"
#include "pdf/images/ImageCache.h"
#include "pdf/stamping/CompactStamps.h"
#include "platform/tasks/Cancelled.h"

#include <QHash>

#include <algorithm>
#include <map>

namespace folvane {

namespace {

const QSizeF sizeOfAMissingPage(595, 842);

/// The files behind pages, from before a job to its end. Pages of a file that was cut or rewritten in place, or could not
/// be read meanwhile, would come out torn or blank.
class SourceWatch {
public:
    explicit SourceWatch(const std::vector<pdf::PageCopy>& pages)
    {
        for (const pdf::PageCopy& page : pages)
            m_failedReads.try_emplace(page.source, page.source->failedReads());
        requireIntact();
    }

    /// Throws EngineError; where it is called because something failed, that is the cause.
    void requireIntact() const
    {
        for (const auto& [document, failedBefore] : m_failedReads)
            if (!document->isIntact() || document->failedReads() != failedBefore)
                throw EngineError(EngineError::Kind::MissingPage, std::current_exception());
    }

private:
    std::map<const pdf::Document*, quint64> m_failedReads;
};

/// The same pages as they are, open to everybody.
BuildPlan flatCopy(BuildPlan plan)
{
    plan.password = std::nullopt;
    plan.quality = std::nullopt;
    return plan;
}

pdf::PageCopy pageCopy(pdf::Document* document, const PageItem& page, int mergedDocument)
{
    const std::optional<int> rotation = document ? document->rotation(page.source.index) : std::nullopt;
    if (!rotation)
        throw EngineError(EngineError::Kind::MissingPage);
    return {document, page.source.index, pdf::normalisedAngle(*rotation + page.turn), mergedDocument,
            page.stamps};
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
        throw EngineError(EngineError::Kind::WriteFailed, std::current_exception());
    }
}

} // namespace

struct Engine::State {
    OpenDocuments documents;
    /// For the builds of one search, which differ in nothing but their pictures' size. Only one of the two holds much.
    std::shared_ptr<pdf::ImageCache> images = std::make_shared<pdf::ImageCache>();
    std::shared_ptr<DrawnPages> drawnPages;
    BuildPlan drawnPlan;
    pdf::CompactStamps stamps;

    std::optional<FoundPage> find(const PageSource& source);
    std::vector<pdf::PageCopy> resolved(const BuildPlan& plan);
    QByteArray assembled(const BuildPlan& plan, const std::stop_token& stop);
    QByteArray built(const BuildPlan& plan, const std::stop_token& stop);
    QList<QByteArray> exported(const BuildPlan& plan, PageExport pictures, const std::stop_token& stop);
    QImage drawnStamped(const PageItem& page, const QHash<QUuid, QUrl>& files, QSize size,
                        const std::stop_token& stop);
    const std::shared_ptr<DrawnPages>& pagesToDraw(const BuildPlan& plan, const std::stop_token& stop);
    void forgetPictures();
    std::optional<SendableImage> drawn(const PageSource& source, int turn, double longSide,
                                       pdf::DrawingBudget& budget);
};

std::optional<FoundPage> Engine::State::find(const PageSource& source)
{
    pdf::Document* document = documents.find(source.url);
    const std::optional<pdf::PageGeometry> geometry =
        document ? document->geometry(source.index) : std::nullopt;
    if (!geometry)
        return std::nullopt;
    return FoundPage{document, *geometry};
}

// Each document is looked up once: the next look may replace one of which a read failed just now.
std::vector<pdf::PageCopy> Engine::State::resolved(const BuildPlan& plan)
{
    QHash<QUrl, pdf::Document*> known;
    std::vector<pdf::PageCopy> copies;
    int mergedDocument = 0;
    for (const PageItem& page : plan.pages) {
        const PageSource& source = page.source;
        if (!known.contains(source.url))
            known.insert(source.url, documents.find(source.url));
        if (plan.documentStarts.count(copies.size()))
            ++mergedDocument;
        copies.push_back(pageCopy(known.value(source.url), page, mergedDocument));
    }
    return copies;
}

QByteArray Engine::State::assembled(const BuildPlan& plan, const std::stop_token& stop)
{
    const std::vector<pdf::PageCopy> copies = resolved(plan);
    const SourceWatch sources(copies);
    try {
        pdf::Assembly assembly(copies, stop);
        if (plan.quality)
            assembly.recodeImages(*plan.quality, images, stop);
        assembly.stamp(plan.stampFiles, plan.quality, stamps, stop);
        QByteArray bytes = assembly.written(plan.password.value_or(QString()), stop);
        sources.requireIntact();
        return bytes;
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception&) {
        sources.requireIntact(); // if that is why, it has words of its own
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

// What a copy of the pages would show, without the copy: of an album of photographs it would fill the memory.
QList<QByteArray> Engine::State::exported(const BuildPlan& plan, PageExport pictures,
                                          const std::stop_token& stop)
{
    const std::vector<pdf::PageCopy> pages = resolved(plan);
    const SourceWatch sources(pages);
    for (size_t i = 0; i < pages.size(); ++i) {
        throwIfStopped(stop);
        const PageSource& source = plan.pages[i].source;
        const int turn = plan.pages[i].turn;
        const QSize size = pictures.pixels(pages[i].source->geometry(source.index)->displaySize(turn));
        pictures.makeRoom();
        QImage drawn = plan.pages[i].stamps.empty()
                           ? documents.drawer(source.url).draw(source.index, size, turn, stop)
                           : drawnStamped(plan.pages[i], plan.stampFiles, size, stop);
        throwIfStopped(stop);
        sources.requireIntact();
        if (drawn.isNull())
            throw EngineError(EngineError::Kind::WriteFailed);
        pictures.add(std::move(drawn));
    }
    return pictures.finished();
}

/// As it will be in the file.
QImage Engine::State::drawnStamped(const PageItem& page, const QHash<QUuid, QUrl>& files, QSize size,
                                   const std::stop_token& stop)
{
    BuildPlan alone;
    alone.pages = {page};
    alone.stampFiles = files;
    const auto rasteriser = pdf::PageRasteriser::open(assembled(alone, stop), stop);
    return rasteriser ? rasteriser->draw(0, size, 0, stop) : QImage();
}

const std::shared_ptr<DrawnPages>& Engine::State::pagesToDraw(const BuildPlan& plan,
                                                              const std::stop_token& stop)
{
    if (drawnPages && drawnPlan == plan) {
        const SourceWatch intact(resolved(plan));
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
                                                  pdf::DrawingBudget& budget)
{
    const std::optional<FoundPage> page = find(source);
    if (!page || !page->document->isIntact())
        return std::nullopt;
    const QSizeF points = page->geometry.displaySize(turn);
    const double scale = longSide / std::max({points.width(), points.height(), 1.0});
    QImage image = documents.drawer(source.url).draw(source.index, pixelSize(points, scale), turn, budget);
    if (image.isNull())
        return std::nullopt;
    return SendableImage{std::move(image)};
}

Engine::Engine() : m_state(std::make_unique<State>()) {}

Engine::~Engine() = default;

OpenResult Engine::open(const QUrl& url, const std::optional<QString>& password, WhenChanged whenChanged,
                        std::stop_token stop)
{
    try {
        return m_state->documents.open(url, password, whenChanged, stop);
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
        return sizeOfAMissingPage; // a file that is parsed anew may fail in any way
    }
}

QByteArray Engine::build(const BuildPlan& plan, std::stop_token stop)
{
    return withOwnErrors([&] { return m_state->built(plan, stop); });
}

std::optional<SendableImage> Engine::image(const PageSource& source, int turn, double longSide,
                                           std::stop_token stop)
{
    return draw(source, turn, longSide, std::move(stop), {}).picture;
}

Engine::Drawing Engine::draw(const PageSource& source, int turn, double longSide, std::stop_token stop,
                             pdf::DrawingBudget::Waiting waiting)
{
    using Budget = pdf::DrawingBudget;
    Budget budget(longSide <= longestThumbnail ? Budget::ofThumbnail : Budget::ofPicture, std::move(stop),
                  std::move(waiting));
    try {
        Drawing drawing{m_state->drawn(source, turn, longSide, budget)};
        drawing.madeRoom = !drawing.picture && budget.end() == Budget::End::MakesRoom;
        return drawing;
    } catch (const std::exception&) {
        return {}; // out of memory, say: a placeholder is shown
    }
}

QList<QByteArray> Engine::pictures(const BuildPlan& plan, double dpi, bool jpeg, std::stop_token stop)
{
    if (plan.pages.empty())
        return {};
    const ExportFormat format = jpeg ? ExportFormat::Jpeg : ExportFormat::Png;
    return withOwnErrors([&] { return m_state->exported(plan, PageExport(dpi, format, stop), stop); });
}

} // namespace folvane
