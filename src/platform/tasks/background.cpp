#include "platform/tasks/background.h"

#include <QThread>

#include <algorithm>

namespace folvane {

JobQueue& backgroundQueue()
{
    static JobQueue queue(QStringLiteral("background"), std::max(2, QThread::idealThreadCount()), 0);
    return queue;
}

} // namespace folvane
