#pragma once

#include "Call.h"

#include <QCoroTask>

#include <functional>

namespace folvane::driver {

/// Starts an operation that may end in a job of the model, waits for that job's end, and decides the outcome.
QCoro::Task<> carryOutJob(CallPtr call, std::function<QCoro::Task<>()> operation);

/// Ends when the page with that id shows another turn than `before`, or is gone.
QCoro::Task<> pageTurned(OpenFilePtr file, QUuid page, int before);

/// Ends when the engine has done all that was asked of it before.
QCoro::Task<> engineCaughtUp(PDFEngine* engine);

} // namespace folvane::driver
