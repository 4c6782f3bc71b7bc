#include "verbs.h"

#include "documents/PageRanges.h"

namespace folvane::driver {

namespace {

QJsonValue pairs(const std::optional<QList<PageRange>>& ranges)
{
    if (!ranges)
        return QJsonValue::Null;
    QJsonArray all;
    for (const PageRange& range : *ranges)
        all.append(QJsonArray{range.first, range.last});
    return all;
}

} // namespace

QCoro::Task<> parseRanges(CallPtr call)
{
    const QString text = call->request.text("text");
    const int count = call->request.integer("count");
    call->startTime();
    const auto ranges = PageRanges::parse(text, count);
    call->stopTime();
    call->answer.fields[QStringLiteral("ranges")] = pairs(ranges);
    co_return;
}

QCoro::Task<> describePages(CallPtr call)
{
    const QList<int> numbers = call->request.integers("numbers");
    call->startTime();
    const QString text = PageRanges::describe(numbers);
    call->stopTime();
    call->answer.fields[QStringLiteral("text")] = text;
    co_return;
}

} // namespace folvane::driver
