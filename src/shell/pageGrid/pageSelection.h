#pragma once

#include <QSet>
#include <QUuid>

#include <optional>

namespace folvane {

/// The selected pages, and the one from which a range is measured.
struct PageSelection {
    QSet<QUuid> pages;
    std::optional<QUuid> anchor;

    bool operator==(const PageSelection&) const = default;
};

/// The selection after a click on the page `id` of a document with the pages `order`:
///  1. with Ctrl (whatever else is held) the page joins or leaves, and is the new anchor;
///  2. with Shift and an anchor that is still there, all from the anchor to the page; the anchor stays;
///  3. otherwise the page alone, and it is the new anchor.
PageSelection selectionAfterClick(const PageSelection& before, const QList<QUuid>& order, const QUuid& id,
                                  Qt::KeyboardModifiers modifiers);

} // namespace folvane
