#pragma once

#include "verbs.h"

namespace folvane::driver {

/// Starts an operation that may end in a job of the model, waits for that job's end, and decides the outcome unless that
/// is done. An empty operation does nothing.
QCoro::Task<> carryOutJob(CallPtr call, Verb::Operation operation);

/// Ends when the engine has done all that was asked of it before.
QCoro::Task<> engineCaughtUp(CallPtr call);

} // namespace folvane::driver
