#pragma once

#include "controls/Watches.h"
#include "shell/pageGrid/PageGridLayout.h"
#include "shell/pageGrid/pageCell.h"
#include "viewParts/PageListModel.h"
#include "viewParts/PictureList.h"

#include "documents/AppModel.h"

namespace folvane {

class PageSelectionModel;

/// The pages of a document as a scrolling grid: selecting, reordering by drag, and taking in dropped files. It lays out
/// and paints its cells itself; being a list view gives it the keyboard and screen readers.
class PageGrid : public PictureList {
    Q_OBJECT

public:
    explicit PageGrid(AppModel& model, QWidget* parent = nullptr);

    void setFile(OpenFilePtr file);
    /// Moves the selected pages, or the one that the keys act from, by so many places (negative: towards the front).
    void movePages(int steps);

    QRect visualRect(const QModelIndex& index) const override;
    QModelIndex indexAt(const QPoint& point) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void doItemsLayout() override;

signals:
    /// By a double click, or by the Return key.
    void opened(QUuid page);
    void pageMenuRequested(QUuid page, QPoint globalPosition);

protected:
    QList<PagePictures::Key> keysOnScreen() const override;
    void carry(int pages) override { movePages(pages); }
    int columns() const override { return pageLayout().columns(); }

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int, int) override { viewport()->update(); }
    void updateGeometries() override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

    int verticalOffset() const override;
    int horizontalOffset() const override { return 0; }
    bool isIndexHidden(const QModelIndex&) const override { return false; }
    void setSelection(const QRect&, QItemSelectionModel::SelectionFlags) override {}
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex&, const QEvent*) const override
    {
        return QItemSelectionModel::NoUpdate; // clicks and keys go to m_selection
    }

private:
    /// Where what is dragged over would land: in the gap before this cell, or in the one behind it.
    struct DropMark {
        int cell = 0;
        bool isBehind = false;
    };

    PageGridLayout pageLayout() const;
    QPoint toContent(const QPoint& point) const { return point + QPoint(0, verticalOffset()); }
    std::pair<int, int> rowsOnScreen() const;
    void showPages();
    void showSelection();
    std::optional<QUuid> pageAt(int row) const;
    PageCell cellAt(int row) const;
    void drawDropMark(QPainter& painter, const DropMark& mark) const;

    // pageGridInput.cpp
    bool walkByKey(QKeyEvent* event);
    bool moveByKey(QKeyEvent* event);
    bool commandByKey(QKeyEvent* event);
    void goTo(int row, Qt::KeyboardModifiers modifiers);

    // pageGridDragging.cpp
    void dragPage(const QUuid& page);
    std::optional<DropMark> dropMark() const;
    void dragOver(bool files, const QUuid& page, const QPoint& place);
    void setFilesOver(bool over);
    void endDrag();

    AppModel& m_model;
    OpenFilePtr m_file;
    PageListModel m_pages;
    PageSelectionModel* m_selection;
    Watches m_watches;
    QHash<QUuid, int> m_scrolledTo; ///< by document
    std::optional<QUuid> m_pressed;
    std::optional<QPoint> m_draggedTo; ///< where pages or files are dragged over the view
    bool m_filesOver = false;
    QSet<QUuid> m_lifted; ///< the pages that are dragged over the view
    bool m_byKeyboard = false;
};

} // namespace folvane
