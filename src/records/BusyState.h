#pragma once

#include <QString>

#include <stop_token>

namespace folvane {

/// The one long-running job of the interface.
struct BusyState {
    QString title;
    std::stop_source task; ///< the overlay's Cancel asks it to stop

    bool operator==(const BusyState&) const = default;
};

} // namespace folvane
