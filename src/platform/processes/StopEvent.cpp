#include "platform/processes/StopEvent.h"

#include <sys/eventfd.h>

namespace folvane {

StopEvent::StopEvent(std::stop_token stop)
    : m_event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      m_onStop(std::move(stop), [event = m_event.number()] { ::eventfd_write(event, 1); })
{
}

void StopEvent::clear() const
{
    eventfd_t count = 0;
    ::eventfd_read(m_event.number(), &count);
}

} // namespace folvane
