#pragma once

#include <QByteArrayView>

namespace folvane {

enum class PictureFormat { Unknown, Jpeg, Png, Gif, Bmp, WebP, Tiff, Icns, Ico, Pnm, Heif, Svg, Gzip };

/// Told by the signature at the start of the content.
PictureFormat pictureFormat(QByteArrayView bytes);

} // namespace folvane
