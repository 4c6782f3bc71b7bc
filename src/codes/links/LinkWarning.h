#pragma once

#include <QString>

namespace folvane {

/// What speaks against opening a link.
struct LinkWarning {
    enum class Kind {
        UserInfo,       ///< a name before "@", which reads like the site
        Lookalike,      ///< a site written almost as a brand
        BrandInAddress, ///< a brand somewhere else in the host
        PlainHttp,
        IpAddress,
        MixedScripts,
        InternationalName,
        Shortener
    };

    Kind kind;
    QString name = {}; ///< the user name, or the word of the brand; of the first three kinds only

    bool operator==(const LinkWarning&) const = default;
};

/// In the user's language; `realSite` is where the link leads.
QString sentenceOf(const LinkWarning& warning, const QString& realSite);

} // namespace folvane
