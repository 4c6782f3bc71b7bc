#include "verbs.h"

#include "pages.h"
#include "settled.h"

namespace folvane::driver {

QCoro::Task<> saveAs(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const std::function<QCoro::Task<>()> operation = [call, file] { return call->model().saveAs(file); };
    QCoro::Task<> saving = carryOutJob(call, operation);
    co_await saving;
}

QCoro::Task<> extract(CallPtr call)
{
    const OpenFilePtr file = call->file();
    if (const auto pages = optionalPages(call->request, *file))
        file->selection = *pages; // as the context menu of a page does
    const std::function<QCoro::Task<>()> operation = [call, file] { return call->model().extract(file); };
    QCoro::Task<> extracting = carryOutJob(call, operation);
    co_await extracting;
}

} // namespace folvane::driver
