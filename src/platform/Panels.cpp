#include "platform/Panels.h"

namespace folvane {

Panels::~Panels() = default;

} // namespace folvane
