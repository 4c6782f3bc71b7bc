#include "verbs.h"

#include "platform/files/fileKind.h"

#include <algorithm>

namespace folvane::driver {

namespace {

/// The files to open. When none of them is anything that opens, the model refuses.
QList<QUrl> filesOf(Call& call)
{
    if (!call.request.has("files"))
        throw BadRequest(QStringLiteral("\"files\" is missing"));
    const auto urls = call.request.list<QUrl>("files");
    if (std::ranges::all_of(urls, [](const QUrl& url) { return fileKind(url) == FileKind::Other; }))
        call.withError = Outcome::Refused;
    return urls;
}

std::optional<Tool> toolOf(const Request& request)
{
    if (!request.has("tool"))
        return std::nullopt;
    return request.word<Tool>("tool",
                              {{"sign", Tool::Sign}, {"split", Tool::Split}, {"compress", Tool::Compress}});
}

QCoro::Task<> open(CallPtr call)
{
    const QList<QUrl> urls = filesOf(*call);
    QCoro::Task<> opening = call->model().open(urls, toolOf(call->request));
    co_await opening;
    call->tell("file", call->program.shownFile());
}

QCoro::Task<> insert(CallPtr call)
{
    const OpenFilePtr file = call->file();
    QCoro::Task<> inserting = call->model().insertPages(file, filesOf(*call));
    co_await inserting;
}

} // namespace

Verbs openingVerbs()
{
    return {{"open", open}, {"insert", insert}};
}

} // namespace folvane::driver
