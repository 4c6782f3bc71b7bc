#include "pdf/drawing/imageBounds.h"

#include "pictures/jpegSamples.h"

#include <GfxState.h>
#include <Stream.h>

#include <algorithm>
#include <cmath>

namespace folvane::pdf {

namespace {

constexpr double mostScaledBytes = 512 << 20;
constexpr double bytesPerScaledPixel = 4; // with its opacity
constexpr double mostRowBytes = 256 << 20;
constexpr double bytesPerSample = 8; // of a row on its way: as read, as a sample, as sums
constexpr qint64 mostCoefficientBytes = qint64(1) << 30;
constexpr qsizetype leastHeader = 64 * 1024, mostHeader = 4 * 1024 * 1024;

bool fitsScaled(const GfxState& state)
{
    const double* m = state.getCTM();
    const double width = std::max(std::abs(m[0]), std::abs(m[1])) + 2,
                 height = std::max(std::abs(m[2]), std::abs(m[3])) + 2;
    return width * height * bytesPerScaledPixel <= mostScaledBytes; // false for what is no number, too
}

bool rowFits(int width, GfxImageColorMap* colours)
{
    const int samples = colours ? colours->getNumPixelComps() : 1;
    return double(width) * samples * bytesPerSample <= mostRowBytes;
}

/// What the coefficients of a JPEG take, as far as its beginning tells.
qint64 coefficientMemory(Stream& packed, qsizetype headerBytes)
{
    QByteArray header(headerBytes, Qt::Uninitialized);
    packed.reset();
    header.truncate(
        packed.doGetChars(static_cast<int>(headerBytes), reinterpret_cast<unsigned char*>(header.data())));
    JpegStream jpeg(header, std::nullopt);
    if (const std::optional<qint64> memory = jpeg.coefficientMemory())
        return *memory;
    const bool isWhole = header.size() < headerBytes || headerBytes >= mostHeader;
    return isWhole ? 0 : coefficientMemory(packed, 8 * headerBytes);
}

/// Those of the file's own objects can be read again from the start.
bool jpegFits(Stream& stream)
{
    return stream.getKind() != strDCT || !stream.getNextStream()
           || coefficientMemory(*stream.getNextStream(), leastHeader) <= mostCoefficientBytes;
}

} // namespace

bool imageFits(const GfxState& state, Stream& stream, int width, GfxImageColorMap* colours, bool isInline)
{
    return fitsScaled(state) && rowFits(width, colours) && (isInline || jpegFits(stream));
}

} // namespace folvane::pdf
