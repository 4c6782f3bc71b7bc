#pragma once

#include "updates/UpdateChecker.h"

#include <QProperty>

namespace folvane {

/// What is known of newer builds. Nothing is looked for unless the user asks. On the interface thread.
class Updates {
public:
    explicit Updates(UpdateSource source = makersUpdateSource()) : m_source(std::move(source)) {}
    ~Updates();
    Q_DISABLE_COPY_MOVE(Updates)

    QProperty<bool> isChecking{false};
    QProperty<std::optional<UpdateChecker::Result>> result; ///< of the last check, until the next one

    /// Returns at once. Does nothing while a check runs.
    void check();

    QUrl productPage() const { return m_source.productPage; }

private:
    QCoro::Task<> finishCheck();

    UpdateSource m_source;
    std::stop_source m_end;
};

} // namespace folvane
