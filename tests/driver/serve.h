#pragma once

#include "Program.h"

#include <QCoroTask>

namespace folvane::driver {

/// Answers the requests of standard input, one after the other, until its end; then stops what still runs.
QCoro::Task<> serve(Program* program);

} // namespace folvane::driver
