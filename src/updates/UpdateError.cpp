#include "updates/UpdateError.h"

#include <QCoreApplication>

namespace folvane {

UpdateError UpdateError::because(const QString& words)
{
    //: Check for Updates error. The placeholder is the system's error message.
    return UpdateError(
        QCoreApplication::translate("UpdateError", "Couldn't check for updates: %1").arg(words));
}

} // namespace folvane
