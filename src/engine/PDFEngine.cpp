#include "engine/PDFEngine.h"

#include "codes/reading/foundCodes.h"
#include "platform/files/fileKind.h"

namespace folvane {

namespace {

/// The long side at which pages are looked through for codes, in pixels.
constexpr double codePageSide = 2400;

/// A job that waits for the worker, from its arrival until it begins or is given up.
class Waiting {
public:
    explicit Waiting(std::shared_ptr<std::atomic<int>> jobs) : m_jobs(std::move(jobs)) { ++*m_jobs; }
    ~Waiting() { --*m_jobs; }
    Q_DISABLE_COPY_MOVE(Waiting)

private:
    std::shared_ptr<std::atomic<int>> m_jobs;
};

} // namespace

/// What is no thumbnail.
template <std::invocable F>
QCoro::Task<std::invoke_result_t<F>> PDFEngine::runJob(F job, std::stop_token stop)
{
    auto counted = [job = std::move(job), waiting = std::make_unique<Waiting>(m_jobsWaiting)]() mutable {
        waiting.reset();
        return job();
    };
    return m_worker.run(std::move(counted), std::move(stop));
}

PDFEngine::PDFEngine()
    : m_engine(std::make_unique<Engine>()),
      m_worker(QStringLiteral("pdf")),
      m_codeWorker(QStringLiteral("codes"))
{
}

PDFEngine::~PDFEngine() = default;

QCoro::Task<OpenResult> PDFEngine::open(QUrl url, std::optional<QString> password, WhenChanged whenChanged,
                                        std::stop_token stop)
{
    return runJob([engine = m_engine.get(), url, password, whenChanged, stop] {
        return engine->open(url, password, whenChanged, stop);
    });
}

QCoro::Task<> PDFEngine::forget(QUrl url)
{
    return runJob([engine = m_engine.get(), url] { engine->forget(url); });
}

QCoro::Task<> PDFEngine::forgetPictures()
{
    return runJob([engine = m_engine.get()] { engine->forgetPictures(); });
}

QCoro::Task<QSizeF> PDFEngine::displaySize(PageSource source, int turn)
{
    return runJob([engine = m_engine.get(), source, turn] { return engine->displaySize(source, turn); });
}

QCoro::Task<QByteArray> PDFEngine::build(BuildPlan plan, std::stop_token stop)
{
    auto job = [engine = m_engine.get(), plan = std::move(plan), stop] { return engine->build(plan, stop); };
    return runJob(std::move(job), stop);
}

QCoro::Task<std::optional<SendableImage>> PDFEngine::image(PageSource source, int turn, double longSide,
                                                           std::stop_token stop)
{
    const pdf::DrawingBudget::Waiting jobs =
        longSide <= longestThumbnail ? m_jobsWaiting : pdf::DrawingBudget::Waiting();
    const auto draw = [engine = m_engine.get(), source, turn, longSide, stop, jobs] {
        return engine->draw(source, turn, longSide, stop, jobs);
    };
    const std::weak_ptr<void> alive = m_alive;
    while (!alive.expired()) {
        QCoro::Task<Engine::Drawing> drawing = jobs ? m_worker.run(draw, stop) : runJob(draw, stop);
        Engine::Drawing drawn = co_await drawing;
        if (!drawn.madeRoom)
            co_return std::move(drawn.picture);
    }
    throw Cancelled();
}

QCoro::Task<QList<QByteArray>> PDFEngine::pictures(BuildPlan plan, double dpi, bool jpeg,
                                                   std::stop_token stop)
{
    auto job = [engine = m_engine.get(), plan = std::move(plan), dpi, jpeg, stop] {
        return engine->pictures(plan, dpi, jpeg, stop);
    };
    return runJob(std::move(job), stop);
}

// While a page is looked through, the next one is drawn.
QCoro::Task<QList<FoundCode>> PDFEngine::codes(QUrl url, int pageCount, QString origin, std::stop_token stop)
{
    const bool hasPages = pageCount != 1 || fileKind(url) == FileKind::Pdf;
    const std::weak_ptr<void> alive = m_alive;
    QList<FoundCode> found;
    QCoro::Task<std::optional<SendableImage>> drawing = image({url, 0}, 0, codePageSide, stop);
    for (int page = 1; page <= pageCount; ++page) {
        const std::optional<SendableImage> drawn = co_await drawing;
        if (stop.stop_requested() || alive.expired())
            throw Cancelled();
        QCoro::Task<std::vector<ReadCode>> reading = codes(drawn ? drawn->image : QImage(), stop);
        if (page < pageCount)
            drawing = image({url, page}, 0, codePageSide, stop);
        const std::vector<ReadCode> read = co_await reading;
        found += foundCodes(read, origin, hasPages ? std::optional(page) : std::nullopt);
    }
    throwIfStopped(stop);
    co_return found;
}

QCoro::Task<std::vector<ReadCode>> PDFEngine::codes(QImage picture, std::stop_token stop)
{
    return m_codeWorker.run([&reader = m_codeReader, picture, stop] { return reader.codes(picture, stop); },
                            stop);
}

} // namespace folvane
