#include "verbs.h"

#include "engine/EngineError.h"
#include "engine/PDFEngine.h"
#include "platform/tasks/Cancelled.h"
#include "platform/tasks/spawn.h"
#include "settled.h"
#include "tools/compress/CompressMeasuring.h"

#include <array>

namespace folvane::driver {

namespace {

using Compression::Choice;

struct NamedChoice {
    Choice choice;
    const char* name;
};
constexpr std::array choices{NamedChoice{Choice::Original, "original"}, NamedChoice{Choice::Medium, "medium"},
                             NamedChoice{Choice::Small, "small"}};

/// A rung, or the best one under a limit.
struct Wanted {
    Compression::Rung rung;
    std::optional<qint64> limit; ///< in bytes
};

Choice readChoice(const QString& name)
{
    for (const NamedChoice& one : choices) {
        if (name == QLatin1String(one.name))
            return one.choice;
    }
    throw BadRequest(QStringLiteral("there is no choice \"%1\"").arg(name));
}

CompressionStep readStep(const Request& request)
{
    const CompressionStep step{request.integer("maxPixels"), request.number("jpegQuality"),
                               request.flag("pagesAsPictures", false)};
    if (step.maxPixels < 1 || step.jpegQuality < 0 || step.jpegQuality > 1)
        throw BadRequest(QStringLiteral("there is no such step"));
    return step;
}

Wanted readWanted(const Request& request)
{
    if (request.has("choice") + request.has("limit") + request.has("maxPixels") != 1)
        throw BadRequest(QStringLiteral("give one of \"choice\", \"limit\" and \"maxPixels\""));
    if (request.has("limit"))
        return {std::nullopt, qint64(request.number("limit"))};
    if (request.has("maxPixels"))
        return {readStep(request), std::nullopt};
    return {Compression::rung(readChoice(request.text("choice"))), std::nullopt};
}

void keepMeasured(Call& call, const OpenFile& file, const CompressMeasuring& measuring)
{
    auto& measured = call.program().measured;
    std::erase_if(measured, [&call](const auto& one) { return !call.model().file(one.first); });
    measured[file.id] = {file.pages, measuring.results};
}

std::shared_ptr<RungBuilder> builderFor(const Call& call, const OpenFile& file)
{
    const auto builder = std::make_shared<RungBuilder>(call.model().engine(), copyPlan(file));
    const auto& all = call.program().measured;
    const auto measured = all.find(file.id);
    if (measured == all.end() || measured->second.pages != file.pages.value())
        return builder;
    for (const auto& [choice, data] : measured->second.results)
        builder->keep(Compression::rung(choice), data);
    return builder;
}

void tell(Answer& answer, const CompressMeasuring& measuring)
{
    const CompressMeasuring::Results results = measuring.results;
    for (const NamedChoice& one : choices) {
        const auto found = results.find(one.choice);
        answer.fields[QLatin1String(one.name)] =
            found == results.end() ? QJsonValue() : QJsonValue(found->second.size());
    }
    const std::optional<QString> note = measuring.mostlyTextNote();
    answer.fields[QStringLiteral("mostlyTextNote")] = note ? QJsonValue(*note) : QJsonValue();
    answer.error = measuring.errorText.value();
    answer.outcome = answer.error                      ? Outcome::Failed
                     : results.size() < choices.size() ? Outcome::Cancelled
                                                       : Outcome::Done;
}

QCoro::Task<Compression::Fit> asFit(QCoro::Task<QByteArray> building, bool pagesAsPictures)
{
    const QByteArray data = co_await building;
    co_return Compression::Fit{data, true, pagesAsPictures};
}

QCoro::Task<Compression::Fit> made(Wanted wanted, std::shared_ptr<RungBuilder> builder, std::stop_token stop)
{
    const Compression::Build build = [builder, stop](Compression::Rung rung) {
        return RungBuilder::build(builder, rung, stop);
    };
    if (wanted.limit)
        return Compression::fit(*wanted.limit, build, stop);
    return asFit(build(wanted.rung), wanted.rung && wanted.rung->pagesAsPictures);
}

/// What became of the search; none when there is something to save.
using Ending = std::shared_ptr<std::optional<Outcome>>;

QCoro::Task<> makeAndSave(CallPtr call, OpenFilePtr file, Wanted wanted, Ending ending)
{
    const std::shared_ptr<RungBuilder> builder = builderFor(*call, *file);
    Compression::Fit fit;
    try {
        QCoro::Task<Compression::Fit> making = made(wanted, builder, call->task.get_token());
        fit = co_await making;
    } catch (const Cancelled&) {
        *ending = Outcome::Cancelled;
    } catch (const EngineError& error) {
        *ending = Outcome::Failed;
        call->answer.error = error.text();
    }
    spawn(call->model().engine().forgetPictures());
    call->answer.fields[QStringLiteral("builds")] = builder->builds();
    if (*ending)
        co_return;
    call->answer.fields[QStringLiteral("reached")] = wanted.limit ? QJsonValue(fit.reached) : QJsonValue();
    call->answer.fields[QStringLiteral("pagesAsPictures")] = fit.pagesAsPictures;
    QCoro::Task<> saving = call->model().save(fit.data, compressedName(*file, fit.data.size()), file->url);
    co_await saving;
}

} // namespace

QCoro::Task<> measure(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const auto measuring = std::make_shared<CompressMeasuring>(call->model(), file);
    const std::stop_callback onStop(call->task.get_token(), [measuring] { measuring->stop(); });
    call->startTime();
    QCoro::Task<> running = measuring->measure();
    co_await running;
    call->stopTime();
    tell(call->answer, *measuring);
    if (call->answer.outcome == Outcome::Done)
        keepMeasured(*call, *file, *measuring);
}

QCoro::Task<> compress(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const Wanted wanted = readWanted(call->request);
    const auto ending = std::make_shared<std::optional<Outcome>>();
    const std::function<QCoro::Task<>()> operation = [=] { return makeAndSave(call, file, wanted, ending); };
    QCoro::Task<> compressing = carryOutJob(call, operation);
    co_await compressing;
    if (*ending)
        call->answer.outcome = **ending;
}

} // namespace folvane::driver
