#include "shell/pageGrid/pageMoves.h"

#include <algorithm>

namespace folvane {

std::optional<QUuid> pageAfterMove(const QList<QUuid>& order, const QSet<QUuid>& group, qsizetype steps)
{
    QList<QUuid> rest;
    std::optional<qsizetype> place;
    for (const QUuid& page : order) {
        if (!group.contains(page))
            rest.append(page);
        else if (!place)
            place = rest.size();
    }
    const qsizetype after = std::clamp<qsizetype>(place.value_or(0) + steps, 0, rest.size());
    return after < rest.size() ? std::optional(rest[after]) : std::nullopt;
}

} // namespace folvane
