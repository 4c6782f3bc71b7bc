#include "engine/Engine.h"

#include "engine/EngineError.h"
#include "engine/OpenDocuments.h"
#include "engine/PlanBuilder.h"
#include "engine/SourceWatch.h"
#include "engine/buildAsPictures.h"
#include "engine/exportPages.h"
#include "engine/pixelSize.h"
#include "pdf/drawing/DrawingBudget.h"
#include "platform/tasks/Cancelled.h"

#include <algorithm>

namespace folvane {

namespace {

const QSizeF sizeOfAMissingPage(595, 842);

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
    } catch (...) {
        throw EngineError(EngineError::Kind::WriteFailed, std::current_exception());
    }
}

} // namespace

struct Engine::State {
    OpenDocuments documents;
    PlanBuilder builder{documents};
    /// For the builds of one search, as the builder's pictures are. Only one of the two holds much.
    std::shared_ptr<DrawnPages> drawnPages;
    BuildPlan drawnPlan;

    std::optional<FoundPage> find(const PageSource& source);
    QByteArray built(const BuildPlan& plan, const std::stop_token& stop);
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

QByteArray Engine::State::built(const BuildPlan& plan, const std::stop_token& stop)
{
    if (!plan.quality)
        return builder.build(plan, stop);
    if (!plan.quality->pagesAsPictures) {
        drawnPages.reset();
        return builder.build(plan, stop);
    }
    return buildAsPictures(pagesToDraw(flatCopy(plan), stop), *plan.quality,
                           plan.password.value_or(QString()), stop);
}

const std::shared_ptr<DrawnPages>& Engine::State::pagesToDraw(const BuildPlan& plan,
                                                              const std::stop_token& stop)
{
    if (drawnPages && drawnPlan == plan) {
        const SourceWatch intact(builder.resolved(plan));
        return drawnPages;
    }
    forgetPictures();
    drawnPlan = plan;
    drawnPages = std::make_shared<DrawnPages>(builder.build(plan, stop));
    return drawnPages;
}

void Engine::State::forgetPictures()
{
    builder.forgetPictures();
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
    return withOwnErrors([&] {
        return exportPages(plan, m_state->documents, m_state->builder, PageExport(dpi, format, stop), stop);
    });
}

} // namespace folvane
