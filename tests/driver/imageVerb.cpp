#include "verbs.h"

#include "engine/PDFEngine.h"
#include "pages.h"

#include <algorithm>

namespace folvane::driver {

namespace {

PageItem pageItem(const Request& request, const OpenFile& file)
{
    const QUuid id = page(request, "page", file);
    const std::vector<PageItem>& pages = file.pages.value();
    return *std::find_if(pages.begin(), pages.end(), [&](const PageItem& item) { return item.id == id; });
}

void writePng(const QImage& image, const QUrl& target)
{
    if (!image.save(target.toLocalFile(), "PNG"))
        throw BadRequest(QStringLiteral("the picture can't be written to %1").arg(target.toLocalFile()));
}

void tellSize(Call& call, const QSize& size)
{
    const bool drawn = !size.isEmpty();
    call.answer.outcome = drawn ? Outcome::Done : Outcome::Failed;
    call.answer.fields[QStringLiteral("width")] = drawn ? QJsonValue(size.width()) : QJsonValue::Null;
    call.answer.fields[QStringLiteral("height")] = drawn ? QJsonValue(size.height()) : QJsonValue::Null;
}

} // namespace

QCoro::Task<> drawImage(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const PageItem item = pageItem(call->request, *file);
    const double longSide = call->request.number("longSide");
    const auto target = call->request.optionalUrl("to");
    call->startTime();
    QCoro::Task<std::optional<SendableImage>> drawing =
        call->model().engine().image(item.source, item.turn, longSide);
    const std::optional<SendableImage> drawn = co_await drawing;
    call->stopTime();
    tellSize(*call, drawn ? drawn->image.size() : QSize());
    if (drawn && target)
        writePng(drawn->image, *target);
}

} // namespace folvane::driver
