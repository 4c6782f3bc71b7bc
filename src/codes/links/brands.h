#pragma once

#include "codes/links/LinkWarning.h"

#include <optional>

namespace folvane {

/// As the brand writes itself: "paypal" is "PayPal". Any other word gets a capital.
QString brandName(const QString& word);

/// Lookalike or BrandInAddress, when a host that leads to `realSite` makes one think of a brand that is not there. Only whole
/// words and a few substitutions count, since nobody heeds warnings that are often wrong.
std::optional<LinkWarning> brandWarning(const QString& host, const QString& realSite);

} // namespace folvane
