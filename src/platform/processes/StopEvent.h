#pragma once

#include "platform/files/OwnedDescriptor.h"

#include <functional>
#include <stop_token>

namespace folvane {

/// A stop as something that poll() waits for.
class StopEvent {
public:
    explicit StopEvent(std::stop_token stop);

    /// Readable from the stop until clear(); -1 when the system has no descriptor left.
    int descriptor() const { return m_event.number(); }
    void clear() const;

private:
    OwnedDescriptor m_event;
    std::stop_callback<std::function<void()>> m_onStop;
};

} // namespace folvane
