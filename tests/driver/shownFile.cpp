#include "shownFile.h"

namespace folvane::driver {

QJsonValue placeOf(const AppModel& model, const QUuid& file)
{
    const QList<OpenFilePtr> files = model.files.value();
    for (qsizetype place = 0; place < files.size(); ++place)
        if (files[place]->id == file)
            return place;
    return QJsonValue::Null;
}

QJsonValue shownFile(const AppModel& model)
{
    const auto destination = model.destination.value();
    return destination && destination->isFile() ? placeOf(model, destination->fileID()) : QJsonValue::Null;
}

} // namespace folvane::driver
