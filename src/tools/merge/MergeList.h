#pragma once

#include "controls/Watches.h"
#include "tools/merge/MergeListModel.h"
#include "tools/merge/mergeRow.h"
#include "viewParts/PictureList.h"

#include "documents/AppModel.h"

namespace folvane {

/// The files to merge as a list of cards that are dragged, or moved with the keys, into order.
class MergeList : public PictureList {
    Q_OBJECT

public:
    explicit MergeList(AppModel& model, QWidget* parent = nullptr);

protected:
    QList<PagePictures::Key> keysOnScreen() const override;
    void carry(int rows) override { move(currentIndex().row(), rows); }

    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool viewportEvent(QEvent* event) override;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    /// What the pointer is over or has pressed.
    struct Spot {
        int row = -1;
        bool isRemove = false;
        bool operator==(const Spot&) const = default;
    };
    /// A row that hangs at the pointer.
    struct Drag {
        QUuid item;
        int grabbedAt = 0; ///< from the top of the row
        int pointer = 0;   ///< in the viewport
    };

    void showItems();
    QString toolTipAt(const QPoint& place) const;
    MergeRow rowAt(int row) const;
    QRect rectOf(int row) const;
    Spot spotAt(const QPoint& place) const;
    void setHovered(const Spot& spot);
    void remove(int row);
    void move(int row, int steps);

    // mergeListDragging.cpp
    void beginDrag(const QPoint& at);
    void dragTo(const QPoint& pointer);
    void endDrag(bool drops);
    int landingPlace() const;
    int placeOf(int row) const;
    void drawDrag(QPainter& painter) const;

    AppModel& m_model;
    MergeListModel m_rows;
    Spot m_hovered;
    Spot m_pressed;
    std::optional<Drag> m_drag;
    Watches m_watches;
};

} // namespace folvane
