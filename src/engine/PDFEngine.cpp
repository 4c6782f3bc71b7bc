#include "engine/PDFEngine.h"

namespace folvane {

PDFEngine::PDFEngine() : m_engine(std::make_unique<Engine>()), m_worker(QStringLiteral("pdf")) {}

PDFEngine::~PDFEngine() = default;

QCoro::Task<OpenResult> PDFEngine::open(QUrl url, std::optional<QString> password, WhenChanged whenChanged,
                                        std::stop_token stop)
{
    return m_worker.run([engine = m_engine.get(), url, password, whenChanged, stop] {
        return engine->open(url, password, whenChanged, stop);
    });
}

QCoro::Task<> PDFEngine::forget(QUrl url)
{
    return m_worker.run([engine = m_engine.get(), url] { engine->forget(url); });
}

QCoro::Task<> PDFEngine::forgetPictures()
{
    return m_worker.run([engine = m_engine.get()] { engine->forgetPictures(); });
}

QCoro::Task<QSizeF> PDFEngine::displaySize(PageSource source, int turn)
{
    return m_worker.run(
        [engine = m_engine.get(), source, turn] { return engine->displaySize(source, turn); });
}

QCoro::Task<QByteArray> PDFEngine::build(BuildPlan plan, std::stop_token stop)
{
    auto job = [engine = m_engine.get(), plan = std::move(plan), stop] { return engine->build(plan, stop); };
    return m_worker.run(std::move(job), stop);
}

QCoro::Task<std::optional<SendableImage>> PDFEngine::image(PageSource source, int turn, double longSide,
                                                           std::stop_token stop)
{
    auto job = [engine = m_engine.get(), source, turn, longSide, stop] {
        return engine->image(source, turn, longSide, stop);
    };
    return m_worker.run(std::move(job), stop);
}

QCoro::Task<QList<QByteArray>> PDFEngine::pictures(BuildPlan plan, double dpi, bool jpeg,
                                                   std::stop_token stop)
{
    auto job = [engine = m_engine.get(), plan = std::move(plan), dpi, jpeg, stop] {
        return engine->pictures(plan, dpi, jpeg, stop);
    };
    return m_worker.run(std::move(job), stop);
}

} // namespace folvane
