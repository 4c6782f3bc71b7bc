#include "updates/UpdateChecker.h"

#include "platform/tasks/background.h"
#include "updates/UpdateError.h"
#include "updates/VersionFileRequest.h"
#include "updates/versionFile.h"

#include <QCoro/QCoroFuture>

#include <QNetworkProxy>

namespace folvane::UpdateChecker {

namespace {

constexpr int mostRedirections = 5;

/// Blocks, for as long as the desktop's settings may want to be looked up in the network.
QNetworkProxy systemProxy(const QUrl& url)
{
    const QList<QNetworkProxy> all = QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
    return all.value(0, QNetworkProxy::NoProxy);
}

QCoro::Task<QByteArray> fetchedFile(UpdateSource source, std::stop_token stop)
{
    const auto findProxy = [url = source.versionFile] { return systemProxy(url); };
    QCoro::Task<QNetworkProxy> finding = inBackground(findProxy, stop);
    const QNetworkProxy proxy = co_await finding;
    for (int redirections = 0;; ++redirections) {
        throwIfStopped(stop);
        VersionFileRequest request(source, proxy);
        const std::stop_callback onStop(stop, [&request] { request.stop(); });
        const QFuture<void> end = request.end();
        co_await end;
        throwIfStopped(stop);
        const std::optional<QUrl> next = request.redirection();
        if (!next || redirections == mostRedirections)
            co_return request.bytes();
        source.versionFile = *next;
    }
}

Result judged(const UpdateRelease& release, qint64 currentBuild)
{
    if (currentBuild >= release.build)
        return UpToDate();
    return release;
}

} // namespace

QCoro::Task<Result> check(UpdateSource source, std::stop_token stop)
{
    const qint64 currentBuild = source.currentBuild;
    try {
        QCoro::Task<QByteArray> fetching = fetchedFile(std::move(source), stop);
        const QByteArray file = co_await fetching;
        co_return judged(releaseIn(file), currentBuild);
    } catch (const UpdateError& error) {
        co_return Failed{error.text()};
    }
}

} // namespace folvane::UpdateChecker
