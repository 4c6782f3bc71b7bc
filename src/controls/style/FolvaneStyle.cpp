#include "controls/style/FolvaneStyle.h"

#include "controls/style/Theme.h"
#include "controls/style/blending.h"
#include "controls/style/mnemonics.h"
#include "controls/style/stylePieces.h"
#include "controls/style/visualMargin.h"

#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>

namespace folvane {

namespace {

bool isToolTip(const QWidget* widget)
{
    return widget->inherits("QTipLabel");
}

} // namespace

FolvaneStyle::FolvaneStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

QPalette FolvaneStyle::standardPalette() const
{
    return theme::palette();
}

void FolvaneStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QScrollBar*>(widget)) {
        widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
        widget->setAttribute(Qt::WA_Hover);
    }
    const bool isMenu = qobject_cast<QMenu*>(widget);
    if (isMenu)
        widget->installEventFilter(this);
    if (isMenu || isToolTip(widget))
        widget->setAttribute(Qt::WA_TranslucentBackground, screenBlendsWindows());
}

void FolvaneStyle::unpolish(QWidget* widget)
{
    if (qobject_cast<QMenu*>(widget))
        widget->removeEventFilter(this);
    QProxyStyle::unpolish(widget);
}

// The frame of a menu, and not its shadow, stands where it was asked to.
bool FolvaneStyle::eventFilter(QObject* watched, QEvent* event)
{
    auto* menu = qobject_cast<QMenu*>(watched);
    if (menu && event->type() == QEvent::Show && !event->spontaneous())
        menu->move(menu->pos() - QPoint(menus::shadowRoom(menu), menus::shadowRoom(menu)));
    return QProxyStyle::eventFilter(watched, event);
}

void FolvaneStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const
{
    switch (element) {
    case PE_PanelMenu: menus::drawPanel(*painter, option->rect, widget); return;
    case PE_FrameMenu: return; // part of the panel
    case PE_PanelTipLabel: fields::drawToolTip(*painter, option->rect, widget); return;
    case PE_PanelLineEdit:
        fields::drawLineEdit(*painter, *qstyleoption_cast<const QStyleOptionFrame*>(option));
        return;
    case PE_FrameLineEdit: return; // part of the panel
    case PE_Frame: fields::drawFrame(*painter, option->rect); return;
    case PE_PanelScrollAreaCorner: return;
    case PE_FrameFocusRect: fields::drawFocus(*painter, option->rect); return;
    default: QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void FolvaneStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const
{
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    switch (element) {
    case CE_MenuItem: menus::drawItem(*painter, *item, qobject_cast<const QMenu*>(widget)); return;
    case CE_MenuEmptyArea:
    case CE_MenuHMargin:
    case CE_MenuVMargin: return; // the panel shows
    case CE_MenuBarItem: menus::drawBarItem(*painter, *item); return;
    case CE_MenuBarEmptyArea: painter->fillRect(option->rect, theme::chrome); return;
    case CE_Splitter: painter->fillRect(option->rect, theme::hairline); return;
    default: QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void FolvaneStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const
{
    switch (control) {
    case CC_ScrollBar:
        scrollBars::draw(*painter, *qstyleoption_cast<const QStyleOptionSlider*>(option),
                         subControlRect(control, option, SC_ScrollBarSlider, widget));
        return;
    case CC_SpinBox:
        spinBoxes::draw(*painter, *qstyleoption_cast<const QStyleOptionSpinBox*>(option));
        return;
    case CC_ToolButton:
        toolButtons::draw(*painter, *qstyleoption_cast<const QStyleOptionToolButton*>(option), widget);
        return;
    default: QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

QRect FolvaneStyle::subElementRect(SubElement element, const QStyleOption* option,
                                   const QWidget* widget) const
{
    switch (element) {
    case SE_PushButtonLayoutItem:
    case SE_FrameLayoutItem:
        if (widget)
            return option->rect.marginsRemoved(visualMargin(*widget));
        break;
    case SE_LineEditContents: {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        if (frame && frame->lineWidth > 0)
            return option->rect.adjusted(fields::padding, 0, -fields::padding, 0);
        break;
    }
    default: break;
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect FolvaneStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                   const QWidget* widget) const
{
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && slider)
        return scrollBars::partRect(*slider, part);
    if (control == CC_SpinBox)
        return spinBoxes::partRect(option->rect, part);
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize FolvaneStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                     const QWidget* widget) const
{
    switch (type) {
    case CT_MenuItem: return menus::itemSize(*qstyleoption_cast<const QStyleOptionMenuItem*>(option), size);
    case CT_MenuBarItem: return size + QSize(20, 12);
    case CT_SpinBox: return size + QSize(fields::padding + spinBoxes::arrowWidth, 12);
    case CT_LineEdit: {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        if (frame && frame->lineWidth > 0)
            return size + QSize(2 * fields::padding, 16);
        break;
    }
    default: break;
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int FolvaneStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_MenuPanelWidth: return menus::shadowRoom(widget);
    case PM_MenuHMargin:
    case PM_MenuVMargin: return 6;
    case PM_SubMenuOverlap: return -menus::shadowRoom(widget);
    case PM_MenuBarPanelWidth: return 0;
    case PM_MenuBarHMargin: return 6;
    case PM_MenuBarVMargin:
    case PM_MenuBarItemSpacing: return 2;
    case PM_ScrollBarExtent: return scrollBars::extent;
    case PM_ScrollBarSliderMin: return scrollBars::shortestThumb;
    case PM_SplitterWidth: return 1;
    case PM_ToolTipLabelFrameWidth: return 7;
    default: return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FolvaneStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* returnData) const
{
    switch (hint) {
    case SH_ToolTipLabel_Opacity: return 255;
    case SH_Menu_SubMenuPopupDelay: return 150; // milliseconds
    case SH_ToolTip_Mask:
    case SH_Menu_Mask:
    case SH_ScrollBar_Transient:
    case SH_EtchDisabledText: return 0;
    case SH_UnderlineShortcut: return showsMnemonics();
    case SH_MenuBar_AltKeyNavigation: return 1;
    default: return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

} // namespace folvane
