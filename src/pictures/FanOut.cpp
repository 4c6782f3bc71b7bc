#include "pictures/FanOut.h"

#include <QThread>

namespace folvane {

QThreadPool& pixelThreads()
{
    static QThreadPool pool;
    static const bool sized = [] {
        pool.setMaxThreadCount(QThread::idealThreadCount());
        return true;
    }();
    Q_UNUSED(sized);
    return pool;
}

} // namespace folvane
