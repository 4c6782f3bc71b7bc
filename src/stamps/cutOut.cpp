#include "stamps/cutOut.h"

#include "pictures/AreaScaler.h"

namespace folvane {

namespace {

constexpr int inkFrom = 26;     // alpha, of 255
constexpr int leastInALine = 3; // pixels
constexpr int leastSpan = 8;    // from the first line to the last
constexpr int leastMargin = 4;
constexpr int marginOfSpan = 40;

struct Span {
    int first = 0;
    int last = 0;

    int length() const { return last - first; }
};

/// From the first line with enough ink to the last one.
std::optional<Span> inked(const std::vector<int>& counts)
{
    const auto isInked = [](int count) { return count >= leastInALine; };
    const auto first = std::ranges::find_if(counts, isInked);
    if (first == counts.end())
        return std::nullopt;
    const auto last = std::find_if(counts.rbegin(), counts.rend(), isInked);
    return Span{int(first - counts.begin()), int(counts.rend() - last) - 1};
}

} // namespace

std::optional<QRect> inkBox(const ImageSamples& pixels)
{
    std::vector<int> rows(static_cast<size_t>(pixels.size.height())),
        columns(static_cast<size_t>(pixels.size.width()));
    for (size_t y = 0; y < rows.size(); ++y)
        for (size_t x = 0; x < columns.size(); ++x)
            if (pixels.row(int(y))[4 * x + 3] >= inkFrom) {
                ++rows[y];
                ++columns[x];
            }
    const std::optional<Span> down = inked(rows), across = inked(columns);
    if (!down || !across || down->length() < leastSpan || across->length() < leastSpan)
        return std::nullopt;
    const int margin = std::max(leastMargin, std::max(down->length(), across->length()) / marginOfSpan);
    const QRect ink(QPoint(across->first, down->first), QPoint(across->last, down->last));
    return ink.adjusted(-margin, -margin, margin, margin) & QRect(QPoint(), pixels.size);
}

ImageSamples cutOut(const ImageSamples& pixels, QRect box, int longest)
{
    return scaled(pixels.view().part(box), sizeWithin(box.size(), longest));
}

} // namespace folvane
