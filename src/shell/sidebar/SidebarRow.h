#pragma once

#include "controls/PaintedButton.h"
#include "controls/style/icons.h"

namespace folvane {

/// One row of the sidebar: an icon and a title, marked while what it leads to is shown.
class SidebarRow : public PaintedButton {
    Q_OBJECT

public:
    SidebarRow(Icon icon, const QString& title, QWidget* parent = nullptr);

    void setCurrent(bool current);
    /// Of title and icon; a place has black on accent.
    void setColor(const QColor& color);
    bool isCurrent() const { return m_current; }
    QSize sizeHint() const override { return {200, 32}; }

protected:
    void draw(QPainter& painter, const ControlState& state) const override;
    void keyPressEvent(QKeyEvent* event) override;
    /// What the title must leave free at the right.
    virtual int roomAtRight() const { return 8; }
    virtual void drawAtRight(QPainter&) const {}

private:
    Icon m_icon;
    QColor m_iconColor;
    QColor m_titleColor;
    bool m_current = false;
};

} // namespace folvane
