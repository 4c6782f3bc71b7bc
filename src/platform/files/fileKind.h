#pragma once

#include <QStringList>
#include <QUrl>

namespace folvane {

enum class FileKind { Pdf, Picture, Other };

/// Told by the lower-cased extension alone; the file need not exist.
FileKind fileKind(const QUrl& url);

/// Lower-cased extensions of the pictures that decodePicture() reads, without dots.
QStringList pictureExtensions();

} // namespace folvane
