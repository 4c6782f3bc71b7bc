#pragma once

#include "documents/AppModel.h"
#include "tools/stamps/StampSource.h"

#include <functional>

namespace folvane {

using UseStamp = std::function<void(const StampRecord&)>;

/// Makes a new stamp from that in a sheet over the window of `view`; while the view is there, `use` hears of what the library
/// then has. Nothing while the window waits for another dialog or a job.
void openNewStampSheet(AppModel& model, const StampSource& source, QWidget& view, UseStamp use = {});

} // namespace folvane
