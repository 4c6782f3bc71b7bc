#include "readCodes/filters.h"

#include "readCodes/families.h"
#include "readCodes/geometry.h"

#include <algorithm>
#include <tuple>

namespace folvane {

namespace {

bool isLinear(const Sighting& sighting)
{
    return !isArea(sighting.symbol.symbology);
}

bool shareSpot(const Sighting& a, const Sighting& b)
{
    return isSameSpot(a.symbol.corners, b.symbol.corners);
}

/// What a read of bars needs: so many characters, and unless both libraries saw it, so many characters and lines of one.
struct Demands {
    size_t characters = 1;
    size_t charactersAlone = 1;
    int zxingLines = 1;
    int zbarLines = 1;
};

/// Weak codes, without a check digit or with short patterns, need more: measured on photographs, where all others are
/// misread from print.
Demands demandsOf(CodeSymbology symbology)
{
    switch (symbology) {
    case CodeSymbology::I2of5: return {6, 8, 3, 4};
    case CodeSymbology::Code39: return {3, 3, 2, 3};
    case CodeSymbology::Codabar: return {3, 6, 2, 3};
    case CodeSymbology::Code128:
    case CodeSymbology::Code93:
    case CodeSymbology::Itf14: return {1, 1, 2, 2};
    case CodeSymbology::Ean13: return {1, 1, 1, 20};
    case CodeSymbology::Ean8: return {1, 1, 1, 11};
    case CodeSymbology::UpcE: return {1, 1, 3, 11};
    case CodeSymbology::Gs1DataBar: return {1, 1, 1, 2};
    default: return {};
    }
}

/// Where a line leaves a turned code by its side, it ends amid the bars. For other codes that ends a read.
bool isOnlyAPart(const Sighting& sighting, const std::vector<cv::RotatedRect>& stripes)
{
    if (sighting.symbol.symbology != CodeSymbology::I2of5)
        return false;
    return std::ranges::any_of(stripes, [&](const cv::RotatedRect& place) {
        return liesIn(middleOf(sighting.symbol.corners), place)
               && lengthAlong(place, sighting.symbol.corners) < 0.75 * double(place.size.width);
    });
}

bool isTooWeak(const Sighting& sighting)
{
    const Demands demands = demandsOf(sighting.symbol.symbology);
    const size_t characters = sighting.symbol.text.size();
    if (sighting.isAgreed())
        return characters < demands.characters;
    return characters < demands.charactersAlone
           || (sighting.zxingLines < demands.zxingLines && sighting.zbarLines < demands.zbarLines);
}

/// The pattern of an area code holds lines that look like bars.
bool isPartOf(const Sighting& linear, const Sighting& other)
{
    return !isLinear(other) && liesIn(middleOf(linear.symbol.corners), other.symbol.corners);
}

bool isPartOfText(const Sighting& a, const Sighting& b)
{
    return a.symbol.text.size() < b.symbol.text.size()
           && b.symbol.text.find(a.symbol.text) != std::string::npos;
}

/// Any even number of its digits is a code again, with other digits where it is read backwards.
bool isShorterItf(const Sighting& a, const Sighting& b)
{
    return a.symbol.symbology == CodeSymbology::I2of5 && b.symbol.symbology == CodeSymbology::I2of5
           && a.symbol.text.size() < b.symbol.text.size();
}

bool wasSeenLess(const Sighting& a, const Sighting& b)
{
    // A line that zxing-cpp counts is worth more: it looks at fewer.
    const auto rank = [](const Sighting& one) {
        return std::tuple(one.isAgreed(), one.zxingLines * 8 + one.zbarLines);
    };
    return rank(a) < rank(b);
}

/// Of two reads of bars at one spot the one with more text, or that was seen better. DataBar, which one library alone reads,
/// would lose unfairly by the second rule.
bool yieldsTo(const Sighting& a, const Sighting& b)
{
    const bool isDataBarOnly =
        a.symbol.symbology == CodeSymbology::Gs1DataBar && b.symbol.symbology != CodeSymbology::Gs1DataBar;
    return isLinear(b) && shareSpot(a, b)
           && (isPartOfText(a, b) || isShorterItf(a, b)
               || (wasSeenLess(a, b) && !isDataBarOnly && !a.isAgreed()));
}

/// ZBar alone misreads the texts of some QR codes.
bool isWorseQr(const Sighting& a, const Sighting& b)
{
    return a.symbol.symbology == CodeSymbology::Qr && b.symbol.symbology == CodeSymbology::Qr
           && a.zxingLines == 0 && b.zxingLines > 0 && shareSpot(a, b);
}

/// Takes away, one after the other, those that lose against any that is still there.
template <typename Loses>
void eraseLosers(std::vector<Sighting>& sightings, Loses loses)
{
    for (auto one = sightings.begin(); one != sightings.end();) {
        const bool isLoser =
            std::ranges::any_of(sightings, [&](const Sighting& other) { return loses(*one, other); });
        one = isLoser ? sightings.erase(one) : one + 1;
    }
}

} // namespace

Symbols credible(std::vector<Sighting> sightings, const std::vector<cv::RotatedRect>& stripes)
{
    std::erase_if(sightings, [&](const Sighting& one) { return isOnlyAPart(one, stripes); });
    std::erase_if(sightings, [](const Sighting& one) { return isLinear(one) && isTooWeak(one); });
    eraseLosers(sightings,
                [](const Sighting& a, const Sighting& b) { return isLinear(a) && isPartOf(a, b); });
    eraseLosers(sightings,
                [](const Sighting& a, const Sighting& b) { return isLinear(a) && yieldsTo(a, b); });
    eraseLosers(sightings, isWorseQr);
    Symbols symbols;
    for (const Sighting& sighting : sightings)
        symbols.push_back(sighting.symbol);
    return symbols;
}

} // namespace folvane
