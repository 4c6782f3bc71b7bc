#include "tools/compress/CompressMeasuring.h"

#include "documents/buildPlans.h"
#include "documents/suggestedNames.h"
#include "engine/EngineError.h"
#include "engine/PDFEngine.h"
#include "platform/desktop/Preferences.h"
#include "platform/tasks/Cancelled.h"
#include "platform/tasks/spawn.h"
#include "platform/texts/localeTexts.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>

namespace folvane {

using Compression::Choice;

namespace {

constexpr auto limitKey = "compress.targetBytes";
constexpr qint64 usualLimit = 1'000'000;
constexpr double mostlyTextShare = 0.85;

int storedLimitIndex(const Preferences& preferences)
{
    const qint64 stored = preferences.value(QLatin1String(limitKey)).toLongLong();
    const qint64 wanted = stored > 0 ? stored : usualLimit;
    const auto nearest = std::ranges::min_element(
        Compression::limits, {}, [wanted](qint64 limit) { return std::abs(limit - wanted); });
    return int(nearest - Compression::limits.begin());
}

std::shared_ptr<RungBuilder> builderOf(const AppModel& model, const OpenFile& file)
{
    return std::make_shared<RungBuilder>(model.engine(), buildPlan(model.stamps, file.pages, file.password));
}

} // namespace

QString compressedName(const OpenFile& file, qint64 bytes)
{
    return suggestedName(file.name, byteCount(bytes));
}

CompressMeasuring::CompressMeasuring(AppModel& model, OpenFilePtr file)
    : limitIndex(storedLimitIndex(model.services().preferences)),
      m_model(model),
      m_file(std::move(file)),
      m_builder(builderOf(model, *m_file))
{
    m_notifiers.push_back(choice.addNotifier([this] { refit(); }));
    m_notifiers.push_back(limitIndex.addNotifier([this] {
        storeLimit();
        refit();
    }));
    m_notifiers.push_back(m_file->pages.addNotifier([this] { restart(); }));
}

CompressMeasuring::~CompressMeasuring()
{
    stop();
    spawn(m_model.engine().forgetPictures());
}

void CompressMeasuring::stop()
{
    m_measuring.request_stop();
    m_fitting.request_stop();
}

void CompressMeasuring::start()
{
    m_started = true;
    spawn(measure());
    refit();
}

// A turn that was asked for just before lands only now: what was measured until then is another document's.
void CompressMeasuring::restart()
{
    stop();
    m_builder = builderOf(m_model, *m_file);
    results = Results();
    if (m_started)
        start();
}

QCoro::Task<> CompressMeasuring::measure()
{
    m_measuring = std::stop_source();
    const Job building = [this](std::stop_token stop) { return buildAll(stop); };
    return tellFailure(building, m_measuring.get_token());
}

QCoro::Task<> CompressMeasuring::buildAll(std::stop_token stop)
{
    const std::shared_ptr<RungBuilder> builder = m_builder;
    for (const Choice measured : {Choice::Original, Choice::Medium, Choice::Small}) {
        QCoro::Task<QByteArray> building = RungBuilder::build(builder, Compression::rung(measured), stop);
        const QByteArray data = co_await building;
        throwIfStopped(stop);
        Results more = results;
        more[measured] = data;
        results = more;
    }
}

void CompressMeasuring::refit()
{
    m_fitting.request_stop();
    if (!m_started || choice != Choice::UpTo)
        return;
    m_fitting = std::stop_source();
    fit = std::nullopt;
    const qint64 limit = Compression::limits[size_t(limitIndex.value())];
    const Job fitting = [this, limit](std::stop_token stop) { return search(limit, stop); };
    spawn(tellFailure(fitting, m_fitting.get_token()));
}

QCoro::Task<> CompressMeasuring::search(qint64 limit, std::stop_token stop)
{
    const Compression::Build build = [builder = m_builder, stop](Compression::Rung rung) {
        return RungBuilder::build(builder, rung, stop);
    };
    QCoro::Task<Compression::Fit> fitting = Compression::fit(limit, build, stop);
    const Compression::Fit found = co_await fitting;
    throwIfStopped(stop);
    fit = found;
}

// The work may outlive this, but then it was stopped.
QCoro::Task<> CompressMeasuring::tellFailure(Job work, std::stop_token stop)
{
    const QString otherwise = EngineError(EngineError::Kind::WriteFailed).text();
    const std::optional<QString> failure = co_await failureOf(work, stop, otherwise);
    if (failure && !stop.stop_requested())
        errorText = failure;
}

void CompressMeasuring::storeLimit()
{
    m_model.services().preferences.setValue(QLatin1String(limitKey),
                                            Compression::limits[size_t(limitIndex.value())]);
}

std::optional<QByteArray> CompressMeasuring::chosenData() const
{
    if (choice == Choice::UpTo)
        return fit.value() ? std::optional(fit.value()->data) : std::nullopt;
    const Results& all = results.value();
    const auto found = all.find(choice);
    return found == all.end() ? std::nullopt : std::optional(found->second);
}

std::optional<QString> CompressMeasuring::mostlyTextNote() const
{
    const Results& all = results.value();
    const auto original = all.find(Choice::Original);
    const auto small = all.find(Choice::Small);
    if (original == all.end() || small == all.end())
        return std::nullopt;
    if (double(original->second.size()) * mostlyTextShare >= double(small->second.size()))
        return std::nullopt;
    return QCoreApplication::translate("CompressSheet",
                                       "Pictures in this PDF can't get much smaller while it keeps its text. "
                                       "Up to N MB can turn the pages into pictures when that's the only way "
                                       "to fit.");
}

} // namespace folvane
