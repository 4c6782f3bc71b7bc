#pragma once

#include "pdf/drawing/DrawingBudget.h"

#include <QImage>
#include <QSize>

#include <chrono>
#include <map>
#include <memory>
#include <stop_token>

namespace folvane::pdf {

class Document;
class PageRasteriser;

/// Draws the pages of an open document: from the file itself where nothing was decrypted or repaired, else from an
/// unlocked copy in memory, which it makes once. For one thread at a time.
class PageDrawer {
public:
    /// The document must outlive it.
    explicit PageDrawer(Document& document);
    ~PageDrawer();
    PageDrawer(const PageDrawer&) = delete;
    PageDrawer& operator=(const PageDrawer&) = delete;

    /// The page's crop box on opaque white in exactly `pixels`, turned by `turn` degrees on top of its own rotation;
    /// null when the file cannot be read, or the page not be drawn within the budget. The latter is remembered, and
    /// answered at once when a budget of no more time is offered for the page again.
    QImage draw(int index, QSize pixels, int turn, DrawingBudget& budget);
    /// With the budget of a picture.
    QImage draw(int index, QSize pixels, int turn, std::stop_token stop);
    /// Gives back the memory that drawing keeps.
    void release();
    /// Pages that could not be drawn in time are tried again.
    void forgetFailures();

private:
    QImage drawAsItStands(int index, QSize pixels, int turn, DrawingBudget& budget);
    std::unique_ptr<PageRasteriser> rasteriser(const std::stop_token& stop);
    std::unique_ptr<PageRasteriser> rasteriserOfCopy(const std::stop_token& stop);

    Document& m_document;
    std::unique_ptr<PageRasteriser> m_rasteriser; ///< made at the first drawing
    bool m_drawsFile;                             ///< as it stands, without a copy
    bool m_cannotBeDrawn = false;                 ///< trying again would fail again
    std::map<int, std::chrono::milliseconds>
        m_notDrawnWithin; ///< by page: trying again with no more time, too
};

} // namespace folvane::pdf
