#pragma once

#include "documents/AppModel.h"

namespace folvane {

/// The document that the window shows; null when it shows something else.
inline OpenFilePtr currentFile(const AppModel& model)
{
    const std::optional<Destination> destination = model.destination.value();
    return destination && destination->isFile() ? model.file(destination->fileID()) : nullptr;
}

} // namespace folvane
