#include "documents/PageRanges.h"
#include "verbs.h"

#include <QFile>

// What changes nothing.

namespace folvane::driver {

namespace {

QCoro::Task<> drawImage(CallPtr call)
{
    const PageItem item = call->page("page");
    const double longSide = call->request.get<double>("longSide");
    const auto target = call->request.find<QUrl>("to");
    QCoro::Task<std::optional<SendableImage>> drawing =
        call->model().engine().image(item.source, item.turn, longSide);
    const std::optional<SendableImage> drawn = co_await drawing;
    call->stopTime();
    const bool isThere = drawn && !drawn->image.isNull();
    call->reply.outcome = isThere ? Outcome::Done : Outcome::Failed;
    call->tell("width", isThere ? QJsonValue(drawn->image.width()) : QJsonValue());
    call->tell("height", isThere ? QJsonValue(drawn->image.height()) : QJsonValue());
    if (drawn && target && !drawn->image.save(target->toLocalFile(), "PNG"))
        throw BadRequest(QStringLiteral("the picture can't be written to %1").arg(target->toLocalFile()));
}

void parseRanges(Call& call)
{
    const auto ranges = PageRanges::parse(call.request.get<QString>("text"), call.request.get<int>("count"));
    QJsonArray pairs;
    for (const PageRange& range : ranges.value_or(QList<PageRange>()))
        pairs.append(QJsonArray{range.first, range.last});
    call.tell("ranges", ranges ? QJsonValue(pairs) : QJsonValue());
}

void describePages(Call& call)
{
    call.tell("text", PageRanges::describe(call.request.get<QList<int>>("numbers")));
}

/// "VmHWM:     1234 kB" in the process's own report.
void tellMemory(Call& call)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        throw BadRequest(QStringLiteral("the system does not tell the peak"));
    for (QByteArray line = status.readLine(); !line.isEmpty(); line = status.readLine())
        if (line.startsWith("VmHWM:"))
            call.tell("peak", line.simplified().split(' ').at(1).toLongLong() * 1024);
}

} // namespace

Verbs tellingVerbs()
{
    return {{"image", drawImage},
            {"parse", atOnce(parseRanges)},
            {"describe", atOnce(describePages)},
            {"rss", atOnce(tellMemory)}};
}

} // namespace folvane::driver
