#include "pdf/BoundedImages.h"

#include "pdf/jpegSamples.h"

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
    if (jpeg.shape())
        return jpeg.coefficientMemory();
    const bool isWhole = header.size() < headerBytes || headerBytes >= mostHeader;
    return isWhole ? 0 : coefficientMemory(packed, 8 * headerBytes);
}

/// Those of the file's own objects can be read again from the start.
bool jpegFits(Stream& stream)
{
    return stream.getKind() != strDCT || !stream.getNextStream()
           || coefficientMemory(*stream.getNextStream(), leastHeader) <= mostCoefficientBytes;
}

bool fits(const GfxState& state, Stream& stream, int width, GfxImageColorMap* colours, bool isInline)
{
    return fitsScaled(state) && rowFits(width, colours) && (isInline || jpegFits(stream));
}

} // namespace

// What is left out of an inline image must be read past, which the most basic device does.

void BoundedImages::drawImageMask(GfxState* state, Object* ref, Stream* stream, int width, int height,
                                  bool invert, bool interpolate, bool isInline)
{
    if (fits(*state, *stream, width, nullptr, isInline))
        SplashOutputDev::drawImageMask(state, ref, stream, width, height, invert, interpolate, isInline);
    else
        OutputDev::drawImageMask(state, ref, stream, width, height, invert, interpolate, isInline);
}

void BoundedImages::setSoftMaskFromImageMask(GfxState* state, Object* ref, Stream* stream, int width,
                                             int height, bool invert, bool isInline, double* baseMatrix)
{
    m_softMasks.push_back(fits(*state, *stream, width, nullptr, isInline));
    if (m_softMasks.back())
        SplashOutputDev::setSoftMaskFromImageMask(state, ref, stream, width, height, invert, isInline,
                                                  baseMatrix);
}

void BoundedImages::unsetSoftMaskFromImageMask(GfxState* state, double* baseMatrix)
{
    const bool isSet = m_softMasks.back();
    m_softMasks.pop_back();
    if (isSet)
        SplashOutputDev::unsetSoftMaskFromImageMask(state, baseMatrix);
}

void BoundedImages::drawImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                              GfxImageColorMap* colours, bool interpolate, const int* colourKey,
                              bool isInline)
{
    if (fits(*state, *stream, width, colours, isInline))
        SplashOutputDev::drawImage(state, ref, stream, width, height, colours, interpolate, colourKey,
                                   isInline);
    else
        OutputDev::drawImage(state, ref, stream, width, height, colours, interpolate, colourKey, isInline);
}

void BoundedImages::drawMaskedImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                                    GfxImageColorMap* colours, bool interpolate, Stream* mask, int maskWidth,
                                    int maskHeight, bool maskInvert, bool maskInterpolate)
{
    if (fits(*state, *stream, width, colours, false) && fits(*state, *mask, maskWidth, nullptr, false))
        SplashOutputDev::drawMaskedImage(state, ref, stream, width, height, colours, interpolate, mask,
                                         maskWidth, maskHeight, maskInvert, maskInterpolate);
}

void BoundedImages::drawSoftMaskedImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                                        GfxImageColorMap* colours, bool interpolate, Stream* mask,
                                        int maskWidth, int maskHeight, GfxImageColorMap* maskColours,
                                        bool maskInterpolate)
{
    if (fits(*state, *stream, width, colours, false) && fits(*state, *mask, maskWidth, maskColours, false))
        SplashOutputDev::drawSoftMaskedImage(state, ref, stream, width, height, colours, interpolate, mask,
                                             maskWidth, maskHeight, maskColours, maskInterpolate);
}

} // namespace folvane::pdf
