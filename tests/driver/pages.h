#pragma once

#include "Call.h"

#include <QSet>
#include <QUuid>

#include <optional>

namespace folvane::driver {

// Pages of a document by their 1-based positions. Throws BadRequest when there is no such page.

/// The page in the field.
const PageItem& page(const Request& request, const char* field, const OpenFile& file);
/// Those of the field `pages`; nothing when it is left out.
std::optional<QSet<QUuid>> pages(const Request& request, const OpenFile& file);

} // namespace folvane::driver
