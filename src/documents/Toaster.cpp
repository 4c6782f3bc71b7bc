#include "documents/Toaster.h"

#include "platform/tasks/Clock.h"
#include "platform/tasks/spawn.h"

namespace folvane {

using namespace std::chrono_literals;

Toaster::~Toaster()
{
    m_timer.request_stop();
}

// The timer of the toast before is stopped: it can never take the newer one away.
void Toaster::show(QString text, std::optional<QUrl> reveal)
{
    m_timer.request_stop();
    m_timer = std::stop_source();
    m_shown = Toast{text, reveal};
    spawn(takeAway(reveal ? 6000ms : 2500ms, m_timer.get_token()));
}

QCoro::Task<> Toaster::takeAway(std::chrono::milliseconds after, std::stop_token overtaken)
{
    co_await m_clock.sleep(after, overtaken);
    if (!overtaken.stop_requested()) // the destructor requests it, too
        m_shown = std::nullopt;
}

} // namespace folvane
