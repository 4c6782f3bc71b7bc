#pragma once

#include "records/PageItem.h"

#include <QAbstractListModel>

namespace folvane {

/// The pages of a document as rows, for the page grid and for screen readers.
class PageListModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setPages(std::vector<PageItem> pages);
    const std::vector<PageItem>& pages() const { return m_pages; }
    QList<QUuid> ids() const;
    /// -1 when there is no such page.
    int rowOf(const QUuid& id) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    bool hasStamps(int row) const;
    bool hasSameIds(const std::vector<PageItem>& pages) const;

    std::vector<PageItem> m_pages;
};

} // namespace folvane
