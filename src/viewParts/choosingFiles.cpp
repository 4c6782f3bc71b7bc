#include "viewParts/choosingFiles.h"

#include <QPointer>

namespace folvane {

QCoro::Task<> chooseFilesAnd(AppModel& model, UseFiles use, bool multiple, QList<ContentType> types)
{
    const QPointer<AppModel> alive(&model);
    QCoro::Task<QList<QUrl>> choosing = model.chooseFiles(multiple, types);
    const QList<QUrl> urls = co_await choosing;
    if (!alive || urls.isEmpty())
        co_return;
    QCoro::Task<> work = use(*alive, urls);
    co_await work;
}

} // namespace folvane
