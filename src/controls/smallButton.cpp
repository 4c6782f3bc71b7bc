#include "controls/smallButton.h"

#include "controls/style/Theme.h"

#include <QToolButton>

namespace folvane {

QToolButton* makeSmallButton(Icon icon, int side, int iconSide, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setIcon(themedIcon(icon, theme::secondaryText));
    button->setIconSize(QSize(iconSide, iconSide));
    button->setFixedSize(side, side);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

} // namespace folvane
