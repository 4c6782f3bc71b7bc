#pragma once

#include "readCodes/Symbol.h"

#include <optional>

namespace folvane {

/// A symbol as both libraries should have told it: Codabar without the letters that start and stop it; Interleaved 2 of 5 with
/// 14 digits and a right check digit as ITF-14. Nothing for one of no known kind and for what is not text.
std::optional<Symbol> settled(Symbol symbol);

} // namespace folvane
