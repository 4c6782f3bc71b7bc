#pragma once

#include "tools/sign/StampFrame.h"

#include <QWidget>

#include <optional>

namespace folvane {

/// The outline and the handles of the selected stamp, over all stamps of the page.
class StampHandles : public QWidget {
public:
    explicit StampHandles(QWidget* parent);

    /// The frame of a stamp on a page whose upper left corner stands there in the parent; none hides them.
    void setFrame(const std::optional<StampFrame>& frame, QPointF page);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<StampFrame> m_frame;
    QPointF m_page;
};

} // namespace folvane
