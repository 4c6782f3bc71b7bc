#pragma once

#include "documents/AppModel.h"

namespace folvane {

/// Asks for a place and saves the pages there as they are now, locked with this password; without one, the copy has no
/// encryption. The document keeps the password that it has.
QCoro::Task<> saveProtectedCopy(AppModel& model, OpenFilePtr file, std::optional<QString> password);

} // namespace folvane
