#pragma once

#include "pictures/formats/InkSamples.h"

#include <QImage>

#include <optional>
#include <stop_token>

// JPEG files; a JPEG within a PDF is read by JpegStream.

namespace folvane {

/// What the header of a JPEG file says.
struct JpegInfo {
    int width = 0;
    int height = 0;
    int components = 0;
    /// It decodes to RGB or grey, in the same colours, in every PDF reader: Huffman coding, one component, or three whose
    /// colour model all readers agree on.
    bool isRgbOrGrey = false;
    int orientation = 1; ///< EXIF 1 to 8; 1 if there is none or a bad one
    QByteArray iccProfile;
};

/// Reads the header only. Nothing when the bytes are no JPEG that can be decoded, or its size is beyond maxImagePixels.
std::optional<JpegInfo> inspectJpeg(const QByteArray& bytes);

/// Decodes at scaleNumerator (1 to 8) eighths of the size, rounded up, to Format_RGB888 or Format_Grayscale8;
/// neither turned nor colour-converted. Nothing when it is damaged beyond use, has other than one or three
/// components, or takes too much memory; and soon after a stop.
std::optional<QImage> decodeJpeg(const QByteArray& bytes, int scaleNumerator,
                                 const std::stop_token& stop = {});

/// As decodeJpeg(), for four components (CMYK or YCCK).
std::optional<InkSamples> decodeCmykJpeg(const QByteArray& bytes, int scaleNumerator,
                                         const std::stop_token& stop = {});

} // namespace folvane
