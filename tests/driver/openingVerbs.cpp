#include "verbs.h"

#include "platform/files/fileKind.h"
#include "shownFile.h"

#include <algorithm>

namespace folvane::driver {

namespace {

std::optional<Tool> tool(const Request& request)
{
    const auto name = request.optionalText("tool");
    if (!name)
        return std::nullopt;
    if (*name == QLatin1String("sign"))
        return Tool::Sign;
    if (*name == QLatin1String("split"))
        return Tool::Split;
    if (*name == QLatin1String("compress"))
        return Tool::Compress;
    throw BadRequest(QStringLiteral("\"tool\" must be sign, split or compress"));
}

QList<QUrl> files(const Request& request)
{
    if (!request.has("files"))
        throw BadRequest(QStringLiteral("\"files\" is missing"));
    return request.urls("files");
}

bool isOpenable(const QUrl& url)
{
    return fileKind(url) != FileKind::Other;
}

Outcome outcome(const Call& call, const QList<QUrl>& urls)
{
    if (call.answer.error)
        return std::any_of(urls.begin(), urls.end(), isOpenable) ? Outcome::Failed : Outcome::Refused;
    return call.passwords().wasCancelled() ? Outcome::Cancelled : Outcome::Done;
}

} // namespace

QCoro::Task<> openFiles(CallPtr call)
{
    const QList<QUrl> urls = files(call->request);
    const auto then = tool(call->request);
    call->startTime();
    QCoro::Task<> opening = call->model().open(urls, then);
    co_await opening;
    call->stopTime();
    call->takeNotices();
    call->answer.outcome = outcome(*call, urls);
    call->answer.fields[QStringLiteral("file")] = shownFile(call->model());
}

QCoro::Task<> insertFiles(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const QList<QUrl> urls = files(call->request);
    call->startTime();
    QCoro::Task<> inserting = call->model().insertPages(file, urls);
    co_await inserting;
    call->stopTime();
    call->takeNotices();
    call->answer.outcome = outcome(*call, urls);
}

} // namespace folvane::driver
