#include "tools/compress/Compression.h"

#include "platform/tasks/Cancelled.h"
#include "platform/texts/localeTexts.h"

#include <map>

namespace folvane::Compression {

namespace {

/// What one search has built.
struct Search {
    Ladder steps;
    qint64 limit;
    Build build;
    std::stop_token stop;
    std::map<size_t, QByteArray> built;
};

/// Whether the rung fits, which is built for that unless it is there. The search outlives this.
QCoro::Task<bool> fits(Search* search, size_t rung)
{
    if (!search->built.contains(rung)) {
        throwIfStopped(search->stop);
        QCoro::Task<QByteArray> building = search->build(search->steps[rung]);
        QByteArray data = co_await building;
        search->built[rung] = std::move(data);
    }
    co_return search->built[rung].size() <= search->limit;
}

Ladder all(const std::array<Rung, 8>& rungs)
{
    return Ladder(rungs.begin(), rungs.end());
}

} // namespace

Rung rung(Choice choice)
{
    switch (choice) {
    case Choice::Original:
    case Choice::UpTo: return std::nullopt;
    case Choice::Medium: return ladder[1];
    case Choice::Small: return ladder[4];
    }
    Q_UNREACHABLE();
}

QString limitTitle(qint64 bytes)
{
    return megabytes(double(bytes) / 1'000'000);
}

QCoro::Task<Found> search(Ladder steps, qint64 limit, Build build, std::stop_token stop)
{
    Search search{std::move(steps), limit, std::move(build), std::move(stop), {}};
    QCoro::Task<bool> first = fits(&search, 0); // most files that are to be small are small enough
    const bool fitsAsItIs = co_await first;
    if (fitsAsItIs)
        co_return Found{search.built[0], true};
    const size_t last = search.steps.size() - 1;
    QCoro::Task<bool> smallest = fits(&search, last);
    const bool canFit = co_await smallest;
    if (!canFit)
        co_return Found{search.built[last], false};
    size_t low = 1;
    size_t high = last; // fits
    while (low < high) {
        const size_t middle = (low + high) / 2;
        QCoro::Task<bool> trying = fits(&search, middle);
        const bool fitsToo = co_await trying;
        if (fitsToo)
            high = middle;
        else
            low = middle + 1;
    }
    co_return Found{search.built[high], true};
}

QCoro::Task<Fit> fit(qint64 limit, Build build, std::stop_token stop)
{
    QCoro::Task<Found> withText = search(all(ladder), limit, build, stop);
    const Found text = co_await withText;
    if (text.reached)
        co_return Fit{text.data, true, false};
    QCoro::Task<Found> asPictures = search(all(pictureLadder), limit, build, stop);
    const Found pictures = co_await asPictures;
    if (pictures.reached || pictures.data.size() < text.data.size())
        co_return Fit{pictures.data, pictures.reached, true};
    co_return Fit{text.data, false, false};
}

} // namespace folvane::Compression
