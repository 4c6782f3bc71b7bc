#include "pdf/drawing/DrawingBudget.h"
#include "pdf/drawing/DrawingDevice.h"
#include "pdf/drawing/imageBounds.h"

#include <Gfx.h>
#include <splash/Splash.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace folvane::pdf {

namespace {

constexpr qint64 mostTiles = 1 << 27;  // of a pattern: the library takes a second for them, and asks nobody
constexpr double mostDashes = 200'000; // of one stroke: each takes 2.5 KB
constexpr qint64 mostPixels = qint64(1) << 31; // of an image, which take ten seconds
constexpr qint64 bytesOfAPixel = 6;            // as a decoder may hold an image whole
constexpr qint64 mostImageMemory = qint64(1) << 30;

/// The way along the lines of a path, with the control points of curves, in user space.
double lengthOf(const GfxPath& path)
{
    double length = 0;
    for (int i = 0; i < path.getNumSubpaths(); ++i) {
        const GfxSubpath& part = *path.getSubpath(i);
        for (int point = 1; point < part.getNumPoints(); ++point)
            length +=
                std::hypot(part.getX(point) - part.getX(point - 1), part.getY(point) - part.getY(point - 1));
    }
    return length;
}

double dashesAlong(GfxState& state)
{
    double start = 0;
    const std::vector<double>& dash = state.getLineDash(&start);
    const double period = std::accumulate(dash.begin(), dash.end(), 0.0);
    return dash.empty() || !(period > 0) ? 0 : lengthOf(*state.getPath()) / period * double(dash.size());
}

} // namespace

void DrawingDevice::fill(GfxState* state)
{
    if (!isOverNowAndThen())
        SplashOutputDev::fill(state);
}

void DrawingDevice::drawChar(GfxState* state, double x, double y, double dx, double dy, double originX,
                             double originY, CharCode code, int bytes, const Unicode* text, int length)
{
    if (!isOverNowAndThen())
        SplashOutputDev::drawChar(state, x, y, dx, dy, originX, originY, code, bytes, text, length);
}

bool DrawingDevice::beginType3Char(GfxState* state, double x, double y, double dx, double dy, CharCode code,
                                   const Unicode* text, int length)
{
    return isOverNowAndThen() || SplashOutputDev::beginType3Char(state, x, y, dx, dy, code, text, length);
}

// What the device does not draw as a whole, the library would draw tile by tile without asking whether to go on.
bool DrawingDevice::tilingPatternFill(GfxState* state, Gfx* gfx, Catalog* catalogue,
                                      GfxTilingPattern* pattern, const double* matrix, int x0, int y0, int x1,
                                      int y1, double xStep, double yStep)
{
    if ((qint64(x1) - x0) * (qint64(y1) - y0) > mostTiles)
        m_drawing->budget.endAsTooLarge();
    else
        m_drawing->gauge.measure(*pattern->getContentStream());
    if (m_drawing->budget.isOver()
        || SplashOutputDev::tilingPatternFill(state, gfx, catalogue, pattern, matrix, x0, y0, x1, y1, xStep,
                                              yStep))
        return true;
    std::array<double, 6> place;
    std::copy_n(matrix, place.size(), place.begin());
    for (int row = y0; row < y1 && !m_drawing->budget.isOver(); ++row) {
        for (int column = x0; column < x1 && !m_drawing->budget.isOver(); ++column) {
            const double x = column * xStep;
            const double y = row * yStep;
            place[4] = x * matrix[0] + y * matrix[2] + matrix[4];
            place[5] = x * matrix[1] + y * matrix[3] + matrix[5];
            gfx->drawForm(pattern->getContentStream(), pattern->getResDict(), place.data(),
                          pattern->getBBox());
        }
    }
    return true;
}

// Dashes are made along the whole of a path, however little of it lies on the page.
bool DrawingDevice::leaveDashesOut(GfxState* state)
{
    if (dashesAlong(*state) <= mostDashes)
        return false;
    getSplash()->setLineDash({}, 0);
    return true;
}

void DrawingDevice::stroke(GfxState* state)
{
    const bool leftOut = leaveDashesOut(state);
    SplashOutputDev::stroke(state);
    if (leftOut)
        updateLineDash(state);
}

void DrawingDevice::clipToStrokePath(GfxState* state)
{
    const bool leftOut = leaveDashesOut(state);
    SplashOutputDev::clipToStrokePath(state);
    if (leftOut)
        updateLineDash(state);
}

// A page without one of its images would pass for the whole page.
bool DrawingDevice::isFitting(GfxState& state, Stream& stream, int width, int height,
                              GfxImageColorMap* colours, bool isInline)
{
    if (qint64(width) * height > mostPixels || !imageFits(state, stream, width, colours, isInline)) {
        m_drawing->budget.endAsTooLarge();
        return false;
    }
    const qint64 memory = std::min(bytesOfAPixel * width * height, mostImageMemory);
    m_drawing->budget.allowMemory(std::max<qint64>(memory - m_drawing->imageMemory, 0));
    m_drawing->imageMemory = std::max(memory, m_drawing->imageMemory);
    return !isOverNowAndThen();
}

void DrawingDevice::setSoftMaskFromImageMask(GfxState* state, Object* ref, Stream* stream, int width,
                                             int height, bool invert, bool isInline, double* baseMatrix)
{
    m_drawing->softMasks.push_back(isFitting(*state, *stream, width, height, nullptr, isInline));
    if (m_drawing->softMasks.back())
        SplashOutputDev::setSoftMaskFromImageMask(state, ref, stream, width, height, invert, isInline,
                                                  baseMatrix);
}

void DrawingDevice::unsetSoftMaskFromImageMask(GfxState* state, double* baseMatrix)
{
    const bool isSet = m_drawing->softMasks.back();
    m_drawing->softMasks.pop_back();
    if (isSet)
        SplashOutputDev::unsetSoftMaskFromImageMask(state, baseMatrix);
}

void DrawingDevice::drawImageMask(GfxState* state, Object* ref, Stream* stream, int width, int height,
                                  bool invert, bool interpolate, bool isInline)
{
    if (isFitting(*state, *stream, width, height, nullptr, isInline))
        SplashOutputDev::drawImageMask(state, ref, stream, width, height, invert, interpolate, isInline);
}

void DrawingDevice::drawImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                              GfxImageColorMap* colours, bool interpolate, const int* maskColours,
                              bool isInline)
{
    if (isFitting(*state, *stream, width, height, colours, isInline))
        SplashOutputDev::drawImage(state, ref, stream, width, height, colours, interpolate, maskColours,
                                   isInline);
}

void DrawingDevice::drawMaskedImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                                    GfxImageColorMap* colours, bool interpolate, Stream* maskStream,
                                    int maskWidth, int maskHeight, bool maskInvert, bool maskInterpolate)
{
    if (isFitting(*state, *stream, width, height, colours, false)
        && isFitting(*state, *maskStream, maskWidth, maskHeight, nullptr, false))
        SplashOutputDev::drawMaskedImage(state, ref, stream, width, height, colours, interpolate, maskStream,
                                         maskWidth, maskHeight, maskInvert, maskInterpolate);
}

void DrawingDevice::drawSoftMaskedImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                                        GfxImageColorMap* colours, bool interpolate, Stream* maskStream,
                                        int maskWidth, int maskHeight, GfxImageColorMap* maskColours,
                                        bool maskInterpolate)
{
    if (isFitting(*state, *stream, width, height, colours, false)
        && isFitting(*state, *maskStream, maskWidth, maskHeight, maskColours, false))
        SplashOutputDev::drawSoftMaskedImage(state, ref, stream, width, height, colours, interpolate,
                                             maskStream, maskWidth, maskHeight, maskColours, maskInterpolate);
}

} // namespace folvane::pdf
