#pragma once

#include <QString>

#include <optional>

namespace folvane {

/// The letters that a label of a host stands for, of which `text` is what follows "xn--". Nothing when it does not decode, or
/// is longer than a label can be.
std::optional<QString> decodePunycode(QStringView text);

} // namespace folvane
