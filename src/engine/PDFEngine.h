#pragma once

#include "engine/Engine.h"
#include "platform/tasks/SerialWorker.h"

#include <atomic>

namespace folvane {

/// The asynchronous face of `Engine`: one serial worker, requests in order of arrival, each awaited on the
/// caller's thread. What an operation does and throws is told at `Engine`. Only a thumbnail that takes its time makes
/// room for what arrives behind it, and is asked for once more after that.
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

private:
    template <std::invocable F>
    QCoro::Task<std::invoke_result_t<F>> runJob(F job, std::stop_token stop = {});

    const std::shared_ptr<std::atomic<int>> m_jobsWaiting = std::make_shared<std::atomic<int>>(0);
    const std::shared_ptr<void> m_alive = std::make_shared<char>();
    std::unique_ptr<Engine> m_engine; // touched on the worker only
    SerialWorker m_worker;
};

} // namespace folvane
