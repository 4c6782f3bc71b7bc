#include "codes/reading/foundCodes.h"

namespace folvane {

QList<FoundCode> foundCodes(const std::vector<ReadCode>& codes, const QString& origin,
                            std::optional<int> page)
{
    QList<FoundCode> found;
    for (const ReadCode& code : codes)
        found.append({QUuid::createUuid(), code.payload, code.symbology, origin, page});
    return found;
}

} // namespace folvane
