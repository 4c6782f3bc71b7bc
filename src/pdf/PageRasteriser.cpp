#include "pdf/PageRasteriser.h"

#include "pdf/BoundedImages.h"

// Poppler's core (pkg-config module "poppler", private headers) and not its Qt face: that one makes a new
// output device for each page and so loads every font again, which doubles the time of a small picture of a
// text page.
#include <Error.h>
#include <GlobalParams.h>
#include <PDFDoc.h>
#include <Page.h>
#include <Stream.h>
#include <splash/SplashBitmap.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace folvane::pdf {

namespace {

constexpr qint64 bitmapLimit = qint64(1) << 30; // bytes

/// Reads a held source by position; each stream has a position of its own.
class SourceStream final : public BaseSeekInputStream {
public:
    SourceStream(std::shared_ptr<const SourceFile> file, Goffset from, bool limited, Goffset size,
                 Object&& dict)
        : BaseSeekInputStream(from, limited, size, std::move(dict)), m_file(std::move(file))
    {
    }
    ~SourceStream() override { close(); }

    BaseStream* copy() override { return new SourceStream(m_file, start, limited, length, dict.copy()); }

    Stream* makeSubStream(Goffset from, bool limitedToSize, Goffset size, Object&& ofStream) override
    {
        return new SourceStream(m_file, from, limitedToSize, size, std::move(ofStream));
    }

private:
    Goffset currentPos() const override { return m_position; }
    void setCurrentPos(Goffset position) override { m_position = position; }

    /// Poppler asks for a kilobyte at a time; the file is asked for more at once.
    Goffset read(char* to, Goffset size) override
    {
        Goffset into = m_position - m_blockStart;
        if (into < 0 || into >= static_cast<Goffset>(m_block.size())) {
            m_block.resize(blockSize);
            m_blockStart = m_position;
            m_block.resize(static_cast<size_t>(
                std::max<qint64>(m_file->read(m_position, m_block.data(), blockSize), 0)));
            into = 0;
        }
        const Goffset got = std::min(size, static_cast<Goffset>(m_block.size()) - into);
        std::copy_n(m_block.data() + into, got, to);
        m_position += got;
        return got;
    }

    static constexpr qint64 blockSize = 16 * 1024;

    std::shared_ptr<const SourceFile> m_file;
    Goffset m_position = 0;
    Goffset m_blockStart = 0;
    std::vector<char> m_block;
};

void prepareLibrary()
{
    static const bool prepared = [] {
        globalParams = std::make_unique<GlobalParams>();
        setErrorCallback([](ErrorCategory, Goffset, const char*) {}); // it would write to standard error
        return true;
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

bool asksToStop(void* stop)
{
    return static_cast<std::stop_token*>(stop)->stop_requested();
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
    explicit Library(std::shared_ptr<const SourceFile> file)
        : m_file(std::move(file)),
          m_document(new SourceStream(m_file, 0, false, m_file->size(), Object(objNull)))
    {
        startDevice();
    }

    explicit Library(QByteArray bytes)
        : m_bytes(std::move(bytes)),
          m_document(new MemStream(m_bytes.constData(), 0, m_bytes.size(), Object(objNull)))
    {
        startDevice();
    }

    bool isReadable() { return m_document.isOk(); }
    bool isUnchanged() const { return !m_file || m_file->unchanged(); }
    int pageCount() { return m_document.getNumPages(); }
    QImage draw(int index, QSize pixels, int turn, std::stop_token stop);

private:
    void startDevice();

    static inline SplashColor s_white = {255, 255, 255};

    const QByteArray m_bytes;
    const std::shared_ptr<const SourceFile> m_file;
    PDFDoc m_document; // owns its stream, which reads from the two above
    BoundedImages m_device = BoundedImages(splashModeRGB8, 4, false, s_white);
};

void PageRasteriser::Library::startDevice()
{
    m_device.setFontAntialias(true);
    m_device.setVectorAntialias(true);
    m_device.setEnableFreeType(true);
    m_device.setFreeTypeHinting(false, false);
    if (m_document.isOk())
        m_device.startDoc(&m_document);
}

QImage PageRasteriser::Library::draw(int index, QSize pixels, int turn, std::stop_token stop)
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
    page->displaySlice(&m_device, across, down, rotation - page->getRotate(), false, true, 0, 0,
                       pixels.width(), pixels.height(), false, &asksToStop, &stop);
    if (stop.stop_requested() || !isUnchanged())
        return {};
    const QImage image = asImage(std::unique_ptr<SplashBitmap>(m_device.takeBitmap()));
    return image.size() == pixels ? image : QImage();
}

PageRasteriser::PageRasteriser(std::unique_ptr<Library> library) : m_library(std::move(library)) {}

PageRasteriser::~PageRasteriser() = default;

std::unique_ptr<PageRasteriser> PageRasteriser::open(std::shared_ptr<const SourceFile> file)
{
    prepareLibrary();
    auto library = std::make_unique<Library>(std::move(file));
    return library->isReadable() ? std::unique_ptr<PageRasteriser>(new PageRasteriser(std::move(library)))
                                 : nullptr;
}

std::unique_ptr<PageRasteriser> PageRasteriser::open(QByteArray bytes)
{
    prepareLibrary();
    auto library = std::make_unique<Library>(std::move(bytes));
    return library->isReadable() ? std::unique_ptr<PageRasteriser>(new PageRasteriser(std::move(library)))
                                 : nullptr;
}

int PageRasteriser::pageCount() const
{
    return m_library->pageCount();
}

QImage PageRasteriser::draw(int index, QSize pixels, int turn, std::stop_token stop)
{
    if (index < 0 || index >= pageCount() || !fits(pixels) || stop.stop_requested())
        return {};
    return m_library->draw(index, pixels, turn, stop);
}

} // namespace folvane::pdf
