#pragma once

#include <SplashOutputDev.h>

#include <vector>

namespace folvane::pdf {

/// The library's device for bitmaps, which leaves out images that would take too much memory: the library makes a bitmap
/// of each as large as it would be if all of it were on the page, holds whole rows of it, and decodes JPEG in several
/// scans as a whole.
class BoundedImages : public SplashOutputDev {
public:
    using SplashOutputDev::SplashOutputDev;

    void drawImageMask(GfxState* state, Object* ref, Stream* stream, int width, int height, bool invert,
                       bool interpolate, bool isInline) override;
    void setSoftMaskFromImageMask(GfxState* state, Object* ref, Stream* stream, int width, int height,
                                  bool invert, bool isInline, double* baseMatrix) override;
    void unsetSoftMaskFromImageMask(GfxState* state, double* baseMatrix) override;
    void drawImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                   GfxImageColorMap* colours, bool interpolate, const int* colourKey, bool isInline) override;
    void drawMaskedImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                         GfxImageColorMap* colours, bool interpolate, Stream* mask, int maskWidth,
                         int maskHeight, bool maskInvert, bool maskInterpolate) override;
    void drawSoftMaskedImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                             GfxImageColorMap* colours, bool interpolate, Stream* mask, int maskWidth,
                             int maskHeight, GfxImageColorMap* maskColours, bool maskInterpolate) override;

private:
    std::vector<bool> m_softMasks; ///< of those in one another, whether the library has it
};

} // namespace folvane::pdf
