#include "documents/AppModel.h"
#include "platform/tasks/Clock.h"
#include "platform/tasks/spawn.h"

namespace folvane {

using namespace std::chrono_literals;

// The timer of the toast before is stopped: it can never take the newer one away.
void AppModel::showToast(QString text, std::optional<QUrl> reveal)
{
    m_toastTimer.request_stop();
    m_toastTimer = std::stop_source();
    toast = Toast{text, reveal};
    spawn(takeToastAway(reveal ? 6000ms : 2500ms, m_toastTimer.get_token()));
}

QCoro::Task<> AppModel::takeToastAway(std::chrono::milliseconds after, std::stop_token overtaken)
{
    co_await m_services.clock.sleep(after, overtaken);
    if (!overtaken.stop_requested()) // the destructor requests it, too
        toast = std::nullopt;
}

} // namespace folvane
