#pragma once

#include "controls/PaintedButton.h"
#include "controls/style/icons.h"

namespace folvane {

/// One tool on the home page: a button with an icon, a title, and a sentence that wraps. Its shadow lies in a margin
/// around what it seems to be.
class ToolTile : public PaintedButton {
    Q_OBJECT

public:
    ToolTile(Icon icon, const QString& title, const QString& detail, QWidget* parent = nullptr);

    static QMargins margin();
    /// Without the margin.
    static int frameHeight(int textHeight);
    int textHeight(int frameWidth) const;
    /// The texts begin where they would if they were as high as this, so that those of a row begin at one height.
    void alignTo(int textHeight);
    QRect frame() const { return rect().marginsRemoved(margin()); }

protected:
    void draw(QPainter& painter, const ControlState& state) const override;
    bool hitButton(const QPoint& place) const override { return frame().contains(place); }

private:
    Icon m_icon;
    QString m_detail;
    int m_alignedTo = 0;
};

} // namespace folvane
