#pragma once

#include "pdf/drawing/ContentGauge.h"

#include <PDFDoc.h>
#include <SplashOutputDev.h>

#include <QSize>

#include <set>
#include <vector>

namespace folvane::pdf {

class DrawingBudget;

/// The library's device for bitmaps, kept within a budget of time and memory. The library asks between operators of a
/// page whether to go on, but not in patterns, long texts and meshes; and it nests as deep as a page tells it to.
class DrawingDevice final : public SplashOutputDev {
public:
    static constexpr int mostStates = 10'000; ///< in one another

    explicit DrawingDevice(SplashColorPtr paper);

    /// Draws the page with its annotations on a bitmap to be taken, as far as the budget reaches.
    void draw(PDFDoc& document, Page& page, double across, double down, int turn, QSize pixels,
              DrawingBudget& budget);

    void saveState(GfxState* state) override;
    void restoreState(GfxState* state) override;
    void beginForm(Ref form) override;

    // drawingDeviceMarks.cpp
    void fill(GfxState* state) override;
    void stroke(GfxState* state) override;
    void clipToStrokePath(GfxState* state) override;
    bool tilingPatternFill(GfxState* state, Gfx* gfx, Catalog* catalogue, GfxTilingPattern* pattern,
                           const double* matrix, int x0, int y0, int x1, int y1, double xStep,
                           double yStep) override;
    void drawChar(GfxState* state, double x, double y, double dx, double dy, double originX, double originY,
                  CharCode code, int bytes, const Unicode* text, int length) override;
    bool beginType3Char(GfxState* state, double x, double y, double dx, double dy, CharCode code,
                        const Unicode* text, int length) override;
    void setSoftMaskFromImageMask(GfxState* state, Object* ref, Stream* stream, int width, int height,
                                  bool invert, bool isInline, double* baseMatrix) override;
    void unsetSoftMaskFromImageMask(GfxState* state, double* baseMatrix) override;
    void drawImageMask(GfxState* state, Object* ref, Stream* stream, int width, int height, bool invert,
                       bool interpolate, bool isInline) override;
    void drawImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                   GfxImageColorMap* colours, bool interpolate, const int* maskColours,
                   bool isInline) override;
    void drawMaskedImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                         GfxImageColorMap* colours, bool interpolate, Stream* maskStream, int maskWidth,
                         int maskHeight, bool maskInvert, bool maskInterpolate) override;
    void drawSoftMaskedImage(GfxState* state, Object* ref, Stream* stream, int width, int height,
                             GfxImageColorMap* colours, bool interpolate, Stream* maskStream, int maskWidth,
                             int maskHeight, GfxImageColorMap* maskColours, bool maskInterpolate) override;

private:
    /// What one drawing has come to.
    struct Drawing {
        PDFDoc& document;
        DrawingBudget& budget;
        ContentGauge gauge{budget};
        unsigned calls = 0;
        int states = 0;
        qint64 imageMemory = 0; ///< allowed so far
        std::set<Ref> forms = {};
        std::vector<bool> softMasks = {}; ///< of those in one another, whether the library has it
    };

    static bool mustEnd(void* budget);
    bool isOverNowAndThen();
    bool isFitting(GfxState& state, Stream& stream, int width, int height, GfxImageColorMap* colours,
                   bool isInline);
    bool leaveDashesOut(GfxState* state);

    Drawing* m_drawing = nullptr; ///< during draw(), and the library calls at no other time
};

} // namespace folvane::pdf
