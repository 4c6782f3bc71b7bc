#pragma once

#include "documents/AppModel.h"

#include <functional>

namespace folvane {

using UseFiles = std::function<QCoro::Task<>(AppModel&, const QList<QUrl>&)>;

/// Asks for PDFs and pictures, or what of them `types` names, and then does `use` with those chosen. Nothing is done when there
/// are none, or the model has gone meanwhile.
QCoro::Task<> chooseFilesAnd(AppModel& model, UseFiles use, bool multiple = true,
                             QList<ContentType> types = {ContentType::Pdf, ContentType::Image});

} // namespace folvane
