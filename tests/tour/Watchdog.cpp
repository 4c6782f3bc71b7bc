#include "tour/Watchdog.h"

#include <algorithm>

namespace folvane {

Watchdog::Watchdog() : m_thread([this](const std::stop_token& stop) { beat(stop); }) {}

void Watchdog::start()
{
    m_longest = {};
    resume();
}

void Watchdog::pause()
{
    m_measures = false;
    ++m_round;
}

void Watchdog::resume()
{
    m_measures = true;
}

void Watchdog::beat(const std::stop_token& stop)
{
    using namespace std::chrono;
    while (!stop.stop_requested()) {
        if (m_measures && !m_underWay.exchange(true)) {
            const auto heartbeat = [this, round = m_round.load(), posted = steady_clock::now()] {
                handle(round, posted);
            };
            QMetaObject::invokeMethod(this, heartbeat, Qt::QueuedConnection);
        }
        std::this_thread::sleep_for(2ms);
    }
}

void Watchdog::handle(int round, std::chrono::steady_clock::time_point posted)
{
    if (m_measures && round == m_round)
        m_longest = std::max<decltype(m_longest)>(m_longest, std::chrono::steady_clock::now() - posted);
    m_underWay = false;
}

} // namespace folvane
