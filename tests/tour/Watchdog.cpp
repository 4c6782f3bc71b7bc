#include "tour/Watchdog.h"

#include <algorithm>

namespace folvane {

Watchdog::Watchdog() : m_thread([this](const std::stop_token& stop) { beat(stop); }) {}

void Watchdog::start()
{
    m_longest = {};
    resume();
}

void Watchdog::resume()
{
    m_since = std::chrono::steady_clock::now();
    m_measures = true;
}

void Watchdog::beat(const std::stop_token& stop)
{
    using namespace std::chrono;
    while (!stop.stop_requested()) {
        if (m_measures && !m_underWay.exchange(true)) {
            const auto heartbeat = [this, posted = steady_clock::now()] { handle(posted); };
            QMetaObject::invokeMethod(this, heartbeat, Qt::QueuedConnection);
        }
        std::this_thread::sleep_for(2ms);
    }
}

void Watchdog::handle(std::chrono::steady_clock::time_point posted)
{
    using Length = decltype(m_longest);
    if (m_measures)
        m_longest = std::max<Length>(m_longest, std::chrono::steady_clock::now() - std::max(posted, m_since));
    m_underWay = false;
}

} // namespace folvane
