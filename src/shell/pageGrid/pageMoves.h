#pragma once

#include <QList>
#include <QSet>
#include <QUuid>

#include <optional>

namespace folvane {

/// Where a group of pages goes when it is moved by `steps` places (negative: towards the front) in a document with the
/// pages `order`: the page that it then stands in front of, or none for the end. The group closes up, and its place is
/// that of its first page. It stops at both ends.
std::optional<QUuid> pageAfterMove(const QList<QUuid>& order, const QSet<QUuid>& group, qsizetype steps);

} // namespace folvane
