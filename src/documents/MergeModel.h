#pragma once

#include "records/MergeItem.h"

#include <QProperty>
#include <QSet>

#include <vector>

namespace folvane {

class OpenFile;

/// The files to merge, in their order. On the interface thread; the observed list notifies on change.
class MergeModel {
public:
    QProperty<std::vector<MergeItem>> items;

    int pageCount() const;

    /// The document as it is now: what is edited later does not reach the list.
    void add(const OpenFile& file);
    /// All pages of a file, untouched.
    void add(const QUrl& url, std::vector<PageItem> pages);
    /// Puts the rows at these positions, in their order, in front of the row that is at `to` now; the number of rows is
    /// the end.
    void move(const QSet<int>& from, int to);
    void remove(const QUuid& item);
    void clear();

private:
    void append(MergeItem item);
};

} // namespace folvane
