#pragma once

#include <QDBusConnection>

#include <optional>

namespace folvane {

/// The bus of the person's session, connected at the first call. None when the session has none or it cannot be
/// reached: a bus is never started for us.
std::optional<QDBusConnection> sessionBus();

} // namespace folvane
