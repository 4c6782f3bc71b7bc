#include "controls/Button.h"

#include "controls/Theme.h"
#include "controls/appearance.h"

#include <QPainter>

#include <algorithm>

namespace folvane {

namespace {

struct Metrics {
    double fontSize;
    int horizontal;
    int vertical;
    double radius;
};

Metrics metrics(Button::Kind kind)
{
    switch (kind) {
    case Button::Kind::Primary: return {14, 22, 10, 12};
    case Button::Kind::Secondary: return {14, 18, 10, 12};
    case Button::Kind::Tool: return {13, 12, 8, 10};
    }
    Q_UNREACHABLE();
}

constexpr int iconGap = 6;
constexpr int focusRoom = 2; // around the frame, for the ring of the keyboard focus

QLinearGradient accentGradient(const QRectF& frame)
{
    QLinearGradient gradient(frame.topLeft(), frame.bottomRight());
    gradient.setColorAt(0, theme::accent);
    gradient.setColorAt(1, theme::accentDeep);
    return gradient;
}

} // namespace

Button::Button(Kind kind, const QString& text, QWidget* parent) : QPushButton(text, parent), m_kind(kind)
{
    setFont(interfaceFont(metrics(kind).fontSize, Weight::SemiBold));
    setIconSize(QSize(18, 18));
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Button::sizeHint() const
{
    const Metrics m = metrics(m_kind);
    const int height = fontMetrics().height() + 2 * m.vertical;
    if (text().isEmpty())
        return QSize(height, height) + QSize(2, 2) * focusRoom;
    const QString shown = QString(text()).remove(QLatin1Char('&'));
    const int icon = this->icon().isNull() ? 0 : iconSize().width() + iconGap;
    return QSize(fontMetrics().horizontalAdvance(shown) + icon + 2 * m.horizontal, height)
           + QSize(2, 2) * focusRoom;
}

QRectF Button::frame() const
{
    return QRectF(rect()).adjusted(focusRoom + 0.5, focusRoom + 0.5, -focusRoom - 0.5, -focusRoom - 0.5);
}

QColor Button::textColor() const
{
    return m_kind == Kind::Primary ? theme::surface : theme::accentDeep;
}

void Button::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(!isEnabled() ? 0.4 : isDown() ? 0.8 : 1);

    const double radius = std::min(metrics(m_kind).radius, frame().height() / 2);
    const bool primary = m_kind == Kind::Primary;
    painter.setPen(primary ? QPen(Qt::NoPen) : QPen(QColor(0, 0, 0, 30), 1));
    painter.setBrush(primary ? QBrush(accentGradient(frame())) : QBrush(theme::surface));
    painter.drawRoundedRect(frame(), radius, radius);
    if (isEnabled() && underMouse() && !isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(primary ? QColor(255, 255, 255, 26) : theme::hover);
        painter.drawRoundedRect(frame(), radius, radius);
    }
    if (showsFocus(*this)) {
        painter.setPen(QPen(theme::accent, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(frame().adjusted(-1.5, -1.5, 1.5, 1.5), radius + 1.5, radius + 1.5);
    }

    QRect label = rect();
    if (!icon().isNull()) {
        const int textWidth = text().isEmpty() ? 0 : iconGap + fontMetrics().horizontalAdvance(text());
        const int left = (width() - iconSize().width() - textWidth) / 2;
        const QRect box(QPoint(left, (height() - iconSize().height()) / 2), iconSize());
        icon().paint(&painter, box);
        label.setLeft(box.right() + 1 + iconGap);
        painter.setPen(textColor());
        painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, text());
        return;
    }
    painter.setPen(textColor());
    painter.drawText(label, Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

Button* iconButton(const QIcon& icon, const QString& name, QWidget* parent)
{
    auto* button = new Button(Button::Kind::Tool, QString(), parent);
    button->setIcon(icon);
    button->setToolTip(name);
    button->setAccessibleName(name);
    return button;
}

} // namespace folvane
