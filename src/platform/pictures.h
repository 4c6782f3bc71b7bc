#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

namespace folvane {

/// The largest decoded bitmap: a picture above it counts as one that cannot be decoded.
inline constexpr qint64 maxBitmapBytes = qint64(1) << 30;

/// The long side at which vector pictures are drawn, in pixels.
inline constexpr int vectorLongSide = 3508;

/// Called once at start: lets Qt decode pictures up to maxBitmapBytes.
void preparePictureDecoding();

/// A decoded picture: upright, in sRGB, with no colour space attached.
struct Picture {
    /// Format_RGB888, Format_Grayscale8 when every pixel is grey, or Format_RGBA8888 when hasAlpha.
    QImage image;
    bool hasAlpha = false; ///< some pixel is really transparent
};

/// Decodes by the content; the extension only tells packed drawings from other packed files. Of several
/// frames the first, of a HEIC or AVIF file the primary picture. Vector pictures are drawn on a transparent
/// ground, their long side vectorLongSide, and load nothing from outside. Nothing when it cannot be decoded,
/// or not within maxBitmapBytes. A picture that was cut off counts as one that cannot be decoded, but for a
/// JPEG of which at least half is there: its missing part is grey.
std::optional<Picture> decodePicture(const QByteArray& bytes, const QString& extension);

/// Whether an extension is that of a vector picture.
bool isSvg(const QString& extension);

} // namespace folvane
