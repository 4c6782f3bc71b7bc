#pragma once

#include <QString>

namespace folvane {

/// Where a helper program of ours lies: beside the running one, as it is built, or in ../libexec/folvane, as it is installed.
/// Empty when it is in neither place.
QString helperProgram(const char* name);

} // namespace folvane
