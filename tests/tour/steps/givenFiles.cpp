#include "platform/tasks/spawn.h"
#include "tour/TourFailed.h"
#include "tour/steps.h"

#include <QFileInfo>

#include <cstdio>

namespace folvane {

namespace {

/// Nobody is there to answer: locked files are left out, and what could not be opened is told.
OpenFilePtr opened(Tour& tour, const QUrl& url)
{
    AppModel& model = tour.model();
    const qsizetype before = model.files.value().size();
    const QCoro::Task<> opening = model.open({url});
    tour.waitUntilShown(QStringLiteral("The opening of %1").arg(url.fileName()), [&] {
        model.answerPassword(std::nullopt);
        return opening.isReady();
    });
    if (const std::optional<QString> message = model.errorMessage.value())
        std::fprintf(stderr, "%s\n", qPrintable(*message));
    model.errorMessage = std::nullopt;
    return model.files.value().size() > before ? tour.shown() : nullptr;
}

} // namespace

void showGivenFiles(Tour& tour)
{
    int shown = 0;
    for (const QUrl& url : tour.options().given) {
        if (!opened(tour, url))
            continue;
        ++shown;
        tour.picture(QStringLiteral("given-%1").arg(QFileInfo(url.toLocalFile()).completeBaseName()));
    }
    if (shown == 0 && !tour.options().given.isEmpty())
        throw TourFailed(QStringLiteral("None of the given files could be opened."));
}

} // namespace folvane
