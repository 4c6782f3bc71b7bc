#pragma once

#include "records/PageItem.h"

#include <QProperty>
#include <QSet>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <memory>
#include <optional>
#include <vector>

namespace folvane {

/// One open document: a list of pages that point at source files. Shared by everything that shows it, on the
/// interface thread only. The observed fields notify on change, and only on change.
class OpenFile {
public:
    enum class Origin { Pdf, Pictures };

    OpenFile(QUrl url, Origin origin, std::vector<PageItem> pages,
             std::optional<QString> password = std::nullopt);

    const QUuid id = QUuid::createUuid();
    const QUrl url;     ///< the file it was opened from (of pictures: the first); stays after Save As
    const QString name; ///< last path component of `url` without its ending
    const bool isPDF;

    QProperty<std::vector<PageItem>> pages; ///< never empty while the document is open
    const std::optional<QString> password;  ///< what unlocked the source; in memory only
    QProperty<bool> isEdited;               ///< holds changes that no Save As has written
    QProperty<QSet<QUuid>> selection;       ///< ids; their order is that of `pages`

    bool hasStamps() const;
    /// The selected pages in list order; all pages when nothing (or nothing that still exists) is selected.
    std::vector<PageItem> selectedPages() const;
    /// The 1-based positions of `selectedPages()` in the list, ascending.
    QList<int> selectedPositions() const;
    /// The ids that a command of the top bar takes: the selection, or all pages when there is none.
    QSet<QUuid> targetIDs() const;
    /// The ids that a gesture on this page takes: the selection when the page is in it, else the page alone.
    QSet<QUuid> groupOf(const QUuid& page) const;
};

using OpenFilePtr = std::shared_ptr<OpenFile>;

} // namespace folvane
