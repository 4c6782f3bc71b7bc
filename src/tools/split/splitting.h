#pragma once

#include "documents/AppModel.h"
#include "tools/split/SplitChoice.h"

namespace folvane {

/// Asks for a folder and writes each piece there as a PDF of its own, named like "Report 1-3", of the pages as they are
/// now; pieces of a locked file have its password. A choice without ranges does nothing.
QCoro::Task<> split(AppModel& model, const OpenFile& file, const SplitChoice& choice);

} // namespace folvane
