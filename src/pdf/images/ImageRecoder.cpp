#include "pdf/images/ImageRecoder.h"

#include "pdf/images/decodingMemory.h"
#include "pdf/images/imageUses.h"
#include "pdf/images/inlineImages.h"
#include "pdf/structure/imagePage.h"
#include "platform/tasks/Cancelled.h"

#include <cmath>

namespace folvane::pdf {

namespace {

/// As the stream tells.
qint64 storedSize(QPDFObjectHandle stream)
{
    QPDFObjectHandle length = stream.getDict().getKey("/Length");
    return length.isInteger() ? std::clamp<qint64>(length.getIntValue(), 0, maxStoredBytes) : 0;
}

void setNumber(QPDFObjectHandle dictionary, const char* key, int value)
{
    dictionary.replaceKey(key, QPDFObjectHandle::newInteger(value));
}

QPDFObjectHandle newSpace(SpaceAfter space, QPDFObjectHandle base, int channels)
{
    if (space == SpaceAfter::Base)
        return base.isIndirect() ? base : base.shallowCopy();
    return deviceSpace(channels);
}

void store(QPDFObjectHandle stream, SpaceAfter space, QPDFObjectHandle base, const SmallerImage& image)
{
    const bool isJpeg = image.packing == SmallerImage::Packing::Jpeg;
    const auto data = std::make_shared<Buffer>(static_cast<size_t>(image.bytes.size()));
    std::copy(image.bytes.begin(), image.bytes.end(), data->getBuffer());
    stream.replaceStreamData(data, QPDFObjectHandle::newName(isJpeg ? "/DCTDecode" : "/FlateDecode"),
                             QPDFObjectHandle::newNull());
    QPDFObjectHandle dictionary = stream.getDict();
    setNumber(dictionary, "/Width", image.size.width());
    setNumber(dictionary, "/Height", image.size.height());
    setNumber(dictionary, "/BitsPerComponent", 8);
    dictionary.removeKey("/SMaskInData");
    if (space == SpaceAfter::AsBefore)
        return;
    dictionary.removeKey("/Decode");
    dictionary.replaceKey("/ColorSpace", newSpace(space, base, image.channels));
}

} // namespace

ImageRecoder::ImageRecoder(QPDF& document, const CompressionStep& step, std::shared_ptr<ImageCache> cache,
                           std::stop_token stop)
    : m_document(document),
      m_target{std::max(step.maxPixels, 1), static_cast<int>(std::lround(100 * step.jpegQuality))},
      m_cache(std::move(cache)),
      m_stop(stop),
      m_work(std::move(stop))
{
}

void ImageRecoder::recode()
{
    InlineImages inlineImages(m_document, m_stop);
    for (const ImageUse& use : imageUses(m_document)) {
        throwIfStopped(m_stop);
        start(use.stream, use.role);
        while (m_waiting.size() >= m_work.enough())
            settleOldest();
    }
    while (!m_waiting.empty())
        settleOldest();
    inlineImages.restoreUnless(m_recoded);
}

void ImageRecoder::start(QPDFObjectHandle stream, StoredImage::Role role)
{
    const qint64 expected = storedSize(stream);
    const MemoryBudget::Lease reading = memory(expected);
    std::optional<ReadImage> image = read(stream, role);
    if (!image)
        return;
    const auto stored = std::make_shared<const StoredImage>(std::move(image->image));
    const qint64 wanted = storedMemory(*stored) + makingMemory(*stored, m_target);
    if (wanted > decodingBudget().all())
        return;
    const MemoryBudget::Lease working = memory(std::max<qint64>(wanted - expected, 0));
    m_waiting.push_back({stream, image->space, image->base});
    m_work.add([stored, reading, working, target = m_target, cache = m_cache, stop = m_stop] {
        return makeSmallerImage(*stored, target, *cache, stop);
    });
}

std::optional<ReadImage> ImageRecoder::read(QPDFObjectHandle stream, StoredImage::Role role)
{
    try {
        return readStoredImage(stream, role, m_stop);
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception&) {
        return std::nullopt; // an object that the library cannot make sense of
    }
}

MemoryBudget::Lease ImageRecoder::memory(qint64 bytes)
{
    for (;;) {
        if (MemoryBudget::Lease lease = decodingBudget().tryTake(bytes))
            return lease;
        if (m_waiting.empty()) // then what has it still is on its way out
            return decodingBudget().take(bytes, m_stop);
        settleOldest();
    }
}

void ImageRecoder::settleOldest()
{
    const Waiting image = std::move(m_waiting.front());
    m_waiting.pop_front();
    std::optional<SmallerImage> result;
    try {
        result = m_work.takeNext();
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception&) {
        return; // no memory for this one, say
    }
    if (!result)
        return;
    store(image.stream, image.space, image.base, *result);
    m_recoded.insert(image.stream.getObjGen());
}

} // namespace folvane::pdf
