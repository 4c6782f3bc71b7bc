#include "tools/exportImages/exporting.h"

#include "documents/buildPlans.h"
#include "engine/PDFEngine.h"
#include "platform/desktop/Preferences.h"
#include "tools/exportImages/PicturesBox.h"

#include <utility>

namespace folvane {

namespace {

const QString jpegKey = QStringLiteral("export.jpeg");
const QString dpiKey = QStringLiteral("export.dpi");

// Each picture is asked for once, and then its memory is free for others.
QCoro::Task<QByteArray> picture(std::shared_ptr<PicturesBox> box, PDFEngine* engine, BuildPlan plan,
                                ExportSettings settings, int index, std::stop_token stop)
{
    if (!box->pictures) {
        QCoro::Task<QList<QByteArray>> making = engine->pictures(plan, settings.dpi, settings.jpeg, stop);
        box->pictures = co_await making;
    }
    co_return std::exchange((*box->pictures)[index], QByteArray());
}

} // namespace

ExportSettings ExportSettings::read(const Preferences& preferences)
{
    const ExportSettings otherwise;
    const int dpi = preferences.value(dpiKey, otherwise.dpi).toInt();
    return {.jpeg = preferences.value(jpegKey, otherwise.jpeg).toBool(),
            .dpi = dpi == 100 || dpi == 300 ? dpi : otherwise.dpi};
}

void ExportSettings::write(Preferences& preferences) const
{
    preferences.setValue(jpegKey, jpeg);
    preferences.setValue(dpiKey, dpi);
}

QCoro::Task<> exportImages(AppModel& model, const OpenFile& file, const ExportSettings& settings)
{
    const BuildPlan plan = buildPlan(model.stamps, file.selectedPages());
    QList<FileName> names;
    for (const int position : file.selectedPositions())
        names.append({nameWithTail(file.name, u' ' + AppModel::tr("page %1").arg(position)),
                      settings.jpeg ? QStringLiteral("jpg") : QStringLiteral("png")});
    const auto make = [box = std::make_shared<PicturesBox>(), engine = &model.engine(), plan, settings,
                       kept = model.keepSources(plan.pages)](int index, std::stop_token stop) {
        return picture(box, engine, plan, settings, index, stop);
    };
    return model.writeFiles(names, file.url, AppModel::tr("Export Here"), AppModel::tr("Exporting…"), make);
}

} // namespace folvane
