#include "viewParts/PageListModel.h"

#include <algorithm>

namespace folvane {

void PageListModel::setPages(std::vector<PageItem> pages)
{
    if (hasSameIds(pages)) {
        m_pages = std::move(pages);
        if (!m_pages.empty())
            emit dataChanged(index(0), index(rowCount() - 1));
        return;
    }
    beginResetModel();
    m_pages = std::move(pages);
    endResetModel();
}

bool PageListModel::hasSameIds(const std::vector<PageItem>& pages) const
{
    return std::ranges::equal(pages, m_pages, {}, &PageItem::id, &PageItem::id);
}

QList<QUuid> PageListModel::ids() const
{
    QList<QUuid> ids;
    for (const PageItem& page : m_pages)
        ids.append(page.id);
    return ids;
}

int PageListModel::rowOf(const QUuid& id) const
{
    const auto found = std::ranges::find(m_pages, id, &PageItem::id);
    return found == m_pages.end() ? -1 : static_cast<int>(found - m_pages.begin());
}

bool PageListModel::hasStamps(int row) const
{
    return !m_pages[size_t(row)].stamps.empty();
}

int PageListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_pages.size());
}

QVariant PageListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int number = index.row() + 1;
    switch (role) {
    case Qt::DisplayRole: return number;
    case Qt::ToolTipRole: return hasStamps(index.row()) ? tr("Has signatures or stamps") : QString();
    case Qt::AccessibleTextRole: return tr("Page %1").arg(number);
    case Qt::AccessibleDescriptionRole:
        return hasStamps(index.row()) ? tr("Has signatures or stamps") : QString();
    default: return {};
    }
}

} // namespace folvane
