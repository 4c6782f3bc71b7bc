#pragma once

#include <QByteArray>

namespace folvane {

/// Three pages ("Page 1" to "Page 3") with all that can hang on pages, and a secret on each page's own stream. `tag`
/// goes into texts, so that two books can be told apart:
///  - page 1 links to page 2 (explicit) and to page 3 (by the name "end"), and has a layer that is hidden;
///  - page 3 links back to page 1;
///  - bookmarks: "One" (page 1) with "Two" (page 2) below it, "Three" (page 3);
///  - page labels i, ii, then 1;
///  - a field "name" with a widget on page 1 and one on page 3, and a signed field "signature" on page 2;
///  - title, author, an output intent, an open action, a document script, an attachment, a structure tree.
QByteArray book(const QByteArray& tag);

} // namespace folvane
