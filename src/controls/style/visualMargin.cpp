#include "controls/style/visualMargin.h"

#include <QCoreApplication>
#include <QEvent>
#include <QVariant>
#include <QWidget>

namespace folvane {

namespace {

constexpr char property[] = "folvaneVisualMargin";

} // namespace

void setVisualMargin(QWidget& widget, const QMargins& margin)
{
    widget.setProperty(property, QVariant::fromValue(margin));
    QEvent asksStyleAgain(QEvent::StyleChange);
    QCoreApplication::sendEvent(&widget, &asksStyleAgain);
}

QMargins visualMargin(const QWidget& widget)
{
    return widget.property(property).value<QMargins>();
}

} // namespace folvane
