#pragma once

#include "documents/failures.h"
#include "records/BusyState.h"

#include <QProperty>

namespace folvane {

/// Runs the one job that stands behind the busy overlay.
class JobRunner {
public:
    /// The fields that it sets; they must outlive this.
    struct Shown {
        QProperty<std::optional<BusyState>>& busy;
        QProperty<std::optional<QString>>& errorMessage;
    };

    explicit JobRunner(Shown shown) : m_shown(shown) {}
    /// Stops the job.
    ~JobRunner();
    Q_DISABLE_COPY_MOVE(JobRunner)

    /// Starts it, unless another one is running: then nothing happens.
    void run(QString title, Job work);

private:
    QCoro::Task<> finish(Job work, std::stop_token stop);

    Shown m_shown;
    std::stop_source m_end;
};

} // namespace folvane
