#include "tools/merge/MergeListModel.h"

#include <algorithm>

namespace folvane {

void MergeListModel::setItems(std::vector<MergeItem> items)
{
    beginResetModel();
    m_items = std::move(items);
    endResetModel();
}

int MergeListModel::rowOf(const QUuid& id) const
{
    const auto found = std::ranges::find(m_items, id, &MergeItem::id);
    return found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
}

QString MergeListModel::pages(int row) const
{
    return tr("%1 pages").arg(item(row).pages.size());
}

int MergeListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant MergeListModel::data(const QModelIndex& index, int role) const
{
    switch (role) {
    case Qt::DisplayRole: return item(index.row()).name;
    case Qt::AccessibleTextRole:
        return QStringLiteral("%1. %2, %3")
            .arg(QString::number(index.row() + 1), item(index.row()).name, pages(index.row()));
    default: return {};
    }
}

} // namespace folvane
