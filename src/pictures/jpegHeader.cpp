#include "pictures/ImageSamples.h"
#include "pictures/JpegReader.h"
#include "pictures/formats/tiffTags.h"
#include "pictures/jpeg.h"

namespace folvane {

namespace {

/// The last one counts.
int orientationOf(const jpeg_decompress_struct& header)
{
    int orientation = 1;
    for (const jpeg_marker_struct* kept = header.marker_list; kept; kept = kept->next) {
        const QByteArrayView content(kept->data, kept->data_length), marker("Exif\0\0", 6);
        if (kept->marker == JpegErrors::exifMarker && content.startsWith(marker.first(5)))
            orientation = exifOrientation(content.sliced(std::min(marker.size(), content.size())));
    }
    return orientation;
}

// PDF goes by Adobe's marker and takes YCbCr without one; decoders of files go by JFIF first, then by Adobe's
// marker, then by the components' names. Only where all come to the same are the colours safe.
bool colourModelIsAgreed(const jpeg_decompress_struct& header)
{
    if (header.num_components != 3)
        return header.num_components == 1;
    if (header.saw_Adobe_marker)
        return header.Adobe_transform == 1 || (header.Adobe_transform == 0 && !header.saw_JFIF_marker);
    const jpeg_component_info* names = header.comp_info;
    const bool areNumbered =
        names[0].component_id == 1 && names[1].component_id == 2 && names[2].component_id == 3;
    return header.saw_JFIF_marker || areNumbered;
}

} // namespace

std::optional<JpegInfo> inspectJpeg(const QByteArray& bytes)
{
    JpegReader reader(bytes, JpegReader::Tags::Kept);
    if (!bytes.startsWith("\xFF\xD8\xFF") || !reader.hasHeader()
        || pixelCount(reader.size()) > maxImagePixels)
        return std::nullopt;
    const jpeg_decompress_struct& header = reader.codec();
    return JpegInfo{reader.size().width(), reader.size().height(),
                    header.num_components, !header.arith_code && colourModelIsAgreed(header),
                    orientationOf(header), reader.iccProfile()};
}

} // namespace folvane
