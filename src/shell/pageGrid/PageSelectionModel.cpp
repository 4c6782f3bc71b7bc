#include "shell/pageGrid/PageSelectionModel.h"

#include "shell/pageGrid/pageSelection.h"

namespace folvane {

PageSelectionModel::PageSelectionModel(PageListModel& pages, QObject* parent)
    : QItemSelectionModel(&pages, parent), m_pages(pages)
{
}

void PageSelectionModel::setFile(OpenFilePtr file)
{
    m_file = std::move(file);
    if (!m_file)
        m_anchor.reset();
}

void PageSelectionModel::mirror()
{
    const QSet<QUuid> selected = m_file->selection.value();
    QItemSelection rows;
    for (int row = 0; row < m_pages.rowCount(); ++row) {
        if (!selected.contains(m_pages.pages()[size_t(row)].id))
            continue;
        const bool continues = !rows.isEmpty() && rows.last().bottom() == row - 1;
        const QModelIndex first = continues ? QModelIndex(rows.takeLast().topLeft()) : m_pages.index(row);
        rows.append(QItemSelectionRange(first, m_pages.index(row)));
    }
    QItemSelectionModel::select(rows, ClearAndSelect);
}

void PageSelectionModel::click(const QUuid& page, Qt::KeyboardModifiers modifiers)
{
    const PageSelection before{m_file->selection.value(), m_anchor};
    const PageSelection after = selectionAfterClick(before, m_pages.ids(), page, modifiers);
    m_anchor = after.anchor;
    m_file->selection = after.pages;
}

void PageSelectionModel::select(const QItemSelection& rows, SelectionFlags command)
{
    QItemSelectionModel::select(rows, command);
    if (!m_file || command == NoUpdate)
        return;
    QSet<QUuid> pages;
    for (const QModelIndex& index : selectedIndexes())
        pages.insert(m_pages.pages()[size_t(index.row())].id);
    m_file->selection = pages;
}

// The rows are new. Nobody has deselected anything.
void PageSelectionModel::reset()
{
    const QSignalBlocker quiet(this);
    QItemSelectionModel::select(QItemSelection(), Clear);
    clearCurrentIndex();
}

} // namespace folvane
