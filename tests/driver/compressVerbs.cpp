#include "documents/buildPlans.h"
#include "engine/EngineError.h"
#include "platform/tasks/Cancelled.h"
#include "platform/tasks/spawn.h"
#include "tools/compress/CompressMeasuring.h"
#include "verbs.h"

#include <array>

namespace folvane::driver {

namespace {

using Compression::Choice;

constexpr std::array choices{std::pair{"original", Choice::Original}, std::pair{"medium", Choice::Medium},
                             std::pair{"small", Choice::Small}};

/// A rung, or the best one under a limit.
struct Wanted {
    Compression::Rung rung;
    std::optional<double> limit; ///< in bytes
};

CompressionStep stepOf(const Request& request)
{
    const CompressionStep step{request.get<int>("maxPixels"), request.get<double>("jpegQuality"),
                               request.get<bool>("pagesAsPictures", false)};
    if (step.maxPixels < 1 || step.jpegQuality < 0 || step.jpegQuality > 1)
        throw BadRequest(QStringLiteral("there is no such step"));
    return step;
}

Wanted wantedOf(const Request& request)
{
    if (request.has("choice") + request.has("limit") + request.has("maxPixels") != 1)
        throw BadRequest(QStringLiteral("give one of \"choice\", \"limit\" and \"maxPixels\""));
    if (request.has("limit"))
        return {std::nullopt, request.get<double>("limit")};
    if (request.has("maxPixels"))
        return {stepOf(request), std::nullopt};
    return {Compression::rung(request.word<Choice>("choice", {choices[0], choices[1], choices[2]})),
            std::nullopt};
}

void keepMeasured(Call& call, const OpenFile& file, const CompressMeasuring& measuring)
{
    auto& measured = call.program.measured;
    std::erase_if(measured, [&call](const auto& one) { return !call.model().file(one.first); });
    measured[file.id] = {file.pages, measuring.results};
}

std::shared_ptr<RungBuilder> builderFor(const Call& call, const OpenFile& file)
{
    const AppModel& model = call.model();
    const auto builder =
        std::make_shared<RungBuilder>(model.engine(), buildPlan(model.stamps, file.pages, file.password));
    const auto measured = call.program.measured.find(file.id);
    if (measured != call.program.measured.end() && measured->second.pages == file.pages.value())
        for (const auto& [choice, data] : measured->second.results)
            builder->keep(Compression::rung(choice), data);
    return builder;
}

QCoro::Task<> measure(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const auto measuring = std::make_shared<CompressMeasuring>(call->model(), file);
    const std::stop_callback onStop(call->task.get_token(), [measuring] { measuring->stop(); });
    QCoro::Task<> running = measuring->measure();
    co_await running;
    const CompressMeasuring::Results results = measuring->results;
    for (const auto& [name, choice] : choices)
        call->tell(name, results.contains(choice) ? QJsonValue(results.at(choice).size()) : QJsonValue());
    call->tell("mostlyTextNote", orNull(measuring->mostlyTextNote()));
    call->reply.error = orNull(measuring->errorText.value());
    if (results.size() == choices.size() && call->reply.error.isNull())
        keepMeasured(*call, *file, *measuring);
    else if (call->reply.error.isNull())
        call->reply.outcome = Outcome::Cancelled;
}

QCoro::Task<Compression::Fit> made(Wanted wanted, std::shared_ptr<RungBuilder> builder, std::stop_token stop)
{
    const Compression::Build build = [builder, stop](Compression::Rung rung) {
        return RungBuilder::build(builder, rung, stop);
    };
    if (wanted.limit) {
        QCoro::Task<Compression::Fit> fitting = Compression::fit(qint64(*wanted.limit), build, stop);
        Compression::Fit fit = co_await fitting;
        co_return fit;
    }
    QCoro::Task<QByteArray> building = build(wanted.rung);
    const QByteArray data = co_await building;
    co_return {data, true, wanted.rung && wanted.rung->pagesAsPictures};
}

QCoro::Task<> makeAndSave(CallPtr call, OpenFilePtr file, Wanted wanted)
{
    const std::shared_ptr<RungBuilder> builder = builderFor(*call, *file);
    Compression::Fit fit;
    try {
        QCoro::Task<Compression::Fit> making = made(wanted, builder, call->task.get_token());
        fit = co_await making;
    } catch (const Cancelled&) {
        call->reply.outcome = Outcome::Cancelled;
    } catch (const EngineError& error) {
        call->reply.outcome = Outcome::Failed;
        call->reply.error = error.text();
    }
    spawn(call->model().engine().forgetPictures());
    call->tell("builds", builder->builds());
    if (call->reply.outcome)
        co_return;
    call->tell("reached", wanted.limit ? QJsonValue(fit.reached) : QJsonValue());
    call->tell("pagesAsPictures", fit.pagesAsPictures);
    QCoro::Task<> saving = call->model().save(fit.data, compressedName(*file, fit.data.size()), file->url);
    co_await saving;
}

QCoro::Task<> compress(CallPtr call)
{
    return makeAndSave(call, call->file(), wantedOf(call->request));
}

} // namespace

Verbs compressVerbs()
{
    return {{"measure", measure}, {"compress", job(compress)}};
}

} // namespace folvane::driver
