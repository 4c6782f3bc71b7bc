#include "updates/UpdateRelease.h"

namespace folvane {

QUrl UpdateRelease::downloadURL(const QUrl& productPage) const
{
    return url && isOnSiteOf(productPage, *url) ? QUrl(*url, QUrl::StrictMode) : productPage;
}

// The letters tell of their case; what they mean as a host is the parser's to say: a name and "@" may stand before it.
bool isOnSiteOf(const QUrl& page, const QString& address)
{
    return address.startsWith(QStringLiteral("https://") + page.host())
           && QUrl(address, QUrl::StrictMode).host() == page.host();
}

} // namespace folvane
