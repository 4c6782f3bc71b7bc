#pragma once

#include <QUrl>

namespace folvane {

/// A PDF of pages that are each filled by a photo, several hundred KB large.
QUrl putPhotos(const QString& path, int pages);
/// A PDF of one page with a drawing that takes more than 300 KB however it is packed.
QUrl putHeavyVectors(const QString& path);

} // namespace folvane
