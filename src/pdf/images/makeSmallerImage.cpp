#include "pdf/images/makeSmallerImage.h"

#include "pdf/images/decodedImage.h"
#include "pdf/images/decodingMemory.h"
#include "pictures/AreaScaler.h"
#include "pictures/jpegEncoding.h"

#include <QCryptographicHash>

#include <stdexcept>

namespace folvane::pdf {

namespace {

// All sizes are made from this one, so that a picture looks the same whichever was asked for first.
constexpr int keptPixels = 2000;
// A smaller stream may bring a longer dictionary with it, or cost a little elsewhere in the file.
constexpr qint64 dictionaryMargin = 64; // bytes
constexpr int lengthPrefix = 4;         // that Qt puts before deflated data

void addNumber(QCryptographicHash& hash, qint64 number)
{
    hash.addData(QByteArray::number(number) + ' ');
}

void addImage(QCryptographicHash& hash, const StoredImage& image)
{
    for (const int number :
         {static_cast<int>(image.role), static_cast<int>(image.isPackedAnew), static_cast<int>(image.road),
          image.size.width(), image.size.height(), image.bits, image.channels, image.paletteChannels,
          image.drawnChannels, image.colourTransform.value_or(-1), static_cast<int>(image.opacityIsInverted)})
        addNumber(hash, number);
    for (const FilterStage& stage : image.filters)
        hash.addData(QByteArray::fromStdString(stage.name + stage.parameters));
    for (const QByteArray& bytes : {image.palette, image.document, image.bytes}) {
        addNumber(hash, bytes.size());
        hash.addData(bytes);
    }
    if (image.opacity)
        addImage(hash, *image.opacity);
}

int keptSide(ImageTarget target)
{
    return std::max(keptPixels, target.maxPixels);
}

/// Names everything that the decoded samples depend on.
QByteArray cacheKey(const StoredImage& image)
{
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    addImage(hash, image);
    return hash.result();
}

std::shared_ptr<const ImageSamples> keptSamples(const StoredImage& image, const QByteArray& imageKey,
                                                int longest, ImageCache& cache, const std::stop_token& stop)
{
    const QByteArray key = imageKey + QByteArray::number(longest);
    if (std::shared_ptr<const ImageSamples> known = cache.samples.find(key))
        return known;
    std::optional<ImageSamples> decoded = decodedImage(image, longest, stop);
    if (!decoded || stop.stop_requested())
        return nullptr;
    const auto samples = std::make_shared<const ImageSamples>(std::move(*decoded));
    cache.samples.insert(key, samples, samples->bytes.size());
    return samples;
}

QByteArray deflated(const ImageSamples& samples)
{
    return qCompress(samples.bytes.data(), static_cast<qsizetype>(samples.bytes.size()), 9).mid(lengthPrefix);
}

bool becomesJpeg(const StoredImage& image)
{
    return image.role == StoredImage::Role::Picture || image.road == StoredImage::Road::Jpeg;
}

/// Counts bytes, and ends what gives them once they are more than `limit`.
class Counter : public Pipeline {
public:
    Counter(qint64 limit, const std::stop_token& stop)
        : Pipeline("counter", nullptr), m_limit(limit), m_stop(stop)
    {
    }

    void write(const unsigned char*, size_t length) override
    {
        m_count += static_cast<qint64>(length);
        if (isOver() || m_stop.stop_requested())
            throw std::runtime_error("enough is known");
    }
    void finish() override {}

    bool isOver() const { return m_count > m_limit; }

private:
    qint64 m_limit;
    const std::stop_token& m_stop;
    qint64 m_count = 0;
};

/// Whether the image takes more than `size` bytes in a file that is written with it as it is.
bool takesMoreThan(qint64 size, const StoredImage& image, const std::stop_token& stop)
{
    if (image.bytes.size() <= size)
        return false;
    if (!image.isPackedAnew)
        return true;
    Counter counter(size, stop);
    Pl_Flate deflate("deflate", &counter, Pl_Flate::a_deflate);
    unpack(image.bytes, image.filters, deflate);
    return counter.isOver();
}

std::optional<SmallerImage> encoded(const ImageSamples& samples, const StoredImage& image, int quality,
                                    const std::stop_token& stop)
{
    using Packing = SmallerImage::Packing;
    const bool asJpeg = becomesJpeg(image);
    QByteArray bytes = asJpeg ? encodeJpeg(samples.view(), quality, stop) : deflated(samples);
    if (bytes.isEmpty() || stop.stop_requested())
        return std::nullopt;
    if (!takesMoreThan(bytes.size() + dictionaryMargin, image, stop))
        return std::nullopt;
    return SmallerImage{asJpeg ? Packing::Jpeg : Packing::Deflated, samples.size, samples.channels,
                        std::move(bytes)};
}

/// Before any decoding.
bool isHopeless(const StoredImage& image, QSize wanted)
{
    if (!becomesJpeg(image))
        return wanted == image.size;
    const int channels = image.road == StoredImage::Road::Drawn ? 1 : image.decodedChannels();
    return leastJpegBytes(wanted, channels) + dictionaryMargin >= image.bytes.size();
}

std::optional<SmallerImage> madeAnew(const StoredImage& image, const QByteArray& imageKey, ImageTarget target,
                                     ImageCache& cache, const std::stop_token& stop)
{
    const std::shared_ptr<const ImageSamples> kept =
        keptSamples(image, imageKey, keptSide(target), cache, stop);
    if (!kept)
        return std::nullopt;
    const QSize wanted = sizeWithin(kept->size, target.maxPixels);
    if (wanted == kept->size)
        return encoded(*kept, image, target.quality, stop);
    return encoded(scaled(kept->view(), wanted, stop), image, target.quality, stop);
}

} // namespace

qint64 makingMemory(const StoredImage& image, ImageTarget target)
{
    constexpr qint64 perPixel = 3 + 4; // a smaller copy, and what the encoder keeps of that
    const QSize made = sizeWithin(image.size, target.maxPixels);
    return decodingMemory(image, keptSide(target)) + perPixel * pixelCount(made);
}

std::optional<SmallerImage> makeSmallerImage(const StoredImage& image, ImageTarget target, ImageCache& cache,
                                             const std::stop_token& stop)
{
    if (isHopeless(image, sizeWithin(image.size, target.maxPixels)))
        return std::nullopt;
    const QByteArray imageKey = cacheKey(image);
    const QByteArray key =
        imageKey + QByteArray::number(target.maxPixels) + '/' + QByteArray::number(target.quality);
    if (const std::shared_ptr<const std::optional<SmallerImage>> known = cache.smaller.find(key))
        return *known;
    std::optional<SmallerImage> made = madeAnew(image, imageKey, target, cache, stop);
    if (!stop.stop_requested())
        cache.smaller.insert(key, std::make_shared<const std::optional<SmallerImage>>(made),
                             static_cast<size_t>(made ? made->bytes.size() : 0) + sizeof(SmallerImage));
    return made;
}

} // namespace folvane::pdf
