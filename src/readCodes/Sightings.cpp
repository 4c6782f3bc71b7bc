#include "readCodes/Sightings.h"

#include "readCodes/families.h"
#include "readCodes/geometry.h"
#include "readCodes/symbolTexts.h"

#include <algorithm>

namespace folvane {

namespace {

bool isSameCode(const Symbol& a, const Symbol& b)
{
    return a.symbology == b.symbology && a.text == b.text && isSameSpot(a.corners, b.corners);
}

/// ZBar puts the same bars at several spots into one box around all of them, so it is asked last where they are.
bool isBetterPlaced(const Symbol& symbol, Library library, const Sighting& known)
{
    if (!isArea(symbol.symbology) && known.zxingLines == 0 && library == Library::Zxing)
        return true;
    if (!isArea(symbol.symbology) && known.zxingLines > 0 && library == Library::Zbar)
        return false;
    return boxAround(known.symbol.corners).area() < boxAround(symbol.corners).area();
}

bool isWellPlaced(const Sighting& sighting)
{
    return isArea(sighting.symbol.symbology) || sighting.zxingLines > 0;
}

} // namespace

bool isBeyondDoubt(const Sighting& sighting)
{
    if (sighting.symbol.symbology == CodeSymbology::I2of5) // any even part of it is one, too
        return false;
    return isArea(sighting.symbol.symbology) || sighting.isAgreed() || sighting.zxingLines >= 5
           || sighting.zbarLines >= 20;
}

Sighting& Sightings::sightingOf(const Symbol& symbol)
{
    const auto known = std::ranges::find_if(
        m_all, [&](const Sighting& sighting) { return isSameCode(sighting.symbol, symbol); });
    return known != m_all.end() ? *known : m_all.emplace_back(Sighting{symbol});
}

bool Sightings::add(const Symbols& symbols, Library library)
{
    for (const Symbol& raw : symbols) {
        const std::optional<Symbol> symbol = settled(raw);
        if (!symbol)
            continue;
        Sighting& sighting = sightingOf(*symbol);
        const bool isBetter = isBetterPlaced(*symbol, library, sighting);
        int& lines = library == Library::Zxing ? sighting.zxingLines : sighting.zbarLines;
        lines = std::max({lines, 1, symbol->lines});
        if (isBetter)
            sighting.symbol.corners = symbol->corners;
    }
    return !symbols.empty();
}

bool Sightings::cover(const cv::RotatedRect& place) const
{
    return std::ranges::any_of(m_all, [&](const Sighting& sighting) {
        const Quad& corners = sighting.symbol.corners;
        return isBeyondDoubt(sighting)
               && (liesIn(middleOf(corners), place)
                   || (isWellPlaced(sighting) && liesIn(place.center, corners)));
    });
}

} // namespace folvane
