#include "documents/CodesModel.h"

namespace folvane {

std::stop_source CodesModel::begin()
{
    stop();
    task = std::stop_source();
    emptyMessage = std::nullopt;
    isReading = true;
    return task;
}

void CodesModel::end(const std::stop_source& ended)
{
    if (ended == task)
        isReading = false;
}

} // namespace folvane
