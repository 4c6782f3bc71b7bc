#include "tools/protect/protecting.h"

#include "documents/buildPlans.h"
#include "documents/suggestedNames.h"

#include <QPointer>

namespace folvane {

namespace {

QCoro::Task<> choosePlaceAndWrite(QPointer<AppModel> model, OpenFilePtr file, BuildPlan plan)
{
    const QString word = plan.password ? AppModel::tr("protected") : AppModel::tr("no password");
    const QString name = suggestedName(file->name, word);
    QCoro::Task<std::optional<QUrl>> choosing = model->chooseSaveURL(name, file->url);
    const std::optional<QUrl> url = co_await choosing;
    if (model && url)
        model->write(plan, *url, AppModel::tr("Saving…"));
}

} // namespace

QCoro::Task<> saveProtectedCopy(AppModel& model, OpenFilePtr file, std::optional<QString> password)
{
    const BuildPlan plan = buildPlan(model.stamps, file->pages, password);
    return choosePlaceAndWrite(&model, file, plan);
}

} // namespace folvane
