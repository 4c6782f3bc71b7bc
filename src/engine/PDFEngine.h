#pragma once

#include "engine/Engine.h"
#include "platform/SerialWorker.h"

namespace folvane {

/// The asynchronous face of `Engine`: one serial worker, requests in order of arrival, each awaited on the
/// caller's thread. What an operation does and throws is told at `Engine`.
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
    std::unique_ptr<Engine> m_engine; // touched on the worker only
    SerialWorker m_worker;
};

} // namespace folvane
