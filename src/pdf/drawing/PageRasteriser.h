#pragma once

#include "pdf/drawing/DrawingBudget.h"
#include "platform/files/SourceFile.h"

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <memory>
#include <stop_token>

namespace folvane::pdf {

class DrawingInput;

/// Draws the pages of one document. One instance is used on one thread only; different instances may work at
/// once. It keeps its fonts between pages, so pages of one document are best drawn by one instance.
class PageRasteriser {
public:
    /// Null when the bytes cannot be read as a document within a minute, or need a password, and when stopped.
    static std::unique_ptr<PageRasteriser> open(std::shared_ptr<const SourceFile> file,
                                                const std::stop_token& stop = {});
    static std::unique_ptr<PageRasteriser> open(QByteArray bytes, const std::stop_token& stop = {});
    ~PageRasteriser();
    Q_DISABLE_COPY_MOVE(PageRasteriser)

    int pageCount() const { return m_pageCount; }

    /// Draws the crop box on opaque white into exactly `pixels`: 8-bit sRGB, Format_RGB888. The page's own
    /// rotation plus `turn` (degrees clockwise, a multiple of 90) decides which side is which. Annotations and
    /// form fields are drawn, hidden layers are not. Null when the page cannot be drawn, when the bitmap would
    /// be above 1 GiB, when the file was changed in place, and soon after the budget is over.
    QImage draw(int index, QSize pixels, int turn, DrawingBudget& budget);
    /// With the budget of a picture.
    QImage draw(int index, QSize pixels, int turn, std::stop_token stop = {});

private:
    class Library;
    explicit PageRasteriser(std::shared_ptr<DrawingInput> input);

    static std::unique_ptr<PageRasteriser> open(std::shared_ptr<DrawingInput> input,
                                                const std::stop_token& stop);
    bool openLibrary(const std::stop_token& stop);

    std::shared_ptr<DrawingInput> m_input;
    std::unique_ptr<Library> m_library; ///< null after a drawing that had to be cut off
    int m_pageCount = 0;
};

} // namespace folvane::pdf
