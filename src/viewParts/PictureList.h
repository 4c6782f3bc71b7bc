#pragma once

#include "controls/dragging/DragScroller.h"
#include "controls/paper.h"
#include "documents/AppModel.h"
#include "engine/PagePictures.h"

#include <QAccessible>
#include <QBasicTimer>
#include <QListView>

#include <span>

namespace folvane {

/// The longer side of the pictures that lists of a document's pages share, in pixels.
inline constexpr int pagePictureSide = 360;

/// A list in which each row shows a picture of a page and is painted by the list itself. It asks for the pictures of what is on
/// screen, turns a spinner for those that are to come, knows a drag from a click, scrolls under it, and tells screen
/// readers where the keyboard is.
class PictureList : public QListView {
    Q_OBJECT

public:
    /// Every row on screen has its picture, or is known to have none.
    bool isComplete() const { return m_pictures.isComplete(); }

protected:
    struct Pictures {
        int longSide; ///< in pixels, at every screen scale
        QSize room;   ///< none is shown larger; device-independent pixels
    };

    PictureList(AppModel& model, const Pictures& pictures, QWidget* parent);

    /// Of what is on screen, most wanted first. It is asked only while the list can be seen.
    virtual QList<PagePictures::Key> keysOnScreen() const = 0;
    /// Asks for them: after the rows have changed. Scrolling and a new size do it by themselves.
    void wantPictures();
    PagePictures::Key keyOf(const PageItem& page) const;
    QList<PagePictures::Key> keysOf(std::span<const PageItem> pages) const;
    /// With its stamps.
    PaperPicture paperOf(const PageItem& page) const;

    void setCurrentRow(int row);
    /// After the rows have changed: `now` is where the current row stands, -1 when it has gone. Then its place, `before`, is
    /// taken by the row that came there.
    void keepCurrentRow(int now, int before);
    void tellReaders(QAccessible::Event event, int row);

    /// Where the button of the mouse went down, in the viewport.
    const QPoint& pressedAt() const { return m_pressedAt; }
    /// The left button is held and has come far enough from there to drag something.
    bool isPull(const QMouseEvent& event) const;
    DragScroller& scroller() { return m_scroller; }

    /// Carries along what the keys act on, by so many rows; negative towards the front.
    virtual void carry(int rows) = 0;
    /// Rows beside each other.
    virtual int columns() const { return 1; }
    /// Alt with an arrow, Home or End carries. False: it is another key.
    bool carryByKey(const QKeyEvent& event);

    void mousePressEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    StampPictures& m_stamps;
    const Pictures m_shown;
    PagePictures m_pictures;
    DragScroller m_scroller{*this};
    QBasicTimer m_spinner;
    int m_spinnerStep = 0;
    QPoint m_pressedAt;
};

} // namespace folvane
