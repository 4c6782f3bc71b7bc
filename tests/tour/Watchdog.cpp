#include "tour/Watchdog.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>

namespace folvane {

namespace {

using Time = std::chrono::steady_clock;

constexpr std::chrono::milliseconds interval{2};

class Heartbeat : public QEvent {
public:
    explicit Heartbeat(int ofRound) : QEvent(kind()), round(ofRound) {}
    static Type kind()
    {
        static const auto type = Type(registerEventType());
        return type;
    }

    const int round;
    const Time::time_point posted = Time::now();
};

} // namespace

Watchdog::Watchdog() : m_thread([this](const std::stop_token& stop) { beat(stop); }) {}

Watchdog::~Watchdog()
{
    m_thread.request_stop();
    m_thread.join();
}

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

void Watchdog::beat(std::stop_token stop)
{
    while (!stop.stop_requested()) {
        if (m_measures && !m_underWay.exchange(true))
            QCoreApplication::postEvent(this, new Heartbeat(m_round));
        std::this_thread::sleep_for(interval);
    }
}

bool Watchdog::event(QEvent* event)
{
    if (event->type() != Heartbeat::kind())
        return QObject::event(event);
    const auto* heartbeat = static_cast<Heartbeat*>(event);
    if (m_measures && heartbeat->round == m_round)
        m_longest = std::max<decltype(m_longest)>(m_longest, Time::now() - heartbeat->posted);
    m_underWay = false;
    return true;
}

} // namespace folvane
