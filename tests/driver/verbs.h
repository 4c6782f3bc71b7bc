#pragma once

#include "Call.h"

#include <functional>
#include <map>

namespace folvane::driver {

/// Carries out a verb of the protocol: reads the fields of the request, works, and tells what it found. What throws does
/// so before it has changed anything.
using Verb = std::function<QCoro::Task<>(CallPtr)>;
using Verbs = std::map<QString, Verb>;

/// Ends a verb whose button is disabled.
struct Refused {};

/// A verb that has ended when `work` returns.
Verb atOnce(void (*work)(Call& call));
/// A verb that may begin a job of the model: it has ended when that has, and decides the outcome unless `work` does.
Verb job(const Verb& work);

QJsonObject toldPlacement(const StampPlacement& placement);

/// Empty when there is none of this name.
Verb verbNamed(const QString& name);

// Each in the file of its name.
Verbs documentVerbs();
Verbs savingVerbs();
Verbs compressVerbs();
Verbs mergeVerbs();
Verbs stampVerbs();
Verbs codeVerbs();
Verbs tellingVerbs();

} // namespace folvane::driver
