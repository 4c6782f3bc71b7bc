#pragma once

#include "records/FoundCode.h"

#include <QList>
#include <QProperty>
#include <QString>

#include <optional>
#include <stop_token>

namespace folvane {

/// The codes that were read, wherever the user goes meanwhile. On the interface thread.
class CodesModel {
public:
    CodesModel() = default;
    ~CodesModel() { stop(); }
    Q_DISABLE_COPY_MOVE(CodesModel)

    QProperty<QList<FoundCode>> found; ///< those of the newest read first, in its order
    QProperty<bool> isReading;
    QProperty<std::optional<QString>> emptyMessage; ///< why the last read found nothing
    std::stop_source task;                          ///< of the newest read

    /// A read begins, and the one before it stops. The new task.
    std::stop_source begin();
    /// A read has ended, which may have been overtaken by a newer one.
    void end(const std::stop_source& ended);
    void stop() { task.request_stop(); }
    void clear() { found = QList<FoundCode>(); }
};

} // namespace folvane
