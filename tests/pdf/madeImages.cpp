#include "pdf/madeImages.h"

#include "pictures/ImageSamples.h"
#include "pictures/jpegEncoding.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace folvane::pdf {

namespace {

/// 0 to 1.
double shade(double u, double v, int channel)
{
    const bool inDisc = std::hypot(u - 0.7, v - 0.35) < 0.18;
    switch (channel) {
    case 0: return inDisc ? 0.9 : 0.5 + 0.4 * std::sin(4 * u + 2 * v);
    case 1: return inDisc ? 0.25 : 0.2 + 0.6 * u * v + 0.1 * std::sin(20 * v);
    case 2: return inDisc ? 0.1 : 0.8 - 0.6 * v + 0.1 * std::cos(15 * u * v);
    default: return 0.1 + 0.2 * v;
    }
}

} // namespace

QByteArray madePhoto(QSize size, int channels, int bits)
{
    const int most = (1 << bits) - 1;
    const double grain = (bits == 1 ? 0.9 : 0.08) / std::minstd_rand::max();
    std::minstd_rand noise(7);
    QByteArray bytes;
    for (int y = 0; y < size.height(); ++y) {
        int unused = 0; // bits of the last byte
        for (int i = 0; i < size.width() * channels; ++i) {
            const int x = i / channels, c = i % channels;
            const double value = shade(double(x) / size.width(), double(y) / size.height(), c)
                                 + grain * (double(noise()) - std::minstd_rand::max() / 2.0);
            const auto sample = static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * most));
            for (int bit = bits - 1; bit >= 0; --bit) {
                if (unused == 0)
                    bytes.append('\0');
                unused = (unused + 7) % 8;
                bytes.back() = static_cast<char>(bytes.back() | (sample >> bit & 1) << unused);
            }
        }
    }
    return bytes;
}

QByteArray madeJpeg(QSize size, int channels, int quality)
{
    const QByteArray samples = madePhoto(size, channels);
    return encodeJpeg(ImageSamples{size, channels, {samples.begin(), samples.end()}}.view(), quality);
}

QByteArray deflatedBytes(const QByteArray& bytes)
{
    return qCompress(bytes).mid(4); // Qt puts the length before it
}

} // namespace folvane::pdf
