#include "updates/Updates.h"

#include "platform/tasks/spawn.h"

namespace folvane {

Updates::~Updates()
{
    m_end.request_stop();
}

void Updates::check()
{
    if (isChecking)
        return;
    isChecking = true;
    result = std::nullopt;
    spawn(finishCheck());
}

// The destructor requests the stop, and after that no check gives a result.
QCoro::Task<> Updates::finishCheck()
{
    QCoro::Task<UpdateChecker::Result> checking = UpdateChecker::check(m_source, m_end.get_token());
    const UpdateChecker::Result found = co_await checking;
    result = found;
    isChecking = false;
}

} // namespace folvane
