#pragma once

#include "records/MergeItem.h"

#include <QAbstractListModel>

namespace folvane {

/// The files to merge as rows, for the list and for screen readers.
class MergeListModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setItems(std::vector<MergeItem> items);
    const MergeItem& item(int row) const { return m_items[static_cast<size_t>(row)]; }
    /// -1 when there is no such row.
    int rowOf(const QUuid& id) const;
    /// "12 pages".
    QString pages(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<MergeItem> m_items;
};

} // namespace folvane
