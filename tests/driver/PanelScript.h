#pragma once

#include "support/ScriptedPanels.h"

#include <QJsonArray>

namespace folvane::driver {

class Request;

/// Panels that answer from the request: what is in `to`, `folder`, `files` and `replace`, then Cancel.
ScriptedPanels panelsFor(const Request& request);
/// What was asked since it was last taken.
QJsonArray takeAsked(ScriptedPanels& panels);
/// More panels that ask for a place came up than the request has answers for: the last one ended with Cancel.
bool wasCancelled(const ScriptedPanels& panels);

} // namespace folvane::driver
