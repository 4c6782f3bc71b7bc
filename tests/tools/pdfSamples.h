#pragma once

#include <QUrl>

namespace folvane {

/// A PDF of pages that are each filled by a photo, several hundred KB large.
QUrl putPhotos(const QString& path, int pages);

} // namespace folvane
