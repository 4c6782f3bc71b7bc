#include "platform/heif.h"

#include "platform/colours.h"
#include "platform/pictures.h"

#include <libheif/heif.h>

#include <cstring>
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

bool fits(const heif_image_handle* handle, int bytesPerPixel)
{
    const qint64 width = heif_image_handle_get_width(handle), height = heif_image_handle_get_height(handle);
    return width > 0 && height > 0 && width <= maxBitmapBytes / bytesPerPixel / height;
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

std::optional<QImage> copied(const heif_image* from, const Wanted& wanted)
{
    int stride = 0;
    const uint8_t* plane = heif_image_get_plane_readonly(from, heif_channel_interleaved, &stride);
    QImage image(heif_image_get_width(from, heif_channel_interleaved),
                 heif_image_get_height(from, heif_channel_interleaved), wanted.format);
    if (!plane || image.isNull())
        return std::nullopt;
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(image.scanLine(y), plane + qsizetype(stride) * y,
                    size_t(wanted.bytesPerPixel) * size_t(image.width()));
    const int bits = heif_image_get_bits_per_pixel_range(from, heif_channel_interleaved);
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
    const HeifPtr<heif_image> image = decoded(handle.get(), wanted.chroma);
    const std::optional<QImage> pixels = image ? copied(image.get(), wanted) : std::nullopt;
    if (!pixels)
        return std::nullopt;
    return TaggedImage{*pixels, profileOf(handle.get())};
}

} // namespace folvane
