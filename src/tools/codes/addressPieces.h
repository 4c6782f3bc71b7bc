#pragma once

#include "codes/links/LinkCheck.h"

#include <vector>

namespace folvane {

/// A part of an address as its card shows it.
struct AddressPiece {
    enum class Part { Around, Host, RealSite };

    QString text;
    Part part;

    bool operator==(const AddressPiece&) const = default;
};

/// The whole displayed address, cut where the eye is to be led: to the site that somebody answers for, at the end of the host.
std::vector<AddressPiece> addressPieces(const LinkCheck& check);

} // namespace folvane
