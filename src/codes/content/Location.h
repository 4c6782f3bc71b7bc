#pragma once

#include <QString>

#include <optional>

namespace folvane::codes {

/// A place on earth.
struct Location {
    double latitude = 0;          ///< degrees, at most 90 from the equator
    double longitude = 0;         ///< degrees, at most 180 from Greenwich
    std::optional<QString> query; ///< what to look for there

    bool operator==(const Location&) const = default;
};

/// A text that begins with "GEO:".
std::optional<Location> location(QStringView text);

} // namespace folvane::codes
