#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace folvane {

class SourceFile;

/// The long side at which vector pictures are drawn, in pixels.
inline constexpr int vectorLongSide = 3508;

/// Called once at start: lets Qt decode pictures up to maxBitmapBytes.
void preparePictureDecoding();

/// The content of a picture file.
struct PictureBytes {
    PictureBytes(QByteArray content, std::shared_ptr<const SourceFile> from = nullptr)
        : bytes(std::move(content)), file(std::move(from))
    {
    }

    QByteArray bytes;
    std::shared_ptr<const SourceFile>
        file; ///< where the same stands: decoders read it there again, if it is told
};

/// A decoded picture in sRGB, with no colour space attached.
struct Picture {
    /// Format_RGB888, Format_Grayscale8 when every pixel is grey, or Format_RGBA8888 when hasAlpha.
    QImage image;
    bool hasAlpha = false; ///< some pixel is really transparent
    int orientation = 1; ///< EXIF 1 to 8, as which it is to be shown: turning it would take its memory twice
};

/// Decodes by the content; the extension only tells packed drawings from other packed files. Of several
/// frames the first, of a TIFF or icon file the largest, of a HEIC or AVIF file the primary picture. Vector pictures are drawn on a transparent
/// ground, their long side vectorLongSide, and load nothing from outside. Nothing when it cannot be decoded,
/// or not within maxBitmapBytes, and soon after a stop. A picture that was cut off counts as one that cannot be decoded, but for a
/// JPEG of which at least half is there: its missing part is grey. Where a file is decoded the quicker the smaller, the picture may
/// come out smaller than it is, but its long side no shorter than `enough` pixels.
std::optional<Picture> decodePicture(PictureBytes content, const QString& extension,
                                     const std::stop_token& stop = {},
                                     std::optional<int> enough = std::nullopt);

/// Whether an extension is that of a vector picture.
bool isSvg(const QString& extension);

} // namespace folvane
