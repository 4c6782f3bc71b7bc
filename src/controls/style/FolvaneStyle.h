#pragma once

#include <QProxyStyle>

namespace folvane {

/// The look of everything that Qt draws itself: menus, tooltips, scroll bars, line edits, focus marks. Menu items whose
/// action has the property "destructive" are written in the danger colour. Needs nothing from the desktop.
class FolvaneStyle : public QProxyStyle {
    Q_OBJECT

public:
    FolvaneStyle();

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    void unpolish(QWidget* widget) override;
    QPalette standardPalette() const override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* returnData = nullptr) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace folvane
