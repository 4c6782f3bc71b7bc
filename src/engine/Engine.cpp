#include "engine/Engine.h"

#include "engine/EngineError.h"
#include "engine/OpenDocuments.h"
#include "engine/pageImages.h"
#include "pdf/Assembly.h"
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

} // namespace

struct Engine::State {
    OpenDocuments documents;

    pdf::Document* find(const PageSource& source, std::optional<pdf::PageGeometry>& geometry) const;
    pdf::PageCopy resolved(const PageItem& page) const;
};

pdf::Document* Engine::State::find(const PageSource& source, std::optional<pdf::PageGeometry>& geometry) const
{
    pdf::Document* document = documents.find(source.url);
    if (document)
        geometry = document->geometry(source.index);
    return geometry ? document : nullptr;
}

pdf::PageCopy Engine::State::resolved(const PageItem& page) const
{
    pdf::Document* document = documents.find(page.source.url);
    const std::optional<int> rotation = document ? document->rotation(page.source.index) : std::nullopt;
    if (!rotation)
        throw EngineError(EngineError::Kind::MissingPage);
    return {document, page.source.index, pdf::normalisedAngle(*rotation + page.turn)};
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
}

QSizeF Engine::displaySize(const PageSource& source, int turn) const
{
    std::optional<pdf::PageGeometry> geometry;
    return m_state->find(source, geometry) ? geometry->displaySize(turn) : sizeOfAMissingPage;
}

QByteArray Engine::build(const BuildPlan& plan, std::stop_token stop)
{
    std::vector<pdf::PageCopy> copies;
    for (const PageItem& page : plan.pages)
        copies.push_back(m_state->resolved(page));
    requireIntact(copies);
    try {
        pdf::Assembly assembly(copies, stop);
        QByteArray bytes = assembly.written(plan.password.value_or(QString()), stop);
        requireIntact(copies); // the file may have been cut meanwhile
        return bytes;
    } catch (const Cancelled&) {
        throw;
    } catch (const EngineError&) {
        throw;
    } catch (const std::exception&) {
        requireIntact(copies);
        throw EngineError(EngineError::Kind::WriteFailed);
    }
}

std::optional<SendableImage> Engine::image(const PageSource& source, int turn, double longSide,
                                           std::stop_token stop)
{
    std::optional<pdf::PageGeometry> geometry;
    pdf::Document* document = m_state->find(source, geometry);
    if (!document || !document->isIntact())
        return std::nullopt;
    const QSizeF points = geometry->displaySize(turn);
    const double scale = longSide / std::max({points.width(), points.height(), 1.0});
    m_state->documents.noteDrawing(source.url);
    QImage drawn = document->draw(source.index, pixelSize(points, scale), turn, stop);
    if (drawn.isNull())
        return std::nullopt;
    return SendableImage{std::move(drawn)};
}

QList<QByteArray> Engine::pictures(const BuildPlan& plan, double dpi, bool jpeg, std::stop_token stop)
{
    const BuildPlan flat{plan.pages, plan.stampFiles, std::nullopt, std::nullopt};
    return pagePictures(build(flat, stop), dpi, jpeg ? PictureFormat::Jpeg : PictureFormat::Png, stop);
}

} // namespace folvane
