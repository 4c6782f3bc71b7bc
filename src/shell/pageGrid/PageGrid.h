#pragma once

#include "controls/Watches.h"
#include "controls/dragging/DragScroller.h"
#include "engine/PagePictures.h"
#include "shell/pageGrid/PageGridLayout.h"
#include "shell/pageGrid/PageListModel.h"
#include "shell/pageGrid/pageCell.h"
#include "shell/pageGrid/pageSelection.h"

#include "documents/AppModel.h"

#include <QAccessible>
#include <QBasicTimer>
#include <QListView>

namespace folvane {

/// The pages of a document as a scrolling grid: selecting, reordering by drag, and taking in dropped files. It lays out
/// and paints its cells itself; being a list view gives it the keyboard and screen readers.
class PageGrid : public QListView {
    Q_OBJECT

public:
    explicit PageGrid(AppModel& model, QWidget* parent = nullptr);

    void setFile(OpenFilePtr file);
    /// Moves the selected pages, or the one that the keys act from, by so many places (negative: towards the front).
    void movePages(int steps);

    /// Every page on screen has its picture, or is known to have none.
    bool isComplete() const;

    QRect visualRect(const QModelIndex& index) const override;
    QModelIndex indexAt(const QPoint& point) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void doItemsLayout() override;

signals:
    void pageMenuRequested(QUuid page, QPoint globalPosition);
    void picturesChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void updateGeometries() override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
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
        return QItemSelectionModel::NoUpdate; // the document holds the selection; see showSelection()
    }

private:
    /// Where what is dragged over would land: in the gap before this cell, or in the one behind it.
    struct DropMark {
        int cell = 0;
        bool isBehind = false;
    };

    PageGridLayout pageLayout() const;
    QPoint toContent(const QPoint& point) const { return point + QPoint(0, verticalOffset()); }
    PagePictures::Key key(const PageItem& page) const;
    std::pair<int, int> rowsOnScreen() const;
    void showPages();
    int stillAt(const QUuid& page, int before) const;
    void showSelection();
    void wantPictures();
    void drawDropMark(QPainter& painter, const DropMark& mark) const;

    void click(const QUuid& page, Qt::KeyboardModifiers modifiers);
    QSet<QUuid> groupOf(const QUuid& page) const;
    bool walkByKey(QKeyEvent* event);
    bool movePagesByKey(QKeyEvent* event);
    bool commandByKey(QKeyEvent* event);
    void goTo(int row, Qt::KeyboardModifiers modifiers);
    void dragPage(const QUuid& page);
    std::optional<QUuid> pageAt(int row) const;
    PageCell cellAt(int row) const;
    std::optional<DropMark> dropMark() const;
    void dragOver(bool files, const QUuid& page, const QPoint& place);
    void setFilesOver(bool over);
    void endDrag();
    void tellReaders(QAccessible::Event event, int row);

    AppModel& m_model;
    OpenFilePtr m_file;
    PageListModel m_pages;
    PagePictures m_pictures;
    Watches m_watches;
    std::optional<QUuid> m_anchor;  ///< may be a page of the document shown before
    QHash<QUuid, int> m_scrolledTo; ///< by document
    std::optional<QUuid> m_pressed;
    QPoint m_pressedAt;
    DragScroller m_scroller{*this};
    std::optional<QPoint> m_draggedTo; ///< where pages or files are dragged over the view
    bool m_filesOver = false;
    QSet<QUuid> m_lifted;            ///< the pages that are dragged over the view
    bool m_showingSelection = false; ///< the document's selection is on its way to the view
    bool m_byKeyboard = false;
    QBasicTimer m_spinner;
    int m_spinnerStep = 0;
};

} // namespace folvane
