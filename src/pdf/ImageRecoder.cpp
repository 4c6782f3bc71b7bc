#include "pdf/ImageRecoder.h"

#include "pdf/imageUses.h"
#include "pdf/inlineImages.h"
#include "platform/Cancelled.h"

#include <cmath>

namespace folvane::pdf {

namespace {

constexpr qint64 waitingLimit = 256LL * 1024 * 1024; // stored bytes in the hands of the cores

void setNumber(QPDFObjectHandle dictionary, const char* key, int value)
{
    dictionary.replaceKey(key, QPDFObjectHandle::newInteger(value));
}

QPDFObjectHandle newSpace(SpaceAfter space, QPDFObjectHandle base, int channels)
{
    if (space == SpaceAfter::Base)
        return base.isIndirect() ? base : base.shallowCopy();
    return QPDFObjectHandle::newName(channels == 1 ? "/DeviceGray" : "/DeviceRGB");
}

void store(QPDFObjectHandle stream, SpaceAfter space, QPDFObjectHandle base, const RecodedImage& image)
{
    const bool isJpeg = image.packing == RecodedImage::Packing::Jpeg;
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
        while (isBusyEnough())
            settleOldest();
    }
    while (!m_waiting.empty())
        settleOldest();
    inlineImages.restoreUnless(m_recoded);
}

void ImageRecoder::start(QPDFObjectHandle stream, StoredImage::Role role)
{
    std::optional<ReadImage> read;
    try {
        read = readStoredImage(stream, role, m_stop);
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception&) {
        return; // an object that the library cannot make sense of
    }
    if (!read)
        return;
    m_waiting.push_back({stream, read->space, read->base, read->image.bytes.size()});
    m_waitingBytes += m_waiting.back().bytes;
    const auto image = std::make_shared<const StoredImage>(std::move(read->image));
    m_work.add([image, target = m_target, cache = m_cache, stop = m_stop] {
        return recodedImage(*image, target, *cache, stop);
    });
}

bool ImageRecoder::isBusyEnough() const
{
    return m_waiting.size() >= m_work.enough() || (m_waitingBytes > waitingLimit && !m_waiting.empty());
}

void ImageRecoder::settleOldest()
{
    const Waiting image = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_waitingBytes -= image.bytes;
    std::optional<RecodedImage> result;
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
