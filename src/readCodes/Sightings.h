#pragma once

#include "readCodes/Symbol.h"

namespace folvane {

enum class Library { Zxing, Zbar };

/// A code, and how well each library saw it.
struct Sighting {
    Symbol symbol;
    int zxingLines = 0; ///< the most in one read; 0 when it did not see the code
    int zbarLines = 0;

    bool isAgreed() const { return zxingLines > 0 && zbarLines > 0; }
};

/// Codes of bars are easily misread from other things on a line or two.
bool isBeyondDoubt(const Sighting& sighting);

/// What was seen so far. Reads of one text and kind at one spot are one sighting, with the larger of their corners.
class Sightings {
public:
    /// True when there was anything to add.
    bool add(const Symbols& symbols, Library library);

    bool empty() const { return m_all.empty(); }
    const std::vector<Sighting>& all() const { return m_all; }

    /// Whether there is no need to look here again: a code that is beyond doubt lies in it, or it lies in one.
    bool cover(const cv::RotatedRect& place) const;

private:
    Sighting& sightingOf(const Symbol& symbol);

    std::vector<Sighting> m_all;
};

} // namespace folvane
