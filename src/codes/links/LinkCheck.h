#pragma once

#include "codes/links/LinkWarning.h"
#include "codes/links/PublicSuffixes.h"

#include <QList>
#include <QUrl>

namespace folvane {

/// Where a link leads and what speaks against opening it, as far as its text alone tells.
struct LinkCheck {
    QUrl url;
    QString displayAddress; ///< the whole address, in which the host can be read
    QString host;           ///< in lower case, with the letters that "xn--" stands for
    QString realSite;       ///< what somebody registered and answers for: "example.com"
    QList<LinkWarning> warnings;

    bool operator==(const LinkCheck&) const = default;
};

/// `rawText` is what a code holds, in which the host may stand in letters that `url` has encoded; null when that is not known.
LinkCheck checkLink(const QUrl& url, const QString& rawText = QString(),
                    const PublicSuffixes& suffixes = PublicSuffixes::listed());

} // namespace folvane
