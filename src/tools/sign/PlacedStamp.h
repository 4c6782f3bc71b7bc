#pragma once

#include "controls/paper.h"
#include "tools/sign/StampFrame.h"

#include <QWidget>

#include <optional>

namespace folvane {

/// One stamp on the page that its parent shows: it is painted, has the keyboard, and is known to screen readers, by itself. The mouse is the
/// parent's, which knows what lies over what: it hands drags on, in the page's units from its upper left corner.
class PlacedStamp : public QWidget {
    Q_OBJECT

public:
    explicit PlacedStamp(QWidget* parent);

    /// `page`: where the page stands in the parent. `name` is that of the stamp.
    void setStamp(const StampPicture& stamp, const QRectF& page, const QString& name);
    void setSelected(bool selected);
    const StampPlacement& placement() const { return m_stamp.placement; }
    StampFrame frame() const;
    /// It has a picture; otherwise nothing of it can be seen or taken hold of.
    bool hasPicture() const { return !m_stamp.picture.isNull(); }

    void beginDrag(StampFrame::Part part, QPointF at);
    void dragTo(QPointF point);
    void endDrag() { m_drag.reset(); }
    bool isSelected() const { return m_isSelected; }
    bool isDragged() const { return m_drag.has_value(); }

signals:
    void selected();
    void changed(folvane::StampPlacement placement);

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    struct Drag {
        StampFrame::Part part;
        StampPlacement start;
        QPointF from;
    };

    void describe(const QString& name);
    StampFrame::TurnSide turnSide() const;

    StampPicture m_stamp;
    QRectF m_page;
    StampFrame::TurnSide m_turnSide = StampFrame::TurnSide::Above;
    bool m_isSelected = false;
    std::optional<Drag> m_drag;
};

} // namespace folvane
