#include "pdf/drawing/DrawingDevice.h"

#include "pdf/drawing/DrawingBudget.h"

#include <Annot.h>
#include <Gfx.h>
#include <Page.h>

#include <QScopedValueRollback>

#include <memory>

namespace folvane::pdf {

DrawingDevice::DrawingDevice(SplashColorPtr paper) : SplashOutputDev(splashModeRGB8, 4, false, paper)
{
    setFontAntialias(true);
    setVectorAntialias(true);
    setEnableFreeType(true);
    setFreeTypeHinting(false, false);
}

// As Page::displaySlice() does it, which neither measures the contents nor ends at the first annotation.
void DrawingDevice::draw(PDFDoc& document, Page& page, double across, double down, int turn, QSize pixels,
                         DrawingBudget& budget)
{
    Drawing drawing{document, budget};
    const QScopedValueRollback underWay(m_drawing, &drawing);
    const std::unique_ptr<Gfx> gfx(page.createGfx(this, across, down, turn, false, true, 0, 0, pixels.width(),
                                                  pixels.height(), false, &mustEnd, &budget));
    Object contents = drawing.gauge.measured(page.getContents(), document.getXRef());
    if (!contents.isNull()) {
        gfx->saveState();
        gfx->display(&contents);
        gfx->restoreState();
    }
    for (Annot* annotation : page.getAnnots()->getAnnots()) {
        if (budget.isOver())
            break;
        annotation->draw(gfx.get(), false);
    }
}

bool DrawingDevice::mustEnd(void* budget)
{
    return static_cast<DrawingBudget*>(budget)->isOver();
}

bool DrawingDevice::isOverNowAndThen()
{
    constexpr unsigned calls = 64;
    if (++m_drawing->calls % calls == 0)
        m_drawing->budget.isOver();
    return m_drawing->budget.end() != DrawingBudget::End::NotYet;
}

void DrawingDevice::saveState(GfxState* state)
{
    if (++m_drawing->states <= mostStates)
        SplashOutputDev::saveState(state);
    else
        m_drawing->budget.endAsTooLarge();
}

void DrawingDevice::restoreState(GfxState* state)
{
    if (m_drawing->states-- <= mostStates)
        SplashOutputDev::restoreState(state);
}

void DrawingDevice::beginForm(Ref form)
{
    if (form == Ref::INVALID() || !m_drawing->forms.insert(form).second)
        return;
    Object stream = m_drawing->document.getXRef()->fetch(form);
    if (stream.isStream())
        m_drawing->gauge.measure(stream);
}

} // namespace folvane::pdf
