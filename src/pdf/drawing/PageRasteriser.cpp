#include "pdf/drawing/PageRasteriser.h"

#include "pdf/drawing/DrawingDevice.h"
#include "pdf/drawing/DrawingInput.h"

// Poppler's core (pkg-config module "poppler", private headers) and not its Qt face: that one makes a new
// output device for each page and so loads every font again, which doubles the time of a small picture of a
// text page.
#include <Error.h>
#include <GfxState.h>
#include <GlobalParams.h>
#include <PDFDoc.h>
#include <Page.h>
#include <Stream.h>
#include <splash/SplashBitmap.h>

#include <cmath>

namespace folvane::pdf {

namespace {

constexpr qint64 bitmapLimit = qint64(1) << 30; // bytes
constexpr qint64 bytesOfAPixel = 16;            // of the page, with some transparent groups in one another

void prepareLibrary()
{
    static const bool prepared = [] {
        globalParams = std::make_unique<GlobalParams>();
        setErrorCallback([](ErrorCategory, Goffset, const char*) {}); // it would write to standard error
        // The first graphics state makes the colour profiles that all share, without a lock: here no other thread draws yet.
        const PDFRectangle anyBox(0, 0, 1, 1);
        const GfxState first(72, 72, &anyBox, 0, false);
        return GfxState::sRGBProfile != nullptr;
    }();
    Q_UNUSED(prepared);
}

bool fits(QSize pixels)
{
    return !pixels.isEmpty() && qint64(pixels.width()) * pixels.height() <= bitmapLimit / 4;
}

/// Degrees clockwise, 0 to 270, at which the page is shown. A rotation that is no quarter counts as none.
int shownRotation(const Page& page, int turn)
{
    const int own = page.getRotate() % 90 == 0 ? page.getRotate() : 0;
    return ((own + turn) % 360 + 360) % 360;
}

/// Points, as shown.
QSizeF shownSize(const Page& page, int rotation)
{
    const QSizeF size(page.getCropWidth(), page.getCropHeight());
    return rotation % 180 == 0 ? size : size.transposed();
}

/// Hands the pixels over without copying them.
QImage asImage(std::unique_ptr<SplashBitmap> bitmap)
{
    const QSize size(bitmap->getWidth(), bitmap->getHeight());
    const int bytesPerLine = bitmap->getRowSize();
    unsigned char* pixels = bitmap->takeData();
    if (!pixels)
        return {};
    return QImage(pixels, size.width(), size.height(), bytesPerLine, QImage::Format_RGB888, &gfree, pixels);
}

} // namespace

class PageRasteriser::Library {
public:
    explicit Library(DrawingInput& input) : m_document(input.newStream())
    {
        if (m_document.isOk())
            m_device.startDoc(&m_document);
    }

    bool isReadable() { return m_document.isOk(); }
    int pageCount() { return m_document.getNumPages(); }
    QImage draw(int index, QSize pixels, int turn, DrawingBudget& budget);

private:
    static inline SplashColor s_white = {255, 255, 255};

    PDFDoc m_document; // owns its stream
    DrawingDevice m_device = DrawingDevice(s_white);
};

QImage PageRasteriser::Library::draw(int index, QSize pixels, int turn, DrawingBudget& budget)
{
    Page* page = m_document.getPage(index + 1);
    if (!page)
        return {};
    const int rotation = shownRotation(*page, turn);
    const QSizeF points = shownSize(*page, rotation);
    const double across = 72 * pixels.width() / points.width(); // pixels per inch
    const double down = 72 * pixels.height() / points.height();
    if (!std::isfinite(across) || !std::isfinite(down))
        return {};
    m_device.draw(m_document, *page, across, down, rotation - page->getRotate(), pixels, budget);
    const QImage image = asImage(std::unique_ptr<SplashBitmap>(m_device.takeBitmap()));
    return image.size() == pixels && !budget.isOver() ? image : QImage();
}

PageRasteriser::PageRasteriser(std::shared_ptr<DrawingInput> input) : m_input(std::move(input)) {}

PageRasteriser::~PageRasteriser() = default;

std::unique_ptr<PageRasteriser> PageRasteriser::open(std::shared_ptr<const SourceFile> file,
                                                     const std::stop_token& stop)
{
    return open(std::make_shared<DrawingInput>(std::move(file)), stop);
}

std::unique_ptr<PageRasteriser> PageRasteriser::open(QByteArray bytes, const std::stop_token& stop)
{
    return open(std::make_shared<DrawingInput>(std::move(bytes)), stop);
}

std::unique_ptr<PageRasteriser> PageRasteriser::open(std::shared_ptr<DrawingInput> input,
                                                     const std::stop_token& stop)
{
    std::unique_ptr<PageRasteriser> rasteriser(new PageRasteriser(std::move(input)));
    return rasteriser->openLibrary(stop) ? std::move(rasteriser) : nullptr;
}

bool PageRasteriser::openLibrary(const std::stop_token& stop)
{
    prepareLibrary();
    DrawingBudget budget(DrawingBudget::ofOpening, stop);
    const DrawingInput::Watch watch(*m_input, budget);
    m_library = std::make_unique<Library>(*m_input);
    m_pageCount = m_library->isReadable() ? m_library->pageCount() : 0;
    if (!m_library->isReadable() || m_input->ranDry())
        m_library.reset();
    return m_library != nullptr;
}

QImage PageRasteriser::draw(int index, QSize pixels, int turn, std::stop_token stop)
{
    DrawingBudget budget(DrawingBudget::ofPicture, std::move(stop));
    return draw(index, pixels, turn, budget);
}

QImage PageRasteriser::draw(int index, QSize pixels, int turn, DrawingBudget& budget)
{
    if (index < 0 || index >= m_pageCount || !fits(pixels) || budget.isOver())
        return {};
    if (!m_library && !openLibrary(budget.stop()))
        return {};
    budget.allowMemory(bytesOfAPixel * pixels.width() * pixels.height());
    const DrawingInput::Watch watch(*m_input, budget);
    QImage image = m_library->draw(index, pixels, turn, budget);
    if (m_input->ranDry())
        m_library.reset();
    return m_input->isUnchanged() ? image : QImage();
}

} // namespace folvane::pdf
