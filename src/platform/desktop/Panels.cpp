#include "platform/desktop/Panels.h"

namespace folvane {

Panels::~Panels() = default;

} // namespace folvane
