#include "pictures/formats/heif.h"

#include "pictures/formats/codePointProfile.h"
#include "pictures/formats/pictureLimits.h"

#include <libheif/heif.h>

#include <memory>

namespace folvane {

namespace {

struct FreeHeif {
    void operator()(heif_context* context) const { heif_context_free(context); }
    void operator()(heif_image_handle* handle) const { heif_image_handle_release(handle); }
    void operator()(heif_image* image) const { heif_image_release(image); }
    void operator()(heif_color_profile_nclx* profile) const { heif_nclx_color_profile_free(profile); }
};
template <typename T>
using HeifPtr = std::unique_ptr<T, FreeHeif>;

bool succeeded(const heif_error& error)
{
    return error.code == heif_error_Ok;
}

HeifPtr<heif_image_handle> primaryPicture(heif_context* context)
{
    heif_image_handle* handle = nullptr;
    if (!succeeded(heif_context_get_primary_image_handle(context, &handle)))
        return nullptr;
    return HeifPtr<heif_image_handle>(handle);
}

/// The library holds the planes that it decodes, brightness and quarters of two colours, beside the pixels made of them.
bool fits(const heif_image_handle* handle, int bytesPerPixel)
{
    const qint64 width = heif_image_handle_get_width(handle), height = heif_image_handle_get_height(handle);
    const int planeBytes = bytesPerPixel == 8 ? 2 * 2 : 2;
    return width > 0 && height > 0 && width <= maxBitmapBytes / bytesPerPixel / height
           && width <= maxDecodingBytes / (bytesPerPixel + planeBytes) / height;
}

/// What to ask of the library, and the format that its pixels then have.
struct Wanted {
    heif_chroma chroma;
    QImage::Format format;
    int bytesPerPixel;
};

Wanted wantedFor(const heif_image_handle* handle)
{
    const bool alpha = heif_image_handle_has_alpha_channel(handle) != 0;
    const bool premultiplied = alpha && heif_image_handle_is_premultiplied_alpha(handle) != 0;
    if (heif_image_handle_get_luma_bits_per_pixel(handle) > 8) {
        const auto deep = premultiplied ? QImage::Format_RGBA64_Premultiplied : QImage::Format_RGBA64;
        return {heif_chroma_interleaved_RRGGBBAA_LE, alpha ? deep : QImage::Format_RGBX64, 8};
    }
    const auto plain = premultiplied ? QImage::Format_RGBA8888_Premultiplied : QImage::Format_RGBA8888;
    return alpha ? Wanted{heif_chroma_interleaved_RGBA, plain, 4}
                 : Wanted{heif_chroma_interleaved_RGB, QImage::Format_RGB888, 3};
}

HeifPtr<heif_image> decoded(const heif_image_handle* handle, heif_chroma chroma)
{
    heif_image* image = nullptr;
    if (!succeeded(heif_decode_image(handle, &image, heif_colorspace_RGB, chroma, nullptr)))
        return nullptr;
    return HeifPtr<heif_image>(image);
}

/// Samples of 9 to 15 bits become ones of 16 by repeating their upper bits below.
void widen(QImage& image, int bits)
{
    const int up = 16 - bits, down = bits - up;
    for (int y = 0; y < image.height(); ++y) {
        auto sample = reinterpret_cast<quint16*>(image.scanLine(y));
        for (int i = 0; i < 4 * image.width(); ++i)
            sample[i] = quint16(sample[i] << up | sample[i] >> down);
    }
}

/// The library's own pixels, which live as long as the picture.
std::optional<QImage> asImage(HeifPtr<heif_image> from, const Wanted& wanted)
{
    const int width = heif_image_get_width(from.get(), heif_channel_interleaved),
              height = heif_image_get_height(from.get(), heif_channel_interleaved),
              bits = heif_image_get_bits_per_pixel_range(from.get(), heif_channel_interleaved);
    int stride = 0;
    uint8_t* plane = heif_image_get_plane(from.get(), heif_channel_interleaved, &stride);
    if (!plane || width <= 0 || height <= 0 || stride < width * wanted.bytesPerPixel)
        return std::nullopt;
    const auto letGo = [](void* image) { heif_image_release(static_cast<heif_image*>(image)); };
    QImage image(plane, width, height, stride, wanted.format, letGo, from.release());
    if (wanted.bytesPerPixel == 8 && bits > 8 && bits < 16)
        widen(image, bits);
    return image;
}

QByteArray rawProfile(const heif_image_handle* handle)
{
    QByteArray bytes(qsizetype(heif_image_handle_get_raw_color_profile_size(handle)), Qt::Uninitialized);
    if (bytes.isEmpty() || !succeeded(heif_image_handle_get_raw_color_profile(handle, bytes.data())))
        return {};
    return bytes;
}

QByteArray profileOf(const heif_image_handle* handle)
{
    if (const QByteArray raw = rawProfile(handle); !raw.isEmpty())
        return raw;
    heif_color_profile_nclx* nclx = nullptr;
    if (!succeeded(heif_image_handle_get_nclx_color_profile(handle, &nclx)))
        return {};
    const HeifPtr<heif_color_profile_nclx> owner(nclx);
    return profileOfCodePoints(nclx->color_primaries, nclx->transfer_characteristics);
}

} // namespace

std::optional<TaggedImage> decodeHeif(const QByteArray& bytes)
{
    const HeifPtr<heif_context> context(heif_context_alloc());
    if (!succeeded(heif_context_read_from_memory_without_copy(context.get(), bytes.constData(),
                                                              size_t(bytes.size()), nullptr)))
        return std::nullopt;
    const HeifPtr<heif_image_handle> handle = primaryPicture(context.get());
    if (!handle)
        return std::nullopt;
    const Wanted wanted = wantedFor(handle.get());
    if (!fits(handle.get(), wanted.bytesPerPixel))
        return std::nullopt;
    HeifPtr<heif_image> image = decoded(handle.get(), wanted.chroma);
    std::optional<QImage> pixels = image ? asImage(std::move(image), wanted) : std::nullopt;
    if (!pixels)
        return std::nullopt;
    return TaggedImage{std::move(*pixels), profileOf(handle.get())};
}

} // namespace folvane
