#pragma once

#include "documents/AppModel.h"

#include <QJsonValue>

namespace folvane::driver {

/// The 0-based place of a document in the model's list; null when it is not there.
QJsonValue placeOf(const AppModel& model, const QUuid& file);
/// The place of the document that is shown; null when none is.
QJsonValue shownFile(const AppModel& model);

} // namespace folvane::driver
