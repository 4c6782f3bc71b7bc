#pragma once

#include "Request.h"
#include "documents/OpenFile.h"

#include <QSet>
#include <QUuid>

#include <optional>

namespace folvane::driver {

/// The id of the page at a 1-based position; throws BadRequest when there is none.
QUuid pageAt(const OpenFile& file, int position);
/// The page that the field names by position.
QUuid page(const Request& request, const char* field, const OpenFile& file);
std::optional<QUuid> optionalPage(const Request& request, const char* field, const OpenFile& file);
/// The pages of the field `pages`; nothing when it is left out.
std::optional<QSet<QUuid>> optionalPages(const Request& request, const OpenFile& file);

} // namespace folvane::driver
