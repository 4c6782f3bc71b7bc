#pragma once

#include "Call.h"

#include <QCoroTask>

#include <functional>
#include <vector>

namespace folvane::driver {

/// A verb of the protocol. It reads the fields of its request, works, and tells what it found; what throws BadRequest
/// does so before it has changed anything.
struct Verb {
    /// Begins something that may end in a job of the model.
    using Operation = std::function<QCoro::Task<>()>;

    /// Has ended when `work` returns.
    Verb(const char* name, void (*work)(Call& call));
    /// Has ended when the task has.
    Verb(const char* name, QCoro::Task<> (*work)(CallPtr call));
    /// Has ended when the job that the operation begins has.
    Verb(const char* name, Operation (*work)(CallPtr call));

    const char* name;
    std::function<QCoro::Task<>(CallPtr)> carryOut;
};

using Verbs = std::vector<Verb>;

/// Starts an operation that may end in a job of the model, waits for that job's end, and decides the outcome unless that
/// is done. An empty operation does nothing.
QCoro::Task<> carryOutJob(CallPtr call, Verb::Operation operation);

/// Ends when the engine has done all that was asked of it before.
QCoro::Task<> engineCaughtUp(CallPtr call);

/// Null when there is no such verb.
const Verb* verbNamed(const QString& name);

// Each in the file of its name.
Verbs documentVerbs();
Verbs pageVerbs();
Verbs savingVerbs();
Verbs compressVerbs();
Verbs mergeVerbs();
Verbs tellingVerbs();
Verbs jobVerbs();
Verbs stateVerbs();

} // namespace folvane::driver
