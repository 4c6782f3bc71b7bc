#include "tools/split/SplitChoice.h"

#include "documents/AppModel.h"

#include <algorithm>

namespace folvane {

namespace {

constexpr qsizetype mostNamed = 6;

QList<PageRange> pieces(int every, int count)
{
    const int step = std::clamp(every, 1, std::max(count, 1));
    QList<PageRange> ranges;
    for (int first = 1; first <= count; first += step)
        ranges.append({first, std::min(first + step - 1, count)});
    return ranges;
}

QString named(const QList<PageRange>& ranges)
{
    QStringList names;
    for (const PageRange& range : ranges.first(std::min(ranges.size(), mostNamed)))
        names.append(PageRanges::describe(range));
    return names.join(QStringLiteral(", ")) + (ranges.size() > mostNamed ? QStringLiteral("…") : QString());
}

} // namespace

std::optional<QList<PageRange>> SplitChoice::ranges(int count) const
{
    switch (mode) {
    case Mode::Ranges: return PageRanges::parse(text, count);
    case Mode::Every: return pieces(every, count);
    case Mode::Each: return pieces(1, std::max(count, 1));
    }
    Q_UNREACHABLE();
}

SplitSummary summary(const SplitChoice& choice, int count)
{
    const std::optional<QList<PageRange>> ranges = choice.ranges(count);
    if (ranges && !ranges->isEmpty())
        return {SplitSummary::Kind::Files,
                AppModel::tr("Makes %1 files: %2").arg(ranges->size()).arg(named(*ranges))};
    if (choice.mode == SplitChoice::Mode::Ranges && !choice.text.trimmed().isEmpty())
        return {SplitSummary::Kind::Invalid,
                AppModel::tr("Use page numbers from 1 to %1, like 1-3, 5.").arg(count)};
    return {};
}

} // namespace folvane
