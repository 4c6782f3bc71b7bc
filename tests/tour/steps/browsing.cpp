#include "shell/pageGrid/PageGrid.h"
#include "tour/steps.h"

#include <QCoreApplication>
#include <QFile>
#include <QScrollBar>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

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
            tour.waitForPages();
    }
}

void checkMemory()
{
    QFile file("/proc/self/statm");
    Tour::check(file.open(QIODevice::ReadOnly), "the system tells the memory of the process");
    const qint64 resident = file.readAll().split(' ').at(1).toLongLong() * sysconf(_SC_PAGESIZE);
    std::printf("browsing     %lld MB resident\n", static_cast<long long>(resident / 1'000'000));
    Tour::check(!memoryIsOurs || resident < mostMemory,
                QStringLiteral("less than 250 MB are resident, not %1").arg(resident));
}

} // namespace

void showBrowsing(Tour& tour)
{
    const int pages = tour.options.manyPages;
    tour.openSample("Archive.pdf", pages);
    const QScrollBar& bar = *tour.grid().verticalScrollBar();
    browseTo(tour, int(qint64(bar.maximum()) * std::min(readPages, pages) / pages), Pace::Reading);
    browseTo(tour, 0, Pace::Reading);
    for (const QSize& size : {tour.window.minimumSize(), QSize(1440, 900), QSize(1920, 1080)}) {
        tour.resize(size);
        browseTo(tour, bar.maximum(), Pace::Leafing);
        browseTo(tour, 0, Pace::Leafing);
    }
    tour.picture("after-browsing-a-long-document");
    checkMemory();
}

} // namespace folvane
