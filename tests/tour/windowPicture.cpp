#include "tour/windowPicture.h"

#include <QApplication>
#include <QDialog>
#include <QPainter>

namespace folvane {

namespace {

constexpr int titleHeight = 30;

QWidgetList windowsOver(const QWidget& window)
{
    QWidgetList dialogs;
    QWidgetList popups;
    for (QWidget* other : QApplication::topLevelWidgets()) {
        if (other != &window && other->isVisible() && !other->size().isEmpty())
            (qobject_cast<QDialog*>(other) ? dialogs : popups).append(other);
    }
    return dialogs + popups;
}

/// The desktop draws this around dialogs; without it they would seem to have no edge.
void drawFrame(QPainter& painter, const QWidget& dialog, QRect& place)
{
    if (dialog.windowFlags().testFlag(Qt::FramelessWindowHint))
        return;
    place.moveTop(std::max(place.top(), titleHeight));
    const QRect frame = place.adjusted(-1, -titleHeight, 1, 1);
    painter.fillRect(frame, QColor(222, 220, 217));
    painter.setPen(QColor(160, 158, 155));
    painter.drawRect(frame.adjusted(0, 0, -1, -1));
    painter.setPen(QColor(60, 58, 55));
    painter.drawText(
        frame.adjusted(10, 0, -10, -place.height()), Qt::AlignCenter,
        painter.fontMetrics().elidedText(dialog.windowTitle(), Qt::ElideMiddle, frame.width() - 20));
}

} // namespace

QImage windowPicture(QWidget& window, const std::optional<PlacedPicture>& dragged)
{
    QPixmap picture = window.grab();
    QPainter painter(&picture);
    for (QWidget* other : windowsOver(window)) {
        QRect place(window.mapFromGlobal(other->mapToGlobal(QPoint())), other->size());
        if (qobject_cast<QDialog*>(other))
            drawFrame(painter, *other, place);
        painter.drawPixmap(place.topLeft(), other->grab());
    }
    if (dragged)
        painter.drawPixmap(window.mapFromGlobal(dragged->topLeft), dragged->picture);
    painter.end();
    return picture.toImage();
}

} // namespace folvane
