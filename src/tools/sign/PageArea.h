#pragma once

#include "documents/AppModel.h"
#include "engine/PagePictures.h"
#include "tools/sign/StampFrame.h"

#include <QWidget>

namespace folvane {

class PlacedStamp;
class Spinner;
class StampHandles;

/// One page, as large as there is room, with its stamps, which are dragged and taken hold of here, or moved with the keys. What it
/// shows and which stamp is selected is told; it reports wishes.
class PageArea : public QWidget {
    Q_OBJECT

public:
    explicit PageArea(AppModel& model, QWidget* parent = nullptr);
    ~PageArea() override;

    /// `number` is its place in the document, from 1. No page empties it.
    void setPage(const std::optional<PageItem>& page, int number);
    /// The placement with the outline and the handles.
    void setSelected(const std::optional<QUuid>& placement);
    /// Gives the keyboard to the selected stamp, or to the page.
    void takeFocus();
    /// Where the page stands; empty while its picture is not there.
    QRectF pageRect() const;
    /// The page's picture is there, or is known not to come.
    bool isComplete() const { return m_pictures.isComplete(); }

signals:
    void selected(std::optional<QUuid> placement);
    void changed(folvane::StampPlacement placement);
    void removeRequested();
    /// To another page, by so many places.
    void stepRequested(int pages);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// What lies under a point: the part of a stamp, none of the page.
    struct Spot {
        PlacedStamp* stamp = nullptr;
        StampFrame::Part part = StampFrame::Part::None;
    };

    std::optional<PagePictures::Key> key() const;
    QRectF room() const;
    void wantPicture();
    void showPage();
    void showStamps();
    void keepStamps(qsizetype count);
    PlacedStamp* addStamp();
    void showHandles();
    void showCursor(const Spot& spot);
    PlacedStamp* selectedStamp() const;
    Spot spotAt(QPointF point) const;
    QPointF onPage(QPointF point) const { return point - pageRect().topLeft(); }

    AppModel& m_model;
    PagePictures m_pictures;
    std::optional<PageItem> m_page;
    std::optional<QUuid> m_selected;
    QList<PlacedStamp*> m_stamps; ///< as on the page, the lowest first
    StampHandles* m_handles;
    Spinner* m_spinner;
};

} // namespace folvane
