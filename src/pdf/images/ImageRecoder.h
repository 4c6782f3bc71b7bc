#pragma once

#include "pdf/images/makeSmallerImage.h"
#include "pdf/images/readStoredImage.h"
#include "pictures/FanOut.h"
#include "pictures/MemoryBudget.h"
#include "records/CompressionStep.h"

#include <deque>

namespace folvane::pdf {

/// Makes the pictures of a document smaller: each sampled image, wherever it stands, is scaled down to the step's pixels
/// and stored as JPEG of its quality, once for all its uses, unless that would not make it smaller or would harm it.
/// Everything else keeps its meaning. Pixels are worked on by all cores; the document is touched by the caller's thread.
class ImageRecoder {
public:
    ImageRecoder(QPDF& document, const CompressionStep& step, std::shared_ptr<ImageCache> cache,
                 std::stop_token stop);

    /// Throws Cancelled, within a moment of the stop. An image that cannot be worked on stays as it is.
    void recode();

private:
    /// An image that is being worked on.
    struct Waiting {
        QPDFObjectHandle stream;
        SpaceAfter space;
        QPDFObjectHandle base;
    };

    void start(QPDFObjectHandle stream, StoredImage::Role role);
    std::optional<ReadImage> read(QPDFObjectHandle stream, StoredImage::Role role);
    MemoryBudget::Lease memory(qint64 bytes);
    void settleOldest();

    QPDF& m_document;
    ImageTarget m_target;
    std::shared_ptr<ImageCache> m_cache;
    std::stop_token m_stop;
    FanOut<std::optional<SmallerImage>> m_work;
    std::deque<Waiting> m_waiting; // in the order of m_work
    ObjGenSet m_recoded;
};

} // namespace folvane::pdf
