#include "platform/tasks/spawn.h"
#include "tour/steps.h"

#include <QFileInfo>

#include <cstdio>

namespace folvane {

namespace {

/// Nobody is there to answer: locked files are left out, and what could not be opened is told.
bool opens(Tour& tour, const QUrl& url)
{
    AppModel& model = tour.model();
    const qsizetype before = model.files.value().size();
    const QCoro::Task<> opening = model.open({url});
    tour.wait("The opening of " + url.fileName(), [&] {
        model.answerPassword(std::nullopt);
        return opening.isReady();
    });
    if (const std::optional<QString> message = model.errorMessage.value())
        std::fprintf(stderr, "%s\n", qPrintable(*message));
    model.errorMessage = std::nullopt;
    return model.files.value().size() > before;
}

} // namespace

void showGivenFiles(Tour& tour)
{
    int shown = 0;
    for (const QUrl& url : tour.options().given) {
        if (!opens(tour, url))
            continue;
        ++shown;
        tour.picture("given-" + QFileInfo(url.toLocalFile()).completeBaseName());
    }
    Tour::check(shown > 0 || tour.options().given.isEmpty(), "one of the given files opens");
}

} // namespace folvane
