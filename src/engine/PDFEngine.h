#pragma once

#include "codes/reading/CodeReader.h"
#include "engine/Engine.h"
#include "platform/tasks/SerialWorker.h"
#include "records/FoundCode.h"

#include <atomic>

namespace folvane {

/// The asynchronous face of `Engine`: one serial worker, requests in order of arrival, each awaited on the
/// caller's thread. What an operation does and throws is told at `Engine`. Only a thumbnail that takes its time makes
/// room for what arrives behind it, and is asked for once more after that. Codes are looked for beside it, on a worker of their own.
class PDFEngine {
public:
    PDFEngine();
    ~PDFEngine();

    QCoro::Task<OpenResult> open(QUrl url, std::optional<QString> password = std::nullopt,
                                 WhenChanged whenChanged = WhenChanged::KeepHeld, std::stop_token stop = {});
    QCoro::Task<> forget(QUrl url);
    QCoro::Task<> forgetPictures();
    QCoro::Task<QSizeF> displaySize(PageSource source, int turn);
    QCoro::Task<QByteArray> build(BuildPlan plan, std::stop_token stop);
    QCoro::Task<std::optional<SendableImage>> image(PageSource source, int turn, double longSide,
                                                    std::stop_token stop = {});
    QCoro::Task<QList<QByteArray>> pictures(BuildPlan plan, double dpi, bool jpeg, std::stop_token stop);

    /// The codes on the pages of an open document, in reading order page by page; a page that cannot be drawn has none. Those of
    /// a picture file have no page number. Throws Cancelled within 200 ms of a stop.
    QCoro::Task<QList<FoundCode>> codes(QUrl url, int pageCount, QString origin, std::stop_token stop);
    /// Those in one picture, as they are told at CodeReader.
    QCoro::Task<std::vector<ReadCode>> codes(QImage picture, std::stop_token stop);

private:
    template <std::invocable F>
    QCoro::Task<std::invoke_result_t<F>> runJob(F job, std::stop_token stop = {});

    const std::shared_ptr<std::atomic<int>> m_jobsWaiting = std::make_shared<std::atomic<int>>(0);
    const std::shared_ptr<void> m_alive = std::make_shared<char>();
    std::unique_ptr<Engine> m_engine; // touched on the worker only
    SerialWorker m_worker;
    CodeReader m_codeReader; // asked on its worker only
    SerialWorker m_codeWorker;
};

} // namespace folvane
