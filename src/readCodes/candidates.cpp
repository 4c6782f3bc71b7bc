#include "readCodes/candidates.h"

#include "readCodes/geometry.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace folvane {

namespace {

/// A search on a copy of that size. Small copies join the modules of large codes, which fall apart on larger ones.
struct Look {
    int longSide = 0;
    size_t most = 0; ///< how many candidates it may give
};

constexpr Look usualLook{1000, 200};
constexpr Look lookForLarge{330, 30};
constexpr double largeShare = 0.17; ///< of the picture's long side

/// Two candidates that share more are one.
constexpr double sameOverlap = 0.85;

/// Widths of what is joined, in pixels of the copy: from the modules of small codes to those of large ones.
constexpr std::array darkWidths{7, 13, 21};
constexpr std::array edgeWidths{3, 5, 9, 15};

struct Candidate {
    cv::RotatedRect place;
    double weight = 0; ///< pixels of edges
};

cv::Mat square(int width)
{
    return cv::getStructuringElement(cv::MORPH_RECT, {width, width});
}

/// Where brightness changes steeply: 255, elsewhere 0.
cv::Mat edgesOf(const cv::Mat& copy)
{
    cv::Mat gradient;
    cv::morphologyEx(copy, gradient, cv::MORPH_GRADIENT, square(3));
    cv::Mat edges;
    const double otsu = cv::threshold(gradient, edges, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    cv::threshold(gradient, edges, std::clamp(otsu * 0.8, 16.0, 70.0), 255, cv::THRESH_BINARY);
    return edges;
}

/// What is darker than its surroundings: 255, elsewhere 0.
cv::Mat darkSpotsOf(const cv::Mat& copy)
{
    const int around = std::max(31, std::max(copy.cols, copy.rows) / 14) | 1;
    cv::Mat mean;
    cv::boxFilter(copy, mean, -1, {around, around});
    cv::Mat dark;
    cv::threshold(mean - copy, dark, 12, 255, cv::THRESH_BINARY);
    return dark;
}

/// Takes away what is thinner than a code can be.
cv::Mat withoutThreads(const cv::Mat& blocks, int joined)
{
    cv::Mat opened;
    cv::morphologyEx(blocks, opened, cv::MORPH_OPEN, square(std::max(5, joined)));
    return opened;
}

/// Where a third of the surroundings is dark, as within a code of any kind.
cv::Mat darkBlocks(const cv::Mat& darkSpots, int width)
{
    cv::Mat share;
    cv::boxFilter(darkSpots, share, -1, {width, width}, {-1, -1}, true, cv::BORDER_CONSTANT);
    cv::Mat blocks;
    cv::threshold(share, blocks, 0.34 * 255, 255, cv::THRESH_BINARY);
    return withoutThreads(blocks, width);
}

/// Where edges stand so close that gaps of that width close up.
cv::Mat edgeBlocks(const cv::Mat& edges, int width)
{
    cv::Mat blocks;
    cv::morphologyEx(edges, blocks, cv::MORPH_CLOSE, square(width), {-1, -1}, 1, cv::BORDER_CONSTANT,
                     cv::Scalar(0));
    return withoutThreads(blocks, width);
}

std::vector<cv::Mat> blocksOf(const cv::Mat& copy, const cv::Mat& edges)
{
    const cv::Mat dark = darkSpotsOf(copy);
    std::vector<cv::Mat> blocks;
    for (const int width : darkWidths)
        blocks.push_back(darkBlocks(dark, width));
    for (const int width : edgeWidths)
        blocks.push_back(edgeBlocks(edges, width));
    return blocks;
}

/// How many edge pixels lie in an upright rectangle.
double edgesWithin(const cv::Mat& edgeSums, const cv::Rect& box)
{
    const auto sum = [&](int y, int x) { return edgeSums.at<int>(y, x); };
    return (sum(box.y + box.height, box.x + box.width) - sum(box.y, box.x + box.width)
            - sum(box.y + box.height, box.x) + sum(box.y, box.x))
           / 255.0;
}

/// The rectangle around a block, when it has the shape of a code and edges enough.
std::optional<Candidate> candidateFrom(const std::vector<cv::Point>& outline, const cv::Mat& edgeSums)
{
    const double area = cv::contourArea(outline);
    cv::RotatedRect place = cv::minAreaRect(outline);
    const double full = double(place.size.area());
    if (area < 14 * 14 || area < 0.55 * full || std::min(place.size.width, place.size.height) < 10
        || aspectOf(place) > 9)
        return std::nullopt;
    const double density = edgesWithin(edgeSums, cv::boundingRect(outline)) / area;
    if (density < 0.3)
        return std::nullopt;
    place.size += cv::Size2f(1, 1); // outlines run through the middles of pixels
    return Candidate{place, double(place.size.area()) * density};
}

cv::RotatedRect scaledBack(const cv::RotatedRect& place, double scale)
{
    const auto back = [scale](float at) { return float((at + 0.5) / scale - 0.5); };
    return {{back(place.center.x), back(place.center.y)}, place.size / float(scale), place.angle};
}

void sortByWeight(std::vector<Candidate>& candidates)
{
    std::ranges::sort(candidates, std::ranges::greater(), &Candidate::weight);
}

bool isAmong(const std::vector<Candidate>& candidates, const cv::RotatedRect& place)
{
    return std::ranges::any_of(
        candidates, [&](const Candidate& known) { return overlapOf(known.place, place) > sameOverlap; });
}

std::vector<Candidate> heaviest(std::vector<Candidate> candidates, size_t most)
{
    sortByWeight(candidates);
    std::vector<Candidate> chosen;
    for (const Candidate& candidate : candidates)
        if (chosen.size() < most && !isAmong(chosen, candidate.place))
            chosen.push_back(candidate);
    return chosen;
}

std::vector<Candidate> lookedFor(const cv::Mat& picture, Look look)
{
    const double scale = std::min(1.0, double(look.longSide) / std::max(picture.cols, picture.rows));
    cv::Mat copy = picture;
    if (scale < 1)
        cv::resize(picture, copy,
                   {std::max(1, int(picture.cols * scale)), std::max(1, int(picture.rows * scale))}, 0, 0,
                   cv::INTER_AREA);
    const cv::Mat edges = edgesOf(copy);
    cv::Mat edgeSums;
    cv::integral(edges, edgeSums, CV_32S);
    std::vector<Candidate> candidates;
    for (const cv::Mat& blocks : blocksOf(copy, edges)) {
        std::vector<std::vector<cv::Point>> outlines;
        cv::findContours(blocks, outlines, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
        for (const auto& outline : outlines)
            if (std::optional<Candidate> candidate = candidateFrom(outline, edgeSums)) {
                candidate->place = scaledBack(candidate->place, scale);
                candidates.push_back(*candidate);
            }
    }
    return heaviest(std::move(candidates), look.most);
}

} // namespace

double longSideOf(const cv::RotatedRect& place)
{
    return double(std::max(place.size.width, place.size.height));
}

double aspectOf(const cv::RotatedRect& place)
{
    return longSideOf(place) / double(std::max(1e-3F, std::min(place.size.width, place.size.height)));
}

std::vector<cv::RotatedRect> findCandidates(const cv::Mat& picture)
{
    const int longSide = std::max(picture.cols, picture.rows);
    std::vector<Candidate> candidates = lookedFor(picture, usualLook);
    if (longSide > 500)
        for (const Candidate& large : lookedFor(picture, lookForLarge))
            if (longSideOf(large.place) > largeShare * longSide && !isAmong(candidates, large.place))
                candidates.push_back(large);
    sortByWeight(candidates);
    std::vector<cv::RotatedRect> places;
    std::ranges::transform(candidates, std::back_inserter(places), &Candidate::place);
    return places;
}

} // namespace folvane
