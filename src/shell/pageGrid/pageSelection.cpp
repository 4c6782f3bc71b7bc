#include "shell/pageGrid/pageSelection.h"

#include <algorithm>

namespace folvane {

PageSelection selectionAfterClick(const PageSelection& before, const QList<QUuid>& order, const QUuid& id,
                                  Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::ControlModifier) {
        PageSelection after{before.pages, id};
        if (!after.pages.remove(id))
            after.pages.insert(id);
        return after;
    }
    if ((modifiers & Qt::ShiftModifier) && before.anchor) {
        const auto [first, last] = std::minmax(order.indexOf(*before.anchor), order.indexOf(id));
        if (first >= 0)
            return {QSet<QUuid>(order.begin() + first, order.begin() + last + 1), before.anchor};
    }
    return {{id}, id};
}

} // namespace folvane
