#pragma once

#include "controls/style/icons.h"

#include <QHBoxLayout>

namespace folvane {

class Button;

/// A row of tool buttons, with their titles or, where there is no room for them, as icons.
class ToolButtons : public QHBoxLayout {
public:
    /// The buttons become children of `bar`, into whose layout this goes.
    explicit ToolButtons(QWidget* bar);

    /// The title is also the button's tooltip.
    Button* add(Icon icon, const QString& title);
    /// Shows the titles if the row fits into `width` with them.
    void fitInto(int width);
    /// The width that the row needs at least: that of its icons.
    int narrowest() const { return m_widthOfIcons; }

private:
    QWidget* m_bar;
    QList<Button*> m_buttons;
    int m_widthWithTitles = 0;
    int m_widthOfIcons = 0;
};

} // namespace folvane
