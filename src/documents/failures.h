#pragma once

#include <QCoroTask>

#include <QString>

#include <functional>
#include <optional>
#include <stop_token>

namespace folvane {

/// Work that a person started and may cancel.
using Job = std::function<QCoro::Task<>(std::stop_token)>;

/// Does the work. Gives the sentence that the user is told when it fails, `otherwise` where the failure is of no known kind;
/// none when it did not fail or was cancelled. Throws nothing.
QCoro::Task<std::optional<QString>> failureOf(Job work, std::stop_token stop, QString otherwise);

} // namespace folvane
