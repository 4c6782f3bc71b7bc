#include "tools/readyStamps/readyStampRecord.h"

#include "platform/desktop/Preferences.h"
#include "platform/tasks/background.h"
#include "stamps/ReadyStamp.h"
#include "stamps/ReadyStampRenderer.h"

namespace folvane {

namespace {

using Drawn = std::optional<StampMaker::Stamp>;

const QString inkKey = QStringLiteral("readyStamps.ink");
const QString addDateKey = QStringLiteral("readyStamps.addDate");

} // namespace

ReadyStampSettings ReadyStampSettings::read(const Preferences& preferences)
{
    return {.ink = stampInk(preferences.value(inkKey).toString()),
            .addDate = preferences.value(addDateKey, false).toBool()};
}

void ReadyStampSettings::write(Preferences& preferences) const
{
    preferences.setValue(inkKey, rawText(ink));
    preferences.setValue(addDateKey, addDate);
}

QCoro::Task<std::optional<StampRecord>> readyStampRecord(StampLibrary& library, ReadyStampText text,
                                                         StampInk ink, std::stop_token stop)
{
    const QUuid id = ReadyStampRenderer::stampID(text.word, text.date, ink);
    if (std::optional<StampRecord> known = library.record(id))
        co_return known;
    auto draw = [text, ink] { return ReadyStampRenderer::render(text.word, text.date, ink); };
    QCoro::Task<Drawn> drawing = inBackground(std::move(draw), stop);
    const Drawn drawn = co_await drawing;
    throwIfStopped(stop);
    co_return drawn ? library.add(*drawn, readyStampName(text.word, text.date), id) : std::nullopt;
}

} // namespace folvane
