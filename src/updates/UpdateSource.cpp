#include "updates/UpdateSource.h"

#include "config.h"

namespace folvane {

UpdateSource makersUpdateSource()
{
    QUrl page;
    page.setScheme(QStringLiteral("https"));
    page.setHost(config::hostName.toString());
    page.setPath(config::productPath.toString());
    return {page, page.resolved(QUrl(QStringLiteral("version.json"))), config::buildNumber};
}

} // namespace folvane
