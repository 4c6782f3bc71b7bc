#include "viewParts/openLink.h"

#include "documents/AppModel.h"
#include "platform/desktop/Workspace.h"

namespace folvane {

bool openLink(AppModel& model, const QUrl& link)
{
    const bool isOpen = model.services().workspace.openLink(link);
    if (!isOpen)
        model.errorMessage =
            QCoreApplication::translate("folvane::openLink", "No program was found that opens this link.");
    return isOpen;
}

} // namespace folvane
