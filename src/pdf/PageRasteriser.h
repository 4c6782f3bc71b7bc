#pragma once

#include "platform/SourceFile.h"

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <memory>
#include <stop_token>

namespace folvane::pdf {

/// Draws the pages of one document. One instance is used on one thread only; different instances may work at
/// once. It keeps its fonts between pages, so pages of one document are best drawn by one instance.
class PageRasteriser {
public:
    /// Null when the bytes cannot be read as a document, or need a password.
    static std::unique_ptr<PageRasteriser> open(std::shared_ptr<const SourceFile> file);
    static std::unique_ptr<PageRasteriser> open(QByteArray bytes);
    ~PageRasteriser();
    Q_DISABLE_COPY_MOVE(PageRasteriser)

    int pageCount() const;

    /// Draws the crop box on opaque white into exactly `pixels`: 8-bit sRGB, Format_RGB888. The page's own
    /// rotation plus `turn` (degrees clockwise, a multiple of 90) decides which side is which. Annotations and
    /// form fields are drawn, hidden layers are not. Null when the page cannot be drawn, when the bitmap would
    /// be above 1 GiB, when the file was changed in place, and soon after `stop` was asked.
    QImage draw(int index, QSize pixels, int turn, std::stop_token stop = {});

private:
    class Library;
    explicit PageRasteriser(std::unique_ptr<Library> library);

    std::unique_ptr<Library> m_library;
};

} // namespace folvane::pdf
