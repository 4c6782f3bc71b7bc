#include "shell/pageGrid/PageGrid.h"
#include "tour/TourFailed.h"
#include "tour/steps.h"

#include <QCoreApplication>
#include <QFile>
#include <QScrollBar>
#include <QSize>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include <unistd.h>

namespace folvane {

namespace {

constexpr qint64 mostMemory = 250'000'000; // bytes
constexpr int readPages = 1000;            // more than the store of pictures keeps
#if __has_feature(address_sanitizer)
constexpr bool memoryIsOurs = false; // most of it is the sanitizer's
#else
constexpr bool memoryIsOurs = true;
#endif

qint64 residentMemory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        throw TourFailed(QStringLiteral("The system does not tell the memory of the process."));
    return file.readAll().split(' ').at(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

enum class Pace {
    Reading, ///< each screen is looked at
    Leafing, ///< now and then one is
};

void browseTo(Tour& tour, int offset, Pace pace)
{
    constexpr int betweenLooks = 64; // screens
    QScrollBar& bar = *tour.grid().verticalScrollBar();
    const int step = offset > bar.value() ? bar.pageStep() : -bar.pageStep();
    for (int screen = 1; bar.value() != offset; ++screen) {
        bar.setValue(std::abs(offset - bar.value()) < bar.pageStep() ? offset : bar.value() + step);
        QCoreApplication::processEvents();
        if (pace == Pace::Reading || screen % betweenLooks == 0)
            tour.waitUntilShown(QStringLiteral("The coming of all page pictures"),
                                [&tour] { return tour.grid().isComplete(); });
    }
}

/// From one end to the other and back, in a window of this size.
void browseBothWays(Tour& tour, const QSize& size)
{
    tour.window().resize(size);
    tour.waitUntilShown(QStringLiteral("The resizing of the window"),
                        [&tour, size] { return tour.window().size() == size; });
    browseTo(tour, tour.grid().verticalScrollBar()->maximum(), Pace::Leafing);
    browseTo(tour, 0, Pace::Leafing);
}

void checkMemory()
{
    const qint64 resident = residentMemory();
    std::printf("browsing     %lld MB resident\n", static_cast<long long>(resident / 1'000'000));
    Tour::check(!memoryIsOurs || resident < mostMemory,
                QStringLiteral("less than 250 MB are resident, not %1").arg(resident));
}

} // namespace

void showBrowsing(Tour& tour)
{
    const int pages = tour.options().manyPages;
    tour.open({tour.sample(QStringLiteral("Archive.pdf"), pages)});
    const int read =
        int(qint64(tour.grid().verticalScrollBar()->maximum()) * std::min(readPages, pages) / pages);
    browseTo(tour, read, Pace::Reading);
    browseTo(tour, 0, Pace::Reading);
    for (int round = 0; round < tour.options().rounds; ++round) {
        for (const QSize& size : {tour.window().minimumSize(), QSize(1440, 900), QSize(1920, 1080)})
            browseBothWays(tour, size);
    }
    tour.picture(QStringLiteral("after-browsing-a-long-document"));
    checkMemory();
}

} // namespace folvane
