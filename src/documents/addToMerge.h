#pragma once

#include "documents/AppModel.h"

namespace folvane {

/// The Add to Merge command: the document joins as it is now, and the list is shown.
inline void addToMerge(AppModel& model, const OpenFile& file)
{
    model.merge.add(file);
    model.destination = Destination(Destination::Place::Merge);
}

} // namespace folvane
