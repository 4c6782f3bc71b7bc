#include "controls/style/Shadow.h"

#include "controls/style/continuousRect.h"

#include <QCache>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace folvane {

namespace {

constexpr double reachInDeviations = 2.5; // beyond it, even of black, fewer than 1 % are left

struct Key {
    QRgb color;
    double deviation; // of the blur, and what follows, in pixels of the device
    double corner;
    QSize shape;

    bool operator==(const Key&) const = default;
};

size_t qHash(const Key& key, size_t seed = 0)
{
    return qHashMulti(seed, key.color, key.deviation, key.corner, key.shape.width(), key.shape.height());
}

int reachOf(double deviation)
{
    return static_cast<int>(std::ceil(reachInDeviations * deviation));
}

std::vector<float> gaussian(double deviation)
{
    const int reach = reachOf(deviation);
    std::vector<float> kernel;
    float sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        kernel.push_back(static_cast<float>(std::exp(-i * i / (2 * deviation * deviation))));
        sum += kernel.back();
    }
    for (float& weight : kernel)
        weight /= sum;
    return kernel;
}

// Blurs the lines of `image` and turns it by its diagonal: done twice, both directions are blurred. Each weight in turn is
// added to a whole line, which compilers make vectors of: a large shadow is due within the frame that shows it first.
QImage blurredAndTransposed(const QImage& image, const std::vector<float>& kernel)
{
    const auto width = static_cast<size_t>(image.width());
    std::vector<float> padded(width + kernel.size() - 1);
    std::vector<float> sums(width);
    QImage result(image.height(), image.width(), QImage::Format_Alpha8);
    uchar* const bits = result.bits();
    for (int y = 0; y < image.height(); ++y) {
        const uchar* line = image.constScanLine(y);
        std::copy_n(line, width, padded.begin() + static_cast<std::ptrdiff_t>(kernel.size() / 2));
        std::ranges::fill(sums, 0.0F);
        for (size_t i = 0; i < kernel.size(); ++i) {
            for (size_t x = 0; x < width; ++x)
                sums[x] += kernel[i] * padded[x + i];
        }
        for (size_t x = 0; x < width; ++x)
            bits[x * static_cast<size_t>(result.bytesPerLine()) + static_cast<size_t>(y)] =
                static_cast<uchar>(sums[x] + 0.5F);
    }
    return result;
}

QImage blurred(const Key& key)
{
    const int reach = reachOf(key.deviation);
    QImage mask(key.shape + QSize(2, 2) * reach, QImage::Format_Alpha8);
    mask.fill(Qt::transparent);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRect(QRectF(QPointF(reach, reach), QSizeF(key.shape)), key.corner), Qt::black);
    painter.end();
    if (key.deviation > 0) {
        const std::vector<float> kernel = gaussian(key.deviation);
        mask = blurredAndTransposed(blurredAndTransposed(mask, kernel), kernel);
    }
    QImage coloured(mask.size(), QImage::Format_ARGB32_Premultiplied);
    coloured.fill(QColor::fromRgba(key.color));
    QPainter colouring(&coloured);
    colouring.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    colouring.drawImage(0, 0, mask);
    return coloured;
}

QImage patchFor(const Key& key)
{
    static QCache<Key, QImage> patches(8 << 20); // bytes
    if (const QImage* patch = patches.object(key))
        return *patch;
    const QImage patch = blurred(key);
    patches.insert(key, new QImage(patch), patch.sizeInBytes());
    return patch;
}

// Where a side of `target` is longer than the patch, the pixel in the middle of the patch is repeated.
std::array<int, 4> cuts(int from, int length, int patchLength)
{
    const int half = patchLength / 2;
    return {from, from + half, from + length - (patchLength - half - 1), from + length};
}

void drawStretched(QPainter& painter, const QRect& target, const QImage& patch)
{
    const auto [xs, ys] = std::pair(cuts(target.x(), target.width(), patch.width()),
                                    cuts(target.y(), target.height(), patch.height()));
    const auto [us, vs] =
        std::pair(cuts(0, patch.width(), patch.width()), cuts(0, patch.height(), patch.height()));
    const auto cell = [](const std::array<int, 4>& x, const std::array<int, 4>& y, size_t column,
                         size_t row) {
        return QRect(x[column], y[row], x[column + 1] - x[column], y[row + 1] - y[row]);
    };
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column)
            painter.drawImage(cell(xs, ys, column, row), patch, cell(us, vs, column, row));
    }
}

// Blurring anew for each step of an animated size is not worth what nobody sees.
double scaleStep(double scale)
{
    return std::ceil(scale * 4 - 0.2) / 4;
}

} // namespace

QMargins Shadow::margins() const
{
    const double reach = reachInDeviations * radius / 2;
    const auto room = [](double length) { return std::max(0, static_cast<int>(std::ceil(length))); };
    return {room(reach), room(reach - offset), room(reach), room(reach + offset)};
}

void Shadow::draw(QPainter& painter, const QRectF& shape, double cornerRadius) const
{
    const QTransform toDevice = painter.deviceTransform();
    const double scale = scaleStep(std::hypot(toDevice.m11(), toDevice.m12()));
    const QRect place = toDevice.mapRect(shape.translated(0, offset)).toRect();
    const double deviation = radius / 2 * scale;
    const int reach = reachOf(deviation);
    const int enough = 2 * (static_cast<int>(std::ceil(1.6 * cornerRadius * scale)) + reach) + 1;
    const Key key{color.rgba(), deviation, cornerRadius * scale,
                  place.size().boundedTo(QSize(enough, enough))};
    if (place.isEmpty())
        return;

    painter.save();
    painter.setTransform(toDevice.inverted(), true); // the patch goes pixel by pixel onto the device
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    drawStretched(painter, place.adjusted(-reach, -reach, reach, reach), patchFor(key));
    painter.restore();
}

void drawCard(QPainter& painter, const QRectF& frame, double cornerRadius, const Shadow& shadow)
{
    shadow.draw(painter, frame, cornerRadius);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRect(frame, cornerRadius), theme::surface);
    painter.restore();
}

} // namespace folvane
