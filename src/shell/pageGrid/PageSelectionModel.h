#pragma once

#include "documents/AppModel.h"
#include "viewParts/PageListModel.h"

#include <QItemSelectionModel>

namespace folvane {

/// What a view of pages shows as selected: a mirror of the document's selection, which is the only one. Whoever selects
/// here, as screen readers do, changes that one. It also holds the page from which a range is measured.
class PageSelectionModel : public QItemSelectionModel {
    Q_OBJECT

public:
    PageSelectionModel(PageListModel& pages, QObject* parent);

    /// The page from which ranges are measured stays, and may be one of the document before; without a document it is forgotten.
    void setFile(OpenFilePtr file);
    /// Shows what is selected now: after the document's selection or its pages have changed.
    void mirror();

    void click(const QUuid& page, Qt::KeyboardModifiers modifiers);

    using QItemSelectionModel::select;
    void select(const QItemSelection& rows, SelectionFlags command) override;
    void reset() override;

private:
    PageListModel& m_pages;
    OpenFilePtr m_file;
    std::optional<QUuid> m_anchor;
};

} // namespace folvane
