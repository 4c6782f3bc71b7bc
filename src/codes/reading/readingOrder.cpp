#include "codes/reading/readingOrder.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace folvane {

namespace {

constexpr double rowHeight = 0.02;

/// The middle of a code's upright bounding box, y upwards from the lower edge of the picture.
struct Middle {
    double x = 0;
    double y = 0;
};

Middle middleOf(const CodeObservation& code)
{
    const auto [left, right] = std::ranges::minmax(code.corners, {}, &QPointF::x);
    const auto [top, bottom] = std::ranges::minmax(code.corners, {}, &QPointF::y);
    return {(left.x() + right.x()) / 2, 1 - (top.y() + bottom.y()) / 2};
}

bool goesBefore(const Middle& a, const Middle& b)
{
    return std::abs(a.y - b.y) > rowHeight ? a.y > b.y : a.x < b.x;
}

struct Place {
    size_t index = 0;  ///< among those seen
    size_t before = 0; ///< how many codes go before it
    double y = 0;
};

std::vector<Place> placesOf(const std::vector<CodeObservation>& seen)
{
    std::vector<Middle> middles(seen.size());
    std::ranges::transform(seen, middles.begin(), middleOf);
    std::vector<Place> places;
    for (const Middle& own : middles) {
        const auto before =
            std::ranges::count_if(middles, [&](const Middle& other) { return goesBefore(other, own); });
        places.push_back({places.size(), size_t(before), own.y});
    }
    return places;
}

} // namespace

// The rule tells of any two codes which goes before the other, but on a slanting line it can run in a circle (each of
// three in one row with the next, the first and the last not), which sorting functions must not be given. Counting how
// many go before each is safe: where one order agrees with the rule for all pairs, these numbers are the places in it;
// codes in a circle have the same number, and there the higher one comes first.
std::vector<CodeObservation> inReadingOrder(const std::vector<CodeObservation>& seen)
{
    std::vector<Place> places = placesOf(seen);
    std::ranges::sort(places, {},
                      [](const Place& place) { return std::tuple(place.before, -place.y, place.index); });
    std::vector<CodeObservation> ordered;
    for (const Place& place : places)
        ordered.push_back(seen[place.index]);
    return ordered;
}

std::vector<ReadCode> withoutRepetitions(const std::vector<CodeObservation>& ordered)
{
    std::vector<ReadCode> codes;
    QSet<QString> payloads;
    for (const CodeObservation& code : ordered)
        if (!code.payload.isEmpty() && !payloads.contains(code.payload)) {
            payloads.insert(code.payload);
            codes.push_back({code.payload, code.symbology});
        }
    return codes;
}

} // namespace folvane
