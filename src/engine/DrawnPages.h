#pragma once

#include "pdf/PicturePages.h"
#include "pictures/BoundedCache.h"
#include "pictures/PackedSamples.h"

#include <QByteArray>
#include <QSize>

#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <vector>

namespace folvane {

namespace pdf {
class PageRasteriser;
}

/// The pages of one document as pictures of any size. Each is drawn once, with a long side of `fullSide`, and kept for
/// the next picture that is asked for, which is made smaller from it; so a page looks the same at every size. Keeps the
/// document itself, and 448 MB of pages at most. picture() is for any number of threads.
class DrawnPages {
public:
    static constexpr int fullSide = 2000; // pixels

    /// `flat` must need no password. Throws EngineError.
    explicit DrawnPages(QByteArray flat);
    ~DrawnPages();
    Q_DISABLE_COPY_MOVE(DrawnPages)

    int count() const { return static_cast<int>(m_sizes.size()); }
    /// As shown, in points.
    QSizeF displaySize(int page) const { return m_sizes[static_cast<size_t>(page)]; }

    /// The page on white with a long side of so many pixels; in grey when it has no colour. Its JPEG file is empty when
    /// the page cannot be drawn, and soon after a stop.
    pdf::PicturePages::Picture picture(int page, int longSide, int quality, const std::stop_token& stop);

private:
    QSize pixels(int page, int longSide) const;
    using Samples = std::optional<ImageSamples>;

    Samples full(int page, const std::stop_token& stop);
    Samples draw(int page, QSize pixels, const std::stop_token& stop);
    std::unique_ptr<pdf::PageRasteriser> takeRasteriser(const std::stop_token& stop);

    const QByteArray m_flat;
    std::vector<QSizeF> m_sizes;
    BoundedCache<PackedSamples> m_full{448U << 20, WhenFull::NewestLeaves}; // by page
    std::mutex m_mutex;
    std::vector<std::unique_ptr<pdf::PageRasteriser>> m_free; // each keeps its fonts from page to page
};

} // namespace folvane
