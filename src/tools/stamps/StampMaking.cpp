#include "tools/stamps/StampMaking.h"

#include "documents/failures.h"
#include "platform/tasks/background.h"
#include "platform/tasks/spawn.h"
#include "stamps/storedPicture.h"

namespace folvane {

using Stamp = StampMaker::Stamp;

namespace {

QCoro::Task<Stamp> stampOf(QUrl file, std::stop_token stop)
{
    return StampMaker::shared().makeStamp(file, stop);
}

QCoro::Task<Stamp> stampOf(QByteArray bytes, std::stop_token stop)
{
    return StampMaker::shared().makeStamp(bytes, stop);
}

QCoro::Task<Stamp> stampOf(InkDrawing drawing, std::stop_token stop)
{
    auto encode = [drawing] { return pngOf(drawing); };
    QCoro::Task<QByteArray> encoding = inBackground(std::move(encode), stop);
    const QByteArray png = co_await encoding;
    QCoro::Task<Stamp> making = stampOf(png, stop);
    co_return co_await making;
}

} // namespace

void StampMaking::start(const Picture& picture)
{
    stop();
    m_stop = std::stop_source();
    isWorking = true;
    result = std::nullopt;
    errorText = std::nullopt;
    spawn(work(picture, m_stop.get_token()));
}

// The work may outlive this, but then it was stopped.
QCoro::Task<> StampMaking::work(Picture picture, std::stop_token stop)
{
    const QString otherwise =
        StampMaker::StampError(StampMaker::StampError::Kind::Unreadable).errorDescription();
    const Job making = [this, picture](std::stop_token token) { return make(picture, token); };
    const std::optional<QString> failure = co_await failureOf(making, stop, otherwise);
    if (!failure || stop.stop_requested())
        co_return;
    isWorking = false;
    errorText = failure;
}

QCoro::Task<> StampMaking::make(Picture picture, std::stop_token stop)
{
    const auto begin = [&stop](const auto& from) { return stampOf(from, stop); };
    QCoro::Task<Stamp> making = std::visit(begin, picture);
    const Stamp stamp = co_await making;
    auto decode = [png = stamp.png] { return storedPicture(png); };
    QCoro::Task<QImage> decoding = inBackground(std::move(decode), stop);
    const QImage preview = co_await decoding;
    throwIfStopped(stop);
    isWorking = false;
    result = Result{stamp, preview};
}

std::optional<StampRecord> StampMaking::save(const QString& name)
{
    const std::optional<Result>& made = result.value();
    return made ? m_library.add(made->stamp, name) : std::nullopt;
}

} // namespace folvane
